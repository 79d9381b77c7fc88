// The checks of the guides and the toolbox.
#include "host/machine/GuidedTasks.h"
#include "host/machine/Conversions.h"
#include "host/machine/Records.h"
#include "host/machine/Toolbox.h"
#include "tests/host/MachineText.h"

#include <gtest/gtest.h>

namespace {

QVariantMap diskRecord(int place)
{
    return host::diskRecords(testMachine()).at(place).toMap();
}

QVariantMap partitionRecord(int disk, int place)
{
    return diskRecord(disk).value("partitions").toList().at(place).toMap();
}

QString clone(const QVariantMap& source, const QVariantMap& destination, int step = 2)
{
    return reasonOf(host::cloneRejection(testMachine(), source, destination, step));
}

TEST(CloneGuide, FirstStep_ChecksTheSourceOnly)
{
    EXPECT_EQ(clone(diskRecord(0), {}, 1), "");
    EXPECT_NE(clone(diskRecord(3), {}, 1), "");
    EXPECT_NE(clone(diskRecord(4), {}, 1), "");
    EXPECT_NE(clone({{"diskIndex", 9}}, {}, 1), "");
    EXPECT_EQ(clone(partitionRecord(0, 1), {}, 1), "");
    EXPECT_NE(clone(partitionRecord(0, 3), {}, 1), "");
}

TEST(CloneGuide, LargeEnoughDestination_IsAccepted)
{
    EXPECT_EQ(clone(diskRecord(0), diskRecord(1)), "");
    EXPECT_EQ(clone(partitionRecord(0, 1), diskRecord(1)), "");
    EXPECT_EQ(clone(partitionRecord(0, 2), partitionRecord(1, 2)), "");
}

TEST(CloneGuide, DestinationThatIsTooSmall_IsRejected)
{
    EXPECT_EQ(clone(diskRecord(0), diskRecord(5)), "The destination is too small.");
    EXPECT_EQ(clone(partitionRecord(0, 2), partitionRecord(1, 0)), "The destination is too small.");
}

TEST(CloneGuide, DestinationOfExactlyTheDataSize_IsAccepted)
{
    host::Machine machine = testMachine();
    machine.disk(5)->size = machine.disk(0)->usedSize;
    const QVariantList records = host::diskRecords(machine);
    EXPECT_EQ(reasonOf(host::cloneRejection(machine, records.at(0).toMap(), records.at(5).toMap(), 2)), "");
    --machine.disk(5)->size;
    EXPECT_NE(reasonOf(host::cloneRejection(machine, records.at(0).toMap(), records.at(5).toMap(), 2)), "");
}

TEST(CloneGuide, CloneOntoItself_IsRejected)
{
    const QString itself = "The source cannot be cloned onto itself.";
    EXPECT_EQ(clone(diskRecord(1), diskRecord(1)), itself);
    EXPECT_EQ(clone(partitionRecord(1, 1), partitionRecord(1, 1)), itself);
    EXPECT_EQ(clone(partitionRecord(1, 1), diskRecord(1)), itself);
}

TEST(CloneGuide, RunningSystemAsDestination_IsRejected)
{
    EXPECT_EQ(clone(diskRecord(1), diskRecord(0)), "The destination holds the running system.");
    EXPECT_EQ(clone(partitionRecord(1, 1), partitionRecord(0, 1)),
              "The destination holds the running system.");
}

TEST(CloneGuide, Check_UsesTheMachineAndNotTheRecord)
{
    QVariantMap destination = diskRecord(5);
    destination["size"] = Q_INT64_C(1) << 50;
    EXPECT_EQ(clone(diskRecord(0), destination), "The destination is too small.");
}

TEST(ConversionGuide, OfADisk_RejectsItsPresentKind)
{
    const host::Machine machine = testMachine();
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToGpt, diskRecord(0))), "");
    EXPECT_EQ(reasonOf(host::conversionRejection(machine, host::Conversion::ToGpt, diskRecord(1))), "");
    EXPECT_EQ(reasonOf(host::conversionRejection(machine, host::Conversion::ToMbr, diskRecord(0))), "");
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToMbr, diskRecord(1))), "");
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToBasic, diskRecord(0))), "");
    EXPECT_EQ(reasonOf(host::conversionRejection(machine, host::Conversion::ToDynamic, diskRecord(0))), "");
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToGpt, {{"diskIndex", 9}})), "");
}

TEST(ConversionGuide, OfAPartition_RejectsItsPresentFileSystem)
{
    const host::Machine machine = testMachine();
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToNtfs, partitionRecord(0, 2))),
              "");
    EXPECT_EQ(reasonOf(host::conversionRejection(machine, host::Conversion::ToExfat, partitionRecord(2, 0))),
              "");
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToFat,
                                                 {{"diskIndex", -1}, {"driveLetter", "Q"}})),
              "");
}

TEST(ConversionGuide, UnknownConversion_IsRejected)
{
    EXPECT_NE(reasonOf(host::conversionRejection(testMachine(), host::conversionOf(7), diskRecord(1))), "");
    EXPECT_NE(reasonOf(host::conversionRejection(testMachine(), host::conversionOf(-1), diskRecord(1))), "");
}

TEST(ConversionGuide, Numbers_HaveTheirNames)
{
    const QStringList names = {"GPT", "MBR", "basic", "dynamic", "NTFS", "FAT", "exFAT"};
    for (int i = 0; i < names.size(); ++i)
        EXPECT_EQ(host::conversionName(*host::conversionOf(i)), names.at(i));
}

TEST(BootMedia, Target_MustBeAUsbDisk)
{
    const host::Machine machine = testMachine();
    EXPECT_TRUE(host::bootMediaTargetExists(machine, {{"diskIndex", 2}}));
    EXPECT_FALSE(host::bootMediaTargetExists(machine, {{"diskIndex", 1}}));
    EXPECT_FALSE(host::bootMediaTargetExists(machine, {{"diskIndex", 9}}));
    EXPECT_TRUE(host::bootMediaTargetExists(machine, {{"diskIndex", -1}}));
    EXPECT_TRUE(host::bootMediaTargetExists(machine, {{"usbDriveLetter", "F"}}));
    EXPECT_FALSE(host::bootMediaTargetExists(machine, {{"usbDriveLetter", "C"}}));
    EXPECT_FALSE(host::bootMediaTargetExists(machine, {{"usbDriveLetter", ""}}));
    EXPECT_TRUE(host::bootMediaTargetExists(host::Machine(), {{"createToFile", true}}));
    EXPECT_FALSE(host::bootMediaTargetExists(host::Machine(), {{"diskIndex", -1}}));
}

TEST(ToolboxRules, Switch_TurnsAFunctionOff)
{
    EXPECT_NE(reasonOf(host::toolboxRejection(testMachine(), 1, {})), "");
    EXPECT_EQ(reasonOf(host::toolboxRejection(testMachine(), 2, {})), "");
}

TEST(ToolboxRules, Target_MustExistAndFit)
{
    const host::Machine machine = testMachine();
    EXPECT_EQ(reasonOf(host::toolboxRejection(machine, 4, diskRecord(1))), "");
    EXPECT_NE(reasonOf(host::toolboxRejection(machine, 4, diskRecord(0))), "");
    EXPECT_NE(reasonOf(host::toolboxRejection(machine, 4, {{"diskIndex", 9}})), "");
    EXPECT_EQ(reasonOf(host::toolboxRejection(machine, 5, diskRecord(2))), "");
    EXPECT_NE(reasonOf(host::toolboxRejection(machine, 5, diskRecord(0))), "");
    EXPECT_NE(reasonOf(host::toolboxRejection(machine, 10, partitionRecord(0, 1))), "");
    EXPECT_EQ(reasonOf(host::toolboxRejection(machine, 12, partitionRecord(0, 1))), "");
    EXPECT_NE(reasonOf(host::toolboxRejection(machine, 12, {{"diskIndex", -1}, {"driveLetter", "Q"}})), "");
    EXPECT_NE(reasonOf(host::toolboxRejection(machine, 6, diskRecord(0))), "");
}

} // namespace

// Orders and guides that move, join and copy partitions: the resulting positions.
#include "host/machine/Conversions.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/Orders.h"
#include "host/machine/Records.h"
#include "host/machine/Rules.h"
#include "host/machine/Toolbox.h"
#include "tests/host/MachineProperties.h"
#include "tests/host/MachineText.h"

#include <gtest/gtest.h>

namespace {

host::Machine after(int function, const QVariantMap& params, host::Machine machine = testMachine())
{
    EXPECT_EQ(reasonOf(host::attempt(machine, function, params)), "");
    return machine;
}

host::Machine afterGuide(const host::GuidedWork& work, host::Machine machine = testMachine())
{
    return after(static_cast<int>(work.function), work.params, std::move(machine));
}

QVariantMap diskRecord(const host::Machine& machine, int place)
{
    return host::diskRecords(machine).at(place).toMap();
}

QVariantMap entryRecord(const host::Machine& machine, int disk, int place)
{
    return diskRecord(machine, disk).value("partitions").toList().at(place).toMap();
}

TEST(LayoutOrders, AllocateToThePrecedingDrive_MovesTheSourcesStart)
{
    const host::Machine machine =
        after(22, {{"driveLetter", "D"}, {"targetDriveLetter", "C"}, {"partitionCapacity", 10 * kGiB}});
    EXPECT_EQ(machine.partition("C")->size, 110 * kGiB);
    EXPECT_EQ(machine.partition("D")->size, 40 * kGiB);
    EXPECT_EQ(machine.partition("D")->startOffset(), machine.partition("C")->endOffset());
    EXPECT_EQ(machine.partition("D")->usedSize, 10 * kGiB);
}

TEST(LayoutOrders, AllocateToANewDrive_PutsItAtTheSourcesEnd)
{
    const host::Machine machine = after(22, {{"driveLetter", "D"},
                                             {"targetDriveLetter", "CreateNew"},
                                             {"partitionCapacity", 10 * kGiB},
                                             {"fileSystem", "NTFS"},
                                             {"label", "new"}});
    EXPECT_EQ(machine.partition("D")->size, 40 * kGiB);
    ASSERT_NE(machine.partition("G"), nullptr);
    EXPECT_EQ(machine.partition("G")->size, 10 * kGiB);
    EXPECT_EQ(machine.partition("G")->startOffset(), machine.partition("D")->endOffset());
}

TEST(LayoutOrders, Split_KeepsTheDataAtTheStart)
{
    const host::Machine machine = after(17, {{"driveLetter", "D"},
                                             {"newPartitionCapacity", 20 * kGiB},
                                             {"newPartitionFileSystem", "exFAT"},
                                             {"newPartitionLabel", "half"}});
    EXPECT_EQ(machine.partition("D")->size, 30 * kGiB);
    EXPECT_EQ(machine.partition("D")->usedSize, 10 * kGiB);
    EXPECT_EQ(machine.partition("G")->fsString, "exFAT");
    EXPECT_EQ(machine.partition("G")->usedSize, 0);
}

TEST(LayoutOrders, Merge_JoinsSpaceAndData)
{
    const host::Machine machine = after(20, {{"driveLetter", "C"}, {"driveLetter2", "D"}});
    EXPECT_EQ(machine.partition("D"), nullptr);
    EXPECT_EQ(machine.partition("C")->size, 150 * kGiB);
    EXPECT_EQ(machine.partition("C")->usedSize, 60 * kGiB);
}

TEST(LayoutOrders, SmartAdjustment_TakesTheLargestFreeRegion)
{
    const host::Machine machine = after(1, {{"driveLetter", "C:\\WINDOWS\\SYSTEM32"}});
    EXPECT_EQ(machine.partition("C")->size, 110 * kGiB);
    EXPECT_EQ(machine.partition("D")->size, 50 * kGiB);
    EXPECT_TRUE(machine.freeRegions(0).empty());
    EXPECT_EQ(machine.partition("D")->startOffset(), machine.partition("C")->endOffset());
}

TEST(LayoutOrders, AutoCreate_CreatesEqualDrives)
{
    const host::Machine machine = after(43, {{"diskIndex", 3}, {"partitionCount", 3}, {"GptOrMbr", "gpt"}});
    const host::Disk& disk = *machine.disk(3);
    EXPECT_TRUE(disk.isGPT);
    EXPECT_FALSE(disk.isUnInitialize);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(disk.partitions.at(i).size, disk.partitions.at(0).size);
        EXPECT_EQ(disk.partitions.at(i).startOffset() % kMiB, 0);
        EXPECT_EQ(disk.partitions.at(i).fsString, "NTFS");
    }
    EXPECT_EQ(unlisted(disk), reservedByTable(disk));
}

TEST(LayoutOrders, WipeDisk_RemovesItsTable)
{
    EXPECT_TRUE(after(7, {{"diskIndex", 1}, {"eraseCount", 1}}).disk(1)->isUnInitialize);
    EXPECT_EQ(after(7, {{"diskIndex", 1}, {"eraseCount", 1}}).partition("E"), nullptr);
}

// A full MBR table: the type of a fifth partition, and the rejected orders.
TEST(LayoutOrders, MbrTable_HasFourEntriesAndOneExtendedPartition)
{
    host::Machine machine = testMachine();
    const auto create = [](qint64 size, int region) {
        return QVariantMap{{"diskIndex", 1},
                           {"capacity", size},
                           {"fileSystem", "NTFS"},
                           {"label", ""},
                           {"unallocatedIndex", region}};
    };
    for (int i = 0; i < 3; ++i)
        machine = after(18, create(10 * kGiB, 1), machine);
    EXPECT_NE(reasonOf(host::orderRejection(machine, 18, create(10 * kGiB, 1))), "");
    machine = after(25, {{"driveLetter", "I"}}, machine);
    // A partition after the logical drive becomes logical; before the primaries the table is full.
    machine = after(18, create(10 * kGiB, 1), machine);
    ASSERT_NE(machine.partition("J"), nullptr);
    EXPECT_FALSE(machine.partition("J")->isPrimary);
    EXPECT_NE(reasonOf(host::orderRejection(machine, 18, create(kGiB / 2, 0))), "");
    EXPECT_NE(reasonOf(host::orderRejection(machine, 25, {{"driveLetter", "E"}})), "");
    EXPECT_EQ(machineViolation(machine).toStdString(), "");
}

TEST(GuidedOrders, CloneDisk_CopiesTheTableAndEveryPartition)
{
    host::Machine machine = testMachine();
    machine = afterGuide(*host::cloneWork(2, diskRecord(machine, 0), diskRecord(machine, 1)), machine);
    const host::Disk& clone = *machine.disk(1);
    EXPECT_TRUE(clone.isGPT);
    ASSERT_EQ(clone.partitions.size(), 4u);
    EXPECT_EQ(clone.usedSize, machine.disk(0)->usedSize);
    EXPECT_EQ(clone.partitions.at(1).size, 100 * kGiB);
    EXPECT_FALSE(clone.partitions.at(1).isBoot);
    EXPECT_TRUE(clone.partitions.at(1).isOfflineBoot);
    EXPECT_EQ(clone.partitions.at(1).driveLetter, "E");
    EXPECT_TRUE(clone.partitions.at(0).gptEFI);
    EXPECT_EQ(machineViolation(machine).toStdString(), "");
}

TEST(GuidedOrders, CloneSystem_OmitsTheDataDrive)
{
    host::Machine machine = testMachine();
    machine = afterGuide(*host::cloneWork(0, entryRecord(machine, 0, 1), diskRecord(machine, 1)), machine);
    ASSERT_EQ(machine.disk(1)->partitions.size(), 3u);
    EXPECT_EQ(machine.disk(1)->partitions.at(1).label, "Windows");
}

TEST(GuidedOrders, CloneToASmallerDisk_ShrinksTheCopies)
{
    host::Machine machine = testMachine();
    machine.disk(2)->size = 80 * kGiB;
    machine = afterGuide(*host::cloneWork(2, diskRecord(machine, 0), diskRecord(machine, 2)), machine);
    EXPECT_EQ(machine.disk(2)->usedSize, machine.disk(0)->usedSize);
    EXPECT_EQ(machineViolation(machine).toStdString(), "");
}

TEST(GuidedOrders, ClonePartition_FillsTheTargetAndKeepsItsPosition)
{
    host::Machine machine = testMachine();
    machine =
        afterGuide(*host::cloneWork(3, entryRecord(machine, 0, 2), entryRecord(machine, 1, 1)), machine);
    EXPECT_EQ(machine.partition("E")->label, "Data");
    EXPECT_EQ(machine.partition("E")->usedSize, 10 * kGiB);
    EXPECT_EQ(machine.partition("E")->size, 1024 * kGiB);
}

TEST(GuidedOrders, ClonePartitionIntoFreeSpace_CreatesAPartition)
{
    host::Machine machine = testMachine();
    machine =
        afterGuide(*host::cloneWork(3, entryRecord(machine, 2, 0), entryRecord(machine, 1, 2)), machine);
    ASSERT_NE(machine.partition("G"), nullptr);
    EXPECT_EQ(machine.partition("G")->diskIndex, 1);
    EXPECT_EQ(machine.partition("G")->fsString, "FAT32");
}

TEST(GuidedOrders, DiskConversions_ChangeTheTableAndKeepThePartitions)
{
    const host::Machine gpt = afterGuide(host::conversionWork(host::Conversion::ToGpt, {{"diskIndex", 1}}));
    EXPECT_TRUE(gpt.disk(1)->isGPT);
    EXPECT_TRUE(gpt.partition("E")->isGPT);
    EXPECT_NE(gpt.partition("E")->partGUID, "");
    EXPECT_EQ(gpt.partition("E")->usedSize, kGiB);
    const host::Machine mbr = afterGuide(host::conversionWork(host::Conversion::ToMbr, {{"diskIndex", 0}}));
    EXPECT_FALSE(mbr.disk(0)->isGPT);
    EXPECT_EQ(mbr.partition("D")->label, "Data");
    host::Machine dynamic = afterGuide(host::conversionWork(host::Conversion::ToDynamic, {{"diskIndex", 1}}));
    EXPECT_TRUE(dynamic.disk(1)->isDynamic);
    EXPECT_EQ(dynamic.partition("E")->dynamicVolumeType, 2);
    dynamic = afterGuide(host::conversionWork(host::Conversion::ToBasic, {{"diskIndex", 1}}), dynamic);
    EXPECT_FALSE(dynamic.partition("E")->isDynamic);
}

TEST(GuidedOrders, DynamicVolumeOverSeveralDisks_CannotBecomeBasic)
{
    host::Machine machine = afterGuide(host::conversionWork(host::Conversion::ToDynamic, {{"diskIndex", 1}}));
    machine.partition("E")->dynamicVolumeType = 4;
    EXPECT_EQ(reasonOf(host::conversionRejection(machine, host::Conversion::ToBasic, {{"diskIndex", 1}})),
              "A volume spans several disks.");
}

TEST(GuidedOrders, FileSystemConversions_KeepTheData)
{
    host::Machine machine = testMachine();
    machine.partition("D")->size = 20 * kGiB;
    machine = afterGuide(host::conversionWork(host::Conversion::ToFat, {{"driveLetter", "D"}}), machine);
    EXPECT_EQ(machine.partition("D")->fsString, "FAT32");
    machine = afterGuide(host::conversionWork(host::Conversion::ToExfat, {{"driveLetter", "D"}}), machine);
    EXPECT_EQ(machine.partition("D")->fsString, "exFAT");
    machine = afterGuide(host::conversionWork(host::Conversion::ToNtfs, {{"driveLetter", "D"}}), machine);
    EXPECT_EQ(machine.partition("D")->fsString, "NTFS");
    EXPECT_EQ(machine.partition("D")->label, "Data");
    EXPECT_EQ(machine.partition("D")->usedSize, 10 * kGiB);
    EXPECT_NE(reasonOf(host::conversionRejection(machine, host::Conversion::ToFat, {{"driveLetter", "C"}})),
              "");
}

TEST(GuidedOrders, BootMedium_OverwritesTheStick)
{
    const host::Machine machine = afterGuide(host::bootMediaWork({{"diskIndex", -1}, {"isBurn", false}}));
    const host::Partition* volume = machine.partition("F");
    ASSERT_NE(volume, nullptr);
    EXPECT_EQ(volume->diskIndex, 2);
    EXPECT_EQ(volume->label, "BOOT");
    EXPECT_TRUE(volume->isActive);
    EXPECT_EQ(volume->size, 32 * kGiB);
}

TEST(GuidedOrders, AlignDisk_MovesUnalignedPartitions)
{
    host::Machine machine = testMachine();
    host::Disk& stick = *machine.disk(2);
    host::Partition rest;
    rest.unallocated = true;
    rest.diskIndex = 2;
    rest.startSector = stick.partitions.at(0).endSector + 1;
    rest.size = 100 * kMiB;
    stick.partitions.push_back(rest);
    const QVariantMap record = diskRecord(machine, 2);
    machine = afterGuide(*host::toolboxWork(5, record), machine);
    EXPECT_EQ(machine.partition("F")->startSector, 2048);
    EXPECT_EQ(machine.partition("F")->size, 63350767616);
    EXPECT_TRUE(host::isAlignedTo4k(diskRecord(machine, 2)));
}

TEST(GuidedOrders, WriteProtection_IsSwitchedOnAndOff)
{
    host::Machine machine = testMachine();
    const QVariantMap record = entryRecord(machine, 2, 0);
    machine = afterGuide(*host::toolboxWork(3, record), machine);
    EXPECT_TRUE(machine.disk(2)->isProtected);
    EXPECT_NE(reasonOf(host::orderRejection(machine, 16, {{"driveLetter", "F"}})), "");
    EXPECT_FALSE(afterGuide(*host::toolboxWork(3, record), machine).disk(2)->isProtected);
}

struct InterruptRow
{
    const char* name;
    int function;
    QVariantMap params;
};

class Interrupted : public testing::TestWithParam<InterruptRow>
{
};

TEST_P(Interrupted, MovingOperation_LeavesTheMachineUnchanged)
{
    host::Machine machine = testMachine();
    ASSERT_EQ(reasonOf(host::taskRejection(machine, GetParam().function, GetParam().params)), "");
    EXPECT_FALSE(host::leaveInterrupted(machine, GetParam().function, GetParam().params, 0.7));
    EXPECT_TRUE(isSame(machine, testMachine()));
}

const InterruptRow kInterrupted[] = {
    {"Resize", 14, {{"driveLetter", "D"}, {"size", 20 * kGiB}}},
    {"Merge", 20, {{"driveLetter", "C"}, {"driveLetter2", "D"}}},
    {"Allocate", 22, {{"driveLetter", "D"}, {"targetDriveLetter", "C"}, {"partitionCapacity", kGiB}}},
    {"ConvertToGpt", 1003, {{"diskIndex", 1}}},
    {"ConvertToExfat", 1009, {{"driveLetter", "F"}}},
};

INSTANTIATE_TEST_SUITE_P(All, Interrupted, testing::ValuesIn(kInterrupted),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Interrupted, OverwritingOperation_DestroysTheData)
{
    host::Machine machine = testMachine();
    EXPECT_TRUE(host::leaveInterrupted(machine, 23, {{"driveLetter", "D"}, {"eraseCount", 1}}, 0.1));
    EXPECT_EQ(machine.partition("D")->fsString, "RAW");
    EXPECT_TRUE(host::leaveInterrupted(machine, 7, {{"diskIndex", 1}, {"eraseCount", 1}}, 0.1));
    EXPECT_TRUE(machine.disk(1)->isUnInitialize);
}

TEST(Interrupted, AutoCreate_LeavesTheFinishedPartitions)
{
    host::Machine machine = testMachine();
    EXPECT_TRUE(host::leaveInterrupted(machine, 43,
                                       {{"diskIndex", 3}, {"partitionCount", 4}, {"GptOrMbr", "GPT"}}, 0.6));
    ASSERT_EQ(machine.disk(3)->partitions.size(), 3u);
    EXPECT_TRUE(machine.disk(3)->partitions.at(2).unallocated);
}

TEST(BytesMoved, FollowTheMovedData)
{
    const host::Machine machine = testMachine();
    EXPECT_EQ(host::bytesMoved(machine, 31, {{"driveLetter", "D"}}), 0);
    EXPECT_EQ(host::bytesMoved(machine, 15, {{"driveLetter", "D"}, {"quickFormat", true}}), 0);
    EXPECT_EQ(host::bytesMoved(machine, 15, {{"driveLetter", "D"}, {"quickFormat", false}}), 50 * kGiB);
    EXPECT_EQ(host::bytesMoved(machine, 23, {{"driveLetter", "D"}, {"eraseCount", 3}}), 150 * kGiB);
    EXPECT_EQ(host::bytesMoved(machine, 20, {{"driveLetter", "C"}, {"driveLetter2", "D"}}), 10 * kGiB);
    EXPECT_EQ(host::bytesMoved(machine, 22, {{"driveLetter", "D"}, {"targetDriveLetter", "C"}}), 10 * kGiB);
}

} // namespace

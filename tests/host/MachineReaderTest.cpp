// The machine file: required keys, derived values and errors.
#include "host/machine/MachineReader.h"
#include "host/machine/Fields.h"
#include "host/machine/MachineWriter.h"
#include "host/machine/Records.h"
#include "tests/host/MachineProperties.h"
#include "tests/host/MachineText.h"
#include "tests/support/Recorder.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct InvalidMachine
{
    const char* name;
    QByteArray json;
    const char* fault;
};

class InvalidMachines : public testing::TestWithParam<InvalidMachine>
{
};

TEST_P(InvalidMachines, InvalidDescription_ReportsLineAndJsonPath)
{
    EXPECT_EQ(errorOf(GetParam().json).toStdString(), GetParam().fault);
}

const InvalidMachine kInvalidMachines[] = {
    {"NotJson", "{", "not JSON: unterminated object in line 1"},
    {"TopIsAList", "[]", "the top must be an object"},
    {"NoDisks", "{}", "disks is missing"},
    {"DisksIsNoList", R"({"disks": 3})", "line 1: disks must be an array"},
    {"DiskIsNoObject", R"({"disks": [3]})", "line 1: disks[0] must be an object"},
    {"DiskWithoutIndex", R"({"disks": [{"size": 1}]})", "line 1: disks[0].diskIndex is missing"},
    {"DiskWithoutSize", R"({"disks": [{"diskIndex": 0}]})", "line 1: disks[0].size is missing"},
    {"FlagIsANumber", R"({"disks": [{"diskIndex": 0, "size": 1, "isGPT": 1}]})",
     "line 1: disks[0].isGPT must be true or false"},
    {"NumberIsAText", R"({"disks": [{"diskIndex": "0", "size": 1}]})",
     "line 1: disks[0].diskIndex must be a whole number"},
    {"NumberHasAFraction", R"({"disks": [{"diskIndex": 0.5, "size": 1}]})",
     "line 1: disks[0].diskIndex must be a whole number"},
    {"NumberIsTooLargeForItsKey", R"({"disks": [{"diskIndex": 3000000000, "size": 1}]})",
     "line 1: disks[0].diskIndex must be a whole number"},
    {"SizeIsBeyondAllNumbers", R"({"disks": [{"diskIndex": 0, "size": 1e300}]})",
     "line 1: disks[0].size must be a whole number"},
    {"TextIsANumber", R"({"disks": [{"diskIndex": 0, "size": 1, "serialNO": 5}]})",
     "line 1: disks[0].serialNO must be a string"},
    {"MisspeltKey", R"({"disks": [{"diskIndex": 0, "size": 1, "isGpt": true}]})",
     "line 1: disks[0].isGpt is not a key of the inventory; nearest: isGPT"},
    {"PartitionsIsNoList", R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": {}}]})",
     "line 1: disks[0].partitions must be an array"},
    {"PartitionIsNoObject", R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [null]}]})",
     "line 1: disks[0].partitions[0] must be an object"},
    {"PartitionWithoutSize", R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [{}]}]})",
     "line 1: disks[0].partitions[0].size is missing"},
    {"PartitionKeyOfWrongType",
     R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [{"size": 1, "driveLetter": true}]}]})",
     "line 1: disks[0].partitions[0].driveLetter must be a string"},
    {"NegativeSize", R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [{"size": -1}]}]})",
     "line 1: disks[0].partitions[0] has a size or place that no partition can have"},
    {"NegativeDisk", R"({"disks": [{"diskIndex": 0, "size": -1}]})",
     "line 1: disks[0] has a size that no disk can have"},
    {"EndlessDisk", R"({"disks": [{"diskIndex": 0, "size": 9000000000000000000}]})",
     "line 1: disks[0] has a size that no disk can have"},
    {"NegativeUse",
     R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [{"size": 1, "usedSize": -1}]}]})",
     "line 1: disks[0].partitions[0] has a size or place that no partition can have"},
    {"SectorOfNothing",
     R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [{"size": 1, "sectorSize": 0}]}]})",
     "line 1: disks[0].partitions[0] has a size or place that no partition can have"},
    {"PlaceBeyondAllDisks",
     R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [{"size": 1, "startSector": 9000000000000000000}]}]})",
     "line 1: disks[0].partitions[0] has a size or place that no partition can have"},
    {"DiskTwice", R"({"disks": [{"diskIndex": 1, "size": 1}, {"diskIndex": 1, "size": 1}]})",
     "line 1: disk number 1 is negative or used twice"},
    {"LetterTwice", R"({"disks": [{"diskIndex": 0, "size": 1024, "partitions": [
        {"size": 512, "driveLetter": "d:"}, {"size": 512, "driveLetter": "D"}]}]})",
     "line 2: drive letter D is used twice"},
    {"Overlap", R"({"disks": [{"diskIndex": 0, "size": 4096, "partitions": [
        {"size": 1024}, {"size": 512, "startSector": 1}]}]})",
     "line 2: disk 0: its partitions overlap or are out of order"},
    {"BeyondTheEnd", R"({"disks": [{"diskIndex": 0, "size": 512, "partitions": [{"size": 1024}]}]})",
     "line 1: disk 0: its partitions are larger than the disk"},
    {"MoreInUseThanThereIs",
     R"({"disks": [{"diskIndex": 0, "size": 1024, "partitions": [{"size": 512, "usedSize": 513}]}]})",
     "line 1: disk 0: the used size of a partition exceeds its size"},
    {"PartitionOfAnotherDisk",
     R"({"disks": [{"diskIndex": 0, "size": 1024, "partitions": [{"size": 512, "diskIndex": 4}]}]})",
     "line 1: disk 0: a partition names disk 4"},
    {"NegativeTime", R"({"disks": [], "taskMilliseconds": -1})",
     "line 1: taskMilliseconds must not be negative"},
    {"UnknownSwitch", R"({"disks": [], "turbo": true})", "line 1: turbo is not a key of a machine"},
    {"SwitchOfWrongType", R"({"disks": [], "preOsEnabled": "yes"})",
     "line 1: preOsEnabled must be true or false"},
    {"ToolboxOfWrongType", R"({"disks": [], "toolbox": {"align4k": 1}})",
     "line 1: toolbox.align4k must be true or false"},
    {"SmartErrorsOfWrongType", R"({"disks": [], "smartErrors": ["1"]})",
     "line 1: smartErrors[0] must be a whole number"},
};

INSTANTIATE_TEST_SUITE_P(All, InvalidMachines, testing::ValuesIn(kInvalidMachines),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MachineReader, ReadMachineFile_ThatDoesNotExist_IsAnError)
{
    const QTemporaryDir folder;
    const auto read = host::readMachineFile(folder.filePath("none.json"));
    EXPECT_TRUE(std::holds_alternative<host::MachineError>(read));
}

TEST(MachineReader, Error_BeginsWithTheLineOfItsValue)
{
    const QByteArray text = R"({
  "name": "two \"disks\": [ {",
  "disks": [
    {"diskIndex": 0, "size": 4096,
     "partitions": [{"size": 512, "driveLetter": "C"},
                    {"size": 512,
                     "label":
                       "Data"}]},
    {"diskIndex": 1,
     "size": 2048, "partitions": [
       {"size": 512}]}],
  "smartErrors": [
    1,
    0],
  "toolbox": {"align4k": true,
              "rebuildMbr": true}
})";
    machineOf(text);
    const auto errorWith = [&](const char* was, const char* now) {
        EXPECT_EQ(text.count(was), 1) << was;
        return errorOf(QByteArray(text).replace(was, now)).toStdString();
    };
    EXPECT_EQ(errorWith("\"size\": 2048", "\"size\": \"2048\""),
              "line 10: disks[1].size must be a whole number");
    EXPECT_EQ(errorWith("\"Data\"", "5"), "line 7: disks[0].partitions[1].label must be a string");
    EXPECT_EQ(errorWith("    0]", "    true]"), "line 14: smartErrors[1] must be a whole number");
    EXPECT_EQ(errorWith("\"rebuildMbr\": true", "\"rebuildMbr\": 1"),
              "line 16: toolbox.rebuildMbr must be true or false");
    EXPECT_EQ(errorWith("\"label\"", "\"lable\""),
              "line 7: disks[0].partitions[1].lable is not a key of the inventory; nearest: label");
    EXPECT_EQ(errorWith("\"diskIndex\": 1,", ""), "line 9: disks[1].diskIndex is missing");
    EXPECT_EQ(errorWith("\"diskIndex\": 1,", "\"diskIndex\": 0,"),
              "line 9: disk number 0 is negative or used twice");
    EXPECT_EQ(errorWith("{\"size\": 512}]", "{\"size\": 512, \"driveLetter\": \"c\"}]"),
              "line 11: drive letter C is used twice");
    EXPECT_EQ(errorWith("{\"size\": 512,\n", "{\"size\": 512, \"startSector\": 0,\n"),
              "line 6: disk 0: its partitions overlap or are out of order");
}

TEST(MachineReader, KeyThatOccursTwice_HasTheLineOfTheLastOne)
{
    EXPECT_EQ(errorOf("{\"disks\": 1,\n\"disks\": 2}"), "line 2: disks must be an array");
}

TEST(MachineReader, KeyWithEscapes_HasALine)
{
    EXPECT_EQ(errorOf("{\"disks\": [],\n\"a\\u0062\\\"\": 2}"), "line 2: ab\" is not a key of a machine");
}

TEST(MachineReader, UnknownKey_NamesTheNearestKeyIfItIsSimilar)
{
    EXPECT_EQ(errorOf(R"({"disks": [], "smartError": []})"),
              "line 1: smartError is not a key of a machine; nearest: smartErrors");
    EXPECT_EQ(errorOf(R"({"disks": [], "smrt": []})"), "line 1: smrt is not a key of a machine");
    EXPECT_EQ(errorOf(R"({"disks": [{"diskIndex": 0, "size": 1, "serialNumber": ""}]})"),
              "line 1: disks[0].serialNumber is not a key of the inventory");
}

QByteArray repeated(const QByteArray& entry, int times)
{
    QByteArray list = entry;
    for (int i = 1; i < times; ++i)
        list += ',' + entry;
    return list;
}

TEST(MachineReader, OversizeArrays_AreRejected)
{
    const QByteArray disk = R"({"diskIndex": 0, "size": 1})";
    EXPECT_EQ(errorOf(R"({"disks": [)" + repeated(disk, 1025) + "]}"),
              "line 1: disks has more than 1024 entries");
    EXPECT_EQ(errorOf(R"({"disks": [{"diskIndex": 0, "size": 1, "partitions": [)" +
                      repeated(R"({"size": 1})", 4097) + "]}]}"),
              "line 1: disks[0].partitions has more than 4096 entries");
}

TEST(MachineReader, FileOfExactlyTheLimit_IsRead)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("large.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray machine = R"({"disks": []})";
    file.write(machine + QByteArray(16 * 1024 * 1024 - machine.size(), ' '));
    file.close();
    EXPECT_TRUE(std::holds_alternative<host::Machine>(host::readMachineFile(file.fileName())));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(" ");
    file.close();
    const auto read = host::readMachineFile(file.fileName());
    ASSERT_TRUE(std::holds_alternative<host::MachineError>(read));
    EXPECT_EQ(std::get<host::MachineError>(read).text, "the file is larger than 16777216 bytes");
}

TEST(MachineWriter, ShippedAndTestMachines_SurviveARoundTrip)
{
    for (const char* name : {"laptop", "desktop", "server"}) {
        const auto read = host::readMachineFile(QString(SHIPPED_MACHINES "/%1.json").arg(name));
        ASSERT_TRUE(std::holds_alternative<host::Machine>(read));
        EXPECT_EQ(tripViolation(std::get<host::Machine>(read)).toStdString(), "") << name;
    }
    EXPECT_EQ(tripViolation(testMachine()).toStdString(), "");
}

TEST(MachineWriter, EverySetting_SurvivesARoundTrip)
{
    host::Machine machine = testMachine();
    machine.preOsEnabled = machine.win11CheckerEnabled = machine.busy = machine.popuped = true;
    machine.bootMediaEnabled = false;
    machine.taskMilliseconds = 7;
    machine.smartErrors = {1, 3, 2};
    EXPECT_EQ(tripViolation(machine).toStdString(), "");
    EXPECT_EQ(host::writeMachine(machine), host::writeMachine(machine));
}

TEST(MachineWriter, UnwritableFile_IsAnError)
{
    const QTemporaryDir folder;
    EXPECT_NE(host::writeMachineFile(testMachine(), folder.filePath("none/m.json")), "");
    EXPECT_EQ(host::writeMachineFile(testMachine(), folder.filePath("m.json")), "");
}

TEST(MachineReader, MissingSettings_AreFalseExceptBootMedia)
{
    const host::Machine machine = machineOf(R"({"disks": []})");
    EXPECT_FALSE(machine.preOsEnabled);
    EXPECT_FALSE(machine.win11CheckerEnabled);
    EXPECT_FALSE(machine.busy);
    EXPECT_FALSE(machine.popuped);
    EXPECT_TRUE(machine.bootMediaEnabled);
    EXPECT_TRUE(machine.smartErrors.isEmpty());
}

TEST(MachineReader, GivenSettings_AreRead)
{
    const host::Machine machine =
        machineOf(R"({"disks": [], "preOsEnabled": true, "win11CheckerEnabled": true,
        "bootMediaEnabled": false, "busy": true, "popuped": true, "smartErrors": [2, 5], "taskMilliseconds": 7,
        "toolbox": {"align4k": false}, "name": "mine"})");
    EXPECT_TRUE(machine.preOsEnabled);
    EXPECT_TRUE(machine.win11CheckerEnabled);
    EXPECT_TRUE(machine.busy);
    EXPECT_TRUE(machine.popuped);
    EXPECT_FALSE(machine.bootMediaEnabled);
    EXPECT_EQ(machine.smartErrors, (QSet<int>{2, 5}));
    EXPECT_EQ(machine.taskMilliseconds, 7);
    EXPECT_FALSE(machine.toolbox.value("align4k", true));
    EXPECT_EQ(machine.name, "mine");
}

TEST(MachineReader, Partition_InheritsFromItsDiskAndPosition)
{
    const host::Machine machine = machineOf(R"({"disks": [{"diskIndex": 4, "size": 4096, "isGPT": true,
        "isRemoveUsb": true, "partitions": [{"size": 1024}, {"size": 512, "bltState": 3}]}]})");
    const host::Partition& second = machine.disks.at(0).partitions.at(1);
    EXPECT_EQ(second.diskIndex, 4);
    EXPECT_EQ(second.partitionIndex, 1);
    EXPECT_EQ(second.startSector, 2);
    EXPECT_EQ(second.endSector, 2);
    EXPECT_TRUE(second.isGPT);
    EXPECT_TRUE(second.isRemovable);
    EXPECT_TRUE(second.isBitLocker);
    EXPECT_EQ(machine.disks.at(0).bltState, 3);
}

TEST(MachineReader, Partition_OwnKeysOverrideDerivedValues)
{
    const host::Machine machine = machineOf(R"({"disks": [{"diskIndex": 4, "size": 4096, "isGPT": true,
        "usedSize": 77, "emptyPartitionCount": 9, "partitions": [{"size": 1024, "isGPT": false, "endSector": 5,
        "usedSize": 3, "partitionIndex": 8}]}]})");
    const host::Disk& disk = machine.disks.at(0);
    EXPECT_EQ(disk.usedSize, 77);
    EXPECT_EQ(disk.emptyPartitionCount, 9);
    EXPECT_FALSE(disk.partitions.at(0).isGPT);
    EXPECT_EQ(disk.partitions.at(0).endSector, 5);
    EXPECT_EQ(disk.partitions.at(0).partitionIndex, 8);
}

TEST(MachineReader, LargeNumbers_KeepAllDigits)
{
    const host::Machine machine = machineOf(R"({"disks": [{"diskIndex": 0, "size": 1125899906842623}]})");
    EXPECT_EQ(machine.disks.at(0).size, Q_INT64_C(1125899906842623));
}

TEST(Records, OfADisk_ContainEveryInventoryKeyWithItsType)
{
    const QVariantMap disk = host::diskRecords(testMachine()).at(0).toMap();
    const QMap<QString, QString> types = {{"diskInterface", "QString"},
                                          {"diskIndex", "int"},
                                          {"partitions", "QVariantList"},
                                          {"size", "qlonglong"},
                                          {"usedSize", "qlonglong"},
                                          {"isUnInitialize", "bool"},
                                          {"isGPT", "bool"},
                                          {"isStorageSpace", "bool"},
                                          {"isDynamic", "bool"},
                                          {"readonly", "bool"},
                                          {"isOffline", "bool"},
                                          {"isBad", "bool"},
                                          {"isProtected", "bool"},
                                          {"isRemoveUsb", "bool"},
                                          {"isVHD", "bool"},
                                          {"isVMD", "bool"},
                                          {"isVirtualDisk", "bool"},
                                          {"isUSB", "bool"},
                                          {"isSSD", "bool"},
                                          {"bltState", "int"},
                                          {"isLowSpace", "bool"},
                                          {"emptyPartitionCount", "int"},
                                          {"serialNO", "QString"},
                                          {"isDiskItem", "bool"},
                                          {"isBoot", "bool"},
                                          {"isOfflineBoot", "bool"}};
    EXPECT_EQ(disk.keys(), types.keys());
    for (auto it = types.begin(); it != types.end(); ++it)
        EXPECT_EQ(QString(disk.value(it.key()).typeName()), it.value()) << it.key().toStdString();
}

TEST(Records, OfAPartition_ContainEveryInventoryKeyWithItsType)
{
    const QVariantMap partition =
        host::diskRecords(testMachine()).at(0).toMap().value("partitions").toList().at(1).toMap();
    const QMap<QString, QString> types = {{"unallocated", "bool"},
                                          {"diskIndex", "int"},
                                          {"partitionIndex", "int"},
                                          {"size", "qlonglong"},
                                          {"volumeSize", "qlonglong"},
                                          {"usedSize", "qlonglong"},
                                          {"startSector", "qlonglong"},
                                          {"endSector", "qlonglong"},
                                          {"dbrStartSector", "qlonglong"},
                                          {"sectorSize", "int"},
                                          {"clusterSize", "int"},
                                          {"isUnformattedType", "bool"},
                                          {"isBitLocker", "bool"},
                                          {"readonly", "bool"},
                                          {"isHidden", "bool"},
                                          {"isActive", "bool"},
                                          {"isSystem", "bool"},
                                          {"isBoot", "bool"},
                                          {"isPrimary", "bool"},
                                          {"isGPT", "bool"},
                                          {"isStorageSpace", "bool"},
                                          {"isDynamic", "bool"},
                                          {"isRemovable", "bool"},
                                          {"isBad", "bool"},
                                          {"isLowSpace", "bool"},
                                          {"isNeedSectorBySector", "bool"},
                                          {"isOfflineBoot", "bool"},
                                          {"gptReserved", "bool"},
                                          {"gptEFI", "bool"},
                                          {"gptRecovery", "bool"},
                                          {"partGUID", "QString"},
                                          {"bltState", "int"},
                                          {"driveLetter", "QString"},
                                          {"label", "QString"},
                                          {"fsString", "QString"},
                                          {"dynamicVolumeType", "int"},
                                          {"isDiskItem", "bool"},
                                          {"defBoot", "bool"},
                                          {"isVirtualDisk", "bool"}};
    EXPECT_EQ(partition.keys(), types.keys());
    for (auto it = types.begin(); it != types.end(); ++it)
        EXPECT_EQ(QString(partition.value(it.key()).typeName()), it.value()) << it.key().toStdString();
}

TEST(Records, DistinguishDisksPartitionsAndBootDisks)
{
    const QVariantList disks = host::diskRecords(testMachine());
    ASSERT_EQ(disks.size(), 6);
    const QVariantMap first = disks.at(0).toMap();
    EXPECT_TRUE(first.value("isDiskItem").toBool());
    EXPECT_TRUE(first.value("isBoot").toBool());
    EXPECT_FALSE(disks.at(1).toMap().value("isBoot").toBool());
    const QVariantList partitions = first.value("partitions").toList();
    EXPECT_FALSE(partitions.at(1).toMap().value("isDiskItem").toBool());
    EXPECT_TRUE(partitions.at(1).toMap().value("defBoot").toBool());
    EXPECT_TRUE(partitions.at(3).toMap().value("unallocated").toBool());
    const QVariantList boot = host::bootDiskRecords(testMachine());
    ASSERT_EQ(boot.size(), 1);
    EXPECT_EQ(boot.at(0).toMap().value("diskIndex").toInt(), 0);
    EXPECT_FALSE(boot.at(0).toMap().value("isOfflineBoot").toBool());
    EXPECT_TRUE(boot.at(0).toMap().value("isGPT").toBool());
}

TEST(Records, Alignment_ChecksPartitionsAndIgnoresFreeSpace)
{
    const QVariantList disks = host::diskRecords(testMachine());
    EXPECT_TRUE(host::isAlignedTo4k(disks.at(0).toMap()));
    EXPECT_FALSE(host::isAlignedTo4k(disks.at(2).toMap()));
    const host::Machine odd = machineOf(
        R"({"disks": [{"diskIndex": 0, "size": 4096, "partitions": [{"size": 512, "startSector": 1, "unallocated": true}]}]})");
    EXPECT_TRUE(host::isAlignedTo4k(host::diskRecords(odd).at(0).toMap()));
}

TEST(Records, Raw_IsAPartitionWithAnUnreadableFileSystem)
{
    EXPECT_TRUE(host::isRawPartition({{"fsString", "RAW"}}));
    EXPECT_FALSE(host::isRawPartition({{"fsString", "NTFS"}}));
    EXPECT_FALSE(host::isRawPartition({{"fsString", "RAW"}, {"unallocated", true}}));
}

} // namespace

// Orders that the partition page accepts or rejects.
#include "host/machine/Rules.h"
#include "host/machine/Functions.h"
#include "tests/host/MachineText.h"

#include <gtest/gtest.h>

namespace {

struct QuestionRow
{
    const char* name;
    int function;
    QVariantMap params;
    bool accepted;
};

class Questions : public testing::TestWithParam<QuestionRow>
{
};

TEST_P(Questions, OrderRejection_OnTheTestMachine)
{
    const QString reason =
        reasonOf(host::orderRejection(testMachine(), GetParam().function, GetParam().params));
    EXPECT_EQ(reason.isEmpty(), GetParam().accepted) << reason.toStdString();
}

QVariantMap disk(int index)
{
    return {{"diskIndex", index}};
}

QVariantMap letter(const char* text)
{
    return {{"driveLetter", text}};
}

QVariantMap with(QVariantMap map, const QString& key, const QVariant& value)
{
    map[key] = value;
    return map;
}

QVariantMap create(int index, qint64 capacity, int region = 0)
{
    return {{"diskIndex", index}, {"capacity", capacity},       {"fileSystem", "NTFS"},
            {"label", "new"},     {"unallocatedIndex", region}, {"driveLetter", "dummy"}};
}

QVariantMap format(const char* drive, const char* fileSystem = "NTFS", int cluster = 4096)
{
    return {{"driveLetter", drive},
            {"fileSystem", fileSystem},
            {"label", ""},
            {"clusterSize", cluster},
            {"quickFormat", true}};
}

QVariantMap split(const char* drive, qint64 size)
{
    return {{"driveLetter", drive},
            {"newPartitionCapacity", size},
            {"newPartitionFileSystem", "NTFS"},
            {"newPartitionLabel", ""}};
}

QVariantMap allocate(const char* source, const char* target, qint64 size)
{
    return {{"driveLetter", source},
            {"targetDriveLetter", target},
            {"partitionCapacity", size},
            {"fileSystem", "NTFS"},
            {"label", ""}};
}

QVariantMap autoCreate(int index, int count, const char* table)
{
    return {{"diskIndex", index}, {"partitionCount", count}, {"GptOrMbr", table}};
}

const QuestionRow kQuestions[] = {
    {"UnknownFunction", 3, disk(0), false},
    {"NegativeFunction", -1, disk(0), false},
    {"DiskEditor", 0, disk(0), true},
    {"DiskEditor_UnknownDisk", 0, disk(9), false},
    {"DiskEditor_NegativeDisk", 0, disk(-1), false},
    {"SmartSpace", 1, letter("C"), true},
    {"SmartSpace_SystemFolderForALetter", 1, letter("C:\\WINDOWS\\SYSTEM32"), true},
    {"SmartSpace_OnlyDriveOfItsDisk", 1, letter("F"), false},
    {"SmartSpace_UnknownLetter", 1, letter("Q"), false},
    {"DeleteAll", 2, disk(1), true},
    {"DeleteAll_SystemDisk", 2, disk(0), false},
    {"DeleteAll_OfflineDisk", 2, disk(4), false},
    {"DeleteAll_DiskWithoutTable", 2, disk(3), false},
    {"InitializeMbr", 5, disk(3), true},
    {"InitializeMbr_DiskInUse", 5, disk(1), false},
    {"InitializeGpt", 6, disk(3), true},
    {"InitializeGpt_SystemDisk", 6, disk(0), false},
    {"WipeDisk", 7, with(disk(1), "eraseCount", 3), true},
    {"WipeDisk_NoPass", 7, with(disk(1), "eraseCount", 0), false},
    {"WipeDisk_SystemDisk", 7, with(disk(0), "eraseCount", 3), false},
    {"Resize_Smaller", 14, with(letter("D"), "size", 20 * kGiB), true},
    {"Resize_ToTheDataExactly", 14, with(letter("D"), "size", 10 * kGiB), true},
    {"Resize_BelowTheData", 14, with(letter("D"), "size", 10 * kGiB - 1), false},
    {"Resize_IntoTheFreeSpaceBehind", 14, with(letter("D"), "size", 60 * kGiB), true},
    {"Resize_BeyondTheFreeSpaceBehind", 14, with(letter("D"), "size", 60 * kGiB + 1), false},
    {"Resize_NeighbourInTheWay", 14, with(letter("C"), "size", 101 * kGiB), false},
    {"Resize_ToNothing", 14, with(letter("D"), "size", 0), false},
    {"Resize_Negative", 14, with(letter("D"), "size", -5), false},
    {"Format", 15, format("D"), true},
    {"Format_LowerCaseLetterWithColon", 15, format("d:"), true},
    {"Format_SystemDrive", 15, format("C"), false},
    {"Format_UnknownFileSystem", 15, format("D", "BEFS"), false},
    {"Format_DefaultCluster", 15, format("D", "exfat", 0), true},
    {"Format_OddCluster", 15, format("D", "NTFS", 5000), false},
    {"Format_NegativeCluster", 15, format("D", "NTFS", -4096), false},
    {"Format_LabelTooLongForFat", 15, with(format("D", "FAT32"), "label", "twelve chars"), false},
    {"Format_SameLabelOnNtfs", 15, with(format("D"), "label", "twelve chars"), true},
    {"Delete", 16, letter("D"), true},
    {"Delete_SystemDrive", 16, letter("C"), false},
    {"Delete_UnknownLetter", 16, letter("Z"), false},
    {"Delete_EmptyLetter", 16, letter(""), false},
    {"Split", 17, split("D", 5 * kGiB), true},
    {"Split_AllFreeSpace", 17, split("D", 40 * kGiB), false},
    {"Split_UnknownLetter", 17, split("Q", 5 * kGiB), false},
    {"Create", 18, create(0, 5 * kGiB), true},
    {"Create_WholeRegion", 18, create(0, 10 * kGiB), true},
    {"Create_BeyondRegion", 18, create(0, 10 * kGiB + 1), false},
    {"Create_UnknownRegion", 18, create(0, kGiB, 1), false},
    {"Create_NegativeRegion", 18, create(0, kGiB, -2), false},
    {"Create_UnknownDisk", 18, create(9, kGiB), false},
    {"Create_NoCapacity", 18, create(0, 0), false},
    {"Create_NegativeCapacity", 18, create(0, -1), false},
    {"Create_DiskWithoutTable", 18, create(3, kGiB), false},
    {"Create_OfflineDisk", 18, create(4, kGiB), false},
    {"Create_SecondRegionOfMbrDisk", 18, create(1, 500 * kGiB, 1), true},
    {"Create_BeyondWhatMbrAddresses", 18, create(1, 1500 * kGiB, 1), false},
    {"Create_UnknownFileSystem", 18, with(create(0, kGiB), "fileSystem", "?"), false},
    {"BitLockerStatus", 19, letter("C"), true},
    {"BitLockerStatus_UnknownLetter", 19, letter("Q"), false},
    {"Merge", 20, with(letter("C:"), "driveLetter2", "D"), true},
    {"Merge_WithItself", 20, with(letter("D"), "driveLetter2", "D"), false},
    {"Merge_OfTwoDisks", 20, with(letter("D"), "driveLetter2", "E"), false},
    {"Merge_GivingUpTheSystem", 20, with(letter("D"), "driveLetter2", "C"), false},
    {"PartitionEditor", 21, letter("F"), true},
    {"PartitionEditor_UnknownLetter", 21, letter("Q"), false},
    {"Allocate", 22, allocate("D", "C", kGiB), true},
    {"Allocate_ToAnotherDisk", 22, allocate("D", "E", kGiB), false},
    {"Allocate_ToItself", 22, allocate("D", "D", kGiB), false},
    {"Allocate_MoreThanIsFree", 22, allocate("D", "C", 41 * kGiB), false},
    {"Allocate_ToANewPartition", 22, allocate("D", "CreateNew", kGiB), true},
    {"Allocate_ToANewPartitionOfUnknownKind", 22, with(allocate("D", "CreateNew", kGiB), "fileSystem", ""),
     false},
    {"WipePartition", 23, with(letter("D"), "eraseCount", 1), true},
    {"WipePartition_SystemDrive", 23, with(letter("C"), "eraseCount", 1), false},
    {"WipePartition_NoPass", 23, with(letter("D"), "eraseCount", 0), false},
    {"ToPrimary_GptDisk", 24, letter("D"), false},
    {"ToPrimary_IsPrimary", 24, letter("E"), false},
    {"ToLogical", 25, letter("E"), true},
    {"ToLogical_GptDisk", 25, letter("D"), false},
    {"ClusterSize", 29, with(letter("D"), "newClusterSize", 8192), true},
    {"ClusterSize_NoPowerOfTwo", 29, with(letter("D"), "newClusterSize", 8191), false},
    {"ClusterSize_TooLarge", 29, with(letter("D"), "newClusterSize", 4 * 1024 * 1024), false},
    {"DriveLetter", 30, with(letter("D"), "newDriveLetter", "G:"), true},
    {"DriveLetter_Taken", 30, with(letter("D"), "newDriveLetter", "E:"), false},
    {"DriveLetter_Empty", 30, with(letter("D"), "newDriveLetter", ":"), false},
    {"DriveLetter_OfTheSystem", 30, with(letter("C"), "newDriveLetter", "G:"), false},
    {"Label", 31, with(letter("C"), "newLabel", "Windows 11"), true},
    {"Label_TooLong", 31, with(letter("D"), "newLabel", QString(33, 'x')), false},
    {"Label_TooLongForFat", 31, with(letter("F"), "newLabel", "twelve chars"), false},
    {"Active", 33, letter("E"), true},
    {"Active_GptDisk", 33, letter("D"), false},
    {"Hidden", 34, letter("D"), true},
    {"Hidden_SystemDrive", 34, letter("C"), false},
    {"Migrate_SystemFolderForALetter", 39, letter("C:\\WINDOWS\\SYSTEM32"), true},
    {"Migrate_UnknownLetter", 39, letter("Q"), false},
    {"AutoCreate", 43, autoCreate(3, 4, "MBR"), true},
    {"AutoCreate_MoreThanMbrHolds", 43, autoCreate(3, 5, "MBR"), false},
    {"AutoCreate_Gpt", 43, autoCreate(3, 5, "gpt"), true},
    {"AutoCreate_UnknownTable", 43, autoCreate(3, 1, "APM"), false},
    {"AutoCreate_NoPartition", 43, autoCreate(3, 0, "GPT"), false},
    {"AutoCreate_SystemDisk", 43, autoCreate(0, 1, "GPT"), false},
    {"BringOnline", 45, disk(4), true},
    {"BringOnline_OnlineDisk", 45, disk(0), false},
    {"Eject", 46, letter("F"), true},
    {"Eject_FixedDisk", 46, letter("E"), false},
    {"LowLevelFormat", 47, disk(2), true},
    {"LowLevelFormat_SystemDisk", 47, disk(0), false},
};

INSTANTIATE_TEST_SUITE_P(All, Questions, testing::ValuesIn(kQuestions),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Rules, LockedDrive_RejectsFunctionsThatNeedItsFiles)
{
    host::Machine machine = testMachine();
    machine.partition("D")->bltState = 3;
    EXPECT_TRUE(host::orderRejection(machine, 31, {{"driveLetter", "D"}, {"newLabel", "x"}}));
    EXPECT_FALSE(host::orderRejection(machine, 16, {{"driveLetter", "D"}}));
}

TEST(Rules, FullMbrTable_RejectsAFifthPrimary)
{
    host::Machine machine = testMachine();
    host::Disk& disk = *machine.disk(1);
    const host::Partition primary = *machine.partition("E");
    for (int i = 0; i < 3; ++i)
        disk.partitions.push_back(primary);
    EXPECT_TRUE(host::orderRejection(machine, 18, create(1, kGiB / 2)));
}

TEST(Rules, AllLettersInUse_RejectsANewPartition)
{
    host::Machine machine = testMachine();
    const host::Partition pattern = *machine.partition("D");
    for (char free = 'G'; free <= 'Z'; ++free) {
        machine.disk(0)->partitions.push_back(pattern);
        machine.disk(0)->partitions.back().driveLetter = QString(QLatin1Char(free));
    }
    EXPECT_TRUE(host::orderRejection(machine, 18, create(0, kGiB)));
}

TEST(Functions, Name_BelongsToItsNumber)
{
    const struct
    {
        int number;
        const char* name;
    } rows[] = {{0, "OpenDiskLayoutEditor"}, {15, "FormatPartition"},           {47, "LowLevelFormat"},
                {1000, "CloneDisk"},         {1009, "ConvertPartitionToExfat"}, {1018, "CheckFileSystem"}};
    for (const auto& row : rows) {
        EXPECT_EQ(host::functionName(row.number), row.name);
        EXPECT_EQ(host::functionNumber(QString(row.name).toLower()), row.number) << row.name;
    }
}

TEST(Functions, UnknownNumberOrName_IsEmptyOrMinusOne)
{
    EXPECT_EQ(host::functionName(3), "");
    EXPECT_EQ(host::functionName(-1), "");
    EXPECT_EQ(host::functionNumber("Format"), -1);
    EXPECT_EQ(host::functionNumber(""), -1);
}

} // namespace

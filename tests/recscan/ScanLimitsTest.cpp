// Each case alone on a hand-made inventory: both sides of each limit, and the order of the records.
#include "recscan/ScanCases.h"

#include "tests/recscan/ExpectedTexts.h"
#include "tests/recscan/ScanFixture.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr qint64 kFiveGib = 5368709120;
constexpr qint64 kTwoTib = 2199023255552;
constexpr qint64 kThirtyTwoGib = 34359738368;

QString filled(const char* text, const QString& value)
{
    return QString(text).replace("%1", value).replace("%2", value);
}

class ScanLimits : public testing::Test
{
protected:
    ScanLimits()
    {
        qputenv("AIBRIDGE_UEFI", "1");
        host.spec("partitionmanager").answer("doFunFromAI", [this](const QVariantList&) {
            return QVariant(!refuse);
        });
        host.build();
        subject.pages = host.pages();
        subject.engine = host.engine();
    }
    static PartitionInfo partition(int disk, const char* letter, qint64 size, qint64 used)
    {
        PartitionInfo info;
        info.diskIndex = disk;
        info.driveLetter = letter;
        info.rawCapacity = size;
        info.usedSize = used;
        info.fileSystemType = "NTFS";
        info.bitlockerState = "unencrypted";
        return info;
    }
    DiskInfo& addDisk(int index)
    {
        DiskInfo info;
        info.diskIndex = index;
        info.isGpt = true;
        info.isSsd = true;
        subject.disks.push_back(info);
        return subject.disks.back();
    }
    PartitionInfo& add(const PartitionInfo& info)
    {
        auto& list = subject.partitionsByDisk[info.diskIndex];
        list.push_back(info);
        return list.back();
    }
    void addSystem(const PartitionInfo& info)
    {
        subject.partitionsByLetter['C'] = info;
        add(info);
    }
    QString message(int index)
    {
        const auto result = runScanCase(index, subject);
        return result ? result->record.value("msg").toString() : QString();
    }
    QVariantMap params(int index)
    {
        const auto result = runScanCase(index, subject);
        return result ? result->actionParams : QVariantMap();
    }
    bool fires(int index) { return runScanCase(index, subject).has_value(); }

    FakePlatform platform;
    Platform::Scope scope{platform};
    bool refuse = false; ///< the host's page accepts no function
    RecordingHost host;
    ScanSubject subject;
};

TEST_F(ScanLimits, UnknownIndex_DoesNotFire)
{
    for (const int index : {-1, 12, 13, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_FALSE(fires(index));
}

TEST_F(ScanLimits, EmptyInventory_NoListCaseFires)
{
    for (const int index : {1, 2, 3, 4, 5, 7, 8, 9, 10, 11})
        EXPECT_FALSE(fires(index)) << index;
}

// --- system drive low on space

struct Space
{
    int disk;
    qint64 size;
    qint64 used;
    bool isUnallocated = false;
};

struct SystemDriveRow
{
    const char* behaviour;
    Space system;
    std::vector<Space> others;
    const char* text; ///< null if the case does not fire
};

void PrintTo(const SystemDriveRow& row, std::ostream* out)
{
    *out << row.behaviour;
}

const std::vector<SystemDriveRow>& systemDriveRows()
{
    static const Space shortOfSpace{0, 10 * kGib, 9 * kGib};
    static const Space elsewhere{1, 100 * kGib, 0};
    static const std::vector<SystemDriveRow> rows{
        {"RatioExactly085_IsNotShort", {0, 100 * kGib, 85 * kGib}, {elsewhere}, nullptr},
        {"RatioJustAbove085_IsShort", {0, 100 * kGib, 85 * kGib + 64}, {elsewhere}, kTextMigrate},
        {"FreeExactlyFiveGib_IsNotShort", {0, 10 * kGib, 10 * kGib - kFiveGib}, {elsewhere}, nullptr},
        {"FreeOneByteBelowFiveGib_IsShort",
         {0, 10 * kGib, 10 * kGib - kFiveGib + 1},
         {elsewhere},
         kTextMigrate},
        {"OtherPartitionAtRatio085_HasNoRoom", shortOfSpace, {{0, 100 * kGib, 85 * kGib}}, nullptr},
        {"OtherPartitionJustBelowRatio085_HasRoom",
         shortOfSpace,
         {{0, 100 * kGib, 85 * kGib - 64}},
         kTextSmartLayoutSystem},
        {"OtherPartitionWithFiveGibFree_HasNoRoom", shortOfSpace, {{0, kFiveGib, 0}}, nullptr},
        {"OtherPartitionWithOneByteMoreFree_HasRoom",
         shortOfSpace,
         {{0, kFiveGib + 1, 0}},
         kTextSmartLayoutSystem},
        {"UnallocatedSpaceOnTheDisk_CountsAsRoom",
         shortOfSpace,
         {{0, 100 * kGib, 0, true}},
         kTextSmartLayoutSystem},
        {"NoRoomAnywhere_DoesNotFire", shortOfSpace, {}, nullptr},
    };
    return rows;
}

class SystemDriveLimits : public ScanLimits, public testing::WithParamInterface<SystemDriveRow>
{
};

TEST_P(SystemDriveLimits, SystemDrive_IsRecommendedAsItsRowExpects)
{
    const Space& system = GetParam().system;
    addSystem(partition(system.disk, "C", system.size, system.used));
    for (const Space& other : GetParam().others)
        add(partition(other.disk, other.isUnallocated ? "" : "D", other.size, other.used)).isUnallocated =
            other.isUnallocated;
    EXPECT_EQ(fires(2), GetParam().text != nullptr);
    EXPECT_EQ(message(2), GetParam().text == nullptr ? QString() : filled(GetParam().text, "C"));
}

INSTANTIATE_TEST_SUITE_P(Limits, SystemDriveLimits, testing::ValuesIn(systemDriveRows()),
                         [](const auto& row) { return row.param.behaviour; });

TEST_F(ScanLimits, SystemDrive_RoomOnTheSameDisk_PrecedesRoomElsewhere)
{
    addSystem(partition(0, "C", 10 * kGib, 9 * kGib));
    add(partition(1, "E", 100 * kGib, 0));
    add(partition(0, "D", 100 * kGib, 0));
    EXPECT_EQ(message(2), filled(kTextSmartLayoutSystem, "C"));
    EXPECT_EQ(params(2), QVariantMap({{"driveLetter", "C:\\WINDOWS\\SYSTEM32"}}));
    EXPECT_EQ(runScanCase(2, subject)->actionIndex, 3);
}

TEST_F(ScanLimits, SystemDrive_RoomElsewhereOnly_HasNoTarget)
{
    addSystem(partition(0, "C", 10 * kGib, 9 * kGib));
    add(partition(7, "E", 100 * kGib, 0));
    EXPECT_EQ(message(2), filled(kTextMigrate, "C"));
    EXPECT_EQ(params(2), QVariantMap());
    EXPECT_EQ(runScanCase(2, subject)->actionIndex, 2);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(ScanLimits, SystemDrive_PartitionOfTheSystemLetterOnItsDisk_IsIgnored)
{
    subject.partitionsByLetter['C'] = partition(0, "C", 10 * kGib, 9 * kGib);
    add(partition(0, "C:", 100 * kGib, 0));
    EXPECT_FALSE(fires(2));
}

TEST_F(ScanLimits, SystemDrive_LetterFollowsTheSystemDirectory)
{
    platform.directory = "e:\\winnt\\system32";
    subject.partitionsByLetter['E'] = partition(0, "E", 10 * kGib, 9 * kGib);
    add(partition(1, "D", 100 * kGib, 0));
    EXPECT_EQ(message(2), filled(kTextMigrate, "E"));
    add(partition(0, "F", 100 * kGib, 0));
    EXPECT_EQ(params(2), QVariantMap({{"driveLetter", "E:\\WINNT\\SYSTEM32"}}));
}

TEST_F(ScanLimits, SystemDriveCases_WithoutSystemDirectoryOrLetter_DoNotFire)
{
    addDisk(0).isSsd = false;
    addSystem(partition(0, "C", 10 * kGib, 9 * kGib));
    subject.partitionsByLetter['C'].bitlockerState = "encrypted";
    add(partition(1, "D", 100 * kGib, 0));
    for (const int index : {2, 8, 9})
        EXPECT_TRUE(fires(index)) << index;
    platform.directory = "X:\\Windows";
    for (const int index : {2, 8, 9})
        EXPECT_FALSE(fires(index)) << index;
    platform.directory = "";
    for (const int index : {2, 8, 9})
        EXPECT_FALSE(fires(index)) << index;
}

// Only two of these pairs have a drive low on space and another with room: the free bytes wrap around at 64
// bits, and 0 / 0 is NaN, which exceeds no limit.
TEST_F(ScanLimits, Drives_WithSizesOutOfRange_HaveTheSameTwoLimits)
{
    const qint64 least = std::numeric_limits<qint64>::min();
    const qint64 most = std::numeric_limits<qint64>::max();
    addDisk(0);
    for (const qint64 size : {least, qint64(-1), qint64(0), most}) {
        for (const qint64 used : {least, qint64(-1), qint64(0), most}) {
            subject.partitionsByDisk.clear();
            addSystem(partition(0, "C", size, used));
            add(partition(0, "D", used, size));
            const bool onlyD = size == 0 && used == most;
            const bool onlyC = size == most && used == 0;
            EXPECT_EQ(message(2), onlyD ? filled(kTextSmartLayoutSystem, "C") : QString())
                << size << ' ' << used;
            EXPECT_EQ(message(3), onlyD   ? filled(kTextSmartLayout, "C")
                                  : onlyC ? filled(kTextSmartLayout, "D")
                                          : QString())
                << size << ' ' << used;
        }
    }
}

// --- any drive low on space

TEST_F(ScanLimits, Drive_ShortAndRoomOnOneDisk_NamesTheDrive)
{
    addDisk(0);
    add(partition(0, "D", 10 * kGib, 9 * kGib));
    add(partition(0, "E", 100 * kGib, 0));
    EXPECT_EQ(message(3), filled(kTextSmartLayout, "D"));
    EXPECT_EQ(params(3), QVariantMap({{"driveLetter", "D"}}));
    EXPECT_EQ(typed(host.recorder().calls().front().arguments),
              "list[int:1,map{TestFunValid=bool:true,driveLetter=QString:\"D\"}]");
}

TEST_F(ScanLimits, Drive_ShortOnOneDiskAndRoomOnAnother_DoNotCombine)
{
    addDisk(0);
    addDisk(1);
    add(partition(0, "D", 10 * kGib, 9 * kGib));
    add(partition(1, "E", 100 * kGib, 0));
    EXPECT_FALSE(fires(3));
}

TEST_F(ScanLimits, Drive_WithoutALetter_IsNotShortButItsRoomCounts)
{
    addDisk(0);
    add(partition(0, "", 10 * kGib, 9 * kGib));
    add(partition(0, "*", 10 * kGib, 9 * kGib));
    add(partition(0, "", 100 * kGib, 0));
    EXPECT_FALSE(fires(3));
    add(partition(0, "G", 10 * kGib, 9 * kGib));
    EXPECT_EQ(message(3), filled(kTextSmartLayout, "G"));
}

TEST_F(ScanLimits, Drive_TheFirstShortOneOfTheFirstFittingDisk_IsNamed)
{
    addDisk(5);
    addDisk(2);
    add(partition(2, "F", 10 * kGib, 9 * kGib));
    add(partition(2, "G", 100 * kGib, 0));
    add(partition(5, "X", 100 * kGib, 0));
    add(partition(5, "D", 10 * kGib, 9 * kGib));
    add(partition(5, "E", 10 * kGib, 9 * kGib));
    EXPECT_EQ(message(3), filled(kTextSmartLayout, "D"));
}

TEST_F(ScanLimits, Drive_OfTheFirstFittingDiskIsRefused_NoOtherDiskIsTried)
{
    for (const int disk : {0, 1}) {
        addDisk(disk);
        add(partition(disk, disk == 0 ? "D" : "F", 10 * kGib, 9 * kGib));
        add(partition(disk, "", 100 * kGib, 0));
    }
    EXPECT_EQ(message(3), filled(kTextSmartLayout, "D"));
    host.recorder().clear();
    refuse = true;
    EXPECT_FALSE(fires(3));
    ASSERT_EQ(host.recorder().calls().size(), 1u);
    EXPECT_EQ(typed(host.recorder().calls().front().arguments),
              "list[int:1,map{TestFunValid=bool:true,driveLetter=QString:\"D\"}]");
}

TEST_F(ScanLimits, Drive_DiskThatIsNotInTheDiskList_IsNotWalked)
{
    add(partition(0, "D", 10 * kGib, 9 * kGib));
    add(partition(0, "E", 100 * kGib, 0));
    EXPECT_FALSE(fires(3));
}

TEST_F(ScanLimits, Drive_LowerCaseLetter_IsUnchanged)
{
    addDisk(0);
    add(partition(0, "d:", 10 * kGib, 9 * kGib));
    add(partition(0, "E", 100 * kGib, 0));
    EXPECT_EQ(message(3), filled(kTextSmartLayout, "d:"));
}

struct DriveRow
{
    const char* behaviour;
    Space drive;
    Space other;
    bool fires;
};

void PrintTo(const DriveRow& row, std::ostream* out)
{
    *out << row.behaviour;
}

const std::vector<DriveRow>& driveRows()
{
    static const Space room{0, 1000 * kGib, 0};
    static const Space shortOfSpace{0, 10 * kGib, 10 * kGib - kFiveGib + 1};
    static const std::vector<DriveRow> rows{
        {"RatioExactly085_IsNotShort", {0, 100 * kGib, 85 * kGib}, room, false},
        {"RatioJustAbove085_IsShort", {0, 100 * kGib, 85 * kGib + 64}, room, true},
        {"FreeExactlyFiveGib_IsNotShort", {0, 10 * kGib, 10 * kGib - kFiveGib}, room, false},
        {"FreeOneByteBelowFiveGib_IsShort", shortOfSpace, room, true},
        {"OtherDriveAtRatio085_HasNoRoom", shortOfSpace, {0, 100 * kGib, 85 * kGib}, false},
        {"OtherDriveWithFiveGibFree_HasNoRoom", shortOfSpace, {0, kFiveGib, 0}, false},
        {"OtherDriveWithOneByteMoreFree_HasRoom", shortOfSpace, {0, kFiveGib + 1, 0}, true},
    };
    return rows;
}

class DriveLimits : public ScanLimits, public testing::WithParamInterface<DriveRow>
{
};

TEST_P(DriveLimits, Drive_IsRecommendedAsItsRowExpects)
{
    addDisk(0);
    add(partition(0, "D", GetParam().drive.size, GetParam().drive.used));
    add(partition(0, "E", GetParam().other.size, GetParam().other.used));
    EXPECT_EQ(fires(3), GetParam().fires);
}

INSTANTIATE_TEST_SUITE_P(Limits, DriveLimits, testing::ValuesIn(driveRows()),
                         [](const auto& row) { return row.param.behaviour; });

using Mark = void (*)(PartitionInfo&);
const std::vector<std::pair<const char*, Mark>> kSkipped = {
    {"isCurrentBootPartition", [](PartitionInfo& p) { p.isCurrentBootPartition = true; }},
    {"isBadPartition", [](PartitionInfo& p) { p.isBadPartition = true; }},
    {"isCurrentSystemPartition", [](PartitionInfo& p) { p.isCurrentSystemPartition = true; }},
    {"gptEfi", [](PartitionInfo& p) { p.gptEfi = true; }},
    {"gptRecovery", [](PartitionInfo& p) { p.gptRecovery = true; }},
    {"gptReserved", [](PartitionInfo& p) { p.gptReserved = true; }},
    {"isDynamic", [](PartitionInfo& p) { p.isDynamic = true; }},
    {"bitlockerState", [](PartitionInfo& p) { p.bitlockerState = "encryption not unlocked"; }}};

TEST_F(ScanLimits, Drive_MarkedPartition_CountsNeitherAsShortNorAsRoom)
{
    addDisk(0);
    for (const auto& [name, mark] : kSkipped) {
        for (const int marked : {0, 1}) {
            subject.partitionsByDisk.clear();
            add(partition(0, "D", 10 * kGib, 9 * kGib));
            add(partition(0, "E", 100 * kGib, 0));
            ASSERT_TRUE(fires(3));
            mark(subject.partitionsByDisk[0][static_cast<std::size_t>(marked)]);
            EXPECT_FALSE(fires(3)) << name << marked;
        }
    }
}

TEST_F(ScanLimits, Drive_UnlockedBitLocker_Counts)
{
    addDisk(0);
    add(partition(0, "D", 10 * kGib, 9 * kGib)).bitlockerState = "encryption unlocked";
    add(partition(0, "E", 100 * kGib, 0));
    EXPECT_TRUE(fires(3));
}

// --- space wasted on a large MBR disk

TEST_F(ScanLimits, MbrDisk_OfExactlyTwoTib_DoesNotFire)
{
    DiskInfo& disk = addDisk(3);
    disk.isGpt = false;
    disk.totalCapacity = kTwoTib;
    EXPECT_FALSE(fires(4));
    disk.totalCapacity = kTwoTib + 1;
    EXPECT_EQ(message(4), filled(kTextWastedMbr, "3"));
    EXPECT_EQ(params(4), QVariantMap({{"diskIndex", 3}}));
    disk.isGpt = true;
    EXPECT_FALSE(fires(4));
}

TEST_F(ScanLimits, MbrDisk_NegativeCapacity_DoesNotFire)
{
    DiskInfo& disk = addDisk(3);
    disk.isGpt = false;
    disk.totalCapacity = -1;
    EXPECT_FALSE(fires(4));
}

TEST_F(ScanLimits, MbrBootDisk_FiresOnlyOnAMachineWithUefi)
{
    DiskInfo& disk = addDisk(0);
    disk.isGpt = false;
    disk.totalCapacity = kTwoTib + 1;
    add(partition(0, "C", kGib, 0)).isBootPartitionContainer = true;
    EXPECT_TRUE(fires(4));
    qputenv("AIBRIDGE_UEFI", "0");
    EXPECT_FALSE(fires(4));
    subject.partitionsByDisk[0][0].isBootPartitionContainer = false;
    EXPECT_TRUE(fires(4));
    subject.partitionsByDisk.clear();
    EXPECT_TRUE(fires(4));
}

TEST_F(ScanLimits, MbrBootDisk_WithoutUefi_HidesALaterLargeDisk)
{
    qputenv("AIBRIDGE_UEFI", "0");
    for (const int index : {0, 1}) {
        DiskInfo& disk = addDisk(index);
        disk.isGpt = false;
        disk.totalCapacity = kTwoTib + 1;
    }
    add(partition(0, "C", kGib, 0)).isBootPartitionContainer = true;
    EXPECT_FALSE(fires(4));
}

TEST_F(ScanLimits, MbrDisk_TheFirstOfTheListIsNamed)
{
    for (const int index : {6, 1}) {
        DiskInfo& disk = addDisk(index);
        disk.isGpt = false;
        disk.totalCapacity = kTwoTib + 1;
    }
    EXPECT_EQ(message(4), filled(kTextWastedMbr, "6"));
}

// --- large FAT32 external drive

TEST_F(ScanLimits, Fat32_OfExactly32Gib_DoesNotFire)
{
    addDisk(2).isUsb = true;
    add(partition(2, "F", kThirtyTwoGib, 0)).fileSystemType = "FAT32";
    EXPECT_FALSE(fires(5));
    subject.partitionsByDisk[2][0].rawCapacity += 1;
    EXPECT_EQ(message(5), filled(kTextFat32, "2"));
    EXPECT_EQ(params(5), QVariantMap({{"driveLetter", "F"}}));
}

TEST_F(ScanLimits, Fat32_NegativeSize_IsLargeAsAnUnsignedNumber)
{
    addDisk(2).isUsb = true;
    add(partition(2, "F", -1, 0)).fileSystemType = "FAT32";
    EXPECT_TRUE(fires(5));
}

TEST_F(ScanLimits, Fat32_OnARemovableDiskThatIsNotUsb_Fires)
{
    addDisk(2).isRemovable = true;
    add(partition(2, "F", kThirtyTwoGib + 1, 0)).fileSystemType = "FAT32";
    EXPECT_TRUE(fires(5));
    subject.disks[0].isRemovable = false;
    EXPECT_FALSE(fires(5));
}

TEST_F(ScanLimits, Fat32_WithoutALetter_DoesNotFire)
{
    addDisk(2).isUsb = true;
    add(partition(2, "", kThirtyTwoGib + 1, 0)).fileSystemType = "FAT32";
    EXPECT_FALSE(fires(5));
    subject.partitionsByDisk[2][0].driveLetter = "*";
    EXPECT_FALSE(fires(5));
}

TEST_F(ScanLimits, Fat32_OtherSpellingOfTheFileSystem_DoesNotFire)
{
    addDisk(2).isUsb = true;
    add(partition(2, "F", kThirtyTwoGib + 1, 0)).fileSystemType = "fat32";
    EXPECT_FALSE(fires(5));
}

TEST_F(ScanLimits, Fat32_FirstDiskOfTheListThenFirstPartition)
{
    addDisk(9).isUsb = true;
    addDisk(2).isUsb = true;
    add(partition(2, "F", kThirtyTwoGib + 1, 0)).fileSystemType = "FAT32";
    add(partition(9, "N", kThirtyTwoGib + 1, 0));
    add(partition(9, "G", kThirtyTwoGib + 1, 0)).fileSystemType = "FAT32";
    add(partition(9, "H", kThirtyTwoGib + 1, 0)).fileSystemType = "FAT32";
    EXPECT_EQ(message(5), filled(kTextFat32, "9"));
    EXPECT_EQ(params(5), QVariantMap({{"driveLetter", "G"}}));
}

// --- 4K alignment

TEST_F(ScanLimits, Unaligned_OnlyAnSsdFires)
{
    addDisk(0).not4kAligned = true;
    subject.disks[0].isSsd = false;
    EXPECT_FALSE(fires(7));
    addDisk(8).not4kAligned = true;
    addDisk(3).not4kAligned = true;
    EXPECT_EQ(message(7), filled(kText4k, "8"));
    EXPECT_EQ(params(7), QVariantMap({{"diskIndex", 8}}));
    subject.disks = {subject.disks[0]};
    addDisk(1);
    EXPECT_FALSE(fires(7));
}

// --- BitLocker without a rescue medium

TEST_F(ScanLimits, BitLockerUsb_AnyStateButUnencryptedFires)
{
    addSystem(partition(0, "C", kGib, 0));
    EXPECT_FALSE(fires(8));
    for (const char* state :
         {"encrypted", "encryption unlocked", "encryption not unlocked", "", "Unencrypted"}) {
        subject.partitionsByLetter['C'].bitlockerState = state;
        EXPECT_EQ(message(8), filled(kTextBitLockerUsb, "C")) << state;
        EXPECT_EQ(params(8), QVariantMap());
    }
}

TEST_F(ScanLimits, BitLockerUsb_OnArm64_DoesNotFire)
{
    addSystem(partition(0, "C", kGib, 0));
    subject.partitionsByLetter['C'].bitlockerState = "encrypted";
    const std::pair<QString, QString> value = {
        "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment", "PROCESSOR_ARCHITECTURE"};
    platform.registry[value] = "ARM64";
    EXPECT_FALSE(fires(8));
    platform.registry[value] = "arm64";
    EXPECT_TRUE(fires(8));
}

// --- slow boot disk

TEST_F(ScanLimits, SlowBootDisk_FiresWithoutAnSsd)
{
    addDisk(4);
    addSystem(partition(4, "C", kGib, 0));
    EXPECT_FALSE(fires(9));
    subject.disks[0].isSsd = false;
    EXPECT_EQ(message(9), QString(kTextSlowBoot));
    EXPECT_EQ(params(9), QVariantMap());
}

TEST_F(ScanLimits, SlowBootDisk_NotInTheDiskList_DoesNotFire)
{
    addDisk(1).isSsd = false;
    addSystem(partition(4, "C", kGib, 0));
    EXPECT_FALSE(fires(9));
}

TEST_F(ScanLimits, SlowBootDisk_TheFirstOfTwoWithThatIndexDecides)
{
    addDisk(4);
    addDisk(4).isSsd = false;
    addSystem(partition(4, "C", kGib, 0));
    EXPECT_FALSE(fires(9));
}

// --- RAW partition and locked BitLocker

TEST_F(ScanLimits, Raw_TheFirstOfTheLastDiskIsNamed)
{
    add(partition(7, "h:", kGib, 0)).isRawPartition = true;
    add(partition(7, "I", kGib, 0)).isRawPartition = true;
    add(partition(2, "D", kGib, 0)).isRawPartition = true;
    add(partition(9, "J", kGib, 0));
    EXPECT_EQ(message(10), QString(kTextRaw));
    EXPECT_EQ(params(10), QVariantMap({{"driveLetter", "H"}}));
}

TEST_F(ScanLimits, Raw_WithoutALetter_FiresWithAnEmptyTarget)
{
    add(partition(7, "", kGib, 0)).isRawPartition = true;
    EXPECT_EQ(message(10), QString(kTextRaw));
    EXPECT_EQ(params(10), QVariantMap({{"driveLetter", ""}}));
}

TEST_F(ScanLimits, Raw_WithoutSuchAPartition_DoesNotFire)
{
    add(partition(7, "H", kGib, 0));
    EXPECT_FALSE(fires(10));
}

TEST_F(ScanLimits, Locked_TheFirstOfTheLastDiskIsNamedUnchanged)
{
    add(partition(7, "h:", kGib, 0)).bitlockerState = "encryption not unlocked";
    add(partition(7, "I", kGib, 0)).bitlockerState = "encryption not unlocked";
    add(partition(2, "D", kGib, 0)).bitlockerState = "encryption not unlocked";
    EXPECT_EQ(message(11), filled(kTextLocked, "h:"));
    EXPECT_EQ(params(11), QVariantMap({{"driveLetter", "h:"}}));
}

TEST_F(ScanLimits, Locked_OtherStates_DoNotFire)
{
    for (const char* state : {"encrypted", "encryption unlocked", "unencrypted", ""}) {
        subject.partitionsByDisk.clear();
        add(partition(7, "H", kGib, 0)).bitlockerState = state;
        EXPECT_FALSE(fires(11)) << state;
    }
}

} // namespace

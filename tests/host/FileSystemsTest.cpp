// The limits of file systems.
#include "host/machine/FileSystems.h"
#include "tests/host/MachineText.h"

#include <gtest/gtest.h>

namespace {

constexpr qint64 kTiB = 1024 * kGiB;

struct VolumeRow
{
    const char* name;
    const char* fileSystem;
    qint64 size;
    int cluster;
    QString label;
    bool possible;
};

class Volumes : public testing::TestWithParam<VolumeRow>
{
};

TEST_P(Volumes, NewVolume_IsPossibleOrNot)
{
    const VolumeRow& row = GetParam();
    const QString rejection = reasonOf(
        host::newVolumeRejection(*host::fileSystem(row.fileSystem), row.size, row.cluster, row.label));
    EXPECT_EQ(rejection.isEmpty(), row.possible) << rejection.toStdString();
}

const VolumeRow kVolumes[] = {
    {"Ntfs", "NTFS", 100 * kGiB, 0, "Data", true},
    {"Ntfs_Tiny", "NTFS", 7 * kMiB, 0, "", false},
    {"Ntfs_SixtyFourKilobytes", "ntfs", 100 * kGiB, 65536, "", true},
    {"Ntfs_LongestLabel", "NTFS", kGiB, 0, QString(32, 'x'), true},
    {"Ntfs_LabelTooLong", "NTFS", kGiB, 0, QString(33, 'x'), false},
    {"Ntfs_DotInLabel", "NTFS", kGiB, 0, "a.b", true},
    {"Ntfs_FourKilobytesAtSixteenTiB", "NTFS", 16 * kTiB, 4096, "", false},
    {"Ntfs_DefaultClusterGrows", "NTFS", 100 * kTiB, 0, "", true},
    {"Fat32", "FAT32", 32 * kGiB, 0, "ELEVENCHARS", true},
    {"Fat32_LargerThanIsMade", "FAT32", 32 * kGiB + 512, 0, "", false},
    {"Fat32_Tiny", "FAT32", 32 * kMiB, 0, "", false},
    {"Fat32_LabelTooLong", "FAT32", kGiB, 0, "TWELVE CHARS", false},
    {"Fat32_DotInLabel", "FAT32", kGiB, 0, "A.B", false},
    {"Fat32_LargestCluster", "FAT32", 32 * kGiB, 65536, "", true},
    {"Fat32_ClusterTooLarge", "FAT32", 32 * kGiB, 131072, "", false},
    {"Fat", "FAT", 2 * kGiB, 65536, "", true},
    {"Fat_TooLarge", "FAT", 5 * kGiB, 65536, "", false},
    {"Fat_TooManyClusters", "FAT", 2 * kGiB, 512, "", false},
    {"Exfat", "exFAT", 100 * kGiB, 0, "ElevenChars", true},
    {"Exfat_LabelTooLong", "exFAT", kGiB, 0, "Twelve chars", false},
    {"Ext4", "EXT4", 100 * kGiB, 0, "sixteen_letters_", true},
    {"Ext4_LabelTooLong", "EXT4", 100 * kGiB, 0, "seventeen_letters", false},
    {"Cluster_NoPowerOfTwo", "NTFS", kGiB, 5000, "", false},
    {"Cluster_Negative", "NTFS", kGiB, -4096, "", false},
    {"Label_ControlCharacter", "NTFS", kGiB, 0, "a\nb", false},
};

INSTANTIATE_TEST_SUITE_P(All, Volumes, testing::ValuesIn(kVolumes),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FileSystems, UnknownName_IsNull)
{
    EXPECT_EQ(host::fileSystem("RAW"), nullptr);
    EXPECT_EQ(host::fileSystem(""), nullptr);
    EXPECT_STREQ(host::fileSystem("EXFAT")->name, "exFAT");
}

TEST(FileSystems, ExistingFat32_CanHaveTwoTiB)
{
    EXPECT_EQ(reasonOf(host::sizeRejection(*host::fileSystem("FAT32"), 2 * kTiB, 32768)), "");
    EXPECT_NE(reasonOf(host::sizeRejection(*host::fileSystem("FAT32"), 2 * kTiB + 512, 32768)), "");
}

TEST(FileSystems, DefaultCluster_FollowsTheSize)
{
    EXPECT_EQ(host::defaultCluster(*host::fileSystem("NTFS"), 100 * kGiB), 4096);
    EXPECT_EQ(host::defaultCluster(*host::fileSystem("FAT32"), 8 * kGiB), 4096);
    EXPECT_EQ(host::defaultCluster(*host::fileSystem("FAT32"), 32 * kGiB), 16384);
    EXPECT_EQ(host::defaultCluster(*host::fileSystem("exFAT"), 64 * kGiB), 131072);
}

} // namespace

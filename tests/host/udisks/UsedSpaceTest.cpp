// The tools that report the used space, and their output.
#include "host/udisks/UsedSpace.h"

#include <gtest/gtest.h>

namespace {

using host::BlockDevice;

BlockDevice volume(const QString& type)
{
    BlockDevice device;
    device.type = type;
    return device;
}

// The used bytes and the cluster size; -1 if the output is not understood.
std::pair<qint64, int> parsed(const BlockDevice& device, const char* output)
{
    const auto space = host::usedSpaceTool(device)->parse(output);
    return space ? std::pair(space->usedBytes, space->clusterBytes) : std::pair(qint64(-1), -1);
}

TEST(UsedSpace, Ntfs_IsTheSmallestPossibleSize)
{
    EXPECT_EQ(parsed(volume("ntfs"), "Cluster size       : 4096 bytes\n"
                                     "You might resize at 2043904 bytes or 3 MB (freeing 312 MB).\n"),
              std::pair(qint64(2043904), 4096));
    EXPECT_EQ(parsed(volume("ntfs"), "ERROR: Volume is scheduled for check.").first, -1);
}

TEST(UsedSpace, Ext_IsTheDifferenceOfTheBlocks)
{
    EXPECT_EQ(parsed(volume("ext4"), "Block count:              102400\nFree blocks:              90319\n"
                                     "Block size:               1024\n"),
              std::pair(qint64(12081 * 1024), 1024));
    EXPECT_EQ(parsed(volume("ext2"), "Block count:              102400\n").first, -1);
}

TEST(UsedSpace, Fat_CountsUsedClusters)
{
    EXPECT_EQ(parsed(volume("vfat"), "      2048 bytes per cluster\nChecking free cluster summary.\n"
                                     "/dev/stdin: 3 files, 17/51091 clusters\n"),
              std::pair(qint64(17 * 2048), 2048));
    EXPECT_EQ(parsed(volume("vfat"), "Logical sector size is zero.\n").first, -1);
}

TEST(UsedSpace, Exfat_IsTheDifferenceOfTheClusters)
{
    EXPECT_EQ(parsed(volume("exfat"), "Cluster size:  \t\t\t\t4096\nTotal Clusters: \t\t\t15872\n"
                                      "Free Clusters: \t\t\t\t15868\n"),
              std::pair(qint64(4 * 4096), 4096));
    EXPECT_EQ(parsed(volume("exfat"), "Cluster size:  \t\t\t\t4096\n").first, -1);
}

TEST(UsedSpace, MountedFileSystem_IsReadFromItsMount)
{
    BlockDevice device = volume("xfs");
    device.mountPoints = QStringList{"/mnt/data"};
    EXPECT_EQ(host::usedSpaceTool(device)->arguments.constLast(), "/mnt/data");
    EXPECT_FALSE(host::usedSpaceTool(device)->readsDevice);
    EXPECT_EQ(parsed(device, "4096 1000 900\n"), std::pair(qint64(100 * 4096), 4096));
    EXPECT_EQ(parsed(device, "cannot read\n").first, -1);
}

TEST(UsedSpace, UnknownContent_HasNoTool)
{
    EXPECT_FALSE(host::usedSpaceTool(volume("")));
    EXPECT_FALSE(host::usedSpaceTool(volume("crypto_LUKS")));
    EXPECT_FALSE(host::usedSpaceTool(volume("xfs")));
}

} // namespace

// Partitions resized on images, verified with independent tools.
#include "tests/host/udisks/DiskBackendFixture.h"

namespace {

using ResizeOrdersTest = DiskBackendFixture;

TEST_F(ResizeOrdersTest, Ntfs_ShrinksAndGrowsAgain)
{
    ASSERT_EQ(create(300 * kMiB, "NTFS", "Data"), "");
    EXPECT_LT(drive("D").usedSize, 100 * kMiB);
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 200 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 400 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 400 * kMiB);
    EXPECT_EQ(table()[0].toObject()["size"].toInt(), 400 * 2048);
    EXPECT_NE(outputOf("ntfsresize", {"--info", "--force", PrivateDiskService::loopDeviceOf(image) + "p1"})
                  .indexOf("Current volume size: 4194"),
              -1);
}

TEST_F(ResizeOrdersTest, Ext4_ShrinksAndGrowsAgain)
{
    ASSERT_EQ(create(300 * kMiB, "EXT4", "Data"), "");
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 200 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 400 * kMiB}}), "");
    outputOf("e2fsck", {"-fn", PrivateDiskService::loopDeviceOf(image) + "p1"});
}

TEST_F(ResizeOrdersTest, FileSystemThatCannotBeResized_IsRejectedInAdvance)
{
    ASSERT_EQ(create(100 * kMiB, "exFAT", "Data"), "");
    const auto rejection = backend->orderRejection(kResize, {{"driveLetter", "D"}, {"size", 150 * kMiB}});
    ASSERT_TRUE(rejection);
    EXPECT_EQ(rejection->english(), "The disk service cannot resize exfat file systems.");
}

} // namespace

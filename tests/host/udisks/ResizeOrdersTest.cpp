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

TEST_F(ResizeOrdersTest, Split_CutsAnNtfsPartitionOff)
{
    ASSERT_EQ(create(300 * kMiB, "NTFS", "Data"), "");
    ASSERT_EQ(create(50 * kMiB, "EXT4", "Next"), "");
    EXPECT_EQ(order(kSplit, {{"driveLetter", "D"},
                             {"newPartitionCapacity", 100 * kMiB},
                             {"newPartitionFileSystem", "EXT4"},
                             {"newPartitionLabel", "Half"}}),
              "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    EXPECT_EQ(drive("F").startSector, 201 * 2048);
    EXPECT_EQ(drive("F").size, 100 * kMiB);
    EXPECT_EQ(blkid("F", "LABEL"), "Half");
    outputOf("ntfsfix", {"--no-action", partitionDevice(1)});
    outputOf("e2fsck", {"-fn", partitionDevice(2)});
    outputOf("e2fsck", {"-fn", partitionDevice(3)});
}

TEST_F(ResizeOrdersTest, AllocateSpace_KeepsTheFilesOfTheSource)
{
    ASSERT_EQ(create(300 * kMiB, "EXT4", "Data"), "");
    const QString file = service.image("file", 3 * kMiB);
    outputOf("sh", {"-c", QString("head -c 3M /dev/urandom > '%1'").arg(file)});
    outputOf("debugfs", {"-w", "-R", QString("write %1 kept").arg(file), partitionDevice(1)});
    outputOf("udevadm", {"settle"});
    EXPECT_EQ(order(kAllocate, {{"driveLetter", "D"},
                                {"partitionCapacity", 120 * kMiB},
                                {"targetDriveLetter", "CreateNew"},
                                {"fileSystem", "NTFS"},
                                {"label", "New"}}),
              "");
    EXPECT_EQ(drive("D").size, 180 * kMiB);
    EXPECT_EQ(drive("E").size, 120 * kMiB);
    EXPECT_EQ(blkid("E", "TYPE"), "ntfs");
    outputOf("e2fsck", {"-fn", partitionDevice(1)});
    outputOf("debugfs", {"-R", QString("dump kept %1.out").arg(file), partitionDevice(1)});
    outputOf("cmp", {file, file + ".out"});
}

TEST_F(ResizeOrdersTest, AllocateSpaceToAnotherDrive_IsRejected)
{
    ASSERT_EQ(create(300 * kMiB, "NTFS", "Data"), "");
    ASSERT_EQ(create(50 * kMiB, "NTFS", "Next"), "");
    const QString before = checksum();
    EXPECT_EQ(order(kAllocate,
                    {{"driveLetter", "D"}, {"partitionCapacity", 100 * kMiB}, {"targetDriveLetter", "E"}}),
              "The start of a drive would move, which no safe tool does on a real disk.");
    EXPECT_EQ(checksum(), before);
}

TEST_F(ResizeOrdersTest, SmartAdjustment_AddsTheFreeSpaceAfterTheDrive)
{
    ASSERT_EQ(create(200 * kMiB, "NTFS", "First"), "");
    ASSERT_EQ(create(200 * kMiB, "NTFS", "Second"), "");
    EXPECT_EQ(order(kSmartAdjustment, {{"driveLetter", "D"}}),
              "Only the free space directly after a drive can be added to it on a real disk.");
    EXPECT_EQ(order(kSmartAdjustment, {{"driveLetter", "E"}}), "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    EXPECT_EQ(drive("E").size, 822 * kMiB);
    outputOf("ntfsfix", {"--no-action", partitionDevice(2)});
}

TEST_F(ResizeOrdersTest, Resize_UsesTheLastBytesOfTheDisk)
{
    ASSERT_EQ(create(300 * kMiB, "EXT4", "Data"), "");
    const qint64 room = 1023 * kMiB - 33 * 512;
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", room}}), "");
    EXPECT_GT(drive("D").size, 1022 * kMiB - 1);
    outputOf("e2fsck", {"-fn", partitionDevice(1)});
}

TEST_F(ResizeOrdersTest, LogicalDrive_IsSplitAndGrows)
{
    openImage(300 * kMiB, "label: dos\nstart=2048,size=600064,type=f\nstart=6144,size=307200,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("D") != nullptr; }, kTestMs));
    ASSERT_EQ(
        order(kFormat, {{"driveLetter", "D"}, {"fileSystem", "EXT4"}, {"label", "L"}, {"quickFormat", true}}),
        "");
    EXPECT_EQ(order(kSplit, {{"driveLetter", "D"},
                             {"newPartitionCapacity", 50 * kMiB},
                             {"newPartitionFileSystem", "EXT4"},
                             {"newPartitionLabel", "Cut"}}),
              "");
    EXPECT_FALSE(drive("E").isPrimary);
    EXPECT_EQ(drive("E").label, "Cut");
    EXPECT_EQ(order(kResize, {{"driveLetter", "E"}, {"size", 80 * kMiB}}), "");
    outputOf("e2fsck", {"-fn", partitionDevice(5)});
    outputOf("e2fsck", {"-fn", partitionDevice(6)});
}

TEST_F(ResizeOrdersTest, Fat_IsRejectedInAdvance)
{
    ASSERT_EQ(create(100 * kMiB, "FAT", "Stick"), "");
    EXPECT_EQ(rejection(kResize, {{"driveLetter", "D"}, {"size", 120 * kMiB}}),
              "The disk service cannot resize FAT file systems safely.");
}

TEST_F(ResizeOrdersTest, UnknownUsedSpace_IsNeverShrunk)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    // Without a readable superblock the tool of the file system reports nothing.
    outputOf("debugfs", {"-w", "-R", "set_super_value inodes_per_group 0", partitionDevice(1)});
    outputOf("udevadm", {"trigger", "--settle", partitionDevice(1)});
    EXPECT_TRUE(pumpUntil([&] { return drive("D").usedSize == 100 * kMiB; }, kTestMs));
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 50 * kMiB}}),
              "The data does not fit into that size.");
    EXPECT_EQ(table()[0].toObject()["size"].toInt(), 100 * 2048);
}

} // namespace

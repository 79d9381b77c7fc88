// Orders on MBR disks: primary partitions, the extended partition and logical drives.
#include "tests/host/udisks/DiskBackendFixture.h"

namespace {

using MbrOrdersTest = DiskBackendFixture;

TEST_F(MbrOrdersTest, InitializeToMbr_WritesAnEmptyTable)
{
    EXPECT_EQ(order(kInitializeToMbr, {{"diskIndex", 0}}), "");
    EXPECT_FALSE(backend->machine()->disks[0].isGPT);
    EXPECT_EQ(create(600 * kMiB, "FAT32", "STICK"), "");
    const QJsonObject entry = table()[0].toObject();
    EXPECT_EQ(entry["start"].toInt(), 2048);
    EXPECT_EQ(entry["type"].toString(), "c");
}

TEST_F(MbrOrdersTest, LogicalDrive_IsDeletedByItsPosition)
{
    ASSERT_EQ(order(kInitializeToMbr, {{"diskIndex", 0}}), "");
    backend.reset();
    outputOf(
        "sh",
        {"-c", QString("printf 'label: dos\nstart=2048,size=204800,type=7\nstart=409600,type=f\n"
                       "start=411648,size=204800,type=7\nstart=620544,size=204800,type=7\n' | sfdisk -q '%1'")
                   .arg(image)});
    open();
    ASSERT_NE(backend, nullptr);
    EXPECT_TRUE(pumpUntil([&] { return backend->machine()->partition("F") != nullptr; }, kTestMs));
    EXPECT_FALSE(drive("F").isPrimary);
    EXPECT_EQ(order(kDelete, {{"driveLetter", "E"}}), "");
    // The table gives the number of the deleted drive to the next one.
    EXPECT_EQ(drive("F").startSector, 620544);
    EXPECT_EQ(
        order(kFormat, {{"driveLetter", "F"}, {"fileSystem", "NTFS"}, {"label", "L"}, {"quickFormat", true}}),
        "");
    EXPECT_EQ(blkid("F", "LABEL"), "L");
    EXPECT_EQ(order(kDelete, {{"driveLetter", "F"}}), "");
    EXPECT_NE(backend->machine()->partition("D"), nullptr);
}

TEST_F(MbrOrdersTest, RegionInAnExtendedPartition_GetsALogicalDrive)
{
    backend.reset();
    outputOf("sh", {"-c", QString("printf 'label: dos\nstart=2048,size=204800,type=7\nstart=409600,type=f\n"
                                  "start=411648,size=204800,type=7\n' | sfdisk -q '%1'")
                              .arg(image)});
    open();
    ASSERT_NE(backend, nullptr);
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("E") != nullptr; }, kTestMs));
    EXPECT_EQ(create(100 * kMiB, "NTFS", "Inside", 1), "");
    EXPECT_EQ(create(50 * kMiB, "NTFS", "Before", 0), "");
    EXPECT_FALSE(drive("F").isPrimary);
    EXPECT_EQ(drive("F").label, "Inside");
    EXPECT_GT(drive("F").startSector, 616448);
    EXPECT_TRUE(drive("G").isPrimary);
    EXPECT_EQ(drive("G").startSector, 101 * 2048);
    EXPECT_EQ(table().size(), 5);
}

TEST_F(MbrOrdersTest, LastLogicalDrive_TakesTheExtendedPartitionWithIt)
{
    openImage(128 * kMiB, "label: dos\nstart=2048,size=40960,type=7\nstart=65536,size=102400,type=f\n"
                          "start=67584,size=40960,type=7\nstart=110592,size=40960,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("F") != nullptr; }, kTestMs));
    EXPECT_EQ(order(kDelete, {{"driveLetter", "E"}}), "");
    EXPECT_EQ(table().size(), 3);
    EXPECT_EQ(order(kDelete, {{"driveLetter", "F"}}), "");
    ASSERT_EQ(table().size(), 1);
    EXPECT_EQ(table()[0].toObject()["start"].toInt(), 2048);
    // Its space is free for a primary partition.
    ASSERT_EQ(create(90 * kMiB, "NTFS", "Primary"), "");
    EXPECT_EQ(table()[1].toObject()["node"].toString(), image + "2");
}

TEST_F(MbrOrdersTest, EmptyExtendedPartition_GetsItsFirstLogicalDrive)
{
    openImage(128 * kMiB, "label: dos\nstart=2048,size=40960,type=7\nstart=65536,size=102400,type=f\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("D") != nullptr; }, kTestMs));
    EXPECT_EQ(create(20 * kMiB, "NTFS", "Inside", 1), "");
    EXPECT_EQ(table()[2].toObject()["node"].toString(), image + "5");
    EXPECT_EQ(create(11 * kMiB, "NTFS", "Outside", 0), "");
    EXPECT_EQ(table().size(), 4);
    EXPECT_EQ(order(kDelete, {{"driveLetter", "E"}}), "");
    EXPECT_EQ(table().size(), 2);
}

TEST_F(MbrOrdersTest, LogicalDriveBetweenOthers_IsRejected)
{
    openImage(128 * kMiB, "label: dos\nstart=2048,size=260096,type=f\nstart=6144,size=40960,type=7\n"
                          "start=204800,size=40960,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("E") != nullptr; }, kTestMs));
    ASSERT_EQ(backend->machine()->freeRegions(0).size(), 2u);
    EXPECT_EQ(create(20 * kMiB, "NTFS", "Between", 0),
              "The disk service cannot create a logical drive between two others.");
    EXPECT_EQ(create(6 * kMiB, "EXT4", "After", 1), "");
    EXPECT_FALSE(drive("F").isPrimary);
    EXPECT_EQ(drive("F").startSector, 121 * 2048);
}

TEST_F(MbrOrdersTest, FourthPartition_IsALogicalDriveInANewExtendedPartition)
{
    openImage(128 * kMiB, "label: dos\nsize=20480,type=7\nsize=20480,type=7\nsize=20480,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("F") != nullptr; }, kTestMs));
    EXPECT_EQ(create(20 * kMiB, "NTFS", "Fourth"), "");
    EXPECT_FALSE(drive("G").isPrimary);
    EXPECT_EQ(drive("G").fsString, "NTFS");
    EXPECT_EQ(table()[3].toObject()["type"].toString(), "5");
    EXPECT_EQ(table()[4].toObject()["type"].toString(), "7");
}

TEST_F(MbrOrdersTest, FullTable_RejectsAnotherPrimaryPartition)
{
    openImage(128 * kMiB, "label: dos\nsize=20480,type=7\nsize=20480,type=7\nsize=20480,type=7\n"
                          "size=20480,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("G") != nullptr; }, kTestMs));
    EXPECT_EQ(create(20 * kMiB, "NTFS", "Fifth"), "The partition table is full.");
}

TEST_F(MbrOrdersTest, ActiveFlag_MovesToThePartition)
{
    openImage(64 * kMiB, "label: dos\nsize=20480,type=7,bootable\nsize=20480,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("E") != nullptr; }, kTestMs));
    EXPECT_TRUE(drive("D").isActive);
    EXPECT_EQ(order(kSetActive, {{"driveLetter", "E"}}), "");
    EXPECT_FALSE(table()[0].toObject()["bootable"].toBool());
    EXPECT_TRUE(table()[1].toObject()["bootable"].toBool());
    EXPECT_FALSE(drive("D").isActive);
    EXPECT_TRUE(drive("E").isActive);
}

TEST_F(MbrOrdersTest, HiddenPartition_GetsTheHiddenType)
{
    openImage(64 * kMiB, "label: dos\n");
    ASSERT_EQ(create(20 * kMiB, "NTFS", "Data"), "");
    ASSERT_EQ(create(20 * kMiB, "EXT4", "Linux"), "");
    EXPECT_EQ(order(kSetHidden, {{"driveLetter", "D"}}), "");
    EXPECT_EQ(table()[0].toObject()["type"].toString(), "17");
    EXPECT_TRUE(backend->machine()->disks[0].partitions[0].isHidden);
    EXPECT_EQ(backend->machine()->partition("D"), nullptr);
    EXPECT_EQ(order(kSetHidden, {{"driveLetter", "E"}}),
              "An MBR disk has no hidden type for this file system.");
    EXPECT_EQ(table()[1].toObject()["type"].toString(), "83");
    // Another program shows it again.
    outputOf("sfdisk", {"--quiet", "--no-reread", "--no-tell-kernel", "--part-type",
                        PrivateDiskService::loopDeviceOf(image), "1", "7"});
    outputOf("udevadm", {"trigger", "--settle", PrivateDiskService::loopDeviceOf(image)});
    EXPECT_TRUE(pumpUntil([&] { return !backend->machine()->disks[0].partitions[0].isHidden; }, kTestMs));
    EXPECT_NE(backend->machine()->disks[0].partitions[0].driveLetter, "");
}

} // namespace

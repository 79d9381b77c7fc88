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

} // namespace

// Partitions created, formatted, labelled and deleted on images, verified with independent tools.
#include "tests/host/udisks/DiskBackendFixture.h"

namespace {

using host::Execution;
using PartitionOrdersTest = DiskBackendFixture;

TEST_F(PartitionOrdersTest, CreatePartition_WritesTableAndFileSystem)
{
    EXPECT_EQ(create(200 * kMiB, "NTFS", "Data"), "");
    EXPECT_EQ(drive("D").fsString, "NTFS");
    EXPECT_EQ(drive("D").label, "Data");
    const QJsonArray entries = table();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].toObject()["start"].toInt(), 2048);
    EXPECT_EQ(entries[0].toObject()["size"].toInt(), 200 * 2048);
    EXPECT_EQ(entries[0].toObject()["type"].toString(), "EBD0A0A2-B9E5-4433-87C0-68B6B72699C7");
    EXPECT_EQ(blkid("D", "TYPE"), "ntfs");
    EXPECT_EQ(blkid("D", "LABEL"), "Data");
}

TEST_F(PartitionOrdersTest, FormatAndLabel_ChangeOnlyTheirPartition)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "One"), "");
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Two"), "");
    EXPECT_EQ(order(kFormat,
                    {{"driveLetter", "D"}, {"fileSystem", "exFAT"}, {"label", "New"}, {"quickFormat", true}}),
              "");
    EXPECT_EQ(order(kLabel, {{"driveLetter", "E"}, {"newLabel", "Renamed"}}), "");
    EXPECT_EQ(blkid("D", "TYPE"), "exfat");
    EXPECT_EQ(blkid("D", "LABEL"), "New");
    EXPECT_EQ(blkid("E", "TYPE"), "ext4");
    EXPECT_EQ(blkid("E", "LABEL"), "Renamed");
}

TEST_F(PartitionOrdersTest, DeletePartition_KeepsTheOthersAndTheirLetters)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "One"), "");
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Two"), "");
    EXPECT_EQ(order(kDelete, {{"driveLetter", "D"}}), "");
    const QJsonArray entries = table();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].toObject()["start"].toInt(), 101 * 2048);
    EXPECT_EQ(backend->machine()->partition("D"), nullptr);
    EXPECT_EQ(drive("E").label, "Two");
}

TEST_F(PartitionOrdersTest, FullFormat_ReportsProgressAndCanBeCancelled)
{
    ASSERT_EQ(create(900 * kMiB, "NTFS", "Data"), "");
    const auto execution = backend->execute(
        kFormat, {{"driveLetter", "D"}, {"fileSystem", "NTFS"}, {"label", ""}, {"quickFormat", false}});
    std::optional<Execution::Outcome> outcome;
    QObject::connect(execution.get(), &Execution::ended, execution.get(),
                     [&](Execution::Outcome ended) { outcome = ended; });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return outcome || execution->progress() > 0; }, kTestMs));
    EXPECT_GT(execution->progress(), 0);
    EXPECT_LT(execution->progress(), 1);
    execution->cancel();
    EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }, kTestMs));
    EXPECT_EQ(outcome, Execution::Outcome::Cancelled);
    // The service erases the signature first.
    EXPECT_EQ(drive("D").fsString, "RAW");
}

TEST_F(PartitionOrdersTest, HiddenGptPartition_HasTheAttributeAndNoLetter)
{
    ASSERT_EQ(create(50 * kMiB, "NTFS", "Data"), "");
    EXPECT_EQ(order(kSetHidden, {{"driveLetter", "D"}}), "");
    EXPECT_EQ(table()[0].toObject()["attrs"].toString(), "GUID:62");
    EXPECT_EQ(backend->machine()->partition("D"), nullptr);
    EXPECT_EQ(backend->machine()->disks[0].partitions[0].label, "Data");
}

TEST_F(PartitionOrdersTest, WipePartition_ErasesOnlyItsBytes)
{
    openImage(64 * kMiB, "label: gpt");
    ASSERT_EQ(create(16 * kMiB, "NTFS", "One"), "");
    ASSERT_EQ(create(16 * kMiB, "EXT4", "Two"), "");
    spoil(12 * kMiB);
    double shownThird = 0;
    EXPECT_EQ(
        order(kWipePartition, {{"driveLetter", "D"}, {"eraseCount", 3}},
              [&](double share) { shownThird = share < 0.5 ? std::max(share, shownThird) : shownThird; }),
        "");
    EXPECT_GT(shownThird, 0.3);
    EXPECT_TRUE(isZero(kMiB, 17 * kMiB));
    EXPECT_EQ(drive("D").fsString, "RAW");
    EXPECT_EQ(table().size(), 2);
    outputOf("e2fsck", {"-fn", partitionDevice(2)});
    EXPECT_EQ(blkid("E", "LABEL"), "Two");
}

TEST_F(PartitionOrdersTest, CheckFileSystem_ReportsErrorsAndRepairsThem)
{
    ASSERT_EQ(create(50 * kMiB, "EXT4", "Data"), "");
    EXPECT_EQ(order(kCheckFileSystem, {{"driveLetter", "D"}}), "");
    outputOf("debugfs", {"-w", "-R", "set_inode_field <2> links_count 9", partitionDevice(1)});
    EXPECT_EQ(order(kCheckFileSystem, {{"driveLetter", "D"}}), "The file system has errors.");
    EXPECT_EQ(order(kCheckFileSystem, {{"driveLetter", "D"}, {"repair", true}}), "");
    outputOf("e2fsck", {"-fn", partitionDevice(1)});
}

TEST_F(PartitionOrdersTest, CheckFileSystem_IsRejectedWithoutATool)
{
    ASSERT_EQ(create(50 * kMiB, "exFAT", "Data"), "");
    EXPECT_EQ(rejection(kCheckFileSystem, {{"driveLetter", "D"}}),
              "The disk service cannot check exfat file systems.");
}

TEST_F(PartitionOrdersTest, FatVariant_MustBeTheOneOfTheSize)
{
    EXPECT_EQ(create(511 * kMiB, "FAT32", "Stick"),
              "The disk service creates FAT32 only on drives of 512 MiB or more.");
    EXPECT_EQ(create(512 * kMiB, "FAT", "Stick"),
              "The disk service creates FAT32 instead on drives of 512 MiB or more.");
    EXPECT_EQ(create(512 * kMiB, "FAT32", "Stick"), "");
    EXPECT_EQ(create(511 * kMiB - 33 * 512, "FAT16", "Small"), "");
    EXPECT_EQ(outputOf("blkid", {"-p", "-s", "VERSION", "-o", "value", partitionDevice(1)}).trimmed(),
              "FAT32");
    EXPECT_EQ(outputOf("blkid", {"-p", "-s", "VERSION", "-o", "value", partitionDevice(2)}).trimmed(),
              "FAT16");
    outputOf("fsck.fat", {"-n", partitionDevice(1)});
    outputOf("fsck.fat", {"-n", partitionDevice(2)});
}

TEST_F(PartitionOrdersTest, ClusterSize_IsRejected)
{
    ASSERT_EQ(create(50 * kMiB, "NTFS", "Data"), "");
    EXPECT_EQ(order(kFormat, {{"driveLetter", "D"},
                              {"fileSystem", "NTFS"},
                              {"label", ""},
                              {"quickFormat", true},
                              {"clusterSize", 8192}}),
              "The disk service chooses the cluster size itself.");
    EXPECT_EQ(blkid("D", "LABEL"), "Data");
}

TEST_F(PartitionOrdersTest, LabelThatAToolWouldCut_IsRejected)
{
    ASSERT_EQ(create(50 * kMiB, "EXT4", "Data"), "");
    // 16 characters, 17 bytes.
    const QString label = QString::fromUtf8("Gr\u00fc\u00dfe-0123456789");
    EXPECT_EQ(order(kLabel, {{"driveLetter", "D"}, {"newLabel", label}}), "The label is too long.");
    EXPECT_EQ(order(kLabel, {{"driveLetter", "D"}, {"newLabel", label.left(14)}}), "");
    EXPECT_EQ(blkid("D", "LABEL"), label.left(14));
}

TEST_F(PartitionOrdersTest, PagesWithoutAnOrder_AreAccepted)
{
    ASSERT_EQ(create(50 * kMiB, "NTFS", "Data"), "");
    const QString before = checksum();
    EXPECT_EQ(order(0, {{"diskIndex", 0}}), "");
    EXPECT_EQ(order(19, {{"driveLetter", "D"}}), "");
    EXPECT_EQ(order(21, {{"driveLetter", "D"}}), "");
    EXPECT_EQ(checksum(), before);
}

} // namespace

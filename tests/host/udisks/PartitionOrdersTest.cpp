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

} // namespace

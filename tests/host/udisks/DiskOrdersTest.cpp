// Orders for whole disks on images, verified with independent tools.
#include "tests/host/udisks/DiskBackendFixture.h"

namespace {

using host::Execution;
using DiskOrdersTest = DiskBackendFixture;

TEST_F(DiskOrdersTest, InitializeToGpt_WritesATableToAnEmptyDisk)
{
    openImage(64 * kMiB, "");
    EXPECT_TRUE(backend->machine()->disks[0].isUnInitialize);
    EXPECT_EQ(order(kInitializeToGpt, {{"diskIndex", 0}}), "");
    EXPECT_EQ(tableType(), "gpt");
    EXPECT_EQ(table().size(), 0);
}

TEST_F(DiskOrdersTest, DeleteAllPartitions_EmptiesAFullMbrDisk)
{
    openImage(64 * kMiB, "label: dos\nsize=10240,type=7\nsize=10240,type=7\nsize=10240,type=7\n"
                         "size=96256,type=f\nsize=20480,type=7\nsize=20480,type=7\n");
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("H") != nullptr; }, kTestMs));
    EXPECT_EQ(order(kDeleteAll, {{"diskIndex", 0}}), "");
    EXPECT_EQ(tableType(), "dos");
    EXPECT_EQ(table().size(), 0);
    EXPECT_EQ(backend->machine()->disks[0].partitions.size(), 1u);
}

TEST_F(DiskOrdersTest, AutoCreatePartitions_DividesAnUninitializedDisk)
{
    openImage(100 * kMiB, "");
    EXPECT_EQ(order(kAutoCreate, {{"diskIndex", 0}, {"GptOrMbr", "GPT"}, {"partitionCount", 3}}), "");
    EXPECT_EQ(tableType(), "gpt");
    const QJsonArray entries = table();
    ASSERT_EQ(entries.size(), 3);
    EXPECT_EQ(entries[0].toObject()["start"].toInt(), 2048);
    EXPECT_EQ(entries[1].toObject()["start"].toInt(), 33 * 2048);
    EXPECT_EQ(entries[2].toObject()["start"].toInt(), 65 * 2048);
    EXPECT_EQ(entries[2].toObject()["size"].toInt(), 32 * 2048);
    for (const char* letter : {"D", "E", "F"})
        EXPECT_EQ(blkid(letter, "TYPE"), "ntfs");
    outputOf("ntfsfix", {"--no-action", partitionDevice(3)});
}

TEST_F(DiskOrdersTest, AutoCreatePartitions_ReplacesThePartitionsOfAnMbrDisk)
{
    openImage(100 * kMiB, "label: gpt\nsize=40960\nsize=40960");
    EXPECT_EQ(order(kAutoCreate, {{"diskIndex", 0}, {"GptOrMbr", "MBR"}, {"partitionCount", 2}}), "");
    EXPECT_EQ(tableType(), "dos");
    const QJsonArray entries = table();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[1].toObject()["start"].toInt(), 50 * 2048);
    EXPECT_EQ(entries[1].toObject()["type"].toString(), "7");
}

TEST_F(DiskOrdersTest, WipeDisk_LeavesZerosAndNoTable)
{
    openImage(32 * kMiB, "label: gpt\nsize=20480");
    spoil(15 * kMiB);
    double shownHalf = 0;
    EXPECT_EQ(order(kWipeDisk, {{"diskIndex", 0}, {"eraseCount", 2}},
                    [&](double share) { shownHalf = share == 0.5 ? share : shownHalf; }),
              "");
    // The second of two passes.
    EXPECT_EQ(shownHalf, 0.5);
    EXPECT_TRUE(isZero(0, 32 * kMiB));
    EXPECT_TRUE(backend->machine()->disks[0].isUnInitialize);
}

TEST_F(DiskOrdersTest, LowLevelFormat_LeavesZerosAndNoTable)
{
    openImage(32 * kMiB, "label: dos\nsize=20480,type=7");
    spoil(15 * kMiB);
    EXPECT_EQ(order(kLowLevelFormat, {{"diskIndex", 0}}), "");
    EXPECT_TRUE(isZero(0, 32 * kMiB));
}

TEST_F(DiskOrdersTest, WipeDisk_CanBeCancelled)
{
    const auto execution = backend->execute(kWipeDisk, {{"diskIndex", 0}, {"eraseCount", 3}});
    std::optional<Execution::Outcome> outcome;
    QObject::connect(execution.get(), &Execution::ended, execution.get(),
                     [&](Execution::Outcome ended) { outcome = ended; });
    QObject::connect(execution.get(), &Execution::progressed, execution.get(), [&] { execution->cancel(); });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }, kTestMs));
    EXPECT_EQ(outcome, Execution::Outcome::Cancelled);
    EXPECT_LT(execution->progress(), 0.4);
}

TEST_F(DiskOrdersTest, Conversion_RewritesTheTableOfAnEmptyDiskOnly)
{
    openImage(64 * kMiB, "label: gpt");
    EXPECT_EQ(order(kConvertToMbr, {{"diskIndex", 0}}), "");
    EXPECT_EQ(tableType(), "dos");
    EXPECT_EQ(order(kConvertToGpt, {{"diskIndex", 0}}), "");
    EXPECT_EQ(tableType(), "gpt");
    ASSERT_EQ(create(20 * kMiB, "EXT4", "Data"), "");
    EXPECT_EQ(
        order(kConvertToMbr, {{"diskIndex", 0}}),
        "The disk has partitions, and no safe tool converts a GPT disk to an MBR disk with its partitions.");
    EXPECT_EQ(tableType(), "gpt");
    EXPECT_EQ(blkid("D", "TYPE"), "ext4");
}

TEST_F(DiskOrdersTest, ConversionToGpt_KeepsAnMbrDiskWithPartitions)
{
    openImage(64 * kMiB, "label: dos\nsize=20480,type=7");
    EXPECT_EQ(
        order(kConvertToGpt, {{"diskIndex", 0}}),
        "The disk has partitions, and no safe tool converts an MBR disk to a GPT disk with its partitions.");
    EXPECT_EQ(tableType(), "dos");
    EXPECT_EQ(table().size(), 1);
}

} // namespace

// Effects of orders on the simulated machine.
#include "host/machine/Orders.h"
#include "host/machine/MachineReader.h"
#include "host/machine/Records.h"
#include "tests/host/MachineText.h"

#include <gtest/gtest.h>

namespace {

host::Machine after(int function, const QVariantMap& params)
{
    host::Machine machine = testMachine();
    EXPECT_TRUE(host::carryOut(machine, function, params));
    EXPECT_FALSE(host::machineRejection(machine));
    return machine;
}

QVariantMap create(int disk, qint64 capacity, int region)
{
    return {{"diskIndex", disk}, {"capacity", capacity},       {"fileSystem", "ntfs"},
            {"label", "new"},    {"unallocatedIndex", region}, {"driveLetter", "dummy"}};
}

TEST(Orders, CreatePartition_UsesTheStartOfTheRegionAndTheFirstFreeLetter)
{
    const host::Machine machine = after(18, create(0, 4 * kGiB, 0));
    const host::Partition* created = machine.partition("G");
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(created->size, 4 * kGiB);
    EXPECT_EQ(created->fsString, "NTFS");
    EXPECT_EQ(created->label, "new");
    EXPECT_EQ(created->usedSize, 0);
    EXPECT_EQ(created->partitionIndex, 3);
    EXPECT_TRUE(created->isGPT);
    const auto regions = machine.freeRegions(0);
    ASSERT_EQ(regions.size(), 1u);
    EXPECT_EQ(regions[0]->size, 6 * kGiB);
    EXPECT_EQ(regions[0]->startSector * 512, created->endOffset());
}

TEST(Orders, CreatePartition_OfTheWholeRegion_RemovesIt)
{
    EXPECT_TRUE(after(18, create(0, 10 * kGiB, 0)).freeRegions(0).empty());
}

TEST(Orders, CreatePartition_InTheSecondRegion_LeavesTheFirst)
{
    const host::Machine machine = after(18, create(1, kGiB, 1));
    ASSERT_EQ(machine.freeRegions(1).size(), 2u);
    EXPECT_EQ(machine.freeRegions(1)[0]->size, kGiB);
    EXPECT_GT(machine.partition("G")->startSector, machine.partition("E")->startSector);
}

TEST(Orders, CreatePartition_OfAPartialSector_IsRoundedDown)
{
    EXPECT_EQ(after(18, create(0, kGiB + 1, 0)).partition("G")->size, kGiB);
}

TEST(Orders, DeletePartition_JoinsItsSpaceWithTheFreeSpaceAround)
{
    const host::Machine machine = after(16, {{"driveLetter", "e:"}});
    EXPECT_EQ(machine.partition("E"), nullptr);
    ASSERT_EQ(machine.freeRegions(1).size(), 1u);
    EXPECT_EQ(machine.freeRegions(1)[0]->size, kGiB + 1024 * kGiB + 2196875771904);
    EXPECT_EQ(machine.disk(1)->usedSize, 0);
}

TEST(Orders, FormatPartition_EmptiesAndLabelsIt)
{
    const host::Machine machine = after(
        15, {{"driveLetter", "D"}, {"fileSystem", "EXFAT"}, {"label", "Films"}, {"clusterSize", 65536}});
    const host::Partition* formatted = machine.partition("D");
    EXPECT_EQ(formatted->fsString, "exFAT");
    EXPECT_EQ(formatted->label, "Films");
    EXPECT_EQ(formatted->usedSize, 0);
    EXPECT_EQ(formatted->clusterSize * formatted->sectorSize, 65536);
    EXPECT_EQ(machine.disk(0)->emptyPartitionCount, 1);
}

TEST(Orders, ChangePartitionLabel_ChangesTheLabelOnly)
{
    const host::Machine machine = after(31, {{"driveLetter", "D"}, {"newLabel", "Other"}});
    EXPECT_EQ(machine.partition("D")->label, "Other");
    EXPECT_EQ(machine.partition("D")->usedSize, 10 * kGiB);
}

TEST(Orders, ChangePartitionDriveLetter_ChangesTheLetter)
{
    const host::Machine machine = after(30, {{"driveLetter", "D"}, {"newDriveLetter", "Q:"}});
    EXPECT_EQ(machine.partition("D"), nullptr);
    ASSERT_NE(machine.partition("Q"), nullptr);
    EXPECT_EQ(machine.partition("Q")->driveLetter, "Q");
}

TEST(Orders, ResizePartition_ToLess_EnlargesTheFreeSpaceAfterIt)
{
    const host::Machine machine = after(14, {{"driveLetter", "D"}, {"size", 20 * kGiB}});
    EXPECT_EQ(machine.partition("D")->size, 20 * kGiB);
    ASSERT_EQ(machine.freeRegions(0).size(), 1u);
    EXPECT_EQ(machine.freeRegions(0)[0]->size, 40 * kGiB);
}

TEST(Orders, ResizePartition_ToMore_UsesTheFreeSpaceAfterIt)
{
    EXPECT_EQ(after(14, {{"driveLetter", "D"}, {"size", 55 * kGiB}}).freeRegions(0).at(0)->size, 5 * kGiB);
    EXPECT_TRUE(after(14, {{"driveLetter", "D"}, {"size", 60 * kGiB}}).freeRegions(0).empty());
}

TEST(Orders, ResizePartition_WithoutFreeSpaceAfterIt_LeavesAGap)
{
    const host::Machine machine = after(14, {{"driveLetter", "C"}, {"size", 60 * kGiB}});
    ASSERT_EQ(machine.freeRegions(0).size(), 2u);
    EXPECT_EQ(machine.freeRegions(0)[0]->size, 40 * kGiB);
}

TEST(Orders, InitializeDisk_WritesATableAndOneFreeRegion)
{
    const host::Machine machine = after(6, {{"diskIndex", 3}});
    EXPECT_FALSE(machine.disk(3)->isUnInitialize);
    EXPECT_TRUE(machine.disk(3)->isGPT);
    EXPECT_EQ(machine.freeRegions(3).size(), 1u);
    EXPECT_FALSE(after(5, {{"diskIndex", 3}}).disk(3)->isGPT);
}

TEST(Orders, DeleteAllPartitions_LeavesOneFreeRegionOfAllButTheTablesMebibyte)
{
    const host::Machine machine = after(2, {{"diskIndex", 1}});
    ASSERT_EQ(machine.freeRegions(1).size(), 1u);
    EXPECT_EQ(machine.freeRegions(1)[0]->startSector, 2048);
    EXPECT_EQ(machine.freeRegions(1)[0]->size, machine.disk(1)->size - kMiB);
}

TEST(Orders, SetPartitionActive_MakesItTheOnlyActiveOne)
{
    EXPECT_TRUE(after(33, {{"driveLetter", "E"}}).partition("E")->isActive);
}

TEST(Orders, SetPartitionHidden_RemovesTheLetter)
{
    const host::Machine machine = after(34, {{"driveLetter", "D"}});
    EXPECT_EQ(machine.partition("D"), nullptr);
    EXPECT_TRUE(machine.disk(0)->partitions.at(2).isHidden);
}

TEST(Orders, ConvertPartition_ChangesItsType)
{
    EXPECT_FALSE(after(25, {{"driveLetter", "E"}}).partition("E")->isPrimary);
}

TEST(Orders, DiskBringOnlineAndEjectUsb_ChangeTheDisks)
{
    EXPECT_FALSE(after(45, {{"diskIndex", 4}}).disk(4)->isOffline);
    EXPECT_EQ(after(46, {{"driveLetter", "F"}}).disk(2), nullptr);
}

TEST(Orders, ReadOnlyFunction_ChangesNothing)
{
    host::Machine machine = testMachine();
    EXPECT_FALSE(host::carryOut(machine, 19, {{"driveLetter", "C"}}));
    EXPECT_EQ(host::diskRecords(machine), host::diskRecords(testMachine()));
}

} // namespace

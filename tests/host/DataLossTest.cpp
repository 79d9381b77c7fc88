// Which orders destroy data, and whose.
#include "host/machine/DataLoss.h"
#include "host/machine/Functions.h"
#include "tests/host/MachineText.h"

#include <QtCore/QMetaEnum>

#include <gtest/gtest.h>

namespace {

using host::Function;

const QVariantMap kDrive{{"driveLetter", "D"}};
const QVariantMap kDisk{{"diskIndex", 1}};

std::optional<host::DataLoss> lossOf(Function function, const QVariantMap& params)
{
    return host::dataLoss(testMachine(), static_cast<int>(function), params);
}

// The letters of the partitions; "-" for a partition without a letter, and "keeps" for an order that keeps
// all data.
std::string lettersLostBy(Function function, const QVariantMap& params)
{
    const auto loss = lossOf(function, params);
    if (!loss)
        return "keeps";
    QString letters;
    for (const host::Partition& partition : loss->partitions)
        letters += partition.driveLetter.isEmpty() ? QString("-") : partition.driveLetter;
    return letters.toStdString();
}

QVariantMap resizeTo(qint64 size)
{
    return {{"driveLetter", "D"}, {"size", size}};
}

// A record of an entry, as a clone names its destination.
QVariantMap cloneTo(int diskIndex, std::size_t entry)
{
    const host::Machine machine = testMachine();
    const qint64 start = machine.disk(diskIndex)->partitions.at(entry).startSector;
    return {{"destination", QVariantMap{{"diskIndex", diskIndex}, {"startSector", start}}}};
}

TEST(DataLoss, EveryFunction_IsInTheTable)
{
    const QMetaEnum functions = QMetaEnum::fromType<Function>();
    for (int i = 0; i < functions.keyCount(); ++i) {
        const auto loss = host::dataLoss(testMachine(), functions.value(i), kDisk);
        EXPECT_NE(loss ? loss->operation.english() : "", "Change the disk") << functions.key(i);
    }
}

TEST(DataLoss, UnknownFunction_CountsAsDestructive)
{
    const auto loss = host::dataLoss(testMachine(), 4711, kDisk);
    ASSERT_TRUE(loss);
    EXPECT_EQ(loss->operation.english(), "Change the disk");
    EXPECT_EQ(loss->partitions.size(), 1u);
}

TEST(DataLoss, OrdersOfADisk_LoseAllItsPartitions)
{
    for (const Function function :
         {Function::DeleteAllPartitions, Function::InitializeDiskToMbr, Function::InitializeDiskToGpt,
          Function::WipeDisk, Function::LowLevelFormat, Function::AutoCreatePartitions,
          Function::ConvertDiskToGpt, Function::ConvertDiskToMbr, Function::RebuildMbr})
        EXPECT_EQ(lettersLostBy(function, kDisk), "E") << static_cast<int>(function);
    EXPECT_EQ(lettersLostBy(Function::DeleteAllPartitions, {{"diskIndex", 0}}), "-CD");
}

TEST(DataLoss, OrdersOfADrive_LoseThatDrive)
{
    for (const Function function :
         {Function::FormatPartition, Function::DeletePartition, Function::SplitPartition,
          Function::WipePartition, Function::AllocateSpace, Function::ConvertPartitionToNtfs,
          Function::CheckFileSystem})
        EXPECT_EQ(lettersLostBy(function, kDrive), "D") << static_cast<int>(function);
    EXPECT_EQ(lettersLostBy(Function::MergePartitions, {{"driveLetter", "D"}, {"driveLetter2", "C"}}), "DC");
}

TEST(DataLoss, OrdersThatKeepAllData_LoseNothing)
{
    for (const Function function :
         {Function::ChangePartitionLabel, Function::ChangePartitionDriveLetter, Function::SetPartitionHidden,
          Function::SetPartitionActive, Function::EjectUsb, Function::ScanBadSectors})
        EXPECT_EQ(lettersLostBy(function, kDrive), "keeps") << static_cast<int>(function);
    EXPECT_EQ(lettersLostBy(Function::CreatePartition, {{"diskIndex", 0}, {"unallocatedIndex", 0}}), "keeps");
}

TEST(DataLoss, Resize_LosesDataOnlyIfItShrinks)
{
    const qint64 size = testMachine().partition("D")->size;
    EXPECT_EQ(lettersLostBy(Function::ResizePartition, resizeTo(size - kMiB)), "D");
    EXPECT_TRUE(lossOf(Function::ResizePartition, resizeTo(size - kMiB))->isRisk);
    EXPECT_EQ(lettersLostBy(Function::ResizePartition, resizeTo(size)), "keeps");
    EXPECT_EQ(lettersLostBy(Function::ResizePartition, resizeTo(size + kMiB)), "keeps");
}

TEST(DataLoss, Clone_LosesItsDestination)
{
    EXPECT_EQ(lettersLostBy(Function::ClonePartition, cloneTo(0, 2)), "D");
    EXPECT_EQ(lettersLostBy(Function::ClonePartition, cloneTo(0, 3)), "keeps");
    const QVariantMap destination{{"diskIndex", 1}, {"isDiskItem", true}};
    EXPECT_EQ(lettersLostBy(Function::CloneDisk,
                            {{"source", QVariantMap{{"diskIndex", 0}}}, {"destination", destination}}),
              "E");
}

TEST(DataLoss, NewPartitionsOnADisk_KeepDataOnlyIfItsTableIsEmpty)
{
    EXPECT_EQ(lettersLostBy(Function::AutoCreatePartitions, {{"diskIndex", 3}}), "");
    host::Machine machine = testMachine();
    host::Disk& disk = *machine.disk(1);
    for (host::Partition& entry : disk.partitions)
        entry.unallocated = true;
    EXPECT_FALSE(host::dataLoss(machine, static_cast<int>(Function::AutoCreatePartitions), kDisk));
    EXPECT_TRUE(host::dataLoss(machine, static_cast<int>(Function::InitializeDiskToGpt), kDisk));
}

TEST(DataLoss, MissingTarget_CountsAsDestructive)
{
    EXPECT_EQ(lettersLostBy(Function::FormatPartition, {{"driveLetter", "Q"}}), "");
    EXPECT_EQ(lettersLostBy(Function::WipeDisk, {}), "");
}

} // namespace

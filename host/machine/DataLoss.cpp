#include "host/machine/DataLoss.h"

#include "host/machine/Functions.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/OrderParts.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace host {

namespace {

struct Question
{
    const Machine& machine;
    const QVariantMap& params;

    const Partition* drive(const char* key = "driveLetter") const
    {
        return machine.partition(textOf(params, key));
    }
    const Disk* disk() const { return machine.disk(params.value(QStringLiteral("diskIndex"), -1).toInt()); }
    QVariantMap destination() const { return params.value(QStringLiteral("destination")).toMap(); }
};

struct Loss
{
    int diskIndex = -1;
    std::vector<Partition> partitions;
};
// Empty if the order destroys nothing.
using Losses = std::optional<Loss> (*)(const Question&);

std::optional<Loss> nothing(const Question&)
{
    return std::nullopt;
}

std::optional<Loss> lossOf(const Disk* disk)
{
    Loss loss;
    if (disk == nullptr)
        return loss;
    loss.diskIndex = disk->diskIndex;
    std::copy_if(disk->partitions.begin(), disk->partitions.end(), std::back_inserter(loss.partitions),
                 [](const Partition& entry) { return !entry.unallocated; });
    return loss;
}

std::optional<Loss> lossOf(const Partition* drive)
{
    return drive == nullptr ? Loss() : Loss{drive->diskIndex, {*drive}};
}

std::optional<Loss> disk(const Question& q)
{
    return lossOf(q.disk());
}

std::optional<Loss> drive(const Question& q)
{
    return lossOf(q.drive());
}

std::optional<Loss> diskOfDrive(const Question& q)
{
    const Partition* partition = q.drive();
    return lossOf(partition == nullptr ? nullptr : q.machine.disk(partition->diskIndex));
}

// A disk without a table is not known to be empty.
std::optional<Loss> diskUnlessEmpty(const Question& q)
{
    std::optional<Loss> loss = disk(q);
    const bool isEmpty = q.disk() != nullptr && !q.disk()->isUnInitialize && loss->partitions.empty();
    return isEmpty ? std::nullopt : loss;
}

std::optional<Loss> driveThatShrinks(const Question& q)
{
    const Partition* partition = q.drive();
    const bool grows = partition != nullptr && bytesOf(q.params, "size") >= partition->size;
    return grows ? std::nullopt : lossOf(partition);
}

std::optional<Loss> driveAnd(const Question& q, const char* otherKey)
{
    std::optional<Loss> loss = drive(q);
    if (const Partition* other = q.drive(otherKey))
        loss->partitions.push_back(*other);
    return loss;
}

std::optional<Loss> mergedDrives(const Question& q)
{
    return driveAnd(q, "driveLetter2");
}

std::optional<Loss> giverAndTaker(const Question& q)
{
    return driveAnd(q, "targetDriveLetter");
}

std::optional<Loss> destinationDisk(const Question& q)
{
    return lossOf(q.machine.disk(diskIndexOf(q.destination())));
}

std::optional<Loss> destinationPartition(const Question& q)
{
    const Partition* entry = entryOf(q.machine, q.destination());
    return entry != nullptr && entry->unallocated ? std::nullopt : lossOf(entry);
}

std::optional<Loss> bootMedium(const Question& q)
{
    const Disk* medium = bootMediaDisk(q.machine, q.params);
    return medium == nullptr ? std::nullopt : lossOf(medium);
}

struct Row
{
    Losses losses = nothing;
    const char* operation = "";
    bool isRisk = false;
};

const std::map<Function, Row>& rows()
{
    static const std::map<Function, Row> table = {
        {Function::OpenDiskLayoutEditor, {}},
        {Function::SmartSpaceAdjustment,
         {diskOfDrive, QT_TRANSLATE_NOOP("Sandbox", "Move free space between partitions"), true}},
        {Function::DeleteAllPartitions,
         {disk, QT_TRANSLATE_NOOP("Sandbox", "Delete all partitions of the disk")}},
        {Function::InitializeDiskToMbr, {disk, QT_TRANSLATE_NOOP("Sandbox", "Write a new partition table")}},
        {Function::InitializeDiskToGpt, {disk, QT_TRANSLATE_NOOP("Sandbox", "Write a new partition table")}},
        {Function::WipeDisk, {disk, QT_TRANSLATE_NOOP("Sandbox", "Overwrite the whole disk")}},
        {Function::ResizePartition,
         {driveThatShrinks, QT_TRANSLATE_NOOP("Sandbox", "Shrink a partition"), true}},
        {Function::FormatPartition, {drive, QT_TRANSLATE_NOOP("Sandbox", "Format a partition")}},
        {Function::DeletePartition, {drive, QT_TRANSLATE_NOOP("Sandbox", "Delete a partition")}},
        {Function::SplitPartition, {drive, QT_TRANSLATE_NOOP("Sandbox", "Split a partition"), true}},
        {Function::CreatePartition, {}},
        {Function::ShowBitLockerStatus, {}},
        {Function::MergePartitions,
         {mergedDrives, QT_TRANSLATE_NOOP("Sandbox", "Merge two partitions"), true}},
        {Function::OpenPartitionLayoutEditor, {}},
        {Function::AllocateSpace,
         {giverAndTaker, QT_TRANSLATE_NOOP("Sandbox", "Take space from a partition"), true}},
        {Function::WipePartition, {drive, QT_TRANSLATE_NOOP("Sandbox", "Overwrite a partition")}},
        {Function::ConvertPartitionToPrimary,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Convert a partition"), true}},
        {Function::ConvertPartitionToLogical,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Convert a partition"), true}},
        {Function::ChangePartitionClusterSize,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Change the cluster size"), true}},
        {Function::ChangePartitionDriveLetter, {}},
        {Function::ChangePartitionLabel, {}},
        {Function::SetPartitionActive, {}},
        {Function::SetPartitionHidden, {}},
        {Function::MigrateSystemDriveData,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Move the data of a drive"), true}},
        {Function::AutoCreatePartitions,
         {diskUnlessEmpty, QT_TRANSLATE_NOOP("Sandbox", "Divide the disk into new partitions")}},
        {Function::DiskBringOnline, {}},
        {Function::EjectUsb, {}},
        {Function::LowLevelFormat, {disk, QT_TRANSLATE_NOOP("Sandbox", "Format the whole disk (low level)")}},
        {Function::CloneDisk, {destinationDisk, QT_TRANSLATE_NOOP("Sandbox", "Clone onto the disk")}},
        {Function::CloneSystem, {destinationDisk, QT_TRANSLATE_NOOP("Sandbox", "Clone onto the disk")}},
        {Function::ClonePartition,
         {destinationPartition, QT_TRANSLATE_NOOP("Sandbox", "Clone onto the partition")}},
        {Function::ConvertDiskToGpt, {disk, QT_TRANSLATE_NOOP("Sandbox", "Convert the disk"), true}},
        {Function::ConvertDiskToMbr, {disk, QT_TRANSLATE_NOOP("Sandbox", "Convert the disk"), true}},
        {Function::ConvertDiskToBasic, {disk, QT_TRANSLATE_NOOP("Sandbox", "Convert the disk"), true}},
        {Function::ConvertDiskToDynamic, {disk, QT_TRANSLATE_NOOP("Sandbox", "Convert the disk"), true}},
        {Function::ConvertPartitionToNtfs,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Convert a partition"), true}},
        {Function::ConvertPartitionToFat, {drive, QT_TRANSLATE_NOOP("Sandbox", "Convert a partition"), true}},
        {Function::ConvertPartitionToExfat,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Convert a partition"), true}},
        {Function::CreateBootMedia, {bootMedium, QT_TRANSLATE_NOOP("Sandbox", "Create a boot medium")}},
        {Function::InstallPreOs, {}},
        {Function::DisablePreOs, {}},
        {Function::RecoverLostPartition,
         {disk, QT_TRANSLATE_NOOP("Sandbox", "Change the partition table"), true}},
        {Function::ToggleWriteProtection, {}},
        {Function::RebuildMbr, {disk, QT_TRANSLATE_NOOP("Sandbox", "Rebuild the MBR"), true}},
        {Function::AlignDiskTo4k,
         {disk, QT_TRANSLATE_NOOP("Sandbox", "Move the partitions of the disk"), true}},
        {Function::ScanBadSectors, {}},
        {Function::CheckFileSystem,
         {drive, QT_TRANSLATE_NOOP("Sandbox", "Check and repair a file system"), true}},
    };
    return table;
}

} // namespace

std::optional<DataLoss> dataLoss(const Machine& machine, int function, const QVariantMap& params)
{
    static const Row unknown{disk, QT_TRANSLATE_NOOP("Sandbox", "Change the disk")};
    const auto found = rows().find(static_cast<Function>(function));
    const Row& row = found == rows().end() ? unknown : found->second;
    std::optional<Loss> loss = row.losses(Question{machine, params});
    if (!loss)
        return std::nullopt;
    return DataLoss{row.operation, loss->diskIndex, row.isRisk, std::move(loss->partitions)};
}

} // namespace host

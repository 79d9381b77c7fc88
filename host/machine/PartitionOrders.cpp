// The functions of the partition page that act on a partition or on a free region.
#include "host/machine/OrderParts.h"
#include "host/machine/Records.h"
#include "host/machine/Rules.h"

#include <algorithm>

namespace host {

namespace {

Disk& diskOf(Machine& machine, const Partition& partition)
{
    return *machine.disk(partition.diskIndex);
}

void createPartition(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    const Partition* region = namedRegion(machine, params);
    const std::size_t index = indexOf(disk, *region);
    const Kind kind = kindBetween(disk, partitionBefore(disk, index), partitionAfter(disk, index));
    Partition created =
        newPartition(machine, disk, newSpan(disk, *region, bytesOf(params, "capacity")), kind);
    giveFileSystem(created, textOf(params, "fileSystem"), textOf(params, "label"), 0);
    putInto(disk, index, created);
    settle(disk);
}

void deletePartition(Machine& machine, const QVariantMap& params)
{
    const Partition& gone = target(machine, params);
    Disk& disk = *machine.disk(gone.diskIndex);
    setFree(disk, indexOf(disk, gone));
    settle(disk);
}

void formatPartition(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    giveFileSystem(partition, textOf(params, "fileSystem"), textOf(params, "label"),
                   numberOf(params, "clusterSize"));
    settle(diskOf(machine, partition));
}

void losePartition(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    makeRaw(partition);
    settle(diskOf(machine, partition));
}

void loseFileSystem(Machine& machine, const QVariantMap& params, double)
{
    losePartition(machine, params);
}

qint64 formatBytes(const Machine& machine, const QVariantMap& params)
{
    return params.value(QStringLiteral("quickFormat")).toBool() ? 0 : target(machine, params).size;
}

// The free region after the partition grows or shrinks by the difference.
void resizePartition(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    Disk& disk = diskOf(machine, partition);
    const std::size_t index = indexOf(disk, partition);
    const qint64 room = partition.endOffset() + freeSpaceAfter(disk, partition);
    const bool hasRegion = room > partition.endOffset();
    partition.size = bytesOf(params, "size") / partition.sectorSize * partition.sectorSize;
    if (partition.isDynamic)
        partition.volumeSize = partition.size;
    const qint64 end = partition.endOffset();
    const auto after = disk.partitions.begin() + static_cast<std::ptrdiff_t>(index) + 1;
    const auto next = hasRegion ? disk.partitions.erase(after) : after;
    if (room > end)
        disk.partitions.insert(next, freeRegion(disk, end, room));
    settle(disk);
}

// The new partition is at the end of the drive.
void cutOff(Machine& machine, const QVariantMap& params, qint64 size, const char* fileSystemKey,
            const char* labelKey)
{
    Partition& source = target(machine, params);
    Disk& disk = diskOf(machine, source);
    const std::size_t index = indexOf(disk, source);
    const Span span{alignedUp(source.endOffset() - size), source.endOffset()};
    const Kind kind = kindBetween(disk, &source, partitionAfter(disk, index));
    Partition created = newPartition(machine, disk, span, kind);
    giveFileSystem(created, textOf(params, fileSystemKey), textOf(params, labelKey), 0);
    source.size = span.begin - source.startOffset();
    disk.partitions.insert(disk.partitions.begin() + static_cast<std::ptrdiff_t>(index) + 1, created);
    settle(disk);
}

void splitPartition(Machine& machine, const QVariantMap& params)
{
    cutOff(machine, params, bytesOf(params, "newPartitionCapacity"), "newPartitionFileSystem",
           "newPartitionLabel");
}

bool wantsNew(const QVariantMap& params)
{
    return textOf(params, "targetDriveLetter") == QLatin1String("CreateNew");
}

void allocateSpace(Machine& machine, const QVariantMap& params)
{
    const qint64 size = bytesOf(params, "partitionCapacity");
    if (wantsNew(params))
        return cutOff(machine, params, size, "fileSystem", "label");
    const Partition& source = target(machine, params);
    Disk& disk = *machine.disk(source.diskIndex);
    const Partition& taker = *machine.partition(textOf(params, "targetDriveLetter"));
    giveSpace(disk, indexOf(disk, source), indexOf(disk, taker), alignedDown(size));
    settle(disk);
}

qint64 allocateBytes(const Machine& machine, const QVariantMap& params)
{
    if (wantsNew(params))
        return 0;
    const Partition& source = target(machine, params);
    const Disk& disk = *machine.disk(source.diskIndex);
    const Partition& taker = *machine.partition(textOf(params, "targetDriveLetter"));
    return movedByGiving(disk, indexOf(disk, source), indexOf(disk, taker));
}

void smartAdjust(Machine& machine, const QVariantMap& params)
{
    const Partition& drive = target(machine, params);
    Disk& disk = *machine.disk(drive.diskIndex);
    const Transfer transfer = *smartTransfer(machine, drive);
    giveSpace(disk, transfer.from, transfer.to, transfer.bytes);
    settle(disk);
}

qint64 smartBytes(const Machine& machine, const QVariantMap& params)
{
    const Partition& drive = target(machine, params);
    const Transfer transfer = *smartTransfer(machine, drive);
    return movedByGiving(*machine.disk(drive.diskIndex), transfer.from, transfer.to);
}

// The first drive takes over the second drive, its files and the free space in between.
void mergePartitions(Machine& machine, const QVariantMap& params)
{
    const Partition& first = target(machine, params);
    const Partition& second = *machine.partition(textOf(params, "driveLetter2"));
    Disk& disk = *machine.disk(first.diskIndex);
    Partition merged = first;
    const qint64 end = std::max(first.endOffset(), second.endOffset());
    moveTo(merged, std::min(first.startOffset(), second.startOffset()));
    merged.size = end - merged.startOffset();
    merged.usedSize += second.usedSize;
    const auto one = disk.partitions.begin() + static_cast<std::ptrdiff_t>(indexOf(disk, first));
    const auto other = disk.partitions.begin() + static_cast<std::ptrdiff_t>(indexOf(disk, second));
    disk.partitions.insert(disk.partitions.erase(std::min(one, other), std::max(one, other) + 1), merged);
    settle(disk);
}

qint64 mergeBytes(const Machine& machine, const QVariantMap& params)
{
    const Partition& first = target(machine, params);
    const Partition& second = *machine.partition(textOf(params, "driveLetter2"));
    return second.usedSize + (second.startSector < first.startSector ? first.usedSize : 0);
}

qint64 wipeBytes(const Machine& machine, const QVariantMap& params)
{
    return target(machine, params).size * numberOf(params, "eraseCount");
}

void changeLetter(Machine& machine, const QVariantMap& params)
{
    target(machine, params).driveLetter = letterOf(textOf(params, "newDriveLetter"));
}

void changeLabel(Machine& machine, const QVariantMap& params)
{
    target(machine, params).label = textOf(params, "newLabel");
}

void changeClusterSize(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    partition.clusterSize = numberOf(params, "newClusterSize") / partition.sectorSize;
}

qint64 usedBytes(const Machine& machine, const QVariantMap& params)
{
    return target(machine, params).usedSize;
}

void setActive(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    for (Partition& entry : diskOf(machine, partition).partitions)
        entry.isActive = &entry == &partition;
}

// A hidden partition loses its letter, as on a real machine.
void setHidden(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    partition.isHidden = true;
    partition.driveLetter.clear();
}

void convertToPrimary(Machine& machine, const QVariantMap& params)
{
    target(machine, params).isPrimary = true;
}

void convertToLogical(Machine& machine, const QVariantMap& params)
{
    target(machine, params).isPrimary = false;
}

} // namespace

const Operations& partitionOperations()
{
    static const Operations table = {
        {Function::SmartSpaceAdjustment, {smartAdjust, smartBytes}},
        {Function::ResizePartition, {resizePartition}},
        {Function::FormatPartition, {formatPartition, formatBytes, loseFileSystem}},
        {Function::DeletePartition, {deletePartition}},
        {Function::SplitPartition, {splitPartition}},
        {Function::CreatePartition, {createPartition}},
        {Function::MergePartitions, {mergePartitions, mergeBytes}},
        {Function::AllocateSpace, {allocateSpace, allocateBytes}},
        {Function::WipePartition, {losePartition, wipeBytes, loseFileSystem}},
        {Function::ConvertPartitionToPrimary, {convertToPrimary}},
        {Function::ConvertPartitionToLogical, {convertToLogical}},
        {Function::ChangePartitionClusterSize, {changeClusterSize, usedBytes}},
        {Function::ChangePartitionDriveLetter, {changeLetter}},
        {Function::ChangePartitionLabel, {changeLabel}},
        {Function::SetPartitionActive, {setActive}},
        {Function::SetPartitionHidden, {setHidden}},
    };
    return table;
}

} // namespace host

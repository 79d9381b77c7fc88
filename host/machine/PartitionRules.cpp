// Functions that act on a partition or on a free region.
#include "host/machine/RuleParts.h"
#include "host/machine/Spaces.h"

#include <algorithm>

namespace host {

namespace {

Rejection layoutOf(const Question& q)
{
    if (const Rejection rejection = readableVolume(q))
        return rejection;
    return basicDisk(*q.diskOf(*q.partition()));
}

Rejection smartAdjust(const Question& q)
{
    if (const Rejection rejection = layoutOf(q))
        return rejection;
    return rejectIf(!smartTransfer(q.machine, *q.partition()).has_value(),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk has no space to take."));
}

Rejection resize(const Question& q)
{
    if (const Rejection rejection = readableVolume(q))
        return rejection;
    const Partition& partition = *q.partition();
    const Disk& disk = *q.diskOf(partition);
    const qint64 size = q.bytes("size") / partition.sectorSize * partition.sectorSize;
    if (size <= 0 || size < partition.usedSize)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The data does not fit into that size."));
    if (q.bytes("size") > partition.size + freeSpaceAfter(disk, partition))
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The free space after the drive is too small."));
    if (!disk.isGPT && size > partition.size && partition.startOffset() + size > kMbrLimit)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "An MBR disk cannot use space beyond 2 TiB."));
    return sizeRejection(*fileSystem(partition.fsString), size, partition.clusterSize * partition.sectorSize);
}

Rejection format(const Question& q)
{
    if (const Rejection rejection = erasablePartition(q))
        return rejection;
    const int cluster = q.number("clusterSize");
    if (cluster != 0 && cluster < q.partition()->sectorSize)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The cluster size is not supported."));
    return newVolume(q, q.partition()->size, cluster, "fileSystem", "label");
}

// A new partition at the end of the drive, from the drive's free space.
Rejection newPartitionAtEnd(const Question& q, const char* sizeKey, const char* fileSystemKey,
                            const char* labelKey)
{
    if (const Rejection rejection = layoutOf(q))
        return rejection;
    const Partition& source = *q.partition();
    const Disk& disk = *q.diskOf(source);
    const qint64 size = q.bytes(sizeKey);
    if (size <= 0 || size >= source.freeSize())
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drive does not have that much free space."));
    const qint64 begin = alignedUp(source.endOffset() - size);
    if (const Rejection rejection = newVolume(q, source.endOffset() - begin, 0, fileSystemKey, labelKey))
        return rejection;
    if (const Rejection rejection =
            sizeRejection(*fileSystem(source.fsString), begin - source.startOffset(), 0))
        return rejection;
    if (kindBetween(disk, &source, partitionAfter(disk, indexOf(disk, source))) == Kind::None)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The partition table is full."));
    return lettersLeft(q.machine);
}

Rejection split(const Question& q)
{
    return newPartitionAtEnd(q, "newPartitionCapacity", "newPartitionFileSystem", "newPartitionLabel");
}

Rejection regionFits(const Question& q)
{
    const Partition* region = namedRegion(q.machine, q.params);
    if (region == nullptr)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The free region does not exist."));
    const qint64 capacity = q.bytes("capacity");
    if (capacity <= 0 || capacity > region->size)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The free region is too small."));
    const Span span = newSpan(*q.disk(), *region, capacity);
    if (!q.disk()->isGPT && span.end > kMbrLimit)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "An MBR disk cannot use space beyond 2 TiB."));
    return newVolume(q, span.end - span.begin, 0, "fileSystem", "label");
}

Rejection create(const Question& q)
{
    if (const Rejection rejection = firstOf(q, {writableDisk, diskWithTable, basicDiskOfOrder, regionFits}))
        return rejection;
    const std::size_t index = indexOf(*q.disk(), *namedRegion(q.machine, q.params));
    const bool full = kindBetween(*q.disk(), partitionBefore(*q.disk(), index),
                                  partitionAfter(*q.disk(), index)) == Kind::None;
    return full ? Rejection(QT_TRANSLATE_NOOP("Sandbox", "The partition table is full."))
                : lettersLeft(q.machine);
}

Rejection merge(const Question& q)
{
    if (const Rejection rejection = layoutOf(q))
        return rejection;
    const Partition& first = *q.partition();
    const Partition* other = q.partition("driveLetter2");
    if (other == nullptr || other == &first || other->diskIndex != first.diskIndex)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "Both drives must be on the same disk."));
    if (other->isBoot || other->isSystem || other->isLocked() || other->readonly || other->isBad)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The second drive cannot be deleted."));
    if (fileSystem(other->fsString) == nullptr)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The second drive has no readable file system."));
    if (!areNeighbours(*q.diskOf(first), first, *other))
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drives are not adjacent."));
    const qint64 size =
        std::max(first.endOffset(), other->endOffset()) - std::min(first.startOffset(), other->startOffset());
    return sizeRejection(*fileSystem(first.fsString), size, first.clusterSize * first.sectorSize);
}

Rejection allocate(const Question& q)
{
    if (q.text("targetDriveLetter") == QLatin1String("CreateNew"))
        return newPartitionAtEnd(q, "partitionCapacity", "fileSystem", "label");
    if (const Rejection rejection = layoutOf(q))
        return rejection;
    const Partition& source = *q.partition();
    const Disk& disk = *q.diskOf(source);
    const qint64 size = q.bytes("partitionCapacity");
    if (size <= 0 || size >= source.freeSize())
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drive does not have that much free space."));
    const Partition* target = q.partition("targetDriveLetter");
    if (target == nullptr || target == &source || target->diskIndex != source.diskIndex)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The target must be another drive on the same disk."));
    if (alignedDown(size) == 0)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The size must be at least one mebibyte."));
    if (target->isLocked() || fileSystem(target->fsString) == nullptr)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The target has no readable file system."));
    return givingRejection(disk, indexOf(disk, source), indexOf(disk, *target), alignedDown(size));
}

Rejection wipePartition(const Question& q)
{
    return firstOf(q, {erasablePartition, positiveEraseCount});
}

bool hasLogicals(const Disk& disk, const Partition& except)
{
    return std::any_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
        return &entry != &except && !entry.unallocated && !entry.isPrimary;
    });
}

Rejection convertKind(const Question& q, bool toPrimary)
{
    if (const Rejection rejection = writablePartition(q))
        return rejection;
    const Partition& partition = *q.partition();
    if (partition.isGPT || partition.isPrimary == toPrimary)
        return Rejection(QT_TRANSLATE_NOOP(
            "Sandbox",
            "The drive already has that type, or its disk has no primary and logical partitions."));
    if (const Rejection rejection = basicDisk(*q.diskOf(partition)))
        return rejection;
    const Disk& disk = *q.diskOf(partition);
    const std::size_t index = indexOf(disk, partition);
    const Partition* before = partitionBefore(disk, index);
    const Partition* after = partitionAfter(disk, index);
    const int adjacentLogicals =
        int(before != nullptr && !before->isPrimary) + int(after != nullptr && !after->isPrimary);
    if (!toPrimary && (partition.isActive || partition.isBoot))
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The computer starts from the drive."));
    if (!toPrimary)
        return rejectIf(
            !(adjacentLogicals > 0 || !hasLogicals(disk, partition)),
            QT_TRANSLATE_NOOP("Sandbox", "The drive is not adjacent to the other logical drives."));
    if (adjacentLogicals == 2)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drive is between logical drives."));
    Disk without = disk;
    without.partitions.erase(without.partitions.begin() + static_cast<std::ptrdiff_t>(index));
    return rejectIf(!(kindBetween(without, nullptr, nullptr) == Kind::Primary),
                    QT_TRANSLATE_NOOP("Sandbox", "The partition table is full."));
}

Rejection toPrimary(const Question& q)
{
    return convertKind(q, true);
}

Rejection toLogical(const Question& q)
{
    return convertKind(q, false);
}

Rejection clusterSize(const Question& q)
{
    if (const Rejection rejection = readableVolume(q))
        return rejection;
    const Partition& partition = *q.partition();
    const int cluster = q.number("newClusterSize");
    if (cluster < partition.sectorSize)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The cluster size is not supported."));
    return clusterRejection(*fileSystem(partition.fsString), partition.size, cluster);
}

Rejection changeLetter(const Question& q)
{
    if (const Rejection rejection = letterKnown(q))
        return rejection;
    if (q.partition()->isBoot)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The running system needs its drive letter."));
    const QString letter = q.text("newDriveLetter");
    const bool wellFormed =
        !letterOf(letter).isEmpty() && (letter.size() == 1 || letter.mid(1) == QLatin1String(":"));
    return rejectIf(
        !(wellFormed && q.machine.partition(letter) == nullptr),
        QT_TRANSLATE_NOOP("Sandbox", "The new letter is not a drive letter, or is already in use."));
}

Rejection changeLabel(const Question& q)
{
    if (const Rejection rejection = readableVolume(q))
        return rejection;
    return labelRejection(*fileSystem(q.partition()->fsString), q.text("newLabel"));
}

Rejection setActive(const Question& q)
{
    if (const Rejection rejection = writablePartition(q))
        return rejection;
    const Partition& partition = *q.partition();
    return rejectIf(
        partition.isGPT || partition.isDynamic || !partition.isPrimary || partition.isActive,
        QT_TRANSLATE_NOOP("Sandbox", "Only an inactive primary drive of an MBR disk can be made active."));
}

Rejection setHidden(const Question& q)
{
    if (const Rejection rejection = erasablePartition(q))
        return rejection;
    return rejectIf(q.partition()->isHidden, QT_TRANSLATE_NOOP("Sandbox", "The drive is already hidden."));
}

} // namespace

const std::map<Function, Rule>& partitionRules()
{
    static const std::map<Function, Rule> table = {
        {Function::SmartSpaceAdjustment, smartAdjust},
        {Function::ResizePartition, resize},
        {Function::FormatPartition, format},
        {Function::DeletePartition, erasablePartition},
        {Function::SplitPartition, split},
        {Function::CreatePartition, create},
        {Function::ShowBitLockerStatus, letterKnown},
        {Function::MergePartitions, merge},
        {Function::OpenPartitionLayoutEditor, letterKnown},
        {Function::AllocateSpace, allocate},
        {Function::WipePartition, wipePartition},
        {Function::ConvertPartitionToPrimary, toPrimary},
        {Function::ConvertPartitionToLogical, toLogical},
        {Function::ChangePartitionClusterSize, clusterSize},
        {Function::ChangePartitionDriveLetter, changeLetter},
        {Function::ChangePartitionLabel, changeLabel},
        {Function::SetPartitionActive, setActive},
        {Function::SetPartitionHidden, setHidden},
    };
    return table;
}

} // namespace host

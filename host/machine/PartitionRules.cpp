// Functions that act on a partition or on a free region.
#include "host/machine/RuleParts.h"
#include "host/machine/Spaces.h"

#include <algorithm>

namespace host {

namespace {

Answer layoutOf(const Question& q)
{
    const Answer answer = readableVolume(q);
    return answer.isEmpty() ? basicDisk(*q.diskOf(*q.partition())) : answer;
}

Answer smartAdjust(const Question& q)
{
    const Answer answer = layoutOf(q);
    if (!answer.isEmpty())
        return answer;
    return smartTransfer(q.machine, *q.partition()).has_value()
               ? yes()
               : no(QT_TRANSLATE_NOOP("Sandbox", "there is no room to take on that disk"));
}

Answer resize(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    const Disk& disk = *q.diskOf(partition);
    const qint64 size = q.bytes("size") / partition.sectorSize * partition.sectorSize;
    if (size <= 0 || size < partition.usedSize)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the data does not fit into that size"));
    if (q.bytes("size") > partition.size + freeBehind(disk, partition))
        return no(QT_TRANSLATE_NOOP("Sandbox", "there is not that much free space behind the drive"));
    if (!disk.isGPT && size > partition.size && partition.startOffset() + size > kMbrLimit)
        return no(QT_TRANSLATE_NOOP("Sandbox", "an MBR disk cannot use space beyond 2 TiB"));
    return sizeObjection(*fileSystem(partition.fsString), size, partition.clusterSize * partition.sectorSize);
}

Answer format(const Question& q)
{
    const Answer answer = erasablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const int cluster = q.number("clusterSize");
    if (cluster != 0 && cluster < q.partition()->sectorSize)
        return no(QT_TRANSLATE_NOOP("Sandbox", "no such cluster size"));
    return newVolume(q, q.partition()->size, cluster, "fileSystem", "label");
}

// A new partition at the end of the drive, out of the drive's free space.
Answer newBehind(const Question& q, const char* sizeKey, const char* fileSystemKey, const char* labelKey)
{
    Answer answer = layoutOf(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& source = *q.partition();
    const Disk& disk = *q.diskOf(source);
    const qint64 size = q.bytes(sizeKey);
    if (size <= 0 || size >= source.freeSize())
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drive has not that much free space"));
    const qint64 begin = alignedUp(source.endOffset() - size);
    answer = newVolume(q, source.endOffset() - begin, 0, fileSystemKey, labelKey);
    if (answer.isEmpty())
        answer = sizeObjection(*fileSystem(source.fsString), begin - source.startOffset(), 0);
    const bool full = kindBetween(disk, &source, partitionBehind(disk, placeOf(disk, source))) == Kind::None;
    if (answer.isEmpty() && full)
        answer = no(QT_TRANSLATE_NOOP("Sandbox", "the partition table is full"));
    return answer.isEmpty() ? lettersLeft(q.machine) : answer;
}

Answer split(const Question& q)
{
    return newBehind(q, "newPartitionCapacity", "newPartitionFileSystem", "newPartitionLabel");
}

Answer regionFits(const Question& q)
{
    const Partition* region = namedRegion(q.machine, q.params);
    if (region == nullptr)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the disk has no such free region"));
    const qint64 capacity = q.bytes("capacity");
    if (capacity <= 0 || capacity > region->size)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the free region is not that large"));
    const Span span = newSpan(*q.disk(), *region, capacity);
    if (!q.disk()->isGPT && span.end > kMbrLimit)
        return no(QT_TRANSLATE_NOOP("Sandbox", "an MBR disk cannot use space beyond 2 TiB"));
    return newVolume(q, span.end - span.begin, 0, "fileSystem", "label");
}

Answer create(const Question& q)
{
    Answer answer = writableDisk(q);
    if (answer.isEmpty() && q.disk()->isUnInitialize)
        answer = no(QT_TRANSLATE_NOOP("Sandbox", "the disk has no partition table"));
    if (answer.isEmpty())
        answer = basicDisk(*q.disk());
    if (answer.isEmpty())
        answer = regionFits(q);
    if (!answer.isEmpty())
        return answer;
    const std::size_t place = placeOf(*q.disk(), *namedRegion(q.machine, q.params));
    const bool full = kindBetween(*q.disk(), partitionBefore(*q.disk(), place),
                                  partitionBehind(*q.disk(), place)) == Kind::None;
    return full ? no(QT_TRANSLATE_NOOP("Sandbox", "the partition table is full")) : lettersLeft(q.machine);
}

Answer merge(const Question& q)
{
    const Answer answer = layoutOf(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& first = *q.partition();
    const Partition* other = q.partition("driveLetter2");
    if (other == nullptr || other == &first || other->diskIndex != first.diskIndex)
        return no(QT_TRANSLATE_NOOP("Sandbox", "both drives must lie on one disk"));
    if (other->isBoot || other->isSystem || other->isLocked() || other->readonly || other->isBad)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the second drive cannot be given up"));
    if (fileSystem(other->fsString) == nullptr)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the second drive has no file system that can be read"));
    if (!areNeighbours(*q.diskOf(first), first, *other))
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drives are no neighbours"));
    const qint64 size =
        std::max(first.endOffset(), other->endOffset()) - std::min(first.startOffset(), other->startOffset());
    return sizeObjection(*fileSystem(first.fsString), size, first.clusterSize * first.sectorSize);
}

Answer allocate(const Question& q)
{
    if (q.text("targetDriveLetter") == QLatin1String("CreateNew"))
        return newBehind(q, "partitionCapacity", "fileSystem", "label");
    const Answer answer = layoutOf(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& source = *q.partition();
    const Disk& disk = *q.diskOf(source);
    const qint64 size = q.bytes("partitionCapacity");
    if (size <= 0 || size >= source.freeSize())
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drive has not that much free space"));
    const Partition* target = q.partition("targetDriveLetter");
    if (target == nullptr || target == &source || target->diskIndex != source.diskIndex)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the target must be another drive of the same disk"));
    if (alignedDown(size) == 0)
        return no(QT_TRANSLATE_NOOP("Sandbox", "less than one mebibyte cannot be given"));
    if (target->isLocked() || fileSystem(target->fsString) == nullptr)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the target has no file system that can be read"));
    return givingObjection(disk, placeOf(disk, source), placeOf(disk, *target), alignedDown(size));
}

Answer wipePartition(const Question& q)
{
    const Answer answer = erasablePartition(q);
    return !answer.isEmpty() || q.number("eraseCount") > 0
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "the erase count must be positive"));
}

bool hasLogicals(const Disk& disk, const Partition& besides)
{
    return std::any_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
        return &entry != &besides && !entry.unallocated && !entry.isPrimary;
    });
}

Answer convertKind(const Question& q, bool toPrimary)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    if (partition.isGPT || partition.isPrimary == toPrimary)
        return no(
            QT_TRANSLATE_NOOP("Sandbox", "the drive is of that kind already, or its disk knows no kinds"));
    const Answer basic = basicDisk(*q.diskOf(partition));
    if (!basic.isEmpty())
        return basic;
    const Disk& disk = *q.diskOf(partition);
    const std::size_t place = placeOf(disk, partition);
    const Partition* before = partitionBefore(disk, place);
    const Partition* behind = partitionBehind(disk, place);
    const int logicalsAround =
        int(before != nullptr && !before->isPrimary) + int(behind != nullptr && !behind->isPrimary);
    if (!toPrimary && (partition.isActive || partition.isBoot))
        return no(QT_TRANSLATE_NOOP("Sandbox", "the machine starts from the drive"));
    if (!toPrimary)
        return logicalsAround > 0 || !hasLogicals(disk, partition)
                   ? yes()
                   : no(QT_TRANSLATE_NOOP("Sandbox", "the other logical drives lie elsewhere"));
    if (logicalsAround == 2)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drive lies between logical drives"));
    Disk without = disk;
    without.partitions.erase(without.partitions.begin() + static_cast<std::ptrdiff_t>(place));
    return kindBetween(without, nullptr, nullptr) == Kind::Primary
               ? yes()
               : no(QT_TRANSLATE_NOOP("Sandbox", "the partition table is full"));
}

Answer toPrimary(const Question& q)
{
    return convertKind(q, true);
}

Answer toLogical(const Question& q)
{
    return convertKind(q, false);
}

Answer clusterSize(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    const int cluster = q.number("newClusterSize");
    if (cluster < partition.sectorSize)
        return no(QT_TRANSLATE_NOOP("Sandbox", "no such cluster size"));
    return clusterObjection(*fileSystem(partition.fsString), partition.size, cluster);
}

Answer changeLetter(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    if (q.partition()->isBoot)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the running system needs its letter"));
    const QString letter = q.text("newDriveLetter");
    const bool wellFormed =
        !letterOf(letter).isEmpty() && (letter.size() == 1 || letter.mid(1) == QLatin1String(":"));
    return wellFormed && q.machine.partition(letter) == nullptr
               ? yes()
               : no(QT_TRANSLATE_NOOP("Sandbox",
                                      "the new letter is not a drive letter, or is already in use"));
}

Answer changeLabel(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    return labelObjection(*fileSystem(q.partition()->fsString), q.text("newLabel"));
}

Answer setActive(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    return partition.isGPT || partition.isDynamic || !partition.isPrimary || partition.isActive
               ? no(QT_TRANSLATE_NOOP("Sandbox",
                                      "only a primary drive of an MBR disk can be made active, once"))
               : yes();
}

Answer setHidden(const Question& q)
{
    const Answer answer = erasablePartition(q);
    return !answer.isEmpty() || !q.partition()->isHidden
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "the drive is hidden already"));
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

// Functions that act on a partition or on a free region.
#include "host/machine/RuleParts.h"

#include <algorithm>

namespace host {

namespace {

Answer smartAdjust(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition* own = q.partition();
    const auto& entries = q.diskOf(*own)->partitions;
    const bool room = std::any_of(entries.begin(), entries.end(), [&](const Partition& entry) {
        return &entry != own && !entry.gptReserved && !entry.gptEFI && entry.freeSize() > 0;
    });
    return room ? yes() : no("there is no room to take on that disk");
}

Answer resize(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    const qint64 size = q.bytes("size");
    if (size <= 0 || size < partition.usedSize)
        return no("the data does not fit into that size");
    return size > partition.size + freeBehind(*q.diskOf(partition), partition)
               ? no("there is not that much free space behind the drive")
               : yes();
}

Answer format(const Question& q)
{
    const Answer answer = erasablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const int cluster = q.number("clusterSize");
    const Answer clusterAnswer = cluster == 0 ? yes() : clusterFits(cluster);
    return clusterAnswer.isEmpty() ? fileSystemAndLabel(q, "fileSystem", "label") : clusterAnswer;
}

Answer split(const Question& q)
{
    Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const qint64 size = q.bytes("newPartitionCapacity");
    if (size <= 0 || size >= q.partition()->freeSize())
        return no("the drive has not that much free space");
    answer = fileSystemAndLabel(q, "newPartitionFileSystem", "newPartitionLabel");
    if (answer.isEmpty())
        answer = roomInTable(*q.diskOf(*q.partition()));
    return answer.isEmpty() ? letterLeft(q) : answer;
}

Answer regionFits(const Question& q)
{
    const Partition* region = namedRegion(q.machine, q.params);
    if (region == nullptr)
        return no("the disk has no such free region");
    const qint64 capacity = q.bytes("capacity");
    if (capacity <= 0 || capacity > region->size)
        return no("the free region is not that large");
    const bool beyond = region->startSector * region->sectorSize + capacity > kMbrLimit;
    return !q.disk()->isGPT && beyond ? no("an MBR disk cannot use space beyond 2 TiB") : yes();
}

Answer create(const Question& q)
{
    Answer answer = writableDisk(q);
    if (answer.isEmpty() && q.disk()->isUnInitialize)
        answer = no("the disk has no partition table");
    if (answer.isEmpty())
        answer = regionFits(q);
    if (answer.isEmpty())
        answer = fileSystemAndLabel(q, "fileSystem", "label");
    if (answer.isEmpty())
        answer = roomInTable(*q.disk());
    return answer.isEmpty() ? letterLeft(q) : answer;
}

Answer merge(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition* other = q.partition("driveLetter2");
    if (other == nullptr || other == q.partition() || other->diskIndex != q.partition()->diskIndex)
        return no("both drives must lie on one disk");
    if (other->isBoot || other->isSystem || other->isLocked())
        return no("the second drive cannot be given up");
    return areNeighbours(*q.diskOf(*other), *q.partition(), *other) ? yes()
                                                                    : no("the drives are no neighbours");
}

Answer allocate(const Question& q)
{
    Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const qint64 size = q.bytes("partitionCapacity");
    if (size <= 0 || size >= q.partition()->freeSize())
        return no("the drive has not that much free space");
    if (q.text("targetDriveLetter") == QLatin1String("CreateNew")) {
        answer = fileSystemAndLabel(q, "fileSystem", "label");
        return answer.isEmpty() ? letterLeft(q) : answer;
    }
    const Partition* target = q.partition("targetDriveLetter");
    return target != nullptr && target != q.partition() && target->diskIndex == q.partition()->diskIndex
               ? yes()
               : no("the target must be another drive of the same disk");
}

Answer wipePartition(const Question& q)
{
    const Answer answer = erasablePartition(q);
    return !answer.isEmpty() || q.number("eraseCount") > 0 ? answer : no("the erase count must be positive");
}

Answer convertKind(const Question& q, bool toPrimary)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    if (partition.isGPT || partition.isPrimary == toPrimary)
        return no("the drive is of that kind already, or its disk knows no kinds");
    if (!toPrimary)
        return partition.isActive || partition.isBoot ? no("the machine starts from the drive") : yes();
    return roomInTable(*q.diskOf(partition));
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
    return answer.isEmpty() ? clusterFits(q.number("newClusterSize")) : answer;
}

Answer changeLetter(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    if (q.partition()->isBoot)
        return no("the running system needs its letter");
    const QString letter = q.text("newDriveLetter");
    const bool wellFormed =
        !letterOf(letter).isEmpty() && (letter.size() == 1 || letter.mid(1) == QLatin1String(":"));
    return wellFormed && q.machine.partition(letter) == nullptr ? yes()
                                                                : no("the new letter is none, or is taken");
}

Answer changeLabel(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    return q.text("newLabel").size() > labelLimit(q.partition()->fsString) ? no("the label is too long")
                                                                           : yes();
}

Answer setActive(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    return partition.isGPT || !partition.isPrimary || partition.isActive
               ? no("only a primary drive of an MBR disk can be made active, once")
               : yes();
}

Answer setHidden(const Question& q)
{
    const Answer answer = erasablePartition(q);
    return !answer.isEmpty() || !q.partition()->isHidden ? answer : no("the drive is hidden already");
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

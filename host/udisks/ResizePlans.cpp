// The functions that change the size of a partition. A file system is never larger than its partition: it
// shrinks first and grows last.
#include "host/machine/Layout.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"
#include "host/udisks/PlanParts.h"

#include <algorithm>

namespace host {

namespace {

// ntfsresize marks the volume for a check, and refuses the next resize until the mark is removed.
void addRepair(Steps& steps, const Partition& partition)
{
    if (partition.fsString == QLatin1String("NTFS"))
        steps.push_back(repairTarget());
}

Steps shrink(const Partition& partition, qint64 size)
{
    Steps steps{onPartition("Filesystem", "Resize", {uint64(size), QVariantMap()})};
    addRepair(steps, partition);
    steps.push_back(onPartition("Partition", "Resize", {uint64(size), QVariantMap()}));
    return steps;
}

// The service rounds sizes up to mebibytes. 0 is the largest possible size.
Steps grow(const Partition& partition, qint64 size)
{
    Steps steps{onPartition("Partition", "Resize", {uint64(size), QVariantMap()}),
                onPartition("Filesystem", "Resize", {uint64(0), QVariantMap()})};
    addRepair(steps, partition);
    return steps;
}

Steps resizePartition(const Machine& machine, const QVariantMap& params)
{
    const Partition& partition = target(machine, params);
    const qint64 size = bytesOf(params, "size") / partition.sectorSize * partition.sectorSize;
    const qint64 room = partition.size + freeSpaceAfter(*machine.disk(partition.diskIndex), partition);
    if (size < partition.size)
        return shrink(partition, size);
    if (size == partition.size)
        return {};
    return grow(partition, room - size < kMebibyte ? 0 : size);
}

// The free region directly after the drive.
Steps smartAdjust(const Machine& machine, const QVariantMap& params)
{
    const Partition& partition = target(machine, params);
    return grow(partition, partition.size + smartTransfer(machine, partition)->bytes);
}

// The shrunk partition can be up to a mebibyte larger than requested.
OrderStep createAfterTarget(qint64 begin, qint64 end)
{
    OrderStep step;
    step.createsTarget = true;
    step.call = [=](const OrderState& state) {
        const PartitionEntry& source = *state.partition->partition;
        return createCall(state, {std::max(begin, alignedUp(source.offset + source.size)), end});
    };
    return step;
}

// The new partition is at the end of the drive.
Steps cutOff(const Machine& machine, const QVariantMap& params, qint64 size, const char* fileSystemKey,
             const char* labelKey)
{
    const Partition& source = target(machine, params);
    const qint64 begin = alignedUp(source.endOffset() - size);
    Steps steps = shrink(source, begin - source.startOffset());
    steps.push_back(createAfterTarget(begin, source.endOffset()));
    steps.push_back(formatTarget(textOf(params, fileSystemKey), textOf(params, labelKey), false));
    return steps;
}

Steps splitPartition(const Machine& machine, const QVariantMap& params)
{
    return cutOff(machine, params, bytesOf(params, "newPartitionCapacity"), "newPartitionFileSystem",
                  "newPartitionLabel");
}

Steps allocateSpace(const Machine& machine, const QVariantMap& params)
{
    return cutOff(machine, params, bytesOf(params, "partitionCapacity"), "fileSystem", "label");
}

} // namespace

const Planners& resizePlanners()
{
    static const Planners table = {
        {Function::ResizePartition, resizePartition},
        {Function::SmartSpaceAdjustment, smartAdjust},
        {Function::SplitPartition, splitPartition},
        {Function::AllocateSpace, allocateSpace},
    };
    return table;
}

} // namespace host

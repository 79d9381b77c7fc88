#include "host/objects/PendingChanges.h"

#include "host/machine/DataLoss.h"
#include "host/machine/Orders.h"
#include "host/machine/Rules.h"

#include <algorithm>

namespace host {

namespace {

bool isSamePlace(const Partition& one, const Partition& other)
{
    return one.startSector == other.startSector && one.size == other.size;
}

const Partition* entryAt(const Machine& machine, int diskIndex, qint64 startSector)
{
    const Disk* disk = machine.disk(diskIndex);
    if (disk == nullptr)
        return nullptr;
    for (const Partition& entry : disk->partitions) {
        if (entry.startSector == startSector)
            return &entry;
    }
    return nullptr;
}

void markLosses(PendingChanges& changes, const Machine& machine, const DataLoss& loss, bool isRunning)
{
    for (const Partition& partition : loss.partitions) {
        const Partition* entry = entryAt(machine, partition.diskIndex, partition.startSector);
        // A partition that an earlier order creates is not in the list yet.
        if (entry == nullptr || entry->unallocated)
            continue;
        PendingChange& change = changes[{partition.diskIndex, partition.startSector}];
        change.isLost = true;
        change.isRunning = change.isRunning || isRunning;
    }
}

// The part of the entry's place that the partition takes; empty if they do not overlap.
Ghost overlap(const Partition& entry, const Partition& partition)
{
    const double size = static_cast<double>(entry.size);
    const auto share = [&](qint64 offset) {
        return static_cast<double>(qBound<qint64>(0, offset - entry.startOffset(), entry.size)) / size;
    };
    return {share(partition.startOffset()), share(partition.endOffset()), partition};
}

// Whether the disk has the partition in the same place.
bool exists(const Disk& disk, const Partition& partition)
{
    return std::any_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
        return !entry.unallocated && isSamePlace(entry, partition);
    });
}

// @p soon: the disk after the running order.
void addGhosts(PendingChanges& changes, const Disk& before, const Disk& after, const Disk& soon)
{
    for (const Partition& partition : after.partitions) {
        if (partition.unallocated || exists(before, partition))
            continue;
        for (const Partition& entry : before.partitions) {
            // The larger partition is drawn in the free space only, not over itself.
            if (!entry.unallocated && entry.startSector == partition.startSector)
                continue;
            const Ghost ghost = entry.size > 0 ? overlap(entry, partition) : Ghost();
            if (ghost.end <= ghost.begin)
                continue;
            PendingChange& change = changes[{entry.diskIndex, entry.startSector}];
            change.isRunning = change.isRunning || exists(soon, partition);
            change.ghosts.push_back(ghost);
        }
    }
}

} // namespace

bool Ghost::operator==(const Ghost& other) const
{
    return begin == other.begin && end == other.end && partition.label == other.partition.label &&
           partition.driveLetter == other.partition.driveLetter && partition.size == other.partition.size &&
           partition.fsString == other.partition.fsString;
}

bool PendingChange::operator==(const PendingChange& other) const
{
    return isLost == other.isLost && isRunning == other.isRunning && ghosts == other.ghosts;
}

PendingChanges pendingChanges(const Machine& machine, const std::vector<OpenOrder>& orders, int runningTask)
{
    PendingChanges changes;
    Machine next = machine;
    // After the running order, which is the first one.
    Machine soon = machine;
    for (const OpenOrder& order : orders) {
        if (taskRejection(next, order.function, order.params))
            continue;
        const bool isRunning = order.taskId == runningTask;
        if (const auto loss = dataLoss(next, order.function, order.params))
            markLosses(changes, machine, *loss, isRunning);
        carryOut(next, order.function, order.params);
        if (isRunning)
            soon = next;
    }
    for (const Disk& before : machine.disks) {
        if (const Disk* after = next.disk(before.diskIndex))
            addGhosts(changes, before, *after, *soon.disk(before.diskIndex));
    }
    return changes;
}

} // namespace host

#include "host/machine/Spaces.h"

#include "host/machine/FileSystems.h"
#include "host/machine/Layout.h"

#include <algorithm>

namespace host {

namespace {

bool isReadable(const Partition& entry)
{
    return !entry.unallocated && !entry.readonly && !entry.isBad && !entry.isLocked() &&
           fileSystem(entry.fsString) != nullptr;
}

bool canGive(const Partition& entry, bool wantsRegion)
{
    if (entry.unallocated || wantsRegion)
        return entry.unallocated && wantsRegion;
    return isReadable(entry) && !entry.gptReserved && !entry.gptEFI && !entry.gptRecovery;
}

qint64 offer(const Partition& entry)
{
    return alignedDown(entry.unallocated ? entry.size : entry.freeSize() / 2);
}

std::optional<Transfer> bestOffer(const Disk& disk, std::size_t to, bool regions)
{
    std::optional<Transfer> best;
    for (std::size_t from = 0; from < disk.partitions.size(); ++from) {
        const Partition& entry = disk.partitions[from];
        if (from == to || !canGive(entry, regions) || offer(entry) <= 0)
            continue;
        const bool better = !best.has_value() || offer(entry) > best->bytes;
        if (better && !givingRejection(disk, from, to, offer(entry)))
            best = Transfer{from, to, offer(entry)};
    }
    return best;
}

} // namespace

Span newSpan(const Disk& disk, const Partition& region, qint64 capacity)
{
    const qint64 begin = std::max(alignedUp(region.startOffset()), usableBegin());
    const qint64 end = std::min(region.endOffset(), usableEnd(disk));
    const qint64 size = std::min(capacity, end - begin) / region.sectorSize * region.sectorSize;
    return {begin, begin + std::max<qint64>(size, 0)};
}

std::optional<Transfer> smartTransfer(const Machine& machine, const Partition& partition)
{
    const Disk& disk = *machine.disk(partition.diskIndex);
    const std::size_t to = indexOf(disk, partition);
    const std::optional<Transfer> region = bestOffer(disk, to, true);
    return region.has_value() ? region : bestOffer(disk, to, false);
}

std::optional<QString> migrationTarget(const Machine& machine, const Partition& source)
{
    const Partition* best = nullptr;
    for (const Disk& disk : machine.disks) {
        for (const Partition& entry : disk.partitions) {
            const bool fits = disk.isWritable() && disk.diskIndex != source.diskIndex && isReadable(entry) &&
                              !letterOf(entry.driveLetter).isEmpty() && entry.freeSize() >= source.usedSize;
            if (fits && (best == nullptr || entry.freeSize() > best->freeSize()))
                best = &entry;
        }
    }
    return best == nullptr ? std::nullopt : std::optional<QString>(letterOf(best->driveLetter));
}

qint64 autoShare(const Disk& disk, bool gpt, int count)
{
    Disk emptied = disk;
    emptied.isGPT = gpt;
    const qint64 end = gpt ? usableEnd(emptied) : std::min(usableEnd(emptied), kMbrLimit);
    return alignedDown((end - usableBegin()) / count);
}

} // namespace host

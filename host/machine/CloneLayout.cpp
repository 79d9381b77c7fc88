#include "host/machine/CloneLayout.h"

#include "host/machine/FileSystems.h"
#include "host/machine/Layout.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Records.h"

#include <algorithm>
#include <numeric>

namespace host {

namespace {

constexpr qint64 kAlignment = 4096;

// Minimum size of a copy.
qint64 leastSize(const Partition& part)
{
    const FileSystem* kind = fileSystem(part.fsString);
    return alignedUp(kind == nullptr ? part.size : std::max(part.usedSize, kind->smallest));
}

std::optional<std::vector<qint64>> sizesWithin(const std::vector<Partition>& parts, qint64 room)
{
    std::vector<qint64> sizes;
    qint64 wanted = 0;
    qint64 least = 0;
    for (const Partition& part : parts) {
        sizes.push_back(part.size);
        wanted += alignedUp(part.size);
        least += std::min(leastSize(part), alignedUp(part.size));
    }
    if (wanted <= room)
        return sizes;
    if (least > room)
        return std::nullopt;
    const double share = static_cast<double>(room - least) / static_cast<double>(wanted - least);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const qint64 bottom = std::min(leastSize(parts[i]), alignedUp(parts[i].size));
        const auto extra = static_cast<double>(alignedUp(parts[i].size) - bottom) * share;
        sizes[i] = std::min(parts[i].size, bottom + alignedDown(static_cast<qint64>(extra)));
    }
    return sizes;
}

Partition copyOf(const Partition& part, const Machine& machine, const Disk& disk, Span span)
{
    const Partition fresh = newPartition(machine, disk, span, part.isPrimary ? Kind::Primary : Kind::Logical);
    Partition copy = fresh;
    copy.usedSize = part.usedSize;
    copy.clusterSize = part.clusterSize;
    copy.isUnformattedType = part.isUnformattedType;
    copy.isHidden = part.isHidden;
    copy.isActive = part.isActive;
    copy.isOfflineBoot = part.isBoot || part.isOfflineBoot;
    copy.gptReserved = part.gptReserved;
    copy.gptEFI = part.gptEFI;
    copy.gptRecovery = part.gptRecovery;
    copy.label = part.label;
    copy.fsString = part.fsString;
    if (letterOf(part.driveLetter).isEmpty())
        copy.driveLetter.clear();
    return copy;
}

bool isAligned(const Partition& entry)
{
    return entry.startOffset() % kAlignment == 0;
}

} // namespace

std::optional<Disk> clonedDisk(const Machine& machine, const Disk& source,
                               const std::vector<Partition>& parts, const Disk& destination)
{
    if (sectorSizeOf(source) != sectorSizeOf(destination))
        return std::nullopt;
    Machine after = machine;
    Disk& disk = *after.disk(destination.diskIndex);
    writeTable(disk, source.isGPT);
    const qint64 end = disk.isGPT ? usableEnd(disk) : std::min(usableEnd(disk), kMbrLimit);
    const auto sizes = sizesWithin(parts, alignedDown(end) - usableBegin());
    if (!sizes.has_value())
        return std::nullopt;
    qint64 begin = usableBegin();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        putInto(disk, disk.partitions.size() - 1,
                copyOf(parts[i], after, disk, {begin, begin + (*sizes)[i]}));
        begin = alignedUp(begin + (*sizes)[i]);
    }
    settle(disk);
    return disk;
}

std::vector<Partition> partsOfDisk(const Disk& disk)
{
    std::vector<Partition> parts;
    std::copy_if(disk.partitions.begin(), disk.partitions.end(), std::back_inserter(parts),
                 [](const Partition& entry) { return !entry.unallocated; });
    return parts;
}

std::vector<Partition> partsOfSystem(const Disk& disk, const Partition* named)
{
    std::vector<Partition> parts;
    for (const Partition& entry : disk.partitions) {
        const bool belongs = entry.isBoot || entry.isSystem || entry.isOfflineBoot || entry.gptReserved ||
                             entry.gptEFI || entry.gptRecovery || &entry == named;
        if (!entry.unallocated && belongs)
            parts.push_back(entry);
    }
    return parts;
}

std::optional<Disk> alignedDisk(const Disk& disk)
{
    Disk aligned = disk;
    aligned.partitions.clear();
    const qint64 listEnd = disk.partitions.empty() ? 0 : disk.partitions.back().endOffset();
    // Space before the first partition is free only if the list contains a free region for it.
    qint64 cursor = disk.partitions.empty() || !disk.partitions.front().unallocated
                        ? -1
                        : disk.partitions.front().startOffset();
    for (const Partition& part : partsOfDisk(disk)) {
        Partition moved = part;
        const bool stays = isAligned(part) && part.startOffset() >= cursor;
        if (!stays)
            moveTo(moved, alignedUp(std::max(part.startOffset(), cursor)));
        if (!stays && (part.readonly || part.isBad || part.isLocked()))
            return std::nullopt;
        if (cursor >= 0 && moved.startOffset() > cursor)
            aligned.partitions.push_back(freeRegion(disk, cursor, moved.startOffset()));
        aligned.partitions.push_back(moved);
        cursor = moved.endOffset();
    }
    if (cursor > listEnd || (!disk.isGPT && cursor > kMbrLimit))
        return std::nullopt;
    if (cursor >= 0 && cursor < listEnd)
        aligned.partitions.push_back(freeRegion(disk, cursor, listEnd));
    settle(aligned);
    return aligned;
}

} // namespace host

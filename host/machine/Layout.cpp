#include "host/machine/Layout.h"

#include "host/machine/FileSystems.h"

#include <algorithm>

namespace host {

namespace {

constexpr int kUsualSector = 512;

bool isLogical(const Partition* partition)
{
    return partition != nullptr && !partition->isPrimary;
}

bool isMovable(const Partition& entry)
{
    return entry.unallocated || (!entry.readonly && !entry.isBad && !entry.isLocked());
}

} // namespace

qint64 alignedDown(qint64 bytes)
{
    return bytes / kMebibyte * kMebibyte;
}

qint64 alignedUp(qint64 bytes)
{
    return alignedDown(bytes + kMebibyte - 1);
}

int sectorSizeOf(const Disk& disk)
{
    return disk.partitions.empty() ? kUsualSector : disk.partitions.front().sectorSize;
}

qint64 usableBegin()
{
    return kMebibyte;
}

qint64 usableEnd(const Disk& disk)
{
    const qint64 sector = sectorSizeOf(disk);
    return disk.size / sector * sector - (disk.isGPT ? kGptTailSectors * sector : 0);
}

Partition freeRegion(const Disk& disk, qint64 begin, qint64 end)
{
    Partition region;
    region.unallocated = true;
    region.diskIndex = disk.diskIndex;
    region.isGPT = disk.isGPT;
    region.isDynamic = disk.isDynamic;
    region.isStorageSpace = disk.isStorageSpace;
    region.isVirtualDisk = disk.isVirtualDisk;
    region.isRemovable = disk.isRemoveUsb;
    region.sectorSize = sectorSizeOf(disk);
    region.startSector = (begin + region.sectorSize - 1) / region.sectorSize;
    region.size = end / region.sectorSize * region.sectorSize - region.startOffset();
    return region;
}

void emptyDisk(Disk& disk)
{
    const Partition whole = disk.isUnInitialize ? freeRegion(disk, 0, disk.size)
                                                : freeRegion(disk, usableBegin(), usableEnd(disk));
    disk.partitions.clear();
    if (whole.size > 0)
        disk.partitions.push_back(whole);
}

std::size_t indexOf(const Disk& disk, const Partition& entry)
{
    return static_cast<std::size_t>(&entry - disk.partitions.data());
}

const Partition* partitionBefore(const Disk& disk, std::size_t index)
{
    while (index-- > 0) {
        if (!disk.partitions[index].unallocated)
            return &disk.partitions[index];
    }
    return nullptr;
}

const Partition* partitionAfter(const Disk& disk, std::size_t index)
{
    while (++index < disk.partitions.size()) {
        if (!disk.partitions[index].unallocated)
            return &disk.partitions[index];
    }
    return nullptr;
}

Kind kindBetween(const Disk& disk, const Partition* before, const Partition* after)
{
    int primaries = 0;
    int logicals = 0;
    for (const Partition& entry : disk.partitions) {
        if (!entry.unallocated)
            ++(entry.isPrimary ? primaries : logicals);
    }
    if (disk.isGPT)
        return primaries + logicals < kGptPlaces ? Kind::Primary : Kind::None;
    if (isLogical(before) && isLogical(after))
        return Kind::Logical;
    if (primaries + (logicals > 0 ? 1 : 0) < kMbrPlaces)
        return Kind::Primary;
    return isLogical(before) || isLogical(after) ? Kind::Logical : Kind::None;
}

void putInto(Disk& disk, std::size_t index, const Partition& partition)
{
    const Partition region = disk.partitions[index];
    const auto at = disk.partitions.begin() + static_cast<std::ptrdiff_t>(index);
    std::vector<Partition> entries;
    if (partition.startOffset() > region.startOffset())
        entries.push_back(freeRegion(disk, region.startOffset(), partition.startOffset()));
    entries.push_back(partition);
    if (partition.endOffset() < region.endOffset())
        entries.push_back(freeRegion(disk, partition.endOffset(), region.endOffset()));
    disk.partitions.insert(disk.partitions.erase(at), entries.begin(), entries.end());
}

void setFree(Disk& disk, std::size_t index)
{
    Partition& entry = disk.partitions[index];
    entry = freeRegion(disk, entry.startOffset(), entry.endOffset());
}

void moveTo(Partition& entry, qint64 begin)
{
    const qint64 sector = begin / entry.sectorSize;
    if (entry.dbrStartSector != 0)
        entry.dbrStartSector += sector - entry.startSector;
    entry.startSector = sector;
}

void giveSpace(Disk& disk, std::size_t from, std::size_t to, qint64 bytes)
{
    Partition& source = disk.partitions[from];
    Partition& target = disk.partitions[to];
    const qint64 shift = from < to ? -bytes : bytes;
    for (std::size_t i = std::min(from, to) + 1; i < std::max(from, to); ++i)
        moveTo(disk.partitions[i], disk.partitions[i].startOffset() + shift);
    source.size -= bytes;
    target.size += bytes;
    Partition& last = from < to ? target : source;
    moveTo(last, last.startOffset() + shift);
    if (source.unallocated && source.size == 0)
        disk.partitions.erase(disk.partitions.begin() + static_cast<std::ptrdiff_t>(from));
}

qint64 movedByGiving(const Disk& disk, std::size_t from, std::size_t to)
{
    qint64 moved = 0;
    // The entry after the moved boundary gets a new start, so its data moves.
    for (std::size_t i = std::min(from, to) + 1; i <= std::max(from, to); ++i)
        moved += disk.partitions[i].usedSize;
    return moved;
}

Rejection givingRejection(const Disk& disk, std::size_t from, std::size_t to, qint64 bytes)
{
    for (std::size_t i = std::min(from, to); i <= std::max(from, to); ++i) {
        if (!isMovable(disk.partitions[i]))
            return Text(QT_TRANSLATE_NOOP("Sandbox", "A partition in between cannot be moved."));
    }
    Disk trial = disk;
    giveSpace(trial, from, to, bytes);
    if (!disk.isGPT && reachesBeyondMbr(trial))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "An MBR disk cannot use space beyond 2 TiB."));
    for (const std::size_t index : {from, to}) {
        const Partition& entry = disk.partitions[index];
        const FileSystem* kind = entry.unallocated ? nullptr : fileSystem(entry.fsString);
        const qint64 size = index == to ? entry.size + bytes : entry.size - bytes;
        if (kind == nullptr)
            continue;
        if (const Rejection rejection = sizeRejection(*kind, size, entry.clusterSize * entry.sectorSize))
            return rejection;
    }
    return kAccepted;
}

bool reachesBeyondMbr(const Disk& disk)
{
    return std::any_of(disk.partitions.begin(), disk.partitions.end(), [](const Partition& entry) {
        return !entry.unallocated && entry.endOffset() > kMbrLimit;
    });
}

} // namespace host

#include "host/udisks/FreeRegions.h"

#include "host/machine/Layout.h"

namespace host {

namespace {

constexpr int kFirstLogical = 5;
// The space that the service leaves at the start of an extended partition.
constexpr qint64 kFirstEntry = 2 * kMebibyte;
constexpr qint64 kSectorsPerCylinder = qint64(255) * 63;

// The table entry of a logical drive is in front of it, and the service keeps the rest of that cylinder free.
// The entry of the first one is at the start of the extended partition.
qint64 endBeforeLogical(const PartitionEntry& entry, int sectorSize)
{
    if (entry.number == kFirstLogical)
        return entry.offset;
    const qint64 cylinder = kSectorsPerCylinder * sectorSize;
    return alignedDown((entry.offset - 1) / cylinder * cylinder);
}

} // namespace

FreeRegions::FreeRegions(Disk& disk, int sectorSize, qint64 begin)
    : disk_(disk), sectorSize_(sectorSize), begin_(begin)
{
}

void FreeRegions::before(const PartitionEntry& entry)
{
    if (!entry.isContained)
        leaveContainer();
    add(entry.isContained ? endBeforeLogical(entry, sectorSize_) : entry.offset);
    const qint64 end = entry.offset + entry.size;
    if (entry.isContainer)
        containerEnd_ = end;
    begin_ = entry.isContainer ? entry.offset + kFirstEntry : end;
}

void FreeRegions::last(qint64 end)
{
    leaveContainer();
    add(end);
}

void FreeRegions::leaveContainer()
{
    if (containerEnd_ == 0)
        return;
    add(containerEnd_ - sectorSize_);
    begin_ = containerEnd_;
    containerEnd_ = 0;
}

// Smaller gaps are the result of alignment.
void FreeRegions::add(qint64 end)
{
    if (end - begin_ < kMebibyte)
        return;
    Partition region = freeRegion(disk_, begin_, end);
    region.sectorSize = sectorSize_;
    region.startSector = begin_ / sectorSize_;
    region.size = (end - begin_) / sectorSize_ * sectorSize_;
    disk_.partitions.push_back(region);
}

} // namespace host

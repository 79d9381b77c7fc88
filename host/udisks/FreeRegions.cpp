#include "host/udisks/FreeRegions.h"

#include "host/machine/Layout.h"

namespace host {

FreeRegions::FreeRegions(Disk& disk, int sectorSize, qint64 begin)
    : disk_(disk), sectorSize_(sectorSize), begin_(begin)
{
}

void FreeRegions::before(const PartitionEntry& entry)
{
    if (!entry.isContained)
        leaveContainer();
    // The table entry of a logical drive is in front of it.
    add(entry.isContained ? entry.offset - kMebibyte : entry.offset);
    const qint64 end = entry.offset + entry.size;
    if (entry.isContainer)
        containerEnd_ = end;
    begin_ = entry.isContainer ? entry.offset + kMebibyte : end;
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

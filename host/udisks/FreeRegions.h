#pragma once

#include "host/machine/Machine.h"
#include "host/udisks/BlockDevices.h"

namespace host {

/// Adds the free regions of a disk to its list while the caller adds the partitions, in the order of their
/// positions.
///
/// Free space inside an extended partition is a region of its own, because only a logical drive can use it.
/// Such a region never touches the free space outside, so that settle() does not join them.
class FreeRegions
{
public:
    /// @p begin: the first usable byte of the disk.
    FreeRegions(Disk& disk, int sectorSize, qint64 begin);

    /// Adds the region before a partition or an extended partition.
    void before(const PartitionEntry& entry);
    /// Adds the region after the last partition. @p end: the end of the usable bytes.
    void last(qint64 end);

private:
    void leaveContainer();
    void add(qint64 end);

    Disk& disk_;
    int sectorSize_;
    qint64 begin_;            ///< of the next region
    qint64 containerEnd_ = 0; ///< 0 outside an extended partition
};

} // namespace host

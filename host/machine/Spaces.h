#pragma once

#include "host/machine/Machine.h"

#include <cstddef>
#include <optional>

// Which space an order takes, told once for the rule that asks and for the work that takes it.
namespace host {

/// Bytes from @p begin to before @p end of a disk.
struct Span
{
    qint64 begin;
    qint64 end;
};

/// The place of a new partition of @p capacity bytes in a free region: its start is aligned to a mebibyte
/// where the region's is not, and whole sectors that still fit are its size.
Span newSpan(const Disk& disk, const Partition& region, qint64 capacity);

/// Space that a partition or free region, by its place in the disk's list, gives to a partition.
struct Transfer
{
    std::size_t from;
    std::size_t to;
    qint64 bytes;
};

/// What the adjustment of a drive's space does: the largest free region goes to it, or, where there is none,
/// half of what is free on the drive with the most free space. Always whole mebibytes.
std::optional<Transfer> smartTransfer(const Machine& machine, const Partition& partition);

/// Where the data of a system drive goes: the letter of the readable drive with the most room on another
/// disk. None if it has less room than the drive's data takes.
std::optional<QString> migrationTarget(const Machine& machine, const Partition& source);

/// Bytes of each of @p count equal partitions on an emptied disk; whole mebibytes.
qint64 autoShare(const Disk& disk, bool gpt, int count);

} // namespace host

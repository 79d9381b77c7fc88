#pragma once

#include "host/machine/Machine.h"

#include <cstddef>
#include <optional>

// The space that an order uses, shared by its rule and its implementation.
namespace host {

/// Bytes of a disk from @p begin to @p end (exclusive).
struct Span
{
    qint64 begin;
    qint64 end;
};

/// The position of a new partition of @p capacity bytes in a free region: its start is aligned to a mebibyte,
/// and its size is the whole sectors that fit.
Span newSpan(const Disk& disk, const Partition& region, qint64 capacity);

/// Space that a partition or free region gives to a partition; both are indices in the disk's list.
struct Transfer
{
    std::size_t from;
    std::size_t to;
    qint64 bytes;
};

/// The transfer of the smart adjustment: the largest free region or, without a free region, half of the free
/// space of the drive with the most free space. Whole mebibytes.
std::optional<Transfer> smartTransfer(const Machine& machine, const Partition& partition);

/// The target of a data migration: the letter of the readable drive with the most free space on another disk.
/// Empty if the data does not fit.
std::optional<QString> migrationTarget(const Machine& machine, const Partition& source);

/// Size in bytes of each of @p count equal partitions on an emptied disk; whole mebibytes.
qint64 autoShare(const Disk& disk, bool gpt, int count);

} // namespace host

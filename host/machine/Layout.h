#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <cstddef>
#include <optional>

// Positions of partitions on a disk, and operations that move them. For rules and orders only.
//
// An MBR disk has its logical drives in one extended partition, which is not an entry of the list. It extends
// from the first logical drive to the last, uses one of the table's four entries and contains no primary
// partition. The space for its own tables is not counted.
namespace host {

constexpr qint64 kMebibyte = qint64(1024) * 1024;
constexpr qint64 kMbrLimit = qint64(512) << 32; ///< bytes that an MBR table can address
constexpr int kMbrPlaces = 4;
constexpr int kGptPlaces = 128;
constexpr int kGptTailSectors = 33; ///< the backup GPT at the end of the disk

qint64 alignedDown(qint64 bytes);
qint64 alignedUp(qint64 bytes);
int sectorSizeOf(const Disk& disk);

/// The bytes that partitions can use on a disk with a table: first byte, and end (exclusive).
qint64 usableBegin();
qint64 usableEnd(const Disk& disk);

/// A free region from @p begin to @p end (exclusive), in whole sectors.
Partition freeRegion(const Disk& disk, qint64 begin, qint64 end);
/// Replaces all entries by one free region: the usable bytes, or the whole disk if it has no table.
void emptyDisk(Disk& disk);

/// Index of an entry in the disk's list.
std::size_t indexOf(const Disk& disk, const Partition& entry);
/// The nearest partitions before and after an index of the list; null if not found.
const Partition* partitionBefore(const Disk& disk, std::size_t index);
const Partition* partitionAfter(const Disk& disk, std::size_t index);

/// The kind of a new partition between two others. Kind::None if the table is full.
enum class Kind { None, Primary, Logical };
Kind kindBetween(const Disk& disk, const Partition* before, const Partition* after);

/// Replaces the free region at @p index by @p partition, which is inside it, and by the remaining free space.
void putInto(Disk& disk, std::size_t index, const Partition& partition);
/// Replaces the entry at @p index by free space.
void setFree(Disk& disk, std::size_t index);
/// Sets the start of a partition and of its boot record.
void moveTo(Partition& entry, qint64 begin);

/// Takes @p bytes from the entry at @p from, a partition or a free region of at least that size, and gives
/// them to the partition at @p to. The entries in between move by the same distance. A free region of size 0
/// is removed from the list.
void giveSpace(Disk& disk, std::size_t from, std::size_t to, qint64 bytes);
/// Used bytes that giveSpace() moves.
qint64 movedByGiving(const Disk& disk, std::size_t from, std::size_t to);
/// Rejects giveSpace() if a partition in between cannot be moved, an MBR table cannot address the result, or
/// a file system does not support the new size.
Rejection givingRejection(const Disk& disk, std::size_t from, std::size_t to, qint64 bytes);

/// True if a partition ends beyond kMbrLimit.
bool reachesBeyondMbr(const Disk& disk);

} // namespace host

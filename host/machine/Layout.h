#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Rejection.h"

#include <cstddef>
#include <optional>

// Where partitions lie on a disk, and what moves them. For the files of the rules and the orders only.
//
// An MBR disk keeps its logical drives in one extended area. The area itself is no entry of the list: it
// reaches from the first logical drive to the last, takes one of the table's four places while there is one,
// and no primary partition lies inside it. What its own bookkeeping takes from the disk is not counted.
namespace host {

constexpr qint64 kMebibyte = 1024 * 1024;
constexpr qint64 kMbrLimit = qint64(512) << 32; ///< bytes of a disk that an MBR table can address
constexpr int kMbrPlaces = 4;
constexpr int kGptPlaces = 128;
constexpr int kGptTailSectors = 33; ///< the second copy of a GPT, at the end of the disk

qint64 alignedDown(qint64 bytes);
qint64 alignedUp(qint64 bytes);
int sectorSizeOf(const Disk& disk);

/// First byte that a partition may have on a disk with a table, and the byte behind the last one.
qint64 usableBegin();
qint64 usableEnd(const Disk& disk);

/// A free region of the bytes from @p begin to before @p end, in whole sectors.
Partition freeRegion(const Disk& disk, qint64 begin, qint64 end);
/// One free region in place of all entries: what the table leaves, or the whole disk if it has none.
void emptyDisk(Disk& disk);

/// Where in its list an entry of the disk stands.
std::size_t placeOf(const Disk& disk, const Partition& entry);
/// The nearest partitions around a place of the list; null if there is none.
const Partition* partitionBefore(const Disk& disk, std::size_t place);
const Partition* partitionBehind(const Disk& disk, std::size_t place);

/// What a new partition between two others would be: primary or logical. None if the table has no room.
enum class Kind { None, Primary, Logical };
Kind kindBetween(const Disk& disk, const Partition* before, const Partition* behind);

/// Replaces the free region at @p place by @p partition, which lies inside it, and by what is left of it.
void putInto(Disk& disk, std::size_t place, const Partition& partition);
/// Replaces the entry at @p place by free space.
void setFree(Disk& disk, std::size_t place);
/// Sets a partition's start, and with it that of its boot record.
void moveTo(Partition& entry, qint64 begin);

/// Takes @p bytes from the entry at @p from, a partition or a free region of at least that size, and gives
/// them to the partition at @p to. What lies between moves by as much, in its order. A free region that gave
/// everything leaves the list.
void giveSpace(Disk& disk, std::size_t from, std::size_t to, qint64 bytes);
/// Bytes in use that giveSpace moves.
qint64 movedByGiving(const Disk& disk, std::size_t from, std::size_t to);
/// Rejects giveSpace() if a partition in between cannot be moved, an MBR table cannot address the result, or
/// a file system does not support the new size.
Rejection givingRejection(const Disk& disk, std::size_t from, std::size_t to, qint64 bytes);

/// True if a partition ends beyond what an MBR table can address.
bool reachesBeyondMbr(const Disk& disk);

} // namespace host

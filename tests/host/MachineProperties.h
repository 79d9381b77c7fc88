#pragma once

#include "host/machine/Machine.h"

/// @name Properties of every valid machine
/// Each returns the violation; empty if the property holds.
/// @{

/// Partitions are in order, without overlaps and gaps, inside their disk.
QString placesViolation(const host::Machine& machine);
/// Letters are unique, and free regions have no letter.
QString lettersViolation(const host::Machine& machine);
/// No used size exceeds its partition; a disk's sums match its partitions.
QString useViolation(const host::Machine& machine);
/// An MBR table has four entries, one of them for all logical drives, which are adjacent; it addresses 2 TiB.
QString tableViolation(const host::Machine& machine);
/// Every volume has a size, a cluster and a label within the limits of its file system.
QString volumeViolation(const host::Machine& machine);
/// The machine, written as JSON and read again, is the same.
QString tripViolation(const host::Machine& machine);
/// @}

/// The first violation, except of the round trip, which is slower.
QString machineViolation(const host::Machine& machine);

/// True if all fields are equal.
bool isSame(const host::Disk& one, const host::Disk& other);
bool isSame(const host::Machine& one, const host::Machine& other);

/// Bytes of a disk outside its entries.
qint64 unlisted(const host::Disk& disk);

/// Bytes that a new table uses, and the bytes after the last whole sector.
qint64 reservedByTable(const host::Disk& disk);

/// Used bytes of all disks.
qint64 usedOf(const host::Machine& machine);

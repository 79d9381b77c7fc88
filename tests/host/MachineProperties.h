#pragma once

#include "host/machine/Machine.h"

/// @name What holds for a machine whatever is done to it
/// Each gives what is wrong, empty if nothing.
/// @{

/// Partitions lie one behind the other without overlap or hole, inside their disk.
QString placesFault(const host::Machine& machine);
/// No letter stands twice, and no free region has one.
QString lettersFault(const host::Machine& machine);
/// No partition holds more than its size; a disk's sums are those of its partitions.
QString useFault(const host::Machine& machine);
/// An MBR table has four places, one of them for all logical drives, which lie together; it reaches 2 TiB.
QString tableFault(const host::Machine& machine);
/// Every volume has a size, cluster and label that its file system can have.
QString volumeFault(const host::Machine& machine);
/// The machine, written as JSON and read again, is the same.
QString tripFault(const host::Machine& machine);
/// @}

/// The first that is wrong, but for the trip, which costs more.
QString machineFault(const host::Machine& machine);

/// True if they are the same in every field.
bool isSame(const host::Disk& one, const host::Disk& other);
bool isSame(const host::Machine& one, const host::Machine& other);

/// Bytes of a disk that no entry of its list covers.
qint64 unlisted(const host::Disk& disk);

/// What a new table takes from its disk: its own place, and the bytes that fill no sector.
qint64 reservedByTable(const host::Disk& disk);

/// Bytes in use on the whole machine.
qint64 usedOf(const host::Machine& machine);

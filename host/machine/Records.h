#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantList>

namespace host {

/// The machine's disks as records of the host: every inventory key, and `isDiskItem`, a disk's `isBoot` and
/// its `partitions`.
QVariantList diskRecords(const Machine& machine);

/// The records of the disks with a boot partition.
QVariantList bootDiskRecords(const Machine& machine);

/// True if every partition of the disk record starts at a multiple of 4096 bytes.
bool isAlignedTo4k(const QVariantMap& disk);

/// True if the partition record has an unreadable file system.
bool isRawPartition(const QVariantMap& partition);

/// Updates the values derived from the partitions: their indices, the disk's used size and counts. Joins
/// adjacent free regions. Must be called after each change of a disk's list.
void settle(Disk& disk);

} // namespace host

#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantList>

namespace host {

/// The machine's disks as the host's records: every inventory key, and beside these `isDiskItem`, a disk's
/// `isBoot` and its `partitions`. What the inventory is filled from and what the lookups read.
QVariantList diskRecords(const Machine& machine);

/// The records of those disks that a system starts from.
QVariantList bootDiskRecords(const Machine& machine);

/// True if every partition of the disk record begins at a multiple of 4096 bytes.
bool isAlignedTo4k(const QVariantMap& disk);

/// True if the partition record has a file system that cannot be read.
bool isRawPartition(const QVariantMap& partition);

/// Brings what follows from the partitions up to date: their places in the list, the disk's use and counts.
/// Called after each change of a disk's list. Free regions that border on each other become one.
void settle(Disk& disk);

} // namespace host

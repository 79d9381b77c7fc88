#pragma once

#include "host/machine/Rejection.h"
#include "host/udisks/DiskService.h"

namespace host {

/// Why a disk cannot be shown with its partitions. It would be shown as empty, and its data would not be
/// protected.
Rejection contentRejection(const BlockDevice& disk);

/// Why a disk must not be changed: the disk or one of its partitions is mounted, active swap space, a member
/// of RAID or LVM, or an open encrypted volume. The sentence names the device. Checked at the start and again
/// before every call of an order, because the service itself formats and deletes such devices for root.
Rejection useRejection(const DiskSnapshot& snapshot, const BlockDevice& disk);

/// Whether the first or the last mebibyte of a disk is not zero or cannot be read. Boot sectors, file systems
/// and most documents begin there. @p size: at least 2 MiB.
bool holdsData(int descriptor, qint64 size);

/// Opens the disk exclusively. The call fails while the kernel uses the disk or one of its partitions, also
/// for a user that the service does not report.
DiskServiceCall exclusiveOpenCall(const BlockDevice& disk);

/// Closes the descriptor of a reply. The reply itself lives until the event loop deletes it; until then, an
/// exclusive descriptor would make the next call find the disk in use.
void closeDescriptor(const QDBusMessage& reply);

} // namespace host

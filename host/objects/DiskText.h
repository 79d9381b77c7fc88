#pragma once

#include "host/machine/DataLoss.h"
#include "host/machine/Machine.h"

#include <QtCore/QStringList>

namespace host {

/// Descriptions of disks and partitions, in the language of the window.

/// "465 GB", "931.5 GB", "16 MB": three or four digits, 1 KB = 1024 bytes.
QString sizeText(qint64 bytes);

/// "SATA  MBR": interface and partition table.
QString diskKindText(const Disk& disk);
/// Unusual properties of the disk, such as "Offline" or "Read-only".
QStringList diskFlags(const Disk& disk, bool hasSmartError);

/// The disk's name, kind, flags and serial number, and the name and file system of each partition.
QString searchText(const Disk& disk);

/// The name of the entry: "C: Windows", "EFI system", "Free".
QString entryTitle(const Partition& entry);
/// "NTFS  465 GB"
QString entrySubtitle(const Partition& entry);
/// The properties of the entry, such as "Boot", "Active" or "BitLocker unlocked".
QStringList entryFlags(const Partition& entry);
/// All details of the entry in one line, including its disk and used size.
QString entryDetails(const Partition& entry);
/// One line for each partition.
QStringList lossLines(const DataLoss& loss);

} // namespace host

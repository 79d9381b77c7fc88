#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QStringList>

namespace host {

/// Texts about the machine for the window's user, in the language of the window.

/// "465 GB", "931.5 GB", "16 MB": three or four digits, 1024 bytes to the KB.
QString sizeText(qint64 bytes);

/// "SATA  MBR": how the disk is connected and what its table is.
QString diskKindText(const Disk& disk);
/// What is out of the ordinary about the disk: "Offline", "Read-only" and the like.
QStringList diskFlags(const Disk& disk, bool hasSmartError);

/// "C: Windows", "EFI system", "Free": what the entry is called.
QString entryTitle(const Partition& entry);
/// "NTFS  465 GB"
QString entrySubtitle(const Partition& entry);
/// The entry's flags: "Boot", "Active", "Hidden", "BitLocker unlocked" and the like.
QStringList entryFlags(const Partition& entry);
/// All about the entry in one line, its disk and its use included.
QString entryDetails(const Partition& entry);

} // namespace host

#pragma once

#include "host/machine/Machine.h"
#include "host/udisks/BlockDevices.h"
#include "host/udisks/DriveLetters.h"

#include <QtCore/QSet>
#include <QtCore/QString>

#include <functional>
#include <optional>
#include <vector>

namespace host {

/// A disk as it was at the start.
struct DiskIdentity
{
    QString id;          ///< empty if the disk has no serial number
    QString model;       ///< maker and model for the user; can be empty
    QString backingFile; ///< of a loop device
    qint64 size = 0;
};

/// A disk that the user named: an image or a device file.
struct DiskSource
{
    QString file; ///< canonical path
    bool isImage = false;
    /// Of a device, because another disk can get its device file later.
    std::optional<DiskIdentity> identity = std::nullopt;

    /// The device of the disk; null if it is missing or has been replaced.
    const BlockDevice* find(const DiskSnapshot& snapshot) const;
    /// Whether another disk has the device file of this one.
    bool isReplaced(const DiskSnapshot& snapshot) const;
};

/// Facts about a device that the disk service does not report.
struct DeviceFacts
{
    int sectorSize = 512;
    /// Used bytes of the file system; empty if unknown.
    std::optional<qint64> usedBytes;
    int clusterBytes = 0; ///< 0 if unknown
};
using FactsOf = std::function<DeviceFacts(const BlockDevice&)>;

/// The key of a partition for its letter. A GPT partition is identified by its GUID. The UUID of an MBR
/// partition depends on its number, which changes, so its position identifies it.
QString letterKey(const DiskSource& source, const Partition& partition);

/// The disks of @p sources that exist, in that order; the index is the position in @p sources.
std::vector<Disk> disksOf(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources,
                          DriveLetters& letters, const FactsOf& facts);

/// The indices of the disks of @p sources whose self-monitoring predicts a failure.
QSet<int> disksWithHealthErrors(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources);

/// The name of a file system in the inventory, from the type and version that the disk service reports.
QString inventoryFileSystem(const QString& type, const QString& version);
/// The type for the disk service; empty for an unknown name.
QString serviceFileSystem(const QString& name);

/// False while the service has not read the type, the size or the GUID of an entry of @p disk.
bool isComplete(const BlockDevice& disk, const BlockDevice& entry);

/// False while the service reads a changed table: a disk is missing, or an entry has no type or size yet.
bool isSettled(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources);

} // namespace host

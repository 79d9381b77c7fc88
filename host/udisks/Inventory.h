#pragma once

#include "host/machine/Machine.h"
#include "host/udisks/BlockDevices.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <functional>
#include <optional>
#include <vector>

namespace host {

/// A disk that the user named: an image or a device file.
struct DiskSource
{
    QString file; ///< canonical path
    bool isImage = false;

    /// The device of the disk; null if it is missing.
    const BlockDevice* find(const DiskSnapshot& snapshot) const;
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

/// Drive letters of partitions. They are the host's own: UDisks2 has no letters.
class DriveLetters
{
public:
    /// The letter of a partition; a new partition gets the first unused letter from D on. Empty if all are in
    /// use.
    QString letterOf(const QString& key);
    /// False if another partition has the letter.
    bool change(const QString& key, const QString& letter);

private:
    QMap<QString, QString> letters_; ///< by key
};

/// The key of a partition for its letter. A GPT partition is identified by its GUID. The UUID of an MBR
/// partition depends on its number, which changes, so its disk and position identify it.
QString letterKey(const DiskSource& source, const Partition& partition);

/// The disks of @p sources that exist, in that order; the index is the position in @p sources.
std::vector<Disk> disksOf(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources,
                          DriveLetters& letters, const FactsOf& facts);

/// The name of a file system in the inventory, from the type and version that the disk service reports.
QString inventoryFileSystem(const QString& type, const QString& version);
/// The type for the disk service; empty for an unknown name.
QString serviceFileSystem(const QString& name);

/// False while the service reads a changed table: a disk is missing, or an entry has no type or size yet.
bool isSettled(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources);

} // namespace host

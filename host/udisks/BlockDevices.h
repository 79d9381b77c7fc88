#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusObjectPath>

#include <optional>
#include <vector>

namespace host {

/// The properties of each interface of an object of the disk service, and all its objects.
using DiskServiceInterfaces = QMap<QString, QVariantMap>;
using DiskServiceObjects = QMap<QDBusObjectPath, DiskServiceInterfaces>;

/// An entry of a partition table. Positions and sizes are bytes.
struct PartitionEntry
{
    QString table; ///< object path of the disk
    int number = 0;
    QString type; ///< a GUID, or "0x07"; empty until the service has read the entry
    quint64 flags = 0;
    QString name; ///< of a GPT entry
    qint64 offset = 0;
    qint64 size = 0;
    QString uuid; ///< on an MBR disk derived from the number, so it changes when an entry is deleted
    bool isContainer = false;
    bool isContained = false;
};

/// A block device of the disk service. A plain value.
struct BlockDevice
{
    QString path;   ///< object path; another partition can have it after a deletion
    QString device; ///< "/dev/sda1"
    qint64 size = 0;
    bool readOnly = false;
    QString usage; ///< "filesystem", "raid", "crypto", "other" or empty
    QString type;
    QString version;
    QString label;
    QString uuid;
    QString drive; ///< object path; "/" without a drive
    std::optional<QString> table;
    std::optional<PartitionEntry> partition;
    std::optional<QString> backingFile; ///< of a loop device; empty if it is not in use
    QStringList mountPoints;
    bool isActiveSwap = false;
    bool isRaidMember = false;
    QString cleartextDevice; ///< object path of the content of an open encrypted volume; else empty
    QString encryptedDevice; ///< object path of the encrypted volume with this content; else empty

    /// True for a disk with data but without a partition table, which must not be shown as empty.
    bool isBareVolume() const { return !table && !partition && !type.isEmpty(); }
};

/// The hardware of a disk.
struct DriveInfo
{
    QString path;
    QString vendor;
    QString model;
    QString serial;
    QString wwn; ///< empty if the disk has none
    QString id;  ///< of the service, from model and serial number
    QString bus; ///< "usb", "sdio" or empty
    bool isRemovable = false;
    bool isEjectable = false;
    bool canPowerOff = false;
    int rotationRate = -1;       ///< 0 for a solid-state disk, -1 if unknown
    bool hasHealthError = false; ///< its self-monitoring predicts a failure
};

/// One reading of the disk service.
struct DiskSnapshot
{
    std::vector<BlockDevice> devices;
    std::vector<DriveInfo> drives;

    /// Null if not found.
    const BlockDevice* device(const QString& path) const;
    const DriveInfo* drive(const QString& path) const;
    /// The loop device of an image; null if the image is not attached. @p file: canonical path.
    const BlockDevice* image(const QString& file) const;
    /// The device with that device file; null if not found.
    const BlockDevice* deviceFile(const QString& file) const;
    /// The partitions of a disk, in the order of their positions.
    std::vector<const BlockDevice*> partitionsOf(const QString& diskPath) const;
    /// The partition of a disk that starts at that byte and is not a container; null if not found.
    const BlockDevice* partitionAt(const QString& diskPath, qint64 offset) const;
};

DiskSnapshot snapshotOf(const DiskServiceObjects& objects);

/// Registers the types of the disk service with the meta-type system. Can be repeated.
void registerDiskServiceTypes();

} // namespace host

Q_DECLARE_METATYPE(host::DiskServiceInterfaces)
Q_DECLARE_METATYPE(host::DiskServiceObjects)

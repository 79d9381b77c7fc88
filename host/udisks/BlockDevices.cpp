#include "host/udisks/BlockDevices.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMetaType>

#include <algorithm>

namespace host {

namespace {

const QString kInterface = QStringLiteral("org.freedesktop.UDisks2.");

constexpr int kFirstLogical = 5; // number on an MBR disk

// File names of the service end in a null byte.
QString fileName(const QVariant& value)
{
    const QByteArray bytes = value.toByteArray();
    return QString::fromLocal8Bit(bytes.constData());
}

QStringList fileNames(const QVariant& value)
{
    QStringList names;
    const auto list = qdbus_cast<QList<QByteArray>>(value);
    for (const QByteArray& bytes : list)
        names.append(QString::fromLocal8Bit(bytes.constData()));
    return names;
}

QString objectPath(const QVariant& value)
{
    return value.value<QDBusObjectPath>().path();
}

// The service writes "/" for a missing object.
QString otherObject(const QVariantMap& properties, const char* name)
{
    const QString path = objectPath(properties.value(QLatin1String(name)));
    return path == QLatin1String("/") ? QString() : path;
}

QString text(const QVariantMap& properties, const char* name)
{
    return properties.value(QLatin1String(name)).toString();
}

qint64 bytes(const QVariantMap& properties, const char* name)
{
    return properties.value(QLatin1String(name)).toLongLong();
}

bool flag(const QVariantMap& properties, const char* name)
{
    return properties.value(QLatin1String(name)).toBool();
}

PartitionEntry readPartition(const QVariantMap& properties)
{
    PartitionEntry entry;
    entry.table = objectPath(properties.value(QStringLiteral("Table")));
    entry.number = properties.value(QStringLiteral("Number")).toInt();
    entry.type = text(properties, "Type");
    entry.flags = properties.value(QStringLiteral("Flags")).toULongLong();
    entry.name = text(properties, "Name");
    entry.offset = bytes(properties, "Offset");
    entry.size = bytes(properties, "Size");
    entry.uuid = text(properties, "UUID");
    entry.isContainer = flag(properties, "IsContainer");
    entry.isContained = flag(properties, "IsContained");
    return entry;
}

void readBlock(BlockDevice& device, const QVariantMap& properties)
{
    device.device = fileName(properties.value(QStringLiteral("Device")));
    device.size = bytes(properties, "Size");
    device.readOnly = flag(properties, "ReadOnly");
    device.usage = text(properties, "IdUsage");
    device.type = text(properties, "IdType");
    device.version = text(properties, "IdVersion");
    device.label = text(properties, "IdLabel");
    device.uuid = text(properties, "IdUUID");
    device.drive = objectPath(properties.value(QStringLiteral("Drive")));
    device.isRaidMember = !otherObject(properties, "MDRaidMember").isEmpty();
    device.encryptedDevice = otherObject(properties, "CryptoBackingDevice");
}

BlockDevice readDevice(const QString& path, const DiskServiceInterfaces& interfaces)
{
    BlockDevice device;
    device.path = path;
    readBlock(device, interfaces.value(kInterface + QLatin1String("Block")));
    const auto table = interfaces.find(kInterface + QLatin1String("PartitionTable"));
    if (table != interfaces.end())
        device.table = text(*table, "Type");
    const auto partition = interfaces.find(kInterface + QLatin1String("Partition"));
    if (partition != interfaces.end())
        device.partition = readPartition(*partition);
    const auto loop = interfaces.find(kInterface + QLatin1String("Loop"));
    if (loop != interfaces.end())
        device.backingFile = fileName(loop->value(QStringLiteral("BackingFile")));
    const auto fileSystem = interfaces.find(kInterface + QLatin1String("Filesystem"));
    if (fileSystem != interfaces.end())
        device.mountPoints = fileNames(fileSystem->value(QStringLiteral("MountPoints")));
    const auto encrypted = interfaces.find(kInterface + QLatin1String("Encrypted"));
    if (encrypted != interfaces.end())
        device.cleartextDevice = otherObject(*encrypted, "CleartextDevice");
    const auto swap = interfaces.find(kInterface + QLatin1String("Swapspace"));
    device.isActiveSwap = swap != interfaces.end() && flag(*swap, "Active");
    return device;
}

// Values that were never read are 0.
bool hasHealthError(const DiskServiceInterfaces& interfaces)
{
    const QVariantMap ata = interfaces.value(kInterface + QLatin1String("Drive.Ata"));
    if (flag(ata, "SmartEnabled") && bytes(ata, "SmartUpdated") > 0 && flag(ata, "SmartFailing"))
        return true;
    const QVariantMap nvme = interfaces.value(kInterface + QLatin1String("NVMe.Controller"));
    return bytes(nvme, "SmartUpdated") > 0 &&
           !nvme.value(QStringLiteral("SmartCriticalWarning")).toStringList().isEmpty();
}

DriveInfo readDrive(const QString& path, const DiskServiceInterfaces& interfaces)
{
    const QVariantMap properties = interfaces.value(kInterface + QLatin1String("Drive"));
    DriveInfo drive;
    drive.path = path;
    drive.vendor = text(properties, "Vendor");
    drive.model = text(properties, "Model");
    drive.serial = text(properties, "Serial");
    drive.wwn = text(properties, "WWN");
    drive.id = text(properties, "Id");
    drive.bus = text(properties, "ConnectionBus");
    drive.isRemovable = flag(properties, "Removable");
    drive.isEjectable = flag(properties, "Ejectable");
    drive.canPowerOff = flag(properties, "CanPowerOff");
    drive.rotationRate = properties.value(QStringLiteral("RotationRate"), -1).toInt();
    drive.hasHealthError = hasHealthError(interfaces);
    return drive;
}

// While the service reads a table, it can report a logical drive as a primary partition. The number is
// reliable.
void markLogicals(DiskSnapshot& snapshot)
{
    for (BlockDevice& device : snapshot.devices) {
        if (!device.partition || device.partition->number < kFirstLogical)
            continue;
        const BlockDevice* disk = snapshot.device(device.partition->table);
        if (disk != nullptr && disk->table == QLatin1String("dos"))
            device.partition->isContained = true;
    }
}

template <class Devices, class Condition>
auto findIn(const Devices& devices, Condition condition) -> decltype(devices.data())
{
    const auto found = std::find_if(devices.begin(), devices.end(), condition);
    return found == devices.end() ? nullptr : &*found;
}

} // namespace

const BlockDevice* DiskSnapshot::device(const QString& path) const
{
    return findIn(devices, [&](const BlockDevice& device) { return device.path == path; });
}

const DriveInfo* DiskSnapshot::drive(const QString& path) const
{
    return findIn(drives, [&](const DriveInfo& drive) { return drive.path == path; });
}

const BlockDevice* DiskSnapshot::image(const QString& file) const
{
    return findIn(devices, [&](const BlockDevice& device) {
        return device.backingFile.has_value() && *device.backingFile == file && device.size > 0;
    });
}

const BlockDevice* DiskSnapshot::deviceFile(const QString& file) const
{
    return findIn(devices, [&](const BlockDevice& device) { return device.device == file; });
}

std::vector<const BlockDevice*> DiskSnapshot::partitionsOf(const QString& diskPath) const
{
    std::vector<const BlockDevice*> found;
    for (const BlockDevice& device : devices) {
        if (device.partition && device.partition->table == diskPath)
            found.push_back(&device);
    }
    std::sort(found.begin(), found.end(), [](const BlockDevice* a, const BlockDevice* b) {
        return a->partition->offset < b->partition->offset;
    });
    return found;
}

const BlockDevice* DiskSnapshot::partitionAt(const QString& diskPath, qint64 offset) const
{
    return findIn(devices, [&](const BlockDevice& device) {
        return device.partition && device.partition->table == diskPath &&
               device.partition->offset == offset && !device.partition->isContainer;
    });
}

DiskSnapshot snapshotOf(const DiskServiceObjects& objects)
{
    DiskSnapshot snapshot;
    for (auto it = objects.begin(); it != objects.end(); ++it) {
        const QString path = it.key().path();
        if (it->contains(kInterface + QLatin1String("Block")))
            snapshot.devices.push_back(readDevice(path, *it));
        if (it->contains(kInterface + QLatin1String("Drive")))
            snapshot.drives.push_back(readDrive(path, *it));
    }
    markLogicals(snapshot);
    return snapshot;
}

void registerDiskServiceTypes()
{
    qDBusRegisterMetaType<DiskServiceInterfaces>();
    qDBusRegisterMetaType<DiskServiceObjects>();
    qDBusRegisterMetaType<QList<QByteArray>>();
}

} // namespace host

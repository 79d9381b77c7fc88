#include "host/machine/SystemMachine.h"

#include "host/machine/Records.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <algorithm>

namespace host {

namespace {

constexpr int kLimitMs = 10000;
constexpr int kSysfsSector = 512;
// Gaps caused by alignment and partition tables are not usable free space.
constexpr qint64 kLargestRemnant = qint64(1024) * 1024;
const QString kEfiType = QStringLiteral("c12a7328-f81f-11d2-ba4b-00a0c93ec93b");

QString text(const QJsonObject& device, const char* key)
{
    return device.value(QLatin1String(key)).toString();
}

// Older releases write numbers and booleans as strings.
qint64 number(const QJsonObject& device, const char* key)
{
    return device.value(QLatin1String(key)).toVariant().toLongLong();
}

bool flag(const QJsonObject& device, const char* key)
{
    const QJsonValue value = device.value(QLatin1String(key));
    return value.isBool() ? value.toBool() : value.toVariant().toString() == QLatin1String("1");
}

QJsonArray children(const QJsonObject& device)
{
    return device.value(QLatin1String("children")).toArray();
}

QString interfaceName(const QJsonObject& device)
{
    const QString transport = text(device, "tran");
    if (transport == QLatin1String("nvme"))
        return QStringLiteral("NVMe");
    return transport.isEmpty() ? QStringLiteral("Virtual") : transport.toUpper();
}

QString fileSystemName(const QString& type)
{
    static const QMap<QString, QString> names = {{QStringLiteral("vfat"), QStringLiteral("FAT32")},
                                                 {QStringLiteral("exfat"), QStringLiteral("exFAT")},
                                                 {QStringLiteral("ntfs3"), QStringLiteral("NTFS")}};
    return names.value(type, type.toUpper());
}

// A file system can be inside encryption or a volume group, so mount point and usage come from the children.
bool isMountedAt(const QJsonObject& device, const QString& place)
{
    if (text(device, "mountpoint") == place ||
        device.value(QLatin1String("mountpoints")).toArray().contains(place))
        return true;
    const QJsonArray inner = children(device);
    return std::any_of(inner.begin(), inner.end(),
                       [&](const QJsonValue& child) { return isMountedAt(child.toObject(), place); });
}

qint64 usedBytes(const QJsonObject& device)
{
    qint64 used = number(device, "fsused");
    const QJsonArray inner = children(device);
    for (const QJsonValue& child : inner)
        used += usedBytes(child.toObject());
    return used;
}

Partition readPartition(const QJsonObject& device, const Disk& disk, int sectorSize)
{
    const QString type = text(device, "fstype");
    Partition partition;
    partition.diskIndex = disk.diskIndex;
    partition.isGPT = disk.isGPT;
    partition.isRemovable = disk.isRemoveUsb;
    partition.sectorSize = sectorSize;
    partition.size = number(device, "size");
    partition.startSector = number(device, "start") * kSysfsSector / sectorSize;
    partition.usedSize = std::min(usedBytes(device), partition.size);
    partition.clusterSize = std::max(1, 4096 / sectorSize);
    partition.fsString = fileSystemName(type);
    partition.isUnformattedType = type.isEmpty() && text(device, "mountpoint").isEmpty();
    partition.label = text(device, "label");
    partition.partGUID = text(device, "partuuid");
    partition.readonly = flag(device, "ro");
    partition.gptEFI = text(device, "parttype") == kEfiType;
    partition.isBoot = partition.defBoot = isMountedAt(device, QStringLiteral("/"));
    partition.isSystem = partition.gptEFI && isMountedAt(device, QStringLiteral("/boot/efi"));
    partition.isBitLocker = type == QLatin1String("BitLocker");
    partition.bltState = partition.isBitLocker ? 3 : 0;
    return partition;
}

void addGap(Disk& disk, qint64 begin, qint64 end, int sectorSize)
{
    if (end - begin <= kLargestRemnant)
        return;
    Partition gap;
    gap.unallocated = true;
    gap.isGPT = disk.isGPT;
    gap.sectorSize = sectorSize;
    gap.startSector = begin / sectorSize;
    gap.size = end - begin;
    disk.partitions.push_back(gap);
}

std::vector<Partition> partitionsOf(const QJsonObject& device, const Disk& disk, int sectorSize)
{
    std::vector<Partition> found;
    const QJsonArray inner = children(device);
    for (const QJsonValue& child : inner) {
        const QJsonObject entry = child.toObject();
        if (text(entry, "type") == QLatin1String("part"))
            found.push_back(readPartition(entry, disk, sectorSize));
    }
    // A file system without a partition table is one partition over the whole disk. A mount point implies a
    // file system that lsblk does not report.
    const bool isMounted = !text(device, "mountpoint").isEmpty();
    if (found.empty() && (isMounted || !text(device, "fstype").isEmpty()))
        found.push_back(readPartition(device, disk, sectorSize));
    std::sort(found.begin(), found.end(),
              [](const Partition& a, const Partition& b) { return a.startSector < b.startSector; });
    return found;
}

Disk readDisk(const QJsonObject& device, int index)
{
    Disk disk;
    disk.diskIndex = index;
    disk.diskInterface = interfaceName(device);
    disk.size = number(device, "size");
    disk.isGPT = text(device, "pttype") == QLatin1String("gpt");
    disk.isUSB = text(device, "tran") == QLatin1String("usb");
    disk.isRemoveUsb = disk.isUSB && (flag(device, "rm") || flag(device, "hotplug"));
    disk.isSSD = !flag(device, "rota");
    disk.readonly = flag(device, "ro");
    disk.serialNO = text(device, "serial");
    const int sectorSize = std::max(kSysfsSector, static_cast<int>(number(device, "log-sec")));
    const std::vector<Partition> partitions = partitionsOf(device, disk, sectorSize);
    disk.isUnInitialize = partitions.empty() && text(device, "pttype").isEmpty();
    qint64 end = 0;
    for (const Partition& partition : partitions) {
        // Skips an extended partition, which only contains the logical ones.
        if (partition.startSector * sectorSize < end)
            continue;
        addGap(disk, end, partition.startSector * sectorSize, sectorSize);
        disk.partitions.push_back(partition);
        end = partition.endOffset();
    }
    addGap(disk, end, disk.size, sectorSize);
    settle(disk);
    return disk;
}

void giveLetters(Machine& machine)
{
    for (Disk& disk : machine.disks) {
        for (Partition& partition : disk.partitions) {
            if (partition.isBoot)
                partition.driveLetter = QStringLiteral("C");
        }
    }
    for (Disk& disk : machine.disks) {
        for (Partition& partition : disk.partitions) {
            const bool wantsOne = !partition.unallocated && !partition.gptEFI &&
                                  partition.driveLetter.isEmpty() && !partition.fsString.isEmpty() &&
                                  partition.fsString != QLatin1String("SWAP");
            if (wantsOne)
                partition.driveLetter = machine.firstFreeLetter();
        }
    }
}

} // namespace

std::variant<Machine, MachineError> machineFromLsblk(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonValue devices = document.object().value(QLatin1String("blockdevices"));
    if (!devices.isArray())
        return MachineError{QStringLiteral("lsblk gave no list of devices")};
    Machine machine;
    machine.name = QStringLiteral("this computer");
    const QJsonArray list = devices.toArray();
    for (const QJsonValue& value : list) {
        const QJsonObject device = value.toObject();
        // Skips compressed memory, which appears as a disk.
        const bool isDisk = text(device, "type") == QLatin1String("disk") && number(device, "size") > 0 &&
                            !text(device, "name").startsWith(QLatin1String("zram"));
        if (isDisk)
            machine.disks.push_back(readDisk(device, static_cast<int>(machine.disks.size())));
    }
    giveLetters(machine);
    return machine;
}

std::variant<Machine, MachineError> readSystemMachine()
{
    QProcess lsblk;
    lsblk.start(QStringLiteral("lsblk"),
                {QStringLiteral("--json"), QStringLiteral("-b"), QStringLiteral("-O")});
    if (!lsblk.waitForStarted(kLimitMs))
        return MachineError{QStringLiteral("lsblk, which describes this computer, was not found")};
    if (!lsblk.waitForFinished(kLimitMs) || lsblk.exitStatus() != QProcess::NormalExit ||
        lsblk.exitCode() != 0)
        return MachineError{QStringLiteral("lsblk, which describes this computer, failed")};
    return machineFromLsblk(lsblk.readAllStandardOutput());
}

} // namespace host

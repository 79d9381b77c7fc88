#include "host/machine/GuidedTasks.h"

#include "host/machine/Records.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace host {

namespace {

constexpr int kDestinationStep = 2;
constexpr qint64 kMbrLimit = qint64(512) << 32;

enum Conversion { ToGpt, ToMbr, ToBasic, ToDynamic, ToNtfs, ToFat, ToExfat };

int diskIndexOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("diskIndex"), -1).toInt();
}

bool isDisk(const QVariantMap& record)
{
    return record.value(QStringLiteral("isDiskItem")).toBool();
}

// The machine's entry that a partition record stands for, found by its place, since not every one has a
// letter.
const Partition* entryOf(const Machine& machine, const QVariantMap& record)
{
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr || isDisk(record))
        return nullptr;
    const qint64 start = record.value(QStringLiteral("startSector"), -1).toLongLong();
    for (const Partition& entry : disk->partitions) {
        if (entry.startSector == start)
            return &entry;
    }
    return nullptr;
}

QString sourceObjection(const Machine& machine, const QVariantMap& source)
{
    const Disk* disk = machine.disk(diskIndexOf(source));
    if (disk == nullptr)
        return QStringLiteral("The source does not exist.");
    if (disk->isOffline || disk->isBad)
        return QStringLiteral("The source disk cannot be read.");
    if (isDisk(source))
        return disk->isUnInitialize ? QStringLiteral("The source disk is empty.") : QString();
    const Partition* entry = entryOf(machine, source);
    if (entry == nullptr || entry->unallocated)
        return QStringLiteral("The source is not a partition.");
    return QString();
}

qint64 dataSize(const Machine& machine, const QVariantMap& source)
{
    const Partition* entry = entryOf(machine, source);
    return entry != nullptr ? entry->usedSize : machine.disk(diskIndexOf(source))->usedSize;
}

bool isSame(const Machine& machine, const QVariantMap& source, const QVariantMap& destination)
{
    if (diskIndexOf(source) != diskIndexOf(destination))
        return false;
    return isDisk(destination) || entryOf(machine, source) == entryOf(machine, destination);
}

QString destinationObjection(const Machine& machine, const QVariantMap& source,
                             const QVariantMap& destination)
{
    const Disk* disk = machine.disk(diskIndexOf(destination));
    if (disk == nullptr)
        return QStringLiteral("The destination does not exist.");
    if (isSame(machine, source, destination))
        return QStringLiteral("The source cannot be cloned onto itself.");
    if (!disk->isWritable())
        return QStringLiteral("The destination cannot be written to.");
    const Partition* entry = entryOf(machine, destination);
    if (entry == nullptr && !isDisk(destination))
        return QStringLiteral("The destination has no place for a partition.");
    if (entry != nullptr ? entry->isBoot || entry->isSystem : disk->holdsRunningSystem())
        return QStringLiteral("The destination holds the running system.");
    const qint64 room = entry != nullptr ? entry->size : disk->size;
    return room < dataSize(machine, source) ? QStringLiteral("The destination is too small.") : QString();
}

QString diskConversionObjection(const Disk& disk, int conversion)
{
    if (!disk.isWritable())
        return QStringLiteral("The disk cannot be written to.");
    if (conversion == ToGpt)
        return disk.isGPT ? QStringLiteral("The disk is a GPT disk already.") : QString();
    if (conversion == ToBasic)
        return disk.isDynamic ? QString() : QStringLiteral("The disk is a basic disk already.");
    if (conversion == ToDynamic)
        return disk.isDynamic ? QStringLiteral("The disk is a dynamic disk already.") : QString();
    if (!disk.isGPT)
        return QStringLiteral("The disk is an MBR disk already.");
    const bool beyond =
        std::any_of(disk.partitions.begin(), disk.partitions.end(), [](const Partition& entry) {
            return !entry.unallocated && entry.endOffset() > kMbrLimit;
        });
    return beyond ? QStringLiteral("A partition lies beyond what an MBR disk can address.") : QString();
}

QString partitionConversionObjection(const Partition& partition, int conversion)
{
    if (partition.readonly || partition.isLocked())
        return QStringLiteral("The drive cannot be written to.");
    static const QMap<int, QString> results = {{ToNtfs, QStringLiteral("NTFS")},
                                               {ToFat, QStringLiteral("FAT32")},
                                               {ToExfat, QStringLiteral("exFAT")}};
    return partition.fsString.compare(results.value(conversion), Qt::CaseInsensitive) == 0
               ? QStringLiteral("The drive has that file system already.")
               : QString();
}

bool isUsb(const Disk* disk)
{
    return disk != nullptr && (disk->isUSB || disk->isRemoveUsb) && disk->isWritable();
}

} // namespace

QString cloneObjection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                       int step)
{
    const QString objection = sourceObjection(machine, source);
    if (!objection.isEmpty() || step != kDestinationStep)
        return objection;
    return destinationObjection(machine, source, destination);
}

QString conversionObjection(const Machine& machine, int conversion, const QVariantMap& record)
{
    if (conversionName(conversion).isEmpty())
        return QStringLiteral("There is no such conversion.");
    if (conversion >= ToNtfs) {
        const Partition* partition =
            machine.partition(record.value(QStringLiteral("driveLetter")).toString());
        return partition == nullptr ? QStringLiteral("The drive does not exist.")
                                    : partitionConversionObjection(*partition, conversion);
    }
    const Disk* disk = machine.disk(diskIndexOf(record));
    return disk == nullptr ? QStringLiteral("The disk does not exist.")
                           : diskConversionObjection(*disk, conversion);
}

QString conversionName(int conversion)
{
    static const QStringList names = {
        QStringLiteral("GPT"),  QStringLiteral("MBR"), QStringLiteral("basic"), QStringLiteral("dynamic"),
        QStringLiteral("NTFS"), QStringLiteral("FAT"), QStringLiteral("exFAT")};
    return names.value(conversion);
}

bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task)
{
    if (task.value(QStringLiteral("createToFile")).toBool())
        return true;
    if (task.contains(QStringLiteral("usbDriveLetter"))) {
        const Partition* partition =
            machine.partition(task.value(QStringLiteral("usbDriveLetter")).toString());
        return partition != nullptr && isUsb(machine.disk(partition->diskIndex));
    }
    const int diskIndex = diskIndexOf(task);
    if (diskIndex >= 0)
        return isUsb(machine.disk(diskIndex));
    return std::any_of(machine.disks.begin(), machine.disks.end(),
                       [](const Disk& disk) { return isUsb(&disk); });
}

QString toolboxName(int index)
{
    static const QMap<int, QString> names = {
        {1, QStringLiteral("passwordReset")},   {2, QStringLiteral("bootRepair")},
        {3, QStringLiteral("writeProtection")}, {4, QStringLiteral("rebuildMbr")},
        {5, QStringLiteral("align4k")},         {7, QStringLiteral("windows11Check")},
        {9, QStringLiteral("badSectors")},      {10, QStringLiteral("bitLockerKey")},
        {12, QStringLiteral("checkFileSystem")}};
    return names.value(index);
}

QString toolboxObjection(const Machine& machine, int index, const QVariantMap& record)
{
    const QString name = toolboxName(index);
    if (name.isEmpty())
        return QStringLiteral("there is no such function");
    if (!machine.toolbox.value(name, true))
        return QStringLiteral("the function is switched off");
    if (record.isEmpty())
        return QString();
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr)
        return QStringLiteral("the target does not exist");
    if (name == QLatin1String("rebuildMbr") && disk->isGPT)
        return QStringLiteral("a GPT disk has no MBR to rebuild");
    if (name == QLatin1String("align4k") && isAlignedTo4k(record))
        return QStringLiteral("the disk is aligned");
    if (name == QLatin1String("bitLockerKey") && record.value(QStringLiteral("bltState")).toInt() == 0)
        return QStringLiteral("the drive is not encrypted");
    return QString();
}

QString describeRecord(const QVariantMap& record)
{
    const int diskIndex = diskIndexOf(record);
    if (isDisk(record))
        return QStringLiteral("disk %1").arg(diskIndex);
    if (record.value(QStringLiteral("unallocated")).toBool())
        return QStringLiteral("free space on disk %1").arg(diskIndex);
    const QString letter = record.value(QStringLiteral("driveLetter")).toString();
    if (!letter.isEmpty())
        return QStringLiteral("drive %1").arg(letter);
    return diskIndex >= 0 ? QStringLiteral("disk %1").arg(diskIndex) : QStringLiteral("nothing");
}

} // namespace host

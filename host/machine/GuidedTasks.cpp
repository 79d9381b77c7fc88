#include "host/machine/GuidedTasks.h"

#include "host/machine/FileSystems.h"
#include "host/machine/Layout.h"
#include "host/machine/Records.h"

#include <algorithm>

namespace host {

namespace {

constexpr int kDestinationStep = 2;

enum Conversion { ToGpt, ToMbr, ToBasic, ToDynamic, ToNtfs, ToFat, ToExfat };

int diskIndexOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("diskIndex"), -1).toInt();
}

Text diskName(int diskIndex)
{
    return {QT_TRANSLATE_NOOP("Sandbox", "disk %1"), {QString::number(diskIndex)}};
}

Text sourceObjection(const Machine& machine, const QVariantMap& source)
{
    const Disk* disk = machine.disk(diskIndexOf(source));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source does not exist."));
    if (disk->isOffline || disk->isBad)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source disk cannot be read."));
    if (isDiskRecord(source))
        return disk->isUnInitialize ? Text(QT_TRANSLATE_NOOP("Sandbox", "The source disk is empty."))
                                    : Text();
    const Partition* entry = entryOf(machine, source);
    if (entry == nullptr || entry->unallocated)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source is not a partition."));
    return Text();
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
    return isDiskRecord(destination) || entryOf(machine, source) == entryOf(machine, destination);
}

Text destinationObjection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination)
{
    const Disk* disk = machine.disk(diskIndexOf(destination));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination does not exist."));
    if (isSame(machine, source, destination))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source cannot be cloned onto itself."));
    if (!disk->isWritable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination cannot be written to."));
    const Partition* entry = entryOf(machine, destination);
    if (entry == nullptr && !isDiskRecord(destination))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination has no place for a partition."));
    if (entry != nullptr ? entry->isBoot || entry->isSystem : disk->holdsRunningSystem())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination holds the running system."));
    const qint64 room = entry != nullptr ? entry->size : disk->size;
    return room < dataSize(machine, source)
               ? Text(QT_TRANSLATE_NOOP("Sandbox", "The destination is too small."))
               : Text();
}

// What is needed to find the entry again.
QVariantMap shortRecord(const QVariantMap& record)
{
    const QString keys[] = {QStringLiteral("diskIndex"), QStringLiteral("isDiskItem"),
                            QStringLiteral("startSector"), QStringLiteral("driveLetter")};
    QVariantMap kept;
    for (const QString& key : keys) {
        if (record.contains(key))
            kept.insert(key, record.value(key));
    }
    return kept;
}

Text toGptObjection(const Disk& disk)
{
    if (disk.isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is a GPT disk already."));
    Disk converted = disk;
    converted.isGPT = true;
    const auto partitions = std::count_if(disk.partitions.begin(), disk.partitions.end(),
                                          [](const Partition& entry) { return !entry.unallocated; });
    const bool room =
        std::all_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
            return entry.unallocated ||
                   (entry.startSector > kGptTailSectors && entry.endOffset() <= usableEnd(converted));
        });
    return room && partitions <= kGptPlaces
               ? Text()
               : Text(QT_TRANSLATE_NOOP("Sandbox", "The disk has no room for the table."));
}

Text toMbrObjection(const Disk& disk)
{
    if (!disk.isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is an MBR disk already."));
    return reachesBeyondMbr(disk)
               ? Text(QT_TRANSLATE_NOOP("Sandbox", "A partition lies beyond what an MBR disk can address."))
               : Text();
}

Text toBasicObjection(const Disk& disk)
{
    constexpr int kSimple = 2;
    constexpr int kSimpleExtended = 7;
    if (!disk.isDynamic)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is a basic disk already."));
    const bool spans =
        std::any_of(disk.partitions.begin(), disk.partitions.end(), [](const Partition& entry) {
            return !entry.unallocated && entry.dynamicVolumeType > kSimple &&
                   entry.dynamicVolumeType < kSimpleExtended;
        });
    return spans ? Text(QT_TRANSLATE_NOOP("Sandbox", "A volume reaches over several disks.")) : Text();
}

Text toDynamicObjection(const Disk& disk)
{
    if (disk.isDynamic)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is a dynamic disk already."));
    return disk.isUSB || disk.isRemoveUsb
               ? Text(QT_TRANSLATE_NOOP("Sandbox", "A USB disk cannot be dynamic."))
               : Text();
}

Text diskConversionObjection(const Disk& disk, int conversion)
{
    using Objection = Text (*)(const Disk&);
    static const Objection objections[] = {toGptObjection, toMbrObjection, toBasicObjection,
                                           toDynamicObjection};
    if (!disk.isWritable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk cannot be written to."));
    if (disk.isUnInitialize)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk has no partition table."));
    if (disk.isDynamic && conversion <= ToMbr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is dynamic."));
    return objections[conversion](disk);
}

Text partitionConversionObjection(const Disk& disk, const Partition& partition, int conversion)
{
    if (partition.readonly || partition.isLocked() || partition.isBad || !disk.isWritable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive cannot be written to."));
    const FileSystem& wanted = *fileSystem(conversionFileSystem(conversion));
    const FileSystem* present = fileSystem(partition.fsString);
    if (present == &wanted)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive has that file system already."));
    if (present == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive has no file system that can be read."));
    if (partition.isBoot && conversion != ToNtfs)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The running system needs its file system."));
    const Text objection = newVolumeObjection(wanted, partition.size, 0, partition.label);
    return objection.isEmpty()
               ? Text()
               : Text(QT_TRANSLATE_NOOP("Sandbox", "The drive cannot have that file system: %1."),
                      {objection});
}

bool isUsb(const Disk* disk)
{
    return disk != nullptr && (disk->isUSB || disk->isRemoveUsb) && disk->isWritable();
}

} // namespace

bool isDiskRecord(const QVariantMap& record)
{
    return record.value(QStringLiteral("isDiskItem")).toBool();
}

const Partition* entryOf(const Machine& machine, const QVariantMap& record)
{
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr || isDiskRecord(record))
        return nullptr;
    const qint64 start = record.value(QStringLiteral("startSector"), -1).toLongLong();
    for (const Partition& entry : disk->partitions) {
        if (entry.startSector == start)
            return &entry;
    }
    return nullptr;
}

Text cloneObjection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                    int step)
{
    const Text objection = sourceObjection(machine, source);
    if (!objection.isEmpty() || step != kDestinationStep)
        return objection;
    return destinationObjection(machine, source, destination);
}

Text conversionObjection(const Machine& machine, int conversion, const QVariantMap& record)
{
    if (conversionName(conversion).isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "There is no such conversion."));
    if (conversion >= ToNtfs) {
        const Partition* partition =
            machine.partition(record.value(QStringLiteral("driveLetter")).toString());
        return partition == nullptr ? Text(QT_TRANSLATE_NOOP("Sandbox", "The drive does not exist."))
                                    : partitionConversionObjection(*machine.disk(partition->diskIndex),
                                                                   *partition, conversion);
    }
    const Disk* disk = machine.disk(diskIndexOf(record));
    return disk == nullptr ? Text(QT_TRANSLATE_NOOP("Sandbox", "The disk does not exist."))
                           : diskConversionObjection(*disk, conversion);
}

Text conversionName(int conversion)
{
    static const Text names[] = {QStringLiteral("GPT"),
                                 QStringLiteral("MBR"),
                                 QT_TRANSLATE_NOOP("Sandbox", "basic"),
                                 QT_TRANSLATE_NOOP("Sandbox", "dynamic"),
                                 QStringLiteral("NTFS"),
                                 QStringLiteral("FAT"),
                                 QStringLiteral("exFAT")};
    return conversion >= ToGpt && conversion <= ToExfat ? names[conversion] : Text();
}

QString conversionFileSystem(int conversion)
{
    static const QMap<int, QString> results = {{ToNtfs, QStringLiteral("NTFS")},
                                               {ToFat, QStringLiteral("FAT32")},
                                               {ToExfat, QStringLiteral("exFAT")}};
    return results.value(conversion);
}

const Disk* bootMediaDisk(const Machine& machine, const QVariantMap& task)
{
    const Disk* disk = nullptr;
    const int diskIndex = diskIndexOf(task);
    if (task.value(QStringLiteral("createToFile")).toBool())
        return nullptr;
    if (task.contains(QStringLiteral("usbDriveLetter"))) {
        const Partition* partition =
            machine.partition(task.value(QStringLiteral("usbDriveLetter")).toString());
        disk = partition == nullptr ? nullptr : machine.disk(partition->diskIndex);
    } else if (diskIndex >= 0) {
        disk = machine.disk(diskIndex);
    } else {
        const auto found = std::find_if(machine.disks.begin(), machine.disks.end(),
                                        [](const Disk& entry) { return isUsb(&entry); });
        disk = found == machine.disks.end() ? nullptr : &*found;
    }
    return isUsb(disk) ? disk : nullptr;
}

bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task)
{
    return task.value(QStringLiteral("createToFile")).toBool() || bootMediaDisk(machine, task) != nullptr;
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

Text toolboxObjection(const Machine& machine, int index, const QVariantMap& record)
{
    const QString name = toolboxName(index);
    if (name.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "there is no such function"));
    if (!machine.toolbox.value(name, true))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "the function is switched off"));
    if (record.isEmpty())
        return Text();
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "the target does not exist"));
    if (name == QLatin1String("rebuildMbr") && disk->isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "a GPT disk has no MBR to rebuild"));
    if (name == QLatin1String("align4k") && isAlignedTo4k(record))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "the disk is aligned"));
    if (name == QLatin1String("bitLockerKey") && record.value(QStringLiteral("bltState")).toInt() == 0)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "the drive is not encrypted"));
    return Text();
}

Text describeRecord(const QVariantMap& record)
{
    const int diskIndex = diskIndexOf(record);
    if (isDiskRecord(record))
        return diskName(diskIndex);
    if (record.value(QStringLiteral("unallocated")).toBool())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "free space on disk %1"), {QString::number(diskIndex)});
    const QString letter = record.value(QStringLiteral("driveLetter")).toString();
    if (!letter.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "drive %1"), {letter});
    return diskIndex >= 0 ? diskName(diskIndex) : Text(QT_TRANSLATE_NOOP("Sandbox", "nothing"));
}

std::optional<GuidedWork> cloneWork(int cloneType, const QVariantMap& source, const QVariantMap& destination)
{
    static const QMap<int, Function> functions = {{0, Function::CloneSystem},
                                                  {1, Function::CloneSystem},
                                                  {2, Function::CloneDisk},
                                                  {3, Function::ClonePartition}};
    const auto function = functions.find(cloneType);
    if (function == functions.end() || diskIndexOf(source) < 0 || diskIndexOf(destination) < 0)
        return std::nullopt;
    return GuidedWork{*function,
                      {{QStringLiteral("source"), shortRecord(source)},
                       {QStringLiteral("destination"), shortRecord(destination)}}};
}

std::optional<GuidedWork> conversionWork(int conversion, const QVariantMap& record)
{
    if (conversionName(conversion).isEmpty())
        return std::nullopt;
    const auto function = static_cast<Function>(static_cast<int>(Function::ConvertDiskToGpt) + conversion);
    const QString key = conversion >= ToNtfs ? QStringLiteral("driveLetter") : QStringLiteral("diskIndex");
    return GuidedWork{function, {{key, record.value(key)}}};
}

GuidedWork bootMediaWork(const QVariantMap& task)
{
    if (task.value(QStringLiteral("isInstallPreOs")).toBool())
        return {Function::InstallPreOs, {}};
    if (task.value(QStringLiteral("isDisablePreOs")).toBool())
        return {Function::DisablePreOs, {}};
    return {Function::CreateBootMedia, task};
}

std::optional<GuidedWork> recoveryWork(const QVariantMap& task)
{
    if (!task.contains(QStringLiteral("diskIndex")))
        return std::nullopt;
    return GuidedWork{Function::RecoverLostPartition,
                      {{QStringLiteral("diskIndex"), task.value(QStringLiteral("diskIndex"))}}};
}

std::optional<GuidedWork> toolboxWork(int index, const QVariantMap& record)
{
    static const QMap<int, Function> functions = {{3, Function::ToggleWriteProtection},
                                                  {4, Function::RebuildMbr},
                                                  {5, Function::AlignDiskTo4k},
                                                  {9, Function::ScanBadSectors},
                                                  {12, Function::CheckFileSystem}};
    const auto function = functions.find(index);
    if (function == functions.end() || diskIndexOf(record) < 0)
        return std::nullopt;
    const bool isDisk = isDiskRecord(record);
    const QString key = isDisk ? QStringLiteral("diskIndex") : QStringLiteral("driveLetter");
    return GuidedWork{*function, {{key, record.value(key)}}};
}

} // namespace host

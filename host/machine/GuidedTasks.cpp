#include "host/machine/GuidedTasks.h"

#include "host/machine/FileSystems.h"
#include "host/machine/Layout.h"
#include "host/machine/Records.h"

#include <algorithm>
#include <iterator>

namespace host {

namespace {

constexpr int kDestinationStep = 2;

int diskIndexOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("diskIndex"), -1).toInt();
}

Text diskName(int diskIndex)
{
    return {QT_TRANSLATE_NOOP("Sandbox", "disk %1"), {QString::number(diskIndex)}};
}

Rejection sourceRejection(const Machine& machine, const QVariantMap& source)
{
    const Disk* disk = machine.disk(diskIndexOf(source));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source does not exist."));
    if (disk->isOffline || disk->isBad)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source disk cannot be read."));
    if (isDiskRecord(source))
        return rejectIf(disk->isUnInitialize, QT_TRANSLATE_NOOP("Sandbox", "The source disk is empty."));
    const Partition* entry = entryOf(machine, source);
    if (entry == nullptr || entry->unallocated)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source is not a partition."));
    return kAccepted;
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

Rejection destinationRejection(const Machine& machine, const QVariantMap& source,
                               const QVariantMap& destination)
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
    return rejectIf(room < dataSize(machine, source),
                    QT_TRANSLATE_NOOP("Sandbox", "The destination is too small."));
}

// The keys that identify the entry.
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

Rejection toGptRejection(const Disk& disk)
{
    if (disk.isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is already a GPT disk."));
    Disk converted = disk;
    converted.isGPT = true;
    const auto partitions = std::count_if(disk.partitions.begin(), disk.partitions.end(),
                                          [](const Partition& entry) { return !entry.unallocated; });
    const bool room =
        std::all_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
            return entry.unallocated ||
                   (entry.startSector > kGptTailSectors && entry.endOffset() <= usableEnd(converted));
        });
    return rejectIf(!(room && partitions <= kGptPlaces),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk has no room for the partition table."));
}

Rejection toMbrRejection(const Disk& disk)
{
    if (!disk.isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is already an MBR disk."));
    return rejectIf(
        reachesBeyondMbr(disk),
        QT_TRANSLATE_NOOP("Sandbox", "A partition extends beyond 2 TiB, which an MBR disk cannot address."));
}

Rejection toBasicRejection(const Disk& disk)
{
    constexpr int kSimple = 2;
    constexpr int kSimpleExtended = 7;
    if (!disk.isDynamic)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is already a basic disk."));
    const bool spans =
        std::any_of(disk.partitions.begin(), disk.partitions.end(), [](const Partition& entry) {
            return !entry.unallocated && entry.dynamicVolumeType > kSimple &&
                   entry.dynamicVolumeType < kSimpleExtended;
        });
    return rejectIf(spans, QT_TRANSLATE_NOOP("Sandbox", "A volume spans several disks."));
}

Rejection toDynamicRejection(const Disk& disk)
{
    if (disk.isDynamic)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is already a dynamic disk."));
    return rejectIf(disk.isUSB || disk.isRemoveUsb,
                    QT_TRANSLATE_NOOP("Sandbox", "A USB disk cannot be dynamic."));
}

Rejection diskConversionRejection(const Disk& disk, Conversion conversion)
{
    if (!disk.isWritable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk cannot be written to."));
    if (disk.isUnInitialize)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk has no partition table."));
    const bool changesTable = conversion == Conversion::ToGpt || conversion == Conversion::ToMbr;
    if (disk.isDynamic && changesTable)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is dynamic."));
    switch (conversion) {
    case Conversion::ToGpt:
        return toGptRejection(disk);
    case Conversion::ToMbr:
        return toMbrRejection(disk);
    case Conversion::ToBasic:
        return toBasicRejection(disk);
    default:
        return toDynamicRejection(disk);
    }
}

Rejection partitionConversionRejection(const Disk& disk, const Partition& partition, Conversion conversion)
{
    if (partition.readonly || partition.isLocked() || partition.isBad || !disk.isWritable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive cannot be written to."));
    const FileSystem& wanted = *fileSystem(conversionFileSystem(conversion));
    const FileSystem* present = fileSystem(partition.fsString);
    if (present == &wanted)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive already has that file system."));
    if (present == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive has no readable file system."));
    if (partition.isBoot && conversion != Conversion::ToNtfs)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The running system needs its file system."));
    if (const Rejection rejection = newVolumeRejection(wanted, partition.size, 0, partition.label))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive cannot have that file system. %1"), {*rejection});
    return kAccepted;
}

struct ConversionRow
{
    Conversion conversion;
    Function function;
    Text name;
    const char* fileSystem; ///< empty for a conversion of a disk
};

const ConversionRow& rowOf(Conversion conversion)
{
    static const ConversionRow rows[] = {
        {Conversion::ToGpt, Function::ConvertDiskToGpt, QStringLiteral("GPT"), ""},
        {Conversion::ToMbr, Function::ConvertDiskToMbr, QStringLiteral("MBR"), ""},
        {Conversion::ToBasic, Function::ConvertDiskToBasic, QT_TRANSLATE_NOOP("Sandbox", "basic"), ""},
        {Conversion::ToDynamic, Function::ConvertDiskToDynamic, QT_TRANSLATE_NOOP("Sandbox", "dynamic"), ""},
        {Conversion::ToNtfs, Function::ConvertPartitionToNtfs, QStringLiteral("NTFS"), "NTFS"},
        {Conversion::ToFat, Function::ConvertPartitionToFat, QStringLiteral("FAT"), "FAT32"},
        {Conversion::ToExfat, Function::ConvertPartitionToExfat, QStringLiteral("exFAT"), "exFAT"}};
    return *std::find_if(std::begin(rows), std::end(rows),
                         [&](const ConversionRow& row) { return row.conversion == conversion; });
}

bool isOfPartition(Conversion conversion)
{
    return *rowOf(conversion).fileSystem != '\0';
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

Rejection cloneRejection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                         int step)
{
    const Rejection rejection = sourceRejection(machine, source);
    if (rejection || step != kDestinationStep)
        return rejection;
    return destinationRejection(machine, source, destination);
}

std::optional<Conversion> conversionOf(int number)
{
    if (number < static_cast<int>(Conversion::ToGpt) || number > static_cast<int>(Conversion::ToExfat))
        return std::nullopt;
    return static_cast<Conversion>(number);
}

Rejection conversionRejection(const Machine& machine, std::optional<Conversion> conversion,
                              const QVariantMap& record)
{
    if (!conversion)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The conversion does not exist."));
    if (isOfPartition(*conversion)) {
        const Partition* partition =
            machine.partition(record.value(QStringLiteral("driveLetter")).toString());
        if (partition == nullptr)
            return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive does not exist."));
        return partitionConversionRejection(*machine.disk(partition->diskIndex), *partition, *conversion);
    }
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk does not exist."));
    return diskConversionRejection(*disk, *conversion);
}

Text conversionName(Conversion conversion)
{
    return rowOf(conversion).name;
}

QString conversionFileSystem(Conversion conversion)
{
    return QString::fromLatin1(rowOf(conversion).fileSystem);
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

Rejection toolboxRejection(const Machine& machine, int index, const QVariantMap& record)
{
    const QString name = toolboxName(index);
    if (name.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The function does not exist."));
    if (!machine.toolbox.value(name, true))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The function is switched off."));
    if (record.isEmpty())
        return kAccepted;
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The target does not exist."));
    if (name == QLatin1String("rebuildMbr") && disk->isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "A GPT disk has no MBR to rebuild."));
    if (name == QLatin1String("align4k") && isAlignedTo4k(record))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is already aligned."));
    if (name == QLatin1String("bitLockerKey") && record.value(QStringLiteral("bltState")).toInt() == 0)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive is not encrypted."));
    return kAccepted;
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

GuidedWork conversionWork(Conversion conversion, const QVariantMap& record)
{
    const QString key =
        isOfPartition(conversion) ? QStringLiteral("driveLetter") : QStringLiteral("diskIndex");
    return {rowOf(conversion).function, {{key, record.value(key)}}};
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

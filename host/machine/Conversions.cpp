#include "host/machine/Conversions.h"

#include "host/machine/FileSystems.h"
#include "host/machine/Layout.h"

#include <algorithm>
#include <iterator>

namespace host {

namespace {

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

} // namespace

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

GuidedWork conversionWork(Conversion conversion, const QVariantMap& record)
{
    const QString key =
        isOfPartition(conversion) ? QStringLiteral("driveLetter") : QStringLiteral("diskIndex");
    return {rowOf(conversion).function, {{key, record.value(key)}}};
}

} // namespace host

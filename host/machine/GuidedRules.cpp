// Rules for the work of the host's guides.
#include "host/machine/CloneLayout.h"
#include "host/machine/Conversions.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/RuleParts.h"
#include "host/machine/Spaces.h"

#include <algorithm>

namespace host {

namespace {

constexpr qint64 kGibibyte = 1024 * kMebibyte;
constexpr qint64 kInstallerRoom = 8 * kGibibyte;

QVariantMap record(const Question& q, const char* key)
{
    return q.params.value(QLatin1String(key)).toMap();
}

const Disk& diskOfRecord(const Question& q, const char* key)
{
    return *q.machine.disk(record(q, key).value(QStringLiteral("diskIndex")).toInt());
}

Rejection fits(const Question& q, const std::vector<Partition>& parts)
{
    const bool locked =
        std::any_of(parts.begin(), parts.end(), [](const Partition& part) { return part.isLocked(); });
    if (locked)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The source is locked by BitLocker."));
    const auto disk = clonedDisk(q.machine, diskOfRecord(q, "source"), parts, diskOfRecord(q, "destination"));
    return rejectIf(!disk.has_value(), QT_TRANSLATE_NOOP("Sandbox", "The destination is too small."));
}

Rejection cloneAllowed(const Question& q)
{
    constexpr int kDestinationStep = 2;
    return cloneRejection(q.machine, record(q, "source"), record(q, "destination"), kDestinationStep);
}

Rejection cloneDisk(const Question& q)
{
    if (const Rejection rejection = cloneAllowed(q))
        return rejection;
    return isDiskRecord(record(q, "destination"))
               ? fits(q, partsOfDisk(diskOfRecord(q, "source")))
               : Rejection(QT_TRANSLATE_NOOP("Sandbox", "The destination is not a disk."));
}

Rejection cloneSystem(const Question& q)
{
    if (const Rejection rejection = cloneAllowed(q))
        return rejection;
    if (!isDiskRecord(record(q, "destination")) ||
        diskOfRecord(q, "source").diskIndex == diskOfRecord(q, "destination").diskIndex)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The destination must be another disk."));
    return fits(q, partsOfSystem(diskOfRecord(q, "source"), entryOf(q.machine, record(q, "source"))));
}

// Whether the source's file system can have that size.
Rejection volumeFits(const Partition& source, qint64 size)
{
    const FileSystem* kind = fileSystem(source.fsString);
    return kind == nullptr ? kAccepted : sizeRejection(*kind, size, source.clusterSize * source.sectorSize);
}

Rejection intoRegion(const Disk& disk, const Partition& region, const Partition& source)
{
    if (disk.isUnInitialize)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The disk has no partition table."));
    if (const Rejection rejection = basicDisk(disk))
        return rejection;
    const std::size_t index = indexOf(disk, region);
    if (kindBetween(disk, partitionBefore(disk, index), partitionAfter(disk, index)) == Kind::None)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The partition table is full."));
    const Span span = newSpan(disk, region, source.size);
    if (!disk.isGPT && span.end > kMbrLimit)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "An MBR disk cannot use space beyond 2 TiB."));
    if (span.end - span.begin < std::max(source.usedSize, kMebibyte))
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The destination is too small."));
    return volumeFits(source, span.end - span.begin);
}

Rejection clonePartition(const Question& q)
{
    if (const Rejection rejection = cloneAllowed(q))
        return rejection;
    const Partition* source = entryOf(q.machine, record(q, "source"));
    const Partition* destination = entryOf(q.machine, record(q, "destination"));
    if (source == nullptr || destination == nullptr)
        return Rejection(
            QT_TRANSLATE_NOOP("Sandbox", "A partition can only be cloned to a partition or to free space."));
    if (source->isLocked())
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The source is locked by BitLocker."));
    if (source->sectorSize != destination->sectorSize)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The disks have different sector sizes."));
    if (destination->unallocated)
        return intoRegion(diskOfRecord(q, "destination"), *destination, *source);
    if (destination->readonly || destination->isBad)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The destination cannot be written to."));
    return volumeFits(*source, destination->size);
}

template <Conversion conversion> Rejection convert(const Question& q)
{
    return conversionRejection(q.machine, conversion, q.params);
}

Rejection bootMedia(const Question& q)
{
    if (!q.machine.bootMediaEnabled)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "Boot media cannot be created."));
    if (!bootMediaTargetExists(q.machine, q.params))
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "A USB disk is required."));
    const Disk* disk = bootMediaDisk(q.machine, q.params);
    if (disk == nullptr)
        return kAccepted;
    if (disk->holdsRunningSystem())
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The disk holds the running system."));
    const qint64 room = q.params.value(QStringLiteral("isBurn")).toBool() ? kInstallerRoom : kGibibyte;
    if (disk->size < room)
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The disk is too small for the boot medium."));
    return lettersLeft(q.machine);
}

Rejection installPreOs(const Question& q)
{
    return rejectIf(q.machine.preOsEnabled,
                    QT_TRANSLATE_NOOP("Sandbox", "The pre-OS environment is already installed."));
}

Rejection disablePreOs(const Question& q)
{
    return rejectIf(!q.machine.preOsEnabled,
                    QT_TRANSLATE_NOOP("Sandbox", "The pre-OS environment is not installed."));
}

Rejection recover(const Question& q)
{
    if (const Rejection rejection = diskKnown(q))
        return rejection;
    return rejectIf(q.disk()->isOffline || q.disk()->isBad,
                    QT_TRANSLATE_NOOP("Sandbox", "The disk cannot be read."));
}

Rejection protection(const Question& q)
{
    if (const Rejection rejection = letterKnown(q))
        return rejection;
    return rejectIf(q.diskOf(*q.partition())->holdsRunningSystem(),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk holds the running system."));
}

Rejection rebuildMbr(const Question& q)
{
    if (const Rejection rejection = writableDisk(q))
        return rejection;
    return rejectIf(q.disk()->isGPT, QT_TRANSLATE_NOOP("Sandbox", "A GPT disk has no MBR to rebuild."));
}

Rejection align(const Question& q)
{
    if (const Rejection rejection = firstOf(q, {writableDisk, basicDiskOfOrder}))
        return rejection;
    return rejectIf(!alignedDisk(*q.disk()).has_value(),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk has no room to move the partitions."));
}

Rejection scan(const Question& q)
{
    return q.params.contains(QStringLiteral("driveLetter")) ? letterKnown(q) : recover(q);
}

} // namespace

const std::map<Function, Rule>& guidedRules()
{
    static const std::map<Function, Rule> table = {
        {Function::CloneDisk, cloneDisk},
        {Function::CloneSystem, cloneSystem},
        {Function::ClonePartition, clonePartition},
        {Function::ConvertDiskToGpt, convert<Conversion::ToGpt>},
        {Function::ConvertDiskToMbr, convert<Conversion::ToMbr>},
        {Function::ConvertDiskToBasic, convert<Conversion::ToBasic>},
        {Function::ConvertDiskToDynamic, convert<Conversion::ToDynamic>},
        {Function::ConvertPartitionToNtfs, convert<Conversion::ToNtfs>},
        {Function::ConvertPartitionToFat, convert<Conversion::ToFat>},
        {Function::ConvertPartitionToExfat, convert<Conversion::ToExfat>},
        {Function::CreateBootMedia, bootMedia},
        {Function::InstallPreOs, installPreOs},
        {Function::DisablePreOs, disablePreOs},
        {Function::RecoverLostPartition, recover},
        {Function::ToggleWriteProtection, protection},
        {Function::RebuildMbr, rebuildMbr},
        {Function::AlignDiskTo4k, align},
        {Function::ScanBadSectors, scan},
        {Function::CheckFileSystem, readableVolume},
    };
    return table;
}

} // namespace host

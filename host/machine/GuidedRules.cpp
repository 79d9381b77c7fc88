// What speaks against the work of the host's own guides.
#include "host/machine/CloneLayout.h"
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

Answer fits(const Question& q, const std::vector<Partition>& parts)
{
    const bool locked =
        std::any_of(parts.begin(), parts.end(), [](const Partition& part) { return part.isLocked(); });
    if (locked)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the source is locked by BitLocker"));
    const auto disk = clonedDisk(q.machine, diskOfRecord(q, "source"), parts, diskOfRecord(q, "destination"));
    return disk.has_value() ? yes() : no(QT_TRANSLATE_NOOP("Sandbox", "the destination is too small"));
}

Answer cloneAllowed(const Question& q)
{
    constexpr int kDestinationStep = 2;
    return cloneObjection(q.machine, record(q, "source"), record(q, "destination"), kDestinationStep);
}

Answer cloneDisk(const Question& q)
{
    const Answer answer = cloneAllowed(q);
    if (!answer.isEmpty())
        return answer;
    return isDiskRecord(record(q, "destination"))
               ? fits(q, partsOfDisk(diskOfRecord(q, "source")))
               : no(QT_TRANSLATE_NOOP("Sandbox", "the destination is no disk"));
}

Answer cloneSystem(const Question& q)
{
    const Answer answer = cloneAllowed(q);
    if (!answer.isEmpty())
        return answer;
    if (!isDiskRecord(record(q, "destination")) ||
        diskOfRecord(q, "source").diskIndex == diskOfRecord(q, "destination").diskIndex)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the destination is no other disk"));
    return fits(q, partsOfSystem(diskOfRecord(q, "source"), entryOf(q.machine, record(q, "source"))));
}

// Whether the source's file system can have that size.
Answer volumeFits(const Partition& source, qint64 size)
{
    const FileSystem* kind = fileSystem(source.fsString);
    return kind == nullptr ? yes() : sizeObjection(*kind, size, source.clusterSize * source.sectorSize);
}

Answer intoRegion(const Disk& disk, const Partition& region, const Partition& source)
{
    if (disk.isUnInitialize)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the disk has no partition table"));
    const Answer basic = basicDisk(disk);
    if (!basic.isEmpty())
        return basic;
    const std::size_t place = placeOf(disk, region);
    if (kindBetween(disk, partitionBefore(disk, place), partitionBehind(disk, place)) == Kind::None)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the partition table is full"));
    const Span span = newSpan(disk, region, source.size);
    if (!disk.isGPT && span.end > kMbrLimit)
        return no(QT_TRANSLATE_NOOP("Sandbox", "an MBR disk cannot use space beyond 2 TiB"));
    if (span.end - span.begin < std::max(source.usedSize, kMebibyte))
        return no(QT_TRANSLATE_NOOP("Sandbox", "the destination is too small"));
    return volumeFits(source, span.end - span.begin);
}

Answer clonePartition(const Question& q)
{
    const Answer answer = cloneAllowed(q);
    if (!answer.isEmpty())
        return answer;
    const Partition* source = entryOf(q.machine, record(q, "source"));
    const Partition* destination = entryOf(q.machine, record(q, "destination"));
    if (source == nullptr || destination == nullptr)
        return no(QT_TRANSLATE_NOOP("Sandbox", "a partition is cloned to a partition or into free space"));
    if (source->isLocked())
        return no(QT_TRANSLATE_NOOP("Sandbox", "the source is locked by BitLocker"));
    if (source->sectorSize != destination->sectorSize)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the disks have sectors of different sizes"));
    if (destination->unallocated)
        return intoRegion(diskOfRecord(q, "destination"), *destination, *source);
    if (destination->readonly || destination->isBad)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the destination cannot be written to"));
    return volumeFits(*source, destination->size);
}

template <int conversion> Answer convert(const Question& q)
{
    return conversionObjection(q.machine, conversion, q.params);
}

Answer bootMedia(const Question& q)
{
    if (!q.machine.bootMediaEnabled)
        return no(QT_TRANSLATE_NOOP("Sandbox", "boot media cannot be made"));
    if (!bootMediaTargetExists(q.machine, q.params))
        return no(QT_TRANSLATE_NOOP("Sandbox", "there is no USB disk for it"));
    const Disk* disk = bootMediaDisk(q.machine, q.params);
    if (disk == nullptr)
        return yes();
    if (disk->holdsRunningSystem())
        return no(QT_TRANSLATE_NOOP("Sandbox", "the disk holds the running system"));
    const qint64 room = q.params.value(QStringLiteral("isBurn")).toBool() ? kInstallerRoom : kGibibyte;
    if (disk->size < room)
        return no(QT_TRANSLATE_NOOP("Sandbox", "the disk is too small for it"));
    return lettersLeft(q.machine);
}

Answer installPreOs(const Question& q)
{
    return q.machine.preOsEnabled ? no(QT_TRANSLATE_NOOP("Sandbox", "the pre-OS environment is installed"))
                                  : yes();
}

Answer disablePreOs(const Question& q)
{
    return q.machine.preOsEnabled
               ? yes()
               : no(QT_TRANSLATE_NOOP("Sandbox", "the pre-OS environment is not installed"));
}

Answer recover(const Question& q)
{
    const Answer answer = diskKnown(q);
    return !answer.isEmpty() || (!q.disk()->isOffline && !q.disk()->isBad)
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "the disk cannot be read"));
}

Answer protection(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    return q.diskOf(*q.partition())->holdsRunningSystem()
               ? no(QT_TRANSLATE_NOOP("Sandbox", "the disk holds the running system"))
               : yes();
}

Answer rebuildMbr(const Question& q)
{
    const Answer answer = writableDisk(q);
    return !answer.isEmpty() || !q.disk()->isGPT
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "a GPT disk has no MBR to rebuild"));
}

Answer align(const Question& q)
{
    Answer answer = writableDisk(q);
    if (answer.isEmpty())
        answer = basicDisk(*q.disk());
    return !answer.isEmpty() || alignedDisk(*q.disk()).has_value()
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "there is no room to move the partitions"));
}

Answer scan(const Question& q)
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
        {Function::ConvertDiskToGpt, convert<0>},
        {Function::ConvertDiskToMbr, convert<1>},
        {Function::ConvertDiskToBasic, convert<2>},
        {Function::ConvertDiskToDynamic, convert<3>},
        {Function::ConvertPartitionToNtfs, convert<4>},
        {Function::ConvertPartitionToFat, convert<5>},
        {Function::ConvertPartitionToExfat, convert<6>},
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

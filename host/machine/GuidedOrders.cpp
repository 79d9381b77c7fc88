// The work of the host's own guides.
#include "host/machine/CloneLayout.h"
#include "host/machine/Conversions.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Records.h"

#include <algorithm>
#include <numeric>

namespace host {

namespace {

constexpr qint64 kGibibyte = 1024 * kMebibyte;
constexpr qint64 kLargestBootVolume = 32 * kGibibyte;
constexpr qint64 kRescueSize = 600 * kMebibyte;
constexpr qint64 kInstallerSize = 5 * kGibibyte;

QVariantMap record(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toMap();
}

int diskOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("diskIndex")).toInt();
}

std::vector<Partition> clonedParts(const Machine& machine, const QVariantMap& params, bool whole)
{
    const QVariantMap source = record(params, "source");
    const Disk& disk = *machine.disk(diskOf(source));
    return whole ? partsOfDisk(disk) : partsOfSystem(disk, entryOf(machine, source));
}

void cloneToDisk(Machine& machine, const QVariantMap& params, bool whole)
{
    Disk& destination = *machine.disk(diskOf(record(params, "destination")));
    const Disk& source = *machine.disk(diskOf(record(params, "source")));
    destination = *clonedDisk(machine, source, clonedParts(machine, params, whole), destination);
}

void cloneDisk(Machine& machine, const QVariantMap& params)
{
    cloneToDisk(machine, params, true);
}

void cloneSystem(Machine& machine, const QVariantMap& params)
{
    cloneToDisk(machine, params, false);
}

qint64 usedOf(const std::vector<Partition>& parts)
{
    return std::accumulate(parts.begin(), parts.end(), qint64(0),
                           [](qint64 sum, const Partition& part) { return sum + part.usedSize; });
}

qint64 cloneDiskBytes(const Machine& machine, const QVariantMap& params)
{
    return usedOf(clonedParts(machine, params, true));
}

qint64 cloneSystemBytes(const Machine& machine, const QVariantMap& params)
{
    return usedOf(clonedParts(machine, params, false));
}

// The destination has its new table, and no partition is complete.
void cloneToDiskPart(Machine& machine, const QVariantMap& params, double)
{
    Disk& destination = *machine.disk(diskOf(record(params, "destination")));
    writeTable(destination, machine.disk(diskOf(record(params, "source")))->isGPT);
    settle(destination);
}

void copyVolume(const Partition& from, Partition& to)
{
    to.usedSize = from.usedSize;
    to.clusterSize = from.clusterSize;
    to.isUnformattedType = from.isUnformattedType;
    to.fsString = from.fsString;
    to.label = from.label;
    to.isBitLocker = false;
    to.bltState = 0;
    to.isLowSpace = false;
    to.isOfflineBoot = from.isBoot || from.isOfflineBoot;
}

void clonePartition(Machine& machine, const QVariantMap& params)
{
    const Partition source = *entryOf(machine, record(params, "source"));
    const Partition* found = entryOf(machine, record(params, "destination"));
    Disk& disk = *machine.disk(found->diskIndex);
    const std::size_t index = indexOf(disk, *found);
    if (found->unallocated) {
        const Kind kind = kindBetween(disk, partitionBefore(disk, index), partitionAfter(disk, index));
        Partition copy = newPartition(machine, disk, newSpan(disk, *found, source.size), kind);
        copyVolume(source, copy);
        putInto(disk, index, copy);
    } else {
        copyVolume(source, disk.partitions[index]);
    }
    settle(disk);
}

qint64 clonePartitionBytes(const Machine& machine, const QVariantMap& params)
{
    return entryOf(machine, record(params, "source"))->usedSize;
}

// A partition in free space is created in the last step; an overwritten partition has lost its data.
void clonePartitionPart(Machine& machine, const QVariantMap& params, double)
{
    const Partition* found = entryOf(machine, record(params, "destination"));
    Disk& disk = *machine.disk(found->diskIndex);
    if (!found->unallocated)
        makeRaw(disk.partitions[indexOf(disk, *found)]);
    settle(disk);
}

void convertToGpt(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    disk.isGPT = true;
    const qint64 end = usableEnd(disk);
    for (Partition& entry : disk.partitions) {
        entry.isGPT = true;
        entry.isPrimary = true;
        entry.isActive = false;
        const Span span{entry.startOffset(), std::min(entry.endOffset(), end)};
        if (entry.unallocated)
            entry.size = std::max<qint64>(span.end - span.begin, 0);
        else
            entry.partGUID = newPartition(machine, disk, span, Kind::Primary).partGUID;
    }
    if (!disk.partitions.empty() && disk.partitions.back().size == 0)
        disk.partitions.pop_back();
    settle(disk);
}

// Reserved partitions become free space. If more than four partitions remain, the first three stay primary.
void convertToMbr(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    disk.isGPT = false;
    for (std::size_t i = 0; i < disk.partitions.size(); ++i) {
        Partition& entry = disk.partitions[i];
        if (entry.gptReserved)
            setFree(disk, i);
        entry.isGPT = false;
        entry.gptEFI = false;
        entry.gptRecovery = false;
        entry.partGUID.clear();
    }
    const std::size_t count = partsOfDisk(disk).size();
    std::size_t number = 0;
    for (Partition& entry : disk.partitions)
        entry.isPrimary = entry.unallocated || count <= kMbrPlaces || number++ < kMbrPlaces - 1;
    settle(disk);
}

void setDynamic(Disk& disk, bool dynamic)
{
    constexpr int kSimple = 2;
    disk.isDynamic = dynamic;
    for (Partition& entry : disk.partitions) {
        entry.isDynamic = dynamic;
        entry.dynamicVolumeType = dynamic && !entry.unallocated ? kSimple : 0;
        entry.volumeSize = dynamic && !entry.unallocated ? entry.size : 0;
    }
    settle(disk);
}

void convertToBasic(Machine& machine, const QVariantMap& params)
{
    setDynamic(targetDisk(machine, params), false);
}

void convertToDynamic(Machine& machine, const QVariantMap& params)
{
    setDynamic(targetDisk(machine, params), true);
}

// Files, label and used size are kept.
template <Conversion conversion> void convertPartition(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    const FileSystem& kind = *fileSystem(conversionFileSystem(conversion));
    partition.fsString = QString::fromLatin1(kind.name);
    partition.clusterSize = std::max(1, defaultCluster(kind, partition.size) / partition.sectorSize);
    settle(*machine.disk(partition.diskIndex));
}

qint64 usedBytes(const Machine& machine, const QVariantMap& params)
{
    return target(machine, params).usedSize;
}

qint64 mediaBytes(const Machine& machine, const QVariantMap& params)
{
    Q_UNUSED(machine)
    return params.value(QStringLiteral("isBurn")).toBool() ? kInstallerSize : kRescueSize;
}

void createMedia(Machine& machine, const QVariantMap& params)
{
    const Disk* found = bootMediaDisk(machine, params);
    if (found == nullptr)
        return;
    Disk& disk = *machine.disk(found->diskIndex);
    writeTable(disk, false);
    const qint64 end = std::min({usableEnd(disk), usableBegin() + kLargestBootVolume, kMbrLimit});
    Partition volume = newPartition(machine, disk, {usableBegin(), alignedDown(end)}, Kind::Primary);
    giveFileSystem(volume, QStringLiteral("FAT32"), QStringLiteral("BOOT"), 0);
    volume.usedSize = mediaBytes(machine, params);
    volume.isActive = true;
    putInto(disk, 0, volume);
    settle(disk);
}

void createMediaPart(Machine& machine, const QVariantMap& params, double)
{
    const Disk* found = bootMediaDisk(machine, params);
    if (found == nullptr)
        return;
    Disk& disk = *machine.disk(found->diskIndex);
    writeTable(disk, false);
    settle(disk);
}

void installPreOs(Machine& machine, const QVariantMap&)
{
    machine.preOsEnabled = true;
}

void disablePreOs(Machine& machine, const QVariantMap&)
{
    machine.preOsEnabled = false;
}

void toggleProtection(Machine& machine, const QVariantMap& params)
{
    Disk& disk = *machine.disk(target(machine, params).diskIndex);
    disk.isProtected = !disk.isProtected;
}

void align(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    disk = *alignedDisk(disk);
}

qint64 alignBytes(const Machine& machine, const QVariantMap& params)
{
    const std::vector<Partition> before = partsOfDisk(targetDisk(machine, params));
    const std::vector<Partition> after = partsOfDisk(*alignedDisk(targetDisk(machine, params)));
    qint64 moved = 0;
    for (std::size_t i = 0; i < before.size(); ++i)
        moved += before[i].startSector == after[i].startSector ? 0 : before[i].usedSize;
    return moved;
}

qint64 readBytes(const Machine& machine, const QVariantMap& params)
{
    return params.contains(QStringLiteral("driveLetter")) ? target(machine, params).size
                                                          : targetDisk(machine, params).size;
}

} // namespace

const Operations& guidedOperations()
{
    static const Operations table = {
        {Function::CloneDisk, {cloneDisk, cloneDiskBytes, cloneToDiskPart}},
        {Function::CloneSystem, {cloneSystem, cloneSystemBytes, cloneToDiskPart}},
        {Function::ClonePartition, {clonePartition, clonePartitionBytes, clonePartitionPart}},
        {Function::ConvertDiskToGpt, {convertToGpt}},
        {Function::ConvertDiskToMbr, {convertToMbr}},
        {Function::ConvertDiskToBasic, {convertToBasic}},
        {Function::ConvertDiskToDynamic, {convertToDynamic}},
        {Function::ConvertPartitionToNtfs, {convertPartition<Conversion::ToNtfs>, usedBytes}},
        {Function::ConvertPartitionToFat, {convertPartition<Conversion::ToFat>, usedBytes}},
        {Function::ConvertPartitionToExfat, {convertPartition<Conversion::ToExfat>, usedBytes}},
        {Function::CreateBootMedia, {createMedia, mediaBytes, createMediaPart}},
        {Function::InstallPreOs, {installPreOs, mediaBytes}},
        {Function::DisablePreOs, {disablePreOs}},
        {Function::RecoverLostPartition, {nullptr, readBytes}},
        {Function::ToggleWriteProtection, {toggleProtection}},
        {Function::AlignDiskTo4k, {align, alignBytes}},
        {Function::ScanBadSectors, {nullptr, readBytes}},
        {Function::CheckFileSystem, {nullptr, usedBytes}},
    };
    return table;
}

} // namespace host

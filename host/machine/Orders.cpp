#include "host/machine/Orders.h"

#include "host/machine/Functions.h"
#include "host/machine/Records.h"
#include "host/machine/Rules.h"

#include <QtCore/QUuid>

#include <algorithm>
#include <map>

namespace host {

namespace {

using Work = void (*)(Machine&, const QVariantMap&);

constexpr int kDefaultCluster = 4096;

QString text(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toString();
}

int number(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toInt();
}

Partition& target(Machine& machine, const QVariantMap& params)
{
    return *machine.partition(text(params, "driveLetter"));
}

Disk& targetDisk(Machine& machine, const QVariantMap& params)
{
    return *machine.disk(number(params, "diskIndex"));
}

qint64 bytesOfSectors(const Partition& entry, qint64 bytes)
{
    return bytes / entry.sectorSize * entry.sectorSize;
}

Partition freeRegion(const Disk& disk, qint64 startSector, qint64 size, int sectorSize)
{
    Partition region;
    region.unallocated = true;
    region.isGPT = disk.isGPT;
    region.isRemovable = disk.isRemoveUsb;
    region.sectorSize = sectorSize;
    region.startSector = startSector;
    region.size = size;
    return region;
}

void giveFileSystem(Partition& partition, const QString& fileSystem, const QString& label, int clusterBytes)
{
    partition.fsString = knownFileSystem(fileSystem);
    partition.label = label;
    partition.usedSize = 0;
    partition.isUnformattedType = false;
    partition.isBitLocker = false;
    partition.bltState = 0;
    partition.clusterSize = (clusterBytes > 0 ? clusterBytes : kDefaultCluster) / partition.sectorSize;
}

void createPartition(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    const auto place = namedRegion(machine, params) - disk.partitions.data();
    const Partition region = disk.partitions[static_cast<std::size_t>(place)];
    Partition created = region;
    created.unallocated = false;
    created.isPrimary = true;
    created.size = std::max<qint64>(
        bytesOfSectors(region, params.value(QStringLiteral("capacity")).toLongLong()), region.sectorSize);
    created.driveLetter = machine.firstFreeLetter();
    created.partGUID = disk.isGPT ? QUuid::createUuid().toString() : QString();
    giveFileSystem(created, text(params, "fileSystem"), text(params, "label"), 0);
    disk.partitions[static_cast<std::size_t>(place)] = created;
    if (created.size < region.size) {
        const qint64 start = region.startSector + created.size / region.sectorSize;
        disk.partitions.insert(disk.partitions.begin() + place + 1,
                               freeRegion(disk, start, region.size - created.size, region.sectorSize));
    }
    settle(disk);
}

void deletePartition(Machine& machine, const QVariantMap& params)
{
    Partition& gone = target(machine, params);
    Disk& disk = *machine.disk(gone.diskIndex);
    gone = freeRegion(disk, gone.startSector, gone.size, gone.sectorSize);
    settle(disk);
}

void formatPartition(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    giveFileSystem(partition, text(params, "fileSystem"), text(params, "label"),
                   number(params, "clusterSize"));
    settle(*machine.disk(partition.diskIndex));
}

// The free region behind the partition takes what the partition gives up, and gives what it takes.
void resizePartition(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    Disk& disk = *machine.disk(partition.diskIndex);
    const qint64 room = partition.size + freeBehind(disk, partition);
    const auto place = &partition - disk.partitions.data();
    partition.size = bytesOfSectors(partition, params.value(QStringLiteral("size")).toLongLong());
    const Partition resized = partition;
    auto next = disk.partitions.begin() + place + 1;
    if (next != disk.partitions.end() && next->unallocated)
        next = disk.partitions.erase(next);
    if (room > resized.size)
        disk.partitions.insert(next, freeRegion(disk, resized.startSector + resized.size / resized.sectorSize,
                                                room - resized.size, resized.sectorSize));
    settle(disk);
}

void changeLetter(Machine& machine, const QVariantMap& params)
{
    target(machine, params).driveLetter = letterOf(text(params, "newDriveLetter"));
}

void changeLabel(Machine& machine, const QVariantMap& params)
{
    target(machine, params).label = text(params, "newLabel");
}

void changeClusterSize(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    partition.clusterSize = std::max(1, number(params, "newClusterSize") / partition.sectorSize);
}

void setActive(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    for (Partition& entry : machine.disk(partition.diskIndex)->partitions)
        entry.isActive = &entry == &partition;
}

// A hidden partition loses its letter, as it does on a real machine.
void setHidden(Machine& machine, const QVariantMap& params)
{
    Partition& partition = target(machine, params);
    partition.isHidden = true;
    partition.driveLetter.clear();
}

void convertToPrimary(Machine& machine, const QVariantMap& params)
{
    target(machine, params).isPrimary = true;
}

void convertToLogical(Machine& machine, const QVariantMap& params)
{
    target(machine, params).isPrimary = false;
}

void emptyDisk(Disk& disk)
{
    const int sectorSize = disk.partitions.empty() ? 512 : disk.partitions.front().sectorSize;
    disk.partitions = {freeRegion(disk, 0, disk.size, sectorSize)};
    settle(disk);
}

void deleteAllPartitions(Machine& machine, const QVariantMap& params)
{
    emptyDisk(targetDisk(machine, params));
}

void initializeDisk(Machine& machine, const QVariantMap& params, bool gpt)
{
    Disk& disk = targetDisk(machine, params);
    disk.isUnInitialize = false;
    disk.isGPT = gpt;
    emptyDisk(disk);
}

void initializeToMbr(Machine& machine, const QVariantMap& params)
{
    initializeDisk(machine, params, false);
}

void initializeToGpt(Machine& machine, const QVariantMap& params)
{
    initializeDisk(machine, params, true);
}

void bringOnline(Machine& machine, const QVariantMap& params)
{
    targetDisk(machine, params).isOffline = false;
}

void ejectDisk(Machine& machine, const QVariantMap& params)
{
    const int gone = target(machine, params).diskIndex;
    machine.disks.erase(std::remove_if(machine.disks.begin(), machine.disks.end(),
                                       [&](const Disk& disk) { return disk.diskIndex == gone; }),
                        machine.disks.end());
}

const std::map<Function, Work>& works()
{
    static const std::map<Function, Work> table = {
        {Function::DeleteAllPartitions, deleteAllPartitions},
        {Function::InitializeDiskToMbr, initializeToMbr},
        {Function::InitializeDiskToGpt, initializeToGpt},
        {Function::ResizePartition, resizePartition},
        {Function::FormatPartition, formatPartition},
        {Function::DeletePartition, deletePartition},
        {Function::CreatePartition, createPartition},
        {Function::ConvertPartitionToPrimary, convertToPrimary},
        {Function::ConvertPartitionToLogical, convertToLogical},
        {Function::ChangePartitionClusterSize, changeClusterSize},
        {Function::ChangePartitionDriveLetter, changeLetter},
        {Function::ChangePartitionLabel, changeLabel},
        {Function::SetPartitionActive, setActive},
        {Function::SetPartitionHidden, setHidden},
        {Function::DiskBringOnline, bringOnline},
        {Function::EjectUsb, ejectDisk},
    };
    return table;
}

} // namespace

bool carryOut(Machine& machine, int function, const QVariantMap& params)
{
    const auto work = works().find(static_cast<Function>(function));
    if (work == works().end())
        return false;
    work->second(machine, params);
    return true;
}

} // namespace host

// The functions of the partition page that act on a whole disk.
#include "host/machine/OrderParts.h"
#include "host/machine/Records.h"

#include <algorithm>

namespace host {

namespace {

void deleteAllPartitions(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    emptyDisk(disk);
    settle(disk);
}

void initialize(Machine& machine, const QVariantMap& params, bool gpt)
{
    Disk& disk = targetDisk(machine, params);
    writeTable(disk, gpt);
    settle(disk);
}

void initializeToMbr(Machine& machine, const QVariantMap& params)
{
    initialize(machine, params, false);
}

void initializeToGpt(Machine& machine, const QVariantMap& params)
{
    initialize(machine, params, true);
}

// The partition table is at the start of the disk, so it is erased first.
void eraseDisk(Machine& machine, const QVariantMap& params)
{
    Disk& disk = targetDisk(machine, params);
    loseTable(disk);
    settle(disk);
}

void eraseFront(Machine& machine, const QVariantMap& params, double)
{
    eraseDisk(machine, params);
}

qint64 wipeBytes(const Machine& machine, const QVariantMap& params)
{
    return targetDisk(machine, params).size * numberOf(params, "eraseCount");
}

qint64 diskBytes(const Machine& machine, const QVariantMap& params)
{
    return targetDisk(machine, params).size;
}

// The disk is emptied first, then the partitions are created in order.
void createSome(Machine& machine, const QVariantMap& params, int count)
{
    Disk& disk = targetDisk(machine, params);
    writeTable(disk, textOf(params, "GptOrMbr").toUpper() == QLatin1String("GPT"));
    const qint64 share = autoShare(disk, disk.isGPT, numberOf(params, "partitionCount"));
    for (int i = 0; i < count; ++i) {
        const qint64 begin = usableBegin() + i * share;
        Partition created = newPartition(machine, disk, {begin, begin + share}, Kind::Primary);
        giveFileSystem(created, QStringLiteral("NTFS"), QString(), 0);
        putInto(disk, disk.partitions.size() - 1, created);
    }
    settle(disk);
}

void autoCreate(Machine& machine, const QVariantMap& params)
{
    createSome(machine, params, numberOf(params, "partitionCount"));
}

void autoCreatePart(Machine& machine, const QVariantMap& params, double share)
{
    createSome(machine, params, static_cast<int>(share * numberOf(params, "partitionCount")));
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

// The user's files are assumed to be half of the data on the system drive.
qint64 migratedBytes(const Machine& machine, const QVariantMap& params)
{
    return target(machine, params).usedSize / 2;
}

void migrate(Machine& machine, const QVariantMap& params)
{
    Partition& source = target(machine, params);
    Partition& taker = *machine.partition(*migrationTarget(machine, source));
    const qint64 moved = migratedBytes(machine, params);
    source.usedSize -= moved;
    taker.usedSize += moved;
    settle(*machine.disk(source.diskIndex));
    settle(*machine.disk(taker.diskIndex));
}

} // namespace

const Operations& diskOperations()
{
    static const Operations table = {
        {Function::DeleteAllPartitions, {deleteAllPartitions}},
        {Function::InitializeDiskToMbr, {initializeToMbr}},
        {Function::InitializeDiskToGpt, {initializeToGpt}},
        {Function::WipeDisk, {eraseDisk, wipeBytes, eraseFront}},
        {Function::MigrateSystemDriveData, {migrate, migratedBytes}},
        {Function::AutoCreatePartitions, {autoCreate, nullptr, autoCreatePart}},
        {Function::DiskBringOnline, {bringOnline}},
        {Function::EjectUsb, {ejectDisk}},
        {Function::LowLevelFormat, {eraseDisk, diskBytes, eraseFront}},
    };
    return table;
}

} // namespace host

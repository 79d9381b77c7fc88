#include "tests/host/RandomMachine.h"

#include "host/machine/Functions.h"
#include "host/machine/Records.h"
#include "tests/host/MachineText.h"

#include <algorithm>
#include <array>

namespace {

constexpr qint64 kTiB = 1024 * kGiB;
constexpr qint64 kGptTail = 33;

const std::array<int, 47> kFunctions = {
    0,    1,    2,    5,    6,    7,    14,   15,   16,   17,   18,   19,   20,   21,   22,   23,
    24,   25,   29,   30,   31,   33,   34,   39,   43,   45,   46,   47,   1000, 1001, 1002, 1003,
    1004, 1005, 1006, 1007, 1008, 1009, 1010, 1011, 1012, 1013, 1014, 1015, 1016, 1017, 1018};

bool names(int function, const char* name)
{
    return host::functionName(function) == QLatin1String(name);
}

} // namespace

host::Machine RandomMachine::machine()
{
    host::Machine machine;
    machine.name = "random";
    const int count = 1 + static_cast<int>(below(5));
    for (int i = 0; i < count; ++i)
        machine.disks.push_back(disk(i, i == 0));
    giveLetters(machine);
    for (host::Disk& disk : machine.disks)
        host::settle(disk);
    return machine;
}

host::Disk RandomMachine::disk(int index, bool system)
{
    const qint64 sizes[] = {kGiB, 64 * kGiB, 500 * kGiB, 3 * kTiB, 8 * kTiB};
    host::Disk disk;
    disk.diskIndex = index;
    disk.size = sizes[below(system ? 3 : 5)] + 200 * kGiB * (system ? 1 : 0) + below(kGiB);
    disk.serialNO = QString("SN%1").arg(index);
    disk.isGPT = chance(50);
    disk.isUnInitialize = !system && chance(10);
    disk.isUSB = disk.isRemoveUsb = !system && chance(25);
    disk.isOffline = !system && chance(8);
    disk.readonly = !system && chance(4);
    disk.isDynamic = !system && !disk.isUSB && !disk.isUnInitialize && chance(10);
    if (disk.isUnInitialize)
        disk.isGPT = false;
    fill(disk, system);
    return disk;
}

host::Partition RandomMachine::entryOf(const host::Disk& disk, int sector, qint64 begin, qint64 size)
{
    host::Partition entry;
    entry.diskIndex = disk.diskIndex;
    entry.isGPT = disk.isGPT;
    entry.isDynamic = disk.isDynamic;
    entry.isRemovable = disk.isRemoveUsb;
    entry.sectorSize = sector;
    entry.startSector = begin / sector;
    entry.size = size;
    return entry;
}

void RandomMachine::makeSystem(host::Partition& partition)
{
    partition.fsString = "NTFS";
    partition.clusterSize = 4096 / partition.sectorSize;
    partition.label = "Windows";
    partition.usedSize = 30 * kGiB;
    partition.isBoot = partition.defBoot = true;
}

void RandomMachine::fill(host::Disk& disk, bool system)
{
    constexpr qint64 kMinBytes = 40 * kMiB;
    const int sector = chance(85) ? 512 : 4096;
    const qint64 unit = chance(25) ? sector : kMiB;
    const qint64 end = disk.size / sector * sector - (disk.isGPT ? kGptTail * sector : 0);
    qint64 cursor = disk.isUnInitialize ? 0 : unit == kMiB ? kMiB : 63 * qint64(4096);
    const int entries = disk.isUnInitialize ? 0 : static_cast<int>(below(7)) + (system ? 1 : 0);
    for (int i = 0; i < entries; ++i) {
        const bool isSystem = system && i == 0;
        const qint64 limit = std::min(end, disk.isGPT ? end : 2 * kTiB) - cursor;
        const qint64 most = isSystem ? 100 * kGiB : std::min(limit, (entries > 3 ? 1 : 3) * disk.size / 4);
        if (limit < 2 * kMinBytes || most < 2 * kMinBytes)
            break;
        const qint64 size = isSystem ? most : kMinBytes + below(most - kMinBytes);
        host::Partition entry = entryOf(disk, sector, cursor, size / unit * unit);
        entry.unallocated = !isSystem && chance(25);
        if (isSystem)
            makeSystem(entry);
        else if (!entry.unallocated)
            giveVolume(entry);
        cursor = entry.endOffset();
        disk.partitions.push_back(entry);
    }
    host::Partition rest = entryOf(disk, sector, cursor, end - cursor);
    rest.unallocated = true;
    if (rest.size > 0)
        disk.partitions.push_back(rest);
    giveKinds(disk);
}

void RandomMachine::giveVolume(host::Partition& partition)
{
    const char* kinds[] = {"NTFS", "NTFS", "exFAT", "EXT4", "FAT32", "RAW", ""};
    partition.fsString = kinds[below(7)];
    if (partition.fsString == "FAT32" && partition.size > 2 * kTiB)
        partition.fsString = "NTFS";
    partition.isUnformattedType = partition.fsString.isEmpty();
    const bool readable = !partition.isUnformattedType && partition.fsString != "RAW";
    partition.clusterSize = readable ? 65536 / partition.sectorSize : 0;
    partition.usedSize = readable ? below(partition.size + 1) / (chance(50) ? 10 : 1) : 0;
    partition.label = readable ? QString("V%1").arg(below(1000)) : QString();
    partition.bltState = readable && chance(10) ? static_cast<int>(1 + below(3)) : 0;
    partition.isBitLocker = partition.bltState != 0;
    partition.readonly = chance(3);
    partition.gptEFI = partition.isGPT && partition.fsString == "FAT32" && chance(30);
    partition.dynamicVolumeType = partition.isDynamic ? 2 : 0;
    partition.volumeSize = partition.isDynamic ? partition.size : 0;
}

// On an MBR disk with more than four partitions, all but the first three are logical.
void RandomMachine::giveKinds(host::Disk& disk)
{
    if (disk.isGPT)
        return;
    const auto count = std::count_if(disk.partitions.begin(), disk.partitions.end(),
                                     [](const host::Partition& entry) { return !entry.unallocated; });
    const qint64 primaries = count > 4 ? below(4) : 4 - (chance(50) ? 4 - std::min<qint64>(count, 2) : 0);
    qint64 number = 0;
    for (host::Partition& entry : disk.partitions) {
        if (entry.unallocated)
            continue;
        entry.isPrimary = number < std::max<qint64>(primaries, 1);
        entry.isActive = number == 0 && chance(50);
        ++number;
    }
}

void RandomMachine::giveLetters(host::Machine& machine)
{
    for (host::Disk& disk : machine.disks) {
        for (host::Partition& entry : disk.partitions) {
            if (entry.isBoot)
                entry.driveLetter = "C";
            else if (!entry.unallocated && chance(85))
                entry.driveLetter = machine.firstFreeLetter();
        }
    }
}

int RandomMachine::function()
{
    // New partitions have the most preconditions, and the rules are about full disks.
    constexpr int kCreatePartition = 18;
    return chance(8) ? kCreatePartition : kFunctions[static_cast<std::size_t>(below(kFunctions.size()))];
}

QString RandomMachine::letter(const host::Machine& machine)
{
    QStringList letters;
    for (const host::Disk& disk : machine.disks) {
        for (const host::Partition& entry : disk.partitions) {
            if (!entry.driveLetter.isEmpty())
                letters.append(entry.driveLetter);
        }
    }
    if (letters.isEmpty() || chance(5))
        return QString(QChar('A' + static_cast<int>(below(26))));
    return letters.at(static_cast<int>(below(letters.size())));
}

int RandomMachine::diskIndex(const host::Machine& machine)
{
    return static_cast<int>(below(static_cast<qint64>(machine.disks.size()) + (chance(5) ? 2 : 0)));
}

// Near the size of the drive, or any size.
qint64 RandomMachine::size(const host::Machine& machine, const QString& letter)
{
    const host::Partition* partition = machine.partition(letter);
    const qint64 scale = partition == nullptr ? 100 * kGiB : partition->size;
    switch (below(7)) {
    case 0:
        return partition == nullptr ? 0 : partition->usedSize;
    case 1:
        return partition == nullptr ? 0 : partition->freeSize() - 1;
    case 2:
        return -below(kGiB);
    case 4:
        return below(50 * kMiB);
    case 3:
        return below(9 * kTiB);
    default:
        return below(2 * scale + 1);
    }
}

QString RandomMachine::fileSystem()
{
    const char* kinds[] = {"NTFS", "ntfs", "exFAT", "FAT32", "FAT", "EXT4", "?", ""};
    return kinds[chance(50) ? 0 : below(8)];
}

QString RandomMachine::label()
{
    return QString(static_cast<int>(below(chance(20) ? 40 : 12)), chance(95) ? 'L' : '*');
}

int RandomMachine::cluster()
{
    return chance(50) ? 0 : static_cast<int>(chance(90) ? 256 << below(15) : below(100000));
}

QVariantMap RandomMachine::record(const host::Machine& machine)
{
    const QVariantList disks = host::diskRecords(machine);
    if (disks.isEmpty() || chance(3))
        return {{"diskIndex", 77}};
    const QVariantMap disk = disks.at(static_cast<int>(below(disks.size()))).toMap();
    const QVariantList entries = disk.value("partitions").toList();
    return entries.isEmpty() || chance(40) ? disk
                                           : entries.at(static_cast<int>(below(entries.size()))).toMap();
}

QVariantMap RandomMachine::params(const host::Machine& machine, int function)
{
    const QString drive = letter(machine);
    QVariantMap params{{"driveLetter", drive}};
    if (names(function, "CloneDisk") || names(function, "CloneSystem") || names(function, "ClonePartition")) {
        params.clear();
        params["source"] = record(machine);
        params["destination"] = record(machine);
        return params;
    }
    if (names(function, "CreateBootMedia"))
        return chance(50) ? QVariantMap{{"diskIndex", diskIndex(machine)}, {"isBurn", chance(50)}}
                          : QVariantMap{{"usbDriveLetter", drive}, {"createToFile", chance(20)}};
    if (function == 1017) // a bad-sector scan takes a drive or a disk
        return chance(50) ? params : QVariantMap{{"diskIndex", diskIndex(machine)}};
    params["diskIndex"] = diskIndex(machine);
    params["size"] = params["newPartitionCapacity"] = params["partitionCapacity"] = size(machine, drive);
    params["capacity"] = chance(70) ? below(chance(60) ? 2 * kGiB : 3 * kTiB) : size(machine, drive);
    params["unallocatedIndex"] = static_cast<int>(below(4)) - (chance(5) ? 2 : 0);
    params["fileSystem"] = params["newPartitionFileSystem"] = fileSystem();
    params["label"] = params["newLabel"] = params["newPartitionLabel"] = label();
    params["clusterSize"] = params["newClusterSize"] = cluster();
    params["quickFormat"] = chance(50);
    params["driveLetter2"] = letter(machine);
    params["targetDriveLetter"] = chance(30) ? QString("CreateNew") : letter(machine);
    params["eraseCount"] = static_cast<int>(below(4));
    params["newDriveLetter"] = QString(QChar('A' + static_cast<int>(below(26)))) + ':';
    params["partitionCount"] = static_cast<int>(below(7));
    params["GptOrMbr"] = chance(50) ? "GPT" : chance(90) ? "mbr" : "none";
    return params;
}

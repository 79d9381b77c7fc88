#include "host/udisks/Inventory.h"

#include "host/machine/Layout.h"
#include "host/machine/Records.h"
#include "host/udisks/DeviceIdentity.h"
#include "host/udisks/FreeRegions.h"
#include "host/udisks/PartitionTypes.h"

#include <algorithm>

namespace host {

namespace {

const QString kEfi = QStringLiteral("c12a7328-f81f-11d2-ba4b-00a0c93ec93b");
const QString kReserved = QStringLiteral("e3c9e316-0b5c-4db8-817d-f92df00215ae");
const QString kRecovery = QStringLiteral("de94bba4-06d1-4d40-a16a-bfd50179d6ac");

void readTypes(Partition& partition, const PartitionEntry& entry)
{
    if (partition.isGPT) {
        partition.partGUID = QLatin1Char('{') + entry.uuid + QLatin1Char('}');
        partition.gptEFI = entry.type == kEfi;
        partition.gptReserved = entry.type == kReserved;
        partition.gptRecovery = entry.type == kRecovery;
        partition.isHidden = (entry.flags & kGptHidden) != 0;
        return;
    }
    partition.isPrimary = !entry.isContained;
    partition.isActive = (entry.flags & kMbrActive) != 0;
    partition.isHidden = isHiddenType(entry.type);
}

void readVolume(Partition& partition, const BlockDevice& device, const DeviceFacts& facts)
{
    partition.label = device.label;
    partition.readonly = device.readOnly;
    partition.isBitLocker = device.type == QLatin1String("BitLocker");
    partition.bltState = partition.isBitLocker ? 3 : 0;
    partition.isUnformattedType = device.type.isEmpty();
    partition.fsString = inventoryFileSystem(device.type, device.version);
    // An unknown amount counts as full, so that no order shrinks the partition below its data.
    const bool hasData = !device.type.isEmpty();
    partition.usedSize = hasData ? std::min(facts.usedBytes.value_or(partition.size), partition.size) : 0;
    partition.clusterSize = facts.clusterBytes / partition.sectorSize;
}

Partition readPartition(const BlockDevice& device, const Disk& disk, const DeviceFacts& facts)
{
    Partition partition;
    partition.diskIndex = disk.diskIndex;
    partition.isGPT = disk.isGPT;
    partition.isRemovable = disk.isRemoveUsb;
    partition.isVirtualDisk = disk.isVirtualDisk;
    partition.sectorSize = facts.sectorSize;
    partition.size = device.partition->size;
    partition.startSector = device.partition->offset / facts.sectorSize;
    readTypes(partition, *device.partition);
    readVolume(partition, device, facts);
    return partition;
}

bool wantsLetter(const Partition& partition)
{
    return !partition.gptEFI && !partition.gptReserved && !partition.gptRecovery && !partition.isHidden;
}

// The same in every host. The table's own number identifies an MBR disk, and starts the UUIDs of its entries.
QString identityOf(const Partition& partition, const BlockDevice& device)
{
    if (partition.isGPT)
        return partition.partGUID;
    const QString table = device.partition->uuid.section(QLatin1Char('-'), 0, 0);
    return table.isEmpty() ? QString() : QStringLiteral("%1@%2").arg(table).arg(partition.startOffset());
}

void setLetters(Disk& disk, const DiskSource& source, const DriveLetters& letters)
{
    for (Partition& partition : disk.partitions) {
        if (!partition.unallocated && wantsLetter(partition))
            partition.driveLetter = letters.letterOf(letterKey(source, partition));
    }
}

// The service names the bus only of some drives.
QString interfaceOf(const BlockDevice& device, const DriveInfo* drive)
{
    if (drive != nullptr && !drive->bus.isEmpty())
        return drive->bus.toUpper();
    return device.device.startsWith(QLatin1String("/dev/nvme")) ? QStringLiteral("NVMe")
                                                                : QStringLiteral("SATA");
}

Disk readDisk(const BlockDevice& device, const DiskSnapshot& snapshot, bool isImage)
{
    Disk disk;
    disk.size = device.size;
    disk.readonly = device.readOnly;
    disk.isUnInitialize = !device.table.has_value();
    disk.isGPT = device.table == QLatin1String("gpt");
    const DriveInfo* drive = snapshot.drive(device.drive);
    disk.diskInterface = isImage ? QStringLiteral("Image") : interfaceOf(device, drive);
    if (drive != nullptr) {
        disk.serialNO = drive->serial;
        disk.isUSB = drive->bus == QLatin1String("usb");
        disk.isRemoveUsb = disk.isUSB && drive->isRemovable;
        disk.isSSD = drive->rotationRate == 0;
    }
    return disk;
}

} // namespace

const BlockDevice* DiskSource::find(const DiskSnapshot& snapshot) const
{
    if (isImage)
        return snapshot.image(file);
    return isReplaced(snapshot) ? nullptr : snapshot.deviceFile(file);
}

bool DiskSource::isReplaced(const DiskSnapshot& snapshot) const
{
    const BlockDevice* device = identity ? snapshot.deviceFile(file) : nullptr;
    return device != nullptr && !isSameDisk(identityOf(snapshot, *device), *identity);
}

QString letterKey(const DiskSource& source, const Partition& partition)
{
    // A copy of an image has the same GUIDs.
    return partition.isGPT ? source.file + partition.partGUID
                           : QStringLiteral("%1@%2").arg(source.file).arg(partition.startOffset());
}

std::vector<Disk> disksOf(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources,
                          DriveLetters& letters, const FactsOf& facts)
{
    std::vector<Disk> disks;
    std::vector<LetterOwner> owners;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const BlockDevice* device = sources[i].find(snapshot);
        if (device == nullptr)
            continue;
        Disk disk = readDisk(*device, snapshot, sources[i].isImage);
        disk.diskIndex = static_cast<int>(i);
        const int sectorSize = facts(*device).sectorSize;
        FreeRegions regions{disk, sectorSize, disk.isUnInitialize ? 0 : usableBegin()};
        for (const BlockDevice* entry : snapshot.partitionsOf(device->path)) {
            regions.before(*entry->partition);
            if (entry->partition->isContainer)
                continue;
            Partition partition = readPartition(*entry, disk, facts(*entry));
            // Without its GUID, the partition could get the letter of another one.
            if (wantsLetter(partition) && isComplete(*device, *entry))
                owners.push_back({letterKey(sources[i], partition), identityOf(partition, *entry)});
            disk.partitions.push_back(std::move(partition));
        }
        regions.last(disk.isUnInitialize ? disk.size : usableEnd(disk));
        settle(disk);
        disks.push_back(std::move(disk));
    }
    letters.assign(owners);
    for (Disk& disk : disks)
        setLetters(disk, sources[static_cast<std::size_t>(disk.diskIndex)], letters);
    return disks;
}

QSet<int> disksWithHealthErrors(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources)
{
    QSet<int> found;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const BlockDevice* device = sources[i].find(snapshot);
        const DriveInfo* drive = device == nullptr ? nullptr : snapshot.drive(device->drive);
        if (drive != nullptr && drive->hasHealthError)
            found.insert(static_cast<int>(i));
    }
    return found;
}

QString inventoryFileSystem(const QString& type, const QString& version)
{
    static const QMap<QString, QString> names = {{QStringLiteral("ntfs"), QStringLiteral("NTFS")},
                                                 {QStringLiteral("exfat"), QStringLiteral("exFAT")},
                                                 {QStringLiteral("ext2"), QStringLiteral("EXT2")},
                                                 {QStringLiteral("ext3"), QStringLiteral("EXT3")},
                                                 {QStringLiteral("ext4"), QStringLiteral("EXT4")}};
    if (type.isEmpty())
        return QStringLiteral("RAW");
    if (type == QLatin1String("vfat"))
        return version == QLatin1String("FAT32") ? version : QStringLiteral("FAT");
    return names.value(type, type.toUpper());
}

QString serviceFileSystem(const QString& name)
{
    static const QMap<QString, QString> types = {
        {QStringLiteral("ntfs"), QStringLiteral("ntfs")},   {QStringLiteral("fat"), QStringLiteral("vfat")},
        {QStringLiteral("fat16"), QStringLiteral("vfat")},  {QStringLiteral("fat32"), QStringLiteral("vfat")},
        {QStringLiteral("exfat"), QStringLiteral("exfat")}, {QStringLiteral("ext2"), QStringLiteral("ext2")},
        {QStringLiteral("ext3"), QStringLiteral("ext3")},   {QStringLiteral("ext4"), QStringLiteral("ext4")}};
    return types.value(name.toLower());
}

bool isComplete(const BlockDevice& disk, const BlockDevice& entry)
{
    // On an MBR disk without a signature, entries have no UUID.
    const bool hasUuid = disk.table != QLatin1String("gpt") || !entry.partition->uuid.isEmpty();
    return hasUuid && !entry.partition->type.isEmpty() && entry.size > 0;
}

bool isSettled(const DiskSnapshot& snapshot, const std::vector<DiskSource>& sources)
{
    return std::all_of(sources.begin(), sources.end(), [&](const DiskSource& source) {
        const BlockDevice* disk = source.find(snapshot);
        if (disk == nullptr)
            return source.isReplaced(snapshot);
        const auto entries = snapshot.partitionsOf(disk->path);
        return std::all_of(entries.begin(), entries.end(),
                           [disk](const BlockDevice* entry) { return isComplete(*disk, *entry); });
    });
}

} // namespace host

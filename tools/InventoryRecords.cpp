#include "tools/InventoryRecords.h"

#include "tools/SizeText.h"

#include <QtCore/QString>
#include <QtCore/QVariantList>

#include <array>
#include <string>

namespace {

const std::array<const char*, 4> kBitLockerStates = {"unencrypted", "encrypted", "encryption unlocked",
                                                     "encryption not unlocked"};
const std::array<const char*, 8> kVolumeTypes = {"TYPE_UNKNOWN", "BASIC",  "SIMPLE", "SPAN",
                                                 "STRIPE",       "MIRROR", "RAID",   "SIMPLE_EX"};

template <std::size_t N> std::string tableText(const std::array<const char*, N>& table, int value)
{
    return value >= 0 && static_cast<std::size_t>(value) < N ? table[static_cast<std::size_t>(value)]
                                                              : std::string();
}

std::string text(const QVariantMap& map, const QString& key)
{
    return map.value(key).toString().toStdString();
}

bool flag(const QVariantMap& map, const QString& key)
{
    return map.value(key).toBool();
}

int number(const QVariantMap& map, const QString& key)
{
    return map.value(key).toInt();
}

qint64 size(const QVariantMap& map, const QString& key)
{
    return map.value(key).toLongLong();
}

std::string sizeText(qint64 value)
{
    return formatSizeText(value, 2, false).toStdString();
}

// The host's numbers are not checked against a range, so these wrap round where they overflow.
qint64 difference(qint64 a, qint64 b)
{
    return static_cast<qint64>(static_cast<quint64>(a) - static_cast<quint64>(b));
}

qint32 product(qint32 a, qint32 b)
{
    return static_cast<qint32>(static_cast<quint32>(a) * static_cast<quint32>(b));
}

bool startsWithLetter(const QString& driveLetter, char letter)
{
    const QString upper = driveLetter.toUpper();
    return !upper.isEmpty() && letter != '\0' && upper.at(0) == QLatin1Char(letter);
}

void fillSizes(PartitionInfo& record, const QVariantMap& partition)
{
    record.rawCapacity = size(partition, QStringLiteral("size"));
    record.displayRawCapacity = sizeText(record.rawCapacity);
    record.dynamicVolumeSize = size(partition, QStringLiteral("volumeSize"));
    record.displayDynamicVolumeSize = sizeText(record.dynamicVolumeSize);
    record.usedSize = size(partition, QStringLiteral("usedSize"));
    record.displayUsedSize = sizeText(record.usedSize);
    record.freeSize = difference(record.rawCapacity, record.usedSize);
    record.displayFreeSize = sizeText(record.freeSize);
}

void fillPlace(PartitionInfo& record, const QVariantMap& partition)
{
    const QVariant sectorSize = partition.value(QStringLiteral("sectorSize"));
    record.startSector = size(partition, QStringLiteral("startSector"));
    record.endSector = size(partition, QStringLiteral("endSector"));
    record.dbrStartSector = size(partition, QStringLiteral("dbrStartSector"));
    record.startingOffset =
        static_cast<qint64>(static_cast<quint64>(record.startSector) * sectorSize.toULongLong());
    record.sectorSize = sectorSize.toInt();
    record.clusterSize = product(number(partition, QStringLiteral("clusterSize")), record.sectorSize);
}

void fillFlags(PartitionInfo& record, const QVariantMap& partition)
{
    record.isUnallocated = flag(partition, QStringLiteral("unallocated"));
    record.isUnformatted = flag(partition, QStringLiteral("isUnformattedType"));
    record.isBitlockerEncrypted = flag(partition, QStringLiteral("isBitLocker"));
    record.isReadOnly = flag(partition, QStringLiteral("readonly"));
    record.isHidden = flag(partition, QStringLiteral("isHidden"));
    record.isActive = flag(partition, QStringLiteral("isActive"));
    record.isCurrentSystemPartition = flag(partition, QStringLiteral("isSystem"));
    record.isBootPartitionContainer = flag(partition, QStringLiteral("isBoot"));
    record.isPrimary = flag(partition, QStringLiteral("isPrimary"));
    record.isLogical = !record.isPrimary;
    record.isGpt = flag(partition, QStringLiteral("isGPT"));
    record.isMbr = !record.isGpt;
    record.isStorageSpace = flag(partition, QStringLiteral("isStorageSpace"));
    record.isDynamic = flag(partition, QStringLiteral("isDynamic"));
    record.isRemovable = flag(partition, QStringLiteral("isRemovable"));
    record.isBadPartition = flag(partition, QStringLiteral("isBad"));
    record.requiresSectorBySector = flag(partition, QStringLiteral("isNeedSectorBySector"));
    record.isOfflineBootPartition = flag(partition, QStringLiteral("isOfflineBoot"));
    record.isLowSpace = flag(partition, QStringLiteral("isLowSpace"));
    record.gptReserved = flag(partition, QStringLiteral("gptReserved"));
    record.gptEfi = flag(partition, QStringLiteral("gptEFI"));
    record.gptRecovery = flag(partition, QStringLiteral("gptRecovery"));
}

void fillFlags(DiskInfo& record, const QVariantMap& disk)
{
    record.isUninitialized = flag(disk, QStringLiteral("isUnInitialize"));
    record.isGpt = flag(disk, QStringLiteral("isGPT"));
    record.isMbr = !record.isGpt;
    record.isStorageSpace = flag(disk, QStringLiteral("isStorageSpace"));
    record.isDynamic = flag(disk, QStringLiteral("isDynamic"));
    record.isReadOnly = flag(disk, QStringLiteral("readonly"));
    record.isOffline = flag(disk, QStringLiteral("isOffline"));
    record.isBadDisk = flag(disk, QStringLiteral("isBad"));
    record.isWriteProtected = flag(disk, QStringLiteral("isProtected"));
    record.isRemovable = flag(disk, QStringLiteral("isRemoveUsb"));
    record.isVhd = flag(disk, QStringLiteral("isVHD"));
    record.isVmd = flag(disk, QStringLiteral("isVMD"));
    record.isVirtualDisk = flag(disk, QStringLiteral("isVirtualDisk"));
    record.isUsb = flag(disk, QStringLiteral("isUSB"));
    record.isSsd = flag(disk, QStringLiteral("isSSD"));
    record.existsBitLocker = number(disk, QStringLiteral("bltState")) != 0;
    record.isLowSpace = flag(disk, QStringLiteral("isLowSpace"));
}

} // namespace

DiskInfo diskRecord(const QVariantMap& disk)
{
    DiskInfo record;
    // The field called label carries the interface text.
    record.diskLabel = text(disk, QStringLiteral("diskInterface"));
    record.diskIndex = number(disk, QStringLiteral("diskIndex"));
    record.partitionCount = disk.value(QStringLiteral("partitions")).toList().size();
    record.totalCapacity = size(disk, QStringLiteral("size"));
    record.displayTotalCapacity = sizeText(record.totalCapacity);
    record.usedSize = size(disk, QStringLiteral("usedSize"));
    record.displayUsedSize = sizeText(record.usedSize);
    record.availableSpace = difference(record.totalCapacity, record.usedSize);
    record.displayAvailableSpace = sizeText(record.availableSpace);
    fillFlags(record, disk);
    record.emptyPartitionCount = number(disk, QStringLiteral("emptyPartitionCount"));
    record.serialNumber = text(disk, QStringLiteral("serialNO"));
    return record;
}

PartitionInfo partitionRecord(const QVariantMap& partition, char systemLetter)
{
    PartitionInfo record;
    const QString driveLetter = partition.value(QStringLiteral("driveLetter")).toString();
    record.diskIndex = number(partition, QStringLiteral("diskIndex"));
    record.partitionIndex = number(partition, QStringLiteral("partitionIndex"));
    fillSizes(record, partition);
    fillPlace(record, partition);
    fillFlags(record, partition);
    record.isCurrentBootPartition = startsWithLetter(driveLetter, systemLetter);
    record.partitionGuid = text(partition, QStringLiteral("partGUID"));
    record.bitlockerState = tableText(kBitLockerStates, number(partition, QStringLiteral("bltState")));
    record.driveLetter = driveLetter.toStdString();
    record.label = text(partition, QStringLiteral("label"));
    record.fileSystemType = text(partition, QStringLiteral("fsString"));
    record.dynamicVolumeType = tableText(kVolumeTypes, number(partition, QStringLiteral("dynamicVolumeType")));
    return record;
}

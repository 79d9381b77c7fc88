#include "inventory/HostMaps.h"

#include "inventory/SizeText.h"

#include <QtCore/QString>
#include <QtCore/QVariantList>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

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

std::string text(const QVariant& value)
{
    return value.toString().toStdString();
}

std::string sizeText(qint64 value)
{
    return ::sizeText(value, 2, false);
}

// The host's numbers are unchecked and can overflow; unsigned arithmetic wraps without undefined behaviour.
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

// Values of a partition map that fill the record only in combination.
struct PartitionRead
{
    PartitionInfo record;
    QString driveLetter;
    quint64 sectorSize = 0;
    int clusterSectors = 0;
    int bitLockerState = 0;
    int volumeType = 0;
};

// A key of a host map and the function that stores its value.
template <class Target> struct KeyRow
{
    QString key;
    void (*read)(Target& target, const QVariant& value);
};

template <class Target> using KeyTable = std::vector<KeyRow<Target>>;

template <class Target> KeyTable<Target> sortedByKey(KeyTable<Target> table)
{
    std::sort(table.begin(), table.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    return table;
}

// Reads the keys of the table from the map. Both are sorted by key, so one pass replaces a search per key.
// Fields of missing keys keep their defaults.
template <class Target> void readKeys(const QVariantMap& map, const KeyTable<Target>& table, Target& target)
{
    auto row = table.begin();
    for (auto entry = map.begin(); entry != map.end() && row != table.end(); ++entry) {
        while (row != table.end() && row->key < entry.key())
            ++row;
        if (row != table.end() && row->key == entry.key())
            row->read(target, entry.value());
    }
}

#define FLAG(key, field)                                                                                     \
    {                                                                                                        \
        QStringLiteral(key), [](auto& r, const QVariant& v) { r.field = v.toBool(); }                        \
    }
#define NUMBER(key, field)                                                                                   \
    {                                                                                                        \
        QStringLiteral(key), [](auto& r, const QVariant& v) { r.field = v.toInt(); }                         \
    }
#define SIZE(key, field)                                                                                     \
    {                                                                                                        \
        QStringLiteral(key), [](auto& r, const QVariant& v) { r.field = v.toLongLong(); }                    \
    }
#define UTF8(key, field)                                                                                     \
    {                                                                                                        \
        QStringLiteral(key), [](auto& r, const QVariant& v) { r.field = text(v); }                           \
    }

const KeyTable<DiskInfo>& diskTable()
{
    static const KeyTable<DiskInfo> table = sortedByKey<DiskInfo>({
        UTF8("diskInterface", diskLabel), // the field named label holds the interface
        NUMBER("diskIndex", diskIndex),
        {QStringLiteral("partitions"),
         [](DiskInfo& r, const QVariant& v) { r.partitionCount = v.toList().size(); }},
        SIZE("size", totalCapacity),
        SIZE("usedSize", usedSize),
        FLAG("isUnInitialize", isUninitialized),
        FLAG("isGPT", isGpt),
        FLAG("isStorageSpace", isStorageSpace),
        FLAG("isDynamic", isDynamic),
        FLAG("readonly", isReadOnly),
        FLAG("isOffline", isOffline),
        FLAG("isBad", isBadDisk),
        FLAG("isProtected", isWriteProtected),
        FLAG("isRemoveUsb", isRemovable),
        FLAG("isVHD", isVhd),
        FLAG("isVMD", isVmd),
        FLAG("isVirtualDisk", isVirtualDisk),
        FLAG("isUSB", isUsb),
        FLAG("isSSD", isSsd),
        {QStringLiteral("bltState"),
         [](DiskInfo& r, const QVariant& v) { r.existsBitLocker = v.toInt() != 0; }},
        FLAG("isLowSpace", isLowSpace),
        NUMBER("emptyPartitionCount", emptyPartitionCount),
        UTF8("serialNO", serialNumber),
    });
    return table;
}

const KeyTable<PartitionRead>& partitionTable()
{
    static const KeyTable<PartitionRead> table = sortedByKey<PartitionRead>({
        FLAG("unallocated", record.isUnallocated),
        NUMBER("diskIndex", record.diskIndex),
        NUMBER("partitionIndex", record.partitionIndex),
        SIZE("size", record.rawCapacity),
        SIZE("volumeSize", record.dynamicVolumeSize),
        SIZE("usedSize", record.usedSize),
        SIZE("startSector", record.startSector),
        SIZE("endSector", record.endSector),
        SIZE("dbrStartSector", record.dbrStartSector),
        {QStringLiteral("sectorSize"),
         [](PartitionRead& r, const QVariant& v) {
             r.record.sectorSize = v.toInt();
             r.sectorSize = v.toULongLong();
         }},
        NUMBER("clusterSize", clusterSectors),
        FLAG("isUnformattedType", record.isUnformatted),
        FLAG("isBitLocker", record.isBitlockerEncrypted),
        FLAG("readonly", record.isReadOnly),
        FLAG("isHidden", record.isHidden),
        FLAG("isActive", record.isActive),
        FLAG("isSystem", record.isCurrentSystemPartition),
        FLAG("isBoot", record.isBootPartitionContainer),
        FLAG("isPrimary", record.isPrimary),
        FLAG("isGPT", record.isGpt),
        FLAG("isStorageSpace", record.isStorageSpace),
        FLAG("isDynamic", record.isDynamic),
        FLAG("isRemovable", record.isRemovable),
        FLAG("isBad", record.isBadPartition),
        FLAG("isNeedSectorBySector", record.requiresSectorBySector),
        FLAG("isOfflineBoot", record.isOfflineBootPartition),
        FLAG("isLowSpace", record.isLowSpace),
        FLAG("gptReserved", record.gptReserved),
        FLAG("gptEFI", record.gptEfi),
        FLAG("gptRecovery", record.gptRecovery),
        UTF8("partGUID", record.partitionGuid),
        NUMBER("bltState", bitLockerState),
        {QStringLiteral("driveLetter"),
         [](PartitionRead& r, const QVariant& v) { r.driveLetter = v.toString(); }},
        UTF8("label", record.label),
        UTF8("fsString", record.fileSystemType),
        NUMBER("dynamicVolumeType", volumeType),
    });
    return table;
}

#undef FLAG
#undef NUMBER
#undef SIZE
#undef UTF8

void fillDerivedSizes(PartitionInfo& record)
{
    record.freeSize = difference(record.rawCapacity, record.usedSize);
    record.displayRawCapacity = sizeText(record.rawCapacity);
    record.displayDynamicVolumeSize = sizeText(record.dynamicVolumeSize);
    record.displayUsedSize = sizeText(record.usedSize);
    record.displayFreeSize = sizeText(record.freeSize);
}

} // namespace

DiskInfo diskRecord(const QVariantMap& disk)
{
    DiskInfo record;
    readKeys(disk, diskTable(), record);
    record.isMbr = !record.isGpt;
    record.availableSpace = difference(record.totalCapacity, record.usedSize);
    record.displayTotalCapacity = sizeText(record.totalCapacity);
    record.displayUsedSize = sizeText(record.usedSize);
    record.displayAvailableSpace = sizeText(record.availableSpace);
    return record;
}

PartitionInfo partitionRecord(const QVariantMap& partition, char systemLetter)
{
    PartitionRead read;
    readKeys(partition, partitionTable(), read);
    PartitionInfo& record = read.record;
    fillDerivedSizes(record);
    record.startingOffset = static_cast<qint64>(static_cast<quint64>(record.startSector) * read.sectorSize);
    record.clusterSize = product(read.clusterSectors, record.sectorSize);
    record.isCurrentBootPartition = startsWithLetter(read.driveLetter, systemLetter);
    record.isLogical = !record.isPrimary;
    record.isMbr = !record.isGpt;
    record.bitlockerState = tableText(kBitLockerStates, read.bitLockerState);
    record.driveLetter = read.driveLetter.toStdString();
    record.dynamicVolumeType = tableText(kVolumeTypes, read.volumeType);
    return read.record;
}

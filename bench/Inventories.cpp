#include "bench/Inventories.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

namespace {

constexpr qlonglong kGiga = 1024LL * 1024 * 1024;

QVariantMap partition(int disk, int index, int count)
{
    QVariantMap map;
    // The maps share their key strings, as in a host that defines each key once.
    static const QStringList flags = {"unallocated",
                                      "isUnformattedType",
                                      "isBitLocker",
                                      "readonly",
                                      "isHidden",
                                      "isActive",
                                      "isSystem",
                                      "isBoot",
                                      "isStorageSpace",
                                      "isDynamic",
                                      "isRemovable",
                                      "isBad",
                                      "isNeedSectorBySector",
                                      "isOfflineBoot",
                                      "isLowSpace",
                                      "gptReserved",
                                      "gptEFI",
                                      "gptRecovery"};
    for (const QString& key : flags)
        map[key] = false;
    map[QStringLiteral("isPrimary")] = true;
    map[QStringLiteral("isGPT")] = true;
    map[QStringLiteral("diskIndex")] = disk;
    map[QStringLiteral("partitionIndex")] = index;
    map[QStringLiteral("size")] = (disk + 1) * 7 * kGiga / 3 + index * kGiga;
    map[QStringLiteral("volumeSize")] = qlonglong(0);
    map[QStringLiteral("usedSize")] = (index + 1) * kGiga / 5;
    map[QStringLiteral("startSector")] = qlonglong(2048) + index * 2097152LL;
    map[QStringLiteral("endSector")] = qlonglong(2048) + (index + 1) * 2097152LL - 1;
    map[QStringLiteral("dbrStartSector")] = qlonglong(2048) + index * 2097152LL;
    map[QStringLiteral("sectorSize")] = 512;
    map[QStringLiteral("clusterSize")] = 8;
    map[QStringLiteral("bltState")] = index % 4;
    map[QStringLiteral("dynamicVolumeType")] = 1;
    map[QStringLiteral("partGUID")] =
        QStringLiteral("{ebd0a0a2-b9e5-4433-87c0-%1}").arg(disk * count + index, 12);
    map[QStringLiteral("driveLetter")] =
        index < 22 ? QString(QLatin1Char(static_cast<char>('D' + index))) : QString();
    map[QStringLiteral("label")] = QStringLiteral("Volume %1").arg(index);
    map[QStringLiteral("fsString")] = QStringLiteral("NTFS");
    return map;
}

QVariantMap disk(int index, int partitions)
{
    QVariantMap map;
    static const QStringList flags = {"isUnInitialize", "isStorageSpace", "isDynamic",     "readonly",
                                      "isOffline",      "isBad",          "isProtected",   "isRemoveUsb",
                                      "isVHD",          "isVMD",          "isVirtualDisk", "isUSB",
                                      "isLowSpace"};
    for (const QString& key : flags)
        map[key] = false;
    map[QStringLiteral("isGPT")] = true;
    map[QStringLiteral("isSSD")] = true;
    map[QStringLiteral("diskInterface")] = QStringLiteral("NVMe");
    map[QStringLiteral("diskIndex")] = index;
    map[QStringLiteral("size")] = 1000 * kGiga;
    map[QStringLiteral("usedSize")] = (index % 900) * kGiga;
    map[QStringLiteral("bltState")] = 0;
    map[QStringLiteral("emptyPartitionCount")] = 0;
    map[QStringLiteral("serialNO")] = QStringLiteral("S%1").arg(index, 15, 10, QLatin1Char('0'));
    QVariantList list;
    for (int i = 0; i < partitions; ++i)
        list.append(partition(index, i, partitions));
    map[QStringLiteral("partitions")] = list;
    return map;
}

} // namespace

QVariantList makeInventory(int disks, int partitions)
{
    QVariantList list;
    for (int i = 0; i < disks; ++i)
        list.append(disk(i, partitions));
    return list;
}

QVariantList makeRoomyInventory(int disks, int partitions)
{
    QVariantList list = makeInventory(disks, partitions);
    for (int i = 0; i < disks; ++i) {
        QVariantMap map = list[i].toMap();
        QVariantList entries = map[QStringLiteral("partitions")].toList();
        for (int k = 0; k < partitions; ++k) {
            QVariantMap entry = entries[k].toMap();
            entry[QStringLiteral("size")] = 100 * kGiga;
            entry[QStringLiteral("usedSize")] = 20 * kGiga;
            entry[QStringLiteral("bltState")] = 0;
            entry[QStringLiteral("driveLetter")] = QString(QLatin1Char(static_cast<char>('C' + k)));
            entries[k] = entry;
        }
        map[QStringLiteral("partitions")] = entries;
        list[i] = map;
    }
    return list;
}

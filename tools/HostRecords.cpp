#include "tools/HostRecords.h"

#include "plugin/AIBridge.h"
#include "plugin/HostCall.h"

#include <QtQml/QQmlApplicationEngine>

#include <algorithm>

namespace {

const QString kDiskIndex = QStringLiteral("diskIndex");
const QString kDriveLetter = QStringLiteral("driveLetter");
const QString kPartitions = QStringLiteral("partitions");

QVariantList partitionsOf(const QVariantMap& disk)
{
    return disk.value(kPartitions).toList();
}

QString firstUpper(const QString& text)
{
    return text.left(1).toUpper();
}

} // namespace

QObject* hostDeviceManager(const AIBridge* bridge)
{
    return bridge == nullptr ? nullptr : contextObject(bridge->engine(), QStringLiteral("deviceMgr"));
}

QVariantList listHostDisks(const AIBridge* bridge, int selector)
{
    return callHost<QVariantList>(hostDeviceManager(bridge), "disks", ConnectionRule::Direct, selector, false)
        .value_or(QVariantList());
}

QVariantMap findPartitionRecord(const AIBridge* bridge, const QString& letter, int selector)
{
    QVariantMap result{{kDiskIndex, -1}, {kDriveLetter, letter.toUpper()}};
    if (bridge == nullptr)
        return result;
    const QString wanted = firstUpper(letter);
    const QVariantList disks = listHostDisks(bridge, selector);
    for (const QVariant& disk : disks) {
        const QVariantList partitions = partitionsOf(disk.toMap());
        const auto found =
            std::find_if(partitions.begin(), partitions.end(), [&wanted](const QVariant& entry) {
                const QString driveLetter = entry.toMap().value(kDriveLetter).toString();
                return !driveLetter.isEmpty() && firstUpper(driveLetter) == wanted;
            });
        // The walk goes on: a match on a later disk overrides this one.
        if (found != partitions.end())
            result = found->toMap();
    }
    return result;
}

QVariantMap findDiskRecord(const AIBridge* bridge, int selector, int diskIndex)
{
    const QVariantList disks = listHostDisks(bridge, selector);
    for (const QVariant& entry : disks) {
        const QVariantMap disk = entry.toMap();
        if (disk.value(kDiskIndex).toInt() == diskIndex)
            return disk;
    }
    return QVariantMap{{kDiskIndex, diskIndex}};
}

QVariantMap findDefaultBootPartition(const AIBridge* bridge, int selector, int diskIndex)
{
    const QVariantList disks = listHostDisks(bridge, selector);
    const auto chosen = std::find_if(disks.begin(), disks.end(), [diskIndex](const QVariant& entry) {
        const QVariantMap disk = entry.toMap();
        return disk.value(kDiskIndex).toInt() == diskIndex ||
               (disk.value(QStringLiteral("isBoot")).toBool() && diskIndex != SelectNone);
    });
    if (chosen != disks.end()) {
        const QVariantList partitions = partitionsOf(chosen->toMap());
        for (const QVariant& entry : partitions) {
            const QVariantMap partition = entry.toMap();
            if (partition.value(QStringLiteral("defBoot")).toBool())
                return partition;
        }
    }
    return QVariantMap{{kDiskIndex, diskIndex}};
}

QVariantMap pickTargetPartition(const AIBridge* bridge, const QVariantMap& diskRecord)
{
    QVariantMap result;
    if (bridge == nullptr)
        return result;
    const QVariantList partitions = partitionsOf(diskRecord);
    for (const QVariant& entry : partitions) {
        const QVariantMap partition = entry.toMap();
        if (result.isEmpty())
            result = partition;
        else if (partition.value(QStringLiteral("unallocated")).toBool())
            return partition;
    }
    return result;
}

bool hostHasDisk(const AIBridge* bridge, int diskIndex, int selector)
{
    const QVariantList disks = listHostDisks(bridge, selector);
    return std::any_of(disks.begin(), disks.end(), [diskIndex](const QVariant& entry) {
        return entry.toMap().value(kDiskIndex).toInt() == diskIndex;
    });
}

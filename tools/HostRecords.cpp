#include "tools/HostRecords.h"

#include "plugin/HostCall.h"
#include "tools/HostPages.h"

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

QObject* hostDeviceManager(const HostPages* pages)
{
    return pages == nullptr ? nullptr : contextObject(pages->engine(), QStringLiteral("deviceMgr"));
}

QVariantList listHostDisks(const HostPages* pages, int selector)
{
    return callHost<QVariantList>(hostDeviceManager(pages), "disks", ConnectionRule::Direct, selector, false)
        .value_or(QVariantList());
}

QVariantMap findPartitionRecord(const HostPages* pages, const QString& letter, int selector)
{
    QVariantMap result{{kDiskIndex, -1}, {kDriveLetter, letter.toUpper()}};
    if (pages == nullptr)
        return result;
    const QString wanted = firstUpper(letter);
    const QVariantList disks = listHostDisks(pages, selector);
    for (const QVariant& disk : disks) {
        const QVariantList partitions = partitionsOf(disk.toMap());
        const auto found =
            std::find_if(partitions.begin(), partitions.end(), [&wanted](const QVariant& entry) {
                const QString driveLetter = entry.toMap().value(kDriveLetter).toString();
                return !driveLetter.isEmpty() && firstUpper(driveLetter) == wanted;
            });
        // The search continues: a match on a later disk replaces this one.
        if (found != partitions.end())
            result = found->toMap();
    }
    return result;
}

QVariantMap findDiskRecord(const HostPages* pages, int selector, int diskIndex)
{
    const QVariantList disks = listHostDisks(pages, selector);
    for (const QVariant& entry : disks) {
        const QVariantMap disk = entry.toMap();
        if (disk.value(kDiskIndex).toInt() == diskIndex)
            return disk;
    }
    return QVariantMap{{kDiskIndex, diskIndex}};
}

QVariantMap findDefaultBootPartition(const HostPages* pages, int selector, int diskIndex)
{
    const QVariantList disks = listHostDisks(pages, selector);
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

QVariantMap pickTargetPartition(const HostPages* pages, const QVariantMap& diskRecord)
{
    QVariantMap result;
    if (pages == nullptr)
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

bool hostHasDisk(const HostPages* pages, int diskIndex, int selector)
{
    const QVariantList disks = listHostDisks(pages, selector);
    return std::any_of(disks.begin(), disks.end(), [diskIndex](const QVariant& entry) {
        return entry.toMap().value(kDiskIndex).toInt() == diskIndex;
    });
}

QVariantMap getBootDisk(const HostPages* pages)
{
    const QVariantList disks =
        callHost<QVariantList>(hostDeviceManager(pages), "bootDisks", ConnectionRule::Direct, 0, true)
            .value_or(QVariantList());
    for (const QVariant& entry : disks) {
        const QVariantMap disk = entry.toMap();
        if (!disk.value(QStringLiteral("isOfflineBoot")).toBool())
            return disk;
    }
    return QVariantMap();
}

bool isBootDiskGpt(const HostPages* pages)
{
    return getBootDisk(pages).value(QStringLiteral("isGPT")).toBool();
}

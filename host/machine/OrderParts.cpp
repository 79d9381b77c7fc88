#include "host/machine/OrderParts.h"

#include <QtCore/QUuid>

#include <algorithm>

namespace host {

QString textOf(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toString();
}

int numberOf(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toInt();
}

qint64 bytesOf(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toLongLong();
}

Partition& target(Machine& machine, const QVariantMap& params)
{
    return *machine.partition(textOf(params, "driveLetter"));
}

const Partition& target(const Machine& machine, const QVariantMap& params)
{
    return *machine.partition(textOf(params, "driveLetter"));
}

Disk& targetDisk(Machine& machine, const QVariantMap& params)
{
    return *machine.disk(numberOf(params, "diskIndex"));
}

const Disk& targetDisk(const Machine& machine, const QVariantMap& params)
{
    return *machine.disk(numberOf(params, "diskIndex"));
}

void giveFileSystem(Partition& partition, const QString& name, const QString& label, int clusterBytes)
{
    const FileSystem& kind = *fileSystem(name);
    const int cluster = clusterBytes > 0 ? clusterBytes : defaultCluster(kind, partition.size);
    partition.fsString = QString::fromLatin1(kind.name);
    partition.label = label;
    partition.usedSize = 0;
    partition.isUnformattedType = false;
    partition.isBitLocker = false;
    partition.bltState = 0;
    partition.isLowSpace = false;
    partition.clusterSize = std::max(1, cluster / partition.sectorSize);
}

void makeRaw(Partition& partition)
{
    partition.fsString = QStringLiteral("RAW");
    partition.label.clear();
    partition.usedSize = 0;
    partition.clusterSize = 0;
    partition.isUnformattedType = true;
    partition.isBitLocker = false;
    partition.bltState = 0;
    partition.isLowSpace = false;
    partition.isOfflineBoot = false;
}

Partition newPartition(const Machine& machine, const Disk& disk, Span span, Kind kind)
{
    Partition created = freeRegion(disk, span.begin, span.end);
    created.unallocated = false;
    created.isPrimary = kind != Kind::Logical;
    created.driveLetter = machine.firstFreeLetter();
    // The GUID is derived from the position, so that the same orders give the same machine.
    static const QUuid space(QStringLiteral("{2f3a5c9e-6f0b-4d5e-9a41-7c1d0b8e5a10}"));
    const QString where =
        QStringLiteral("%1/%2/%3").arg(disk.serialNO).arg(disk.diskIndex).arg(created.startSector);
    if (disk.isGPT)
        created.partGUID = QUuid::createUuidV5(space, where).toString();
    return created;
}

void loseTable(Disk& disk)
{
    disk.isUnInitialize = true;
    disk.isGPT = false;
    disk.isDynamic = false;
    emptyDisk(disk);
}

void writeTable(Disk& disk, bool gpt)
{
    disk.isUnInitialize = false;
    disk.isGPT = gpt;
    disk.isDynamic = false;
    emptyDisk(disk);
}

} // namespace host

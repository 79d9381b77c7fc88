#include "host/machine/Records.h"

#include "host/machine/Fields.h"

#include <algorithm>

namespace host {

namespace {

constexpr qint64 kAlignment = 4096;

QVariantMap partitionRecord(const Partition& partition)
{
    QVariantMap record = toMap(partition, partitionFields());
    record.insert(QStringLiteral("isDiskItem"), false);
    return record;
}

QVariantMap diskRecord(const Disk& disk)
{
    QVariantMap record = toMap(disk, diskFields());
    QVariantList partitions;
    bool isBoot = false;
    for (const Partition& partition : disk.partitions) {
        partitions.append(partitionRecord(partition));
        isBoot = isBoot || partition.isBoot;
    }
    record.insert(QStringLiteral("isDiskItem"), true);
    record.insert(QStringLiteral("isBoot"), isBoot);
    record.insert(QStringLiteral("partitions"), partitions);
    return record;
}

void joinFreeRegions(Disk& disk)
{
    std::vector<Partition> joined;
    for (const Partition& entry : disk.partitions) {
        const bool borders =
            !joined.empty() && joined.back().unallocated && joined.back().endOffset() == entry.startOffset();
        if (entry.unallocated && borders)
            joined.back().size += entry.size;
        else
            joined.push_back(entry);
    }
    disk.partitions = std::move(joined);
}

} // namespace

QVariantList diskRecords(const Machine& machine)
{
    QVariantList records;
    records.reserve(static_cast<int>(machine.disks.size()));
    for (const Disk& disk : machine.disks)
        records.append(diskRecord(disk));
    return records;
}

QVariantList bootDiskRecords(const Machine& machine)
{
    QVariantList records;
    for (const Disk& disk : machine.disks) {
        const bool boots =
            std::any_of(disk.partitions.begin(), disk.partitions.end(),
                        [](const Partition& entry) { return entry.isBoot || entry.isOfflineBoot; });
        if (boots)
            records.append(diskRecord(disk));
    }
    return records;
}

bool isAlignedTo4k(const QVariantMap& disk)
{
    const QVariantList partitions = disk.value(QStringLiteral("partitions")).toList();
    return std::all_of(partitions.begin(), partitions.end(), [](const QVariant& entry) {
        const QVariantMap partition = entry.toMap();
        if (partition.value(QStringLiteral("unallocated")).toBool())
            return true;
        const qint64 start = partition.value(QStringLiteral("startSector")).toLongLong();
        return start * partition.value(QStringLiteral("sectorSize")).toLongLong() % kAlignment == 0;
    });
}

bool isRawPartition(const QVariantMap& partition)
{
    return !partition.value(QStringLiteral("unallocated")).toBool() &&
           partition.value(QStringLiteral("fsString"))
                   .toString()
                   .compare(QLatin1String("RAW"), Qt::CaseInsensitive) == 0;
}

void settle(Disk& disk)
{
    joinFreeRegions(disk);
    disk.usedSize = 0;
    disk.emptyPartitionCount = 0;
    disk.bltState = 0;
    int index = 0;
    for (Partition& entry : disk.partitions) {
        entry.diskIndex = disk.diskIndex;
        entry.partitionIndex = index++;
        entry.endSector = entry.startSector + entry.size / entry.sectorSize - 1;
        disk.usedSize += entry.usedSize;
        disk.bltState = std::max(disk.bltState, entry.bltState);
        if (!entry.unallocated && entry.usedSize == 0)
            ++disk.emptyPartitionCount;
    }
}

} // namespace host

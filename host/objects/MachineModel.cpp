#include "host/objects/MachineModel.h"

#include <QtCore/QLocale>
#include <QtCore/QStringList>

namespace host {

namespace {

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

double share(qint64 used, qint64 size)
{
    return size > 0 ? static_cast<double>(used) / static_cast<double>(size) : 0.0;
}

QString diskText(const Disk& disk)
{
    QStringList parts = {QStringLiteral("Disk %1").arg(disk.diskIndex), disk.diskInterface,
                         sizeText(disk.size),
                         disk.isUnInitialize ? QStringLiteral("no table")
                         : disk.isGPT        ? QStringLiteral("GPT")
                                             : QStringLiteral("MBR")};
    if (disk.isOffline)
        parts.append(QStringLiteral("offline"));
    return parts.join(QStringLiteral("   "));
}

QString partitionText(const Partition& partition)
{
    if (partition.unallocated)
        return QStringLiteral("free space   %1").arg(sizeText(partition.size));
    const QString letter =
        letterOf(partition.driveLetter).isEmpty() ? QStringLiteral("-") : partition.driveLetter;
    return QStringLiteral("%1:  %2   %3   %4")
        .arg(letter, partition.label, partition.fsString, sizeText(partition.size));
}

} // namespace

MachineModel::MachineModel(HostCore& core, QObject* parent) : QAbstractListModel(parent), core_(core)
{
    connect(&core_, &HostCore::machineChanged, this, &MachineModel::refill);
    refill();
}

int MachineModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant MachineModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case TextRole:
        return row.text;
    case DiskRole:
        return row.disk;
    case ShareRole:
        return row.share;
    case FreeRole:
        return row.free;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> MachineModel::roleNames() const
{
    return {
        {TextRole, "rowText"}, {DiskRole, "isDiskRow"}, {ShareRole, "usedShare"}, {FreeRole, "isFreeRow"}};
}

void MachineModel::refill()
{
    const auto machine = core_.machine();
    beginResetModel();
    rows_.clear();
    for (const Disk& disk : machine->disks) {
        rows_.push_back({diskText(disk), true, false, share(disk.usedSize, disk.size)});
        for (const Partition& entry : disk.partitions)
            rows_.push_back(
                {partitionText(entry), false, entry.unallocated, share(entry.usedSize, entry.size)});
    }
    endResetModel();
}

} // namespace host

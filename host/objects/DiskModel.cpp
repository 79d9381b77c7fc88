#include "host/objects/DiskModel.h"

#include "host/objects/DiskText.h"
#include "host/objects/RowChange.h"

#include <QtCore/QCoreApplication>

namespace host {

DiskModel::DiskModel(Backend& backend, QObject* parent) : QAbstractListModel(parent), backend_(backend)
{
    connect(&backend_, &Backend::machineChanged, this, &DiskModel::refresh);
    refresh();
}

DiskModel::Row DiskModel::rowOf(const Disk& disk, bool hasSmartError)
{
    return {disk.diskIndex,
            Text(QT_TRANSLATE_NOOP("Sandbox", "Disk %1"), {QString::number(disk.diskIndex)}).translated(),
            diskKindText(disk),
            sizeText(disk.size),
            diskFlags(disk, hasSmartError),
            hasSmartError || disk.isBad || disk.isOffline,
            searchText(disk)};
}

void DiskModel::refresh()
{
    const auto machine = backend_.machine();
    std::vector<Row> next;
    for (const Disk& disk : machine->disks)
        next.push_back(rowOf(disk, machine->smartErrors.contains(disk.diskIndex)));
    replaceRows(next);
    bool searchChanged = false;
    for (int row = 0; row < count(); ++row) {
        Row& shown = rows_[static_cast<std::size_t>(row)];
        Row& wanted = next[static_cast<std::size_t>(row)];
        wanted.segments = shown.segments;
        const bool same = shown.name == wanted.name && shown.kind == wanted.kind &&
                          shown.size == wanted.size && shown.flags == wanted.flags &&
                          shown.alarm == wanted.alarm;
        searchChanged = searchChanged || shown.search != wanted.search;
        shown = wanted;
        shown.segments->update(machine->disks[static_cast<std::size_t>(row)].partitions);
        if (!same)
            Q_EMIT dataChanged(index(row), index(row));
    }
    if (searchChanged)
        Q_EMIT searchTextsChanged();
    setSummary(*machine);
}

void DiskModel::replaceRows(const std::vector<Row>& next)
{
    const RowChange change =
        findRowChange(rows_, next, [](const Row& a, const Row& b) { return a.diskIndex == b.diskIndex; });
    if (change.removed > 0) {
        beginRemoveRows(QModelIndex(), change.first, change.first + change.removed - 1);
        const auto first = rows_.begin() + change.first;
        for (auto it = first; it != first + change.removed; ++it)
            it->segments->deleteLater();
        rows_.erase(first, first + change.removed);
        endRemoveRows();
    }
    if (change.inserted > 0) {
        beginInsertRows(QModelIndex(), change.first, change.first + change.inserted - 1);
        const auto first = next.begin() + change.first;
        rows_.insert(rows_.begin() + change.first, first, first + change.inserted);
        for (int row = change.first; row < change.first + change.inserted; ++row)
            rows_[static_cast<std::size_t>(row)].segments = new SegmentModel(this);
        endInsertRows();
    }
    if (change.removed > 0 || change.inserted > 0)
        Q_EMIT countChanged();
}

void DiskModel::setSummary(const Machine& machine)
{
    qint64 total = 0;
    for (const Disk& disk : machine.disks)
        total += disk.size;
    const QString summary =
        QCoreApplication::translate("Sandbox", "%n disk(s), %1", nullptr, count()).arg(sizeText(total));
    if (summary == summary_)
        return;
    summary_ = summary;
    Q_EMIT summaryChanged();
}

void DiskModel::setMarks(const WorkMarks& marks)
{
    for (const Row& row : rows_)
        row.segments->setMarks(marks);
}

void DiskModel::setPending(const PendingChanges& changes)
{
    for (const Row& row : rows_)
        row.segments->setPending(changes);
}

QObject* DiskModel::segments(int row) const
{
    return row >= 0 && row < count() ? rows_[static_cast<std::size_t>(row)].segments : nullptr;
}

int DiskModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant DiskModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return row.name;
    case KindRole:
        return row.kind;
    case SizeRole:
        return row.size;
    case FlagsRole:
        return row.flags;
    case AlarmRole:
        return row.alarm;
    case SearchRole:
        return row.search;
    case SegmentsRole:
        return QVariant::fromValue<QObject*>(row.segments);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> DiskModel::roleNames() const
{
    return {{NameRole, "name"},   {KindRole, "kind"},     {SizeRole, "sizeText"},    {FlagsRole, "flags"},
            {AlarmRole, "alarm"}, {SearchRole, "search"}, {SegmentsRole, "segments"}};
}

} // namespace host

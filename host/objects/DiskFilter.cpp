#include "host/objects/DiskFilter.h"

#include "host/objects/DiskModel.h"

#include <algorithm>

namespace host {

DiskFilter::DiskFilter(DiskModel& disks, QObject* parent) : QSortFilterProxyModel(parent), disks_(disks)
{
    setSourceModel(&disks);
    setFilterRole(DiskModel::SearchRole);
    connect(&disks_, &DiskModel::searchTextsChanged, this, [this] { invalidateFilter(); });
    connect(this, &QAbstractItemModel::rowsInserted, this, &DiskFilter::shownChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &DiskFilter::shownChanged);
    // The total changes also if no row of this model does.
    connect(&disks_, &DiskModel::countChanged, this, &DiskFilter::shownChanged);
}

void DiskFilter::setText(const QString& text)
{
    if (text == text_)
        return;
    text_ = text;
    words_ = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    invalidateFilter();
    Q_EMIT textChanged();
}

int DiskFilter::total() const
{
    return disks_.count();
}

QObject* DiskFilter::segments(int row) const
{
    const QModelIndex found = mapToSource(index(row, 0));
    return found.isValid() ? disks_.segments(found.row()) : nullptr;
}

bool DiskFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const QString content = disks_.index(row, 0, parent).data(DiskModel::SearchRole).toString();
    return std::all_of(words_.begin(), words_.end(), [&content](const QString& word) {
        return content.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace host

#include "host/objects/DiskFilter.h"

#include "host/objects/DiskModel.h"

#include <algorithm>

namespace host {

namespace {

// "disk 2" must not find FAT32.
QRegularExpression patternOf(const QString& word)
{
    const QString start = word.front().isDigit() ? QStringLiteral("(?<!\\d)") : QString();
    return QRegularExpression(start + QRegularExpression::escape(word),
                              QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
}

} // namespace

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
    words_.clear();
    for (const QString& word : text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words_.push_back(patternOf(word));
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
    return std::all_of(words_.begin(), words_.end(),
                       [&content](const QRegularExpression& word) { return word.match(content).hasMatch(); });
}

} // namespace host

#include "host/objects/CallHistory.h"

#include "host/objects/CallText.h"

namespace host {

CallHistory::CallHistory(Timeline& timeline)
{
    setSourceModel(&timeline);
    connect(this, &QAbstractItemModel::rowsInserted, this, &CallHistory::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &CallHistory::countChanged);
}

void CallHistory::setDrive(const QString& letter)
{
    if (letter == drive_)
        return;
    drive_ = letter;
    invalidateFilter();
    Q_EMIT driveChanged();
    Q_EMIT countChanged();
}

void CallHistory::show(const QString& letter)
{
    setDrive(letter);
    if (!letter.isEmpty())
        Q_EMIT wanted();
}

bool CallHistory::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (drive_.isEmpty())
        return true;
    const QModelIndex call = sourceModel()->index(row, 0, parent);
    return namesDrive(call.data(Timeline::RawArgumentsRole).toString(), drive_);
}

} // namespace host

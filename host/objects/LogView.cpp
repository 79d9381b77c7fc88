#include "host/objects/LogView.h"

#include <QtCore/QStringList>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

namespace host {

LogView::LogView(QAbstractItemModel& log)
{
    setFilterCaseSensitivity(Qt::CaseInsensitive);
    setSourceModel(&log);
}

void LogView::setFilter(const QString& text)
{
    if (text == filter_)
        return;
    filter_ = text;
    setFilterFixedString(text);
    Q_EMIT filterChanged();
    Q_EMIT selectionChanged();
}

void LogView::select(int row, bool extend)
{
    if (rowCount() == 0)
        return;
    const int wanted = qBound(0, row, rowCount() - 1);
    setSelection(extend && anchor_.isValid() ? anchor_.row() : wanted, wanted);
}

void LogView::selectAll()
{
    if (rowCount() > 0)
        setSelection(0, rowCount() - 1);
}

void LogView::setSelection(int anchor, int current)
{
    anchor_ = index(anchor, 0);
    current_ = index(current, 0);
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {SelectedRole});
    Q_EMIT selectionChanged();
}

bool LogView::isSelected(int row) const
{
    return anchor_.isValid() && current_.isValid() && row >= qMin(anchor_.row(), current_.row()) &&
           row <= qMax(anchor_.row(), current_.row());
}

QString LogView::selectedText() const
{
    QStringList lines;
    for (int row = 0; row < rowCount(); ++row) {
        if (isSelected(row))
            lines.append(index(row, 0).data().toString());
    }
    return lines.join(QLatin1Char('\n'));
}

void LogView::copy() const
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

QVariant LogView::data(const QModelIndex& index, int role) const
{
    return role == SelectedRole ? isSelected(index.row()) : QSortFilterProxyModel::data(index, role);
}

QHash<int, QByteArray> LogView::roleNames() const
{
    return {{Qt::DisplayRole, "display"}, {SelectedRole, "selected"}};
}

} // namespace host

#include "host/objects/Timeline.h"

#include <QtCore/QTime>

namespace host {

namespace {

constexpr int kKeptRows = 500;
const QString kRunning = QStringLiteral("running");
const QString kQueued = QStringLiteral("queued");
const QString kRefused = QStringLiteral("refused");
const QString kAnswered = QStringLiteral("answered");

// The clone tools say no in words of their own; every other text is what a tool found out.
bool isRefusal(const QString& result)
{
    return result == QLatin1String("Task NotValid") || result.startsWith(QLatin1String("It seems that disk"));
}

int nameLength(const QString& text)
{
    int length = 0;
    while (length < text.size() &&
           (text.at(length).isLetterOrNumber() || text.at(length) == QLatin1Char('_')))
        ++length;
    return length;
}

} // namespace

void Timeline::announce(const QString& toolCalls)
{
    const QString text = toolCalls.simplified();
    const int length = nameLength(text);
    append(length > 0 ? text.left(length) : QStringLiteral("call"), text.mid(length).trimmed(), kRunning);
    open_ = true;
}

void Timeline::answer(const QString& result, bool queued)
{
    if (!isCallOpen())
        append(QStringLiteral("call"), QString(), kRunning);
    Row& row = rows_.back();
    row.result = result;
    row.state = queued ? kQueued : isRefusal(result) ? kRefused : kAnswered;
    open_ = false;
    lastChanged();
}

void Timeline::noteOrder(const QString& function, const QString& arguments)
{
    if (!isCallOpen())
        append(function, arguments, kQueued);
}

void Timeline::noteRefusal(const QString& function, const QString& arguments, const QString& reason)
{
    if (!isCallOpen())
        append(function, arguments, kRefused);
    rows_.back().reason = reason;
    lastChanged();
}

void Timeline::append(const QString& tool, const QString& arguments, const QString& state)
{
    if (count() == kKeptRows) {
        beginRemoveRows(QModelIndex(), 0, 0);
        rows_.pop_front();
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), count(), count());
    rows_.push_back({QTime::currentTime().toString(QStringLiteral("hh:mm:ss")), tool, arguments, QString(),
                     QString(), state});
    endInsertRows();
    Q_EMIT countChanged();
}

void Timeline::lastChanged()
{
    Q_EMIT dataChanged(index(count() - 1), index(count() - 1));
}

int Timeline::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant Timeline::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case TimeRole:
        return row.time;
    case ToolRole:
        return row.tool;
    case ArgumentsRole:
        return row.arguments;
    case ResultRole:
        return row.result;
    case ReasonRole:
        return row.reason;
    case StateRole:
        return row.state;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> Timeline::roleNames() const
{
    return {{TimeRole, "time"},     {ToolRole, "tool"},     {ArgumentsRole, "callArguments"},
            {ResultRole, "result"}, {ReasonRole, "reason"}, {StateRole, "callState"}};
}

} // namespace host

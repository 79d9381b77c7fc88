#include "host/objects/Timeline.h"

#include <QtCore/QTime>

namespace host {

namespace {

constexpr int kKeptRows = 500;
const QString kRunning = QStringLiteral("running");
const QString kQueued = QStringLiteral("queued");
const QString kRejected = QStringLiteral("rejected");
const QString kHeld = QStringLiteral("held");
const QString kAnswered = QStringLiteral("answered");
const Text kCall(QT_TRANSLATE_NOOP("Sandbox", "call"));
const Text kGate(QT_TRANSLATE_NOOP("Sandbox", "Gate"));

// The clone tools reject with their own message; every other string is a result.
bool isRejection(const QString& result)
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
    append(length > 0 ? Text(text.left(length)) : kCall, text.mid(length).trimmed(), kRunning);
    open_ = count() - 1;
}

void Timeline::answer(const QString& result, bool queued)
{
    if (!isCallOpen())
        append(kCall, QString(), kRunning);
    const int at = isCallOpen() ? open_ : count() - 1;
    Row& row = rows_[static_cast<std::size_t>(at)];
    row.result = result;
    row.state = queued ? kQueued : isRejection(result) ? kRejected : kAnswered;
    open_ = -1;
    changed(at);
}

void Timeline::recordOrder(const Text& function, const QString& arguments)
{
    if (!isCallOpen())
        append(function, arguments, kQueued);
}

void Timeline::recordRejection(const Text& function, const QString& arguments, const Text& reason)
{
    if (!isCallOpen())
        append(function, arguments, kRejected);
    const int at = isCallOpen() ? open_ : count() - 1;
    rows_[static_cast<std::size_t>(at)].reason = reason;
    changed(at);
}

void Timeline::recordGateRejection(const QString& text)
{
    const bool again = !rows_.empty() && rows_.back().times > 0 && rows_.back().result == text;
    if (!again)
        append(kGate, QString(), kHeld);
    Row& row = rows_.back();
    row.result = text;
    ++row.times;
    changed(count() - 1);
}

void Timeline::append(const Text& tool, const QString& arguments, const QString& state)
{
    if (count() == kKeptRows) {
        beginRemoveRows(QModelIndex(), 0, 0);
        rows_.pop_front();
        endRemoveRows();
        open_ = isCallOpen() ? open_ - 1 : -1;
    }
    beginInsertRows(QModelIndex(), count(), count());
    rows_.push_back({QTime::currentTime().toString(QStringLiteral("hh:mm:ss")), tool, arguments, QString(),
                     Text(), state, 0});
    endInsertRows();
    Q_EMIT countChanged();
}

void Timeline::retranslate()
{
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {ToolRole, ReasonRole});
}

void Timeline::changed(int row)
{
    Q_EMIT dataChanged(index(row), index(row));
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
        return row.tool.translated();
    case ArgumentsRole:
        return row.arguments;
    case ResultRole:
        return row.result;
    case ReasonRole:
        return row.reason.translated();
    case StateRole:
        return row.state;
    case TimesRole:
        return row.times;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> Timeline::roleNames() const
{
    return {{TimeRole, "time"},     {ToolRole, "tool"},     {ArgumentsRole, "callArguments"},
            {ResultRole, "result"}, {ReasonRole, "reason"}, {StateRole, "callState"},
            {TimesRole, "times"}};
}

} // namespace host

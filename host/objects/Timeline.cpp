#include "host/objects/Timeline.h"

#include "host/objects/CallText.h"

#include <QtCore/QTime>

#include <utility>

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

} // namespace

Timeline::Row* Timeline::rowOf(int number)
{
    const int at = rows_.empty() || number == 0 ? -1 : number - rows_.front().number;
    return at < 0 ? nullptr : &rows_[static_cast<std::size_t>(at)];
}

void Timeline::announce(const QString& toolCalls, const Text& client)
{
    const AnnouncedCall call = splitCall(toolCalls);
    open_ = append(call.tool.isEmpty() ? kCall : Text(call.tool), call.arguments, kRunning, client).number;
}

Timeline::Row& Timeline::openOrNew(const Text& tool, const QString& arguments, const QString& state,
                                   const Text& client)
{
    Row* row = rowOf(open_);
    return row != nullptr ? *row : append(tool, arguments, state, client);
}

void Timeline::answer(const QString& result, bool queued)
{
    Row& row = openOrNew(kCall, QString(), kRunning, Text());
    row.result = result;
    row.state = queued ? kQueued : isRejection(result) ? kRejected : kAnswered;
    open_ = 0;
    changed(row);
}

void Timeline::recordOrder(const Text& function, const QString& arguments, const Text& client)
{
    ordered_ = openOrNew(function, arguments, kQueued, client).number;
}

void Timeline::recordRejection(const Text& function, const QString& arguments, const Text& reason)
{
    Row& row = openOrNew(function, arguments, kRejected, Text());
    row.reason = reason;
    changed(row);
}

void Timeline::recordGuide()
{
    guide_ = open_;
}

void Timeline::recordTask(int taskId)
{
    Row* row = rowOf(ordered_ != 0 ? ordered_ : guide_);
    ordered_ = 0;
    if (row != nullptr)
        row->taskId = taskId;
}

void Timeline::endTask(int taskId, const QString& state, const Text& error)
{
    for (Row& row : rows_) {
        if (row.taskId != taskId)
            continue;
        row.taskState = state;
        if (!error.isEmpty())
            row.reason = error;
        changed(row);
    }
}

void Timeline::recordGateRejection(const QString& text)
{
    const bool again = !rows_.empty() && rows_.back().times > 0 && rows_.back().result == text;
    if (!again)
        append(kGate, QString(), kHeld, Text());
    Row& row = rows_.back();
    row.result = text;
    ++row.times;
    changed(row);
}

Timeline::Row& Timeline::append(const Text& tool, const QString& arguments, const QString& state,
                                const Text& client)
{
    if (count() == kKeptRows) {
        beginRemoveRows(QModelIndex(), 0, 0);
        rows_.pop_front();
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), count(), count());
    Row row;
    row.number = ++lastNumber_;
    row.time = QTime::currentTime().toString(QStringLiteral("hh:mm:ss"));
    row.tool = tool;
    row.arguments = arguments;
    row.state = state;
    row.client = client;
    rows_.push_back(std::move(row));
    endInsertRows();
    Q_EMIT countChanged();
    return rows_.back();
}

void Timeline::retranslate()
{
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {ToolRole, ArgumentsRole, ReasonRole, ClientRole});
}

void Timeline::changed(const Row& row)
{
    const QModelIndex at = index(row.number - rows_.front().number);
    Q_EMIT dataChanged(at, at);
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
        return readableArguments(row.arguments);
    case RawArgumentsRole:
        return row.arguments;
    case ClientRole:
        return row.client.translated();
    case ResultRole:
        return row.result;
    case ReasonRole:
        return row.reason.translated();
    case StateRole:
        return row.taskState.isEmpty() ? row.state : row.taskState;
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
            {TimesRole, "times"},   {ClientRole, "client"}, {RawArgumentsRole, "rawArguments"}};
}

} // namespace host

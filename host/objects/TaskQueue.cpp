#include "host/objects/TaskQueue.h"

#include "host/objects/CallText.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

constexpr std::size_t kKeptRows = 200;
// An earlier estimate would be a guess.
constexpr double kLeastProgress = 0.01;
constexpr qint64 kLeastMs = 1000;
// In seconds. A smaller unit is used below this number of the larger one.
constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 3600;
constexpr qint64 kLeastMinutes = 2;
constexpr qint64 kLeastHours = 2;

const QString kWaiting = QStringLiteral("waiting");
const QString kRunning = QStringLiteral("running");
const QString kDone = QStringLiteral("done");
const QString kFailed = QStringLiteral("failed");
const QString kCancelled = QStringLiteral("cancelled");

QString stateOf(Execution::Outcome outcome)
{
    switch (outcome) {
    case Execution::Outcome::Done:
        return kDone;
    case Execution::Outcome::Failed:
        return kFailed;
    case Execution::Outcome::Cancelled:
        break;
    }
    return kCancelled;
}

} // namespace

TaskQueue::TaskQueue(QObject* parent) : QAbstractListModel(parent)
{
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &TaskQueue::startNext);
}

int TaskQueue::add(TaskWork work)
{
    forgetOldest();
    const int row = static_cast<int>(rows_.size());
    beginInsertRows(QModelIndex(), row, row);
    rows_.push_back({++lastId_, std::move(work), kWaiting, 0, Text()});
    endInsertRows();
    Q_EMIT rowsChanged();
    if (!running_ && !timer_.isActive())
        timer_.start(0);
    return lastId_;
}

bool TaskQueue::isAtWork() const
{
    return current() != nullptr;
}

Text TaskQueue::currentTitle() const
{
    const Row* row = current();
    return row == nullptr ? Text() : row->work.title;
}

const TaskQueue::Row* TaskQueue::rowOf(int taskId) const
{
    const QModelIndex at = indexOf(taskId);
    return at.isValid() ? &rows_[static_cast<std::size_t>(at.row())] : nullptr;
}

Text TaskQueue::titleOf(int taskId) const
{
    const Row* row = rowOf(taskId);
    return row == nullptr ? Text() : row->work.title;
}

QString TaskQueue::detailOf(int taskId) const
{
    const Row* row = rowOf(taskId);
    return row == nullptr ? QString() : row->work.detail;
}

Text TaskQueue::errorOf(int taskId) const
{
    const Row* row = rowOf(taskId);
    return row == nullptr ? Text() : row->error;
}

bool TaskQueue::hasEnded(const Row& row)
{
    return row.state != kWaiting && row.state != kRunning;
}

std::vector<int> TaskQueue::openTasks() const
{
    std::vector<int> ids;
    for (const Row& row : rows_) {
        if (!hasEnded(row))
            ids.push_back(row.id);
    }
    return ids;
}

int TaskQueue::runningTask() const
{
    const Row* row = current();
    return row != nullptr && row->state == kRunning ? row->id : 0;
}

int TaskQueue::currentRow() const
{
    const Row* row = current();
    return row == nullptr ? -1 : indexOf(row->id).row();
}

int TaskQueue::endedCount() const
{
    return static_cast<int>(std::count_if(rows_.begin(), rows_.end(), hasEnded));
}

void TaskQueue::retranslate()
{
    if (!rows_.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1),
                           {Qt::DisplayRole, TitleRole, DetailRole, ErrorRole, ClientRole, RemainingRole});
}

void TaskQueue::cancelWaiting()
{
    const std::vector<int> ids = openTasks();
    const int running = runningTask();
    // From the last task to the first, so that none of them starts.
    for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
        if (*id != running)
            cancel(*id);
    }
}

void TaskQueue::cancelAll()
{
    cancelWaiting();
    cancel(runningTask());
}

void TaskQueue::cancel(int taskId)
{
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.id == taskId; });
    if (found == rows_.end())
        return;
    if (found->state == kRunning) {
        running_->cancel();
    } else if (found->state == kWaiting) {
        found->state = kCancelled;
        changed(*found);
        Q_EMIT rowsChanged();
        Q_EMIT taskEnded(taskId, kCancelled, QString());
        settle();
    }
}

int TaskQueue::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant TaskQueue::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return row.work.title.translated();
    case DetailRole:
        return readableArguments(row.work.detail);
    case StateRole:
        return row.state;
    case ProgressRole:
        return row.progress;
    case ErrorRole:
        return row.error.translated();
    case TaskIdRole:
        return row.id;
    case ClientRole:
        return row.work.client.translated();
    case RemainingRole:
        return remainingOf(row);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> TaskQueue::roleNames() const
{
    return {{TitleRole, "title"},       {DetailRole, "detail"},      {StateRole, "state"},
            {ProgressRole, "progress"}, {ErrorRole, "error"},        {TaskIdRole, "taskId"},
            {ClientRole, "client"},     {RemainingRole, "remaining"}};
}

Text remainingText(double progress, qint64 milliseconds)
{
    if (progress < kLeastProgress || progress >= 1 || milliseconds < kLeastMs)
        return Text();
    const qint64 seconds =
        qMax<qint64>(1, qRound64(static_cast<double>(milliseconds) * (1 - progress) / progress / 1000.0));
    if (seconds < kLeastMinutes * kMinute)
        return {QT_TRANSLATE_NOOP("Sandbox", "about %1 s left"), {QString::number(seconds)}};
    if (seconds < kLeastHours * kHour)
        return {QT_TRANSLATE_NOOP("Sandbox", "about %1 min left"),
                {QString::number((seconds + kMinute / 2) / kMinute)}};
    return {QT_TRANSLATE_NOOP("Sandbox", "about %1 h left"),
            {QString::number((seconds + kHour / 2) / kHour)}};
}

QString TaskQueue::remainingOf(const Row& row) const
{
    return row.state == kRunning ? remainingText(row.progress, sinceStart_.elapsed()).translated()
                                 : QString();
}

TaskQueue::Row* TaskQueue::current()
{
    return const_cast<Row*>(std::as_const(*this).current());
}

const TaskQueue::Row* TaskQueue::current() const
{
    const auto found = std::find_if(rows_.begin(), rows_.end(), [](const Row& row) {
        return row.state == kRunning || row.state == kWaiting;
    });
    return found == rows_.end() ? nullptr : &*found;
}

void TaskQueue::startNext()
{
    Row* row = current();
    if (row != nullptr && !running_)
        begin(*row);
}

void TaskQueue::begin(Row& row)
{
    running_ = row.work.execution();
    connect(running_.get(), &Execution::progressed, this, &TaskQueue::showProgress);
    connect(running_.get(), &Execution::ended, this, &TaskQueue::end);
    row.state = kRunning;
    sinceStart_.start();
    changed(row);
    Q_EMIT rowsChanged();
    Q_EMIT taskStarted(row.id, row.work.title.english());
    // A slot of the signal can have cancelled the task.
    if (running_)
        running_->start();
}

void TaskQueue::showProgress()
{
    Row* row = current();
    row->progress = running_->progress();
    changed(*row);
}

void TaskQueue::end(Execution::Outcome outcome, const Text& error)
{
    Row* row = current();
    row->state = stateOf(outcome);
    row->error = error;
    row->progress = running_->progress();
    // The execution is emitting a signal, so it is kept until another one has ended.
    running_->disconnect(this);
    ended_ = std::move(running_);
    const int id = row->id;
    const QString state = row->state;
    changed(*row);
    Q_EMIT rowsChanged();
    Q_EMIT taskEnded(id, state, error.english());
    settle();
}

void TaskQueue::settle()
{
    if (!isAtWork()) {
        timer_.stop();
        Q_EMIT idle();
    } else if (!running_) {
        timer_.start(0);
    }
}

QModelIndex TaskQueue::indexOf(int taskId) const
{
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.id == taskId; });
    return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()));
}

void TaskQueue::changed(const Row& row)
{
    const QModelIndex at = indexOf(row.id);
    Q_EMIT dataChanged(at, at);
}

void TaskQueue::removeRow(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    rows_.erase(rows_.begin() + row);
    endRemoveRows();
}

void TaskQueue::forgetOldest()
{
    while (rows_.size() >= kKeptRows && hasEnded(rows_.front()))
        removeRow(0);
}

void TaskQueue::clear()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (hasEnded(rows_[static_cast<std::size_t>(row)]))
            removeRow(row);
    }
    Q_EMIT rowsChanged();
}

} // namespace host

#include "host/objects/TaskQueue.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

constexpr std::size_t kKeptRows = 200;
// Interval between progress updates.
constexpr int kStepMs = 50;

const QString kWaiting = QStringLiteral("waiting");
const QString kRunning = QStringLiteral("running");
const QString kDone = QStringLiteral("done");
const QString kFailed = QStringLiteral("failed");
const QString kCancelled = QStringLiteral("cancelled");

} // namespace

TaskQueue::TaskQueue(QObject* parent) : QAbstractListModel(parent)
{
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &TaskQueue::step);
}

int TaskQueue::add(TaskWork work)
{
    forgetOldest();
    const int row = static_cast<int>(rows_.size());
    beginInsertRows(QModelIndex(), row, row);
    rows_.push_back({++lastId_, std::move(work), kWaiting, 0, Text()});
    endInsertRows();
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

Text TaskQueue::titleOf(int taskId) const
{
    const QModelIndex at = indexOf(taskId);
    return at.isValid() ? rows_[static_cast<std::size_t>(at.row())].work.title : Text();
}

void TaskQueue::retranslate()
{
    if (!rows_.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::DisplayRole, TitleRole, ErrorRole});
}

void TaskQueue::cancelAll()
{
    // From the last task to the first, so that no waiting task starts.
    for (int id = lastId_; id > 0; --id)
        cancel(id);
}

void TaskQueue::cancel(int taskId)
{
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.id == taskId; });
    if (found == rows_.end())
        return;
    if (found->state == kRunning) {
        const double done = share();
        found->work.interrupt(done);
        end(kCancelled, Text(), done);
    } else if (found->state == kWaiting) {
        found->state = kCancelled;
        changed(*found);
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
        return row.work.detail;
    case StateRole:
        return row.state;
    case ProgressRole:
        return row.progress;
    case ErrorRole:
        return row.error.translated();
    case TaskIdRole:
        return row.id;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> TaskQueue::roleNames() const
{
    return {{TitleRole, "title"},       {DetailRole, "detail"}, {StateRole, "state"},
            {ProgressRole, "progress"}, {ErrorRole, "error"},   {TaskIdRole, "taskId"}};
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

void TaskQueue::begin(Row& row)
{
    running_ = true;
    plan_ = row.work.plan();
    row.state = kRunning;
    sinceStart_.start();
    changed(row);
    Q_EMIT taskStarted(row.id, row.work.title.english());
    if (plan_.rejection)
        return end(kFailed, *plan_.rejection, 0);
    timer_.start(static_cast<int>(std::min<qint64>(kStepMs, plan_.milliseconds)));
}

void TaskQueue::step()
{
    Row* row = current();
    if (row == nullptr)
        return;
    if (!running_)
        return begin(*row);
    const double done = share();
    if (plan_.failsAt.has_value() && done >= *plan_.failsAt) {
        row->work.interrupt(*plan_.failsAt);
        return end(kFailed, plan_.failure, *plan_.failsAt);
    }
    if (done >= 1) {
        const Rejection rejection = row->work.finish();
        return rejection ? end(kFailed, *rejection, done) : end(kDone, Text(), 1);
    }
    row->progress = done;
    changed(*row);
    const qint64 left = plan_.milliseconds - sinceStart_.elapsed();
    timer_.start(static_cast<int>(std::clamp<qint64>(left, 0, kStepMs)));
}

double TaskQueue::share() const
{
    if (plan_.milliseconds <= 0)
        return 1;
    return std::min(1.0,
                    static_cast<double>(sinceStart_.elapsed()) / static_cast<double>(plan_.milliseconds));
}

void TaskQueue::end(const QString& state, const Text& error, double progress)
{
    timer_.stop();
    running_ = false;
    Row* row = current();
    row->state = state;
    row->error = error;
    row->progress = progress;
    const int id = row->id;
    changed(*row);
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

void TaskQueue::forgetOldest()
{
    const auto ended = [](const Row& row) { return row.state != kWaiting && row.state != kRunning; };
    while (rows_.size() >= kKeptRows && ended(rows_.front())) {
        beginRemoveRows(QModelIndex(), 0, 0);
        rows_.pop_front();
        endRemoveRows();
    }
}

} // namespace host

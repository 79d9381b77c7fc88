#pragma once

#include "host/machine/Rejection.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <deque>
#include <functional>
#include <optional>

namespace host {

/// What a task turns out to be when its turn comes.
struct TaskPlan
{
    Rejection rejection;           ///< why the task can no longer run
    qint64 milliseconds = 0;       ///< how long it takes
    std::optional<double> failsAt; ///< the share of the work, 0 to 1, after which it fails
    Text failure;                  ///< the error of that failure
};

/// A piece of work as the queue sees it. All of the functions are called on the queue's thread.
struct TaskWork
{
    Text title;
    QString detail; ///< its parameters, one line
    std::function<TaskPlan()> plan;
    std::function<Rejection()> finish;     ///< carries out the work unless it is rejected
    std::function<void(double)> interrupt; ///< leaves what work leaves that ended at that share
};

/// The host's work: tasks that run one after the other, the newest last. Tasks that have ended stay in the
/// list, of these the latest two hundred.
///
/// Rows have the roles title, detail, state ("waiting", "running", "done", "failed" or "cancelled"), progress
/// (0 to 1), error (empty unless failed) and taskId (counts from 1). Application thread.
class TaskQueue : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole + 1, DetailRole, StateRole, ProgressRole, ErrorRole, TaskIdRole };

    explicit TaskQueue(QObject* parent = nullptr);

    /// Appends a task, which begins no earlier than the event loop's next turn. Gives its id.
    int add(TaskWork work);
    /// True while a task waits or runs.
    bool isAtWork() const;
    /// The title of the task that runs or comes next, empty if there is none.
    Text currentTitle() const;
    /// The title of a task, empty if it is not in the list.
    Text titleOf(int taskId) const;
    /// The row of a task; invalid if it is not in the list.
    QModelIndex indexOf(int taskId) const;
    /// The language has changed: titles and errors read otherwise now.
    void retranslate();
    /// Cancels every task that waits or runs.
    void cancelAll();

    /// Takes a waiting task out of the queue, and ends a running one where it is. Without effect on one that
    /// has ended or never was.
    Q_INVOKABLE void cancel(int taskId);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void taskStarted(int id, QString title);
    /// @p state: "done", "failed" or "cancelled"; @p error in English. The machine is already what the task
    /// has left of it.
    void taskEnded(int id, QString state, QString error);
    /// The last task has ended.
    void idle();

private:
    struct Row
    {
        int id;
        TaskWork work;
        QString state;
        double progress = 0;
        Text error;
    };

    Row* current();
    const Row* current() const;
    void begin(Row& row);
    void step();
    double share() const;
    void end(const QString& state, const Text& error, double progress);
    void settle();
    void changed(const Row& row);
    void forgetOldest();

    std::deque<Row> rows_;
    int lastId_ = 0;
    bool running_ = false;
    TaskPlan plan_;
    QElapsedTimer sinceStart_;
    QTimer timer_;
};

} // namespace host

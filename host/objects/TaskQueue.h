#pragma once

#include "host/machine/Rejection.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <deque>
#include <functional>
#include <optional>

namespace host {

/// Made when a task starts.
struct TaskPlan
{
    Rejection rejection;           ///< why the task can no longer run
    qint64 milliseconds = 0;       ///< duration
    std::optional<double> failsAt; ///< share of the work, 0 to 1, after which it fails
    Text failure;                  ///< the error of that failure
};

/// A task of the queue. All functions are called on the queue's thread.
struct TaskWork
{
    Text title;
    QString detail; ///< parameters, one line
    std::function<TaskPlan()> plan;
    std::function<Rejection()> finish;     ///< carries out the work unless it is rejected
    std::function<void(double)> interrupt; ///< applies the effect of work that ends at that share
};

/// The host's tasks, which run one at a time in order. The latest two hundred ended tasks stay in the list.
///
/// Rows have the roles title, detail, state ("waiting", "running", "done", "failed" or "cancelled"), progress
/// (0 to 1), error (empty unless failed) and taskId (from 1). Application thread.
class TaskQueue : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole + 1, DetailRole, StateRole, ProgressRole, ErrorRole, TaskIdRole };

    explicit TaskQueue(QObject* parent = nullptr);

    /// Appends a task, which starts in a later iteration of the event loop. Returns its id.
    int add(TaskWork work);
    /// True while a task waits or runs.
    bool isAtWork() const;
    /// The title of the running or next task; empty for an empty queue.
    Text currentTitle() const;
    /// The title of a task; empty if it is not in the list.
    Text titleOf(int taskId) const;
    /// The row of a task; invalid if it is not in the list.
    QModelIndex indexOf(int taskId) const;
    /// Called after a change of the language.
    void retranslate();
    /// Cancels every task that waits or runs.
    void cancelAll();

    /// Cancels a waiting task, or ends a running one. No effect on an ended or unknown task.
    Q_INVOKABLE void cancel(int taskId);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void taskStarted(int id, QString title);
    /// @p state: "done", "failed" or "cancelled"; @p error in English. The machine has already been changed.
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

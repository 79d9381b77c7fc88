#pragma once

#include "host/backend/Execution.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace host {

/// A task of the queue.
struct TaskWork
{
    Text title;
    QString detail; ///< parameters, one line
    /// Called when the task starts, on the queue's thread.
    std::function<std::unique_ptr<Execution>()> execution;
    Text client = Text(); ///< the agent's process that sent the order; empty if unknown
};

/// The host's tasks, which run one at a time in order. The latest two hundred ended tasks stay in the list.
///
/// Rows have the roles title, detail (for a person), state ("waiting", "running", "done", "failed" or
/// "cancelled"), progress (0 to 1), error (empty unless failed), taskId (from 1), client, and remaining
/// (the time until the end, estimated from the progress; empty if unknown). Application thread.
class TaskQueue : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int currentRow READ currentRow NOTIFY rowsChanged)
    Q_PROPERTY(int endedCount READ endedCount NOTIFY rowsChanged)

public:
    enum Role {
        TitleRole = Qt::UserRole + 1,
        DetailRole,
        StateRole,
        ProgressRole,
        ErrorRole,
        TaskIdRole,
        ClientRole,
        RemainingRole
    };

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
    /// The parameters of a task as its order gave them.
    QString detailOf(int taskId) const;
    /// Why a task failed; empty unless it failed.
    Text errorOf(int taskId) const;
    /// The ids of the running and the waiting tasks, in order.
    std::vector<int> openTasks() const;
    /// The number of the running task; 0 if no task runs.
    int runningTask() const;
    /// Called after a change of the language.
    void retranslate();
    /// Cancels every task that waits.
    void cancelWaiting();
    /// Cancels every task that waits, and requests the end of the running one.
    void cancelAll();

    /// The row of the running or next task; -1 if no task runs or waits.
    int currentRow() const;
    /// The number of tasks in the list that are done, failed or cancelled.
    int endedCount() const;
    /// Removes the tasks that are done, failed or cancelled from the list.
    Q_INVOKABLE void clear();

    /// Cancels a waiting task, or requests the end of a running one. No effect on an ended or unknown task.
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
    /// currentRow() or endedCount() may have changed.
    void rowsChanged();

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
    void startNext();
    void showProgress();
    void end(Execution::Outcome outcome, const Text& error);
    void settle();
    void changed(const Row& row);
    void forgetOldest();
    void removeRow(int row);
    const Row* rowOf(int taskId) const;
    static bool hasEnded(const Row& row);
    QString remainingOf(const Row& row) const;

    std::deque<Row> rows_;
    int lastId_ = 0;
    std::unique_ptr<Execution> running_;
    std::unique_ptr<Execution> ended_; ///< the last one
    QTimer timer_;
    QElapsedTimer sinceStart_; ///< of the running task
};

/// The time until the end of a task whose @p progress (0 to 1) took @p milliseconds; empty if unknown yet.
Text remainingText(double progress, qint64 milliseconds);

} // namespace host

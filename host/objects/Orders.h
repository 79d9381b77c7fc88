#pragma once

#include "host/backend/Backend.h"
#include "host/objects/ConfirmedExecution.h"
#include "host/objects/HostLog.h"
#include "host/objects/HostStatus.h"
#include "host/objects/PendingChanges.h"
#include "host/objects/TaskQueue.h"
#include "host/objects/Transcript.h"

#include <QtCore/QObject>
#include <QtCore/QVariantMap>

#include <functional>
#include <optional>
#include <utility>

namespace host {

/// Accepts orders, carries them out one after another, and records them. Application thread.
class Orders : public QObject
{
    Q_OBJECT

public:
    /// The arguments must outlive this.
    Orders(Backend& backend, HostStatus& status, Transcript& transcript, HostLog& log);

    void setConsent(Consent consent) { consent_ = consent; }
    /// Called for each order with its function: the agent's process that sent it; empty if unknown.
    void setOrigin(std::function<Text(const QString&)> origin) { origin_ = std::move(origin); }
    /// The question that waits for a person.
    ConfirmationRequest& confirmation() { return confirmation_; }

    /// Whether the partition page accepts an order. A rejection is recorded.
    Rejection rejection(int function, const QVariantMap& params);
    /// The number of the running task if it destroys data or puts data at risk. 0 for any other task, and
    /// while the task waits for a person and has written nothing.
    int destroyingTask() const;
    /// The title of its operation; empty without such a task.
    Text destroyingOperation() const { return runningLoss_ ? runningLoss_->operation : Text(); }
    /// Rejects an order that needs consent which nobody can give.
    Rejection consentRejection(int function, const QVariantMap& params) const;
    /// Queues an order of the partition page, which is carried out after this call has returned.
    void order(int function, const QVariantMap& params);
    /// Queues the work of a guide, which the back end has accepted.
    void add(int function, const QVariantMap& params);
    /// Logs and emits a rejection; @p arguments: from describeParams().
    void recordRejection(const Text& function, const QString& arguments, const Text& reason);

    TaskQueue& tasks() { return tasks_; }
    const TaskQueue& tasks() const { return tasks_; }
    /// The orders that wait or run, in their order.
    const std::vector<OpenOrder>& openOrders() const { return orders_; }
    /// The title of the running task; empty if no task runs.
    const Text& work() const { return work_; }

Q_SIGNALS:
    /// An order has arrived. @p client: the agent's process that sent it; empty if unknown.
    void ordered(host::Text function, QString arguments, host::Text client);
    /// The order that ordered() reported last, or the work of a guide, has become a task.
    void added(int taskId);
    /// See TaskQueue::taskEnded(); @p error is empty unless the task failed.
    void ended(int taskId, QString state, host::Text error);
    void rejected(host::Text function, QString arguments, host::Text reason);
    void workChanged();

private:
    std::unique_ptr<Execution> execution(int function, const QVariantMap& params);
    void recordConfirmation(const QString& action, const Confirmation& question);
    void onTaskStarted(int id);
    void onTaskEnded(int id, const QString& state, const QString& error);
    void showWork();

    Backend& backend_;
    HostStatus& status_;
    Transcript& transcript_;
    HostLog& log_;
    Consent consent_ = Consent::Window;
    std::function<Text(const QString&)> origin_ = [](const QString&) { return Text(); };
    ConfirmationRequest confirmation_; // before the tasks, whose executions use it
    TaskQueue tasks_;
    std::vector<OpenOrder> orders_;       ///< of the tasks that have not ended
    std::optional<DataLoss> runningLoss_; ///< of the running task
    int runningTask_ = 0;                 ///< 0: none
    Text work_;
};

/// An order's parameters on one line, in the form `key=value key=value`; strings are quoted.
QString describeParams(const QVariantMap& params);

} // namespace host

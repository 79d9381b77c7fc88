#include "host/objects/InterruptionRequest.h"

#include <utility>

namespace host {

InterruptionRequest::InterruptionRequest(Orders& orders, HostStatus& status)
    : orders_(orders), status_(status)
{
    connect(&orders_.tasks(), &TaskQueue::taskEnded, this, [this](int id) {
        if (id == taskId_)
            withdraw();
    });
}

bool InterruptionRequest::needsQuestion(int taskId) const
{
    return taskId != 0 && taskId == orders_.destroyingTask() && taskId != confirmedTask_;
}

void InterruptionRequest::cancel(int taskId)
{
    if (needsQuestion(taskId))
        ask(Purpose::Cancel, taskId);
    else
        orders_.tasks().cancel(taskId);
}

void InterruptionRequest::cancelAll()
{
    orders_.tasks().cancelWaiting();
    cancel(orders_.tasks().runningTask());
}

bool InterruptionRequest::mayClose()
{
    const int taskId = orders_.destroyingTask();
    if (status_.isClosing() || !needsQuestion(taskId))
        return true;
    ask(Purpose::Close, taskId);
    return false;
}

void InterruptionRequest::ask(Purpose purpose, int taskId)
{
    purpose_ = purpose;
    taskId_ = taskId;
    Q_EMIT changed();
}

void InterruptionRequest::withdraw()
{
    if (!isOpen())
        return;
    purpose_ = Purpose::None;
    taskId_ = 0;
    Q_EMIT changed();
}

void InterruptionRequest::confirm()
{
    const Purpose purpose = purpose_;
    const int taskId = taskId_;
    if (purpose == Purpose::None)
        return;
    confirmedTask_ = taskId;
    withdraw();
    if (purpose == Purpose::Close)
        Q_EMIT confirmedClose();
    else
        orders_.tasks().cancel(taskId);
}

QString InterruptionRequest::operation() const
{
    return isOpen() ? orders_.destroyingOperation().translated() : QString();
}

QString InterruptionRequest::work() const
{
    const QModelIndex row = orders_.tasks().indexOf(taskId_);
    return isOpen() ? orders_.tasks().data(row, TaskQueue::DetailRole).toString() : QString();
}

} // namespace host

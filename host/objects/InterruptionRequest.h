#pragma once

#include "host/objects/Orders.h"

#include <QtCore/QObject>

namespace host {

/// The question to a person before a task that destroys data is cancelled, or the window is closed during it,
/// for the QML files as `interruption`. An interrupted task leaves partitions incomplete. Each task is asked
/// about once. Application thread.
class InterruptionRequest : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(bool closesWindow READ closesWindow NOTIFY changed)
    Q_PROPERTY(QString operation READ operation NOTIFY changed)
    Q_PROPERTY(QString work READ work NOTIFY changed)

public:
    /// The arguments must outlive this.
    InterruptionRequest(Orders& orders, HostStatus& status);

    /// The Cancel button of a task: cancels it, or opens the question.
    Q_INVOKABLE void cancel(int taskId);
    /// The button that cancels all tasks. Waiting tasks have changed nothing, so they end at once; the
    /// running task ends as by its own Cancel button.
    Q_INVOKABLE void cancelAll();
    /// Whether the window may close now. If not, the question opens.
    bool mayClose();
    /// Called after a change of the language.
    void retranslate() { Q_EMIT changed(); }

    bool isOpen() const { return purpose_ != Purpose::None; }
    bool closesWindow() const { return purpose_ == Purpose::Close; }
    /// The title of the operation and the parameters of the task.
    QString operation() const;
    QString work() const;

    /// The buttons. Confirming cancels the task; on the way to closing, confirmedClose() follows.
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void reject() { withdraw(); }

Q_SIGNALS:
    void changed();
    void confirmedClose();

private:
    enum class Purpose { None, Cancel, Close };

    void ask(Purpose purpose, int taskId);
    void withdraw();
    bool needsQuestion(int taskId) const;

    Orders& orders_;
    HostStatus& status_;
    Purpose purpose_ = Purpose::None;
    int taskId_ = 0;
    int confirmedTask_ = 0; ///< ids count from 1
};

} // namespace host

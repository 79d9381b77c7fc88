#pragma once

#include "host/machine/Rejection.h"
#include "host/udisks/BlockIo.h"

#include <QtCore/QObject>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace host {

/// Runs a function on a thread of its own, because a device can block a read for minutes. Application thread.
class BlockWorker : public QObject
{
    Q_OBJECT

public:
    /// The result is an error.
    using Work = std::function<Rejection(WorkControl&)>;

    explicit BlockWorker(Work work);
    /// Cancels the work and waits for its current block.
    ~BlockWorker() override;

    void start();
    void cancel() { control_.cancelled = true; }
    qint64 doneBytes() const { return control_.doneBytes; }

Q_SIGNALS:
    void progressed();
    /// The thread has ended. Not emitted after the destruction has begun.
    void finished(host::Rejection error);

private:
    WorkControl control_;
    Rejection error_; ///< written by the thread
    std::unique_ptr<QThread> thread_;
    QTimer progressTimer_;
};

} // namespace host

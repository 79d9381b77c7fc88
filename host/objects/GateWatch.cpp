#include "host/objects/GateWatch.h"

#include <QtCore/QThread>
#include <QtCore/QTimer>

namespace host {

namespace {

const QString kOccupied = QStringLiteral(
    "An operation is currently in progress, please wait a few moments and try again. If you need "
    "further assistance, please let me know!");
const QString kBusy = QStringLiteral(
    "One or more tasks are currently in execution, please wait a few moments and try again. If you "
    "need further assistance, please let me know!");

quintptr thisThread()
{
    return reinterpret_cast<quintptr>(QThread::currentThreadId());
}

} // namespace

void GateWatch::recordPopupedRead(bool open) const
{
    record(true, open);
}

void GateWatch::recordBusyRead(bool busy) const
{
    record(false, busy);
}

void GateWatch::record(bool ofPopuped, bool value) const
{
    if (QThread::currentThread() == thread())
        return;
    bool first = false;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        first = reads_.empty();
        reads_.push_back({thisThread(), ofPopuped, value});
    }
    // By name, because a functor would be shared memory between the two threads.
    if (first)
        QMetaObject::invokeMethod(const_cast<GateWatch*>(this), "takeReads", Qt::QueuedConnection);
}

void GateWatch::takeReads()
{
    std::vector<Read> reads;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        reads.swap(reads_);
    }
    for (const Read& read : reads) {
        if (read.ofPopuped)
            onPopupedRead(read.thread, read.value);
        else
            onBusyRead(read.thread, read.value);
    }
}

void GateWatch::onPopupedRead(quintptr thread, bool open)
{
    if (open) {
        Q_EMIT rejected(kOccupied);
        return;
    }
    between_.insert(thread);
    QTimer::singleShot(patience_, this, [this, thread] {
        if (between_.remove(thread))
            Q_EMIT rejected(kOccupied);
    });
}

void GateWatch::onBusyRead(quintptr thread, bool busy)
{
    between_.remove(thread);
    if (busy)
        Q_EMIT rejected(kBusy);
}

} // namespace host

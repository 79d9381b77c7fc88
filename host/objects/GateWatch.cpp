#include "host/objects/GateWatch.h"

#include "plugin/HandOver.h"

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

void GateWatch::notePopupedRead(bool open) const
{
    if (QThread::currentThread() == thread())
        return;
    auto* self = const_cast<GateWatch*>(this);
    handover::give();
    QMetaObject::invokeMethod(
        self, [self, open, reader = thisThread()] { self->onPopupedRead(reader, open); },
        Qt::QueuedConnection);
}

void GateWatch::noteBusyRead(bool busy) const
{
    if (QThread::currentThread() == thread())
        return;
    auto* self = const_cast<GateWatch*>(this);
    handover::give();
    QMetaObject::invokeMethod(
        self, [self, busy, reader = thisThread()] { self->onBusyRead(reader, busy); }, Qt::QueuedConnection);
}

void GateWatch::onPopupedRead(quintptr thread, bool open)
{
    if (open) {
        Q_EMIT refused(kOccupied);
        return;
    }
    between_.insert(thread);
    QTimer::singleShot(patience_, this, [this, thread] {
        if (between_.remove(thread))
            Q_EMIT refused(kOccupied);
    });
}

void GateWatch::onBusyRead(quintptr thread, bool busy)
{
    between_.remove(thread);
    if (busy)
        Q_EMIT refused(kBusy);
}

} // namespace host

#pragma once

#include "host/objects/Transcript.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtCore/QVariantList>

namespace host {

/// Records the calls of the host's objects in the transcript, and measures the time since the last one.
class CallRecorder
{
public:
    /// @p transcript must outlive this. The calling thread is the application thread.
    explicit CallRecorder(Transcript& transcript) : transcript_(transcript) { sinceLastCall_.start(); }

    /// Records a call and returns its result. Any thread.
    template <class Result>
    Result recordCall(const char* object, const char* member, const QVariantList& arguments, Result result)
    {
        transcript_.hostCall(object, member, arguments, QVariant::fromValue(result));
        return result;
    }
    /// Records a call without a result, or with the reason of a rejection. Any thread.
    void recordCall(const char* object, const char* member, const QVariantList& arguments)
    {
        transcript_.hostCall(object, member, arguments);
    }
    void recordRejectedCall(const char* object, const char* member, const QVariantList& arguments,
                            const QString& reason)
    {
        transcript_.hostCall(object, member, arguments, false, reason);
    }
    /// Records a read of a property by another thread and returns its value. Reads by the application thread,
    /// which are the window's, are not recorded. Any thread.
    bool recordRead(const char* object, const char* property, bool value)
    {
        return QThread::currentThread() == application_ ? value : recordCall(object, property, {}, value);
    }

    /// Called by each host method that another thread can wait for. Application thread.
    void restartIdleTimer() { sinceLastCall_.restart(); }
    qint64 millisecondsSinceLastCall() const { return sinceLastCall_.elapsed(); }

private:
    Transcript& transcript_;
    QThread* application_ = QThread::currentThread();
    QElapsedTimer sinceLastCall_;
};

} // namespace host

#pragma once

#include <QtCore/QEvent>
#include <QtCore/QObject>

/// Annotations for the thread sanitizer. Qt comes from packages and is not instrumented, so the sanitizer does not see the
/// synchronisation of a queued call, a thread's start and a thread's end. A thread calls release() before it hands data to
/// another one in such a way, and the other thread calls acquire() afterwards. Both are empty without that sanitizer.
#if defined(__SANITIZE_THREAD__)

#include <sanitizer/tsan_interface.h>

namespace TsanAnnotations {

// Any address that is the same in every module of the process.
inline void* syncObject()
{
    return const_cast<QMetaObject*>(&QObject::staticMetaObject);
}

inline void release()
{
    __tsan_release(syncObject());
}

inline void acquire()
{
    __tsan_acquire(syncObject());
}

} // namespace TsanAnnotations

#else

namespace TsanAnnotations {

inline void release() {}
inline void acquire() {}

} // namespace TsanAnnotations

#endif

namespace TsanAnnotations {

/// Annotates every event of an application, because queued calls arrive as events. @p Application is the application's
/// class; the constructors are inherited.
template <class Application> class Annotated : public Application
{
public:
    using Application::Application;

    bool notify(QObject* receiver, QEvent* event) override
    {
        acquire();
        const bool handled = Application::notify(receiver, event);
        release();
        return handled;
    }
};

} // namespace TsanAnnotations

#pragma once

#include <QtCore/QEvent>
#include <QtCore/QObject>

/// Annotations for the thread sanitizer. Qt comes from packages and is not instrumented, so the sanitizer
/// cannot detect the synchronisation of a queued call, of a thread's start and of a thread's end. The sending
/// thread calls release() before such a hand-over, and the receiving thread calls acquire() after it. Without
/// the sanitizer both functions are empty.
#if defined(__SANITIZE_THREAD__)

#include <sanitizer/tsan_interface.h>

namespace TsanAnnotations {

// The address must be the same in every module of the process.
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

/// Annotates every event of an application, because queued calls arrive as events. @p Application is the
/// class of the application; its constructors are inherited.
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

#pragma once

#include <QtCore/QEvent>
#include <QtCore/QObject>

/// Marks the places where one thread hands over to another by means that the thread sanitizer cannot see: Qt
/// comes from packages and is not instrumented, so a queued call, a thread's start and a thread's end look to
/// it like no order at all. The giving side calls give() before it hands over, the taking side take()
/// afterwards. Without that sanitizer both are nothing.
#if defined(__SANITIZE_THREAD__)

#include <sanitizer/tsan_interface.h>

namespace handover {

// Any address will do that is the same in every module of the process.
inline void* place()
{
    return const_cast<QMetaObject*>(&QObject::staticMetaObject);
}

inline void give()
{
    __tsan_release(place());
}

inline void take()
{
    __tsan_acquire(place());
}

} // namespace handover

#else

namespace handover {

inline void give() {}
inline void take() {}

} // namespace handover

#endif

namespace handover {

/// Puts the marks around every event of an application, whose queued calls come as events. @p Application is
/// the application's class; the constructors are its own.
template <class Application> class Marked : public Application
{
public:
    using Application::Application;

    bool notify(QObject* receiver, QEvent* event) override
    {
        take();
        const bool handled = Application::notify(receiver, event);
        give();
        return handled;
    }
};

} // namespace handover

#include "host/Signals.h"

#include <atomic>
#include <windows.h>

namespace host {

namespace {

std::atomic<Signals*> listener{nullptr};

// Called on a thread of the system. An event that it does not accept ends the process.
BOOL WINAPI onControl(DWORD)
{
    Signals* const target = listener.exchange(nullptr);
    if (target == nullptr)
        return FALSE;
    QMetaObject::invokeMethod(target, &Signals::stopRequested, Qt::QueuedConnection);
    return TRUE;
}

} // namespace

Signals::Signals(QObject* parent) : QObject(parent)
{
    listener = this;
    SetConsoleCtrlHandler(onControl, TRUE);
}

Signals::~Signals()
{
    SetConsoleCtrlHandler(onControl, FALSE);
    listener = nullptr;
}

} // namespace host

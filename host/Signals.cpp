#include "host/Signals.h"

#include <QtCore/QSocketNotifier>

#ifdef Q_OS_WIN
#include <atomic>
#include <windows.h>
#else
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace host {

#ifndef Q_OS_WIN

namespace {

constexpr int kExitAfterSignal = 128;

// The handler may use nothing but plain system calls, so it wakes the event loop through a pair of sockets.
int sockets[2] = {-1, -1};
volatile std::sig_atomic_t caught = 0;

void onSignal(int number)
{
    if (caught != 0)
        _exit(kExitAfterSignal + number);
    caught = 1;
    const char byte = 1;
    // Nothing could be done about a failure here.
    [[maybe_unused]] const auto written = write(sockets[0], &byte, sizeof byte);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace

Signals::Signals(QObject* parent) : QObject(parent)
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0)
        return;
    notifier_ = new QSocketNotifier(sockets[1], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        Q_EMIT stopRequested();
    });
    setHandler(onSignal);
}

Signals::~Signals()
{
    setHandler(SIG_DFL);
}

#else

namespace {

std::atomic<Signals*> listener{nullptr};

// The system calls this on a thread of its own; what it does not take ends the process.
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

#endif

} // namespace host

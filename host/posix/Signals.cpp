#include "host/Signals.h"

#include <QtCore/QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace host {

namespace {

constexpr int kExitAfterSignal = 128;

// A signal handler may only make async-signal-safe calls, so it wakes the event loop through a socket pair.
int sockets[2] = {-1, -1};
volatile std::sig_atomic_t caught = 0;

void onSignal(int number)
{
    if (caught != 0)
        _exit(kExitAfterSignal + number);
    caught = 1;
    const char byte = 1;
    // A failure cannot be handled here.
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

} // namespace host

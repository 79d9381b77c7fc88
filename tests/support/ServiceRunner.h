#pragma once

#include "service/AIFuncallThread.h"
#include "tests/support/FakeNetstat.h"

#include <functional>
#include <memory>

class AIBridge;

/// The listing that leads the port search to @p port: every port from 9090 up to it is busy.
QByteArray listingThatLeadsTo(int port);

/// A port between 9100 and 9999 that is not bound. Other tests, in any process, do not use it during the
/// lifetime of this object.
class ReservedPort
{
public:
    ReservedPort();
    ~ReservedPort();
    ReservedPort(const ReservedPort&) = delete;
    ReservedPort& operator=(const ReservedPort&) = delete;

    int number() const { return number_; }

private:
    int number_ = 0;
    int lock_ = -1;
};

/// Returns another such port at each call, reserved until the process ends.
int unusedPort();

/// The service's real thread on a separate port. The calling thread must be the application thread.
class ServiceRunner
{
public:
    using MakeThread = std::function<std::unique_ptr<AIFuncallThread>(AIBridge*)>;

    /// @p makeThread creates the thread, for tests with a derived class.
    explicit ServiceRunner(AIBridge* bridge, const MakeThread& makeThread = makePlainThread);
    /// Stops the service if it still runs, serving the event loop meanwhile.
    ~ServiceRunner();

    int port() const { return port_->number(); }
    AIFuncallThread& thread() { return *thread_; }
    /// Serves the event loop until the thread has ended; false after @p limitMs.
    bool waitForEnd(int limitMs = 20000);

private:
    static std::unique_ptr<AIFuncallThread> makePlainThread(AIBridge* bridge);

    std::unique_ptr<AIFuncallThread> thread_;
    std::unique_ptr<ReservedPort> port_;
};

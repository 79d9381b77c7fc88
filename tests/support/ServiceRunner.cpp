#include "tests/support/ServiceRunner.h"

#include "plugin/AIBridge.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

QByteArray listingThatLeadsTo(int port)
{
    QByteArray text;
    for (int busy = 9090; busy < port; ++busy)
        text += "TCP 127.0.0.1:" + QByteArray::number(busy) + " 0.0.0.0:0 LISTENING\n";
    return text;
}

namespace {

// A name that one process can hold at a time and that goes with it: a socket in the system's nameless folder.
int lockOf(int port)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = "aibridge-test-port-" + std::to_string(port);
    std::copy(name.begin(), name.end(), address.sun_path + 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    const int lock = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (lock >= 0 && ::bind(lock, reinterpret_cast<const sockaddr*>(&address), size) == 0)
        return lock;
    ::close(lock);
    return -1;
}

} // namespace

ReservedPort::ReservedPort()
{
    // Processes that run side by side begin at different places.
    static int next = static_cast<int>(::getpid() % 128) * 7;
    for (int attempts = 0; attempts < 900; ++attempts) {
        number_ = 9100 + next++ % 900;
        lock_ = lockOf(number_);
        if (lock_ >= 0 && !RawClient::isListening(number_))
            return;
        ::close(lock_);
    }
    throw std::runtime_error("no port is free");
}

ReservedPort::~ReservedPort()
{
    ::close(lock_);
}

int unusedPort()
{
    static std::vector<std::unique_ptr<ReservedPort>> reserved;
    reserved.push_back(std::make_unique<ReservedPort>());
    return reserved.back()->number();
}

ServiceRunner::ServiceRunner(AIBridge* bridge)
{
    // Something else on the machine can take the port before it is bound: then it is another one's turn.
    for (int attempts = 0; attempts < 20; ++attempts) {
        port_ = std::make_unique<ReservedPort>();
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port())));
        thread_ = std::make_unique<AIFuncallThread>(bridge);
        thread_->start();
        pumpUntil([this] { return thread_->isFinished() || RawClient::isListening(port()); });
        if (!thread_->isFinished())
            return;
    }
    throw std::runtime_error("the service does not start");
}

ServiceRunner::~ServiceRunner()
{
    thread_->stopServer();
    if (!waitForEnd())
        qFatal("the service's thread does not end");
}

bool ServiceRunner::waitForEnd(int limitMs)
{
    return pumpUntil([this] { return thread_->isFinished(); }, limitMs) && thread_->wait(limitMs);
}

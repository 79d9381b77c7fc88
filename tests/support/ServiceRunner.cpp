#include "tests/support/ServiceRunner.h"

#include "bridge/AIBridge.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/PortLock.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>

#include <thrift/server/TThreadedServer.h>

#include <atomic>
#include <stdexcept>
#include <vector>

namespace {

// Reports that this thread itself listens. A connection alone does not prove it: a host of a test that runs
// at the same time can take the port between the reservation and the bind.
class AnnouncingThread : public AIFuncallThread
{
public:
    using AIFuncallThread::AIFuncallThread;

    bool isListening() const { return *listens_; }

protected:
    std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<ZORNativePluginIf>& tools, const std::string& address, int port) override
    {
        auto built = AIFuncallThread::makeServer(tools, address, port);
        built->setServerEventHandler(std::make_shared<Handler>(listens_));
        return built;
    }

private:
    using Flag = std::shared_ptr<std::atomic<bool>>;

    // The runtime calls preServe once listen has succeeded.
    struct Handler : apache::thrift::server::TServerEventHandler
    {
        explicit Handler(Flag listens) : listens_(std::move(listens)) {}
        void preServe() override { *listens_ = true; }

        Flag listens_;
    };

    Flag listens_ = std::make_shared<std::atomic<bool>>(false);
};

bool hasOwnListener(const AIFuncallThread& thread, int port)
{
    const auto* announcing = dynamic_cast<const AnnouncingThread*>(&thread);
    return announcing == nullptr ? RawClient::isListening(port) : announcing->isListening();
}

} // namespace

QByteArray listingThatLeadsTo(int port)
{
    QByteArray text;
    for (int busy = 9090; busy < port; ++busy)
        text += "TCP 127.0.0.1:" + QByteArray::number(busy) + " 0.0.0.0:0 LISTENING\n";
    return text;
}

ReservedPort::ReservedPort()
{
    // Concurrent processes start at different ports.
    static int next = static_cast<int>(QCoreApplication::applicationPid() % 128) * 7;
    for (int attempts = 0; attempts < 900; ++attempts) {
        number_ = 9100 + next++ % 900;
        lock_ = lockPort(number_);
        if (lock_ >= 0 && !RawClient::isListening(number_))
            return;
        unlockPort(lock_);
    }
    throw std::runtime_error("no port is free");
}

ReservedPort::~ReservedPort()
{
    unlockPort(lock_);
}

int unusedPort()
{
    static std::vector<std::unique_ptr<ReservedPort>> reserved;
    reserved.push_back(std::make_unique<ReservedPort>());
    return reserved.back()->number();
}

std::unique_ptr<AIFuncallThread> ServiceRunner::makePlainThread(AIBridge* bridge)
{
    return std::make_unique<AnnouncingThread>(bridge, AIBridgeAccess::makeHandler(bridge));
}

ServiceRunner::ServiceRunner(AIBridge* bridge, const MakeThread& makeThread)
{
    // Another process can bind the port first. Then the next port is tried.
    for (int attempts = 0; attempts < 20; ++attempts) {
        port_ = std::make_unique<ReservedPort>();
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port())));
        thread_ = makeThread(bridge);
        thread_->start();
        pumpUntil([this] { return thread_->isFinished() || hasOwnListener(*thread_, port()); });
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

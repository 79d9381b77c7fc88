#include "tests/support/ServiceRunner.h"

#include "plugin/AIBridge.h"
#include "tests/support/RawClient.h"
#include "tests/support/Threads.h"

#include <stdexcept>

#include <unistd.h>

QByteArray listingThatLeadsTo(int port)
{
    QByteArray text;
    for (int busy = 9090; busy < port; ++busy)
        text += "TCP 127.0.0.1:" + QByteArray::number(busy) + " 0.0.0.0:0 LISTENING\n";
    return text;
}

int unusedPort()
{
    // Processes that run side by side begin at different places.
    static int next = static_cast<int>(::getpid() % 128) * 7;
    for (int attempts = 0; attempts < 900; ++attempts) {
        const int port = 9100 + next++ % 900;
        if (!RawClient::isListening(port))
            return port;
    }
    throw std::runtime_error("no port is free");
}

ServiceRunner::ServiceRunner(AIBridge* bridge)
{
    // Another process can take the port between the choice and the bind: then it is another one's turn.
    for (int attempts = 0; attempts < 20; ++attempts) {
        port_ = unusedPort();
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port_)));
        thread_ = std::make_unique<AIFuncallThread>(bridge);
        thread_->start();
        pumpUntil([this] { return thread_->isFinished() || RawClient::isListening(port_); });
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

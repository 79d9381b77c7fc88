#pragma once

#include "ZORNativePlugin.h"
#include "service/ZorHandle.h"

#include <QtCore/QByteArray>

#include <atomic>
#include <memory>
#include <thread>

namespace apache {
namespace thrift {
namespace server {
class TThreadedServer;
}
} // namespace thrift
} // namespace apache

/// A real service on a free port of localhost, as the library builds it, around a handler of the test's
/// choice. It serves from construction to destruction.
class TestService
{
public:
    explicit TestService(const std::shared_ptr<ZORNativePluginIf>& handler);
    ~TestService();
    /// As AGENT_NATIVE_PORT holds it.
    QByteArray port() const { return QByteArray::number(port_); }

private:
    std::unique_ptr<apache::thrift::server::TThreadedServer> server_;
    std::thread thread_;
    int port_ = 0;
};

/// The library's own handler, with the pace of its gate in the test's hand.
class PacedTools : public CZorHandle
{
public:
    /// How many more times the gate finds the last call too recent.
    std::atomic<int> tooSoon{0};

protected:
    qint64 sinceLastCall() const override
    {
        return const_cast<PacedTools*>(this)->tooSoon.fetch_sub(1) > 0 ? 1999 : 2000;
    }
};

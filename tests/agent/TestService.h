#pragma once

#include "ZORNativePlugin.h"
#include "tools/ZorHandle.h"

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

/// A real service on a free port of localhost, with the library's protocol and the given handler. Serves from
/// construction to destruction.
class TestService
{
public:
    explicit TestService(const std::shared_ptr<ZORNativePluginIf>& handler);
    ~TestService();
    /// Value for AGENT_NATIVE_PORT.
    QByteArray port() const { return QByteArray::number(port_); }

private:
    std::unique_ptr<apache::thrift::server::TThreadedServer> server_;
    std::thread thread_;
    int port_ = 0;
};

/// The library's handler. Its gate rejects a given number of calls as too early, instead of by the clock.
class PacedTools : public CZorHandle
{
public:
    void setEarlyCalls(int count) { earlyCalls_ = count; }
    /// The given number minus the calls of PreProcessing since then that read the clock.
    int earlyCalls() const { return earlyCalls_; }

protected:
    qint64 sinceLastCall() const override { return earlyCalls_.fetch_sub(1) > 0 ? 1999 : 2000; }

private:
    mutable std::atomic<int> earlyCalls_{0};
};

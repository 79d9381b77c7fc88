#pragma once

#include "ZORNativePlugin.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>
#include <thrift/transport/TSocket.h>

#include <memory>
#include <thread>

namespace apache {
namespace thrift {
namespace server {
class TThreadedServer;
}
} // namespace thrift
} // namespace apache

/// The service's server around a handler of the test's own, on any free port of "localhost".
class HandlerServer
{
public:
    explicit HandlerServer(const std::shared_ptr<ZORNativePluginIf>& handler);
    /// Stops it and waits for its end.
    ~HandlerServer();

    int port() const;
    apache::thrift::server::TThreadedServer& server() { return *server_; }

private:
    std::unique_ptr<apache::thrift::server::TThreadedServer> server_;
    std::thread thread_;
};

/// A connected client of the generated kind.
class GeneratedClient
{
public:
    explicit GeneratedClient(int port);
    ZORNativePluginClient* operator->() { return &client_; }
    void close() { socket_->close(); }

private:
    std::shared_ptr<apache::thrift::transport::TSocket> socket_;
    std::shared_ptr<apache::thrift::protocol::TProtocol> protocol_;
    ZORNativePluginClient client_;
};

#include "service/ToolServer.h"

#include "service/ServerSocket.h"

#include "ZORNativePlugin.h"

#include <thrift/concurrency/ThreadFactory.h>
#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TBufferTransports.h>

namespace thrift = apache::thrift;

namespace {

constexpr int kClientLimit = 3;

} // namespace

std::unique_ptr<thrift::server::TThreadedServer>
makeToolServer(const std::shared_ptr<ZORNativePluginIf>& handler, const std::string& address, int port)
{
    const std::shared_ptr<thrift::TProcessor> processor = std::make_shared<ZORNativePluginProcessor>(handler);
    const auto socket = std::make_shared<ServerSocket>(address, port);
    const auto transports = std::make_shared<thrift::transport::TBufferedTransportFactory>();
    const auto protocols =
        std::make_shared<thrift::protocol::TBinaryProtocolFactoryT<thrift::transport::TTransport>>();
    const auto threads = std::make_shared<thrift::concurrency::ThreadFactory>(false);
    auto server =
        std::make_unique<thrift::server::TThreadedServer>(processor, socket, transports, protocols, threads);
    server->setConcurrentClientLimit(kClientLimit);
    return server;
}

#include "service/ToolServer.h"

#include "service/ConnectionReport.h"
#include "service/ServerSocket.h"
#include "service/StreamTransport.h"
#include "service/ToolProcessor.h"

#include <thrift/concurrency/ThreadFactory.h>
#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>

#include <utility>

namespace thrift = apache::thrift;

namespace {

constexpr int kClientLimit = 3;

} // namespace

std::unique_ptr<thrift::server::TThreadedServer>
makeToolServer(const std::shared_ptr<ZORNativePluginIf>& handler, const std::string& address, int port,
               std::unique_ptr<AccountCheck> accounts)
{
    const std::shared_ptr<thrift::TProcessor> processor = std::make_shared<ToolProcessor>(handler);
    const auto socket = std::make_shared<ServerSocket>(address, port, std::move(accounts));
    const auto transports = std::make_shared<StreamTransportFactory>();
    const auto protocols = std::make_shared<thrift::protocol::TBinaryProtocolFactoryT<StreamTransport>>();
    const auto threads = std::make_shared<thrift::concurrency::ThreadFactory>(false);
    auto server =
        std::make_unique<thrift::server::TThreadedServer>(processor, socket, transports, protocols, threads);
    server->setConcurrentClientLimit(kClientLimit);
    if (QObject* observer = ConnectionReport::observer())
        server->setServerEventHandler(std::make_shared<ConnectionReport>(observer));
    return server;
}

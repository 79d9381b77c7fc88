#include "bench/WireService.h"

#include "service/ServerSocket.h"

#include <thrift/concurrency/ThreadFactory.h>
#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TBufferTransports.h>
#include <thrift/transport/TSocket.h>

#include <future>

using namespace apache::thrift;

namespace {

struct Listening : server::TServerEventHandler
{
    std::promise<void> ready;
    void preServe() override { ready.set_value(); }
};

} // namespace

struct WireService::Server
{
    std::shared_ptr<ServerSocket> socket = std::make_shared<ServerSocket>("localhost", 0);
    std::shared_ptr<Listening> listening = std::make_shared<Listening>();
    server::TThreadedServer server;

    explicit Server(const std::shared_ptr<ZORNativePluginIf>& handler)
        : server(std::make_shared<ZORNativePluginProcessor>(handler), socket,
                 std::make_shared<transport::TBufferedTransportFactory>(),
                 std::make_shared<protocol::TBinaryProtocolFactoryT<transport::TTransport>>(),
                 std::make_shared<concurrency::ThreadFactory>(false))
    {
        server.setServerEventHandler(listening);
        server.setConcurrentClientLimit(3);
    }
};

WireService::WireService(std::shared_ptr<ZORNativePluginIf> handler)
    : server_(std::make_unique<Server>(handler)), thread_([this] { server_->server.serve(); })
{
    server_->listening->ready.get_future().wait();
    const auto socket = std::make_shared<transport::TSocket>("localhost", server_->socket->getPort());
    const auto transport = std::make_shared<transport::TBufferedTransport>(socket);
    transport->open();
    client_ = std::make_unique<ZORNativePluginClient>(std::make_shared<protocol::TBinaryProtocol>(transport));
}

WireService::~WireService()
{
    client_.reset();
    server_->socket->interrupt();
    server_->socket->close();
    server_->server.stop();
    thread_.join();
}

#include "bench/WireService.h"

#include "service/ToolServer.h"

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
    std::shared_ptr<Listening> listening = std::make_shared<Listening>();
    std::unique_ptr<server::TThreadedServer> server;

    Server(const std::shared_ptr<ZORNativePluginIf>& handler, Kind kind)
        : server(kind == Kind::Ours ? makeToolServer(handler, "localhost", 0) : makeBareServer(handler))
    {
        server->setServerEventHandler(listening);
    }

    transport::TServerSocket& socket() const
    {
        return dynamic_cast<transport::TServerSocket&>(*server->getServerTransport());
    }

    // Only the runtime's own classes.
    static std::unique_ptr<server::TThreadedServer>
    makeBareServer(const std::shared_ptr<ZORNativePluginIf>& handler)
    {
        auto bare = std::make_unique<server::TThreadedServer>(
            std::make_shared<ZORNativePluginProcessor>(handler),
            std::make_shared<transport::TServerSocket>("localhost", 0),
            std::make_shared<transport::TBufferedTransportFactory>(),
            std::make_shared<protocol::TBinaryProtocolFactoryT<transport::TTransport>>(),
            std::make_shared<concurrency::ThreadFactory>(false));
        bare->setConcurrentClientLimit(3);
        return bare;
    }
};

WireService::WireService(std::shared_ptr<ZORNativePluginIf> handler, Kind kind)
    : server_(std::make_unique<Server>(handler, kind)), thread_([this] { server_->server->serve(); })
{
    server_->listening->ready.get_future().wait();
    const auto socket = std::make_shared<transport::TSocket>("localhost", server_->socket().getPort());
    const auto transport = std::make_shared<transport::TBufferedTransport>(socket);
    transport->open();
    client_ = std::make_unique<ZORNativePluginClient>(std::make_shared<protocol::TBinaryProtocol>(transport));
}

WireService::~WireService()
{
    client_.reset();
    server_->socket().interrupt();
    server_->server->stop();
    thread_.join();
}

int WireService::port() const
{
    return server_->socket().getPort();
}

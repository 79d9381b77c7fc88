#include "tests/support/HandlerServer.h"

#include "service/ServerSocket.h"
#include "service/ToolServer.h"

#include <thrift/server/TThreadedServer.h>

#include <future>

namespace transport = apache::thrift::transport;

namespace {

constexpr int kLimitMs = 20000;

class ListenEvent : public apache::thrift::server::TServerEventHandler
{
public:
    void preServe() override { listening.set_value(); }
    std::promise<void> listening;
};

std::shared_ptr<ServerSocket> socketOf(apache::thrift::server::TThreadedServer& server)
{
    return std::dynamic_pointer_cast<ServerSocket>(server.getServerTransport());
}

} // namespace

HandlerServer::HandlerServer(const std::shared_ptr<ZORNativePluginIf>& handler)
    : server_(makeToolServer(handler, "localhost", 0))
{
    const auto event = std::make_shared<ListenEvent>();
    server_->setServerEventHandler(event);
    thread_ = std::thread([this] { server_->serve(); });
    event->listening.get_future().wait();
}

HandlerServer::~HandlerServer()
{
    socketOf(*server_)->interrupt();
    socketOf(*server_)->close();
    thread_.join();
}

int HandlerServer::port() const
{
    return socketOf(*server_)->getPort();
}

GeneratedClient::GeneratedClient(int port)
    : socket_(std::make_shared<transport::TSocket>("localhost", port)),
      protocol_(std::make_shared<apache::thrift::protocol::TBinaryProtocol>(
          std::make_shared<transport::TBufferedTransport>(socket_))),
      client_(protocol_)
{
    socket_->setRecvTimeout(kLimitMs);
    socket_->setSendTimeout(kLimitMs);
    socket_->open();
}

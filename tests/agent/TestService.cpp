#include "tests/agent/TestService.h"

#include "service/ServerSocket.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TBufferTransports.h>

#include <future>

namespace thrift = apache::thrift;

namespace {

class Listening : public thrift::server::TServerEventHandler
{
public:
    void preServe() override { started_.set_value(); }
    void wait() { started_.get_future().wait(); }

private:
    std::promise<void> started_;
};

} // namespace

TestService::TestService(const std::shared_ptr<ZORNativePluginIf>& handler)
{
    const auto socket = std::make_shared<ServerSocket>("localhost", 0);
    const std::shared_ptr<thrift::TProcessor> processor = std::make_shared<ZORNativePluginProcessor>(handler);
    server_ = std::make_unique<thrift::server::TThreadedServer>(
        processor, socket, std::make_shared<thrift::transport::TBufferedTransportFactory>(),
        std::make_shared<thrift::protocol::TBinaryProtocolFactory>());
    const auto listening = std::make_shared<Listening>();
    server_->setServerEventHandler(listening);
    thread_ = std::thread([this] { server_->serve(); });
    listening->wait();
    port_ = socket->getPort();
}

TestService::~TestService()
{
    server_->getServerTransport()->interrupt();
    server_->getServerTransport()->close();
    server_->stop();
    thread_.join();
}

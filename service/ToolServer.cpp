#include "service/ToolServer.h"

#include "plugin/TsanAnnotations.h"
#include "service/ConnectionReport.h"
#include "service/ServerSocket.h"
#include "service/StreamTransport.h"

#include "ZORNativePlugin.h"

#include <thrift/concurrency/ThreadFactory.h>
#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>

#include <exception>
#include <utility>

namespace thrift = apache::thrift;

namespace {

constexpr int kClientLimit = 3;

// The runtime closes the connection for its own exceptions and terminates the process for any other. If
// memory runs out while a call is read, only that connection must be lost.
class ToolProcessor : public ZORNativePluginProcessor
{
public:
    using ZORNativePluginProcessor::ZORNativePluginProcessor;

    bool process(std::shared_ptr<thrift::protocol::TProtocol> in,
                 std::shared_ptr<thrift::protocol::TProtocol> out, void* context) override
    {
        try {
            const bool goesOn = ZORNativePluginProcessor::process(in, out, context);
            TsanAnnotations::release();
            return goesOn;
        } catch (const thrift::TException&) {
            throw;
        } catch (const std::exception& exception) {
            throw thrift::TException(exception.what());
        }
    }

protected:
    bool dispatchCall(thrift::protocol::TProtocol* in, thrift::protocol::TProtocol* out,
                      const std::string& name, int32_t sequence, void* context) override
    {
        const ConnectionReport::Call call(context, name);
        return ZORNativePluginProcessor::dispatchCall(in, out, name, sequence, context);
    }
};

} // namespace

std::unique_ptr<thrift::server::TThreadedServer>
makeToolServer(const std::shared_ptr<ZORNativePluginIf>& handler, const std::string& address, int port,
               std::unique_ptr<AccountCheck> accounts)
{
    const std::shared_ptr<thrift::TProcessor> processor = std::make_shared<ToolProcessor>(handler);
    const auto socket = std::make_shared<ServerSocket>(address, port, std::move(accounts));
    const auto transports = std::make_shared<StreamTransportFactory>();
    const auto protocols =
        std::make_shared<thrift::protocol::TBinaryProtocolFactoryT<thrift::transport::TTransport>>();
    const auto threads = std::make_shared<thrift::concurrency::ThreadFactory>(false);
    auto server =
        std::make_unique<thrift::server::TThreadedServer>(processor, socket, transports, protocols, threads);
    server->setConcurrentClientLimit(kClientLimit);
    if (QObject* observer = ConnectionReport::observer())
        server->setServerEventHandler(std::make_shared<ConnectionReport>(observer));
    return server;
}

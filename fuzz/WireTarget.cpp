// A complete connection: the server's own loop with its transports, protocol and processor, the real tools
// and a host. Only the socket is replaced, by a memory buffer. The replies are compared with those of the
// generated processor with the runtime's own protocol on a second host.
#include "fuzz/Fuzz.h"
#include "fuzz/ToolHost.h"
#include "service/StreamTransport.h"
#include "service/ToolServer.h"
#include "tests/support/Wire.h"

#include <thrift/TOutput.h>
#include <thrift/server/TConnectedClient.h>
#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TVirtualTransport.h>

#include <algorithm>
#include <stdexcept>

namespace server = apache::thrift::server;

namespace {

// A socket whose client has sent all its data. The bytes arrive in pieces, as from a network.
class Pipe : public apache::thrift::transport::TVirtualTransport<Pipe>
{
public:
    Pipe(std::string bytes, std::size_t piece) : bytes_(std::move(bytes)), piece_(piece) {}

    bool isOpen() const override { return true; }
    bool peek() override { return at_ < bytes_.size(); }
    void close() override {}
    std::uint32_t read(std::uint8_t* buffer, std::uint32_t length)
    {
        const std::size_t count = std::min({std::size_t(length), piece_, bytes_.size() - at_});
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at_), count, buffer);
        at_ += count;
        return static_cast<std::uint32_t>(count);
    }
    void write(const std::uint8_t* bytes, std::uint32_t length) { sent.append(bytes, bytes + length); }

    std::string sent;

private:
    std::string bytes_;
    std::size_t piece_;
    std::size_t at_ = 0;
};

class Replies : public wire::Source
{
public:
    explicit Replies(const std::string& bytes) : bytes_(bytes) {}
    bool atEnd() const { return at_ == bytes_.size(); }
    std::string take(std::size_t count) override
    {
        require(count <= bytes_.size() - at_, "a reply is complete");
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }

private:
    const std::string& bytes_;
    std::size_t at_ = 0;
};

struct Service
{
    ToolHost host;
    std::unique_ptr<server::TThreadedServer> tools = makeToolServer(host.tools(), "localhost", 0);

    std::string replies(const std::string& bytes, std::size_t piece)
    {
        const auto pipe = std::make_shared<Pipe>(bytes, piece);
        const auto in = tools->getInputProtocolFactory()->getProtocol(
            tools->getInputTransportFactory()->getTransport(pipe));
        const auto out = tools->getOutputProtocolFactory()->getProtocol(
            tools->getOutputTransportFactory()->getTransport(pipe));
        const auto processor = tools->getProcessorFactory()->getProcessor({in, out, pipe});
        server::TConnectedClient(processor, in, out, nullptr, pipe).run();
        return pipe->sent;
    }
};

struct Reference
{
    ToolHost host;

    std::string replies(const std::string& bytes, std::size_t piece)
    {
        using Protocol = apache::thrift::protocol::TBinaryProtocolT<apache::thrift::transport::TTransport>;
        const auto pipe = std::make_shared<Pipe>(bytes, piece);
        const auto in = std::make_shared<Protocol>(StreamTransportFactory().getTransport(pipe));
        const auto out =
            std::make_shared<Protocol>(std::make_shared<apache::thrift::transport::TBufferedTransport>(pipe));
        const auto processor = std::make_shared<ZORNativePluginProcessor>(host.tools());
        server::TConnectedClient(processor, in, out, nullptr, pipe).run();
        return pipe->sent;
    }
};

} // namespace

void fuzzOne(Bytes input)
{
    static Service* service = [] {
        apache::thrift::GlobalOutput.setOutputFunction([](const char*) {});
        return new Service;
    }();
    static auto* reference = new Reference;
    const unsigned mood = input.byte();
    service->host.setMood(mood);
    reference->host.setMood(mood);
    const std::size_t piece = 1 + input.byte();
    const std::string calls = input.rest();
    const std::string sent = service->replies(calls, piece);
    require(sent == reference->replies(calls, piece), "the replies are those of the generated processor");
    for (Replies replies(sent); !replies.atEnd();) {
        const wire::Message reply = wire::readMessage(replies);
        require(reply.type == wire::Reply || reply.type == wire::Exception,
                "the server sends only replies and exceptions");
    }
    service->host.checkCalls();
    const std::string good =
        wire::strictHeader("Init", 77, wire::Reply) + wire::Fields().boolean(0, true).end();
    require(service->replies(wire::call("Init", 77), 512) == good, "the next connection is served");
}

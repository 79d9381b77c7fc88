#include "bench/peers/RecordedCall.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>
#include <thrift/transport/TSocket.h>
#include <thrift/transport/TVirtualTransport.h>

using namespace apache::thrift;

namespace {

// Above the buffer, so that it sees exactly the bytes that the client consumes.
class Recorder : public transport::TVirtualTransport<Recorder>
{
public:
    Recorder(std::shared_ptr<transport::TTransport> inner, RecordedCall& record)
        : inner_(std::move(inner)), record_(record)
    {
    }

    bool isOpen() const override { return inner_->isOpen(); }
    void close() override { inner_->close(); }
    void flush() override { inner_->flush(); }

    std::uint32_t read(std::uint8_t* bytes, std::uint32_t length)
    {
        const std::uint32_t count = inner_->read(bytes, length);
        record_.reply.append(reinterpret_cast<const char*>(bytes), count);
        return count;
    }

    void write(const std::uint8_t* bytes, std::uint32_t length)
    {
        record_.call.append(reinterpret_cast<const char*>(bytes), length);
        inner_->write(bytes, length);
    }

private:
    const std::shared_ptr<transport::TTransport> inner_;
    RecordedCall& record_;
};

} // namespace

RecordedCall recordCall(int port, Call call)
{
    const auto buffered = std::make_shared<transport::TBufferedTransport>(
        std::make_shared<transport::TSocket>("localhost", port));
    buffered->open();
    RecordedCall record;
    const auto recorder = std::make_shared<Recorder>(buffered, record);
    ZORNativePluginClient client(std::make_shared<protocol::TBinaryProtocol>(recorder));
    record.records = readWith(client, call);
    return record;
}

#include "agent/Client.h"

#include "agent/Codec.h"
#include "agent/Connection.h"
#include "agent/Failure.h"
#include "agent/Text.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

namespace zorcall {

namespace thrift = apache::thrift;

namespace {

// Far above the size of an inventory, and low enough to limit this program's memory.
constexpr std::int32_t kStringLimit = 16 * 1024 * 1024;
constexpr std::int32_t kListLimit = 200000;
constexpr std::uint32_t kBufferSize = 16 * 1024;

} // namespace

Client::Client(const Interface& service, const Address& address)
    : service_(service), limit_(address.limit), connection_(std::make_shared<Connection>())
{
    connection_->connect(address.host, address.port, address.limit);
    const auto buffered = std::make_shared<thrift::transport::TBufferedTransport>(connection_, kBufferSize);
    // The service always writes the strict form, so the first bytes identify a server of another kind.
    protocol_ =
        std::make_shared<thrift::protocol::TBinaryProtocol>(buffered, kStringLimit, kListLimit, true, true);
}

Client::~Client() = default;

Value Client::call(const Method& method, const Value::Parts& arguments)
{
    try {
        connection_->beginCall(limit_);
        writeCall(*protocol_, method, arguments, ++sequence_);
        protocol_->getTransport()->flush();
        return readReply(*protocol_, service_, method, sequence_);
    } catch (const ServiceException&) {
        throw;
    } catch (const Failure&) {
        connection_->close();
        throw;
    } catch (const thrift::TException& exception) {
        connection_->close();
        throw Failure(BadReply, "invalid reply: " + oneLine(exception.what()));
    }
}

Value Client::call(const std::string& method, const Value::Parts& arguments)
{
    return call(requireMethod(service_, method), arguments);
}

} // namespace zorcall

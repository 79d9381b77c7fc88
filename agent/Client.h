#pragma once

#include "agent/Call.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace apache {
namespace thrift {
namespace protocol {
class TProtocol;
}
} // namespace thrift
} // namespace apache

namespace zorcall {

class Connection;

/// Address of the service, and time limit of a call from its first byte to the last of its answer.
struct Address
{
    std::string host;
    std::uint16_t port = 0;
    std::chrono::milliseconds limit{30000};
};

/// One connection to the service. Not thread-safe.
class Client
{
public:
    /// Connects. Throws a Failure.
    Client(const Interface& service, const Address& address);
    ~Client();

    const Interface& service() const { return service_; }
    std::chrono::milliseconds limit() const { return limit_; }

    /// Sends one call and waits for its answer. @p arguments: one per argument of the method; absent ones are
    /// not sent. Throws a Failure, which closes the connection unless it is a ServiceException.
    Value call(const Method& method, const Value::Parts& arguments);
    /// The same by the name of a method.
    Value call(const std::string& method, const Value::Parts& arguments);

private:
    const Interface& service_;
    std::chrono::milliseconds limit_;
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<apache::thrift::protocol::TProtocol> protocol_;
    std::int32_t sequence_ = 0;
};

} // namespace zorcall

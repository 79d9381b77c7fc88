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

/// Where the service is, and how long one call may take from its first byte to the last of its answer.
struct Address
{
    std::string host;
    std::uint16_t port = 0;
    std::chrono::milliseconds limit{30000};
};

/// One connection to the service. One thread.
class Client
{
public:
    /// Connects. Throws a Failure.
    Client(const Interface& service, const Address& address);
    ~Client();

    const Interface& service() const { return service_; }
    std::chrono::milliseconds limit() const { return limit_; }

    /// Sends one call and waits for its answer. Throws a Failure; after any but a ServiceException the
    /// connection is closed. @p arguments: one for each of the method's, absent ones are left off.
    Value call(const Method& method, const Value::Parts& arguments);
    /// The same for a method of the interface by its name, with all its arguments.
    Value call(const std::string& method, const Value::Parts& arguments);

private:
    const Interface& service_;
    std::chrono::milliseconds limit_;
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<apache::thrift::protocol::TProtocol> protocol_;
    std::int32_t sequence_ = 0;
};

} // namespace zorcall

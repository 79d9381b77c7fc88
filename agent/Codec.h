#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <thrift/protocol/TProtocol.h>

#include <cstdint>

namespace zorcall {

/// Writes a call message without flushing it. Absent arguments are not sent.
void writeCall(apache::thrift::protocol::TProtocol& protocol, const Method& method,
               const Value::Parts& arguments, std::int32_t sequence);

/// Reads a reply message and skips fields that are unknown or of another type. Throws ServiceException for an
/// exception message, a Failure with code BadReply for a reply to another call or without a result, and the
/// protocol's exceptions for malformed bytes.
Value readReply(apache::thrift::protocol::TProtocol& protocol, const Interface& service, const Method& method,
                std::int32_t sequence);

} // namespace zorcall

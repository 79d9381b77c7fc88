#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <thrift/protocol/TProtocol.h>

#include <cstdint>

namespace zorcall {

/// Writes a whole call message, without flushing it. Absent arguments are left off.
void writeCall(apache::thrift::protocol::TProtocol& protocol, const Method& method,
               const Value::Parts& arguments, std::int32_t sequence);

/// Reads a whole reply message. Throws ServiceException for an exception message, a Failure with code
/// BadReply for a reply that is not one to this call or holds no result of its type, and what the protocol
/// throws for bytes that are not of it. Fields that the description doesn't know, or knows with another type,
/// are skipped.
Value readReply(apache::thrift::protocol::TProtocol& protocol, const Interface& service, const Method& method,
                std::int32_t sequence);

} // namespace zorcall

#pragma once

#include "service/AccountCheck.h"

#include <memory>
#include <string>

class ZORNativePluginIf;

namespace apache {
namespace thrift {
namespace server {
class TThreadedServer;
}
} // namespace thrift
} // namespace apache

/// Creates the server of the tools: binary protocol, buffered transport, at most three connections at a time.
/// It is not bound yet; serve() binds it and throws if that fails.
///
/// @p address is a host name or a numeric address; @p port 0 selects any free port. @p accounts is null if
/// every account may call the tools.
std::unique_ptr<apache::thrift::server::TThreadedServer>
makeToolServer(const std::shared_ptr<ZORNativePluginIf>& handler, const std::string& address, int port,
               std::unique_ptr<AccountCheck> accounts = std::make_unique<AccountCheck>());

#pragma once

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

/// The server of the tools as the agent meets it: binary protocol, buffered transport, at most three
/// connections at a time. It neither binds nor serves yet; serve() does both and throws if the address cannot
/// be bound.
///
/// @p address is a host name or a number; port 0 takes any free one.
std::unique_ptr<apache::thrift::server::TThreadedServer>
makeToolServer(const std::shared_ptr<ZORNativePluginIf>& handler, const std::string& address, int port);

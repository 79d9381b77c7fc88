#pragma once

namespace host {

/// Whether a socket of this process listens on the TCP port. Another program may have taken the port between
/// the service's search and its bind, and would accept a connection as well. On Windows sockets cannot be
/// enumerated this way, so every port above 0 counts.
bool isListeningHere(int port);

} // namespace host

#pragma once

#include "agent/Client.h"
#include "agent/Display.h"

#include <chrono>
#include <iosfwd>

namespace zorcall {

/// Polls the inventory and writes each difference on one line, until a call fails. Opens a new connection for
/// each poll, because the service serves only three clients at a time. Throws a Failure.
[[noreturn]] void watchInventory(const Interface& service, const Address& address,
                                 std::chrono::milliseconds interval, const Display& display,
                                 std::ostream& out);

} // namespace zorcall

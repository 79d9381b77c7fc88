#pragma once

#include "agent/Client.h"
#include "agent/Display.h"

#include <chrono>
#include <iosfwd>

namespace zorcall {

/// Reads the inventory again and again and writes each difference on one line, until a call fails. Each
/// reading has a connection of its own, because the service serves only three clients at a time. Throws a
/// Failure.
[[noreturn]] void watchInventory(const Interface& service, const Address& address,
                                 std::chrono::milliseconds interval, const Display& display,
                                 std::ostream& out);

} // namespace zorcall

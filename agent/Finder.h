#pragma once

#include "agent/Client.h"
#include "agent/Ports.h"

#include <chrono>
#include <string>
#include <vector>

namespace zorcall {

/// A listener on this computer.
struct Listener
{
    std::string host; ///< numeric address
    std::uint16_t port = 0;
};

struct Found
{
    std::vector<Listener> services;     ///< answered Init
    std::vector<Listener> unresponsive; ///< accepted the connection but sent nothing within the time limit
};

/// Time for the answer to Init. Another program may accept the connection and never answer.
constexpr std::chrono::milliseconds kProbeLimit{2000};

/// Calls Init on all ports of this computer at the same time. Requires a QCoreApplication.
Found searchServices(const Interface& service, const Ports& ports,
                     std::chrono::milliseconds limit = kProbeLimit);

/// Returns the only service. Throws a Failure with code NoConnection if no service answered, and with code
/// Usage if several did.
///
/// An unresponsive listener can be a service that is serving three other clients. With @p sendsOrder it
/// counts as a second service, because an order to the wrong machine can destroy data.
Listener onlyService(const Found& found, const Ports& ports, bool sendsOrder);

} // namespace zorcall

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
    std::vector<Listener> services; ///< answered Init
    std::vector<Listener> silent;   ///< accepted the connection but sent nothing within the time limit
};

/// Time for the answer to Init. Another program may accept the connection and never answer.
constexpr std::chrono::milliseconds kProbeLimit{2000};

/// Calls Init on all ports of this computer at the same time. Requires a QCoreApplication.
Found searchServices(const Interface& service, const Ports& ports,
                     std::chrono::milliseconds limit = kProbeLimit);

/// The only service. Throws a Failure with code NoConnection if there is none, and with code Usage if there
/// are several.
///
/// A silent listener can be a service that serves three other clients. With @p certain, it is a second one,
/// because an order for another machine can destroy data.
Listener onlyService(const Found& found, const Ports& ports, bool certain);

} // namespace zorcall

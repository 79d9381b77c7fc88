#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <string>
#include <vector>

namespace zorcall {

/// A range of ports, both ends included.
struct PortRange
{
    std::uint16_t first = 0;
    std::uint16_t last = 0;
};

/// The ports on which zorcall searches for the service, if the user selects none.
using Ports = std::vector<PortRange>;

/// Parses ports and ranges of ports, "9090-9153,12000"; at most 400 ports. An empty string gives the
/// default.
/// @p source names the setting in the Failure with code Usage.
Ports readPorts(const QString& text, const std::string& source);

/// Parses one port. Throws as readPorts does.
std::uint16_t readPort(const QString& text, const std::string& source);

/// "9090 to 9153, 12000"
std::string portText(const Ports& ports);

} // namespace zorcall

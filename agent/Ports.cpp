#include "agent/Ports.h"

#include "agent/Failure.h"
#include "agent/Text.h"

#include <QtCore/QStringList>

#include <optional>

namespace zorcall {

namespace {

// The service takes the first free port from 9090 on. The gateway searches the same ports.
constexpr PortRange kDefault{9090, 9153};
// Each port costs up to two sockets at the same time. Many systems limit a process to 1024 descriptors.
constexpr int kMaxPorts = 400;

std::optional<std::uint16_t> portNumber(const QString& text)
{
    bool isNumber = false;
    const uint port = text.toUInt(&isNumber);
    if (!isNumber || port == 0 || port > 65535)
        return std::nullopt;
    return static_cast<std::uint16_t>(port);
}

std::optional<PortRange> portRange(const QString& text)
{
    const QStringList ends = text.split(QLatin1Char('-'));
    const std::optional<std::uint16_t> first = portNumber(ends.first());
    const std::optional<std::uint16_t> last = portNumber(ends.last());
    if (ends.size() > 2 || !first || !last || *first > *last)
        return std::nullopt;
    return PortRange{*first, *last};
}

} // namespace

std::uint16_t readPort(const QString& text, const std::string& source)
{
    const std::optional<std::uint16_t> port = portNumber(text);
    if (!port)
        throw Failure(Usage, source + " is '" + text.toStdString() + "', not a valid port (1 to 65535)");
    return *port;
}

Ports readPorts(const QString& text, const std::string& source)
{
    if (text.isEmpty())
        return {kDefault};
    Ports ports;
    int count = 0;
    for (const QString& part : text.split(QLatin1Char(','))) {
        const std::optional<PortRange> range = portRange(part);
        if (!range)
            throw Failure(Usage, source + " is '" + text.toStdString() +
                                     "', not a list of ports as in 9090-9153,12000");
        ports.push_back(*range);
        count += range->last - range->first + 1;
    }
    if (count > kMaxPorts)
        throw Failure(Usage, source + " contains more than " + std::to_string(kMaxPorts) + " ports");
    return ports;
}

std::string portText(const Ports& ports)
{
    std::vector<std::string> words;
    for (const PortRange& range : ports) {
        const std::string first = std::to_string(range.first);
        words.push_back(range.first == range.last ? first : first + " to " + std::to_string(range.last));
    }
    return join(words, ", ");
}

} // namespace zorcall

#include "service/PortSearch.h"

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace {

constexpr int kFirstPort = 9090;
constexpr int kLastPort = 65534;

// For each port number, true if the listing contains ":<number>" anywhere. The plain text search is
// intentional: a busy port also excludes every number that is a prefix of its own. One pass, because the
// listing of a busy machine is long.
std::vector<bool> excludedPorts(const QByteArray& listing)
{
    std::vector<bool> excluded(kLastPort + 1, false);
    for (int at = listing.indexOf(':'); at >= 0; at = listing.indexOf(':', at + 1)) {
        int number = 0;
        for (int i = at + 1; i < listing.size() && listing[i] >= '0' && listing[i] <= '9'; ++i) {
            number = number * 10 + (listing[i] - '0');
            if (number == 0 || number > kLastPort)
                break;
            excluded[static_cast<std::size_t>(number)] = true;
        }
    }
    return excluded;
}

int firstFreePort(const std::vector<bool>& excluded, int from)
{
    for (int port = from; port <= kLastPort; ++port) {
        if (!excluded[static_cast<std::size_t>(port)])
            return port;
    }
    return 0;
}

} // namespace

QByteArray busyPortListing(int timeoutMs)
{
    QProcess netstat;
    netstat.start(QStringLiteral("netstat"), {QStringLiteral("-ano")});
    netstat.waitForFinished(timeoutMs);
    return netstat.readAllStandardOutput();
}

void pickFreePorts(const QByteArray& listing, int* nativePort, int* chatPort)
{
    const std::vector<bool> excluded = excludedPorts(listing);
    *nativePort = firstFreePort(excluded, kFirstPort);
    // If the first search found no port, the second search starts at 1.
    *chatPort = firstFreePort(excluded, *nativePort + 1);
}

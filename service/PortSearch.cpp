#include "service/PortSearch.h"

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace {

constexpr int kFirstPort = 9090;
constexpr int kLastPort = 65534;

// A plain search over the whole text on purpose: a busy port also hides each port whose digits begin its own.
int firstFreePort(const QByteArray& listing, int from)
{
    for (int port = from; port <= kLastPort; ++port) {
        if (!listing.contains((QLatin1Char(':') + QString::number(port)).toLocal8Bit()))
            return port;
    }
    return 0;
}

} // namespace

QByteArray busyPortListing(int limitMs)
{
    QProcess netstat;
    netstat.start(QStringLiteral("netstat"), {QStringLiteral("-ano")});
    netstat.waitForFinished(limitMs);
    return netstat.readAllStandardOutput();
}

void pickFreePorts(const QByteArray& listing, int* nativePort, int* chatPort)
{
    *nativePort = firstFreePort(listing, kFirstPort);
    // With no first port the count for the second still starts above its value, which is then 0.
    *chatPort = firstFreePort(listing, *nativePort + 1);
}

// The start of the service, and its cost in a host that never gets an agent.
#include "bench/ResidentMemory.h"
#include "bridge/AIBridge.h"
#include "service/PortSearch.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Median.h"
#include "tests/support/ThreadSwitches.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>
#include <thrift/transport/TSocket.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

using namespace apache::thrift;

namespace {

constexpr int kRepetitions = 11;
constexpr int kLimitMs = 60000;

bool isAnswered()
{
    const int port = qEnvironmentVariableIntValue("AGENT_NATIVE_PORT");
    if (port == 0)
        return false;
    const auto transport = std::make_shared<transport::TBufferedTransport>(
        std::make_shared<transport::TSocket>("localhost", port));
    try {
        transport->open();
        ZORNativePluginClient client(std::make_shared<protocol::TBinaryProtocol>(transport));
        std::vector<DiskInfo> disks;
        client.ListAllDisks(disks);
        return true;
    } catch (const TException&) {
        return false;
    }
}

// Nanoseconds from init to the first answer of a client that connects as soon as it can.
qint64 startTime()
{
    AIBridge bridge;
    qunsetenv("AGENT_NATIVE_PORT");
    QElapsedTimer timer;
    timer.start();
    bridge.init();
    while (!isAnswered()) {
        if (timer.elapsed() > kLimitMs) {
            std::fprintf(stderr, "The service does not answer.\n");
            std::_Exit(1);
        }
        std::this_thread::yield();
    }
    const qint64 nanoseconds = timer.nsecsElapsed();
    AIBridgeAccess::release(bridge);
    return nanoseconds;
}

qint64 listingTime()
{
    QElapsedTimer timer;
    timer.start();
    busyPortListing();
    return timer.nsecsElapsed();
}

void line(const char* name, double value, const char* unit)
{
    std::printf("%-58s %12.2f %s\n", name, value, unit);
}

double milliseconds(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

void printStart(int repetitions)
{
    std::vector<qint64> starts;
    std::vector<qint64> listings;
    for (int i = 0; i < repetitions; ++i) {
        listings.push_back(listingTime());
        starts.push_back(startTime());
    }
    line("from init to the first answer", milliseconds(median(starts)), "ms");
    line("of which the listing of busy ports (netstat)", milliseconds(median(listings)), "ms");
    line("the rest", milliseconds(median(starts) - median(listings)), "ms");
}

void serveEvents(int milliseconds)
{
    QTimer::singleShot(milliseconds, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
}

void printRest(int seconds)
{
    serveEvents(500);
    const QMap<int, qint64> host = threadSwitches();
    const double bare = residentKib();
    AIBridge bridge;
    qunsetenv("AGENT_NATIVE_PORT");
    bridge.init();
    while (qEnvironmentVariableIntValue("AGENT_NATIVE_PORT") == 0)
        serveEvents(100);
    serveEvents(500);
    const double added = residentKib() - bare;
    const QMap<int, qint64> before = threadSwitches();
    serveEvents(seconds * 1000);
    const QMap<int, qint64> after = threadSwitches();
    int threads = 0;
    qint64 wakeUps = 0;
    for (auto thread = after.begin(); thread != after.end(); ++thread) {
        if (host.contains(thread.key()))
            continue;
        ++threads;
        wakeUps += thread.value() - before.value(thread.key());
    }
    line("a service without clients: threads", threads, "");
    line("a service without clients: wake-ups", static_cast<double>(wakeUps) * 60 / seconds, "per minute");
    line("a service without clients: resident", added, "KiB");
    AIBridgeAccess::release(bridge);
}

} // namespace

// aibridge_start [--smoke]
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    std::printf("%-58s %12s\n", "start (medians) and rest (one measurement)", "");
    printRest(smoke ? 1 : 60);
    printStart(smoke ? 2 : kRepetitions);
    return 0;
}

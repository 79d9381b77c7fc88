// Two thousand starts and stops, a tenth of that on Windows: each ends, the median is short, and descriptors
// and threads do not leak.
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/BackgroundWork.h"
#include "tests/support/Median.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/SettledFigures.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

namespace {

// Closing waits up to half a second for the server's thread to leave its socket. If every stop used the whole
// wait, the median would exceed this.
constexpr int kMedianEndMs = 250;
// Each start runs a child process, which takes a third of a second on Windows.
#ifdef Q_OS_WIN
constexpr int kRoundsDivisor = 10;
#else
constexpr int kRoundsDivisor = 1;
#endif
constexpr int rounds(int count)
{
    return count / kRoundsDivisor;
}
const std::string kInit = wire::call("Init", 1);
const std::string kShow = wire::call("ShowBitLockerStatus", 5, wire::Fields().string(1, "D"));

// Compares the figures of the process after the first cycles with those at the end.
template <class Cycle> void runCycles(int count, Cycle cycle)
{
    constexpr int warmUp = 20;
    ProcessFigures before;
    for (int round = 0; round < count; ++round) {
        if (round == warmUp)
            before = ProcessFigures::now();
        ASSERT_NO_FATAL_FAILURE(cycle(round)) << round;
    }
    const ProcessFigures after = expectSettled(before);
    if (kMemoryIsOurs) {
        EXPECT_LT(after.peakKilobytes - before.peakKilobytes, 32 * 1024);
    }
}

// Milliseconds of each stop.
using Durations = std::vector<qint64>;

void stop(ServiceRunner& service, Durations& durations)
{
    QElapsedTimer timer;
    timer.start();
    service.thread().stopServer();
    ASSERT_TRUE(service.waitForEnd());
    durations.push_back(timer.elapsed());
}

TEST(StopCycles, ManyWithoutClients_EachEndsAndTheMedianIsShort)
{
    Durations durations;
    runCycles(rounds(700), [&](int) {
        ServiceRunner service(nullptr);
        ASSERT_NO_FATAL_FAILURE(stop(service, durations));
    });
    ASSERT_FALSE(durations.empty());
    EXPECT_LT(median(durations), kMedianEndMs);
}

TEST(StopCycles, ManyWithOneToFourIdleClients_EachEndsAndTheMedianIsShort)
{
    Durations durations;
    runCycles(rounds(700), [&](int round) {
        ServiceRunner service(nullptr);
        std::vector<std::unique_ptr<RawClient>> clients;
        for (int i = 0; i <= round % 4; ++i)
            clients.push_back(std::make_unique<RawClient>(service.port()));
        // In every third round the clients only connect.
        if (round % 3 != 0)
            clients.front()->ask(kInit);
        ASSERT_NO_FATAL_FAILURE(stop(service, durations));
    });
    ASSERT_FALSE(durations.empty());
    EXPECT_LT(median(durations), kMedianEndMs);
}

TEST(StopCycles, ManyWithOneToThreeBusyClients_EachEndsAfterTheLastToolAndTheMedianIsShort)
{
    Durations durations;
    ServiceRunner* running = nullptr;
    QElapsedTimer lastCall;
    RecordingHost host;
    host.spec("partitionmanager").answer("doFunFromAI", [&](const QVariantList&) {
        running->thread().stopServer();
        lastCall.start();
        return QVariant(true);
    });
    host.build();
    runCycles(rounds(600), [&](int round) {
        ServiceRunner service(host.bridge());
        running = &service;
        host.recorder().clear();
        std::vector<std::unique_ptr<RawClient>> clients;
        for (int i = 0; i <= round % 3; ++i) {
            clients.push_back(std::make_unique<RawClient>(service.port()));
            clients.back()->send(kShow);
        }
        // The first call that reaches the host stops the service while the tools run.
        ASSERT_TRUE(pumpUntil([&] { return !host.recorder().calls().empty(); }));
        ASSERT_TRUE(service.waitForEnd());
        durations.push_back(lastCall.elapsed());
    });
    ASSERT_FALSE(durations.empty());
    EXPECT_LT(median(durations), kMedianEndMs);
}

TEST(StopCycles, FiftyStartsOnAnAddressInUse_DoNotLeak)
{
    // The port is in use, so the service ends by itself.
    const ServiceRunner other(nullptr);
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(other.port())));
    runCycles(50, [](int) {
        AIFuncallThread thread(nullptr, AIBridgeAccess::makeHandler(nullptr));
        thread.start();
        ASSERT_TRUE(thread.wait(20000));
        thread.stopServer();
    });
}

} // namespace

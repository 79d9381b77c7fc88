// Two thousand starts and stops, some two hundred on Windows: each ends, the median in a fraction of a
// second, and none leaks a descriptor or a thread.
#include "tests/support/Aside.h"
#include "tests/support/Median.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

namespace {

// Closing waits up to half a second for the server's thread to leave its socket, in vain only where that
// thread is slow. A stop that always waited in vain would take longer than this.
constexpr int kMedianEndMs = 250;
// A start of the service starts a program, which costs a third of a second there.
#ifdef Q_OS_WIN
constexpr int kRoundsPart = 10;
#else
constexpr int kRoundsPart = 1;
#endif
constexpr int rounds(int count)
{
    return count / kRoundsPart;
}
const std::string kInit = wire::call("Init", 1);
const std::string kShow = wire::call("ShowBitLockerStatus", 5, wire::Fields().string(1, "D"));

// Runs the cycles and compares what the process holds after the first few with what it holds at the end.
template <class Cycle> void runCycles(int count, Cycle cycle)
{
    constexpr int warmUp = 20;
    ProcessFigures before;
    for (int round = 0; round < count; ++round) {
        if (round == warmUp)
            before = ProcessFigures::now();
        ASSERT_NO_FATAL_FAILURE(cycle(round)) << round;
    }
    ProcessFigures after;
    // A thread that has ended takes a moment to be gone.
    pumpUntil([&] {
        after = ProcessFigures::now();
        return after.fileDescriptors <= before.fileDescriptors && after.threads <= before.threads;
    });
    EXPECT_LE(after.fileDescriptors, before.fileDescriptors);
    EXPECT_LE(after.threads, before.threads);
    if (kMemoryIsOurs) {
        EXPECT_LT(after.peakKilobytes - before.peakKilobytes, 32 * 1024);
    }
}

// The milliseconds of each stop.
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
        // Of some the server knows nothing but that they knock.
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
        // The first call to reach the host stops the service in the midst of the tools.
        ASSERT_TRUE(pumpUntil([&] { return !host.recorder().calls().empty(); }));
        ASSERT_TRUE(service.waitForEnd());
        durations.push_back(lastCall.elapsed());
    });
    ASSERT_FALSE(durations.empty());
    EXPECT_LT(median(durations), kMedianEndMs);
}

TEST(StopCycles, FiftyStartsOnAnAddressThatIsTaken_LeaveNothingBehind)
{
    // Something else listens on the port: the service ends by itself.
    const ServiceRunner other(nullptr);
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(other.port())));
    runCycles(50, [](int) {
        AIFuncallThread thread(nullptr);
        thread.start();
        ASSERT_TRUE(thread.wait(20000));
        thread.stopServer();
    });
}

} // namespace

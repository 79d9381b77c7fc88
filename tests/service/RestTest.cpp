// What the service costs the application thread of its host: nothing without clients, and nothing for reads.
#include "bridge/AIBridge.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/ThreadSwitches.h"
#include "tests/support/Threads.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <future>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace {

// Longer than the runtime's and the library's own intervals of at most a second.
constexpr int kObservedMs = 3000;
constexpr int kReads = 300;

TEST(ServiceAtRest, NoThreadOfTheService_WakesUp)
{
    std::thread([] {}).join(); // with the first thread, the thread sanitizer starts one of its own
    const QMap<int, qint64> host = threadSwitches();
    AIBridge bridge;
    const ServiceRunner service(&bridge);
    // The start ends in the wait for a client.
    QMap<int, qint64> before;
    ASSERT_TRUE(pumpUntil([&] {
        const QMap<int, qint64> last = before;
        QElapsedTimer timer;
        timer.start();
        pumpUntil([&] { return timer.elapsed() > 200; });
        before = threadSwitches();
        for (const int thread : host.keys())
            before.remove(thread);
        return !before.isEmpty() && before == last;
    }));
    QElapsedTimer timer;
    timer.start();
    pumpUntil([&] { return timer.elapsed() > kObservedMs; });
    QMap<int, qint64> after = threadSwitches();
    for (const int thread : host.keys())
        after.remove(thread);
    EXPECT_EQ(after, before);
    EXPECT_EQ(after.size(), 1);
}

void readLists(int port)
{
    GeneratedClient client(port);
    for (int i = 0; i < kReads; ++i) {
        std::vector<DiskInfo> disks;
        client->ListAllDisks(disks);
        EXPECT_EQ(disks.size(), 1U);
        std::vector<PartitionInfo> partitions;
        client->GetAllPartitionInfo(partitions);
        client->ListPartitionsOnDisk(partitions, 0);
        PartitionInfo partition;
        client->GetPartitionInfo(partition, "C");
        EXPECT_EQ(partition.diskIndex, 0);
    }
}

TEST(ServiceAtRest, Reads_DoNotWakeTheApplicationThread)
{
    AIBridge bridge;
    const QVariantMap partition{{"diskIndex", 0}, {"driveLetter", "C:"}};
    bridge.setDiskInfo({QVariantMap{{"diskIndex", 0}, {"partitions", QVariantList{partition}}}});
    const ServiceRunner service(&bridge);
    const int self = static_cast<int>(::syscall(SYS_gettid));
    std::promise<void> end;
    std::thread client([&] {
        readLists(service.port());
        end.set_value();
    });
    const qint64 before = threadSwitches().value(self);
    end.get_future().wait();
    // Only the wait above, not the 1,200 reads.
    EXPECT_LT(threadSwitches().value(self) - before, 10);
    client.join();
}

} // namespace

// Waiting time of a reader while the inventory is refilled in a loop.
#include "bench/Cores.h"
#include "bench/Inventories.h"
#include "bench/Ratios.h"

#include "bridge/AIBridge.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace {

constexpr int kReaders = 2;
constexpr int kReads = 20000;

using Clock = std::chrono::steady_clock;

std::vector<double> readMany(AIBridge& bridge)
{
    std::vector<double> waits;
    waits.reserve(kReads);
    PartitionInfo partition;
    std::vector<DiskInfo> disks;
    for (int i = 0; i < kReads; ++i) {
        const auto begun = Clock::now();
        if (i % 2 == 0)
            bridge.getPartitionInfo(partition, "D");
        else
            bridge.getDiskInfo(disks);
        waits.push_back(std::chrono::duration<double, std::micro>(Clock::now() - begun).count());
    }
    return waits;
}

// The 99th percentile over all readers. @p meanwhile repeats on the calling thread until they have finished.
template <class Work> double percentile99(AIBridge& bridge, Work meanwhile)
{
    std::atomic<int> running{kReaders};
    std::vector<std::vector<double>> waits(kReaders);
    std::vector<std::thread> threads;
    for (auto& own : waits)
        threads.emplace_back([&] {
            own = readMany(bridge);
            --running;
        });
    while (running > 0)
        meanwhile();
    std::vector<double> all;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i].join();
        all.insert(all.end(), waits[i].begin(), waits[i].end());
    }
    const auto place = all.begin() + static_cast<std::ptrdiff_t>(all.size() * 99 / 100);
    std::nth_element(all.begin(), place, all.end());
    return *place;
}

} // namespace

void registerReaderBenchmarks()
{
    const auto inventory = std::make_shared<QVariantList>(makeInventory(24, 4));
    const auto bridge = std::make_shared<AIBridge>();
    bridge->setDiskInfo(*inventory);
    addMeasured("a reader's 99th percentile, with refills against without", 2.0, [=] {
        useEveryCore(); // readers and refills meet
        const double with = percentile99(*bridge, [&] { bridge->setDiskInfo(*inventory); });
        const double without =
            percentile99(*bridge, [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); });
        useServerCore(Placement::OneCore);
        return std::pair(with, without);
    });
}

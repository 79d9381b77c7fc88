// One scan over many disks without a finding, case by case.
#include "bench/BenchHost.h"
#include "bench/Inventories.h"
#include "bench/Ratios.h"

#include "bridge/AIBridge.h"
#include "recscan/ScanCases.h"
#include "tests/support/AIBridgeAccess.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kDisks = 1000;
constexpr int kPartitions = 4;

const std::array<const char*, kCaseCount> kNames = {"end of Windows 10 (checker off: one question)",
                                                    "disk health (one question per disk)",
                                                    "free space on the system drive",
                                                    "free space on each drive",
                                                    "space beyond an MBR",
                                                    "large FAT32 on external disks",
                                                    "boot entries (missing program)",
                                                    "4K alignment",
                                                    "BitLocker and a USB drive",
                                                    "slow boot disk",
                                                    "RAW partitions",
                                                    "locked partitions"};

struct Machine
{
    BenchHost host;
    AIBridge bridge;
    ScanSubject subject;

    Machine()
    {
        bridge.setEngine(&host.engine);
        bridge.setDiskInfo(makeRoomyInventory(kDisks, kPartitions));
        subject.pages = AIBridgeAccess::pages(&bridge);
        subject.engine = &host.engine;
        bridge.getDiskInfo(subject.disks);
        for (const DiskInfo& disk : subject.disks) {
            bridge.getPartitionInfo(subject.partitionsByDisk[disk.diskIndex], disk.diskIndex);
            for (const PartitionInfo& partition : subject.partitionsByDisk[disk.diskIndex])
                subject.partitionsByLetter[partition.driveLetter.front()] = partition;
        }
    }
};

double microsecondsOf(const Machine& machine, int index)
{
    double time = 0;
    besideTheEventLoop([&] {
        const auto begun = std::chrono::steady_clock::now();
        if (runScanCase(index, machine.subject).has_value()) {
            std::fprintf(stderr, "Case %d has a finding.\n", index);
            std::abort();
        }
        time = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begun).count();
    });
    return time;
}

} // namespace

void registerScanBenchmarks()
{
    const auto machine = std::make_shared<Machine>();
    for (int index = 0; index < kCaseCount; ++index) {
        const std::string name = kNames[static_cast<std::size_t>(index)];
        addTime("scan, a disk: " + name, [=] { return microsecondsOf(*machine, index) / kDisks; });
    }
}

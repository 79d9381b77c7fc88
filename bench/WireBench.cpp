// Read tools over one connection, compared with a bare server of the same runtime with the same records.
#include "bench/BareServer.h"
#include "bench/Inventories.h"
#include "bench/Ratios.h"
#include "bench/WireService.h"

#include "bridge/AIBridge.h"
#include "tests/support/AIBridgeAccess.h"
#include "tools/ZorHandle.h"

#include <benchmark/benchmark.h>

namespace {

// Both services use the same inventory.
struct Pair
{
    AIBridge bridge;
    std::unique_ptr<WireService> ours;
    std::unique_ptr<WireService> bare;

    Pair(int disks, int partitions)
    {
        bridge.setDiskInfo(makeInventory(disks, partitions));
        const auto handler = std::make_shared<CZorHandle>();
        handler->setBridge(AIBridgeAccess::toolBridge(&bridge));
        std::vector<DiskInfo> diskList;
        std::vector<PartitionInfo> partitionList;
        bridge.getDiskInfo(diskList);
        bridge.getAllPartitionInfo(partitionList);
        ours = std::make_unique<WireService>(handler, WireService::Kind::Ours);
        bare = std::make_unique<WireService>(std::make_shared<BareServer>(diskList, partitionList),
                                             WireService::Kind::Bare);
    }
};

void getPartitionInfo(ZORNativePluginClient& client)
{
    PartitionInfo record;
    client.GetPartitionInfo(record, "D");
    benchmark::DoNotOptimize(record);
}

void listAllDisks(ZORNativePluginClient& client)
{
    std::vector<DiskInfo> records;
    client.ListAllDisks(records);
    benchmark::DoNotOptimize(records);
}

void getAllPartitionInfo(ZORNativePluginClient& client)
{
    std::vector<PartitionInfo> records;
    client.GetAllPartitionInfo(records);
    benchmark::DoNotOptimize(records);
}

using Call = void (*)(ZORNativePluginClient&);

void registerPair(const std::string& name, double limit, const std::shared_ptr<Pair>& pair, Call call)
{
    const auto loop = [pair, call](benchmark::State& state, WireService& service) {
        for (auto _ : state)
            call(service.client());
    };
    addRatio(
        name, limit, [=](benchmark::State& state) { loop(state, *pair->ours); },
        [=](benchmark::State& state) { loop(state, *pair->bare); });
}

} // namespace

void registerWireBenchmarks()
{
    const auto machine = std::make_shared<Pair>(24, 4);
    registerPair("GetPartitionInfo", 1.05, machine, getPartitionInfo);
    registerPair("ListAllDisks, 24 disks", 1.05, machine, listAllDisks);
    registerPair("GetAllPartitionInfo, 10,000 partitions", 1.10, std::make_shared<Pair>(625, 16),
                 getAllPartitionInfo);
}

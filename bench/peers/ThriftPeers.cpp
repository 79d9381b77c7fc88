#include "bench/peers/ThriftPeers.h"

#include "bench/BareServer.h"
#include "bench/Inventories.h"

#include "tests/support/AIBridgeAccess.h"
#include "tools/ZorHandle.h"

namespace {

Records readFrom(AIBridge& bridge, Call call)
{
    Records records;
    switch (call) {
    case Call::GetPartitionInfo:
        bridge.getPartitionInfo(records.partitions.emplace_back(), kDrive);
        break;
    case Call::ListAllDisks:
        bridge.getDiskInfo(records.disks);
        break;
    case Call::GetAllPartitionInfo:
        bridge.getAllPartitionInfo(records.partitions);
        break;
    }
    return records;
}

} // namespace

ThriftServices::ThriftServices(const Case& entry)
{
    bridge.setDiskInfo(makeInventory(entry.disks, entry.partitionsPerDisk));
    reply = readFrom(bridge, entry.call);
    const auto handler = std::make_shared<CZorHandle>();
    handler->setBridge(AIBridgeAccess::toolBridge(&bridge));
    ours = std::make_unique<WireService>(handler, WireService::Kind::Ours);
    bare = std::make_unique<WireService>(std::make_shared<BareServer>(reply.disks, reply.partitions),
                                         WireService::Kind::Bare);
}

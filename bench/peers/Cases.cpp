#include "bench/peers/Cases.h"

const std::vector<Case>& cases()
{
    static const std::vector<Case> all = {
        {"GetPartitionInfo, 24 disks", Call::GetPartitionInfo, 24, 4},
        {"ListAllDisks, 24 disks", Call::ListAllDisks, 24, 4},
        {"GetAllPartitionInfo, 100 partitions", Call::GetAllPartitionInfo, 25, 4},
        {"GetAllPartitionInfo, 500 partitions", Call::GetAllPartitionInfo, 125, 4},
        {"GetAllPartitionInfo, 10,000 partitions", Call::GetAllPartitionInfo, 625, 16},
    };
    return all;
}

Records readWith(ZORNativePluginClient& client, Call call)
{
    Records records;
    switch (call) {
    case Call::GetPartitionInfo:
        client.GetPartitionInfo(records.partitions.emplace_back(), kDrive);
        break;
    case Call::ListAllDisks:
        client.ListAllDisks(records.disks);
        break;
    case Call::GetAllPartitionInfo:
        client.GetAllPartitionInfo(records.partitions);
        break;
    }
    return records;
}

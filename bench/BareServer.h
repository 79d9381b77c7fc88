#pragma once

#include "ZORNativePlugin.h"

/// The minimum that a server of this runtime does: it returns prepared records.
class BareServer : public ZORNativePluginNull
{
public:
    BareServer(std::vector<DiskInfo> disks, std::vector<PartitionInfo> partitions)
        : disks_(std::move(disks)), partitions_(std::move(partitions))
    {
    }

    void ListAllDisks(std::vector<DiskInfo>& out) override { out = disks_; }
    void GetAllPartitionInfo(std::vector<PartitionInfo>& out) override { out = partitions_; }
    void GetPartitionInfo(PartitionInfo& out, const std::string&) override { out = partitions_.front(); }

private:
    const std::vector<DiskInfo> disks_;
    const std::vector<PartitionInfo> partitions_;
};

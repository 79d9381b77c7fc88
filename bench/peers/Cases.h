#pragma once

#include "ZORNativePlugin.h"

#include <string>
#include <vector>

enum class Call { GetPartitionInfo, ListAllDisks, GetAllPartitionInfo };

/// A row of the report: a call and the size of the inventory that it reads.
struct Case
{
    std::string name;
    Call call;
    int disks;
    int partitionsPerDisk;

    bool isList() const { return call != Call::GetPartitionInfo; }
};

/// The records of a reply. GetPartitionInfo returns one partition.
struct Records
{
    std::vector<DiskInfo> disks;
    std::vector<PartitionInfo> partitions;

    bool operator==(const Records& other) const
    {
        return disks == other.disks && partitions == other.partitions;
    }
};

/// The argument of GetPartitionInfo: the letter of the first partition.
inline const char* const kDrive = "D";

const std::vector<Case>& cases();

/// Makes the call with a generated client of the service.
Records readWith(ZORNativePluginClient& client, Call call);

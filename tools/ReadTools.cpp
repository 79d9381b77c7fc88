// The tools that read the inventory: no host call, no gate.
#include "service/ZorHandle.h"

#include "plugin/AIBridge.h"

void CZorHandle::ListAllDisks(std::vector<DiskInfo>& out)
{
    if (bridge != nullptr)
        bridge->getDiskInfo(out);
}

void CZorHandle::ListPartitionsOnDisk(std::vector<PartitionInfo>& out, int32_t diskIndex)
{
    if (bridge != nullptr)
        bridge->getPartitionInfo(out, diskIndex);
}

void CZorHandle::GetPartitionInfo(PartitionInfo& out, const std::string& driveLetter)
{
    if (bridge != nullptr)
        bridge->getPartitionInfo(out, driveLetter);
}

void CZorHandle::GetAllPartitionInfo(std::vector<PartitionInfo>& out)
{
    if (bridge != nullptr)
        bridge->getAllPartitionInfo(out);
}

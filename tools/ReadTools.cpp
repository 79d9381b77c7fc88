// Tools that read the inventory. They do not call the host or check the gate.
#include "tools/ZorHandle.h"

#include "inventory/Inventory.h"
#include "tools/ToolBridge.h"

void CZorHandle::ListAllDisks(std::vector<DiskInfo>& out)
{
    if (bridge != nullptr)
        bridge->inventory.getDiskInfo(out);
}

void CZorHandle::ListPartitionsOnDisk(std::vector<PartitionInfo>& out, int32_t diskIndex)
{
    if (bridge != nullptr)
        bridge->inventory.getPartitionInfo(out, diskIndex);
}

void CZorHandle::GetPartitionInfo(PartitionInfo& out, const std::string& driveLetter)
{
    if (bridge != nullptr)
        bridge->inventory.getPartitionInfo(out, driveLetter);
}

void CZorHandle::GetAllPartitionInfo(std::vector<PartitionInfo>& out)
{
    if (bridge != nullptr)
        bridge->inventory.getAllPartitionInfo(out);
}

std::shared_ptr<ReplyCache> CZorHandle::replyCache() const
{
    return bridge == nullptr ? nullptr : bridge->inventory.replyCache();
}

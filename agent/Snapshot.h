#pragma once

#include "agent/RecordView.h"

#include <string>
#include <vector>

namespace zorcall {

class Client;

/// The inventory at one time.
struct Snapshot
{
    Value disks;   ///< list of DiskInfo
    Value entries; ///< list of PartitionInfo: partitions and unallocated regions
};

Snapshot readSnapshot(Client& client);

enum class Item { Disk, Partition, Region };

/// One difference between two snapshots. The pointers refer to these.
struct Difference
{
    Item item = Item::Disk;
    const Value* was = nullptr;       ///< null for a new item
    const Value* now = nullptr;       ///< null if the item is gone
    std::vector<const Field*> fields; ///< those that differ, for an item that is neither new nor gone
};

/// The differences, in the order of @p after; the items that are gone follow. Fields that only repeat another
/// one, such as the free and the displayed size, are left out. A change of the used space counts from one
/// percent of the capacity on, because programs write to drives at any time.
std::vector<Difference> differences(const Interface& service, const Snapshot& before, const Snapshot& after);

/// Name of the record of an item.
const Record& recordOf(const Interface& service, Item item);

} // namespace zorcall

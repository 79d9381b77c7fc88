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
    const Value* was = nullptr;       ///< null if the item was added
    const Value* now = nullptr;       ///< null if the item was removed
    std::vector<const Field*> fields; ///< the changed fields; empty if the item was added or removed
};

/// Returns the differences in the order of @p after, followed by the removed items. Omits fields that are
/// derived from another one, such as the free and the displayed size. A change of the used space is reported
/// only above one percent of the capacity, because programs write to drives at any time.
std::vector<Difference> differences(const Interface& service, const Snapshot& before, const Snapshot& after);

/// The record type of an item.
const Record& recordOf(const Interface& service, Item item);

} // namespace zorcall

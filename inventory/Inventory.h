#pragma once

#include "inventory/WireTypes.h"

#include <QtCore/QReadWriteLock>
#include <QtCore/QVariantList>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class QQmlEngine;

/// The records of an inventory. Sizes are bytes.
struct InventoryRecords
{
    std::vector<DiskInfo> diskList;
    std::vector<PartitionInfo> partitionList; ///< of all disks, in the host's order
    std::map<int, std::vector<PartitionInfo>> partitionsByDisk;
    std::map<char, PartitionInfo> partitionsByLetter; ///< upper-case letters
};

/// The machine's disks and partitions as the host pushed them last.
///
/// Every member may be called from any thread. A reader sees the inventory before a change or after it, never half of
/// it. The host's methods run on the calling thread, without the lock.
class Inventory
{
public:
    /// Replaces the inventory by @p disks, a list of disk maps. Records by letter are kept: a drive that has disappeared
    /// keeps its last record. @p engine gives access to the host's objects; null leaves out their answers.
    void setDiskInfo(const QQmlEngine* engine, const QVariantList& disks);
    /// Adds one disk's partitions.
    void parsePartitionInfo(const QQmlEngine* engine, const QVariantList& partitions);

    void getDiskInfo(std::vector<DiskInfo>& out) const;
    /// Leaves @p out unchanged if no partition of that disk is known.
    void getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex) const;
    void getAllPartitionInfo(std::vector<PartitionInfo>& out) const;
    /// Uses the first byte of @p driveLetter. Leaves @p out unchanged for an empty or unknown letter.
    void getPartitionInfo(PartitionInfo& out, const std::string& driveLetter) const;
    /// Position, among the disk's unallocated regions, of the first one of at least @p size bytes; 0 if none fits.
    int findOneUnallocatedPartition(int diskIndex, std::int64_t size) const;
    /// Capacity of the partition in bytes, 0 for an unknown letter.
    std::int64_t getPartitionSize(const std::string& driveLetter) const;
    /// False for an unknown disk and for one without entries in its partition list.
    bool hasPartitions(int diskIndex) const;
    /// A copy of all records.
    InventoryRecords records() const;

private:
    class ReadLock;
    class WriteLock;

    InventoryRecords records_;
    // Never held during a call into the host.
    mutable QReadWriteLock lock_;
};

#pragma once

#include "inventory/WireTypes.h"
#include "plugin/ReplyCache.h"

#include <QtCore/QReadWriteLock>
#include <QtCore/QVariantList>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class QQmlEngine;

/// The records of an inventory. Sizes are in bytes.
struct InventoryRecords
{
    std::vector<DiskInfo> diskList;
    std::vector<PartitionInfo> partitionList; ///< of all disks, in the host's order
    std::map<int, std::vector<PartitionInfo>> partitionsByDisk;
    std::map<char, PartitionInfo> partitionsByLetter; ///< keys are upper-case letters
};

/// The machine's disks and partitions, as of the host's last push.
///
/// Every member can be called on any thread. A change is atomic for readers. The host's methods run on the
/// calling thread, without the lock.
class Inventory
{
public:
    /// Replaces the inventory by @p disks, a list of disk maps. Records by letter are kept: a drive that has
    /// disappeared keeps its last record. @p engine gives access to the host's objects; with null, fields
    /// that only the host can supply stay false.
    void setDiskInfo(const QQmlEngine* engine, const QVariantList& disks);
    /// Adds the partitions of one disk, a list of partition maps. @p engine as for setDiskInfo.
    void parsePartitionInfo(const QQmlEngine* engine, const QVariantList& partitions);

    void getDiskInfo(std::vector<DiskInfo>& out) const;
    /// Leaves @p out unchanged if the disk has no known partition.
    void getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex) const;
    void getAllPartitionInfo(std::vector<PartitionInfo>& out) const;
    /// Uses the first byte of @p driveLetter. Leaves @p out unchanged if the letter is empty or unknown.
    void getPartitionInfo(PartitionInfo& out, const std::string& driveLetter) const;
    /// Position of the first unallocated region of at least @p size bytes, counted among the disk's
    /// unallocated regions; 0 if no region fits.
    int findOneUnallocatedPartition(int diskIndex, std::int64_t size) const;
    /// Capacity of the partition in bytes; 0 for an unknown letter.
    std::int64_t getPartitionSize(const std::string& driveLetter) const;
    /// False if the disk is unknown or its partition list is empty.
    bool hasPartitions(int diskIndex) const;
    /// A copy of all records.
    InventoryRecords records() const;
    /// The encoded lists of the current records; created by the first call after a change.
    std::shared_ptr<ReplyCache> replyCache() const;

private:
    std::shared_ptr<ReplyCache> takeReplyCache();

    InventoryRecords records_;
    mutable std::shared_ptr<ReplyCache> replyCache_;
    mutable std::mutex replyCacheMutex_;
    // Never held during a call into the host.
    mutable QReadWriteLock lock_;
};

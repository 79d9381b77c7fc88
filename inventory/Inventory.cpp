#include "inventory/Inventory.h"

#include "inventory/HostMaps.h"
#include "inventory/MapPrefetch.h"
#include "platform/Platform.h"
#include "plugin/HostCall.h"
#include "plugin/TsanAnnotations.h"

#include <QtQml/QQmlEngine>

#include <utility>

namespace {

char upperLetter(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// Asks the host about one record. Runs the host's method on the calling thread.
std::optional<bool> askAbout(const HostMethod& method, const QVariantMap& record)
{
    return method.call<bool>(ConnectionRule::Direct, QVariant(record));
}

int partitionCount(const QVariantList& disks)
{
    int count = 0;
    for (const QVariant& disk : disks)
        count += disk.toMap().value(QStringLiteral("partitions")).toList().size();
    return count;
}

// The records of one disk's partitions, including the host's answers. The inventory has this number of
// partitions.
std::vector<PartitionInfo> readPartitions(const QQmlEngine* engine, const QVariantList& partitions,
                                          int inventorySize)
{
    const HostMethod isRawPart(contextObject(engine, QStringLiteral("partitionrecovery")), "isRawPart");
    const QByteArray systemDirectory = upperSystemDirectory();
    const char systemLetter = systemDirectory.isEmpty() ? '\0' : systemDirectory.at(0);
    std::vector<PartitionInfo> records;
    records.reserve(static_cast<std::size_t>(partitions.size()));
    MapPrefetch prefetch(partitions, inventorySize >= MapPrefetch::kLargeInventory);
    for (int i = 0; i < partitions.size(); ++i) {
        prefetch.reach(i);
        const QVariantMap map = partitions.at(i).toMap();
        records.push_back(partitionRecord(map, systemLetter));
        records.back().isRawPartition = askAbout(isRawPart, map).value_or(false);
    }
    return records;
}

DiskInfo readDisk(const HostMethod& check4kAlign, const QVariantMap& map)
{
    DiskInfo disk = diskRecord(map);
    if (const std::optional<bool> aligned = askAbout(check4kAlign, map))
        disk.not4kAligned = !*aligned;
    return disk;
}

void addPartitions(InventoryRecords& records, std::vector<PartitionInfo> added)
{
    for (const PartitionInfo& record : added) {
        if (!record.driveLetter.empty() && record.driveLetter != "*")
            records.partitionsByLetter[upperLetter(record.driveLetter.front())] = record;
    }
    records.partitionList.insert(records.partitionList.end(), added.begin(), added.end());
    // The key comes from the partition's map, not from the disk's. If two lists have the same key, the first
    // one is kept.
    if (!added.empty()) {
        const int diskIndex = added.front().diskIndex;
        records.partitionsByDisk.emplace(diskIndex, std::move(added));
    }
}

// A locker of Qt that the thread sanitizer recognises. The lock prefers a waiting writer to new readers,
// because the writer is the application thread, which continuous readers must not delay.
template <class Locker> class AnnotatedLock
{
public:
    explicit AnnotatedLock(QReadWriteLock& lock) : locker_(&lock) { TsanAnnotations::acquire(); }
    ~AnnotatedLock() { TsanAnnotations::release(); }
    AnnotatedLock(const AnnotatedLock&) = delete;
    AnnotatedLock& operator=(const AnnotatedLock&) = delete;

private:
    Locker locker_;
};

using ReadLock = AnnotatedLock<QReadLocker>;
using WriteLock = AnnotatedLock<QWriteLocker>;

} // namespace

void Inventory::setDiskInfo(const QQmlEngine* engine, const QVariantList& disks)
{
    InventoryRecords fresh;
    const HostMethod check4kAlign(contextObject(engine, QStringLiteral("toolbox")), "check4kAlign");
    fresh.diskList.reserve(static_cast<std::size_t>(disks.size()));
    const int count = partitionCount(disks);
    fresh.partitionList.reserve(static_cast<std::size_t>(count));
    for (const QVariant& entry : disks) {
        const QVariantMap map = entry.toMap();
        DiskInfo disk = readDisk(check4kAlign, map);
        addPartitions(fresh, readPartitions(engine, map.value(QStringLiteral("partitions")).toList(), count));
        fresh.diskList.push_back(disk);
    }
    std::shared_ptr<ReplyCache> outdated; // freed without the lock
    const WriteLock lock(lock_);
    records_.diskList.swap(fresh.diskList);
    records_.partitionList.swap(fresh.partitionList);
    records_.partitionsByDisk.swap(fresh.partitionsByDisk);
    for (const auto& [letter, record] : fresh.partitionsByLetter)
        records_.partitionsByLetter[letter] = record;
    // After the change, so that a cache never holds older records than those it belongs to.
    outdated = takeReplyCache();
}

void Inventory::parsePartitionInfo(const QQmlEngine* engine, const QVariantList& partitions)
{
    std::vector<PartitionInfo> added = readPartitions(engine, partitions, partitions.size());
    std::shared_ptr<ReplyCache> outdated; // freed without the lock
    const WriteLock lock(lock_);
    addPartitions(records_, std::move(added));
    outdated = takeReplyCache();
}

void Inventory::getDiskInfo(std::vector<DiskInfo>& out) const
{
    const ReadLock lock(lock_);
    out = records_.diskList;
}

void Inventory::getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex) const
{
    const ReadLock lock(lock_);
    const auto found = records_.partitionsByDisk.find(diskIndex);
    if (found != records_.partitionsByDisk.end())
        out = found->second;
}

void Inventory::getAllPartitionInfo(std::vector<PartitionInfo>& out) const
{
    const ReadLock lock(lock_);
    out = records_.partitionList;
}

void Inventory::getPartitionInfo(PartitionInfo& out, const std::string& driveLetter) const
{
    if (driveLetter.empty())
        return;
    const ReadLock lock(lock_);
    const auto found = records_.partitionsByLetter.find(upperLetter(driveLetter.front()));
    if (found != records_.partitionsByLetter.end())
        out = found->second;
}

std::int64_t Inventory::getPartitionSize(const std::string& driveLetter) const
{
    const std::string letter = QString::fromStdString(driveLetter).toUpper().toStdString();
    if (letter.empty())
        return 0;
    const ReadLock lock(lock_);
    const auto found = records_.partitionsByLetter.find(letter.front());
    return found == records_.partitionsByLetter.end() ? 0 : found->second.rawCapacity;
}

int Inventory::findOneUnallocatedPartition(int diskIndex, std::int64_t size) const
{
    const ReadLock lock(lock_);
    const auto found = records_.partitionsByDisk.find(diskIndex);
    if (found == records_.partitionsByDisk.end())
        return 0;
    int position = 0;
    for (const PartitionInfo& record : found->second) {
        if (!record.isUnallocated)
            continue;
        if (record.rawCapacity >= size)
            return position;
        ++position;
    }
    // 0 also means failure; the host rejects a size that does not fit.
    return 0;
}

bool Inventory::hasPartitions(int diskIndex) const
{
    const ReadLock lock(lock_);
    const auto found = records_.partitionsByDisk.find(diskIndex);
    return found != records_.partitionsByDisk.end() && !found->second.empty();
}

InventoryRecords Inventory::records() const
{
    const ReadLock lock(lock_);
    return records_;
}

std::shared_ptr<ReplyCache> Inventory::replyCache() const
{
    const std::lock_guard<std::mutex> lock(replyCacheMutex_);
    if (!replyCache_)
        replyCache_ = std::make_shared<ReplyCache>();
    return replyCache_;
}

std::shared_ptr<ReplyCache> Inventory::takeReplyCache()
{
    const std::lock_guard<std::mutex> lock(replyCacheMutex_);
    return std::move(replyCache_);
}

#include "plugin/AIBridge.h"

#include "platform/Platform.h"
#include "plugin/HostCall.h"
#include "tools/InventoryRecords.h"
#include "tools/SnapshotLock.h"

#include <QtQml/QQmlApplicationEngine>

#include <array>
#include <utility>

namespace {

// One inventory in the making, in the shape in which AIBridge holds it.
struct Inventory
{
    std::vector<DiskInfo> disks;
    std::vector<PartitionInfo> partitions;
    std::map<int, std::vector<PartitionInfo>> byDisk;
    std::map<char, PartitionInfo> byLetter;

    void addPartitions(std::vector<PartitionInfo> records);
};

char upperLetter(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// The host's yes or no about one record. Runs the host's code on this thread: no lock is held.
std::optional<bool> askAbout(const HostMethod& method, const QVariantMap& record)
{
    return method.call<bool>(ConnectionRule::Direct, QVariant(record));
}

std::size_t partitionCount(const QVariantList& disks)
{
    std::size_t count = 0;
    for (const QVariant& disk : disks)
        count += static_cast<std::size_t>(disk.toMap().value(QStringLiteral("partitions")).toList().size());
    return count;
}

// Maps of a large inventory lie wherever the host's memory had room, and one walk after the other waits for
// each of their nodes in turn. Walked side by side first, they come in together: the real walks then find
// them near.
class FetchAhead
{
public:
    explicit FetchAhead(const QVariantList& maps) : maps_(maps) {}

    /// To be called for each entry in order, before it is read.
    void reach(int entry)
    {
        if (entry % kTogether == 0)
            fetch(entry);
    }

private:
    static constexpr int kTogether = 8;

    void fetch(int first)
    {
        using Walk = std::pair<QVariantMap::const_iterator, QVariantMap::const_iterator>;
        std::array<Walk, kTogether> walks;
        std::size_t count = 0;
        for (int i = first; i < maps_.size() && count < walks.size(); ++i) {
            if (maps_.at(i).userType() == QMetaType::QVariantMap) {
                const auto& map = *static_cast<const QVariantMap*>(maps_.at(i).constData());
                walks[count++] = {map.begin(), map.end()};
            }
        }
        for (bool more = count > 0; more;) {
            more = false;
            for (std::size_t i = 0; i < count; ++i) {
                if (walks[i].first != walks[i].second)
                    more = ++walks[i].first != walks[i].second || more;
            }
        }
    }

    const QVariantList& maps_;
};

// The records of one disk's partition list, with the host's answers in them.
std::vector<PartitionInfo> readPartitions(const QQmlApplicationEngine* engine, const QVariantList& partitions)
{
    const HostMethod isRawPart(contextObject(engine, QStringLiteral("partitionrecovery")), "isRawPart");
    const QByteArray systemDirectory = upperSystemDirectory();
    const char systemLetter = systemDirectory.isEmpty() ? '\0' : systemDirectory.at(0);
    std::vector<PartitionInfo> records;
    records.reserve(static_cast<std::size_t>(partitions.size()));
    FetchAhead ahead(partitions);
    for (int i = 0; i < partitions.size(); ++i) {
        ahead.reach(i);
        const QVariantMap map = partitions.at(i).toMap();
        records.push_back(partitionRecord(map, systemLetter));
        records.back().isRawPartition = askAbout(isRawPart, map).value_or(false);
    }
    return records;
}

void Inventory::addPartitions(std::vector<PartitionInfo> records)
{
    for (const PartitionInfo& record : records) {
        if (!record.driveLetter.empty() && record.driveLetter != "*")
            byLetter[upperLetter(record.driveLetter.front())] = record;
    }
    partitions.insert(partitions.end(), records.begin(), records.end());
    // The key is that of the partition, not of the disk's own map, and the earlier of two lists stays.
    if (!records.empty()) {
        const int diskIndex = records.front().diskIndex;
        byDisk.emplace(diskIndex, std::move(records));
    }
}

} // namespace

void AIBridge::setDiskInfo(QVariantList info)
{
    // Built aside and published whole, so that a reader never sees half an inventory. Only the letters carry
    // over: one that has gone keeps answering with its last record.
    Inventory fresh;
    const HostMethod check4kAlign(contextObject(engine(), QStringLiteral("toolbox")), "check4kAlign");
    fresh.disks.reserve(static_cast<std::size_t>(info.size()));
    fresh.partitions.reserve(partitionCount(info));
    for (const QVariant& entry : qAsConst(info)) {
        const QVariantMap map = entry.toMap();
        DiskInfo disk = diskRecord(map);
        if (const std::optional<bool> aligned = askAbout(check4kAlign, map))
            disk.not4kAligned = !*aligned;
        fresh.addPartitions(readPartitions(engine(), map.value(QStringLiteral("partitions")).toList()));
        fresh.disks.push_back(std::move(disk));
    }
    const SnapshotWriteLock lock(snapshotLock_);
    diskList.swap(fresh.disks);
    partitionList.swap(fresh.partitions);
    partitionsByDisk.swap(fresh.byDisk);
    for (auto& [letter, record] : fresh.byLetter)
        partitionsByLetter[letter] = std::move(record);
}

void AIBridge::parsePartitionInfo(const QVariantList& partitions)
{
    Inventory added;
    added.addPartitions(readPartitions(engine(), partitions));
    const SnapshotWriteLock lock(snapshotLock_);
    partitionList.insert(partitionList.end(), added.partitions.begin(), added.partitions.end());
    for (auto& [diskIndex, records] : added.byDisk)
        partitionsByDisk.emplace(diskIndex, std::move(records));
    for (auto& [letter, record] : added.byLetter)
        partitionsByLetter[letter] = std::move(record);
}

void AIBridge::getDiskInfo(std::vector<DiskInfo>& out)
{
    const SnapshotReadLock lock(snapshotLock_);
    out = diskList;
}

void AIBridge::getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex)
{
    const SnapshotReadLock lock(snapshotLock_);
    const auto found = partitionsByDisk.find(diskIndex);
    if (found != partitionsByDisk.end())
        out = found->second;
}

void AIBridge::getAllPartitionInfo(std::vector<PartitionInfo>& out)
{
    const SnapshotReadLock lock(snapshotLock_);
    out = partitionList;
}

void AIBridge::getPartitionInfo(PartitionInfo& out, const std::string& driveLetter)
{
    if (driveLetter.empty())
        return;
    const SnapshotReadLock lock(snapshotLock_);
    const auto found = partitionsByLetter.find(upperLetter(driveLetter.front()));
    if (found != partitionsByLetter.end())
        out = found->second;
}

std::int64_t AIBridge::getPartitionSize(const std::string& driveLetter)
{
    const std::string letter = QString::fromStdString(driveLetter).toUpper().toStdString();
    if (letter.empty())
        return 0;
    const SnapshotReadLock lock(snapshotLock_);
    const auto found = partitionsByLetter.find(letter.front());
    return found == partitionsByLetter.end() ? 0 : found->second.rawCapacity;
}

int AIBridge::findOneUnallocatedPartition(int diskIndex, std::int64_t size)
{
    const SnapshotReadLock lock(snapshotLock_);
    const auto found = partitionsByDisk.find(diskIndex);
    if (found == partitionsByDisk.end())
        return 0;
    int place = 0;
    for (const PartitionInfo& record : found->second) {
        if (!record.isUnallocated)
            continue;
        if (record.rawCapacity >= size)
            return place;
        ++place;
    }
    // No value stands for failure: the host refuses what does not fit.
    return 0;
}

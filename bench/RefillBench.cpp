// A refill of the inventory, compared with one pass that reads the same keys from the same maps.
#include "bench/Inventories.h"
#include "bench/Ratios.h"

#include "bridge/AIBridge.h"

#include <benchmark/benchmark.h>

#include <array>
#include <map>

namespace {

// The keys, each with the library's conversion.
enum class As { Flag, Number, Size, Text };

struct Key
{
    QString name;
    As as;
};

std::vector<Key> keys(std::initializer_list<const char*> names, As as)
{
    std::vector<Key> list;
    for (const char* name : names)
        list.push_back({QString::fromLatin1(name), as});
    return list;
}

std::vector<Key> joined(std::initializer_list<std::vector<Key>> lists)
{
    std::vector<Key> all;
    for (const auto& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

const std::vector<Key>& diskKeys()
{
    static const std::vector<Key> list =
        joined({keys({"diskInterface", "serialNO"}, As::Text),
                keys({"diskIndex", "bltState", "emptyPartitionCount"}, As::Number),
                keys({"size", "usedSize"}, As::Size),
                keys({"isUnInitialize", "isGPT", "isStorageSpace", "isDynamic", "readonly", "isOffline",
                      "isBad", "isProtected", "isRemoveUsb", "isVHD", "isVMD", "isVirtualDisk", "isUSB",
                      "isSSD", "isLowSpace"},
                     As::Flag)});
    return list;
}

const std::vector<Key>& partitionKeys()
{
    static const std::vector<Key> list = joined(
        {keys({"partGUID", "driveLetter", "label", "fsString"}, As::Text),
         keys({"diskIndex", "partitionIndex", "sectorSize", "clusterSize", "bltState", "dynamicVolumeType"},
              As::Number),
         keys({"size", "volumeSize", "usedSize", "startSector", "endSector", "dbrStartSector"}, As::Size),
         keys({"unallocated",    "isUnformattedType", "isBitLocker", "readonly",  "isHidden",
               "isActive",       "isSystem",          "isBoot",      "isPrimary", "isGPT",
               "isStorageSpace", "isDynamic",         "isRemovable", "isBad",     "isNeedSectorBySector",
               "isOfflineBoot",  "isLowSpace",        "gptReserved", "gptEFI",    "gptRecovery"},
              As::Flag)});
    return list;
}

qint64 readKeys(const QVariantMap& map, const std::vector<Key>& list)
{
    qint64 sum = 0;
    for (const Key& key : list) {
        const QVariant value = map.value(key.name);
        switch (key.as) {
        case As::Flag:
            sum += value.toBool() ? 1 : 0;
            break;
        case As::Number:
            sum += value.toInt();
            break;
        case As::Size:
            sum += value.toLongLong();
            break;
        case As::Text:
            sum += value.toString().size();
            break;
        }
    }
    return sum;
}

qint64 readOnce(const QVariantList& inventory)
{
    qint64 sum = 0;
    for (const QVariant& entry : inventory) {
        const QVariantMap disk = entry.toMap();
        sum += readKeys(disk, diskKeys());
        const QVariantList partitions = disk.value(QStringLiteral("partitions")).toList();
        for (const QVariant& partition : partitions)
            sum += readKeys(partition.toMap(), partitionKeys());
    }
    return sum;
}

std::function<void(benchmark::State&)> refill(const std::shared_ptr<QVariantList>& inventory)
{
    return [inventory, bridge = std::make_shared<AIBridge>()](benchmark::State& state) {
        for (auto _ : state)
            bridge->setDiskInfo(*inventory);
    };
}

// Refills with successive parts of a large inventory, of @p disks disks each. When a part is used again, it
// is no longer in the caches.
std::function<void(benchmark::State&)> refillInTurn(const std::shared_ptr<QVariantList>& inventory, int disks)
{
    return [inventory, disks, bridge = std::make_shared<AIBridge>()](benchmark::State& state) {
        std::vector<QVariantList> parts;
        for (int first = 0; first + disks <= inventory->size(); first += disks)
            parts.push_back(inventory->mid(first, disks));
        std::size_t next = 0;
        for (auto _ : state)
            bridge->setDiskInfo(parts[next++ % parts.size()]);
    };
}

std::function<void(benchmark::State&)> onePass(const std::shared_ptr<QVariantList>& inventory)
{
    return [inventory](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(readOnce(*inventory));
    };
}

} // namespace

void registerRefillBenchmarks()
{
    const auto thousandDisks = std::make_shared<QVariantList>(makeInventory(1000, 16));
    addRatio("setDiskInfo, 1,000 disks with 16 partitions", 1.5, refill(thousandDisks),
             onePass(thousandDisks));
    const std::array<std::pair<const char*, int>, 4> sizes = {
        {{"112", 7}, {"1,008", 63}, {"10,000", 625}, {"100,000", 6250}}};
    std::map<int, std::shared_ptr<QVariantList>> inventories;
    for (const auto& [name, disks] : sizes) {
        inventories[disks] = std::make_shared<QVariantList>(makeInventory(disks, 16));
        addRatio(std::string("setDiskInfo, ") + name + " partitions", 1.5, refill(inventories[disks]),
                 onePass(inventories[disks]));
    }
    const auto large = inventories[6250];
    const auto small = inventories[63];
    constexpr double scale = 6250.0 / 63;
    addRatio("setDiskInfo per partition, 100,000 against 1,008", 1.2, refill(large), refill(small), scale);
    // For comparison: the effect of this machine's memory alone on the same step in size, and the remaining
    // effect if the small inventories also come from memory.
    addRatio("the one pass per partition, 100,000 against 1,008", kNoLimit, onePass(large), onePass(small),
             scale);
    addRatio("setDiskInfo per partition, 100,000 against 100 times 1,008", kNoLimit, refill(large),
             refillInTurn(large, 63), scale);
}

// A refill of the inventory, against one pass that reads the same keys out of the same maps.
#include "bench/Inventories.h"
#include "bench/Ratios.h"

#include "plugin/AIBridge.h"

#include <benchmark/benchmark.h>

#include <array>

namespace {

// The keys with the conversion that the library applies to each.
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
    const auto small = std::make_shared<QVariantList>(makeInventory(62, 16));
    const auto large = std::make_shared<QVariantList>(makeInventory(6200, 16));
    addRatio("setDiskInfo per partition, 100,000 against 1,000", 1.2, refill(large), refill(small), 100.0);
    // For comparison: what the memory of this machine alone makes of the same step in size.
    addRatio("the one pass per partition, 100,000 against 1,000", 99, onePass(large), onePass(small), 100.0);
}

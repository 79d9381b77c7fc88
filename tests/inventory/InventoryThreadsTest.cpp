// A refill with concurrent readers: each answer comes completely from one refill.
#include "service/ToolProcessor.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/RecordingHost.h"
#include "tools/ZorHandle.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

// The minimum number of refills, the number of changes that the readers must see, and the maximum of refills.
constexpr int kRefills = 10000;
constexpr int kChanges = 300;
constexpr int kMostRefills = 2000000;
constexpr int kEncodedRefills = 3000;
constexpr int kDisks = 3;
// The inventories are built in advance and used in turn, so that the loop of refills is tight.
constexpr int kGenerations = 10;

// An inventory whose numbers identify its generation: the sizes, and the number of partitions of a disk.
int partitionsIn(int generation)
{
    return 1 + generation % 5;
}

QVariantList inventory(int generation)
{
    QVariantList disks;
    for (int d = 0; d < kDisks; ++d) {
        QVariantList partitions;
        for (int p = 0; p < partitionsIn(generation); ++p) {
            partitions << QVariantMap{{"diskIndex", d},
                                      {"driveLetter", QString(QChar('C' + d)) + ':'},
                                      {"size", generation},
                                      {"usedSize", generation},
                                      {"label", QString("label of generation %1").arg(generation)}};
        }
        disks << QVariantMap{{"diskIndex", d}, {"size", generation}, {"partitions", partitions}};
    }
    return disks;
}

bool isWhole(const PartitionInfo& record)
{
    return record.usedSize == record.rawCapacity &&
           record.label == "label of generation " + std::to_string(record.rawCapacity);
}

// The observations of the readers: inconsistent answers, and changes between two reads.
struct Findings
{
    std::atomic<int> torn{0};
    std::atomic<int> changes{0};
};

class Reader
{
public:
    Reader(CZorHandle& tools, Findings& findings) : tools_(tools), findings_(findings) {}

    void read()
    {
        std::vector<DiskInfo> disks;
        tools_.ListAllDisks(disks);
        check(disks.size() == kDisks);
        for (const DiskInfo& disk : disks)
            check(disk.totalCapacity == disks.front().totalCapacity &&
                  disk.partitionCount == partitionsIn(static_cast<int>(disk.totalCapacity)));
        if (!disks.empty() && disks.front().totalCapacity != last_) {
            last_ = disks.front().totalCapacity;
            ++findings_.changes;
        }
        readPartitions();
    }

private:
    void readPartitions()
    {
        std::vector<PartitionInfo> all;
        tools_.GetAllPartitionInfo(all);
        checkList(all, kDisks);
        std::vector<PartitionInfo> one;
        tools_.ListPartitionsOnDisk(one, 2);
        checkList(one, 1);
        PartitionInfo record;
        tools_.GetPartitionInfo(record, "E");
        check(isWhole(record));
    }

    void checkList(const std::vector<PartitionInfo>& records, int disks)
    {
        if (records.empty())
            return check(false);
        const auto generation = static_cast<int>(records.front().rawCapacity);
        check(static_cast<int>(records.size()) == disks * partitionsIn(generation));
        for (const PartitionInfo& record : records)
            check(record.rawCapacity == generation && isWhole(record));
    }

    void check(bool fine)
    {
        if (!fine)
            ++findings_.torn;
    }

    CZorHandle& tools_;
    Findings& findings_;
    qint64 last_ = -1;
};

TEST(InventoryThreads, RefillsInATightLoop_AreNeverSeenIncompleteByThreeReaders)
{
    AIBridge bridge;
    CZorHandle tools;
    tools.setBridge(AIBridgeAccess::toolBridge(&bridge));
    std::vector<QVariantList> inventories;
    for (int generation = 0; generation < kGenerations; ++generation)
        inventories.push_back(inventory(generation));
    bridge.setDiskInfo(inventories.front());
    std::atomic<bool> done{false};
    Findings findings;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            Reader reader(tools, findings);
            do
                reader.read();
            while (!done);
        });
    }
    for (int i = 0; i < kRefills || (findings.changes < kChanges && i < kMostRefills); ++i)
        bridge.setDiskInfo(inventories[static_cast<std::size_t>(i % kGenerations)]);
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(findings.torn, 0);
    EXPECT_GE(findings.changes, kChanges);
}

// A client of the processor, without sockets.
class ListClient
{
public:
    explicit ListClient(const std::shared_ptr<CZorHandle>& tools) : processor_(tools) {}

    /// The generation of the listed partitions; -1 for an inconsistent list.
    int generation()
    {
        std::vector<PartitionInfo> records;
        client_.send_GetAllPartitionInfo();
        processor_.process(calls_, replies_, nullptr);
        client_.recv_GetAllPartitionInfo(records);
        if (records.empty())
            return -1;
        const auto found = static_cast<int>(records.front().rawCapacity);
        for (const PartitionInfo& record : records) {
            if (record.rawCapacity != found || !isWhole(record))
                return -1;
        }
        return found;
    }

private:
    using Protocol = apache::thrift::protocol::TBinaryProtocol;
    using Buffer = apache::thrift::transport::TMemoryBuffer;
    ToolProcessor processor_;
    std::shared_ptr<Protocol> calls_ = std::make_shared<Protocol>(std::make_shared<Buffer>());
    std::shared_ptr<Protocol> replies_ = std::make_shared<Protocol>(std::make_shared<Buffer>());
    ZORNativePluginClient client_{replies_, calls_};
};

TEST(InventoryThreads, EncodedLists_AreNeverOlderThanACompletedRefill)
{
    AIBridge bridge;
    const auto tools = std::make_shared<CZorHandle>();
    tools->setBridge(AIBridgeAccess::toolBridge(&bridge));
    bridge.setDiskInfo(inventory(0));
    std::atomic<int> completed{0};
    std::atomic<int> changes{0};
    std::atomic<int> faults{0};
    std::atomic<bool> done{false};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            ListClient client(tools);
            int last = 0;
            while (!done) {
                const int oldest = completed;
                const int found = client.generation();
                if (found < oldest || found < last)
                    ++faults;
                if (found != last)
                    ++changes;
                last = found;
            }
        });
    }
    for (int i = 1; i < kEncodedRefills || (changes < kChanges && i < kMostRefills); ++i) {
        bridge.setDiskInfo(inventory(i));
        completed = i;
    }
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(faults, 0);
    EXPECT_GE(changes, kChanges);
}

} // namespace

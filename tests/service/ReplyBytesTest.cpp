// List reads from the cache have the same bytes as those of the generated processor, in few writes.
#include "plugin/ReplyCache.h"
#include "service/StreamTransport.h"
#include "service/ToolProcessor.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/RawClient.h"
#include "tests/support/Wire.h"

#include <QtCore/QThread>

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TVirtualTransport.h>

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <stdexcept>

namespace thrift = apache::thrift;
using thrift::protocol::TBinaryProtocolT;
using thrift::transport::TMemoryBuffer;
using thrift::transport::TTransport;
using wire::Fields;

namespace {

constexpr std::int32_t kSequences[] = {
    0, 1, 77, -1, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()};

// Lists of the test's choice. Counts the reads.
class Lists : public ZORNativePluginNull, public ReplySource
{
public:
    void ListAllDisks(std::vector<DiskInfo>& out) override
    {
        ++reads;
        if (fails)
            throw std::runtime_error("h\xc3\xa4ngt");
        out = disks;
    }
    void GetAllPartitionInfo(std::vector<PartitionInfo>& out) override
    {
        ++reads;
        out = partitions;
    }
    void ListPartitionsOnDisk(std::vector<PartitionInfo>& out, int32_t disk) override
    {
        ++reads;
        for (const PartitionInfo& partition : partitions) {
            if (partition.diskIndex == disk)
                out.push_back(partition);
        }
    }
    std::shared_ptr<ReplyCache> replyCache() const override { return cache; }

    std::vector<DiskInfo> disks;
    std::vector<PartitionInfo> partitions;
    std::shared_ptr<ReplyCache> cache = std::make_shared<ReplyCache>();
    bool fails = false;
    std::atomic<int> reads{0};
};

std::string bytesOf(thrift::TProcessor& processor, const std::string& call)
{
    const auto in = std::make_shared<TMemoryBuffer>();
    in->write(reinterpret_cast<const std::uint8_t*>(call.data()), static_cast<std::uint32_t>(call.size()));
    const auto out = std::make_shared<TMemoryBuffer>();
    processor.process(std::make_shared<TBinaryProtocolT<TTransport>>(in),
                      std::make_shared<TBinaryProtocolT<TTransport>>(out), nullptr);
    return out->getBufferAsString();
}

class ReplyBytes : public testing::Test
{
protected:
    std::string cached(const std::string& call) { return bytesOf(cached_, call); }
    std::string generated(const std::string& call) { return bytesOf(generated_, call); }

    /// Every list read with every sequence number, first from the handler and then from the cache.
    void compare()
    {
        lists->cache = std::make_shared<ReplyCache>();
        for (const std::int32_t sequence : kSequences) {
            for (int repetition = 0; repetition < 2; ++repetition) {
                for (const std::string& call :
                     {wire::call("ListAllDisks", sequence), wire::call("GetAllPartitionInfo", sequence),
                      wire::call("ListPartitionsOnDisk", sequence, Fields().number(1, 0)),
                      wire::call("ListPartitionsOnDisk", sequence, Fields().number(1, 1)),
                      wire::call("ListPartitionsOnDisk", sequence, Fields().number(1, -1))})
                    ASSERT_EQ(cached(call), generated(call));
            }
        }
    }

    std::shared_ptr<Lists> lists = std::make_shared<Lists>();

private:
    ToolProcessor cached_{lists};
    ZORNativePluginProcessor generated_{lists};
};

// Sets every field. The flags alternate, so that two of them cannot be confused.
DiskInfo disk(const std::string& text, std::int64_t size, std::int32_t number, bool flag)
{
    DiskInfo record;
    record.diskLabel = text;
    record.diskIndex = number;
    record.partitionCount = number;
    record.totalCapacity = size;
    record.displayTotalCapacity = text;
    record.usedSize = size;
    record.displayUsedSize = text;
    record.availableSpace = size;
    record.displayAvailableSpace = text;
    record.isUninitialized = flag;
    record.isGpt = !flag;
    record.isMbr = flag;
    record.isStorageSpace = !flag;
    record.isDynamic = flag;
    record.isReadOnly = !flag;
    record.isOffline = flag;
    record.isBadDisk = !flag;
    record.isWriteProtected = flag;
    record.isRemovable = !flag;
    record.isVhd = flag;
    record.isVmd = !flag;
    record.isVirtualDisk = flag;
    record.isUsb = !flag;
    record.isSsd = flag;
    record.existsBitLocker = !flag;
    record.isLowSpace = flag;
    record.not4kAligned = !flag;
    record.emptyPartitionCount = number;
    record.diskLabel = text;
    return record;
}

PartitionInfo partition(const std::string& text, std::int64_t size, std::int32_t number, bool flag)
{
    PartitionInfo record;
    record.isUnallocated = flag;
    record.diskIndex = number;
    record.partitionIndex = number;
    record.rawCapacity = size;
    record.displayRawCapacity = text;
    record.dynamicVolumeSize = size;
    record.displayDynamicVolumeSize = text;
    record.usedSize = size;
    record.displayUsedSize = text;
    record.freeSize = size;
    record.displayFreeSize = text;
    record.startingOffset = size;
    record.sectorSize = number;
    record.clusterSize = number;
    record.dbrStartSector = size;
    record.startSector = size;
    record.endSector = size;
    record.isUnformatted = !flag;
    record.isRawPartition = flag;
    record.isBitlockerEncrypted = !flag;
    record.isReadOnly = flag;
    record.isHidden = !flag;
    record.isActive = flag;
    record.isCurrentSystemPartition = !flag;
    record.isCurrentBootPartition = flag;
    record.isBootPartitionContainer = !flag;
    record.isPrimary = flag;
    record.isLogical = !flag;
    record.isGpt = flag;
    record.isMbr = !flag;
    record.isStorageSpace = flag;
    record.isDynamic = !flag;
    record.isRemovable = flag;
    record.isBadPartition = !flag;
    record.requiresSectorBySector = flag;
    record.isOfflineBootPartition = !flag;
    record.isLowSpace = flag;
    record.gptReserved = !flag;
    record.gptEfi = flag;
    record.gptRecovery = !flag;
    record.partitionGuid = text;
    record.bitlockerState = text;
    record.driveLetter = text;
    record.label = text;
    record.fileSystemType = text;
    record.dynamicVolumeType = text;
    return record;
}

TEST_F(ReplyBytes, EachShapeOfARecord_IsEncodedAsByTheGeneratedProcessor)
{
    const std::string texts[] = {"",
                                 "C:",
                                 std::string("a\0b", 3),
                                 "Datentr\xc3\xa4ger \xf0\x9f\x92\xbe",
                                 "\xff\xfe",
                                 std::string(5000, 'x')};
    const std::int64_t sizes[] = {0, -1, 512, std::numeric_limits<std::int64_t>::max(),
                                  std::numeric_limits<std::int64_t>::min()};
    for (const std::string& text : texts) {
        for (const std::int64_t size : sizes) {
            lists->disks = {disk(text, size, 0, true), disk("", 0, -1, false)};
            lists->partitions = {partition(text, size, 0, false), partition("", ~size, 0, true),
                                 partition(text, 1, 1, true)};
            compare();
        }
    }
}

TEST_F(ReplyBytes, EmptyInventory_HasEmptyLists)
{
    compare();
    EXPECT_EQ(cached(wire::call("ListAllDisks", 5)),
              wire::strictHeader("ListAllDisks", 5, wire::Reply) +
                  Fields().raw(wire::List, 0, std::string("\x0c\0\0\0\0", 5)).end());
    EXPECT_EQ(lists->cache->byteCount(), 0U);
}

TEST_F(ReplyBytes, ManyRecords_AreEqual)
{
    for (int i = 0; i < 1000; ++i)
        lists->partitions.push_back(partition(std::to_string(i), i, i % 3, i % 2 == 0));
    compare();
}

TEST_F(ReplyBytes, LaterCalls_DoNotReadTheHandler)
{
    lists->disks = {disk("A", 1, 0, true)};
    lists->partitions = {partition("C:", 1, 0, false), partition("D:", 2, 1, false)};
    for (int repetition = 0; repetition < 3; ++repetition) {
        cached(wire::call("ListAllDisks", repetition));
        cached(wire::call("GetAllPartitionInfo", repetition));
        cached(wire::call("ListPartitionsOnDisk", repetition, Fields().number(1, 0)));
        cached(wire::call("ListPartitionsOnDisk", repetition, Fields().number(1, 1)));
    }
    EXPECT_EQ(lists->reads, 4);
    lists->cache = std::make_shared<ReplyCache>();
    lists->disks.front().diskLabel = "B";
    const std::string reply = cached(wire::call("ListAllDisks", 9));
    EXPECT_EQ(lists->reads, 5);
    EXPECT_EQ(reply, generated(wire::call("ListAllDisks", 9)));
}

TEST_F(ReplyBytes, ListsOfUnknownDisks_AreNotKept)
{
    for (int number = 0; number < 1000; ++number)
        cached(wire::call("ListPartitionsOnDisk", number, Fields().number(1, number)));
    EXPECT_EQ(lists->cache->byteCount(), 0U);
    EXPECT_EQ(lists->reads, 1000);
}

TEST_F(ReplyBytes, ExceptionOfTheHandler_HasTheSameReplyAndIsNotKept)
{
    lists->disks = {disk("A", 1, 0, true)};
    lists->fails = true;
    const std::string call = wire::call("ListAllDisks", 3);
    EXPECT_EQ(cached(call), generated(call));
    lists->fails = false;
    EXPECT_EQ(cached(call), generated(call));
}

TEST_F(ReplyBytes, ArgumentOfAnotherTypeOrMissing_IsReadAsZero)
{
    lists->partitions = {partition("C:", 1, 0, false), partition("D:", 2, 1, false)};
    const std::string first = cached(wire::call("ListPartitionsOnDisk", 4, Fields().number(1, 0)));
    EXPECT_EQ(cached(wire::call("ListPartitionsOnDisk", 4, Fields().string(1, "1"))), first);
    EXPECT_EQ(cached(wire::call("ListPartitionsOnDisk", 4)), first);
    EXPECT_NE(cached(wire::call("ListPartitionsOnDisk", 4, Fields().number(1, 1))), first);
}

TEST_F(ReplyBytes, TruncatedCall_HasNoReply)
{
    const std::string call = wire::call("ListAllDisks", 4);
    EXPECT_THROW(cached(call.substr(0, call.size() - 1)), thrift::TException);
    EXPECT_EQ(lists->reads, 0);
}

TEST_F(ReplyBytes, HandlerWithoutACache_IsReadEachTime)
{
    lists->disks = {disk("A", 1, 0, true)};
    lists->cache = nullptr;
    const std::string call = wire::call("ListAllDisks", 8);
    EXPECT_EQ(cached(call), generated(call));
    EXPECT_EQ(cached(call), generated(call));
    EXPECT_EQ(lists->reads, 4);
}

TEST_F(ReplyBytes, RepliesBeyondTheLimitOfTheCache_AreSentButNotKept)
{
    lists->disks = {disk(std::string(ReplyCache::kMaxBytes / 3, 'x'), 1, 0, true)};
    const std::string call = wire::call("ListAllDisks", 8);
    EXPECT_EQ(cached(call), generated(call));
    EXPECT_EQ(lists->cache->byteCount(), 0U);
    EXPECT_EQ(cached(call), generated(call));
}

TEST_F(ReplyBytes, LongReplyOverASocket_IsEqualForAFastAndASlowClient)
{
    for (int i = 0; i < 10000; ++i)
        lists->partitions.push_back(partition(std::to_string(i), i, i % 3, i % 2 == 0));
    const HandlerServer server(lists);
    for (const int pauseMs : {0, 700}) {
        const std::string call = wire::call("GetAllPartitionInfo", pauseMs);
        RawClient client(server.port());
        client.send(call);
        // Longer than the time limit of one send, so that the reply is sent in parts.
        QThread::msleep(static_cast<unsigned long>(pauseMs));
        // As one block: reading half a million fields takes minutes under Wine.
        const std::string expected = generated(call);
        EXPECT_TRUE(client.take(expected.size()) == expected) << pauseMs;
        EXPECT_FALSE(client.hasInput());
    }
}

// A socket that counts its writes.
class CountingTransport : public thrift::transport::TVirtualTransport<CountingTransport>
{
public:
    bool isOpen() const override { return true; }
    void write(const std::uint8_t*, std::uint32_t length)
    {
        ++writes;
        bytes += length;
    }
    int writes = 0;
    std::uint64_t bytes = 0;
};

int writesOf(const std::shared_ptr<Lists>& lists, const std::string& call)
{
    ToolProcessor processor(lists);
    const auto in = std::make_shared<TMemoryBuffer>();
    in->write(reinterpret_cast<const std::uint8_t*>(call.data()), static_cast<std::uint32_t>(call.size()));
    const auto socket = std::make_shared<CountingTransport>();
    const auto out = StreamTransportFactory().getTransport(socket);
    processor.process(std::make_shared<TBinaryProtocolT<TTransport>>(in),
                      std::make_shared<TBinaryProtocolT<TTransport>>(out), nullptr);
    EXPECT_GT(socket->bytes, 0U);
    return socket->writes;
}

TEST(ReplyWrites, ReplyOf24Disks_IsOneWriteAndALargeOneAtMostTwo)
{
    const auto lists = std::make_shared<Lists>();
    for (int i = 0; i < 24; ++i)
        lists->disks.push_back(disk("Disk " + std::to_string(i), i, i, true));
    for (int i = 0; i < 10000; ++i)
        lists->partitions.push_back(partition(std::to_string(i), i, 0, true));
    EXPECT_EQ(writesOf(lists, wire::call("ListAllDisks", 1)), 1);
    EXPECT_LE(writesOf(lists, wire::call("GetAllPartitionInfo", 1)), 2);
}

} // namespace

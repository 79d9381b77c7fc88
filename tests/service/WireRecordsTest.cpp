// The generated record classes, and the dispatch of calls to a handler: arguments, results and exceptions.
#include "tests/support/Answers.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/RawClient.h"

#include <thrift/TApplicationException.h>

#include <gtest/gtest.h>

#include <mutex>
#include <sstream>
#include <stdexcept>

namespace {

using wire::Fields;

// Records its calls; some operations throw.
class RecordingHandler : public ZORNativePluginNull
{
public:
    void PreProcessing(TaskInfo& out, const std::string& toolCalls) override
    {
        record("PreProcessing(" + toolCalls + ")");
        out.__set_allow(true);
        out.__set_reasons("because");
    }
    void FormatPartition(std::string& out, const std::string& letter, const std::string& fileSystem,
                         const std::string& label, int32_t clusterSize, bool quick) override
    {
        std::ostringstream text;
        text << letter << '|' << fileSystem << '|' << label << '|' << clusterSize << '|' << quick;
        record(text.str());
        out = text.str();
    }
    void GetPartitionInfo(PartitionInfo&, const std::string& letter) override
    {
        throw std::runtime_error("no partition " + letter);
    }
    bool Init() override { throw std::runtime_error("h\xc3\xa4ngt"); }
    void ListAllDisks(std::vector<DiskInfo>& out) override
    {
        out.resize(2);
        out[1].serialNumber = "S2";
        throw std::bad_alloc();
    }
    std::vector<std::string> calls() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return calls_;
    }

private:
    void record(const std::string& text)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        calls_.push_back(text);
    }
    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
};

template <class Record> std::string printed(const Record& record)
{
    std::ostringstream text;
    text << record;
    return text.str();
}

TEST(WireRecords, TaskInfo_PrintsItsFieldsByNameAndBoolsAsNumbers)
{
    TaskInfo info;
    EXPECT_EQ(printed(info), "TaskInfo(allow=0, reasons=)");
    info.__set_allow(true);
    info.__set_reasons("wait");
    EXPECT_EQ(printed(info), "TaskInfo(allow=1, reasons=wait)");
}

TEST(WireRecords, DiskInfo_PrintsAllItsFieldsInIdOrder)
{
    EXPECT_EQ(
        printed(DiskInfo()),
        "DiskInfo(diskLabel=, diskIndex=0, partitionCount=0, totalCapacity=0, displayTotalCapacity=, "
        "usedSize=0, displayUsedSize=, availableSpace=0, displayAvailableSpace=, isUninitialized=0, isGpt=0, "
        "isMbr=0, isStorageSpace=0, isDynamic=0, isReadOnly=0, isOffline=0, isBadDisk=0, isWriteProtected=0, "
        "isRemovable=0, isVhd=0, isVmd=0, isVirtualDisk=0, isUsb=0, isSsd=0, existsBitLocker=0, "
        "isLowSpace=0, "
        "not4kAligned=0, emptyPartitionCount=0, serialNumber=)");
}

TEST(WireRecords, PartitionInfo_PrintsAllItsFieldsInIdOrder)
{
    EXPECT_EQ(
        printed(PartitionInfo()),
        "PartitionInfo(isUnallocated=0, diskIndex=0, partitionIndex=0, rawCapacity=0, displayRawCapacity=, "
        "dynamicVolumeSize=0, displayDynamicVolumeSize=, usedSize=0, displayUsedSize=, freeSize=0, "
        "displayFreeSize=, startingOffset=0, sectorSize=0, clusterSize=0, dbrStartSector=0, startSector=0, "
        "endSector=0, isUnformatted=0, isRawPartition=0, isBitlockerEncrypted=0, isReadOnly=0, isHidden=0, "
        "isActive=0, isCurrentSystemPartition=0, isCurrentBootPartition=0, isBootPartitionContainer=0, "
        "isPrimary=0, isLogical=0, isGpt=0, isMbr=0, isStorageSpace=0, isDynamic=0, isRemovable=0, "
        "isBadPartition=0, requiresSectorBySector=0, isOfflineBootPartition=0, isLowSpace=0, gptReserved=0, "
        "gptEfi=0, gptRecovery=0, partitionGuid=, bitlockerState=, driveLetter=, label=, fileSystemType=, "
        "dynamicVolumeType=)");
}

TEST(WireRecords, Equality_ComparesFieldsAndIgnoresIsset)
{
    TaskInfo plain;
    TaskInfo flagged;
    flagged.__isset.allow = true;
    EXPECT_TRUE(plain == flagged);
    flagged.__set_reasons("x");
    EXPECT_FALSE(plain == flagged);

    PartitionInfo one;
    PartitionInfo other;
    other.__isset.driveLetter = true;
    EXPECT_TRUE(one == other);
    other.dynamicVolumeType = "BASIC";
    EXPECT_FALSE(one == other);
}

TEST(WireRecords, CopyAssignmentAndSwap_TransferFieldsAndIsset)
{
    DiskInfo disk;
    disk.__set_serialNumber("S1");
    disk.__set_totalCapacity(std::int64_t(1) << 42);
    disk.__isset.serialNumber = true;
    DiskInfo copy(disk);
    EXPECT_EQ(copy, disk);
    EXPECT_TRUE(copy.__isset.serialNumber);
    DiskInfo other;
    swap(copy, other);
    EXPECT_EQ(other, disk);
    EXPECT_EQ(copy, DiskInfo());
    copy = other;
    EXPECT_EQ(copy, disk);
}

TEST(WireRecords, Read_SetsIssetOfReceivedFieldsAndSkipsUnknownAndMistypedOnes)
{
    const std::string bytes = Fields()
                                  .string(29, "S1")
                                  .number(500, 1)
                                  .string(4, "not a number")
                                  .raw(wire::Struct, 30, Fields().number(1, 1).end())
                                  .boolean(24, true)
                                  .end();
    const auto memory = std::make_shared<apache::thrift::transport::TMemoryBuffer>();
    memory->write(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                  static_cast<std::uint32_t>(bytes.size()));
    apache::thrift::protocol::TBinaryProtocol protocol(memory);
    DiskInfo disk;
    EXPECT_EQ(disk.read(&protocol), bytes.size());
    EXPECT_EQ(disk.serialNumber, "S1");
    EXPECT_TRUE(disk.__isset.serialNumber);
    EXPECT_TRUE(disk.isSsd);
    EXPECT_TRUE(disk.__isset.isSsd);
    EXPECT_EQ(disk.totalCapacity, 0);
    EXPECT_FALSE(disk.__isset.totalCapacity);
    EXPECT_FALSE(disk.__isset.diskLabel);
}

TEST(WireDispatch, ArgumentsOfEachType_ReachTheHandlerAndItsResultIsReturned)
{
    const auto handler = std::make_shared<RecordingHandler>();
    HandlerServer server(handler);
    GeneratedClient client(server.port());
    std::string answer;
    client->FormatPartition(answer, "D", "NTFS", "gr\xc3\xbc\xc3\x9f\x65", 4096, true);
    EXPECT_EQ(answer, "D|NTFS|gr\xc3\xbc\xc3\x9f\x65|4096|1");
    client->FormatPartition(answer, "", "", "", -1, false);
    EXPECT_EQ(answer, "|||-1|0");
}

TEST(WireDispatch, PreProcessingWithoutField1_PassesAnEmptyString)
{
    const auto handler = std::make_shared<RecordingHandler>();
    HandlerServer server(handler);
    RawClient client(server.port());
    const wire::Message reply = client.ask(wire::call("PreProcessing", 1));
    EXPECT_EQ(handler->calls(), std::vector<std::string>{"PreProcessing()"});
    EXPECT_EQ(reply.raw,
              wire::strictHeader("PreProcessing", 1, wire::Reply) +
                  Fields().raw(wire::Struct, 0, Fields().boolean(1, true).string(2, "because").end()).end());
}

TEST(WireDispatch, HandlerException_IsAnsweredWithItsMessageAndTheConnectionStaysOpen)
{
    HandlerServer server(std::make_shared<RecordingHandler>());
    RawClient client(server.port());
    EXPECT_EQ(client.ask(wire::call("GetPartitionInfo", 31, Fields().string(1, "X"))).raw,
              wire::strictHeader("GetPartitionInfo", 31, wire::Exception) +
                  Fields().string(1, "no partition X").number(2, 0).end());
    EXPECT_EQ(client.ask(wire::call("Init", 32)).raw,
              wire::strictHeader("Init", 32, wire::Exception) +
                  Fields().string(1, "h\xc3\xa4ngt").number(2, 0).end());
    EXPECT_EQ(client.ask(wire::call("PreProcessing", 33)).type, wire::Reply);
}

TEST(WireDispatch, HandlerOutOfMemory_IsAnsweredWithAnException)
{
    HandlerServer server(std::make_shared<RecordingHandler>());
    RawClient client(server.port());
    EXPECT_EQ(client.ask(wire::call("ListAllDisks", 1)).raw,
              wire::strictHeader("ListAllDisks", 1, wire::Exception) +
                  Fields().string(1, std::bad_alloc().what()).number(2, 0).end());
    EXPECT_EQ(client.ask(wire::call("PreProcessing", 2)).type, wire::Reply);
}

TEST(WireDispatch, GeneratedClient_ThrowsTheHandlersException)
{
    HandlerServer server(std::make_shared<RecordingHandler>());
    GeneratedClient client(server.port());
    try {
        client->Init();
        FAIL() << "Init did not throw";
    } catch (const apache::thrift::TApplicationException& exception) {
        EXPECT_EQ(exception.getType(), apache::thrift::TApplicationException::UNKNOWN);
        EXPECT_STREQ(exception.what(), "h\xc3\xa4ngt");
    }
    std::string answer;
    client->FormatPartition(answer, "D", "NTFS", "", 0, true);
    EXPECT_EQ(answer, "D|NTFS||0|1");
}

TEST(WireDispatch, NullHandler_ReturnsFalseAndEmpty)
{
    HandlerServer server(std::make_shared<ZORNativePluginNull>());
    GeneratedClient client(server.port());
    EXPECT_FALSE(client->Init());
    EXPECT_FALSE(client->PostProcessing(answers::queued));
    TaskInfo info;
    client->PreProcessing(info, "x");
    EXPECT_EQ(info, TaskInfo());
    std::string answer = "before";
    client->WipeDisk(answer, 1, 2);
    EXPECT_EQ(answer, "");
}

} // namespace

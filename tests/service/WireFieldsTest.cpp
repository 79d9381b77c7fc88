// Each argument of each method and each field of each record, encoded by hand: id, type code and position.
// The server skips a value with any other type code.
#include "tests/support/HandlerServer.h"
#include "tests/support/Interface.h"
#include "tests/support/RawClient.h"

#include <thrift/transport/TBufferTransports.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <mutex>
#include <sstream>

namespace {

using wire::Fields;
using wire::Type;

Type wireType(const std::string& type)
{
    static const std::map<std::string, Type> types{
        {"bool", wire::Bool}, {"i32", wire::I32}, {"i64", wire::I64}, {"string", wire::String}};
    const auto found = types.find(type);
    if (found != types.end())
        return found->second;
    return type.rfind("list<", 0) == 0 ? wire::List : wire::Struct;
}

// The value of every 64-bit field and argument is this base plus the id.
const std::vector<std::int64_t> kBigBases{
    std::int64_t(1) << 31,
    std::int64_t(1) << 32,
    std::int64_t(5) << 40,
    std::numeric_limits<std::int64_t>::max() - 100,
    std::numeric_limits<std::int64_t>::min() + 100,
    -(std::int64_t(1) << 31) - 200,
};

std::int32_t numberOf(int id)
{
    return 70000 + id;
}

std::string stringOf(int id)
{
    return "text " + std::to_string(id);
}

// The bytes of a value under each type code of the protocol.
std::string valueBytes(int type, int id, std::int64_t bigBase)
{
    constexpr int byte = 3;
    constexpr int real = 4;
    constexpr int i16 = 6;
    constexpr int map = 13;
    switch (type) {
    case wire::Bool:
    case byte:
        return "\1";
    case i16:
        return "\1\1";
    case wire::I32:
        return wire::i32(numberOf(id));
    case wire::I64:
    case real:
        return wire::i64(bigBase + id);
    case wire::String:
        return wire::text(stringOf(id));
    case wire::Struct:
        return Fields().number(id, 5).end();
    case map:
        return std::string{char(wire::I32), char(wire::I32)} + wire::i32(1) + wire::i32(7) + wire::i32(7);
    default: // list and set
        return std::string(1, char(wire::I32)) + wire::i32(2) + wire::i32(7) + wire::i32(7);
    }
}

const std::vector<int> kTypeCodes{2, 3, 4, 6, 8, 10, 11, 12, 13, 14, 15};

// The value as EchoHandler prints it.
std::string printedValue(const InterfaceArgument& argument, std::int64_t bigBase)
{
    switch (wireType(argument.type)) {
    case wire::Bool:
        return "1";
    case wire::I32:
        return std::to_string(numberOf(argument.id));
    case wire::I64:
        return std::to_string(bigBase + argument.id);
    default:
        return stringOf(argument.id);
    }
}

std::string printedDefault(const InterfaceArgument& argument)
{
    return argument.type == "string" ? "" : "0";
}

// Records the method and its arguments in the order of the parameters.
class EchoHandler : public ZORNativePluginNull
{
public:
#include "EchoMethods.inc"

    std::string lastCall() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return lastCall_;
    }

    // The answers; written only between calls.
    DiskInfo disk;
    PartitionInfo partition;
    TaskInfo task;

private:
    void answer(std::string& out, const std::string& call) const
    {
        out = call;
    }
    void answer(TaskInfo& out, const std::string&) const
    {
        out = task;
    }
    void answer(PartitionInfo& out, const std::string&) const
    {
        out = partition;
    }
    void answer(std::vector<DiskInfo>& out, const std::string&) const
    {
        out = {disk, DiskInfo()};
    }
    void answer(std::vector<PartitionInfo>& out, const std::string&) const
    {
        out = {PartitionInfo(), partition};
    }

    template <class... Arguments> std::string echo(const char* method, const Arguments&... arguments)
    {
        std::ostringstream text;
        text << method;
        ((text << '|' << arguments), ...);
        const std::lock_guard<std::mutex> lock(mutex_);
        lastCall_ = text.str();
        return lastCall_;
    }

    mutable std::mutex mutex_;
    std::string lastCall_;
};

class WireFields : public testing::Test
{
protected:
    // Returns the call as the handler received it.
    std::string echo(const InterfaceMethod& method, const Fields& fields)
    {
        const wire::Message reply = client.ask(wire::call(method.name, 4, fields));
        EXPECT_EQ(reply.type, wire::Reply) << method.name;
        EXPECT_EQ(reply.body.fieldIds(), std::vector<int>{0}) << method.name;
        return handler->lastCall();
    }

    std::shared_ptr<EchoHandler> handler = std::make_shared<EchoHandler>();
    HandlerServer server{handler};
    RawClient client{server.port()};
};

TEST_F(WireFields, EachArgument_IsReadByIdAndTypeIntoItsParameter)
{
    for (const std::int64_t base : kBigBases) {
        for (const InterfaceMethod& method : interfaceMethods()) {
            Fields fields;
            std::string expected = method.name;
            for (const InterfaceArgument& argument : method.arguments) {
                const Type type = wireType(argument.type);
                fields.raw(type, argument.id, valueBytes(type, argument.id, base));
                expected += '|' + printedValue(argument, base);
            }
            EXPECT_EQ(echo(method, fields), expected);
        }
    }
}

TEST_F(WireFields, EachArgumentWithAnyOtherType_IsSkippedAndTheOthersAreRead)
{
    const std::int64_t base = kBigBases.front();
    for (const InterfaceMethod& method : interfaceMethods()) {
        for (const InterfaceArgument& wrong : method.arguments) {
            for (const int type : kTypeCodes) {
                if (type == wireType(wrong.type))
                    continue;
                Fields fields;
                std::string expected = method.name;
                for (const InterfaceArgument& argument : method.arguments) {
                    const bool isWrong = argument.id == wrong.id;
                    const int sent = isWrong ? type : int(wireType(argument.type));
                    fields.raw(sent, argument.id, valueBytes(sent, argument.id, base));
                    expected += '|' + (isWrong ? printedDefault(argument) : printedValue(argument, base));
                }
                EXPECT_EQ(echo(method, fields), expected) << "type " << type << " for field " << wrong.id;
            }
        }
    }
}

TEST_F(WireFields, ArgumentsWithAdjacentIds_AreSkipped)
{
    for (const InterfaceMethod& method : interfaceMethods()) {
        Fields fields;
        std::string expected = method.name;
        for (const int type : {wire::Bool, wire::I32, wire::I64, wire::String}) {
            fields.raw(type, 0, valueBytes(type, 0, 0));
            fields.raw(type, int(method.arguments.size()) + 1, valueBytes(type, 1, 0));
        }
        for (const InterfaceArgument& argument : method.arguments)
            expected += '|' + printedDefault(argument);
        EXPECT_EQ(echo(method, fields), expected);
    }
}

TEST_F(WireFields, EachResult_HasItsTypeCode)
{
    for (const InterfaceMethod& method : interfaceMethods()) {
        EXPECT_EQ(client.ask(wire::call(method.name, 4)).body.field(0).type, wireType(method.result))
            << method.name;
    }
}

// A field of a record: its wire id and type, and a function that fills the member.
template <class Record> struct RecordField
{
    int id;
    Type type;
    std::function<void(Record&, std::int64_t bigBase)> fill;
};

void fillValue(std::string& member, int id, std::int64_t)
{
    member = stringOf(id);
}
void fillValue(std::int32_t& member, int id, std::int64_t)
{
    member = numberOf(id);
}
void fillValue(std::int64_t& member, int id, std::int64_t bigBase)
{
    member = bigBase + id;
}
void fillValue(bool& member, int, std::int64_t)
{
    member = true;
}

template <class Record, class Member> RecordField<Record> field(int id, Type type, Member Record::*member)
{
    return {id, type, [=](Record& record, std::int64_t base) { fillValue(record.*member, id, base); }};
}

const std::vector<RecordField<DiskInfo>>& fieldsOf(const DiskInfo&)
{
    static const std::vector<RecordField<DiskInfo>> fields{
        field(1, wire::String, &DiskInfo::diskLabel),
        field(2, wire::I32, &DiskInfo::diskIndex),
        field(3, wire::I32, &DiskInfo::partitionCount),
        field(4, wire::I64, &DiskInfo::totalCapacity),
        field(5, wire::String, &DiskInfo::displayTotalCapacity),
        field(6, wire::I64, &DiskInfo::usedSize),
        field(7, wire::String, &DiskInfo::displayUsedSize),
        field(8, wire::I64, &DiskInfo::availableSpace),
        field(9, wire::String, &DiskInfo::displayAvailableSpace),
        field(10, wire::Bool, &DiskInfo::isUninitialized),
        field(11, wire::Bool, &DiskInfo::isGpt),
        field(12, wire::Bool, &DiskInfo::isMbr),
        field(13, wire::Bool, &DiskInfo::isStorageSpace),
        field(14, wire::Bool, &DiskInfo::isDynamic),
        field(15, wire::Bool, &DiskInfo::isReadOnly),
        field(16, wire::Bool, &DiskInfo::isOffline),
        field(17, wire::Bool, &DiskInfo::isBadDisk),
        field(18, wire::Bool, &DiskInfo::isWriteProtected),
        field(19, wire::Bool, &DiskInfo::isRemovable),
        field(20, wire::Bool, &DiskInfo::isVhd),
        field(21, wire::Bool, &DiskInfo::isVmd),
        field(22, wire::Bool, &DiskInfo::isVirtualDisk),
        field(23, wire::Bool, &DiskInfo::isUsb),
        field(24, wire::Bool, &DiskInfo::isSsd),
        field(25, wire::Bool, &DiskInfo::existsBitLocker),
        field(26, wire::Bool, &DiskInfo::isLowSpace),
        field(27, wire::Bool, &DiskInfo::not4kAligned),
        field(28, wire::I32, &DiskInfo::emptyPartitionCount),
        field(29, wire::String, &DiskInfo::serialNumber),
    };
    return fields;
}

const std::vector<RecordField<PartitionInfo>>& fieldsOf(const PartitionInfo&)
{
    static const std::vector<RecordField<PartitionInfo>> fields{
        field(1, wire::Bool, &PartitionInfo::isUnallocated),
        field(2, wire::I32, &PartitionInfo::diskIndex),
        field(3, wire::I32, &PartitionInfo::partitionIndex),
        field(4, wire::I64, &PartitionInfo::rawCapacity),
        field(5, wire::String, &PartitionInfo::displayRawCapacity),
        field(6, wire::I64, &PartitionInfo::dynamicVolumeSize),
        field(7, wire::String, &PartitionInfo::displayDynamicVolumeSize),
        field(8, wire::I64, &PartitionInfo::usedSize),
        field(9, wire::String, &PartitionInfo::displayUsedSize),
        field(10, wire::I64, &PartitionInfo::freeSize),
        field(11, wire::String, &PartitionInfo::displayFreeSize),
        field(12, wire::I64, &PartitionInfo::startingOffset),
        field(13, wire::I32, &PartitionInfo::sectorSize),
        field(14, wire::I32, &PartitionInfo::clusterSize),
        field(15, wire::I64, &PartitionInfo::dbrStartSector),
        field(16, wire::I64, &PartitionInfo::startSector),
        field(17, wire::I64, &PartitionInfo::endSector),
        field(18, wire::Bool, &PartitionInfo::isUnformatted),
        field(19, wire::Bool, &PartitionInfo::isRawPartition),
        field(20, wire::Bool, &PartitionInfo::isBitlockerEncrypted),
        field(21, wire::Bool, &PartitionInfo::isReadOnly),
        field(22, wire::Bool, &PartitionInfo::isHidden),
        field(23, wire::Bool, &PartitionInfo::isActive),
        field(24, wire::Bool, &PartitionInfo::isCurrentSystemPartition),
        field(25, wire::Bool, &PartitionInfo::isCurrentBootPartition),
        field(26, wire::Bool, &PartitionInfo::isBootPartitionContainer),
        field(27, wire::Bool, &PartitionInfo::isPrimary),
        field(28, wire::Bool, &PartitionInfo::isLogical),
        field(29, wire::Bool, &PartitionInfo::isGpt),
        field(30, wire::Bool, &PartitionInfo::isMbr),
        field(31, wire::Bool, &PartitionInfo::isStorageSpace),
        field(32, wire::Bool, &PartitionInfo::isDynamic),
        field(33, wire::Bool, &PartitionInfo::isRemovable),
        field(34, wire::Bool, &PartitionInfo::isBadPartition),
        field(35, wire::Bool, &PartitionInfo::requiresSectorBySector),
        field(36, wire::Bool, &PartitionInfo::isOfflineBootPartition),
        field(37, wire::Bool, &PartitionInfo::isLowSpace),
        field(38, wire::Bool, &PartitionInfo::gptReserved),
        field(39, wire::Bool, &PartitionInfo::gptEfi),
        field(40, wire::Bool, &PartitionInfo::gptRecovery),
        field(41, wire::String, &PartitionInfo::partitionGuid),
        field(42, wire::String, &PartitionInfo::bitlockerState),
        field(43, wire::String, &PartitionInfo::driveLetter),
        field(44, wire::String, &PartitionInfo::label),
        field(45, wire::String, &PartitionInfo::fileSystemType),
        field(46, wire::String, &PartitionInfo::dynamicVolumeType),
    };
    return fields;
}

const std::vector<RecordField<TaskInfo>>& fieldsOf(const TaskInfo&)
{
    static const std::vector<RecordField<TaskInfo>> fields{
        field(1, wire::Bool, &TaskInfo::allow),
        field(2, wire::String, &TaskInfo::reasons),
    };
    return fields;
}

template <class Record> Record filled(std::int64_t bigBase)
{
    Record record;
    for (const auto& entry : fieldsOf(record))
        entry.fill(record, bigBase);
    return record;
}

// The encoded record. A bool is true if its id is trueId, or if trueId is 0.
template <class Record> std::string recordBytes(std::int64_t bigBase, int trueId = 0)
{
    Fields bytes;
    for (const auto& entry : fieldsOf(Record())) {
        if (entry.type == wire::Bool)
            bytes.boolean(entry.id, trueId == 0 || entry.id == trueId);
        else
            bytes.raw(entry.type, entry.id, valueBytes(entry.type, entry.id, bigBase));
    }
    return bytes.end();
}

std::string listBytes(const std::vector<std::string>& records)
{
    std::string bytes = std::string(1, char(wire::Struct)) + wire::i32(std::int32_t(records.size()));
    for (const std::string& record : records)
        bytes += record;
    return bytes;
}

template <class Record> std::string defaultBytes()
{
    Fields bytes;
    for (const auto& entry : fieldsOf(Record()))
        bytes.raw(entry.type, entry.id,
                  std::string(entry.type == wire::Bool  ? 1
                              : entry.type == wire::I64 ? 8
                                                        : 4,
                              '\0'));
    return bytes.end();
}

std::string reply(const std::string& method, int type, const std::string& bytes)
{
    return wire::strictHeader(method, 4, wire::Reply) + Fields().raw(type, 0, bytes).end();
}

TEST_F(WireFields, EachFieldOfARecordInAReply_HasItsIdTypeAndWholeValue)
{
    ASSERT_EQ(fieldsOf(DiskInfo()).size(), 29u);
    ASSERT_EQ(fieldsOf(PartitionInfo()).size(), 46u);
    ASSERT_EQ(fieldsOf(TaskInfo()).size(), 2u);
    for (const std::int64_t base : kBigBases) {
        handler->disk = filled<DiskInfo>(base);
        handler->partition = filled<PartitionInfo>(base);
        handler->task = filled<TaskInfo>(base);
        const std::string disk = recordBytes<DiskInfo>(base);
        const std::string partition = recordBytes<PartitionInfo>(base);
        EXPECT_EQ(client.ask(wire::call("ListAllDisks", 4)).raw,
                  reply("ListAllDisks", wire::List, listBytes({disk, defaultBytes<DiskInfo>()})));
        const std::string partitions = listBytes({defaultBytes<PartitionInfo>(), partition});
        for (const char* method : {"ListPartitionsOnDisk", "GetAllPartitionInfo"})
            EXPECT_EQ(client.ask(wire::call(method, 4)).raw, reply(method, wire::List, partitions));
        EXPECT_EQ(client.ask(wire::call("GetPartitionInfo", 4)).raw,
                  reply("GetPartitionInfo", wire::Struct, partition));
        EXPECT_EQ(client.ask(wire::call("PreProcessing", 4)).raw,
                  reply("PreProcessing", wire::Struct, recordBytes<TaskInfo>(base)));
    }
}

// One flag at a time, because two swapped flags are indistinguishable while both are true.
template <class Record, class Ask> void expectEachFlagAlone(Record& answer, Ask ask)
{
    const std::int64_t base = kBigBases.front();
    for (const auto& flag : fieldsOf(Record())) {
        if (flag.type != wire::Bool)
            continue;
        answer = Record();
        for (const auto& entry : fieldsOf(Record())) {
            if (entry.type != wire::Bool || entry.id == flag.id)
                entry.fill(answer, base);
        }
        EXPECT_EQ(ask(), recordBytes<Record>(base, flag.id)) << flag.id;
    }
}

TEST_F(WireFields, EachFlagOfARecordInAReply_HasItsOwnId)
{
    const auto body = [&](const std::string& method, std::size_t prefix) {
        const std::string raw = client.ask(wire::call(method, 4)).raw;
        // Strips the message header, the header of the result field and the stop byte.
        const std::size_t start = wire::strictHeader(method, 4).size() + 3 + prefix;
        return raw.substr(start, raw.size() - start - 1);
    };
    expectEachFlagAlone(handler->partition, [&] { return body("GetPartitionInfo", 0); });
    expectEachFlagAlone(handler->task, [&] { return body("PreProcessing", 0); });
    expectEachFlagAlone(handler->disk, [&] {
        const std::string list = body("ListAllDisks", 5);
        return list.substr(0, list.size() - defaultBytes<DiskInfo>().size());
    });
}

template <class Record> Record readRecord(const std::string& bytes)
{
    const auto memory = std::make_shared<apache::thrift::transport::TMemoryBuffer>();
    memory->write(reinterpret_cast<const std::uint8_t*>(bytes.data()), std::uint32_t(bytes.size()));
    apache::thrift::protocol::TBinaryProtocol protocol(memory);
    Record record;
    EXPECT_EQ(record.read(&protocol), bytes.size());
    return record;
}

template <class Record> void expectEachFieldReadWithItsTypeOnly()
{
    for (const auto& entry : fieldsOf(Record())) {
        for (const std::int64_t base : kBigBases) {
            Record expected;
            entry.fill(expected, base);
            EXPECT_EQ(readRecord<Record>(
                          Fields().raw(entry.type, entry.id, valueBytes(entry.type, entry.id, base)).end()),
                      expected)
                << entry.id;
        }
        for (const int type : kTypeCodes) {
            if (type == entry.type)
                continue;
            EXPECT_EQ(readRecord<Record>(Fields().raw(type, entry.id, valueBytes(type, entry.id, 1)).end()),
                      Record())
                << "type " << type << " for field " << entry.id;
        }
    }
}

TEST_F(WireFields, EachFieldOfARecord_IsReadWithItsTypeAndSkippedWithAnyOther)
{
    expectEachFieldReadWithItsTypeOnly<DiskInfo>();
    expectEachFieldReadWithItsTypeOnly<PartitionInfo>();
    expectEachFieldReadWithItsTypeOnly<TaskInfo>();
}

} // namespace

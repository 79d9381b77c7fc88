// The wire format with hand-encoded messages: headers, sequence ids, and missing, mistyped and unknown
// fields. The server is the real service.
#include "tests/support/Answers.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using wire::Fields;
using wire::Message;

class WireForm : public testing::Test
{
protected:
    WireForm()
    {
        host_.build();
        host_.bridge()->setDiskInfo({disk(0, QStringLiteral("C")), disk(1, QStringLiteral("D"))});
        service_ = std::make_unique<ServiceRunner>(host_.bridge());
    }

    static QVariantMap disk(int index, const QString& letter)
    {
        const QVariantMap partition{{QStringLiteral("diskIndex"), index},
                                    {QStringLiteral("driveLetter"), letter},
                                    {QStringLiteral("size"), qlonglong(5) << 40}};
        return {{QStringLiteral("diskIndex"), index},
                {QStringLiteral("partitions"), QVariantList{partition}}};
    }

    int port() const { return service_->port(); }

    RecordingHost host_;
    std::unique_ptr<ServiceRunner> service_;
};

// The encoded reply of a bool method.
std::string boolReply(const std::string& method, std::int32_t sequence, bool value)
{
    return wire::strictHeader(method, sequence, wire::Reply) + Fields().boolean(0, value).end();
}

// The encoded reply to an unknown method.
std::string unknownMethodReply(const std::string& method, std::int32_t sequence)
{
    return wire::strictHeader(method, sequence, wire::Exception) +
           Fields().string(1, "Invalid method name: '" + method + "'").number(2, 1).end();
}

TEST_F(WireForm, StrictHeader_IsAnsweredWithAStrictHeader)
{
    RawClient client(port());
    EXPECT_EQ(client.ask(wire::call("Init", 7)).raw, boolReply("Init", 7, true));
}

TEST_F(WireForm, OldHeaderWithoutVersion_IsAnsweredWithAStrictHeader)
{
    RawClient client(port());
    EXPECT_EQ(client.ask(wire::oldHeader("Init", 8) + Fields().end()).raw, boolReply("Init", 8, true));
    EXPECT_EQ(client.ask(wire::call("Init", 9)).raw, boolReply("Init", 9, true));
}

TEST_F(WireForm, AnySequenceId_IsEchoed)
{
    RawClient client(port());
    for (const std::int32_t sequence : {0, 1, -1, 0x7fffffff, std::int32_t(-0x7fffffff - 1), 1, 1})
        EXPECT_EQ(client.ask(wire::call("Init", sequence)).sequence, sequence);
}

TEST_F(WireForm, UnknownMethod_IsAnsweredWithAnExceptionAndTheNextCallSucceeds)
{
    RawClient client(port());
    const Fields arguments =
        Fields().string(1, "D").number(2, 5).raw(wire::Struct, 3, Fields().big(9, 1).end());
    EXPECT_EQ(client.ask(wire::call("UnknownMethod", 21, arguments)).raw,
              unknownMethodReply("UnknownMethod", 21));
    EXPECT_EQ(client.ask(wire::call("Init", 22)).raw, boolReply("Init", 22, true));
}

TEST_F(WireForm, MethodNameInAnotherCaseOrWithPrefix_IsUnknown)
{
    RawClient client(port());
    for (const std::string name :
         {"init", "INIT", "ZORNativePlugin:Init", "ZORNativePlugin.Init", "Init ", ""})
        EXPECT_EQ(client.ask(wire::call(name, 3)).raw, unknownMethodReply(name, 3)) << name;
}

TEST_F(WireForm, UnknownMethodWithAnOldHeader_IsAnsweredWithAStrictHeader)
{
    RawClient client(port());
    EXPECT_EQ(client.ask(wire::oldHeader("Nothing", 5) + Fields().end()).raw,
              unknownMethodReply("Nothing", 5));
}

TEST_F(WireForm, ListPartitionsOnDisk_IndexSentAsString_ReturnsThePartitionsOfDiskZero)
{
    RawClient client(port());
    const Message wrong = client.ask(wire::call("ListPartitionsOnDisk", 1, Fields().string(1, "1")));
    const Message zero = client.ask(wire::call("ListPartitionsOnDisk", 1, Fields().number(1, 0)));
    const Message one = client.ask(wire::call("ListPartitionsOnDisk", 1, Fields().number(1, 1)));
    EXPECT_EQ(wrong.raw, zero.raw);
    EXPECT_NE(wrong.raw, one.raw);
    ASSERT_EQ(wrong.body.field(0).items.size(), 1u);
    EXPECT_EQ(wrong.body.field(0).items[0].field(43).bytes, "C");
}

TEST_F(WireForm, FieldOfAnyOtherType_IsSkipped)
{
    RawClient client(port());
    const std::string list = std::string(1, char(wire::I32)) + wire::i32(2) + wire::i32(1) + wire::i32(1);
    const std::vector<Fields> wrong{
        Fields().boolean(1, true),
        Fields().big(1, 1),
        Fields().raw(wire::Struct, 1, Fields().string(1, "x").end()),
        Fields().raw(wire::List, 1, list),
        Fields().raw(3, 1, "\1"),
        Fields().raw(4, 1, wire::i64(1)),
        Fields().raw(6, 1, std::string("\0\1", 2)),
        Fields().raw(14, 1, list),
        Fields().raw(13, 1,
                     std::string{char(wire::I32), char(wire::I32)} + wire::i32(1) + wire::i32(1) +
                         wire::i32(1)),
    };
    for (const Fields& fields : wrong) {
        const Message reply = client.ask(wire::call("ListPartitionsOnDisk", 1, fields));
        ASSERT_EQ(reply.body.field(0).items.size(), 1u);
        EXPECT_EQ(reply.body.field(0).items[0].field(43).bytes, "C");
    }
}

TEST_F(WireForm, UnknownFields_AreSkipped)
{
    RawClient client(port());
    const Fields fields = Fields()
                              .number(9, 5)
                              .number(-3, 5)
                              .raw(wire::Struct, 32000, Fields().string(1, "x").end())
                              .number(1, 1)
                              .string(2, "more");
    const Message reply = client.ask(wire::call("ListPartitionsOnDisk", 1, fields));
    ASSERT_EQ(reply.body.field(0).items.size(), 1u);
    EXPECT_EQ(reply.body.field(0).items[0].field(43).bytes, "D");
}

TEST_F(WireForm, FieldSentTwice_LastValueIsUsed)
{
    RawClient client(port());
    const Message reply =
        client.ask(wire::call("ListPartitionsOnDisk", 1, Fields().number(1, 0).number(1, 1)));
    ASSERT_EQ(reply.body.field(0).items.size(), 1u);
    EXPECT_EQ(reply.body.field(0).items[0].field(43).bytes, "D");
}

TEST_F(WireForm, MissingFields_DefaultToFalseZeroAndEmpty)
{
    RawClient client(port());
    const Message disk = client.ask(wire::call("ListPartitionsOnDisk", 1));
    ASSERT_EQ(disk.body.field(0).items.size(), 1u);
    EXPECT_EQ(disk.body.field(0).items[0].field(43).bytes, "C");
    const Message letter = client.ask(wire::call("GetPartitionInfo", 2));
    EXPECT_EQ(letter.body.field(0).field(43).bytes, "");
    const Message post = client.ask(wire::call("PostProcessing", 3));
    EXPECT_EQ(post.raw, boolReply("PostProcessing", 3, false));
}

TEST_F(WireForm, FieldsInAnotherOrder_AreRead)
{
    RawClient client(port());
    const Message reply =
        client.ask(wire::call("PostProcessing", 3, Fields().number(7, 1).string(1, answers::queued)));
    EXPECT_EQ(reply.raw, boolReply("PostProcessing", 3, true));
}

TEST_F(WireForm, GetPartitionInfo_UnknownLetter_ReturnsAll46FieldsInOrderWithDefaults)
{
    RawClient client(port());
    const Message reply = client.ask(wire::call("GetPartitionInfo", 1, Fields().string(1, "Q")));
    EXPECT_EQ(reply.type, wire::Reply);
    EXPECT_EQ(reply.body.fieldIds(), std::vector<int>{0});
    const wire::Value record = reply.body.field(0);
    std::vector<int> ids(46);
    std::iota(ids.begin(), ids.end(), 1);
    EXPECT_EQ(record.fieldIds(), ids);
    for (const auto& entry : record.fields) {
        EXPECT_EQ(entry.second.number, 0) << entry.first;
        EXPECT_EQ(entry.second.bytes, "") << entry.first;
    }
}

TEST_F(WireForm, ListAllDisks_EachEntryHasAll29FieldsInOrder)
{
    RawClient client(port());
    const Message reply = client.ask(wire::call("ListAllDisks", 1));
    const wire::Value list = reply.body.field(0);
    EXPECT_EQ(list.itemType, wire::Struct);
    ASSERT_EQ(list.items.size(), 2u);
    std::vector<int> ids(29);
    std::iota(ids.begin(), ids.end(), 1);
    EXPECT_EQ(list.items[0].fieldIds(), ids);
    EXPECT_EQ(list.items[1].field(2).number, 1);
}

TEST_F(WireForm, EmptyList_HasTheElementTypeStruct)
{
    RawClient client(port());
    const Message reply = client.ask(wire::call("ListPartitionsOnDisk", 1, Fields().number(1, 77)));
    EXPECT_EQ(reply.body.fieldIds(), std::vector<int>{0});
    EXPECT_EQ(reply.body.field(0).type, wire::List);
    EXPECT_EQ(reply.body.field(0).itemType, wire::Struct);
    EXPECT_TRUE(reply.body.field(0).items.empty());
}

TEST_F(WireForm, SixtyFourBitSize_IsNotTruncated)
{
    RawClient client(port());
    const Message reply = client.ask(wire::call("GetPartitionInfo", 1, Fields().string(1, "D")));
    EXPECT_EQ(reply.body.field(0).field(4).number, std::int64_t(5) << 40);
}

TEST_F(WireForm, PreProcessingWithoutField1_ReturnsBothFieldsOfTheRecord)
{
    RawClient client(port());
    const Message reply = client.ask(wire::call("PreProcessing", 1));
    EXPECT_EQ(reply.type, wire::Reply);
    EXPECT_EQ(reply.body.field(0).fieldIds(), (std::vector<int>{1, 2}));
}

TEST_F(WireForm, StringOfOneMebibyte_IsAccepted)
{
    RawClient client(port());
    const std::string big(1024 * 1024, 'x');
    EXPECT_EQ(client.ask(wire::call("PostProcessing", 1, Fields().string(1, big))).raw,
              boolReply("PostProcessing", 1, false));
    EXPECT_EQ(client.ask(wire::call(big, 2)).raw, unknownMethodReply(big, 2));
}

TEST_F(WireForm, StringsAroundTheBufferSizeOf512Bytes_AreAccepted)
{
    RawClient client(port());
    for (std::size_t length = 440; length < 560; ++length) {
        const std::string name(length, 'n');
        ASSERT_EQ(client.ask(wire::call(name, 2)).raw, unknownMethodReply(name, 2)) << length;
    }
}

TEST_F(WireForm, TwoCallsInOnePacket_AreAnsweredInOrder)
{
    RawClient client(port());
    client.send(wire::call("Init", 1) + wire::call("PostProcessing", 2, Fields().string(1, answers::queued)));
    EXPECT_EQ(client.receive().raw, boolReply("Init", 1, true));
    EXPECT_EQ(client.receive().raw, boolReply("PostProcessing", 2, true));
}

TEST_F(WireForm, OneCallByteByByte_IsAnswered)
{
    RawClient client(port());
    client.sendByteByByte(wire::call("PostProcessing", 2, Fields().string(1, answers::queued)));
    EXPECT_EQ(client.receive().raw, boolReply("PostProcessing", 2, true));
}

TEST_F(WireForm, CallThenShutdownOfSending_IsStillAnswered)
{
    RawClient client(port());
    client.send(wire::call("Init", 4));
    client.finishSending();
    EXPECT_EQ(client.receive().raw, boolReply("Init", 4, true));
    EXPECT_TRUE(client.isEndedByServer());
}

TEST_F(WireForm, GeneratedClient_ReadsRecordsAndLists)
{
    GeneratedClient client(port());
    EXPECT_TRUE(client->Init());
    std::vector<DiskInfo> disks;
    client->ListAllDisks(disks);
    ASSERT_EQ(disks.size(), 2u);
    EXPECT_EQ(disks[1].diskIndex, 1);
    EXPECT_EQ(disks[1].partitionCount, 1);
    PartitionInfo partition;
    client->GetPartitionInfo(partition, "d");
    EXPECT_EQ(partition.driveLetter, "D");
    std::vector<PartitionInfo> all;
    client->GetAllPartitionInfo(all);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[1], partition);
}

} // namespace

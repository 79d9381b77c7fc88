// Calls and replies as bytes, encoded and decoded by the interface description.
#include "agent/Codec.h"
#include "agent/Call.h"
#include "agent/Failure.h"
#include "agent/JsonWriter.h"
#include "tests/agent/WireBytes.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

#include <gtest/gtest.h>

namespace {

using apache::thrift::protocol::TBinaryProtocol;
using apache::thrift::transport::TMemoryBuffer;
using zorcall::Interface;

QByteArray encode(const std::vector<std::string>& words, std::int32_t sequence, bool allowMissing = false)
{
    const zorcall::Call call = zorcall::parseCall(Interface::builtIn(), words, allowMissing);
    const auto buffer = std::make_shared<TMemoryBuffer>();
    TBinaryProtocol protocol(buffer);
    zorcall::writeCall(protocol, *call.method, call.arguments, sequence);
    return QByteArray::fromStdString(buffer->getBufferAsString());
}

zorcall::Value decode(const std::string& method, const QByteArray& bytes, std::int32_t sequence = 7)
{
    const auto buffer = std::make_shared<TMemoryBuffer>();
    buffer->write(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                  static_cast<std::uint32_t>(bytes.size()));
    TBinaryProtocol protocol(buffer);
    return zorcall::readReply(protocol, Interface::builtIn(), *Interface::builtIn().method(method), sequence);
}

std::string decodeJson(const std::string& method, const QByteArray& bytes)
{
    return zorcall::toJson(Interface::builtIn(), Interface::builtIn().method(method)->result,
                           decode(method, bytes));
}

std::string rejection(const std::string& method, const QByteArray& bytes)
{
    try {
        decode(method, bytes);
        return "accepted";
    } catch (const zorcall::Failure& failure) {
        EXPECT_EQ(failure.code(), zorcall::BadReply);
        return failure.what();
    }
}

QByteArray reply(const QByteArray& name, const QByteArray& rest, std::int32_t sequence = 7)
{
    return wire::message(wire::kReply, name, sequence) + rest;
}

TEST(Codec, CallWithoutArguments_IsHeaderAndStop)
{
    EXPECT_EQ(encode({"Init"}, 1).toHex(), "80010001"
                                           "00000004"
                                           "496e6974"
                                           "00000001"
                                           "00");
}

TEST(Codec, CallWithEveryType_WritesEachFieldWithItsIdAndType)
{
    EXPECT_EQ(encode({"CreatePartition", "diskIndex=2", "capacity=-2", "fileSystem=NTFS", "label=\xC3\xB6",
                      "unallocatedIndex=-1"},
                     258),
              wire::message(1, "CreatePartition", 258) + wire::field(8, 1) + wire::i32(2) +
                  wire::field(10, 2) + wire::i64(-2) + wire::field(11, 3) + wire::text("NTFS") +
                  wire::field(11, 4) + wire::text("\xC3\xB6") + wire::field(8, 5) + wire::i32(-1) +
                  wire::stop());
    EXPECT_TRUE(encode({"FormatPartition", "driveLetter=D", "fileSystem=", "label=", "clusterSize=0",
                        "quickFormat=true"},
                       1)
                    .endsWith(wire::field(2, 5) + wire::byte(1) + wire::stop()));
}

TEST(Codec, AbsentArguments_AreNotSent)
{
    EXPECT_EQ(encode({"WipeDisk", "eraseCount=3"}, 1, true),
              wire::message(1, "WipeDisk", 1) + wire::field(8, 2) + wire::i32(3) + wire::stop());
}

TEST(Codec, LongString_IsWrittenCompletely)
{
    const std::string value(100000, 'x');
    EXPECT_EQ(encode({"PostProcessing", "result=" + value}, 1),
              wire::message(1, "PostProcessing", 1) + wire::field(11, 1) +
                  wire::text(QByteArray::fromStdString(value)) + wire::stop());
}

TEST(Codec, Replies_OfEveryResultType)
{
    EXPECT_EQ(decodeJson("Init", reply("Init", wire::field(2, 0) + wire::byte(1) + wire::stop())), "true");
    EXPECT_EQ(decodeJson("EjectUsb", reply("EjectUsb", wire::field(11, 0) + wire::text("no") + wire::stop())),
              "\"no\"");
    EXPECT_EQ(decodeJson("PreProcessing",
                         reply("PreProcessing", wire::field(12, 0) + wire::field(2, 1) + wire::byte(1) +
                                                    wire::field(11, 2) + wire::text("r") + wire::stop() +
                                                    wire::stop())),
              R"({"allow": true, "reasons": "r"})");
    EXPECT_EQ(decodeJson("ListAllDisks", reply("ListAllDisks", wire::field(15, 0) + wire::byte(12) +
                                                                   wire::i32(0) + wire::stop())),
              "[]");
}

TEST(Codec, ListOfRecords_KeepsOrderAndWideNumbers)
{
    const QByteArray first = wire::field(8, 2) + wire::i32(4) + wire::stop();
    const QByteArray second = wire::field(10, 4) + wire::i64(INT64_MAX) + wire::stop();
    const zorcall::Value value =
        decode("ListAllDisks", reply("ListAllDisks", wire::field(15, 0) + wire::byte(12) + wire::i32(2) +
                                                         first + second + wire::stop()));
    ASSERT_EQ(value.parts().size(), 2u);
    EXPECT_EQ(value.part(0).part(1).integer(), 4);
    EXPECT_EQ(value.part(1).part(3).integer(), INT64_MAX);
    EXPECT_EQ(value.part(1).part(1).integer(), 0);
}

TEST(Codec, UnknownFieldsAndFieldsOfAnotherType_AreSkipped)
{
    const QByteArray extras = wire::field(4, 99) + wire::i64(1) + wire::field(13, 98) + wire::byte(8) +
                              wire::byte(11) + wire::i32(1) + wire::i32(5) + wire::text("v") +
                              wire::field(12, 97) + wire::stop();
    const QByteArray wrong = wire::field(11, 1) + wire::text("true");
    EXPECT_EQ(decodeJson("PreProcessing",
                         reply("PreProcessing", wire::field(8, 5) + wire::i32(1) + wire::field(12, 0) +
                                                    extras + wrong + wire::field(11, 2) + wire::text("r") +
                                                    wire::stop() + wire::stop())),
              R"({"allow": false, "reasons": "r"})");
}

TEST(Codec, ReplyToAnotherMethod_IsRejected)
{
    EXPECT_EQ(rejection("Init", reply("Exit", wire::field(2, 0) + wire::byte(1) + wire::stop())),
              "invalid reply: it belongs to 'Exit'");
}

TEST(Codec, ReplyToAnotherCall_IsRejected)
{
    EXPECT_EQ(rejection("Init", reply("Init", wire::field(2, 0) + wire::byte(1) + wire::stop(), 8)),
              "invalid reply: it belongs to call number 8 instead of 7");
}

TEST(Codec, MessageOtherThanAReply_IsRejected)
{
    for (const int type : {0, 1, 4, 9})
        EXPECT_EQ(rejection("Init", wire::message(type, "Init", 7) + wire::stop()),
                  "invalid reply: its message type is " + std::to_string(type));
}

TEST(Codec, MissingResultOrOneOfAnotherType_IsRejected)
{
    EXPECT_EQ(rejection("Init", reply("Init", wire::stop())),
              "invalid reply: it contains no result of type bool");
    EXPECT_EQ(rejection("Init", reply("Init", wire::field(8, 0) + wire::i32(1) + wire::stop())),
              "invalid reply: it contains no result of type bool");
}

TEST(Codec, ListWithEntriesOfAnotherType_IsRejected)
{
    EXPECT_EQ(
        rejection("ListAllDisks", reply("ListAllDisks", wire::field(15, 0) + wire::byte(8) + wire::i32(1) +
                                                            wire::i32(5) + wire::stop())),
        "invalid reply: a list contains entries of another type");
}

TEST(Codec, ExceptionMessage_IsReported)
{
    try {
        decode("Init", wire::message(wire::kException, "Init", 7) + wire::field(11, 1) +
                           wire::text("it broke") + wire::field(8, 2) + wire::i32(0) + wire::stop());
        FAIL();
    } catch (const zorcall::ServiceException& exception) {
        EXPECT_EQ(exception.message(), "it broke");
        EXPECT_EQ(exception.code(), zorcall::BadReply);
        EXPECT_STREQ(exception.what(), "the service answered with an exception: it broke");
    }
}

TEST(Codec, DeepNesting_ThrowsAnException)
{
    QByteArray deep;
    for (int i = 0; i < 10000; ++i)
        deep += wire::field(12, 50);
    EXPECT_THROW(decode("Init", reply("Init", deep)), apache::thrift::TException);
}

} // namespace

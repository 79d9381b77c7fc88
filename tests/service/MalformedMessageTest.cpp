// Malformed messages. Each may end its own connection and must not affect anything else.
#include "service/ToolServer.h"
#include "tests/support/Answers.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/ServiceRunner.h"
#include "tools/ZorHandle.h"

#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TVirtualTransport.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <random>
#include <stdexcept>

namespace {

using wire::Fields;

constexpr std::int32_t kHuge = 0x7fffffff;

std::string nested(int depth)
{
    std::string bytes;
    for (int i = 0; i < depth; ++i)
        bytes += wire::fieldHeader(wire::Struct, 99);
    return bytes + std::string(static_cast<std::size_t>(depth), '\0');
}

std::string nestedLists(int depth)
{
    std::string bytes;
    for (int i = 0; i < depth; ++i)
        bytes += std::string(1, char(wire::List)) + wire::i32(1);
    return bytes;
}

struct Case
{
    const char* name;
    std::string bytes;
};

void PrintTo(const Case& testCase, std::ostream* out)
{
    *out << testCase.name;
}

std::vector<Case> cases()
{
    const std::string letter = wire::fieldHeader(wire::String, 1);
    const std::string header = wire::strictHeader("GetPartitionInfo", 1);
    const std::string stop(1, '\0');
    return {
        {"StringLengthOfTwoGibibytes", header + letter + wire::i32(kHuge) + "D"},
        {"NegativeStringLength", header + letter + wire::i32(-1) + "D" + stop},
        {"LowestStringLength", header + letter + wire::i32(-kHuge - 1) + "D" + stop},
        {"MethodNameOfTwoGibibytes", wire::i32(std::int32_t(0x80010001)) + wire::i32(kHuge) + "Init"},
        {"NegativeMethodNameLength", wire::i32(std::int32_t(0x80010001)) + wire::i32(-5) + "Init" + stop},
        {"OldHeaderOfTwoGibibytes", wire::i32(kHuge) + "Init"},
        {"WrongVersionWord", wire::i32(std::int32_t(0x80020001)) + wire::text("Init") + wire::i32(1) + stop},
        {"RequestOfAnotherProtocol", "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n"},
        {"BytesOfAllValues",
         [] {
             std::string bytes;
             for (int i = 255; i >= 0; --i)
                 bytes += char(i);
             return bytes;
         }()},
        {"UnknownFieldType", header + wire::fieldHeader(77, 5) + std::string(64, '\1')},
        {"DeepStructs", header + nested(5000)},
        {"DeepLists", header + wire::fieldHeader(wire::List, 9) + nestedLists(5000)},
        {"DeepStructsInUnknownMethod", wire::strictHeader("Nothing", 1) + nested(5000)},
        {"ListOfTwoGibientries", header + wire::fieldHeader(wire::List, 9) + std::string(1, char(wire::I64)) +
                                     wire::i32(kHuge) + stop},
        {"ListOfNegativeSize",
         header + wire::fieldHeader(wire::List, 9) + std::string(1, char(wire::I64)) + wire::i32(-2) + stop},
        {"ListOfVoid",
         header + wire::fieldHeader(wire::List, 9) + std::string(1, '\1') + wire::i32(kHuge) + stop},
        {"SetOfNegativeSize",
         header + wire::fieldHeader(14, 9) + std::string(1, char(wire::I64)) + wire::i32(-2) + stop},
        {"MapOfTwoGibientries",
         header + wire::fieldHeader(13, 9) + std::string(2, char(wire::I64)) + wire::i32(kHuge) + stop},
        {"OnewayMessage", wire::strictHeader("GetPartitionInfo", 1, wire::Oneway) + Fields().end()},
        {"ReplyMessage", wire::strictHeader("GetPartitionInfo", 1, wire::Reply) + Fields().end()},
        {"ExceptionMessage", wire::strictHeader("GetPartitionInfo", 1, wire::Exception) + Fields().end()},
        {"UndefinedMessageType", wire::strictHeader("GetPartitionInfo", 1, 0x7f) + Fields().end()},
    };
}

class Malformed : public testing::TestWithParam<Case>
{
};

TEST_P(Malformed, Message_EndsAtMostItsConnectionAndAllocatesLittle)
{
    ServiceRunner service(nullptr);
    {
        RawClient first(service.port());
        first.ask(wire::call("Init", 1));
    }
    const long before = ProcessFigures::now().peakKilobytes;
    RawClient bad(service.port());
    bad.send(GetParam().bytes);
    bad.finishSending();
    // The server may reply; it then closes the connection, since the client has finished sending.
    try {
        for (;;)
            bad.take(1);
    } catch (const std::runtime_error&) {
    }
    RawClient next(service.port());
    EXPECT_EQ(next.ask(wire::call("Init", 2)).sequence, 2);
    EXPECT_TRUE(service.thread().isRunning());
    EXPECT_LT(ProcessFigures::now().peakKilobytes - before, 200 * 1024);
}

INSTANTIATE_TEST_SUITE_P(Message, Malformed, testing::ValuesIn(cases()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MalformedStream, MessageTruncatedAtAnyByte_LeavesTheServiceRunning)
{
    ServiceRunner service(nullptr);
    const std::string whole =
        wire::call("PostProcessing", 1, Fields().string(1, answers::queued).number(7, 3));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        RawClient cut(service.port());
        cut.send(whole.substr(0, length));
        cut.finishSending();
        ASSERT_TRUE(cut.isEndedByServer()) << length;
    }
    RawClient next(service.port());
    EXPECT_EQ(next.ask(whole).sequence, 1);
}

TEST(MalformedStream, CallWithOneByteChanged_LeavesTheServiceRunning)
{
    ServiceRunner service(nullptr);
    const std::string whole =
        wire::call("PostProcessing", 1, Fields().string(1, answers::queued).number(7, 3));
    std::mt19937 random(99);
    for (int round = 0; round < 200; ++round) {
        std::string changed = whole;
        changed[random() % changed.size()] = char(random() % 256);
        RawClient bad(service.port());
        bad.send(changed);
        bad.finishSending();
        try {
            for (;;)
                bad.take(1);
        } catch (const std::runtime_error&) {
        }
    }
    RawClient next(service.port());
    EXPECT_EQ(next.ask(whole).sequence, 1);
}

TEST(MalformedStream, ReplyMessageSentAsCall_EndsTheConnectionWithoutAReply)
{
    ServiceRunner service(nullptr);
    RawClient client(service.port());
    client.send(wire::strictHeader("Init", 1, wire::Reply) + Fields().end());
    EXPECT_TRUE(client.isEndedByServer());
}

TEST(MalformedStream, AnnouncedLengthNearTheLimit_AllocatesOnlyForReceivedBytes)
{
    ServiceRunner service(nullptr);
    const long before = ProcessFigures::now().peakKilobytes;
    for (const std::string& field :
         {wire::fieldHeader(wire::String, 1), wire::fieldHeader(wire::String, 99)}) {
        RawClient client(service.port());
        client.send(wire::strictHeader("GetPartitionInfo", 1) + field + wire::i32(99 * 1024 * 1024) +
                    std::string(5000, 'D'));
        client.finishSending();
        EXPECT_TRUE(client.isEndedByServer());
    }
    EXPECT_LT(ProcessFigures::now().peakKilobytes - before, 60 * 1024);
}

TEST(MalformedStream, LongStringsAndTheCallsAfterThem_AreReadInAnyPieces)
{
    ServiceRunner service(nullptr);
    for (const std::size_t length : {511u, 512u, 513u, 1024u, 70000u}) {
        const std::string text = std::string(length - 1, 'x') + "y";
        const std::string post =
            wire::call("PostProcessing", 5, Fields().string(9, text).string(1, answers::queued));
        RawClient client(service.port());
        client.send(post + wire::call("Init", 6) + post);
        EXPECT_EQ(client.receive().body.field(0).number, 1) << length;
        EXPECT_EQ(client.receive().sequence, 6) << length;
        EXPECT_EQ(client.receive().body.field(0).number, 1) << length;
        client.sendByteByByte(post.substr(0, 900));
        client.send(post.substr(std::min<std::size_t>(post.size(), 900)));
        EXPECT_EQ(client.receive().sequence, 5) << length;
    }
    RawClient client(service.port());
    EXPECT_EQ(client.ask(wire::call(std::string(3000, 'n'), 8)).name, std::string(3000, 'n'));
}

TEST(MalformedStream, WrongVersion_EndsTheConnectionWithoutAReply)
{
    ServiceRunner service(nullptr);
    RawClient client(service.port());
    client.send(wire::i32(std::int32_t(0x80020001)) + wire::text("Init") + wire::i32(1) +
                std::string(1, '\0'));
    EXPECT_TRUE(client.isEndedByServer());
}

TEST(MalformedStream, MalformedMessage_DoesNotAffectOtherConnections)
{
    ServiceRunner service(nullptr);
    RawClient good(service.port());
    good.ask(wire::call("Init", 1));
    RawClient bad(service.port());
    bad.send(wire::i32(std::int32_t(0x80020001)));
    EXPECT_TRUE(bad.isEndedByServer());
    EXPECT_EQ(good.ask(wire::call("Init", 2)).sequence, 2);
}

TEST(MalformedStream, TotalOfAConnection_MayExceedTheLimitOfOneMessage)
{
    // The runtime's byte count must restart with each message.
    const auto server = makeToolServer(std::make_shared<CZorHandle>(), "localhost", 0);
    const auto memory = std::make_shared<apache::thrift::transport::TMemoryBuffer>();
    const auto transport = server->getInputTransportFactory()->getTransport(memory);
    const std::string bytes(500, 'x');
    std::uint64_t total = 0;
    while (total < 250u * 1024 * 1024) {
        memory->resetBuffer();
        memory->write(reinterpret_cast<const std::uint8_t*>(bytes.data()), 500);
        char first = 0;
        transport->readAll(reinterpret_cast<std::uint8_t*>(&first), 1);
        std::uint32_t length = 499;
        ASSERT_NE(transport->borrow(nullptr, &length), nullptr);
        ASSERT_NO_THROW(transport->consume(499)) << total;
        transport->readEnd();
        total += 500;
    }
}

TEST(MalformedStream, ManyLongStringsOnOneConnection_AreAnswered)
{
    ServiceRunner service(nullptr);
    RawClient client(service.port());
    const std::string megabyte =
        wire::call("PostProcessing", 5, Fields().string(1, std::string(1 << 20, 'x')));
    for (int i = 0; i < 120; ++i)
        ASSERT_EQ(client.ask(megabyte).sequence, 5) << i;
}

// A transport whose read throws a standard exception instead of one of the runtime's.
class FailingTransport : public apache::thrift::transport::TVirtualTransport<FailingTransport>
{
public:
    explicit FailingTransport(bool memory) : memory_(memory) {}
    bool isOpen() const override { return true; }
    uint32_t read(uint8_t*, uint32_t)
    {
        if (memory_)
            throw std::bad_alloc();
        throw std::length_error("too long");
    }

private:
    bool memory_;
};

TEST(MalformedStream, StandardExceptionWhileReading_BecomesAThriftException)
{
    // The runtime's connection loop catches only its own exceptions; any other would end the process.
    const auto server = makeToolServer(std::make_shared<CZorHandle>(), "localhost", 0);
    for (const bool memory : {true, false}) {
        const auto protocol = std::make_shared<apache::thrift::protocol::TBinaryProtocol>(
            std::make_shared<FailingTransport>(memory));
        const auto processor = server->getProcessorFactory()->getProcessor({protocol, protocol, nullptr});
        EXPECT_THROW(processor->process(protocol, protocol, nullptr), apache::thrift::TException);
    }
}

} // namespace

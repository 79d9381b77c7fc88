// Complete messages around the runtime's limit of 100 MiB: reply and memory. The runtime counts the bytes of
// the strings in a message, including the method name, but not the field headers.
#include "tests/support/Answers.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/ServiceRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace {

using wire::Fields;

constexpr std::size_t kLimit = 100u * 1024 * 1024;
constexpr long kMebibyteInKilobytes = 1024;
const std::string kMethod = "PostProcessing";
const std::string kQueued = answers::queued;
const std::string kInit = wire::call("Init", 1);

// Sends in pieces to keep the client's own memory small. False if the server has closed the connection.
bool sendRepeated(RawClient& client, char byte, std::size_t count)
{
    const std::string piece(64 * 1024, byte);
    try {
        for (std::size_t sent = 0; sent < count; sent += piece.size())
            client.send(piece.substr(0, std::min(piece.size(), count - sent)));
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

class MessageLimit : public testing::Test
{
protected:
    MessageLimit()
    {
        RawClient(service.port()).ask(kInit);
        before_ = ProcessFigures::now().peakKilobytes;
    }

    // A call of PostProcessing with @p total bytes of strings, in one argument.
    bool sendOneString(RawClient& client, std::size_t total)
    {
        const std::string start = wire::strictHeader(kMethod, 5) + wire::fieldHeader(wire::String, 1);
        const std::size_t length = total - kMethod.size();
        client.send(start + wire::i32(std::int32_t(length)));
        if (!sendRepeated(client, 'x', length))
            return false;
        return sendRepeated(client, '\0', 1);
    }

    // The same total in unknown fields of at most 1 MB each, followed by the known field.
    bool sendManyFields(RawClient& client, std::size_t total)
    {
        const std::string start = wire::strictHeader(kMethod, 5);
        const std::string end = Fields().string(1, kQueued).end();
        const std::string fieldStart = wire::fieldHeader(wire::String, 9);
        client.send(start);
        std::size_t left = total - kMethod.size() - kQueued.size();
        while (left > 0) {
            const std::size_t length = std::min<std::size_t>(left, 1000 * 1000);
            if (!sendRepeatedField(client, fieldStart, length))
                return false;
            left -= length;
        }
        try {
            client.send(end);
        } catch (const std::runtime_error&) {
            return false;
        }
        return true;
    }

    // Growth of the peak resident size.
    long growthInKilobytes() const
    {
        const long growth = ProcessFigures::now().peakKilobytes - before_;
        RecordProperty("growthInKilobytes", std::to_string(growth));
        return growth;
    }

    void expectServed()
    {
        RawClient next(service.port());
        EXPECT_EQ(next.ask(wire::call("Init", 2)).sequence, 2);
        EXPECT_TRUE(service.thread().isRunning());
    }

    ServiceRunner service{nullptr};

private:
    static bool sendRepeatedField(RawClient& client, const std::string& start, std::size_t length)
    {
        try {
            client.send(start + wire::i32(std::int32_t(length)));
        } catch (const std::runtime_error&) {
            return false;
        }
        return sendRepeated(client, 'x', length);
    }

    long before_ = 0;
};

std::string postReply(bool value)
{
    return wire::strictHeader("PostProcessing", 5, wire::Reply) + Fields().boolean(0, value).end();
}

TEST_F(MessageLimit, OneStringOneByteBelowTheLimit_IsAnsweredAndTheConnectionStaysOpen)
{
    RawClient client(service.port());
    ASSERT_TRUE(sendOneString(client, kLimit - 1));
    EXPECT_EQ(client.receive().raw, postReply(false));
    EXPECT_EQ(client.ask(kInit).name, "Init");
    // The receive buffer, which grows with the input, and the argument.
    if (kMemoryIsOurs) {
        EXPECT_LT(growthInKilobytes(), 300 * kMebibyteInKilobytes);
        EXPECT_GT(growthInKilobytes(), 100 * kMebibyteInKilobytes);
    }
}

// The stop byte of the arguments exceeds the limit.
TEST_F(MessageLimit, OneStringThatFillsTheLimit_EndsTheConnectionWithoutAReply)
{
    RawClient client(service.port());
    sendOneString(client, kLimit);
    EXPECT_TRUE(client.isEndedByServer());
    expectServed();
    if (kMemoryIsOurs) {
        EXPECT_LT(growthInKilobytes(), 300 * kMebibyteInKilobytes);
    }
}

TEST_F(MessageLimit, StringLongerThanTheLimit_EndsTheConnectionAtItsLengthWithoutAllocating)
{
    RawClient client(service.port());
    EXPECT_FALSE(sendOneString(client, kLimit + 1));
    EXPECT_TRUE(client.isEndedByServer());
    expectServed();
    if (kMemoryIsOurs) {
        EXPECT_LT(growthInKilobytes(), 8 * kMebibyteInKilobytes);
    }
}

TEST_F(MessageLimit, ManyFieldsUpToTheLimit_AreAnsweredWithTheMemoryOfOneField)
{
    RawClient client(service.port());
    ASSERT_TRUE(sendManyFields(client, kLimit));
    EXPECT_EQ(client.receive().raw, postReply(true));
    EXPECT_EQ(client.ask(kInit).name, "Init");
    if (kMemoryIsOurs) {
        EXPECT_LT(growthInKilobytes(), 16 * kMebibyteInKilobytes);
    }
}

TEST_F(MessageLimit, ManyFieldsOneByteOverTheLimit_EndTheConnectionWithTheMemoryOfOneField)
{
    RawClient client(service.port());
    sendManyFields(client, kLimit + 1);
    EXPECT_TRUE(client.isEndedByServer());
    expectServed();
    if (kMemoryIsOurs) {
        EXPECT_LT(growthInKilobytes(), 16 * kMebibyteInKilobytes);
    }
}

TEST_F(MessageLimit, ConsecutiveMessagesBelowTheLimit_AreAnswered)
{
    RawClient client(service.port());
    for (int message = 0; message < 3; ++message) {
        ASSERT_TRUE(sendOneString(client, kLimit - 1)) << message;
        ASSERT_EQ(client.receive().raw, postReply(false)) << message;
    }
    if (kMemoryIsOurs) {
        EXPECT_LT(growthInKilobytes(), 300 * kMebibyteInKilobytes);
    }
}

} // namespace

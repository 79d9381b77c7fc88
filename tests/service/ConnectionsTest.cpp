// A stop ends the reads of all connections, and lets them finish their replies.
#include "service/Connections.h"
#include "service/ConnectionSocket.h"

#include <thrift/transport/TTransportException.h>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::chrono::seconds kLimit(20);

template <class Socket> class PairOf
{
public:
    explicit PairOf(const std::shared_ptr<Connections>& connections)
    {
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends_), 0);
        connection = std::make_unique<Socket>(ends_[0], nullptr, stopping, connections);
    }
    ~PairOf() { ::close(ends_[1]); }
    PairOf(const PairOf&) = delete;
    PairOf& operator=(const PairOf&) = delete;

    std::uint32_t read() const
    {
        std::uint8_t bytes[16];
        return connection->read(bytes, sizeof bytes);
    }
    void hangUp() const { ::shutdown(ends_[1], SHUT_RDWR); }
    void sendToService() const { EXPECT_EQ(::send(ends_[1], "abc", 3, 0), 3); }
    std::string receive() const
    {
        char bytes[16];
        const ssize_t count = ::recv(ends_[1], bytes, sizeof bytes, 0);
        return {bytes, static_cast<std::size_t>(count)};
    }

    std::shared_ptr<std::atomic<bool>> stopping = std::make_shared<std::atomic<bool>>(false);
    std::unique_ptr<Socket> connection;

private:
    int ends_[2] = {-1, -1};
};
using Pair = PairOf<ConnectionSocket>;

// Its ordinary sends time out at once.
class UnsendingSocket : public ConnectionSocket
{
public:
    using ConnectionSocket::ConnectionSocket;
    std::uint32_t write_partial(const std::uint8_t*, std::uint32_t) override { return 0; }
};

TEST(Connections, Stop_EndsTheBlockedReadsOfAllConnections)
{
    const auto connections = std::make_shared<Connections>();
    const Pair first(connections);
    const Pair second(connections);
    first.sendToService();
    EXPECT_EQ(first.read(), 3U);
    std::future<std::uint32_t> blocked =
        std::async(std::launch::async, [&] { return first.read() + second.read(); });
    connections->endReads();
    EXPECT_EQ(blocked.wait_for(kLimit), std::future_status::ready);
    first.hangUp();
    second.hangUp();
    EXPECT_EQ(blocked.get(), 0U);
    EXPECT_EQ(first.read(), 0U);
}

TEST(Connections, ConnectionThatIsAcceptedDuringAStop_EndsItsReads)
{
    const auto connections = std::make_shared<Connections>();
    connections->endReads();
    const Pair late(connections);
    std::future<std::uint32_t> blocked = std::async(std::launch::async, [&] { return late.read(); });
    EXPECT_EQ(blocked.wait_for(kLimit), std::future_status::ready);
    late.hangUp();
    EXPECT_EQ(blocked.get(), 0U);
}

TEST(Connections, ReplyAfterAStop_IsStillSent)
{
    const auto connections = std::make_shared<Connections>();
    const Pair pair(connections);
    connections->endReads();
    pair.connection->write(reinterpret_cast<const std::uint8_t*>("reply"), 5);
    EXPECT_EQ(pair.receive(), "reply");
}

// Only the ordinary sends wait for the client. Otherwise a stop waits for two send timeouts.
TEST(Connections, LongReplyToAClientThatReadsNothing_WaitsForNoOtherTimeout)
{
    const PairOf<UnsendingSocket> pair(nullptr);
    pair.connection->setSendTimeout(10 * 60 * 1000);
    *pair.stopping = true;
    const std::vector<std::uint8_t> body(std::size_t(16) * 1024 * 1024);
    std::future<void> reply = std::async(std::launch::async, [&] {
        // The first one fills the socket.
        for (int i = 0; i < 2; ++i) {
            EXPECT_THROW(pair.connection->writeTogether(body.data(), 4, body.data(),
                                                        static_cast<std::uint32_t>(body.size())),
                         apache::thrift::transport::TTransportException);
        }
    });
    EXPECT_EQ(reply.wait_for(kLimit), std::future_status::ready);
    pair.hangUp();
    reply.get();
}

// With the address sanitizer, a connection that is not forgotten fails here.
TEST(Connections, ClosedConnection_IsForgotten)
{
    const auto connections = std::make_shared<Connections>();
    {
        const Pair pair(connections);
        pair.connection->close();
    }
    {
        const Pair pair(connections);
    }
    connections->endReads();
}

} // namespace

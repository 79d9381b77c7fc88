// Rejected connections in a loop are slowed down; a queue is not.
#include "service/RejectionPause.h"
#include "service/ServerSocket.h"

#include <thrift/transport/TSocket.h>
#include <thrift/transport/TTransportException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <future>

using apache::thrift::transport::TServerSocket;
using apache::thrift::transport::TSocket;
using apache::thrift::transport::TTransportException;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kCount = 200;
constexpr std::chrono::microseconds kPause(200);

std::unique_ptr<TSocket> connected(int port)
{
    auto client = std::make_unique<TSocket>("localhost", port);
    client->open();
    // The system does not report a connection without a first byte.
    client->write(reinterpret_cast<const std::uint8_t*>("x"), 1);
    return client;
}

Clock::duration timeOf(THRIFT_SOCKET listening)
{
    const auto start = Clock::now();
    for (int i = 0; i < kCount; ++i)
        pauseBeforeRejection(listening);
    return Clock::now() - start;
}

TEST(RejectionPause, WithoutAWaitingClient_Pauses)
{
    TServerSocket server("localhost", 0);
    server.listen();
    EXPECT_GE(timeOf(server.getSocketFD()), kCount * kPause);
}

TEST(RejectionPause, WithAWaitingClient_ReturnsAtOnce)
{
    TServerSocket server("localhost", 0);
    server.listen();
    const std::unique_ptr<TSocket> client = connected(server.getPort());
    // On a busy computer a single series can be interrupted.
    Clock::duration shortest = Clock::duration::max();
    for (int series = 0; series < 20; ++series)
        shortest = std::min(shortest, timeOf(server.getSocketFD()));
    EXPECT_LT(shortest, kCount * kPause);
}

TEST(RejectionPause, LoopOfRejectedClients_IsSlowedDown)
{
    ServerSocket server("localhost", 0, std::make_unique<AccountCheck>([](THRIFT_SOCKET) {
                            return PeerAccount{PeerAccount::Kind::Gone, {}};
                        }));
    server.listen();
    std::future<void> serving =
        std::async(std::launch::async, [&] { EXPECT_THROW(server.accept(), TTransportException); });
    const auto start = Clock::now();
    for (int i = 0; i < kCount; ++i) {
        const std::unique_ptr<TSocket> client = connected(server.getPort());
        std::uint8_t byte = 0;
        try {
            EXPECT_EQ(client->read(&byte, 1), 0U);
        } catch (const TTransportException& error) {
            // Closing a connection whose byte was not read resets it.
            EXPECT_EQ(error.getType(), TTransportException::NOT_OPEN);
        }
    }
    EXPECT_GE(Clock::now() - start, kCount * kPause);
    server.interrupt();
    serving.get();
    server.close();
}

} // namespace

#pragma once

#include "service/AccountCheck.h"
#include "service/Connections.h"

#include <thrift/transport/TServerSocket.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

/// A server socket whose accept loop ends reliably after an interrupt.
///
/// The base class has three defects: closing the wake-up sockets can overtake the wake-up itself, so that a
/// blocked accept never returns; an interrupt before listen is lost; and close can close the socket that
/// another thread is about to bind. This class remembers the interrupt, and its close waits, for at most half
/// a second, until the server's thread has left listen or accept. It also closes a connection that its
/// AccountCheck does not admit, before the first byte is read and before the connection counts as one of the
/// served clients.
///
/// interrupt, interruptChildren and close can be called on any thread; listen and accept belong to the
/// server's thread.
class ServerSocket : public apache::thrift::transport::TServerSocket
{
public:
    /// @p address is a host name or a numeric address; @p port 0 selects any free port. Without @p accounts,
    /// every account is admitted.
    ServerSocket(const std::string& address, int port, std::unique_ptr<AccountCheck> accounts = nullptr);

    void listen() override;
    void interrupt() override;
    void interruptChildren() override;
    void close() override;

protected:
    std::shared_ptr<apache::thrift::transport::TTransport> acceptImpl() override;
    std::shared_ptr<apache::thrift::transport::TSocket> createSocket(THRIFT_SOCKET client) override;

private:
    enum class State { Idle, Listening, Accepting };
    class StateScope;

    // Much longer than a woken accept needs, and short enough for a stop.
    static constexpr std::chrono::milliseconds kLeaveTimeout{500};

    const std::unique_ptr<AccountCheck> accounts_;
    std::mutex mutex_;
    std::condition_variable left_;
    const std::shared_ptr<std::atomic<bool>> interrupted_ = std::make_shared<std::atomic<bool>>(false);
    const std::shared_ptr<Connections> connections_ = std::make_shared<Connections>();
    State state_ = State::Idle;
    std::thread::id serverThread_;
};

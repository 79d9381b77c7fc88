#pragma once

#include <thrift/transport/TServerSocket.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

/// A server socket whose accept loop ends every time that it is told to.
///
/// The runtime's own can lose the race between the wake-up of a blocked accept and the closing of the sockets
/// on which it waits, and then waits for ever; it also forgets an interrupt that comes before it listens, and
/// closes the socket that another thread is about to bind. This one remembers the interrupt, and its close
/// lets the server's thread leave listen or accept first.
///
/// interrupt, interruptChildren and close may be called from any thread; listen and accept are the server
/// thread's.
class ServerSocket : public apache::thrift::transport::TServerSocket
{
public:
    using TServerSocket::TServerSocket;

    void listen() override;
    void interrupt() override;
    void interruptChildren() override;
    void close() override;

protected:
    std::shared_ptr<apache::thrift::transport::TTransport> acceptImpl() override;
    std::shared_ptr<apache::thrift::transport::TSocket> createSocket(THRIFT_SOCKET client) override;

private:
    enum class Where { Outside, Listen, Accept };
    class Inside;

    // Far above what a woken accept needs, and below what a stop may take.
    static constexpr std::chrono::milliseconds leaveLimit{500};

    std::mutex mutex_;
    std::condition_variable left_;
    const std::shared_ptr<std::atomic<bool>> interrupted_ = std::make_shared<std::atomic<bool>>(false);
    Where where_ = Where::Outside;
    std::thread::id server_;
};

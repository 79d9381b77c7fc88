#pragma once

#include <thrift/transport/TServerSocket.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

/// A server socket whose accept loop ends every time that it is told to.
///
/// The runtime's own can lose the race between the wake-up of a blocked accept and the closing of the sockets
/// on which it waits, and then waits for ever; it also forgets an interrupt that comes before it listens.
/// This one remembers the interrupt, and its close lets a blocked accept leave first.
///
/// interrupt and close may be called from any thread; accept is the server thread's.
class ServerSocket : public apache::thrift::transport::TServerSocket
{
public:
    using TServerSocket::TServerSocket;

    void interrupt() override;
    void close() override;

protected:
    std::shared_ptr<apache::thrift::transport::TTransport> acceptImpl() override;

private:
    // Far above what a woken accept needs, and below what a stop may take.
    static constexpr std::chrono::milliseconds leaveLimit{500};

    std::mutex mutex_;
    std::condition_variable left_;
    bool interrupted_ = false;
    bool accepting_ = false;
};

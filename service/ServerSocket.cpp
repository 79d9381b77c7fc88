#include "service/ServerSocket.h"

#include "service/ConnectionSocket.h"

#include <thrift/transport/TTransportException.h>

using apache::thrift::transport::TSocket;
using apache::thrift::transport::TTransport;
using apache::thrift::transport::TTransportException;

// While this object exists, the server's thread counts as being inside the socket.
class ServerSocket::StateScope
{
public:
    StateScope(ServerSocket* socket, State state) : socket_(socket)
    {
        const std::lock_guard<std::mutex> lock(socket_->mutex_);
        // After an interrupt that came earlier, nothing would wake a blocked accept again.
        if (*socket_->interrupted_ && state == State::Accepting)
            throw TTransportException(TTransportException::INTERRUPTED);
        socket_->state_ = state;
        socket_->serverThread_ = std::this_thread::get_id();
    }
    ~StateScope()
    {
        const std::lock_guard<std::mutex> lock(socket_->mutex_);
        socket_->state_ = State::Idle;
        socket_->left_.notify_all();
    }
    StateScope(const StateScope&) = delete;
    StateScope& operator=(const StateScope&) = delete;

private:
    ServerSocket* socket_;
};

void ServerSocket::listen()
{
    const StateScope scope(this, State::Listening);
    TServerSocket::listen();
}

void ServerSocket::interrupt()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    *interrupted_ = true;
    // listen creates the wake-up sockets, and no thread waits on them yet.
    if (state_ != State::Listening)
        TServerSocket::interrupt();
}

void ServerSocket::interruptChildren()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (state_ != State::Listening)
        TServerSocket::interruptChildren();
}

void ServerSocket::close()
{
    std::unique_lock<std::mutex> lock(mutex_);
    // A failed listen calls close itself, on the server's thread.
    const bool onServerThread = state_ != State::Idle && serverThread_ == std::this_thread::get_id();
    if (!onServerThread)
        left_.wait_for(lock, kLeaveTimeout, [this] { return state_ == State::Idle; });
    // A slow name resolution can keep the server's thread in listen. The next accept then ends at once, and
    // the server calls close.
    if (onServerThread || state_ != State::Listening) {
        // Before the wake-up socket is closed: on Windows the connections detect a byte in it, but not its
        // end.
        TServerSocket::interruptChildren();
        TServerSocket::close();
    }
}

std::shared_ptr<TTransport> ServerSocket::acceptImpl()
{
    const StateScope scope(this, State::Accepting);
    return TServerSocket::acceptImpl();
}

std::shared_ptr<TSocket> ServerSocket::createSocket(THRIFT_SOCKET client)
{
    return std::make_shared<ConnectionSocket>(client, pChildInterruptSockReader_, interrupted_);
}

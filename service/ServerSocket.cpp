#include "service/ServerSocket.h"

#include "service/ConnectionSocket.h"

#include <thrift/transport/TTransportException.h>

using apache::thrift::transport::TServerSocket;
using apache::thrift::transport::TSocket;
using apache::thrift::transport::TTransport;
using apache::thrift::transport::TTransportException;

// While this object exists, the server's thread counts as being inside the socket.
class ServerSocket::Inside
{
public:
    Inside(ServerSocket* socket, Where where) : socket_(socket)
    {
        const std::lock_guard<std::mutex> lock(socket_->mutex_);
        // After an interrupt that came earlier, nothing would wake a blocked accept again.
        if (*socket_->interrupted_ && where == Where::Accept)
            throw TTransportException(TTransportException::INTERRUPTED);
        socket_->where_ = where;
        socket_->server_ = std::this_thread::get_id();
    }
    ~Inside()
    {
        const std::lock_guard<std::mutex> lock(socket_->mutex_);
        socket_->where_ = Where::Outside;
        socket_->left_.notify_all();
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

private:
    ServerSocket* socket_;
};

void ServerSocket::listen()
{
    const Inside inside(this, Where::Listen);
    TServerSocket::listen();
}

void ServerSocket::interrupt()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    *interrupted_ = true;
    // listen creates the wake-up sockets, and no thread waits on them yet.
    if (where_ != Where::Listen)
        TServerSocket::interrupt();
}

void ServerSocket::interruptChildren()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (where_ != Where::Listen)
        TServerSocket::interruptChildren();
}

void ServerSocket::close()
{
    std::unique_lock<std::mutex> lock(mutex_);
    // A failed listen calls close itself, on the server's thread.
    const bool ownWay = where_ != Where::Outside && server_ == std::this_thread::get_id();
    if (!ownWay)
        left_.wait_for(lock, leaveLimit, [this] { return where_ == Where::Outside; });
    // A slow name resolution can keep the server's thread in listen. The next accept then ends at once, and
    // the server calls close.
    if (ownWay || where_ != Where::Listen) {
        // Before the wake-up socket is closed: on Windows the connections detect a byte in it, but not its
        // end.
        TServerSocket::interruptChildren();
        TServerSocket::close();
    }
}

std::shared_ptr<TTransport> ServerSocket::acceptImpl()
{
    const Inside inside(this, Where::Accept);
    return TServerSocket::acceptImpl();
}

std::shared_ptr<TSocket> ServerSocket::createSocket(THRIFT_SOCKET client)
{
    return std::make_shared<ConnectionSocket>(client, pChildInterruptSockReader_, interrupted_);
}

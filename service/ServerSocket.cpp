#include "service/ServerSocket.h"

#include "closed/Log/LogWriter.h"
#include "service/ConnectionSocket.h"
#include "service/PeerAccount.h"
#include "service/RejectionPause.h"

#include <thrift/transport/TTransportException.h>

#include <utility>

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

ServerSocket::ServerSocket(const std::string& address, int port, std::unique_ptr<AccountCheck> accounts)
    : TServerSocket(address, port), accounts_(std::move(accounts))
{
}

void ServerSocket::listen()
{
    const StateScope scope(this, State::Listening);
    TServerSocket::listen();
    if (accounts_ && !isBoundToLoopback(getSocketFD()))
        CLogWriter::Log(
            "Agent address is not a loopback address: the account of remote clients is not checked\n");
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
    if (state_ != State::Listening) {
        TServerSocket::interruptChildren();
        connections_->endReads();
    }
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
        connections_->endReads();
        TServerSocket::close();
    }
}

std::shared_ptr<TTransport> ServerSocket::acceptImpl()
{
    const StateScope scope(this, State::Accepting);
    for (;;) {
        const std::shared_ptr<TTransport> connection = TServerSocket::acceptImpl();
        if (!accounts_ || accounts_->admits(std::static_pointer_cast<TSocket>(connection)->getSocketFD()))
            return connection;
        pauseBeforeRejection(getSocketFD());
        connection->close();
    }
}

std::shared_ptr<TSocket> ServerSocket::createSocket(THRIFT_SOCKET client)
{
    return std::make_shared<ConnectionSocket>(client, pChildInterruptSockReader_, interrupted_, connections_);
}

#include "service/ServerSocket.h"

#include <thrift/transport/TTransportException.h>

using apache::thrift::transport::TServerSocket;
using apache::thrift::transport::TTransport;
using apache::thrift::transport::TTransportException;

void ServerSocket::interrupt()
{
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        interrupted_ = true;
    }
    TServerSocket::interrupt();
}

void ServerSocket::close()
{
    {
        std::unique_lock<std::mutex> lock(mutex_);
        left_.wait_for(lock, leaveLimit, [this] { return !accepting_; });
    }
    TServerSocket::close();
}

std::shared_ptr<TTransport> ServerSocket::acceptImpl()
{
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (interrupted_)
            throw TTransportException(TTransportException::INTERRUPTED);
        accepting_ = true;
    }
    struct Leave
    {
        ServerSocket* socket;
        ~Leave()
        {
            const std::lock_guard<std::mutex> lock(socket->mutex_);
            socket->accepting_ = false;
            socket->left_.notify_all();
        }
    } leave{this};
    return TServerSocket::acceptImpl();
}

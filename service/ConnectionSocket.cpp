#include "service/ConnectionSocket.h"

#include <thrift/transport/TTransportException.h>

#include <algorithm>
#include <utility>

using apache::thrift::transport::TTransportException;

ConnectionSocket::ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                                   std::shared_ptr<const std::atomic<bool>> stopping,
                                   std::shared_ptr<Connections> connections)
    : TSocket(socket, std::move(interrupt)),
      stopping_(std::move(stopping)),
      connections_(std::move(connections))
{
    configureSendTimeout();
    if (connections_)
        connections_->add(this);
}

ConnectionSocket::~ConnectionSocket()
{
    ConnectionSocket::close();
}

void ConnectionSocket::close()
{
    if (connections_)
        connections_->remove(this, [this] { TSocket::close(); });
    else
        TSocket::close();
}

void ConnectionSocket::write(const std::uint8_t* bytes, std::uint32_t length)
{
    for (std::uint32_t sent = 0; sent < length;) {
        const std::uint32_t count = write_partial(bytes + sent, length - sent);
        // Nothing was sent for the whole time limit.
        if (count == 0 && !waitToSend() && *stopping_)
            throw TTransportException(TTransportException::TIMED_OUT, "the client does not read");
        sent += count;
    }
}

void ConnectionSocket::writeTogether(const std::uint8_t* first, std::uint32_t firstLength,
                                     const std::uint8_t* second, std::uint32_t secondLength)
{
    const std::uint32_t sent = sendBoth(first, firstLength, second, secondLength);
    const std::uint32_t sentOfFirst = std::min(sent, firstLength);
    // After an error, write meets it again and reports it.
    write(first + sentOfFirst, firstLength - sentOfFirst);
    write(second + (sent - sentOfFirst), secondLength - (sent - sentOfFirst));
}

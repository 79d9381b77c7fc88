#include "service/ConnectionSocket.h"

#include <thrift/transport/TTransportException.h>

#include <utility>

using apache::thrift::transport::TTransportException;

ConnectionSocket::ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                                   std::shared_ptr<const std::atomic<bool>> stopping)
    : TSocket(socket, std::move(interrupt)), stopping_(std::move(stopping))
{
    configureSendTimeout();
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

#include "service/ConnectionSocket.h"

#include <thrift/transport/PlatformSocket.h>
#include <thrift/transport/TTransportException.h>

#include <fcntl.h>
#if __has_include(<poll.h>)
#include <poll.h>
#endif

#include <utility>

using apache::thrift::transport::TSocket;
using apache::thrift::transport::TTransportException;

namespace {

constexpr int kStallMs = 500;

void setNonBlocking(THRIFT_SOCKET socket)
{
    const int flags = THRIFT_FCNTL(socket, THRIFT_F_GETFL, 0);
    THRIFT_FCNTL(socket, THRIFT_F_SETFL, flags | THRIFT_O_NONBLOCK);
}

} // namespace

// A time limit of the socket for sending would not do: on Windows the connection is of no use once it has run
// out. A read waits with the interrupt before it takes anything, so it never finds the socket empty.
ConnectionSocket::ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                                   std::shared_ptr<const std::atomic<bool>> stopping)
    : TSocket(socket, interrupt), stopping_(std::move(stopping))
{
    if (interrupt)
        setNonBlocking(socket);
}

bool ConnectionSocket::canSendWithin(int milliseconds)
{
    struct THRIFT_POLLFD own = {};
    own.fd = getSocketFD();
    own.events = THRIFT_POLLOUT;
    return THRIFT_POLL(&own, 1, milliseconds) != 0;
}

void ConnectionSocket::write(const std::uint8_t* bytes, std::uint32_t length)
{
    for (std::uint32_t sent = 0; sent < length;) {
        const std::uint32_t count = write_partial(bytes + sent, length - sent);
        if (count == 0 && !canSendWithin(kStallMs) && *stopping_)
            throw TTransportException(TTransportException::TIMED_OUT, "the client does not read");
        sent += count;
    }
}

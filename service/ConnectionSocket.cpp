#include "service/ConnectionSocket.h"

#include <thrift/transport/PlatformSocket.h>
#include <thrift/transport/TTransportException.h>

#include <QtCore/QtGlobal>

#include <utility>

using apache::thrift::transport::TSocket;
using apache::thrift::transport::TTransportException;

namespace {

constexpr int kSendTimeoutMs = 500;

#ifdef Q_OS_WIN

// On Windows a socket is unusable after a send timeout, so it is non-blocking and write polls. Reads still
// block: before each read the base class polls the socket together with the interrupt.
void configureSendTimeout(TSocket& socket)
{
    const int flags = THRIFT_FCNTL(socket.getSocketFD(), THRIFT_F_GETFL, 0);
    THRIFT_FCNTL(socket.getSocketFD(), THRIFT_F_SETFL, flags | THRIFT_O_NONBLOCK);
}

bool waitToSend(TSocket& socket)
{
    struct THRIFT_POLLFD own = {};
    own.fd = socket.getSocketFD();
    own.events = THRIFT_POLLOUT;
    return THRIFT_POLL(&own, 1, kSendTimeoutMs) != 0;
}

#else

void configureSendTimeout(TSocket& socket)
{
    socket.setSendTimeout(kSendTimeoutMs);
}

// The send timeout has already expired in the call that sent nothing.
bool waitToSend(TSocket&)
{
    return false;
}

#endif

} // namespace

ConnectionSocket::ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                                   std::shared_ptr<const std::atomic<bool>> stopping)
    : TSocket(socket, std::move(interrupt)), stopping_(std::move(stopping))
{
    configureSendTimeout(*this);
}

void ConnectionSocket::write(const std::uint8_t* bytes, std::uint32_t length)
{
    for (std::uint32_t sent = 0; sent < length;) {
        const std::uint32_t count = write_partial(bytes + sent, length - sent);
        // Nothing was sent for the whole time limit.
        if (count == 0 && !waitToSend(*this) && *stopping_)
            throw TTransportException(TTransportException::TIMED_OUT, "the client does not read");
        sent += count;
    }
}

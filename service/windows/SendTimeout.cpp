#include "service/ConnectionSocket.h"

#include <thrift/transport/PlatformSocket.h>

// On Windows a socket is unusable after a send timeout, so it is non-blocking and write polls. Reads still
// block: before each read the base class polls the socket together with the interrupt.
void ConnectionSocket::configureSendTimeout()
{
    const int flags = THRIFT_FCNTL(getSocketFD(), THRIFT_F_GETFL, 0);
    THRIFT_FCNTL(getSocketFD(), THRIFT_F_SETFL, flags | THRIFT_O_NONBLOCK);
}

bool ConnectionSocket::waitToSend()
{
    struct THRIFT_POLLFD own = {};
    own.fd = getSocketFD();
    own.events = THRIFT_POLLOUT;
    return THRIFT_POLL(&own, 1, kSendTimeoutMs) != 0;
}

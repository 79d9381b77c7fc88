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

std::uint32_t ConnectionSocket::sendBoth(const std::uint8_t* first, std::uint32_t firstLength,
                                         const std::uint8_t* second, std::uint32_t secondLength)
{
    // WSASend only reads the blocks.
    const auto block = [](const std::uint8_t* bytes, std::uint32_t length) {
        return WSABUF{length, reinterpret_cast<char*>(const_cast<std::uint8_t*>(bytes))};
    };
    WSABUF blocks[] = {block(first, firstLength), block(second, secondLength)};
    DWORD sent = 0;
    const int result = WSASend(getSocketFD(), blocks, 2, &sent, 0, nullptr, nullptr);
    return result == 0 ? sent : 0;
}

// The socket is non-blocking, so that a read must poll in any case.
std::uint32_t ConnectionSocket::read(std::uint8_t* buffer, std::uint32_t length)
{
    return TSocket::read(buffer, length);
}

void ConnectionSocket::endReads() {}

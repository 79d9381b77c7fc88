#include "service/ConnectionSocket.h"

#include <sys/socket.h>
#include <sys/uio.h>

void ConnectionSocket::configureSendTimeout()
{
    setSendTimeout(kSendTimeoutMs);
}

// The send timeout has already expired in the call that sent nothing.
bool ConnectionSocket::waitToSend()
{
    return false;
}

std::uint32_t ConnectionSocket::sendBoth(const std::uint8_t* first, std::uint32_t firstLength,
                                         const std::uint8_t* second, std::uint32_t secondLength)
{
    // sendmsg only reads the blocks.
    iovec blocks[] = {{const_cast<std::uint8_t*>(first), firstLength},
                      {const_cast<std::uint8_t*>(second), secondLength}};
    msghdr message = {};
    message.msg_iov = blocks;
    message.msg_iovlen = 2;
    // Without waiting: write waits, and gives up half a second after the client's last read during a stop.
    const ssize_t sent = ::sendmsg(getSocketFD(), &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent < 0 ? 0 : static_cast<std::uint32_t>(sent);
}

std::uint32_t ConnectionSocket::read(std::uint8_t* buffer, std::uint32_t length)
{
    if (connections_) {
        const ssize_t received = ::recv(getSocketFD(), buffer, length, 0);
        if (received > 0 && !*stopping_)
            return static_cast<std::uint32_t>(received);
    }
    // The base class reports a stop, the end of the connection and errors.
    return TSocket::read(buffer, length);
}

void ConnectionSocket::endReads()
{
    ::shutdown(getSocketFD(), SHUT_RD);
}

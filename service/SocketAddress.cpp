#include "service/SocketAddress.h"

#include <cstring>

SocketAddress SocketAddress::ofPeer(THRIFT_SOCKET socket)
{
    SocketAddress address;
    socklen_t length = sizeof(address.storage_);
    if (getpeername(socket, reinterpret_cast<sockaddr*>(&address.storage_), &length) != 0)
        return {};
    address.unmap();
    return address;
}

SocketAddress SocketAddress::ofOwnEnd(THRIFT_SOCKET socket)
{
    SocketAddress address;
    socklen_t length = sizeof(address.storage_);
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&address.storage_), &length) != 0)
        return {};
    address.unmap();
    return address;
}

bool SocketAddress::isLoopback() const
{
    if (family() == AF_INET)
        return (ntohl(ipv4().s_addr) >> 24) == 127;
    return family() == AF_INET6 && IN6_IS_ADDR_LOOPBACK(&ipv6());
}

unsigned short SocketAddress::port() const
{
    return family() == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(storage_).sin6_port
                                : reinterpret_cast<const sockaddr_in&>(storage_).sin_port;
}

void SocketAddress::unmap()
{
    if (family() != AF_INET6 || !IN6_IS_ADDR_V4MAPPED(&ipv6()))
        return;
    sockaddr_in plain = {};
    plain.sin_family = AF_INET;
    plain.sin_port = port();
    std::memcpy(&plain.sin_addr, &ipv6().s6_addr[12], sizeof(plain.sin_addr));
    storage_ = {};
    std::memcpy(&storage_, &plain, sizeof(plain));
}

#pragma once

#include <thrift/transport/PlatformSocket.h>

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <netinet/in.h>
#include <sys/socket.h>
#endif

/// The address of one end of a socket. IPv4 mapped into IPv6 is converted to IPv4, because the system lists
/// such a connection under its IPv4 addresses if the other end uses IPv4.
class SocketAddress
{
public:
    static SocketAddress ofPeer(THRIFT_SOCKET socket);
    static SocketAddress ofOwnEnd(THRIFT_SOCKET socket);

    /// AF_INET, AF_INET6, another family, or AF_UNSPEC if the socket has no address.
    int family() const { return storage_.ss_family; }
    bool isLoopback() const;
    /// Valid only for their family. Addresses and ports are in network byte order.
    const in_addr& ipv4() const { return reinterpret_cast<const sockaddr_in&>(storage_).sin_addr; }
    const in6_addr& ipv6() const { return reinterpret_cast<const sockaddr_in6&>(storage_).sin6_addr; }
    unsigned short port() const;

private:
    void unmap();

    sockaddr_storage storage_ = {};
};

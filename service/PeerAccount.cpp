#include "service/PeerAccount.h"

#include "service/SocketAddress.h"

bool isRemotePeer(THRIFT_SOCKET connection)
{
    const SocketAddress peer = SocketAddress::ofPeer(connection);
    return (peer.family() == AF_INET || peer.family() == AF_INET6) && !peer.isLoopback();
}

bool isBoundToLoopback(THRIFT_SOCKET listening)
{
    return SocketAddress::ofOwnEnd(listening).isLoopback();
}

#pragma once

#include <thrift/transport/PlatformSocket.h>

#include <functional>
#include <string>

/// The account whose process holds the other end of a connection within this computer.
struct PeerAccount
{
    enum class Kind {
        Same,    ///< The account of this process.
        System,  ///< root, or the system account of Windows.
        Other,   ///< Any other account.
        Gone,    ///< The client has closed its end.
        Unknown, ///< The query failed.
    };

    Kind kind = Kind::Unknown;
    /// Describes another account: its number on Linux, its SID on Windows, and its name if a file of this
    /// computer has it. Empty function otherwise. Reads that file when called, so call it only for a message.
    std::function<std::string()> name;
};

/// Queries the system. Any thread; never throws, and does not wait for the client or for another computer.
/// @p connection: a connected TCP socket, the service's end.
PeerAccount peerAccount(THRIFT_SOCKET connection);

/// True if the client's address is known and is not a loopback address (IPv4, IPv6, or IPv4 mapped into
/// IPv6). A connection that the client has reset has no address.
bool isRemotePeer(THRIFT_SOCKET connection);
/// True if @p listening is bound to a loopback address, so that only this computer can connect.
bool isBoundToLoopback(THRIFT_SOCKET listening);

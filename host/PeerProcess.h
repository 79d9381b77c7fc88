#pragma once

#include <QtCore/QString>

#include <optional>

namespace host {

/// A process of this computer.
struct PeerProcess
{
    qint64 id = 0;
    QString name; ///< of its program; empty if it cannot be read
};

/// The process at the other end of a loopback connection to the agent service: the owner of the socket with
/// the local port @p clientPort and the remote port @p servicePort. Empty if it is not found, for example a
/// process of another user. Takes milliseconds; any thread.
std::optional<PeerProcess> findPeerProcess(int clientPort, int servicePort);

} // namespace host

#include "host/PeerProcess.h"

#include <QtCore/QFileInfo>

#include <vector>

#include <winsock2.h>

#include <iphlpapi.h>
#include <tcpmib.h>
#include <windows.h>

namespace host {

namespace {

constexpr DWORD kPathLength = 1024;
// The table can grow between two calls.
constexpr int kAttempts = 4;

int portOf(DWORD networkOrder)
{
    return ntohs(static_cast<u_short>(networkOrder));
}

// The table of TCP connections of an address family, with the owners of the sockets; empty on failure.
std::vector<char> readTable(ULONG family)
{
    std::vector<char> bytes;
    DWORD size = 0;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const DWORD error =
            GetExtendedTcpTable(bytes.data(), &size, FALSE, family, TCP_TABLE_OWNER_PID_CONNECTIONS, 0);
        if (error == NO_ERROR)
            return bytes;
        if (error != ERROR_INSUFFICIENT_BUFFER)
            break;
        bytes.resize(size);
    }
    return {};
}

// 0 if the table does not have the connection.
template <class Table> DWORD ownerIn(ULONG family, int clientPort, int servicePort)
{
    const std::vector<char> bytes = readTable(family);
    if (bytes.size() < sizeof(DWORD))
        return 0;
    const auto* table = reinterpret_cast<const Table*>(bytes.data());
    for (DWORD i = 0; i < table->dwNumEntries; ++i) {
        const auto& row = table->table[i];
        if (portOf(row.dwLocalPort) == clientPort && portOf(row.dwRemotePort) == servicePort)
            return row.dwOwningPid;
    }
    return 0;
}

QString nameOf(DWORD id)
{
    HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (process == nullptr)
        return QString();
    wchar_t path[kPathLength];
    DWORD length = kPathLength;
    const bool isRead = QueryFullProcessImageNameW(process, 0, path, &length) != 0;
    CloseHandle(process);
    return isRead ? QFileInfo(QString::fromWCharArray(path, static_cast<int>(length)).replace('\\', '/'))
                        .fileName()
                  : QString();
}

} // namespace

std::optional<PeerProcess> findPeerProcess(int clientPort, int servicePort)
{
    DWORD id = ownerIn<MIB_TCPTABLE_OWNER_PID>(AF_INET, clientPort, servicePort);
    if (id == 0)
        id = ownerIn<MIB_TCP6TABLE_OWNER_PID>(AF_INET6, clientPort, servicePort);
    return id == 0 ? std::nullopt : std::optional<PeerProcess>({static_cast<qint64>(id), nameOf(id)});
}

} // namespace host

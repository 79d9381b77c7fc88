#include "service/PeerAccount.h"

#include "service/SocketAddress.h"

#include <iphlpapi.h>
#include <sddl.h>
#include <windows.h>

#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace {

struct CloseHandleOf
{
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

struct Ends
{
    SocketAddress peer;
    SocketAddress own;
};

// Neither a listening socket nor one that has just begun to connect is an end of the connection. A client
// that has finished sending is one.
bool isConnected(DWORD state)
{
    return state == MIB_TCP_STATE_ESTAB || state == MIB_TCP_STATE_FIN_WAIT1 ||
           state == MIB_TCP_STATE_FIN_WAIT2 || state == MIB_TCP_STATE_CLOSE_WAIT ||
           state == MIB_TCP_STATE_CLOSING || state == MIB_TCP_STATE_LAST_ACK;
}

// The rows contain ports as numbers in network byte order.
bool isClientEnd(const MIB_TCPROW_OWNER_PID& row, const Ends& ends)
{
    return isConnected(row.dwState) && row.dwLocalAddr == ends.peer.ipv4().s_addr &&
           row.dwRemoteAddr == ends.own.ipv4().s_addr && row.dwLocalPort == ends.peer.port() &&
           row.dwRemotePort == ends.own.port();
}

bool isClientEnd(const MIB_TCP6ROW_OWNER_PID& row, const Ends& ends)
{
    return isConnected(row.dwState) &&
           std::memcmp(row.ucLocalAddr, &ends.peer.ipv6(), sizeof(row.ucLocalAddr)) == 0 &&
           std::memcmp(row.ucRemoteAddr, &ends.own.ipv6(), sizeof(row.ucRemoteAddr)) == 0 &&
           row.dwLocalPort == ends.peer.port() && row.dwRemotePort == ends.own.port();
}

// The table can grow between the query of its size and its reading, so this tries again.
std::vector<char> connectionTable(ULONG family, TCP_TABLE_CLASS rows)
{
    std::vector<char> bytes(16384);
    for (int attempt = 0; attempt < 4; ++attempt) {
        auto size = static_cast<DWORD>(bytes.size());
        const DWORD result = GetExtendedTcpTable(bytes.data(), &size, FALSE, family, rows, 0);
        if (result == NO_ERROR)
            return bytes;
        if (result != ERROR_INSUFFICIENT_BUFFER)
            return {};
        bytes.resize(size + 4096);
    }
    return {};
}

template <class Table> std::optional<DWORD> processIn(const std::vector<char>& bytes, const Ends& ends)
{
    if (bytes.empty())
        return std::nullopt;
    const auto* table = reinterpret_cast<const Table*>(bytes.data());
    for (DWORD i = 0; i < table->dwNumEntries; ++i)
        if (isClientEnd(table->table[i], ends))
            return table->table[i].dwOwningPid;
    return std::nullopt;
}

bool isWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

std::optional<DWORD> processIn(TCP_TABLE_CLASS rows, const Ends& ends)
{
    const std::vector<char> bytes = connectionTable(static_cast<ULONG>(ends.peer.family()), rows);
    return ends.peer.family() == AF_INET ? processIn<MIB_TCPTABLE_OWNER_PID>(bytes, ends)
                                         : processIn<MIB_TCP6TABLE_OWNER_PID>(bytes, ends);
}

// The process that holds the client's end; none without such an end.
std::optional<DWORD> clientProcess(const Ends& ends)
{
    const std::optional<DWORD> open = processIn(TCP_TABLE_OWNER_PID_CONNECTIONS, ends);
    // The short table can lack a client that has finished sending. The long one takes Wine seconds.
    return open || isWine() ? open : processIn(TCP_TABLE_OWNER_PID_ALL, ends);
}

// A TOKEN_USER, whose SID points into the same bytes; empty if the token cannot be read.
std::vector<char> userOf(HANDLE process)
{
    HANDLE opened = nullptr;
    if (!OpenProcessToken(process, TOKEN_QUERY, &opened))
        return {};
    const Handle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<char> bytes(size);
    return size != 0 && GetTokenInformation(token.get(), TokenUser, bytes.data(), size, &size)
               ? bytes
               : std::vector<char>();
}

PSID sidIn(const std::vector<char>& user)
{
    return reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid;
}

// The name of a SID can be known only to another computer, so the log has the SID alone.
std::string textOf(PSID sid)
{
    char* text = nullptr;
    if (!ConvertSidToStringSidA(sid, &text))
        return {};
    std::string result = text;
    LocalFree(text);
    return result;
}

} // namespace

PeerAccount peerAccount(THRIFT_SOCKET connection)
{
    const Ends ends{SocketAddress::ofPeer(connection), SocketAddress::ofOwnEnd(connection)};
    if (ends.peer.family() == AF_UNSPEC)
        return {PeerAccount::Kind::Gone, {}};
    if (ends.peer.family() != ends.own.family() ||
        (ends.peer.family() != AF_INET && ends.peer.family() != AF_INET6))
        return {};
    const std::optional<DWORD> id = clientProcess(ends);
    if (!id)
        return {PeerAccount::Kind::Gone, {}};
    // Windows knows the process of every open connection. Wine does not for IPv6 and for programs of the
    // system below it, so it cannot tell accounts apart there.
    if (*id == 0 && isWine())
        return {PeerAccount::Kind::Same, {}};
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, *id));
    // The number of an ended process is used again. While the handle is open, this cannot happen to it.
    if (!process || clientProcess(ends) != id)
        return {};
    const std::vector<char> client = userOf(process.get());
    const std::vector<char> own = userOf(GetCurrentProcess());
    if (client.empty() || own.empty())
        return {};
    if (EqualSid(sidIn(client), sidIn(own)))
        return {PeerAccount::Kind::Same, {}};
    if (IsWellKnownSid(sidIn(client), WinLocalSystemSid))
        return {PeerAccount::Kind::System, {}};
    return {PeerAccount::Kind::Other, [sid = textOf(sidIn(client))] { return sid; }};
}

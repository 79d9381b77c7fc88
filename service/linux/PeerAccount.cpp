#include "service/PeerAccount.h"

#include "service/SocketAddress.h"

#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

namespace {

// A kernel answers at once. A sandbox that does not know this kind of socket might not answer at all.
constexpr timeval kAnswerTimeout{0, 200000};

class NetlinkSocket
{
public:
    NetlinkSocket() : descriptor_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG))
    {
        setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &kAnswerTimeout, sizeof(kAnswerTimeout));
    }
    ~NetlinkSocket()
    {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    NetlinkSocket(const NetlinkSocket&) = delete;
    NetlinkSocket& operator=(const NetlinkSocket&) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

void copyAddress(void* target, const SocketAddress& address)
{
    if (address.family() == AF_INET)
        std::memcpy(target, &address.ipv4(), sizeof(in_addr));
    else
        std::memcpy(target, &address.ipv6(), sizeof(in6_addr));
}

// The client's end of the connection: its own address is our peer's.
inet_diag_sockid clientEnd(const SocketAddress& peer, const SocketAddress& own)
{
    inet_diag_sockid id = {};
    id.idiag_sport = peer.port();
    id.idiag_dport = own.port();
    copyAddress(id.idiag_src, peer);
    copyAddress(id.idiag_dst, own);
    id.idiag_cookie[0] = INET_DIAG_NOCOOKIE;
    id.idiag_cookie[1] = INET_DIAG_NOCOOKIE;
    return id;
}

// The kernel also answers with a listening socket on the client's port, or with a socket that has just begun
// to connect from it. Neither is an end of this connection.
bool isEndOfConnection(const inet_diag_msg& socket, const inet_diag_sockid& wanted)
{
    const bool connected = socket.idiag_state != TCP_LISTEN && socket.idiag_state != TCP_SYN_SENT &&
                           socket.idiag_state != TCP_SYN_RECV && socket.idiag_state != TCP_CLOSE;
    return connected && socket.id.idiag_sport == wanted.idiag_sport &&
           socket.id.idiag_dport == wanted.idiag_dport;
}

// The kernel's entry of the socket; none if there is no such socket or the kernel does not answer.
std::optional<inet_diag_msg> entryOf(int family, const inet_diag_sockid& end)
{
    struct
    {
        nlmsghdr header;
        inet_diag_req_v2 query;
    } request = {};
    request.header.nlmsg_len = sizeof(request);
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST;
    request.query.sdiag_family = static_cast<__u8>(family);
    request.query.sdiag_protocol = IPPROTO_TCP;
    request.query.idiag_states = ~0U;
    request.query.id = end;

    const NetlinkSocket netlink;
    if (send(netlink.descriptor(), &request, sizeof(request), 0) != ssize_t(sizeof(request)))
        return std::nullopt;
    alignas(nlmsghdr) char answer[4096];
    const ssize_t length = recv(netlink.descriptor(), answer, sizeof(answer), 0);
    const auto* header = reinterpret_cast<const nlmsghdr*>(answer);
    if (length < ssize_t(NLMSG_LENGTH(sizeof(inet_diag_msg))) || header->nlmsg_type != SOCK_DIAG_BY_FAMILY)
        return std::nullopt;
    inet_diag_msg found = {};
    std::memcpy(&found, NLMSG_DATA(header), sizeof(found));
    return isEndOfConnection(found, end) ? std::optional<inet_diag_msg>(found) : std::nullopt;
}

// False once the client has closed its end, or at least its direction.
bool isEstablished(THRIFT_SOCKET connection)
{
    tcp_info info = {};
    socklen_t length = sizeof(info);
    return getsockopt(connection, IPPROTO_TCP, TCP_INFO, &info, &length) == 0 &&
           info.tcpi_state == TCP_ESTABLISHED;
}

// Only the local file: the name service can ask another computer, which takes time.
std::string nameOf(uid_t user)
{
    const std::string number = "user " + std::to_string(user);
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen("/etc/passwd", "re"), std::fclose);
    if (!file)
        return number;
    passwd entry = {};
    passwd* found = nullptr;
    char text[4096];
    while (fgetpwent_r(file.get(), &entry, text, sizeof(text), &found) == 0)
        if (entry.pw_uid == user)
            return number + " (" + entry.pw_name + ")";
    return number;
}

} // namespace

PeerAccount peerAccount(THRIFT_SOCKET connection)
{
    const SocketAddress peer = SocketAddress::ofPeer(connection);
    const SocketAddress own = SocketAddress::ofOwnEnd(connection);
    if (peer.family() == AF_UNSPEC)
        return {PeerAccount::Kind::Gone, {}};
    if (peer.family() != own.family() || (peer.family() != AF_INET && peer.family() != AF_INET6))
        return {};
    const std::optional<inet_diag_msg> entry = entryOf(peer.family(), clientEnd(peer, own));
    if (!entry)
        return {isEstablished(connection) ? PeerAccount::Kind::Unknown : PeerAccount::Kind::Gone, {}};
    // Without an inode, the socket no longer belongs to a process, and the kernel reports user 0.
    if (entry->idiag_inode == 0)
        return {PeerAccount::Kind::Gone, {}};
    if (entry->idiag_uid == geteuid())
        return {PeerAccount::Kind::Same, {}};
    if (entry->idiag_uid == 0)
        return {PeerAccount::Kind::System, {}};
    return {PeerAccount::Kind::Other, [user = entry->idiag_uid] { return nameOf(user); }};
}

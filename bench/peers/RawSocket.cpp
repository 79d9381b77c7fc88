#include "bench/peers/RawSocket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace {

// Opens a socket for the first address of localhost that `open` accepts, as the service and its client do.
template <typename Open> int openOnLoopback(int port, Open open)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (const int code = getaddrinfo("localhost", std::to_string(port).c_str(), &hints, &found))
        throw std::runtime_error(gai_strerror(code));
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, freeaddrinfo);
    for (const addrinfo* entry = found; entry != nullptr; entry = entry->ai_next) {
        const int descriptor =
            ::socket(entry->ai_family, entry->ai_socktype | SOCK_CLOEXEC, entry->ai_protocol);
        if (descriptor >= 0 && open(descriptor, *entry))
            return descriptor;
        if (descriptor >= 0)
            ::close(descriptor);
    }
    throw std::system_error(errno, std::generic_category(), "socket on loopback");
}

// The runtime sets this option on both ends of its connections.
void sendWithoutDelay(int descriptor)
{
    const int on = 1;
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

} // namespace

RawSocket RawSocket::listening()
{
    return RawSocket(openOnLoopback(0, [](int descriptor, const addrinfo& address) {
        return ::bind(descriptor, address.ai_addr, address.ai_addrlen) == 0 && ::listen(descriptor, 1) == 0;
    }));
}

RawSocket RawSocket::connectedTo(int port)
{
    return RawSocket(openOnLoopback(port, [](int descriptor, const addrinfo& address) {
        sendWithoutDelay(descriptor);
        return ::connect(descriptor, address.ai_addr, address.ai_addrlen) == 0;
    }));
}

RawSocket::~RawSocket()
{
    if (isValid())
        ::close(descriptor_);
}

RawSocket::RawSocket(RawSocket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

int RawSocket::port() const
{
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    getsockname(descriptor_, reinterpret_cast<sockaddr*>(&address), &length);
    // sin_port and sin6_port are at the same offset.
    return ntohs(reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
}

RawSocket RawSocket::accept() const
{
    const int descriptor = ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC);
    if (descriptor >= 0)
        sendWithoutDelay(descriptor);
    return RawSocket(descriptor);
}

void RawSocket::shutDown() const
{
    ::shutdown(descriptor_, SHUT_RDWR);
}

bool RawSocket::send(const std::string& bytes) const
{
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(descriptor_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

bool RawSocket::receive(char* bytes, std::size_t length) const
{
    for (std::size_t received = 0; received < length;) {
        const ssize_t count = ::recv(descriptor_, bytes + received, length - received, 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        received += static_cast<std::size_t>(count);
    }
    return true;
}

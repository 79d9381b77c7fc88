#include "tests/support/RawClient.h"

#include <algorithm>
#include <stdexcept>

#include "tests/support/SocketCalls.h"

RawClient::RawClient(int port) : socket_(connectTo(port))
{
    if (socket_ < 0)
        throw std::runtime_error("nobody listens on port " + std::to_string(port));
    const int on = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
}

RawClient::~RawClient()
{
    closeSocket(socket_);
}

void RawClient::send(const std::string& bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            throw std::runtime_error("the server has ended the connection");
        sent += static_cast<std::size_t>(count);
    }
}

void RawClient::sendByteByByte(const std::string& bytes)
{
    for (const char byte : bytes)
        send(std::string(1, byte));
}

std::string RawClient::take(std::size_t count)
{
    // Read in pieces: allocating and clearing the buffer of a long reply in one go can take longer on a
    // loaded machine than a stopping server waits for a client that reads nothing.
    constexpr std::size_t piece = 256 * 1024;
    std::string bytes;
    bytes.reserve(count);
    while (bytes.size() < count) {
        if (!hasInput(limitMs))
            throw std::runtime_error("no answer in time");
        const std::size_t had = bytes.size();
        bytes.resize(std::min(count, had + piece));
        const auto got = ::recv(socket_, &bytes[had], bytes.size() - had, 0);
        if (got <= 0)
            throw std::runtime_error("the server has ended the connection");
        bytes.resize(had + static_cast<std::size_t>(got));
    }
    return bytes;
}

wire::Message RawClient::ask(const std::string& bytes)
{
    send(bytes);
    return receive();
}

void RawClient::finishSending()
{
    ::shutdown(socket_, SHUT_WR);
}

bool RawClient::isEndedByServer()
{
    char byte = 0;
    return hasInput(limitMs) && ::recv(socket_, &byte, 1, 0) <= 0;
}

bool RawClient::hasInput(int waitMs)
{
    pollfd entry = {};
    entry.fd = socket_;
    entry.events = POLLIN;
    return pollSockets(&entry, 1, waitMs) > 0;
}

bool RawClient::isListening(int port)
{
    const int socket = connectTo(port);
    if (socket >= 0)
        closeSocket(socket);
    return socket >= 0;
}

int RawClient::connectTo(int port)
{
    startSockets();
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo("localhost", std::to_string(port).c_str(), &hints, &found) != 0)
        return -1;
    int result = -1;
    for (const addrinfo* entry = found; entry != nullptr && result < 0; entry = entry->ai_next) {
        result = static_cast<int>(::socket(entry->ai_family, entry->ai_socktype, entry->ai_protocol));
        if (result >= 0 && ::connect(result, entry->ai_addr, entry->ai_addrlen) != 0) {
            closeSocket(result);
            result = -1;
        }
    }
    ::freeaddrinfo(found);
    return result;
}

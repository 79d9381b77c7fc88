#pragma once

// The few socket calls whose names differ between systems.

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <winsock2.h>
#include <ws2tcpip.h>

constexpr int MSG_NOSIGNAL = 0;
constexpr int SHUT_WR = SD_SEND;

inline int closeSocket(int socket)
{
    return ::closesocket(static_cast<SOCKET>(socket));
}

inline int pollSockets(pollfd* entries, unsigned long count, int waitMs)
{
    return ::WSAPoll(entries, count, waitMs);
}

// To be called before the first socket is made.
inline void startSockets()
{
    static const int started = [] {
        WSADATA data;
        return ::WSAStartup(MAKEWORD(2, 2), &data);
    }();
    static_cast<void>(started);
}

#else

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

inline int closeSocket(int socket)
{
    return ::close(socket);
}

inline int pollSockets(pollfd* entries, unsigned long count, int waitMs)
{
    return ::poll(entries, count, waitMs);
}

inline void startSockets() {}

#endif

#include "host/ListeningPort.h"

#include <netinet/in.h>
#include <sys/socket.h>

namespace host {

namespace {

constexpr int kDescriptors = 1024;

int localPort(int descriptor)
{
    sockaddr_storage address = {};
    socklen_t length = sizeof address;
    if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return -1;
    if (address.ss_family == AF_INET)
        return ntohs(reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
    if (address.ss_family == AF_INET6)
        return ntohs(reinterpret_cast<const sockaddr_in6*>(&address)->sin6_port);
    return -1;
}

} // namespace

bool isListeningHere(int port)
{
    for (int descriptor = 0; descriptor < kDescriptors; ++descriptor) {
        int listening = 0;
        socklen_t length = sizeof listening;
        if (getsockopt(descriptor, SOL_SOCKET, SO_ACCEPTCONN, &listening, &length) == 0 && listening != 0 &&
            localPort(descriptor) == port)
            return true;
    }
    return false;
}

} // namespace host

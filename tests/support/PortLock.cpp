#include "tests/support/PortLock.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

// A socket in the abstract namespace.
int lockPort(int port)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = "aibridge-test-port-" + std::to_string(port);
    std::copy(name.begin(), name.end(), address.sun_path + 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    const int lock = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (lock >= 0 && ::bind(lock, reinterpret_cast<const sockaddr*>(&address), size) == 0)
        return lock;
    ::close(lock);
    return -1;
}

void unlockPort(int lock)
{
    ::close(lock);
}

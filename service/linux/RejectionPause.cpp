#include "service/RejectionPause.h"

#include <poll.h>

#include <chrono>
#include <thread>

void pauseBeforeRejection(THRIFT_SOCKET listening)
{
    constexpr std::chrono::microseconds pause(200);
    pollfd queue = {listening, POLLIN, 0};
    if (::poll(&queue, 1, 0) == 0)
        std::this_thread::sleep_for(pause);
}

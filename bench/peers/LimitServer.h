#pragma once

#include "bench/peers/RawSocket.h"

#include <string>
#include <thread>

/// Answers each call of one connection with the same prepared bytes, the least that a server of this contract
/// can do. A call counts as complete when its known number of bytes was read.
class LimitServer
{
public:
    LimitServer(std::size_t callLength, std::string reply);
    /// Waits for the client's end of the connection.
    ~LimitServer();

    int port() const { return socket_.port(); }

private:
    void serve();

    const std::size_t callLength_;
    const std::string reply_;
    const RawSocket socket_;
    std::thread thread_;
};

#include "bench/peers/LimitServer.h"

#include <utility>
#include <vector>

LimitServer::LimitServer(std::size_t callLength, std::string reply)
    : callLength_(callLength),
      reply_(std::move(reply)),
      socket_(RawSocket::listening()),
      thread_([this] { serve(); })
{
}

LimitServer::~LimitServer()
{
    socket_.shutDown();
    thread_.join();
}

void LimitServer::serve()
{
    const RawSocket connection = socket_.accept();
    std::vector<char> call(callLength_);
    while (connection.isValid() && connection.receive(call.data(), call.size()) && connection.send(reply_)) {
    }
}

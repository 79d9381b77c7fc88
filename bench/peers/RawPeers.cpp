#include "bench/peers/RawPeers.h"

#include <algorithm>
#include <stdexcept>

RawPeer::RawPeer(int port, const RecordedCall& recorded)
    : recorded_(recorded), reply_(recorded.reply.size()), socket_(RawSocket::connectedTo(port))
{
}

void RawPeer::call()
{
    if (!socket_.send(recorded_.call) || !socket_.receive(reply_.data(), reply_.size()))
        throw std::runtime_error("the connection ended");
}

bool RawPeer::isCorrect(const Records& expected)
{
    std::fill(reply_.begin(), reply_.end(), '\0');
    call();
    return recorded_.records == expected &&
           std::equal(reply_.begin(), reply_.end(), recorded_.reply.begin(), recorded_.reply.end());
}

LimitPeer::LimitPeer(const RecordedCall& recorded)
    : server_(recorded.call.size(), recorded.reply), client_(server_.port(), recorded)
{
}

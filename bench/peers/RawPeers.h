#pragma once

#include "bench/peers/LimitServer.h"
#include "bench/peers/Peer.h"
#include "bench/peers/RawSocket.h"
#include "bench/peers/RecordedCall.h"

#include <vector>

/// A client that sends prepared bytes and reads as many bytes as the reply has, without decoding them.
class RawPeer : public Peer
{
public:
    /// @p recorded must outlive the peer.
    RawPeer(int port, const RecordedCall& recorded);

    void call() override;
    /// Compares the bytes with the recorded ones, which the caller has decoded.
    bool isCorrect(const Records& expected) override;

private:
    const RecordedCall& recorded_;
    std::vector<char> reply_;
    const RawSocket socket_;
};

/// The same client, and a server that sends the recorded reply.
class LimitPeer : public Peer
{
public:
    explicit LimitPeer(const RecordedCall& recorded);

    void call() override { client_.call(); }
    bool isCorrect(const Records& expected) override { return client_.isCorrect(expected); }

private:
    LimitServer server_;
    // Closes the connection before the server's destructor waits for its end.
    RawPeer client_;
};

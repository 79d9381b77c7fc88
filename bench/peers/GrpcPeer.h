#pragma once

#include "bench/peers/Peer.h"

#include <memory>

/// A synchronous gRPC server on loopback that answers from prepared records, and a synchronous client.
class GrpcPeer : public Peer
{
public:
    /// @p prepared: the records of the reply.
    GrpcPeer(const Records& prepared, Call call);
    ~GrpcPeer() override;

    void call() override;
    bool isCorrect(const Records& expected) override;

private:
    struct Parts;
    const std::unique_ptr<Parts> parts_;
    const Call call_;
};

#pragma once

#include "bench/WireService.h"
#include "bench/peers/Peer.h"

#include "bridge/AIBridge.h"

#include <memory>

/// The service, and a bare server of the same runtime with the same reply.
struct ThriftServices
{
    AIBridge bridge;
    Records reply; ///< read from the inventory without a connection
    std::unique_ptr<WireService> ours;
    std::unique_ptr<WireService> bare;

    explicit ThriftServices(const Case& entry);
};

/// One of the two, with its generated client.
class ThriftPeer : public Peer
{
public:
    /// @p service must outlive the peer.
    ThriftPeer(WireService& service, Call call) : service_(service), call_(call) {}

    void call() override { readWith(service_.client(), call_); }
    bool isCorrect(const Records& expected) override
    {
        return readWith(service_.client(), call_) == expected;
    }

private:
    WireService& service_;
    const Call call_;
};

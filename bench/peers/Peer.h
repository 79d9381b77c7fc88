#pragma once

#include "bench/peers/Cases.h"

#include <string>

/// A server and a connected client of one protocol, for one case.
class Peer
{
public:
    Peer() = default;
    virtual ~Peer() = default;
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// Makes the call and waits for the complete reply. Throws std::exception on failure.
    virtual void call() = 0;
    /// Makes the call once; true if the reply contains exactly @p expected. Throws as call() does.
    virtual bool isCorrect(const Records& expected) = 0;
    /// Reason why the protocol cannot carry the reply, or an empty string.
    virtual std::string unavailable() { return {}; }
};

#pragma once

#include "bench/peers/Peer.h"

#include <QtCore/QString>

#include <memory>

/// A Qt D-Bus object on its own thread that answers from prepared records, and a client on another connection
/// to the same bus.
class DBusPeer : public Peer
{
public:
    /// @p busAddress: of a running bus. @p prepared: the records of the reply.
    DBusPeer(const QString& busAddress, const Records& prepared, Call call);
    ~DBusPeer() override;

    void call() override;
    bool isCorrect(const Records& expected) override;
    /// The bus closes the server's connection if a message exceeds its limit.
    std::string unavailable() override;

private:
    struct Parts;
    const std::unique_ptr<Parts> parts_;
    const Call call_;
};

#pragma once

#include "service/PeerAccount.h"

#include <chrono>
#include <functional>
#include <mutex>

/// Decides which clients the service admits. Every account of a computer can reach its loopback addresses, so
/// a client there must belong to the account of this process, or be root or the system account. A client at
/// another address is always admitted: a person has configured that address.
class AccountCheck
{
public:
    using Query = std::function<PeerAccount(THRIFT_SOCKET)>;

    /// @p query replaces the system's answer in tests.
    explicit AccountCheck(Query query = peerAccount);

    /// Returns false if the connection must be closed. The log then contains a line about the account, at
    /// most one in ten seconds, and none if the client has closed its end. Any thread.
    bool admits(THRIFT_SOCKET connection);

private:
    void report(const PeerAccount& account);

    static constexpr std::chrono::seconds kReportInterval{10};

    const Query query_;
    std::mutex mutex_;
    std::chrono::steady_clock::time_point nextReport_;
    int unreported_ = 0;
};

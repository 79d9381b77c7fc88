#include "service/AccountCheck.h"

#include "closed/Log/LogWriter.h"

#include <string>
#include <utility>

AccountCheck::AccountCheck(Query query) : query_(std::move(query)) {}

bool AccountCheck::admits(THRIFT_SOCKET connection)
{
    if (isRemotePeer(connection))
        return true;
    const PeerAccount account = query_(connection);
    if (account.kind == PeerAccount::Kind::Same || account.kind == PeerAccount::Kind::System)
        return true;
    // Programs that only test whether the port is open are no reason for a message.
    if (account.kind != PeerAccount::Kind::Gone)
        report(account);
    return false;
}

void AccountCheck::report(const PeerAccount& account)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto now = std::chrono::steady_clock::now();
    if (now < nextReport_) {
        ++unreported_;
        return;
    }
    nextReport_ = now + kReportInterval;
    const std::string name = account.kind == PeerAccount::Kind::Other ? account.name() : "an unknown account";
    if (unreported_ == 0)
        CLogWriter::Log("Agent client of %s rejected\n", name.c_str());
    else
        CLogWriter::Log("Agent client of %s rejected, after %d more since the last message\n", name.c_str(),
                        unreported_);
    unreported_ = 0;
}

#pragma once

#include "service/Connections.h"

#include <thrift/transport/TSocket.h>

#include <atomic>
#include <memory>

/// One client's connection. If the client does not read its reply, write waits as long as the service runs,
/// and at most half a second without progress once the service is stopping. The base class would wait without
/// limit and block the stop.
///
/// On Linux, a read is one system call. The base class polls first, to notice a stop; here the stop ends the
/// reads of all connections (Connections).
class ConnectionSocket : public apache::thrift::transport::TSocket
{
public:
    /// The server sets @p stopping when it is about to stop. Without @p connections, reads poll.
    ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                     std::shared_ptr<const std::atomic<bool>> stopping,
                     std::shared_ptr<Connections> connections = nullptr);
    ~ConnectionSocket() override;

    std::uint32_t read(std::uint8_t* buffer, std::uint32_t length) override;
    void close() override;
    /// Makes the current and all later reads end. Called by Connections.
    void endReads();

    void write(const std::uint8_t* bytes, std::uint32_t length) override;
    /// Writes two blocks as if they were one, in one system call if the system accepts them at once. A short
    /// first block alone would wake the client too early.
    void writeTogether(const std::uint8_t* first, std::uint32_t firstLength, const std::uint8_t* second,
                       std::uint32_t secondLength);

private:
    static constexpr int kSendTimeoutMs = 500;

    // The operating system's part: linux/ and windows/.
    void configureSendTimeout();
    // Called when a send has sent nothing. Waits until the client reads or the time limit has expired, and
    // returns false in the latter case.
    bool waitToSend();
    // Returns how many bytes were sent; 0 after any error.
    std::uint32_t sendBoth(const std::uint8_t* first, std::uint32_t firstLength, const std::uint8_t* second,
                           std::uint32_t secondLength);

    std::shared_ptr<const std::atomic<bool>> stopping_;
    std::shared_ptr<Connections> connections_;
};

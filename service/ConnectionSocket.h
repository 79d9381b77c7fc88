#pragma once

#include <thrift/transport/TSocket.h>

#include <atomic>
#include <memory>

/// One client's connection. If the client does not read its reply, write waits as long as the service runs,
/// and at most half a second once the service is stopping. The base class would wait without limit and block
/// the stop.
class ConnectionSocket : public apache::thrift::transport::TSocket
{
public:
    /// The server sets @p stopping when it is about to stop.
    ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                     std::shared_ptr<const std::atomic<bool>> stopping);

    void write(const std::uint8_t* bytes, std::uint32_t length) override;

private:
    static constexpr int kSendTimeoutMs = 500;

    // The operating system's part: linux/ and windows/.
    void configureSendTimeout();
    // Called when a send has sent nothing. Waits until the client reads or the time limit has expired, and
    // returns false in the latter case.
    bool waitToSend();

    std::shared_ptr<const std::atomic<bool>> stopping_;
};

#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtNetwork/QTcpSocket>

#include <thrift/transport/TVirtualTransport.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace zorcall {

/// A TCP connection. All waits of a call together are limited by its timeout, however slowly bytes arrive.
/// Every error is thrown as a Failure. Not thread-safe.
class Connection : public apache::thrift::transport::TVirtualTransport<Connection>
{
public:
    /// Maximum length of a reply, in bytes.
    static constexpr std::uint64_t kReplyLimit = std::uint64_t{128} << 20;

    /// Throws NoConnection, or TimedOut after @p limit. Host name lookup has the system's own timeout.
    void connect(const std::string& host, std::uint16_t port, std::chrono::milliseconds limit);
    /// Restarts the timeout and the byte count for the next call.
    void beginCall(std::chrono::milliseconds limit);

    bool isOpen() const override;
    void close() override;

    /// Waits for at least one byte.
    std::uint32_t read(std::uint8_t* buffer, std::uint32_t length);
    /// Buffers the bytes; flush() waits until they are sent.
    void write(const std::uint8_t* buffer, std::uint32_t length);
    void flush() override;

private:
    [[noreturn]] void failWait(const char* lost);
    int remaining() const;

    QTcpSocket socket_;
    QDeadlineTimer deadline_;
    std::chrono::milliseconds limit_{0};
    std::uint64_t received_ = 0;
};

} // namespace zorcall

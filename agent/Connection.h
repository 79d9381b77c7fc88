#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtNetwork/QTcpSocket>

#include <thrift/transport/TVirtualTransport.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace zorcall {

/// A TCP connection on which every wait ends with the limit of the call in progress, however slowly bytes
/// come. Whatever goes wrong is thrown as a Failure. One thread.
class Connection : public apache::thrift::transport::TVirtualTransport<Connection>
{
public:
    /// No reply may be longer, in bytes; a machine's whole inventory is far below.
    static constexpr std::uint64_t replyLimit = std::uint64_t{128} << 20;

    /// Throws NoConnection, or TimedOut after @p limit. The system's own limit holds for looking up a name.
    void connect(const std::string& host, std::uint16_t port, std::chrono::milliseconds limit);
    /// Starts the time, and the count of bytes, of one call.
    void beginCall(std::chrono::milliseconds limit);

    bool isOpen() const override;
    void close() override;

    /// Waits for at least one byte.
    std::uint32_t read(std::uint8_t* buffer, std::uint32_t length);
    /// Hands to the socket; flush waits until all has left.
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

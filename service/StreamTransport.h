#pragma once

#include <thrift/transport/TBufferTransports.h>

#include <cstdint>
#include <vector>

/// The runtime's buffered transport, with its bound on a message's size (100 MiB) applied where it can help.
///
/// The runtime makes room for a string before it looks at the bound, so that four bytes from anybody cost two
/// gibibytes; here the bound comes first, and room for a long string grows as its bytes come, so that a
/// length alone costs nothing. And the runtime counts over the life of a connection what it bounds for a
/// message; here the count begins anew with each message.
class StreamTransport : public apache::thrift::transport::TBufferedTransport
{
public:
    using TBufferedTransport::TBufferedTransport;

    const std::uint8_t* borrowSlow(std::uint8_t* buffer, std::uint32_t* length) override;
    std::uint32_t readEnd() override;

private:
    bool isReadingLong() const;

    // A string that the runtime's own buffer cannot hold, until its message ends.
    std::vector<std::uint8_t> long_;
};

/// Puts a StreamTransport around each connection.
class StreamTransportFactory : public apache::thrift::transport::TBufferedTransportFactory
{
public:
    std::shared_ptr<apache::thrift::transport::TTransport>
    getTransport(std::shared_ptr<apache::thrift::transport::TTransport> connection) override;
};

#pragma once

#include <thrift/transport/TBufferTransports.h>

#include <cstdint>
#include <vector>

/// The runtime's buffered transport with an effective limit on the size of a message (100 MiB).
///
/// The base class allocates a string before it checks the limit, so that four bytes from any client cost two
/// GiB. This class checks first, and grows the buffer as the bytes arrive, so that a length alone allocates
/// nothing. The base class also counts the bytes of a whole connection against the limit of one message; this
/// class restarts the count with each message.
class StreamTransport : public apache::thrift::transport::TBufferedTransport
{
public:
    using TBufferedTransport::TBufferedTransport;

    const std::uint8_t* borrowSlow(std::uint8_t* buffer, std::uint32_t* length) override;
    std::uint32_t readEnd() override;
    /// Writes bytes after those in the buffer. If they do not fit into it, both go to the socket together.
    void writeBody(const std::uint8_t* bytes, std::uint32_t length);

private:
    bool isReadingOversizeBuffer() const;

    // A string that exceeds the base class's buffer. Kept until its message ends.
    std::vector<std::uint8_t> oversizeBuffer_;
};

/// Wraps each connection in a StreamTransport.
class StreamTransportFactory : public apache::thrift::transport::TBufferedTransportFactory
{
public:
    std::shared_ptr<apache::thrift::transport::TTransport>
    getTransport(std::shared_ptr<apache::thrift::transport::TTransport> connection) override;
};

#pragma once

#include <thrift/transport/TSocket.h>

#include <atomic>
#include <memory>

/// One client's connection. A client that does not read its reply is waited for as long as the service runs,
/// and no longer than half a second once it is to end: the runtime's own would hold up the end for ever.
class ConnectionSocket : public apache::thrift::transport::TSocket
{
public:
    /// @p stopping is set by the server when it is to end.
    ConnectionSocket(THRIFT_SOCKET socket, std::shared_ptr<THRIFT_SOCKET> interrupt,
                     std::shared_ptr<const std::atomic<bool>> stopping);

    void write(const std::uint8_t* bytes, std::uint32_t length) override;

private:
    std::shared_ptr<const std::atomic<bool>> stopping_;
};

#pragma once

#include <cstddef>
#include <string>

/// A TCP socket on loopback. Its functions block.
class RawSocket
{
public:
    /// Listens on a free port.
    static RawSocket listening();
    /// Connects to a port of this machine.
    static RawSocket connectedTo(int port);

    ~RawSocket();
    RawSocket(RawSocket&& other) noexcept;
    RawSocket& operator=(RawSocket&&) = delete;

    int port() const;
    /// The next connection; after shutDown, an invalid socket.
    RawSocket accept() const;
    /// Ends an accept or receive in another thread.
    void shutDown() const;

    bool isValid() const { return descriptor_ >= 0; }
    /// False if the connection ended.
    bool send(const std::string& bytes) const;
    /// Receives exactly @p length bytes. False if the connection ended.
    bool receive(char* bytes, std::size_t length) const;

private:
    explicit RawSocket(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
};

#pragma once

#include "tests/support/Wire.h"

#include <string>

/// A client that sends arbitrary bytes. Every wait has a timeout of @c limitMs milliseconds and then throws
/// std::runtime_error.
class RawClient : public wire::Source
{
public:
    static constexpr int limitMs = 20000;

    /// Connects to the port on "localhost". Throws std::runtime_error if the connection is refused.
    explicit RawClient(int port);
    ~RawClient() override;
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    void send(const std::string& bytes);
    /// Sends each byte in a separate packet.
    void sendByteByByte(const std::string& bytes);
    std::string take(std::size_t count) override;
    wire::Message receive() { return wire::readMessage(*this); }
    /// Sends a call and reads its answer.
    wire::Message ask(const std::string& bytes);

    /// No more bytes will be sent; what comes back can still be read.
    void finishSending();
    /// True if the other side ends the connection without another byte.
    bool isEndedByServer();
    /// True if bytes or an end can be read now or within @p waitMs.
    bool hasInput(int waitMs = 0);

    /// True if a connection to the port is accepted.
    static bool isListening(int port);

private:
    static int connectTo(int port);

    int socket_;
};

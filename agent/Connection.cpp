#include "agent/Connection.h"

#include "agent/Failure.h"
#include "agent/Text.h"

#include <QtNetwork/QNetworkProxy>

#include <cstdio>

namespace zorcall {

namespace {

// Bytes that the socket buffers ahead of read(); TCP flow control stops the sender at this limit.
constexpr qint64 kSocketBuffer = 65536;

std::string seconds(std::chrono::milliseconds limit)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g s", static_cast<double>(limit.count()) / 1000.0);
    return text;
}

} // namespace

void Connection::connect(const std::string& host, std::uint16_t port, std::chrono::milliseconds limit)
{
    const std::string where = oneLine(host) + ":" + std::to_string(port);
    deadline_ = QDeadlineTimer(limit);
    socket_.setProxy(QNetworkProxy::NoProxy);
    socket_.setReadBufferSize(kSocketBuffer);
    socket_.connectToHost(QString::fromStdString(host), port);
    if (socket_.waitForConnected(remaining())) {
        socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        return;
    }
    if (socket_.error() == QAbstractSocket::SocketTimeoutError || deadline_.hasExpired())
        throw Failure(TimedOut, "no connection to " + where + " within " + seconds(limit));
    throw Failure(NoConnection, "no connection to " + where + ": " + socket_.errorString().toStdString());
}

void Connection::beginCall(std::chrono::milliseconds limit)
{
    limit_ = limit;
    deadline_ = QDeadlineTimer(limit);
    received_ = 0;
}

bool Connection::isOpen() const
{
    return socket_.state() == QAbstractSocket::ConnectedState;
}

void Connection::close()
{
    socket_.abort();
}

std::uint32_t Connection::read(std::uint8_t* buffer, std::uint32_t length)
{
    while (socket_.bytesAvailable() == 0) {
        if (!socket_.waitForReadyRead(remaining()) && socket_.bytesAvailable() == 0)
            failWait("the connection was lost before the answer was complete");
    }
    if (deadline_.hasExpired())
        failWait("");
    const qint64 got = socket_.read(reinterpret_cast<char*>(buffer), length);
    if (got <= 0)
        throw Failure(NoConnection, "the connection cannot be read: " + socket_.errorString().toStdString());
    received_ += static_cast<std::uint64_t>(got);
    if (received_ > kReplyLimit)
        throw Failure(BadReply, "invalid reply: it is longer than " + std::to_string(kReplyLimit) + " bytes");
    return static_cast<std::uint32_t>(got);
}

void Connection::write(const std::uint8_t* buffer, std::uint32_t length)
{
    if (socket_.write(reinterpret_cast<const char*>(buffer), length) != static_cast<qint64>(length))
        throw Failure(NoConnection, "the connection was lost before the call was sent");
}

void Connection::flush()
{
    while (socket_.bytesToWrite() > 0) {
        if (!socket_.waitForBytesWritten(remaining()))
            failWait("the connection was lost before the call was sent");
    }
}

void Connection::failWait(const char* lost)
{
    if (deadline_.hasExpired() || socket_.error() == QAbstractSocket::SocketTimeoutError)
        throw Failure(TimedOut, "no answer within " + seconds(limit_) + "; the call may still be executed");
    throw Failure(NoConnection, std::string(lost) + "; the call may have been executed");
}

int Connection::remaining() const
{
    return static_cast<int>(deadline_.remainingTime());
}

} // namespace zorcall

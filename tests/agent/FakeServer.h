#pragma once

#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <functional>

/// A scripted server without the library's code. Runs in the test's event loop.
class FakeServer
{
public:
    /// Called with all bytes of a client so far, whenever more arrive.
    using Answer = std::function<void(QTcpSocket* client, const QByteArray& received)>;

    explicit FakeServer(Answer answer);
    /// Sends one reply to the first bytes of a client. @p reply receives them, because a reply repeats the
    /// sequence number of its call.
    static Answer once(std::function<QByteArray(const QByteArray& received)> reply, bool thenClose = false);

    QByteArray port() const { return QByteArray::number(server_.serverPort()); }

private:
    QTcpServer server_;
};

#pragma once

#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <functional>

/// A server that is none of ours: on the first bytes of a client it does what it was told. It lives in the
/// test's event loop.
class FakeServer
{
public:
    /// @p answer gets the client's bytes so far each time that more have come.
    using Answer = std::function<void(QTcpSocket* client, const QByteArray& received)>;

    explicit FakeServer(Answer answer);
    /// Sends these bytes once, at the client's first ones; made of them, since a reply repeats the call's
    /// number.
    static Answer once(std::function<QByteArray(const QByteArray& received)> reply, bool thenClose = false);

    QByteArray port() const { return QByteArray::number(server_.serverPort()); }

private:
    QTcpServer server_;
};

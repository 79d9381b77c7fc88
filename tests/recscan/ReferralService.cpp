#include "tests/recscan/ReferralService.h"

#include <QtNetwork/QTcpSocket>

#include <stdexcept>

ReferralService::ReferralService(Reply reply) : reply_(std::move(reply))
{
    if (!listen(QHostAddress::LocalHost))
        throw std::runtime_error("no port for the referral service");
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = nextPendingConnection())
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
    });
}

QString ReferralService::address(const QString& tail) const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()) + tail;
}

void ReferralService::serve(QTcpSocket* socket)
{
    const QByteArray request = socket->property("request").toByteArray() + socket->readAll();
    socket->setProperty("request", request);
    if (!request.contains("\r\n\r\n"))
        return;
    socket->setProperty("request", QByteArray());
    lastRequest_ = request;
    const QString path = QString::fromLatin1(request.split(' ').value(1));
    paths_.append(path);
    reply_(*socket, path);
}

ReferralService::Reply ReferralService::answering(const QByteArray& body, const QByteArray& status,
                                                  const QByteArray& headers)
{
    return [=](QTcpSocket& socket, const QString&) {
        socket.write("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                     "\r\nConnection: close\r\n" + headers + "\r\n" + body);
        socket.disconnectFromHost();
    };
}

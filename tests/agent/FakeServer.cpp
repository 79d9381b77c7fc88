#include "tests/agent/FakeServer.h"

#include <memory>

FakeServer::FakeServer(Answer answer)
{
    server_.listen(QHostAddress::LocalHost, 0);
    QObject::connect(&server_, &QTcpServer::newConnection, [this, answer] {
        QTcpSocket* client = server_.nextPendingConnection();
        const auto received = std::make_shared<QByteArray>();
        QObject::connect(client, &QTcpSocket::readyRead, [client, received, answer] {
            *received += client->readAll();
            answer(client, *received);
        });
    });
}

FakeServer::Answer FakeServer::once(std::function<QByteArray(const QByteArray&)> reply, bool thenClose)
{
    return [reply, thenClose](QTcpSocket* client, const QByteArray& received) {
        if (client->property("answered").toBool())
            return;
        client->setProperty("answered", true);
        client->write(reply(received));
        if (thenClose)
            client->disconnectFromHost();
    };
}

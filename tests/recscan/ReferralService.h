#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtNetwork/QTcpServer>

#include <functional>

class QTcpSocket;

/// A small HTTP service on loopback. Served by the event loop of the application thread.
class ReferralService : public QTcpServer
{
public:
    /// What is done with one request, whose path is given.
    using Reply = std::function<void(QTcpSocket& socket, const QString& path)>;

    explicit ReferralService(Reply reply);

    /// "http://127.0.0.1:port" and this tail.
    QString address(const QString& tail = QString()) const;
    /// The paths that were asked for, in order.
    QStringList paths() const { return paths_; }
    /// The header lines of the last request.
    QByteArray lastRequest() const { return lastRequest_; }

    /// A reply with that status line and body, after which the connection closes.
    static Reply answering(const QByteArray& body, const QByteArray& status = "200 OK",
                           const QByteArray& headers = QByteArray());

private:
    void serve(QTcpSocket* socket);

    Reply reply_;
    QStringList paths_;
    QByteArray lastRequest_;
};

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
    /// Handles a request with this path.
    using Reply = std::function<void(QTcpSocket& socket, const QString& path)>;

    explicit ReferralService(Reply reply);

    /// "http://127.0.0.1:port" and this tail.
    QString address(const QString& tail = QString()) const;
    /// The requested paths, in order.
    QStringList paths() const { return paths_; }
    /// The header lines of the last request.
    QByteArray lastRequest() const { return lastRequest_; }

    /// Replies with that status line and body, and closes the connection.
    static Reply answering(const QByteArray& body, const QByteArray& status = "200 OK",
                           const QByteArray& headers = QByteArray());

private:
    void serve(QTcpSocket* socket);

    Reply reply_;
    QStringList paths_;
    QByteArray lastRequest_;
};

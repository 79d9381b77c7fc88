#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include <functional>

namespace host {

/// Watches the agent service come up, without blocking the event loop: waits until the service has published
/// its port, listens there, and a TCP connection succeeds. Says once how that ended.
class ServiceWatcher : public QObject
{
    Q_OBJECT

public:
    /// @p isRunning: whether the service's thread lives.
    ServiceWatcher(QString address, std::function<bool()> isRunning, QObject* parent = nullptr);

    /// Forgets ports that the environment brought along. Before the service starts.
    static void clearPorts();
    /// The address that the service is told to bind, from `config.ini` beside the application.
    static QString configuredAddress();

    void start();
    /// "ADDRESS:PORT"; the port is 0 before it is known.
    QString place() const;

Q_SIGNALS:
    void ready();
    void failed();

private:
    void poll();

    QString address_;
    std::function<bool()> isRunning_;
    QTimer timer_;
    QTcpSocket socket_;
};

} // namespace host

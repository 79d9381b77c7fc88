#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include <functional>

namespace host {

/// Waits for the agent service without blocking the event loop: until the service has published its port,
/// listens on it and accepts a TCP connection. Emits ready() or failed() once.
class ServiceWatcher : public QObject
{
    Q_OBJECT

public:
    /// @p isRunning: whether the service's thread runs.
    ServiceWatcher(QString address, std::function<bool()> isRunning, QObject* parent = nullptr);

    /// Removes inherited ports from the environment. Must be called before the service starts.
    static void clearPorts();
    /// The address that the service binds, from `config.ini` in the application's folder.
    static QString configuredAddress();

    void start();
    /// "ADDRESS:PORT"; the port is 0 until it is known.
    QString address() const;

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

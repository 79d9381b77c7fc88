#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

class ZORNativePluginIf;

namespace apache {
namespace thrift {
namespace server {
class TThreadedServer;
}
} // namespace thrift
} // namespace apache

/// The thread of the agent service. It picks two free ports, publishes them in the environment of the process
/// (AGENT_NATIVE_PORT, AGENT_CHAT_PORT) and serves until stopServer.
class AIFuncallThread : public QThread
{
    Q_OBJECT

public:
    /// Creates the handler of the service. Called once, on this thread, after the port search.
    using MakeHandler = std::function<std::shared_ptr<ZORNativePluginIf>()>;

    AIFuncallThread(QObject* parent, MakeHandler makeHandler);
    /// The thread must have ended (see stopServer).
    ~AIFuncallThread() override;

    void run() override;

    /// Stops the service: idle connections are closed; a running tool completes and its reply is sent.
    /// Returns before the thread has ended. Has no effect before the server is built; the service then starts
    /// nevertheless. Must not be called on this thread.
    void stopServer();

    /// Searches two free ports from 9090 upward. A port is set to 0 if the search finds no free one. Takes up
    /// to 30 seconds.
    void findFreePorts(int* nativePort, int* chatPort);

    /// The address to serve on: the value in config.ini, "localhost" by default. Any thread.
    static QString configuredAddress();

    /// True unless aiSameUserOnly in config.ini, next to the address, is "false" or "0": a client on a
    /// loopback address must then belong to the account of this process, or be root or the system account.
    /// Any thread.
    static bool configuredSameUserOnly();

    /// The handler of the service; null before the server is built. Any thread.
    std::shared_ptr<ZORNativePluginIf> toolHandler() const;

protected:
    /// Creates the server. Virtual so that a test can inject faults into its transport. Called on this
    /// thread.
    virtual std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<ZORNativePluginIf>& tools, const std::string& address, int port);

private:
    void buildServer(const QString& address, int port);

    std::atomic<bool> serverRunning{false};
    std::atomic<apache::thrift::server::TThreadedServer*> server{nullptr};
    std::shared_ptr<ZORNativePluginIf> handler;
    const MakeHandler makeHandler_;
    bool served_ = false;
};

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
    /// Makes the handler of the service. Called once, on this thread, after the port search.
    using MakeHandler = std::function<std::shared_ptr<ZORNativePluginIf>()>;

    AIFuncallThread(QObject* parent, MakeHandler makeHandler);
    /// The thread must have ended (see stopServer).
    ~AIFuncallThread() override;

    void run() override;

    /// Ends the service: idle connections are closed; a tool in progress completes and is answered. Returns before the
    /// thread has ended. Has no effect before the server is built; the service then starts nevertheless. Called on any
    /// thread except this one.
    void stopServer();

    /// Searches two free ports from 9090 upward. A port is 0 if no free one exists. Takes up to 30 seconds.
    void findFreePorts(int* nativePort, int* chatPort);

    /// The address to serve on: the value in config.ini, by default "localhost". Any thread.
    static QString configuredAddress();

    /// The handler of the service; null before the server is built. Any thread.
    std::shared_ptr<ZORNativePluginIf> toolHandler() const;

protected:
    /// Makes the server. Virtual so that a test can add faults to its transport. Called on this thread.
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

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QThread>

#include <atomic>
#include <memory>
#include <string>

class AIBridge;
class CZorHandle;

namespace apache {
namespace thrift {
namespace server {
class TThreadedServer;
}
} // namespace thrift
} // namespace apache

/// The thread of the agent service: it picks two free ports, puts them into the environment of the process
/// (AGENT_NATIVE_PORT, AGENT_CHAT_PORT) and serves until stopServer.
class AIFuncallThread : public QThread
{
    Q_OBJECT

public:
    /// @p owner becomes the parent and is what the tools work on.
    explicit AIFuncallThread(AIBridge* owner);
    /// The thread must have ended (see stopServer).
    ~AIFuncallThread() override;

    void run() override;

    /// Ends the service: idle connections are cut, a tool in progress runs to its end and is answered.
    /// Returns before the thread has ended. Has no effect, and the service then starts all the same, if the
    /// server has not been built yet. Called on any thread but this one.
    void stopServer();

    /// Searches two free ports from 9090 upward; a port stays 0 if there is none. Takes up to 30 seconds.
    void findFreePorts(int* nativePort, int* chatPort);

    /// The address to serve on as config.ini has it, "localhost" where it has none. Any thread.
    static QString configuredAddress();

    /// The handler of the service; null until the server has been built. Any thread.
    std::shared_ptr<CZorHandle> toolHandler() const;

protected:
    /// Makes the server that run() serves. Virtual so that a test can add faults to its transport. Called on
    /// this thread.
    virtual std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<CZorHandle>& tools, const std::string& address, int port);

private:
    void buildServer(const QString& address, int port);

    std::atomic<bool> serverRunning{false};
    std::atomic<apache::thrift::server::TThreadedServer*> server{nullptr};
    std::shared_ptr<CZorHandle> handler;
    AIBridge* owner;
    bool served_ = false;
};

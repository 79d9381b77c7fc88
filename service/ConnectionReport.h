#pragma once

#include "plugin/HostCall.h"

#include <thrift/server/TServer.h>

#include <atomic>
#include <string>

/// Reports the connections of clients and their calls to an optional object of the host, the value of the
/// property "agentObserver" of the application object. Each method of the object is optional, and runs on the
/// connection's thread: it must be thread-safe and short, because the client waits.
///
/// | method | called |
/// |---|---|
/// | connectionOpened(int connection, QString address, int port) | before the first call; the client's end |
/// | callStarted(int connection, QString tool) | before a tool runs; @p tool is the received name |
/// | callEnded(int connection) | after the reply |
/// | connectionClosed(int connection) | at the end |
///
/// Connections are numbered from 1.
class ConnectionReport : public apache::thrift::server::TServerEventHandler
{
public:
    explicit ConnectionReport(QObject* observer);

    /// The host's object, or null if the property is not set. It must outlive the service.
    static QObject* observer();

    /// Reports a call. @p context is a connection's context; null reports nothing.
    class Call
    {
    public:
        Call(void* context, const std::string& tool);
        ~Call();
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        void* context_;
    };

    void* createContext(std::shared_ptr<apache::thrift::protocol::TProtocol> input,
                        std::shared_ptr<apache::thrift::protocol::TProtocol> output) override;
    void deleteContext(void* context, std::shared_ptr<apache::thrift::protocol::TProtocol> input,
                       std::shared_ptr<apache::thrift::protocol::TProtocol> output) override;

private:
    struct Connection
    {
        const ConnectionReport& report;
        int number;
    };

    const HostMethod opened_;
    const HostMethod started_;
    const HostMethod ended_;
    const HostMethod closed_;
    std::atomic<int> last_{0};
};

#include "service/ConnectionReport.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QVariant>

#include <thrift/protocol/TProtocol.h>
#include <thrift/transport/TBufferTransports.h>
#include <thrift/transport/TSocket.h>

using apache::thrift::protocol::TProtocol;
using apache::thrift::transport::TBufferedTransport;
using apache::thrift::transport::TSocket;

namespace {

const char* const kObserver = "agentObserver";

// The socket below the transport that ToolServer gives each connection; null for another transport.
TSocket* socketOf(TProtocol& protocol)
{
    auto* buffered = dynamic_cast<TBufferedTransport*>(protocol.getTransport().get());
    return buffered == nullptr ? nullptr : dynamic_cast<TSocket*>(buffered->getUnderlyingTransport().get());
}

} // namespace

QObject* ConnectionReport::observer()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application == nullptr ? nullptr : application->property(kObserver).value<QObject*>();
}

ConnectionReport::ConnectionReport(QObject* observer)
    : opened_(observer, "connectionOpened"),
      started_(observer, "callStarted"),
      ended_(observer, "callEnded"),
      closed_(observer, "connectionClosed")
{
}

void* ConnectionReport::createContext(std::shared_ptr<TProtocol> input, std::shared_ptr<TProtocol>)
{
    auto* connection = new Connection{*this, ++last_};
    TSocket* socket = socketOf(*input);
    if (socket != nullptr)
        opened_.order(ConnectionRule::Direct, connection->number,
                      QString::fromStdString(socket->getPeerAddress()), socket->getPeerPort());
    return connection;
}

void ConnectionReport::deleteContext(void* context, std::shared_ptr<TProtocol>, std::shared_ptr<TProtocol>)
{
    const std::unique_ptr<Connection> connection(static_cast<Connection*>(context));
    closed_.order(ConnectionRule::Direct, connection->number);
}

ConnectionReport::Call::Call(void* context, const std::string& tool) : context_(context)
{
    const auto* connection = static_cast<const Connection*>(context_);
    if (connection != nullptr)
        connection->report.started_.order(ConnectionRule::Direct, connection->number,
                                          QString::fromStdString(tool));
}

ConnectionReport::Call::~Call()
{
    const auto* connection = static_cast<const Connection*>(context_);
    if (connection != nullptr)
        connection->report.ended_.order(ConnectionRule::Direct, connection->number);
}

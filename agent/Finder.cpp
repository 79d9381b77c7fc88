#include "agent/Finder.h"

#include "agent/Codec.h"
#include "agent/Failure.h"
#include "agent/Text.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtNetwork/QHostInfo>
#include <QtNetwork/QNetworkProxy>
#include <QtNetwork/QTcpSocket>

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/transport/TBufferTransports.h>

#include <algorithm>
#include <memory>

namespace zorcall {

namespace thrift = apache::thrift;

namespace {

constexpr std::int32_t kSequence = 1;
// More than any reply to Init.
constexpr qint64 kReplyLimit = 1024;

using Buffer = thrift::transport::TMemoryBuffer;

QByteArray initCall(const Method& init)
{
    const auto buffer = std::make_shared<Buffer>();
    thrift::protocol::TBinaryProtocol protocol(buffer);
    writeCall(protocol, init, {}, kSequence);
    return QByteArray::fromStdString(buffer->getBufferAsString());
}

// Incomplete bytes are not a reply; more of them can follow.
bool isInitReply(const Interface& service, const Method& init, QByteArray bytes)
{
    const auto buffer = std::make_shared<Buffer>(reinterpret_cast<std::uint8_t*>(bytes.data()),
                                                 static_cast<std::uint32_t>(bytes.size()));
    thrift::protocol::TBinaryProtocol protocol(buffer, kReplyLimit, 0, true, true);
    try {
        return readReply(protocol, service, init, kSequence).boolean();
    } catch (const std::exception&) {
        return false;
    }
}

/// One connection that calls Init.
struct Probe
{
    Listener where;
    std::unique_ptr<QTcpSocket> socket = std::make_unique<QTcpSocket>();
    bool answered = false;
    bool ended = false;

    bool isUnresponsive() const { return !ended && socket->state() == QAbstractSocket::ConnectedState; }
};

class Search
{
public:
    Search(const Interface& service, const Ports& ports)
        : service_(service), init_(*service.method("Init")), call_(initCall(init_))
    {
        // Each address at the same time: on some systems a refused connection takes two seconds.
        QList<QHostAddress> addresses = QHostInfo::fromName(QStringLiteral("localhost")).addresses();
        if (addresses.isEmpty())
            addresses.append(QHostAddress(QHostAddress::LocalHost));
        for (const PortRange& range : ports) {
            for (int port = range.first; port <= range.last; ++port)
                for (const QHostAddress& address : addresses)
                    add(address, static_cast<std::uint16_t>(port));
        }
    }

    Found run(std::chrono::milliseconds limit)
    {
        QTimer::singleShot(limit, &loop_, &QEventLoop::quit);
        open_ = probes_.size();
        for (const auto& probe : probes_)
            start(probe.get());
        if (open_ > 0)
            loop_.exec();
        const Found found = result();
        // The destructor of a connected socket would report its end.
        for (const auto& probe : probes_)
            probe->socket->blockSignals(true);
        return found;
    }

private:
    void add(const QHostAddress& address, std::uint16_t port)
    {
        auto probe = std::make_unique<Probe>();
        probe->where = {address.toString().toStdString(), port};
        probes_.push_back(std::move(probe));
    }

    void start(Probe* probe)
    {
        QTcpSocket* socket = probe->socket.get();
        socket->setProxy(QNetworkProxy::NoProxy);
        QObject::connect(socket, &QTcpSocket::connected, &loop_, [this, socket] { socket->write(call_); });
        QObject::connect(socket, &QTcpSocket::readyRead, &loop_, [this, probe] { read(probe); });
        QObject::connect(socket, &QTcpSocket::stateChanged, &loop_,
                         [this, probe](QAbstractSocket::SocketState state) {
                             if (state == QAbstractSocket::UnconnectedState)
                                 end(probe);
                         });
        socket->connectToHost(QHostAddress(QString::fromStdString(probe->where.host)), probe->where.port);
    }

    void read(Probe* probe)
    {
        const QByteArray bytes = probe->socket->peek(kReplyLimit);
        probe->answered = isInitReply(service_, init_, bytes);
        // Other protocols do not begin with this byte.
        if (probe->answered || bytes.size() >= kReplyLimit || bytes.at(0) != '\x80')
            end(probe);
    }

    void end(Probe* probe)
    {
        if (probe->ended)
            return;
        probe->ended = true;
        if (--open_ == 0)
            loop_.quit();
    }

    Found result() const
    {
        Found found;
        for (const auto& probe : probes_) {
            if (probe->answered)
                insert(probe->where, &found.services);
            else if (probe->isUnresponsive())
                insert(probe->where, &found.unresponsive);
        }
        return found;
    }

    // A service can listen on both addresses of the computer.
    static void insert(const Listener& listener, std::vector<Listener>* listeners)
    {
        const bool known = std::any_of(listeners->begin(), listeners->end(),
                                       [&](const Listener& other) { return other.port == listener.port; });
        if (!known)
            listeners->push_back(listener);
    }

    const Interface& service_;
    const Method& init_;
    const QByteArray call_;
    QEventLoop loop_;
    std::vector<std::unique_ptr<Probe>> probes_;
    std::size_t open_ = 0;
};

std::string portList(const std::vector<Listener>& listeners)
{
    std::vector<std::string> ports;
    ports.reserve(listeners.size());
    for (const Listener& listener : listeners)
        ports.push_back(std::to_string(listener.port));
    return (ports.size() == 1 ? "port " : "ports ") + join(ports, ", ");
}

} // namespace

Found searchServices(const Interface& service, const Ports& ports, std::chrono::milliseconds limit)
{
    return Search(service, ports).run(limit);
}

Listener onlyService(const Found& found, const Ports& ports, bool sendsOrder)
{
    const std::string unresponsive =
        found.unresponsive.empty()
            ? std::string()
            : portList(found.unresponsive) + " accepted the connection but did not answer";
    if (found.services.empty())
        throw Failure(NoConnection, "no service answers on the ports " + portText(ports) +
                                        " of this computer; start the host, or select a port with --port" +
                                        (unresponsive.empty() ? unresponsive : " (" + unresponsive + ")"));
    if (found.services.size() > 1)
        throw Failure(Usage, "several services answer, on the " + portList(found.services) +
                                 "; select one with --port");
    if (sendsOrder && !unresponsive.empty())
        throw Failure(Usage, "the service on " + portList(found.services) +
                                 " may not be the only one: " + unresponsive + "; select one with --port");
    return found.services.front();
}

} // namespace zorcall

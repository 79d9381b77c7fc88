#include "host/objects/AgentClients.h"

#include "host/objects/RowChange.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTime>
#include <QtCore/QTimer>

#include <algorithm>
#include <functional>
#include <utility>

namespace host {

namespace {

const char* const kObserver = "agentObserver";
const char* const kServicePort = "AGENT_NATIVE_PORT";
// A client can send thousands of calls per second.
constexpr int kRefreshMs = 100;

// The connection of the calling thread; 0 on other threads.
thread_local int connectionOfThread = 0;

// A tool that reads, or the gate, sends no order.
bool canOrder(const QString& tool)
{
    return !tool.isEmpty() && !tool.startsWith(QLatin1String("List")) &&
           !tool.startsWith(QLatin1String("Get")) && !tool.endsWith(QLatin1String("Processing")) &&
           tool != QLatin1String("Init");
}

} // namespace

Text AgentClients::Client::name() const
{
    if (!process)
        return {QT_TRANSLATE_NOOP("Sandbox", "client on port %1"), {QString::number(port)}};
    const QString id = QString::number(process->id);
    return process->name.isEmpty() ? Text(QT_TRANSLATE_NOOP("Sandbox", "process %1"), {id})
                                   : Text(QStringLiteral("%1 (%2)").arg(process->name, id));
}

AgentClients::AgentClients(FindProcess findProcess, QObject* parent)
    : QAbstractListModel(parent), findProcess_(std::move(findProcess))
{
}

AgentClients::~AgentClients()
{
    QCoreApplication* application = QCoreApplication::instance();
    if (application != nullptr && application->property(kObserver).value<QObject*>() == this)
        application->setProperty(kObserver, QVariant());
}

void AgentClients::observe()
{
    QCoreApplication::instance()->setProperty(kObserver, QVariant::fromValue<QObject*>(this));
}

std::optional<PeerProcess> AgentClients::findByServicePort(int clientPort)
{
    return findPeerProcess(clientPort, qEnvironmentVariableIntValue(kServicePort));
}

// Once for each connection, because a process of another user is never found. On the connection's thread, so
// that the process is known when the client's order arrives.
void AgentClients::lookUp(int connection)
{
    if (!lookingUp_)
        return;
    int port = 0;
    change(connection, [&](Client& client) {
        port = client.isLookedUp ? 0 : client.port;
        client.isLookedUp = true;
    });
    if (port == 0)
        return;
    const std::optional<PeerProcess> process = findProcess_(port);
    change(connection, [&](Client& client) { client.process = process; });
}

void AgentClients::connectionOpened(int connection, const QString&, int port)
{
    connectionOfThread = connection;
    const QString since = QTime::currentTime().toString(QStringLiteral("hh:mm:ss"));
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        clients_.emplace_back();
        clients_.back().connection = connection;
        clients_.back().port = port;
        clients_.back().since = since;
    }
    lookUp(connection);
    postRefresh();
}

void AgentClients::callStarted(int connection, const QString& tool)
{
    change(connection, [&](Client& client) {
        client.tool = tool;
        ++client.calls;
    });
    lookUp(connection);
}

void AgentClients::callEnded(int connection)
{
    change(connection, [](Client& client) { client.tool.clear(); });
}

void AgentClients::connectionClosed(int connection)
{
    connectionOfThread = 0;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const auto isIt = [&](const Client& client) { return client.connection == connection; };
        clients_.erase(std::remove_if(clients_.begin(), clients_.end(), isIt), clients_.end());
    }
    postRefresh();
}

void AgentClients::change(int connection, const std::function<void(Client&)>& work)
{
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        for (Client& client : clients_) {
            if (client.connection == connection)
                work(client);
        }
    }
    postRefresh();
}

std::vector<AgentClients::Client> AgentClients::clients() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return clients_;
}

Text AgentClients::clientOfThisThread() const
{
    if (connectionOfThread == 0)
        return Text();
    for (const Client& client : clients()) {
        if (client.connection == connectionOfThread)
            return client.name();
    }
    return Text();
}

Text AgentClients::senderOf(const QString& function) const
{
    std::vector<Client> acting = clients();
    acting.erase(std::remove_if(acting.begin(), acting.end(),
                                [](const Client& client) { return !canOrder(client.tool); }),
                 acting.end());
    // The names of some tools only begin with that of their function, and some tools share a function.
    const auto runsIt = [&](const Client& client) { return client.tool.startsWith(function); };
    if (std::any_of(acting.begin(), acting.end(), runsIt))
        acting.erase(std::remove_if(acting.begin(), acting.end(), std::not_fn(runsIt)), acting.end());
    if (acting.empty())
        return Text();
    if (acting.size() == 1)
        return acting.front().name();
    return {QT_TRANSLATE_NOOP("Sandbox", "one of %1 clients"), {QString::number(acting.size())}};
}

void AgentClients::postRefresh()
{
    // By name, because a functor would be shared memory between the two threads.
    if (!refreshPending_.exchange(true))
        QMetaObject::invokeMethod(this, "scheduleRefresh", Qt::QueuedConnection);
}

void AgentClients::scheduleRefresh()
{
    QTimer::singleShot(kRefreshMs, this, [this] { refresh(); });
}

void AgentClients::refresh()
{
    refreshPending_ = false;
    std::vector<Client> next = clients();
    const int before = count();
    const RowChange change = findRowChange(
        rows_, next, [](const Client& a, const Client& b) { return a.connection == b.connection; });
    if (change.removed > 0) {
        beginRemoveRows(QModelIndex(), change.first, change.first + change.removed - 1);
        rows_.erase(rows_.begin() + change.first, rows_.begin() + change.first + change.removed);
        endRemoveRows();
    }
    if (change.inserted > 0) {
        beginInsertRows(QModelIndex(), change.first, change.first + change.inserted - 1);
        rows_.insert(rows_.begin() + change.first, next.begin() + change.first,
                     next.begin() + change.first + change.inserted);
        endInsertRows();
    }
    rows_ = std::move(next);
    retranslate();
    if (count() != before)
        Q_EMIT countChanged();
}

void AgentClients::retranslate()
{
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1));
}

int AgentClients::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant AgentClients::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    const Client& client = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return client.name().translated();
    case SinceRole:
        return client.since;
    case CallsRole:
        return client.calls;
    case ToolRole:
        return client.tool;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> AgentClients::roleNames() const
{
    return {{NameRole, "name"}, {SinceRole, "since"}, {CallsRole, "calls"}, {ToolRole, "tool"}};
}

} // namespace host

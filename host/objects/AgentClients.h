#pragma once

#include "host/PeerProcess.h"
#include "host/machine/Text.h"

#include <QtCore/QAbstractListModel>

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

namespace host {

/// The connected clients of the agent service, for the window: a row for each connection, oldest first. The
/// component reports them, because the application property `agentObserver` names this object.
///
/// The processes are looked up only while the window is visible, on the connections' threads. The rows belong
/// to the application thread; they follow the connections at most a few times a second.
class AgentClients : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        NameRole = Qt::UserRole, ///< "python3 (4711)", or the port if the process is unknown
        SinceRole,               ///< hh:mm:ss, local time
        CallsRole,               ///< number of calls, including reads and the gate
        ToolRole                 ///< the tool that runs now; empty if none
    };

    /// Finds the process by the client's port. Any thread.
    using FindProcess = std::function<std::optional<PeerProcess>(int clientPort)>;

    explicit AgentClients(FindProcess findProcess = findByServicePort, QObject* parent = nullptr);
    ~AgentClients() override;

    /// Makes this the application's observer of agents. Called before the component loads.
    void observe();
    /// Whether processes are looked up. A client that is already connected is looked up at its next call.
    void setLookingUp(bool lookingUp) { lookingUp_ = lookingUp; }

    /// The client whose connection's thread calls this; empty on any other thread.
    Text clientOfThisThread() const;
    /// The client that sent the order that the application thread is receiving. Several clients can run the
    /// same tool at the same time; then their number. Empty if no client's call can have sent it.
    Text senderOf(const QString& function) const;

    /// Called after a change of the language.
    void retranslate();

    int count() const { return static_cast<int>(rows_.size()); }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // The component calls these on the connection's thread.
    Q_INVOKABLE void connectionOpened(int connection, const QString& address, int port);
    Q_INVOKABLE void callStarted(int connection, const QString& tool);
    Q_INVOKABLE void callEnded(int connection);
    Q_INVOKABLE void connectionClosed(int connection);

Q_SIGNALS:
    void countChanged();

private Q_SLOTS:
    void scheduleRefresh();

private:
    struct Client
    {
        int connection = 0;
        int port = 0;
        QString since;
        qint64 calls = 0;
        QString tool;
        bool isLookedUp = false;
        std::optional<PeerProcess> process;

        Text name() const;
    };

    static std::optional<PeerProcess> findByServicePort(int clientPort);
    void lookUp(int connection);
    void refresh();
    void postRefresh();
    // Changes the client of a connection under the lock.
    void change(int connection, const std::function<void(Client&)>& work);
    std::vector<Client> clients() const;

    const FindProcess findProcess_;
    std::atomic<bool> lookingUp_{false};
    std::atomic<bool> refreshPending_{false};
    mutable std::mutex mutex_;
    std::vector<Client> clients_; ///< guarded by the mutex
    std::vector<Client> rows_;    ///< application thread
};

} // namespace host

#pragma once

#include "host/udisks/BlockDevices.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusServiceWatcher>

#include <functional>
#include <memory>
#include <variant>

namespace host {

/// A call of a method of the disk service.
struct DiskServiceCall
{
    QString path;
    QString interface; ///< without the prefix "org.freedesktop.UDisks2."
    QString method;
    QVariantList arguments;
};

/// Makes a new connection of that name to the bus of the disk service.
using ConnectToBus = std::function<QDBusConnection(const QString& name)>;
QDBusConnection connectToSystemBus(const QString& name);

/// The connection to UDisks2. Application thread.
///
/// A restarted service is used again, and a restarted bus is connected again. Answers of a request that was
/// made before the object was destroyed are discarded.
class DiskService : public QObject
{
    Q_OBJECT

public:
    explicit DiskService(const QDBusConnection& bus, ConnectToBus connect = connectToSystemBus);
    ~DiskService() override;

    /// Whether the bus is connected and a process owns the name of the service.
    bool isAvailable() const { return available_ && bus_.isConnected(); }

    using ReadReply = std::function<void(const DiskSnapshot&, const QString& error)>;
    using CallReply = std::function<void(const QDBusMessage&)>;
    /// Reads all objects. @p reply receives an empty snapshot and an error if this fails.
    void read(ReadReply reply);
    /// Calls a method without a timeout, because a format or a resize can take hours.
    void call(const DiskServiceCall& call, CallReply reply);

    /// Reads all objects and waits for the reply. For the start of the program.
    std::variant<DiskSnapshot, QString> readNow();
    /// Calls a method and waits up to 60 seconds. For the start and the end of the program.
    QDBusMessage callNow(const DiskServiceCall& call);

Q_SIGNALS:
    /// An object has been added or removed, or one of its properties has changed. Several signals can follow
    /// within milliseconds. @p path: of the object.
    void changed(QString path);
    /// A property of the object has changed. changed() follows.
    void propertyChanged(QString path);
    /// A process has taken or lost the name of the service, or the bus has disappeared.
    void availabilityChanged();
    /// A job (a long operation of the service) has reported its progress, 0 to 1.
    void jobProgress(QString jobPath, double share);
    /// A job has begun. @p objects: the object paths of its devices.
    void jobStarted(QString jobPath, QStringList objects, bool cancelable);

private Q_SLOTS:
    void onInterfacesAdded(const QDBusObjectPath& path, const host::DiskServiceInterfaces& interfaces);
    void onInterfacesRemoved(const QDBusObjectPath& path);
    void onDisconnected();
    void onPropertiesChanged(const QString& interface, const QVariantMap& properties, const QStringList& gone,
                             const QDBusMessage& message);

private:
    QDBusMessage messageOf(const DiskServiceCall& call) const;
    void setAvailable(bool available);
    void subscribe();
    void requestStart();
    void askBus(const char* method, const QVariantList& arguments, CallReply reply);
    void reconnect();

    QDBusConnection bus_;
    ConnectToBus connect_;
    QString ownName_; ///< of a connection that this object made; else empty
    QTimer reconnectTimer_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    bool available_ = false;
};

/// The error of a reply on one line in the wording of the service; empty for a result. The loss of the
/// service has a sentence of the host, which Text::returned() translates.
QString errorOf(const QDBusMessage& reply);

/// True if the object of the call does not exist, as after every change of a partition table for some
/// milliseconds. The service has changed nothing.
bool isMissingObject(const QDBusMessage& reply);

} // namespace host

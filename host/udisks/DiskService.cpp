#include "host/udisks/DiskService.h"

#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <limits>
#include <utility>

namespace host {

namespace {

const QString kService = QStringLiteral("org.freedesktop.UDisks2");
const QString kRoot = QStringLiteral("/org/freedesktop/UDisks2");
const QString kJob = QStringLiteral("org.freedesktop.UDisks2.Job");
const QString kObjectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
constexpr int kReadMs = 30000;
constexpr int kCallNowMs = 60000;
constexpr int kReconnectMs = 1000;
// libdbus waits without a limit.
constexpr int kNoTimeout = std::numeric_limits<int>::max();

QDBusMessage readMessage()
{
    return QDBusMessage::createMethodCall(kService, kRoot, kObjectManager,
                                          QStringLiteral("GetManagedObjects"));
}

DiskSnapshot snapshotOfReply(const QDBusMessage& reply)
{
    return snapshotOf(qdbus_cast<DiskServiceObjects>(reply.arguments().value(0)));
}

} // namespace

QString errorOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ErrorMessage)
        return QString();
    // Also the errors of a call that was under way when the service ended.
    static const QStringList losses = {QStringLiteral("org.freedesktop.DBus.Error.NoReply"),
                                       QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"),
                                       QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"),
                                       QStringLiteral("org.freedesktop.DBus.Error.Disconnected")};
    if (losses.contains(reply.errorName()))
        return QString::fromLatin1(
            QT_TRANSLATE_NOOP("Sandbox", "The disk service has ended or does not answer."));
    return reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage().simplified();
}

QDBusConnection connectToSystemBus(const QString& name)
{
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
}

bool isMissingObject(const QDBusMessage& reply)
{
    return reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownMethod") ||
           reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownObject");
}

DiskService::DiskService(const QDBusConnection& bus, ConnectToBus connect)
    : bus_(bus), connect_(std::move(connect))
{
    registerDiskServiceTypes();
    reconnectTimer_.setInterval(kReconnectMs);
    QObject::connect(&reconnectTimer_, &QTimer::timeout, this, &DiskService::reconnect);
    subscribe();
    QDBusConnectionInterface* names = bus_.interface();
    if (names == nullptr)
        return;
    available_ = names->isServiceRegistered(kService).value();
    // The service starts on demand where the bus can start it.
    if (!available_)
        available_ = names->startService(kService).isValid();
}

DiskService::~DiskService()
{
    if (!ownName_.isEmpty())
        QDBusConnection::disconnectFromBus(ownName_);
}

void DiskService::subscribe()
{
    // A watcher reports nothing on a second connection.
    watcher_ = std::make_unique<QDBusServiceWatcher>(kService, bus_,
                                                     QDBusServiceWatcher::WatchForRegistration |
                                                         QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(watcher_.get(), &QDBusServiceWatcher::serviceRegistered, this,
                     [this] { setAvailable(true); });
    QObject::connect(watcher_.get(), &QDBusServiceWatcher::serviceUnregistered, this,
                     [this] { setAvailable(false); });
    bus_.connect(kService, kRoot, kObjectManager, QStringLiteral("InterfacesAdded"), this,
                 SLOT(onInterfacesAdded(QDBusObjectPath, host::DiskServiceInterfaces)));
    bus_.connect(kService, kRoot, kObjectManager, QStringLiteral("InterfacesRemoved"), this,
                 SLOT(onInterfacesRemoved(QDBusObjectPath)));
    bus_.connect(kService, QString(), kProperties, QStringLiteral("PropertiesChanged"), this,
                 SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    // The connection itself sends this signal.
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(onDisconnected()));
}

// A closed connection cannot be opened again, so each attempt has its own name.
void DiskService::reconnect()
{
    static int count = 0;
    const QString name = QStringLiteral("disk-service-%1").arg(++count);
    const QDBusConnection next = connect_(name);
    if (!next.isConnected())
        return QDBusConnection::disconnectFromBus(name);
    reconnectTimer_.stop();
    if (!ownName_.isEmpty())
        QDBusConnection::disconnectFromBus(ownName_);
    ownName_ = name;
    bus_ = next;
    subscribe();
    requestStart();
}

// Starts the service where the bus can start it; the watcher then reports its name. Without such a bus the
// call fails even if the service runs.
void DiskService::requestStart()
{
    askBus("StartServiceByName", {kService, 0u}, [](const QDBusMessage&) {});
    askBus("NameHasOwner", {kService}, [this](const QDBusMessage& reply) {
        if (reply.arguments().value(0).toBool() && !available_)
            setAvailable(true);
    });
}

void DiskService::askBus(const char* method, const QVariantList& arguments, CallReply reply)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
    message.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, reply = std::move(reply)] {
        watcher->deleteLater();
        if (!watcher->isError())
            reply(watcher->reply());
    });
}

void DiskService::read(ReadReply reply)
{
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(readMessage(), kReadMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, reply = std::move(reply)] {
        watcher->deleteLater();
        const QDBusMessage message = watcher->reply();
        const QString error = errorOf(message);
        reply(error.isEmpty() ? snapshotOfReply(message) : DiskSnapshot(), error);
    });
}

void DiskService::call(const DiskServiceCall& call, CallReply reply)
{
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(messageOf(call), kNoTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, reply = std::move(reply)] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

std::variant<DiskSnapshot, QString> DiskService::readNow()
{
    const QDBusMessage reply = bus_.call(readMessage(), QDBus::Block, kReadMs);
    if (reply.type() == QDBusMessage::ErrorMessage)
        return errorOf(reply);
    return snapshotOfReply(reply);
}

QDBusMessage DiskService::callNow(const DiskServiceCall& call)
{
    return bus_.call(messageOf(call), QDBus::Block, kCallNowMs);
}

QDBusMessage DiskService::messageOf(const DiskServiceCall& call) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        kService, call.path, kService + QLatin1Char('.') + call.interface, call.method);
    message.setArguments(call.arguments);
    return message;
}

void DiskService::onInterfacesAdded(const QDBusObjectPath& path, const DiskServiceInterfaces& interfaces)
{
    const auto job = interfaces.find(kJob);
    if (job == interfaces.end()) {
        Q_EMIT changed(path.path());
        return;
    }
    QStringList objects;
    const auto paths = qdbus_cast<QList<QDBusObjectPath>>(job->value(QStringLiteral("Objects")));
    for (const QDBusObjectPath& object : paths)
        objects.append(object.path());
    Q_EMIT jobStarted(path.path(), objects, job->value(QStringLiteral("Cancelable")).toBool());
}

void DiskService::onInterfacesRemoved(const QDBusObjectPath& path)
{
    Q_EMIT changed(path.path());
}

void DiskService::onPropertiesChanged(const QString& interface, const QVariantMap& properties,
                                      const QStringList&, const QDBusMessage& message)
{
    if (interface != kJob) {
        Q_EMIT propertyChanged(message.path());
        Q_EMIT changed(message.path());
        return;
    }
    const auto progress = properties.constFind(QStringLiteral("Progress"));
    if (progress != properties.constEnd())
        Q_EMIT jobProgress(message.path(), progress->toDouble());
}

void DiskService::onDisconnected()
{
    reconnectTimer_.start();
    setAvailable(false);
}

void DiskService::setAvailable(bool available)
{
    available_ = available;
    Q_EMIT availabilityChanged();
}

} // namespace host

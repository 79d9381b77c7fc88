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
    return reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage().trimmed();
}

bool isMissingObject(const QDBusMessage& reply)
{
    return reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownMethod") ||
           reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownObject");
}

DiskService::DiskService(QDBusConnection bus) : bus_(std::move(bus)), watcher_(kService, bus_)
{
    registerDiskServiceTypes();
    bus_.connect(kService, kRoot, kObjectManager, QStringLiteral("InterfacesAdded"), this,
                 SLOT(onInterfacesAdded(QDBusObjectPath, host::DiskServiceInterfaces)));
    bus_.connect(kService, kRoot, kObjectManager, QStringLiteral("InterfacesRemoved"), this,
                 SLOT(onInterfacesRemoved()));
    bus_.connect(kService, QString(), kProperties, QStringLiteral("PropertiesChanged"), this,
                 SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    // The connection itself sends this signal.
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(onDisconnected()));
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, [this] { setAvailable(true); });
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { setAvailable(false); });
    QDBusConnectionInterface* names = bus_.interface();
    if (names == nullptr)
        return;
    available_ = names->isServiceRegistered(kService).value();
    // The service starts on demand where the bus can start it.
    if (!available_)
        available_ = names->startService(kService).isValid();
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
        Q_EMIT changed();
        return;
    }
    QStringList objects;
    const auto paths = qdbus_cast<QList<QDBusObjectPath>>(job->value(QStringLiteral("Objects")));
    for (const QDBusObjectPath& object : paths)
        objects.append(object.path());
    Q_EMIT jobStarted(path.path(), objects, job->value(QStringLiteral("Cancelable")).toBool());
}

void DiskService::onInterfacesRemoved()
{
    Q_EMIT changed();
}

void DiskService::onPropertiesChanged(const QString& interface, const QVariantMap& properties,
                                      const QStringList&, const QDBusMessage& message)
{
    if (interface != kJob) {
        Q_EMIT changed();
        return;
    }
    const auto progress = properties.constFind(QStringLiteral("Progress"));
    if (progress != properties.constEnd())
        Q_EMIT jobProgress(message.path(), progress->toDouble());
}

void DiskService::onDisconnected()
{
    setAvailable(false);
}

void DiskService::setAvailable(bool available)
{
    available_ = available;
    Q_EMIT availabilityChanged();
}

} // namespace host

#include "tests/host/AssistiveBus.h"

#include <QtCore/QRect>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusObjectPath>

namespace {

constexpr int kLimitMs = 20000;
const char* const kAccessible = "org.a11y.atspi.Accessible";
const char* const kProgramPath = "/org/a11y/atspi/accessible/root";

/// An object on the bus, as AT-SPI passes it: the connection's name and the path.
struct Reference
{
    QString connection;
    QDBusObjectPath path;
};

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference)
{
    argument.beginStructure();
    argument >> reference.connection >> reference.path;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference)
{
    argument.beginStructure();
    argument << reference.connection << reference.path;
    argument.endStructure();
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(Reference)

AssistiveRegistry::AssistiveRegistry()
{
    qDBusRegisterMetaType<Reference>();
    moveToThread(&thread_);
    thread_.start();
}

AssistiveRegistry::~AssistiveRegistry()
{
    thread_.quit();
    thread_.wait();
}

bool AssistiveRegistry::offer(QDBusConnection bus, const QString& address)
{
    address_ = address;
    // QtDBus creates children of this object, so the object's thread registers it.
    bool registered = false;
    QMetaObject::invokeMethod(
        this,
        [&] {
            registered = bus.registerVirtualObject("/org/a11y/bus", this) &&
                         bus.registerVirtualObject("/org/a11y/atspi", this, QDBusConnection::SubPath) &&
                         bus.registerService("org.a11y.atspi.Registry") &&
                         bus.registerService("org.a11y.Bus");
        },
        Qt::BlockingQueuedConnection);
    return registered;
}

QString AssistiveRegistry::program() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return program_;
}

QString AssistiveRegistry::introspect(const QString&) const
{
    return {};
}

bool AssistiveRegistry::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    // The bus of AT-SPI is found through the session bus. Here both are the same.
    if (message.member() == "GetAddress")
        return connection.send(message.createReply(address_));
    // IsEnabled and ScreenReaderEnabled.
    if (message.interface() == "org.freedesktop.DBus.Properties" && message.member() == "Get")
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(true))));
    if (message.member() == "Embed") {
        const Reference registry{connection.baseService(), QDBusObjectPath(kProgramPath)};
        const std::lock_guard<std::mutex> lock(mutex_);
        program_ = message.service();
        return connection.send(message.createReply(QVariant::fromValue(registry)));
    }
    return false;
}

AssistiveBus::AssistiveBus()
{
    static int count = 0;
    name_ = QStringLiteral("assistive%1").arg(++count);
    process_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1"});
    while (process_.state() != QProcess::NotRunning && !process_.canReadLine() &&
           process_.waitForReadyRead(kLimitMs)) {
    }
    address_ = QString::fromLocal8Bit(process_.readLine()).trimmed();
    const QDBusConnection connection = QDBusConnection::connectToBus(address_, name_);
    if (!connection.isConnected())
        error_ = "no bus: " + QString::fromLocal8Bit(process_.readAllStandardError()) +
                 connection.lastError().message();
}

AssistiveBus::~AssistiveBus()
{
    QDBusConnection::disconnectFromBus(name_);
    process_.terminate();
    process_.waitForFinished();
}

bool AssistiveBus::turnOn()
{
    return registry_.offer(bus(), address_);
}

QVariantList AssistiveBus::ask(const QString& path, const QString& interface, const QString& method,
                               const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(registry_.program(), path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = bus().call(call, QDBus::Block, kLimitMs);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

QString AssistiveBus::property(const QString& path, const QString& name)
{
    const QVariantList reply = ask(path, "org.freedesktop.DBus.Properties", "Get", {kAccessible, name});
    return reply.value(0).value<QDBusVariant>().variant().toString();
}

QStringList AssistiveBus::children(const QString& path)
{
    const QVariantList reply = ask(path, kAccessible, "GetChildren");
    QStringList paths;
    if (reply.isEmpty())
        return paths;
    const auto array = reply.first().value<QDBusArgument>();
    array.beginArray();
    while (!array.atEnd()) {
        Reference child;
        array >> child;
        paths.append(child.path.path());
    }
    array.endArray();
    return paths;
}

quint64 AssistiveBus::states(const QString& path)
{
    const QVariantList reply = ask(path, kAccessible, "GetState");
    if (reply.isEmpty())
        return 0;
    const auto words = qdbus_cast<QList<uint>>(reply.first());
    return words.size() == 2 ? words[0] | static_cast<quint64>(words[1]) << 32U : 0;
}

std::vector<AssistiveBus::Item> AssistiveBus::visibleBelow(const QString& path)
{
    std::vector<Item> found;
    const bool isProgram = path.isEmpty();
    for (const QString& child : children(isProgram ? QString(kProgramPath) : path)) {
        Item item;
        item.path = child;
        item.states = states(child);
        if (!isProgram && !item.has(atspi::kVisible))
            continue;
        item.role = ask(child, kAccessible, "GetRole").value(0).toUInt();
        item.name = property(child, "Name");
        found.push_back(item);
        const std::vector<Item> below = visibleBelow(child);
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

std::vector<AssistiveBus::Item> AssistiveBus::all(atspi::Role role)
{
    std::vector<Item> found;
    for (const Item& item : visibleBelow()) {
        if (item.role == role)
            found.push_back(item);
    }
    return found;
}

AssistiveBus::Item AssistiveBus::find(atspi::Role role, const QString& name)
{
    for (const Item& item : all(role)) {
        if (item.name == name)
            return item;
    }
    return {};
}

QString AssistiveBus::description(const Item& item)
{
    return item.path.isEmpty() ? QString() : property(item.path, "Description");
}

void AssistiveBus::press(const Item& item)
{
    const int count =
        ask(item.path, "org.freedesktop.DBus.Properties", "Get", {"org.a11y.atspi.Action", "NActions"})
            .value(0)
            .value<QDBusVariant>()
            .variant()
            .toInt();
    for (int action = 0; action < count; ++action) {
        if (ask(item.path, "org.a11y.atspi.Action", "GetName", {action}).value(0) == QVariant("Press")) {
            ask(item.path, "org.a11y.atspi.Action", "DoAction", {action});
            return;
        }
    }
}

bool AssistiveBus::grabFocus(const Item& item)
{
    return ask(item.path, "org.a11y.atspi.Component", "GrabFocus").value(0).toBool();
}

QRect AssistiveBus::placeOf(const Item& item)
{
    constexpr uint kOfTheScreen = 0;
    const QVariantList reply = ask(item.path, "org.a11y.atspi.Component", "GetExtents", {kOfTheScreen});
    return reply.isEmpty() ? QRect() : qdbus_cast<QRect>(reply.first());
}

#include "bench/peers/DBusPeer.h"

#include "bench/peers/DBusRecords.h"

#include <QtCore/QThread>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

#include <stdexcept>

namespace {

constexpr int kCallTimeoutMs = 60000;
const char* const kServerConnection = "peers-server";
const char* const kClientConnection = "peers-client";
const char* const kPath = "/peers";
const char* const kInterface = "peers.Plugin";

template <typename From> auto converted(const From& from)
{
    QVector<decltype(dbus::toDBus(from.front()))> to;
    for (const auto& record : from)
        to.append(dbus::toDBus(record));
    return to;
}

class Object : public QDBusVirtualObject
{
public:
    explicit Object(const Records& prepared)
        : disks_(converted(prepared.disks)), partitions_(converted(prepared.partitions))
    {
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        QVariant reply;
        if (message.member() == "GetPartitionInfo")
            reply = QVariant::fromValue(partitions_.front());
        else if (message.member() == "ListAllDisks")
            reply = QVariant::fromValue(disks_);
        else
            reply = QVariant::fromValue(partitions_);
        return connection.send(message.createReply(reply));
    }

private:
    const QVector<dbus::Disk> disks_;
    const QVector<dbus::Partition> partitions_;
};

QDBusConnection connectTo(const QString& address, const char* name)
{
    const QDBusConnection connection = QDBusConnection::connectToBus(address, name);
    if (!connection.isConnected())
        throw std::runtime_error("D-Bus: " + connection.lastError().message().toStdString());
    return connection;
}

} // namespace

struct DBusPeer::Parts
{
    QDBusConnection server;
    QDBusConnection client;
    std::unique_ptr<Object> object;
    QThread thread;

    Parts(const QString& address, const Records& prepared)
        : server(connectTo(address, kServerConnection)),
          client(connectTo(address, kClientConnection)),
          object(std::make_unique<Object>(prepared))
    {
        dbus::registerTypes();
        object->moveToThread(&thread);
        thread.start();
        // QtDBus creates children of the object, so the object's thread registers it.
        QMetaObject::invokeMethod(
            object.get(), [this] { server.registerVirtualObject(kPath, object.get()); },
            Qt::BlockingQueuedConnection);
    }

    ~Parts()
    {
        QMetaObject::invokeMethod(
            object.get(), [this] { server.unregisterObject(kPath); }, Qt::BlockingQueuedConnection);
        thread.quit();
        thread.wait();
        QDBusConnection::disconnectFromBus(kServerConnection);
        QDBusConnection::disconnectFromBus(kClientConnection);
    }

    QDBusMessage send(const char* method, const QVariantList& arguments) const
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(server.baseService(), kPath, kInterface, method);
        message.setArguments(arguments);
        return client.call(message, QDBus::Block, kCallTimeoutMs);
    }

    template <typename Reply> Reply read(const char* method, const QVariantList& arguments = {}) const
    {
        const QDBusMessage reply = send(method, arguments);
        if (reply.type() != QDBusMessage::ReplyMessage)
            throw std::runtime_error("D-Bus: " + reply.errorMessage().toStdString());
        return qdbus_cast<Reply>(reply.arguments().value(0));
    }
};

DBusPeer::DBusPeer(const QString& busAddress, const Records& prepared, Call call)
    : parts_(std::make_unique<Parts>(busAddress, prepared)), call_(call)
{
}

DBusPeer::~DBusPeer() = default;

void DBusPeer::call()
{
    switch (call_) {
    case Call::GetPartitionInfo:
        parts_->read<dbus::Partition>("GetPartitionInfo", {QString(kDrive)});
        break;
    case Call::ListAllDisks:
        parts_->read<QVector<dbus::Disk>>("ListAllDisks");
        break;
    case Call::GetAllPartitionInfo:
        parts_->read<QVector<dbus::Partition>>("GetAllPartitionInfo");
        break;
    }
}

bool DBusPeer::isCorrect(const Records& expected)
{
    Records records;
    switch (call_) {
    case Call::GetPartitionInfo:
        records.partitions = {
            dbus::fromDBus(parts_->read<dbus::Partition>("GetPartitionInfo", {QString(kDrive)}))};
        break;
    case Call::ListAllDisks:
        for (const dbus::Disk& disk : parts_->read<QVector<dbus::Disk>>("ListAllDisks"))
            records.disks.push_back(dbus::fromDBus(disk));
        break;
    case Call::GetAllPartitionInfo:
        for (const dbus::Partition& partition : parts_->read<QVector<dbus::Partition>>("GetAllPartitionInfo"))
            records.partitions.push_back(dbus::fromDBus(partition));
        break;
    }
    return records == expected;
}

std::string DBusPeer::unavailable()
{
    try {
        call();
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

#include "bench/peers/DBusRecords.h"

#include <QtDBus/QDBusMetaType>

namespace dbus {

namespace {

template <typename Value> Value toField(Value value)
{
    return value;
}
qlonglong toField(std::int64_t value)
{
    return value;
}
QString toField(const std::string& value)
{
    return QString::fromStdString(value);
}

template <typename Value> Value fromField(Value value)
{
    return value;
}
std::string fromField(const QString& value)
{
    return value.toStdString();
}

} // namespace

#define PEERS_APPEND(type, name, protoName) argument << record.name;
#define PEERS_EXTRACT(type, name, protoName) argument >> record.name;
#define PEERS_TO_DBUS(type, name, protoName) to.name = toField(from.name);
#define PEERS_FROM_DBUS(type, name, protoName) to.name = fromField(from.name);

QDBusArgument& operator<<(QDBusArgument& argument, const Disk& record)
{
    argument.beginStructure();
    PEERS_DiskInfo(PEERS_APPEND);
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Disk& record)
{
    argument.beginStructure();
    PEERS_DiskInfo(PEERS_EXTRACT);
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const Partition& record)
{
    argument.beginStructure();
    PEERS_PartitionInfo(PEERS_APPEND);
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Partition& record)
{
    argument.beginStructure();
    PEERS_PartitionInfo(PEERS_EXTRACT);
    argument.endStructure();
    return argument;
}

Disk toDBus(const DiskInfo& from)
{
    Disk to;
    PEERS_DiskInfo(PEERS_TO_DBUS);
    return to;
}

Partition toDBus(const PartitionInfo& from)
{
    Partition to;
    PEERS_PartitionInfo(PEERS_TO_DBUS);
    return to;
}

DiskInfo fromDBus(const Disk& from)
{
    DiskInfo to;
    PEERS_DiskInfo(PEERS_FROM_DBUS);
    return to;
}

PartitionInfo fromDBus(const Partition& from)
{
    PartitionInfo to;
    PEERS_PartitionInfo(PEERS_FROM_DBUS);
    return to;
}

void registerTypes()
{
    qDBusRegisterMetaType<Disk>();
    qDBusRegisterMetaType<Partition>();
    qDBusRegisterMetaType<QVector<Disk>>();
    qDBusRegisterMetaType<QVector<Partition>>();
}

} // namespace dbus

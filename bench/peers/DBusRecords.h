#pragma once

#include "PeerFields.h"
#include "ZORNativePlugin.h"

#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtDBus/QDBusArgument>

#include <cstdint>
#include <string>

/// The records in the types that Qt D-Bus marshals.
namespace dbus {

template <typename Wire> struct Field
{
    using Type = Wire;
};
template <> struct Field<std::int32_t>
{
    using Type = int;
};
template <> struct Field<std::int64_t>
{
    using Type = qlonglong;
};
template <> struct Field<std::string>
{
    using Type = QString;
};

#define PEERS_MEMBER(type, name, protoName) Field<type>::Type name{};

struct Disk
{
    PEERS_DiskInfo(PEERS_MEMBER)
};

struct Partition
{
    PEERS_PartitionInfo(PEERS_MEMBER)
};

#undef PEERS_MEMBER

QDBusArgument& operator<<(QDBusArgument& argument, const Disk& record);
const QDBusArgument& operator>>(const QDBusArgument& argument, Disk& record);
QDBusArgument& operator<<(QDBusArgument& argument, const Partition& record);
const QDBusArgument& operator>>(const QDBusArgument& argument, Partition& record);

Disk toDBus(const DiskInfo& from);
Partition toDBus(const PartitionInfo& from);
DiskInfo fromDBus(const Disk& from);
PartitionInfo fromDBus(const Partition& from);

/// Required once before a record is marshalled.
void registerTypes();

} // namespace dbus

Q_DECLARE_METATYPE(dbus::Disk)
Q_DECLARE_METATYPE(dbus::Partition)

#include "host/udisks/PlanParts.h"

#include "host/udisks/ExtendedPartition.h"

#include <algorithm>

namespace host {

QVariant uint64(qint64 value)
{
    return QVariant::fromValue(static_cast<quint64>(value));
}

OrderStep onDisk(const char* interface, const char* method, const QVariantList& arguments)
{
    OrderStep step;
    const QString type = QString::fromLatin1(interface);
    const QString name = QString::fromLatin1(method);
    step.call = [=](const OrderState& state) {
        return DiskServiceCall{state.disk.path, type, name, arguments};
    };
    return step;
}

OrderStep onPartition(const char* interface, const char* method, const QVariantList& arguments)
{
    OrderStep step;
    const QString type = QString::fromLatin1(interface);
    const QString name = QString::fromLatin1(method);
    step.call = [=](const OrderState& state) {
        return DiskServiceCall{state.partition->path, type, name, arguments};
    };
    return step;
}

StepCall createCall(const OrderState& state, Span span)
{
    const qint64 begin = std::max(span.begin, firstLogicalStart(state, span.begin));
    return DiskServiceCall{state.disk.path,
                           QStringLiteral("PartitionTable"),
                           QStringLiteral("CreatePartition"),
                           {uint64(begin), uint64(span.end - begin), QString(), QString(), QVariantMap()}};
}

OrderStep createIn(Span span)
{
    OrderStep step;
    step.createsTarget = true;
    step.call = [span](const OrderState& state) { return createCall(state, span); };
    return step;
}

OrderStep formatTarget(const QString& fileSystem, const QString& label, bool erase)
{
    // Without the type of its file system, other systems do not show a partition.
    QVariantMap options{{QStringLiteral("update-partition-type"), true}};
    if (!label.isEmpty())
        options.insert(QStringLiteral("label"), label);
    if (erase)
        options.insert(QStringLiteral("erase"), QStringLiteral("zero"));
    return onPartition("Block", "Format", {serviceFileSystem(fileSystem), options});
}

OrderStep writeTable(const QString& type)
{
    return onDisk("Block", "Format", {type, QVariantMap()});
}

OrderStep repairTarget()
{
    OrderStep step = onPartition("Filesystem", "Repair", {QVariantMap()});
    step.failure = QT_TRANSLATE_NOOP("Sandbox", "The file system could not be repaired.");
    return step;
}

} // namespace host

#include "host/udisks/PlanParts.h"

#include "host/machine/Layout.h"

#include <algorithm>

namespace host {

namespace {

// The table entry of a logical drive is in front of it. The entry of the first one is at the start of the
// extended partition, where the service leaves two mebibytes.
constexpr qint64 kFirstEntry = 2 * kMebibyte;

// The first possible start of a logical drive at @p offset; 0 outside an extended partition.
qint64 firstLogicalStart(const OrderState& state, qint64 offset)
{
    qint64 first = 0;
    for (const BlockDevice* device : state.snapshot.partitionsOf(state.disk.path)) {
        const PartitionEntry& entry = *device->partition;
        const bool holds = entry.offset <= offset && offset < entry.offset + entry.size;
        if (entry.isContainer && holds)
            first = entry.offset + kFirstEntry;
        else if (entry.isContained && entry.offset < offset)
            first = entry.offset + entry.size + kMebibyte;
    }
    return first;
}

} // namespace

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

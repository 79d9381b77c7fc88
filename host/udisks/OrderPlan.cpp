#include "host/udisks/OrderPlan.h"

#include "host/machine/Functions.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"
#include "host/machine/Spaces.h"

#include <map>

namespace host {

namespace {

const QString kBlock = QStringLiteral("Block");
const QString kTable = QStringLiteral("PartitionTable");
const QString kPartition = QStringLiteral("Partition");
const QString kFileSystem = QStringLiteral("Filesystem");

using Steps = std::vector<OrderStep>;
using Planner = Steps (*)(const Machine&, const QVariantMap&);

QVariant uint64(qint64 value)
{
    return QVariant::fromValue(static_cast<quint64>(value));
}

// A call of the order's partition.
OrderStep onPartition(const QString& interface, const char* method, const QVariantList& arguments)
{
    OrderStep step;
    const QString name = QString::fromLatin1(method);
    step.call = [=](const OrderState& state) {
        return DiskServiceCall{state.partition->path, interface, name, arguments};
    };
    return step;
}

OrderStep format(const QString& fileSystem, const QString& label, bool erase)
{
    // Without the type of its file system, other systems do not show a partition.
    QVariantMap options{{QStringLiteral("update-partition-type"), true}};
    if (!label.isEmpty())
        options.insert(QStringLiteral("label"), label);
    if (erase)
        options.insert(QStringLiteral("erase"), QStringLiteral("zero"));
    return onPartition(kBlock, "Format", {serviceFileSystem(fileSystem), options});
}

// Writes an empty table, which removes all partitions.
Steps writeTable(const QString& type)
{
    OrderStep step;
    step.call = [type](const OrderState& state) {
        return DiskServiceCall{state.disk.path, kBlock, QStringLiteral("Format"), {type, QVariantMap()}};
    };
    return {step};
}

Steps initializeToGpt(const Machine&, const QVariantMap&)
{
    return writeTable(QStringLiteral("gpt"));
}

Steps initializeToMbr(const Machine&, const QVariantMap&)
{
    return writeTable(QStringLiteral("dos"));
}

Steps deleteAllPartitions(const Machine& machine, const QVariantMap& params)
{
    return writeTable(targetDisk(machine, params).isGPT ? QStringLiteral("gpt") : QStringLiteral("dos"));
}

Steps createPartition(const Machine& machine, const QVariantMap& params)
{
    const Disk& disk = targetDisk(machine, params);
    const Partition& region = *namedRegion(machine, params);
    const Span span = newSpan(disk, region, bytesOf(params, "capacity"));
    OrderStep create;
    create.createsTarget = true;
    // The service makes a logical drive inside an extended partition, and a primary one elsewhere.
    create.call = [=](const OrderState& state) {
        return DiskServiceCall{
            state.disk.path,
            kTable,
            QStringLiteral("CreatePartition"),
            {uint64(span.begin), uint64(span.end - span.begin), QString(), QString(), QVariantMap()}};
    };
    return {create, format(textOf(params, "fileSystem"), textOf(params, "label"), false)};
}

Steps formatPartition(const Machine&, const QVariantMap& params)
{
    return {format(textOf(params, "fileSystem"), textOf(params, "label"),
                   !params.value(QStringLiteral("quickFormat")).toBool())};
}

Steps deletePartition(const Machine&, const QVariantMap&)
{
    return {onPartition(kPartition, "Delete", {QVariantMap()})};
}

Steps changeLabel(const Machine&, const QVariantMap& params)
{
    return {onPartition(kFileSystem, "SetLabel", {textOf(params, "newLabel"), QVariantMap()})};
}

// ntfsresize marks the volume for a check, and refuses the next resize until the mark is removed.
void addRepair(Steps& steps, const Partition& partition)
{
    if (partition.fsString != QLatin1String("NTFS"))
        return;
    OrderStep repair = onPartition(kFileSystem, "Repair", {QVariantMap()});
    repair.returnsSuccess = true;
    steps.push_back(repair);
}

// A file system is never larger than its partition: it shrinks first and grows last.
Steps resizePartition(const Machine& machine, const QVariantMap& params)
{
    const Partition& partition = target(machine, params);
    const qint64 size = bytesOf(params, "size") / partition.sectorSize * partition.sectorSize;
    const qint64 room = partition.size + freeSpaceAfter(*machine.disk(partition.diskIndex), partition);
    // The service rounds sizes up to mebibytes. 0 is the largest possible size.
    const qint64 requested = size == room ? 0 : size;
    Steps steps;
    if (size < partition.size) {
        steps.push_back(onPartition(kFileSystem, "Resize", {uint64(size), QVariantMap()}));
        addRepair(steps, partition);
        steps.push_back(onPartition(kPartition, "Resize", {uint64(size), QVariantMap()}));
    } else if (size > partition.size) {
        steps.push_back(onPartition(kPartition, "Resize", {uint64(requested), QVariantMap()}));
        steps.push_back(onPartition(kFileSystem, "Resize", {uint64(0), QVariantMap()}));
        addRepair(steps, partition);
    }
    return steps;
}

const std::map<Function, Planner>& planners()
{
    static const std::map<Function, Planner> table = {
        {Function::InitializeDiskToGpt, initializeToGpt},
        {Function::InitializeDiskToMbr, initializeToMbr},
        {Function::DeleteAllPartitions, deleteAllPartitions},
        {Function::CreatePartition, createPartition},
        {Function::FormatPartition, formatPartition},
        {Function::DeletePartition, deletePartition},
        {Function::ResizePartition, resizePartition},
        {Function::ChangePartitionLabel, changeLabel},
    };
    return table;
}

} // namespace

bool hasOrderPlan(int function)
{
    return planners().count(static_cast<Function>(function)) > 0;
}

OrderPlan orderPlan(const Machine& machine, const std::vector<DiskSource>& sources, int function,
                    const QVariantMap& params)
{
    OrderPlan plan;
    int diskIndex = numberOf(params, "diskIndex");
    if (!params.contains(QStringLiteral("diskIndex"))) {
        const Partition& partition = target(machine, params);
        diskIndex = partition.diskIndex;
        plan.target = OrderTarget{partition.startOffset(), partition.size, partition.partGUID};
    }
    plan.source = sources.at(static_cast<std::size_t>(diskIndex));
    plan.steps = planners().at(static_cast<Function>(function))(machine, params);
    return plan;
}

} // namespace host

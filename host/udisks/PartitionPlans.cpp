// The functions that act on a partition or on a free region, and keep the size of existing partitions.
#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"
#include "host/udisks/ExtendedPartition.h"
#include "host/udisks/PartitionTypes.h"
#include "host/udisks/PlanParts.h"

#include <algorithm>

namespace host {

namespace {

Steps createPartition(const Machine& machine, const QVariantMap& params)
{
    const Disk& disk = targetDisk(machine, params);
    const Span span = newSpan(disk, *namedRegion(machine, params), bytesOf(params, "capacity"));
    return {createIn(span), formatTarget(textOf(params, "fileSystem"), textOf(params, "label"), false)};
}

Steps formatPartition(const Machine&, const QVariantMap& params)
{
    return {formatTarget(textOf(params, "fileSystem"), textOf(params, "label"),
                         !params.value(QStringLiteral("quickFormat")).toBool())};
}

Steps changeLabel(const Machine&, const QVariantMap& params)
{
    return {onPartition("Filesystem", "SetLabel", {textOf(params, "newLabel"), QVariantMap()})};
}

Steps wipePartition(const Machine&, const QVariantMap& params)
{
    const QVariantMap options{{QStringLiteral("erase"), QStringLiteral("zero")}};
    return Steps(static_cast<std::size_t>(numberOf(params, "eraseCount")),
                 onPartition("Block", "Format", {QStringLiteral("empty"), options}));
}

bool isLastLogical(const Disk& disk, const Partition& partition)
{
    const auto logicals =
        std::count_if(disk.partitions.begin(), disk.partitions.end(),
                      [](const Partition& entry) { return !entry.unallocated && !entry.isPrimary; });
    return !disk.isGPT && !partition.isPrimary && logicals == 1;
}

Steps deletePartition(const Machine& machine, const QVariantMap& params)
{
    const Partition& partition = target(machine, params);
    OrderStep remove = onPartition("Partition", "Delete", {QVariantMap()});
    remove.deletesTarget = true;
    Steps steps{remove};
    // An empty extended partition would keep its space from primary partitions.
    if (isLastLogical(*machine.disk(partition.diskIndex), partition)) {
        OrderStep container;
        container.call = deleteEmptyContainer;
        steps.push_back(container);
    }
    return steps;
}

// The service removes the flag of the other partitions.
Steps setActive(const Machine&, const QVariantMap&)
{
    OrderStep step;
    step.call = [](const OrderState& state) {
        return DiskServiceCall{
            state.partition->path,
            QStringLiteral("Partition"),
            QStringLiteral("SetFlags"),
            {uint64(static_cast<qint64>(state.partition->partition->flags | kMbrActive)), QVariantMap()}};
    };
    return {step};
}

StepCall hideOnGpt(const OrderState& state)
{
    const quint64 flags = state.partition->partition->flags | kGptHidden;
    return DiskServiceCall{state.partition->path,
                           QStringLiteral("Partition"),
                           QStringLiteral("SetFlags"),
                           {QVariant::fromValue(flags), QVariantMap()}};
}

StepCall hideOnMbr(const OrderState& state)
{
    const QString hidden = hiddenType(state.partition->partition->type);
    if (hidden.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "An MBR disk has no hidden type for this file system."));
    return DiskServiceCall{state.partition->path,
                           QStringLiteral("Partition"),
                           QStringLiteral("SetType"),
                           {hidden, QVariantMap()}};
}

Steps setHidden(const Machine& machine, const QVariantMap& params)
{
    OrderStep step;
    step.call = target(machine, params).isGPT ? hideOnGpt : hideOnMbr;
    return {step};
}

OrderStep check()
{
    return onPartition("Filesystem", "Check", {QVariantMap()});
}

Steps checkFileSystem(const Machine&, const QVariantMap& params)
{
    OrderStep result = check();
    result.failure = QT_TRANSLATE_NOOP("Sandbox", "The file system has errors.");
    if (!params.value(QStringLiteral("repair")).toBool())
        return {result};
    return {repairTarget(), result};
}

// The page is in the window, and the order changes nothing.
Steps show(const Machine&, const QVariantMap&)
{
    return {};
}

} // namespace

const Planners& partitionPlanners()
{
    static const Planners table = {
        {Function::CreatePartition, createPartition},  {Function::FormatPartition, formatPartition},
        {Function::ChangePartitionLabel, changeLabel}, {Function::WipePartition, wipePartition},
        {Function::DeletePartition, deletePartition},  {Function::SetPartitionActive, setActive},
        {Function::SetPartitionHidden, setHidden},     {Function::CheckFileSystem, checkFileSystem},
        {Function::ShowBitLockerStatus, show},         {Function::OpenPartitionLayoutEditor, show},
    };
    return table;
}

} // namespace host

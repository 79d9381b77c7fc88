#include "host/udisks/ClonePlan.h"

#include "host/machine/CloneLayout.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/OrderParts.h"
#include "host/udisks/CloneRules.h"
#include "host/udisks/PlanParts.h"

#include <utility>

namespace host {

namespace {

QVariantMap record(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toMap();
}

OrderTarget targetOf(const Partition& partition)
{
    return {partition.startOffset(), partition.size, partition.partGUID};
}

std::vector<OrderTarget> shownOn(const Disk& disk)
{
    std::vector<OrderTarget> shown;
    for (const Partition& part : partsOfDisk(disk))
        shown.push_back(targetOf(part));
    return shown;
}

// The copy replaces the new file system, but the partition keeps the type that other systems expect for it.
OrderStep formatAs(const QString& type)
{
    if (type.isEmpty())
        return onPartition("Block", "Format", {QStringLiteral("empty"), QVariantMap()});
    const QVariantMap options{{QStringLiteral("update-partition-type"), true}};
    return onPartition("Block", "Format", {type, options});
}

ClonePlan partitionPlan(const Machine& machine, const std::vector<DiskSource>& sources,
                        const QVariantMap& params)
{
    const Partition& source = *entryOf(machine, record(params, "source"));
    const Partition& destination = *entryOf(machine, record(params, "destination"));
    PartitionCopy copy;
    copy.source = sources.at(static_cast<std::size_t>(source.diskIndex));
    copy.from = targetOf(source);
    copy.destination = sources.at(static_cast<std::size_t>(destination.diskIndex));
    copy.to = targetOf(destination);
    copy.isNew = destination.unallocated;
    copy.type = serviceType(source);
    ClonePlan plan;
    plan.preparation.source = copy.destination;
    if (copy.isNew) {
        Span span = newSpan(*machine.disk(destination.diskIndex), destination, source.size);
        span.end = span.begin + alignedUp(source.size);
        plan.preparation.shown = shownOn(*machine.disk(destination.diskIndex));
        plan.preparation.steps.push_back(createIn(span));
        copy.to = {span.begin, source.size, QString()};
    } else {
        plan.preparation.target = copy.to;
    }
    plan.preparation.steps.push_back(formatAs(copy.type));
    plan.copies.push_back(copy);
    return plan;
}

OrderStep createLike(const PartitionEntry& entry, Span span, bool gpt)
{
    QVariantMap options;
    if (!gpt)
        options.insert(QStringLiteral("partition-type"),
                       entry.isContained ? QStringLiteral("logical") : QStringLiteral("primary"));
    return onDisk("PartitionTable", "CreatePartition",
                  {uint64(span.begin), uint64(span.end - span.begin), entry.type, entry.name, options});
}

OrderStep createExtended(Span span)
{
    const QVariantMap options{{QStringLiteral("partition-type"), QStringLiteral("extended")}};
    return onDisk(
        "PartitionTable", "CreatePartition",
        {uint64(span.begin), uint64(span.end - span.begin), QStringLiteral("0x05"), QString(), options});
}

void addPartition(Steps& steps, const PartitionEntry& entry, Span span, bool gpt)
{
    OrderStep create = createLike(entry, span, gpt);
    create.createsTarget = true;
    steps.push_back(create);
    if (entry.flags != 0)
        steps.push_back(
            onPartition("Partition", "SetFlags", {QVariant::fromValue(entry.flags), QVariantMap()}));
}

std::variant<ClonePlan, Text> diskPlan(const Machine& machine, const DiskSnapshot& snapshot,
                                       const std::vector<DiskSource>& sources, const QVariantMap& params)
{
    const Disk& source = *machine.disk(diskIndexOf(record(params, "source")));
    const int destination = diskIndexOf(record(params, "destination"));
    PartitionCopy copy;
    copy.source = sources.at(static_cast<std::size_t>(source.diskIndex));
    copy.destination = sources.at(static_cast<std::size_t>(destination));
    copy.isNew = true;
    ClonePlan plan;
    plan.preparation.source = copy.destination;
    plan.preparation.shown = shownOn(*machine.disk(destination));
    Steps& steps = plan.preparation.steps;
    steps.push_back(writeTable(source.isGPT ? QStringLiteral("gpt") : QStringLiteral("dos")));
    const BlockDevice* device = copy.source.find(snapshot);
    const std::vector<Partition> parts = partsOfDisk(source);
    const CloneLayout layout = cloneLayout(parts);
    bool needsExtended = layout.extended.has_value();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const BlockDevice* entry =
            device == nullptr ? nullptr : snapshot.partitionAt(device->path, parts[i].startOffset());
        if (entry == nullptr || entry->partition->size != parts[i].size)
            return Text(
                QT_TRANSLATE_NOOP("Sandbox", "The partition has changed since the order was accepted."));
        if (!parts[i].isPrimary && std::exchange(needsExtended, false))
            steps.push_back(createExtended(*layout.extended));
        const Span span{layout.begins[i], layout.begins[i] + alignedUp(parts[i].size)};
        addPartition(steps, *entry->partition, span, source.isGPT);
        copy.from = targetOf(parts[i]);
        copy.to = {span.begin, parts[i].size, QString()};
        copy.type = serviceType(parts[i]);
        plan.copies.push_back(copy);
    }
    return plan;
}

} // namespace

bool isClone(int function)
{
    return function == static_cast<int>(Function::CloneDisk) ||
           function == static_cast<int>(Function::ClonePartition);
}

std::variant<ClonePlan, Text> clonePlan(const Machine& machine, const DiskSnapshot& snapshot,
                                        const std::vector<DiskSource>& sources, int function,
                                        const QVariantMap& params)
{
    if (function == static_cast<int>(Function::CloneDisk))
        return diskPlan(machine, snapshot, sources, params);
    return partitionPlan(machine, sources, params);
}

OrderPlan growthPlan(const PartitionCopy& copy, const OrderTarget& found)
{
    OrderPlan plan;
    plan.source = copy.destination;
    plan.target = found;
    const bool isNtfs = copy.type == QLatin1String("ntfs");
    if (found.size <= copy.from.size || (!isNtfs && !copy.type.startsWith(QLatin1String("ext"))))
        return plan;
    plan.steps.push_back(
        onPartition("Filesystem", "Resize", {QVariant::fromValue(quint64(0)), QVariantMap()}));
    // ntfsresize marks the volume for a check.
    if (isNtfs)
        plan.steps.push_back(repairTarget());
    return plan;
}

} // namespace host

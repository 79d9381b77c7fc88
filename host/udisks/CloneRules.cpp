#include "host/udisks/CloneRules.h"

#include "host/machine/CloneLayout.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/OrderParts.h"
#include "host/udisks/Inventory.h"
#include "host/udisks/VolumeIdentity.h"

#include <algorithm>

namespace host {

namespace {

const QString kSwap = QStringLiteral("swap");

Text tooSmall()
{
    return QT_TRANSLATE_NOOP("Sandbox",
                             "All blocks are copied, so the destination must be as large as the source.");
}

Rejection identityRejection(const Partition& partition)
{
    const bool isRaw = partition.fsString == QLatin1String("RAW");
    if (isRaw || (!serviceType(partition).isEmpty() && canRenewIdentity(serviceType(partition))))
        return kAccepted;
    return Text(QT_TRANSLATE_NOOP("Sandbox",
                                  "A copy of a %1 volume would have the same identifier as the original, "
                                  "because no tool changes it."),
                {partition.fsString});
}

// The service rounds the size of a new partition up to mebibytes.
qint64 roomOf(const Machine& machine, const Partition& destination)
{
    if (!destination.unallocated)
        return destination.size;
    const Disk& disk = *machine.disk(destination.diskIndex);
    const Span span = newSpan(disk, destination, disk.size);
    return alignedDown(span.end) - span.begin;
}

QVariantMap record(const QVariantMap& params, const char* key)
{
    return params.value(QLatin1String(key)).toMap();
}

} // namespace

QString serviceType(const Partition& partition)
{
    return partition.fsString == QLatin1String("SWAP") ? kSwap : serviceFileSystem(partition.fsString);
}

CloneLayout cloneLayout(const std::vector<Partition>& parts)
{
    CloneLayout layout;
    layout.end = usableBegin();
    for (const Partition& part : parts) {
        // The service does not use the first mebibyte of an extended partition.
        if (!part.isPrimary && !layout.extended) {
            layout.extended = Span{layout.end, layout.end};
            layout.end += kMebibyte;
        }
        layout.begins.push_back(layout.end);
        // Each logical drive follows a mebibyte with its own table.
        layout.end += alignedUp(part.size) + (part.isPrimary ? 0 : kMebibyte);
        if (!part.isPrimary)
            layout.extended->end = layout.end;
    }
    return layout;
}

Rejection realCloneDiskRejection(const Machine& machine, const QVariantMap& params)
{
    const Disk& source = *machine.disk(diskIndexOf(record(params, "source")));
    Disk destination = *machine.disk(diskIndexOf(record(params, "destination")));
    const std::vector<Partition> parts = partsOfDisk(source);
    for (const Partition& part : parts) {
        if (const Rejection rejection = identityRejection(part))
            return rejection;
    }
    writeTable(destination, source.isGPT);
    const qint64 usable = usableEnd(destination);
    const qint64 end = source.isGPT ? usable : std::min(usable, kMbrLimit);
    return cloneLayout(parts).end > alignedDown(end) ? Rejection(tooSmall()) : kAccepted;
}

Rejection realClonePartitionRejection(const Capabilities& capabilities, const Machine& machine,
                                      const QVariantMap& params)
{
    const Partition& source = *entryOf(machine, record(params, "source"));
    const Partition& destination = *entryOf(machine, record(params, "destination"));
    if (const Rejection rejection = identityRejection(source))
        return rejection;
    if (roomOf(machine, destination) < source.size)
        return tooSmall();
    const QString type = serviceType(source);
    return type.isEmpty() || type == kSwap ? kAccepted : capabilities.formatRejection(type);
}

} // namespace host

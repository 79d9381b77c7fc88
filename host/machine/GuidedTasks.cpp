#include "host/machine/GuidedTasks.h"

#include <algorithm>

namespace host {

namespace {

constexpr int kDestinationStep = 2;

Text diskName(int diskIndex)
{
    return {QT_TRANSLATE_NOOP("Sandbox", "disk %1"), {QString::number(diskIndex)}};
}

Rejection sourceRejection(const Machine& machine, const QVariantMap& source)
{
    const Disk* disk = machine.disk(diskIndexOf(source));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source does not exist."));
    if (disk->isOffline || disk->isBad)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source disk cannot be read."));
    if (isDiskRecord(source))
        return rejectIf(disk->isUnInitialize, QT_TRANSLATE_NOOP("Sandbox", "The source disk is empty."));
    const Partition* entry = entryOf(machine, source);
    if (entry == nullptr || entry->unallocated)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source is not a partition."));
    return kAccepted;
}

qint64 dataSize(const Machine& machine, const QVariantMap& source)
{
    const Partition* entry = entryOf(machine, source);
    return entry != nullptr ? entry->usedSize : machine.disk(diskIndexOf(source))->usedSize;
}

bool isSame(const Machine& machine, const QVariantMap& source, const QVariantMap& destination)
{
    if (diskIndexOf(source) != diskIndexOf(destination))
        return false;
    return isDiskRecord(destination) || entryOf(machine, source) == entryOf(machine, destination);
}

Rejection destinationRejection(const Machine& machine, const QVariantMap& source,
                               const QVariantMap& destination)
{
    const Disk* disk = machine.disk(diskIndexOf(destination));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination does not exist."));
    if (isSame(machine, source, destination))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The source cannot be cloned onto itself."));
    if (!disk->isWritable())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination cannot be written to."));
    const Partition* entry = entryOf(machine, destination);
    if (entry == nullptr && !isDiskRecord(destination))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination has no place for a partition."));
    if (entry != nullptr ? entry->isBoot || entry->isSystem : disk->holdsRunningSystem())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The destination holds the running system."));
    const qint64 room = entry != nullptr ? entry->size : disk->size;
    return rejectIf(room < dataSize(machine, source),
                    QT_TRANSLATE_NOOP("Sandbox", "The destination is too small."));
}

// The keys that identify the entry.
QVariantMap shortRecord(const QVariantMap& record)
{
    const QString keys[] = {QStringLiteral("diskIndex"), QStringLiteral("isDiskItem"),
                            QStringLiteral("startSector"), QStringLiteral("driveLetter")};
    QVariantMap kept;
    for (const QString& key : keys) {
        if (record.contains(key))
            kept.insert(key, record.value(key));
    }
    return kept;
}

bool isUsb(const Disk* disk)
{
    return disk != nullptr && (disk->isUSB || disk->isRemoveUsb) && disk->isWritable();
}

} // namespace

std::optional<Function> cloneFunction(int cloneType)
{
    switch (static_cast<CloneType>(cloneType)) {
    case CloneType::SystemPartition:
    case CloneType::SystemDisk:
        return Function::CloneSystem;
    case CloneType::Disk:
        return Function::CloneDisk;
    case CloneType::Partition:
        return Function::ClonePartition;
    }
    return std::nullopt;
}

int diskIndexOf(const QVariantMap& record)
{
    return record.value(QStringLiteral("diskIndex"), -1).toInt();
}

bool isDiskRecord(const QVariantMap& record)
{
    return record.value(QStringLiteral("isDiskItem")).toBool();
}

const Partition* entryOf(const Machine& machine, const QVariantMap& record)
{
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr || isDiskRecord(record))
        return nullptr;
    const qint64 start = record.value(QStringLiteral("startSector"), -1).toLongLong();
    for (const Partition& entry : disk->partitions) {
        if (entry.startSector == start)
            return &entry;
    }
    return nullptr;
}

Rejection cloneRejection(const Machine& machine, const QVariantMap& source, const QVariantMap& destination,
                         int step)
{
    const Rejection rejection = sourceRejection(machine, source);
    if (rejection || step != kDestinationStep)
        return rejection;
    return destinationRejection(machine, source, destination);
}

const Disk* bootMediaDisk(const Machine& machine, const QVariantMap& task)
{
    const Disk* disk = nullptr;
    const int diskIndex = diskIndexOf(task);
    if (task.value(QStringLiteral("createToFile")).toBool())
        return nullptr;
    if (task.contains(QStringLiteral("usbDriveLetter"))) {
        const Partition* partition =
            machine.partition(task.value(QStringLiteral("usbDriveLetter")).toString());
        disk = partition == nullptr ? nullptr : machine.disk(partition->diskIndex);
    } else if (diskIndex >= 0) {
        disk = machine.disk(diskIndex);
    } else {
        const auto found = std::find_if(machine.disks.begin(), machine.disks.end(),
                                        [](const Disk& entry) { return isUsb(&entry); });
        disk = found == machine.disks.end() ? nullptr : &*found;
    }
    return isUsb(disk) ? disk : nullptr;
}

bool bootMediaTargetExists(const Machine& machine, const QVariantMap& task)
{
    return task.value(QStringLiteral("createToFile")).toBool() || bootMediaDisk(machine, task) != nullptr;
}

Text describeRecord(const QVariantMap& record)
{
    const int diskIndex = diskIndexOf(record);
    if (isDiskRecord(record))
        return diskName(diskIndex);
    if (record.value(QStringLiteral("unallocated")).toBool())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "free space on disk %1"), {QString::number(diskIndex)});
    const QString letter = record.value(QStringLiteral("driveLetter")).toString();
    if (!letter.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "drive %1"), {letter});
    return diskIndex >= 0 ? diskName(diskIndex) : Text(QT_TRANSLATE_NOOP("Sandbox", "nothing"));
}

std::optional<GuidedWork> cloneWork(int cloneType, const QVariantMap& source, const QVariantMap& destination)
{
    const std::optional<Function> function = cloneFunction(cloneType);
    if (!function || diskIndexOf(source) < 0 || diskIndexOf(destination) < 0)
        return std::nullopt;
    return GuidedWork{*function,
                      {{QStringLiteral("source"), shortRecord(source)},
                       {QStringLiteral("destination"), shortRecord(destination)}}};
}

GuidedWork bootMediaWork(const QVariantMap& task)
{
    if (task.value(QStringLiteral("isInstallPreOs")).toBool())
        return {Function::InstallPreOs, {}};
    if (task.value(QStringLiteral("isDisablePreOs")).toBool())
        return {Function::DisablePreOs, {}};
    return {Function::CreateBootMedia, task};
}

std::optional<GuidedWork> recoveryWork(const QVariantMap& task)
{
    if (!task.contains(QStringLiteral("diskIndex")))
        return std::nullopt;
    return GuidedWork{Function::RecoverLostPartition,
                      {{QStringLiteral("diskIndex"), task.value(QStringLiteral("diskIndex"))}}};
}

} // namespace host

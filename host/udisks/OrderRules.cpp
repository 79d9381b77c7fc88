#include "host/udisks/OrderRules.h"

#include "host/machine/FileSystems.h"
#include "host/machine/OrderParts.h"
#include "host/machine/Rules.h"
#include "host/udisks/CloneRules.h"
#include "host/udisks/Inventory.h"

#include <algorithm>

namespace host {

namespace {

// The service creates FAT32 from this size on, and FAT12 or FAT16 below.
constexpr qint64 kSmallestFat32 = 512 * kMebibyte;
constexpr int kLargestExtLabel = 16; // bytes

struct RealQuestion
{
    const Capabilities& capabilities;
    const Machine& machine;
    const QVariantMap& params;
};
using RealRule = Rejection (*)(const RealQuestion&);

bool isFat(const QString& fileSystem)
{
    return serviceFileSystem(fileSystem) == QLatin1String("vfat");
}

Rejection fatRejection(const QString& fileSystem, qint64 size)
{
    const bool wantsFat32 = fileSystem.compare(QLatin1String("FAT32"), Qt::CaseInsensitive) == 0;
    if (!isFat(fileSystem) || wantsFat32 == (size >= kSmallestFat32))
        return kAccepted;
    return wantsFat32
               ? Text(QT_TRANSLATE_NOOP("Sandbox",
                                        "The disk service creates FAT32 only on drives of 512 MiB or more."))
               : Text(QT_TRANSLATE_NOOP(
                     "Sandbox", "The disk service creates FAT32 instead on drives of 512 MiB or more."));
}

// Labels that the tools cut, or reject only after they have erased the drive.
Rejection labelBytesRejection(const QString& fileSystem, const QString& label)
{
    const bool isExt = serviceFileSystem(fileSystem).startsWith(QLatin1String("ext"));
    if (isExt && label.toUtf8().size() > kLargestExtLabel)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The label is too long."));
    const bool isAscii = std::all_of(label.begin(), label.end(), [](QChar c) { return c.unicode() < 128; });
    return rejectIf(isFat(fileSystem) && !isAscii,
                    QT_TRANSLATE_NOOP("Sandbox", "The label contains an invalid character."));
}

Rejection newFileSystem(const RealQuestion& q, const char* fileSystemKey, const char* labelKey, qint64 size)
{
    const QString fileSystem = textOf(q.params, fileSystemKey);
    if (numberOf(q.params, "clusterSize") > 0)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk service chooses the cluster size itself."));
    if (const Rejection rejection = q.capabilities.formatRejection(serviceFileSystem(fileSystem)))
        return rejection;
    if (const Rejection rejection = fatRejection(fileSystem, size))
        return rejection;
    return labelBytesRejection(fileSystem, textOf(q.params, labelKey));
}

Rejection newSize(const RealQuestion& q)
{
    const QString fileSystem = target(q.machine, q.params).fsString;
    // The library of the service reads no FAT32, and does not grow FAT16.
    if (isFat(fileSystem))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot resize FAT file systems safely."));
    return q.capabilities.resizeRejection(serviceFileSystem(fileSystem));
}

// The service puts such a drive into any free region of the extended partition.
Rejection betweenLogicals(const Partition* before, const Partition* after)
{
    const bool isBetween = before != nullptr && after != nullptr && !before->isPrimary && !after->isPrimary;
    return rejectIf(
        isBetween,
        QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot create a logical drive between two others."));
}

Rejection create(const RealQuestion& q)
{
    const Disk& disk = targetDisk(q.machine, q.params);
    const std::size_t index = indexOf(disk, *namedRegion(q.machine, q.params));
    if (const Rejection rejection =
            betweenLogicals(partitionBefore(disk, index), partitionAfter(disk, index)))
        return rejection;
    return newFileSystem(q, "fileSystem", "label", alignedDown(bytesOf(q.params, "capacity")));
}

Rejection format(const RealQuestion& q)
{
    return newFileSystem(q, "fileSystem", "label", target(q.machine, q.params).size);
}

Rejection autoCreate(const RealQuestion& q)
{
    return q.capabilities.formatRejection(QStringLiteral("ntfs"));
}

Rejection changeLabel(const RealQuestion& q)
{
    return labelBytesRejection(target(q.machine, q.params).fsString, textOf(q.params, "newLabel"));
}

Rejection cutOff(const RealQuestion& q, const char* sizeKey, const char* fileSystemKey, const char* labelKey)
{
    if (const Rejection rejection = newSize(q))
        return rejection;
    const Partition& source = target(q.machine, q.params);
    const Disk& disk = *q.machine.disk(source.diskIndex);
    if (const Rejection rejection = betweenLogicals(&source, partitionAfter(disk, indexOf(disk, source))))
        return rejection;
    return newFileSystem(q, fileSystemKey, labelKey, alignedDown(bytesOf(q.params, sizeKey)));
}

Rejection split(const RealQuestion& q)
{
    return cutOff(q, "newPartitionCapacity", "newPartitionFileSystem", "newPartitionLabel");
}

// Between two drives, the start of one of them would move.
Rejection allocate(const RealQuestion& q)
{
    if (textOf(q.params, "targetDriveLetter") == QLatin1String("CreateNew"))
        return cutOff(q, "partitionCapacity", "fileSystem", "label");
    return Text(QT_TRANSLATE_NOOP(
        "Sandbox", "The start of a drive would move, which no safe tool does on a real disk."));
}

Rejection smartAdjust(const RealQuestion& q)
{
    const Partition& partition = target(q.machine, q.params);
    const Disk& disk = *q.machine.disk(partition.diskIndex);
    const Transfer transfer = *smartTransfer(q.machine, partition);
    const Partition& giver = disk.partitions[transfer.from];
    if (!giver.unallocated || giver.startOffset() != partition.endOffset())
        return Text(QT_TRANSLATE_NOOP(
            "Sandbox", "Only the free space directly after a drive can be added to it on a real disk."));
    return newSize(q);
}

Rejection hide(const RealQuestion& q)
{
    const Partition& partition = target(q.machine, q.params);
    const bool isExt = serviceFileSystem(partition.fsString).startsWith(QLatin1String("ext"));
    return rejectIf(!partition.isGPT && isExt,
                    QT_TRANSLATE_NOOP("Sandbox", "An MBR disk has no hidden type for this file system."));
}

bool hasPartitions(const Disk& disk)
{
    return std::any_of(disk.partitions.begin(), disk.partitions.end(),
                       [](const Partition& entry) { return !entry.unallocated; });
}

Rejection toGpt(const RealQuestion& q)
{
    return rejectIf(hasPartitions(targetDisk(q.machine, q.params)),
                    QT_TRANSLATE_NOOP(
                        "Sandbox", "The disk has partitions, and no safe tool converts an MBR disk to a GPT "
                                   "disk with its partitions."));
}

Rejection toMbr(const RealQuestion& q)
{
    return rejectIf(hasPartitions(targetDisk(q.machine, q.params)),
                    QT_TRANSLATE_NOOP(
                        "Sandbox", "The disk has partitions, and no safe tool converts a GPT disk to an MBR "
                                   "disk with its partitions."));
}

Rejection check(const RealQuestion& q)
{
    return q.capabilities.checkRejection(serviceFileSystem(target(q.machine, q.params).fsString));
}

Rejection cloneDisk(const RealQuestion& q)
{
    return realCloneDiskRejection(q.machine, q.params);
}

Rejection clonePartition(const RealQuestion& q)
{
    return realClonePartitionRejection(q.capabilities, q.machine, q.params);
}

const std::map<Function, RealRule>& realRules()
{
    static const std::map<Function, RealRule> rules = {
        {Function::CreatePartition, create},
        {Function::FormatPartition, format},
        {Function::AutoCreatePartitions, autoCreate},
        {Function::ChangePartitionLabel, changeLabel},
        {Function::ResizePartition, newSize},
        {Function::SplitPartition, split},
        {Function::AllocateSpace, allocate},
        {Function::SmartSpaceAdjustment, smartAdjust},
        {Function::SetPartitionHidden, hide},
        {Function::ConvertDiskToGpt, toGpt},
        {Function::ConvertDiskToMbr, toMbr},
        {Function::CheckFileSystem, check},
        {Function::CloneDisk, cloneDisk},
        {Function::ClonePartition, clonePartition},
    };
    return rules;
}

} // namespace

bool hasOwnExecution(int function)
{
    static const std::vector<Function> functions = {Function::ChangePartitionDriveLetter, Function::CloneDisk,
                                                    Function::ClonePartition, Function::ScanBadSectors};
    return std::find(functions.begin(), functions.end(), static_cast<Function>(function)) != functions.end();
}

Rejection realOrderRejection(const Capabilities& capabilities, const Machine& machine, int function,
                             const QVariantMap& params)
{
    const auto rule = realRules().find(static_cast<Function>(function));
    return rule == realRules().end() ? kAccepted : rule->second({capabilities, machine, params});
}

} // namespace host

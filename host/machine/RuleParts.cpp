#include "host/machine/RuleParts.h"

#include <algorithm>

namespace host {

Rejection firstOf(const Question& q, std::initializer_list<Rule> conditions)
{
    for (const Rule condition : conditions) {
        if (const Rejection rejection = condition(q))
            return rejection;
    }
    return kAccepted;
}

Rejection diskKnown(const Question& q)
{
    if (q.disk() != nullptr)
        return kAccepted;
    return Text(QT_TRANSLATE_NOOP("Sandbox", "Disk %1 does not exist."),
                {QString::number(q.number("diskIndex"))});
}

Rejection letterKnown(const Question& q)
{
    if (q.partition() != nullptr)
        return kAccepted;
    return Text(QT_TRANSLATE_NOOP("Sandbox", "No drive has the letter %1."), {q.text("driveLetter")});
}

Rejection writableDisk(const Question& q)
{
    if (const Rejection rejection = diskKnown(q))
        return rejection;
    return rejectIf(!q.disk()->isWritable(), QT_TRANSLATE_NOOP("Sandbox", "The disk cannot be written to."));
}

Rejection diskWithTable(const Question& q)
{
    return rejectIf(q.disk()->isUnInitialize,
                    QT_TRANSLATE_NOOP("Sandbox", "The disk has no partition table."));
}

Rejection basicDiskOfOrder(const Question& q)
{
    return basicDisk(*q.disk());
}

Rejection positiveEraseCount(const Question& q)
{
    return rejectIf(q.number("eraseCount") <= 0,
                    QT_TRANSLATE_NOOP("Sandbox", "The erase count must be positive."));
}

Rejection erasableDisk(const Question& q)
{
    if (const Rejection rejection = writableDisk(q))
        return rejection;
    return rejectIf(q.disk()->holdsRunningSystem(),
                    QT_TRANSLATE_NOOP("Sandbox", "The disk holds the running system."));
}

Rejection writablePartition(const Question& q)
{
    if (const Rejection rejection = letterKnown(q))
        return rejection;
    const Partition& partition = *q.partition();
    if (partition.readonly || partition.isBad || !q.diskOf(partition)->isWritable())
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drive cannot be written to."));
    return kAccepted;
}

Rejection erasablePartition(const Question& q)
{
    if (const Rejection rejection = writablePartition(q))
        return rejection;
    const Partition& partition = *q.partition();
    return rejectIf(partition.isBoot || partition.isSystem,
                    QT_TRANSLATE_NOOP("Sandbox", "The drive holds the running system."));
}

Rejection readableVolume(const Question& q)
{
    if (const Rejection rejection = writablePartition(q))
        return rejection;
    if (q.partition()->isLocked())
        return Rejection(QT_TRANSLATE_NOOP("Sandbox", "The drive is locked by BitLocker."));
    return rejectIf(knownFileSystem(q.partition()->fsString).isEmpty(),
                    QT_TRANSLATE_NOOP("Sandbox", "The drive has no readable file system."));
}

Rejection newVolume(const Question& q, qint64 size, int cluster, const char* fileSystemKey,
                    const char* labelKey)
{
    const FileSystem* kind = fileSystem(q.text(fileSystemKey));
    if (kind == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The file system \"%1\" cannot be created."),
                    {q.text(fileSystemKey)});
    return newVolumeRejection(*kind, size, cluster, q.text(labelKey));
}

Rejection basicDisk(const Disk& disk)
{
    return rejectIf(disk.isDynamic, QT_TRANSLATE_NOOP("Sandbox", "The disk is dynamic."));
}

Rejection lettersLeft(const Machine& machine, int count)
{
    int left = 0;
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        if (machine.partition(QString(QLatin1Char(letter))) == nullptr)
            ++left;
    }
    return rejectIf(left < count, QT_TRANSLATE_NOOP("Sandbox", "All drive letters are in use."));
}

bool areNeighbours(const Disk& disk, const Partition& one, const Partition& other)
{
    const Partition& first = one.startSector < other.startSector ? one : other;
    const Partition& second = &first == &one ? other : one;
    return std::none_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
        return !entry.unallocated && entry.startSector > first.startSector &&
               entry.startSector < second.startSector;
    });
}

QString knownFileSystem(const QString& name)
{
    const FileSystem* kind = fileSystem(name);
    return kind == nullptr ? QString() : QString::fromLatin1(kind->name);
}

qint64 freeSpaceAfter(const Disk& disk, const Partition& partition)
{
    for (const Partition& entry : disk.partitions) {
        if (entry.unallocated && entry.startOffset() == partition.endOffset())
            return entry.size;
    }
    return 0;
}

const Partition* namedRegion(const Machine& machine, const QVariantMap& params)
{
    const auto regions = machine.freeRegions(params.value(QStringLiteral("diskIndex")).toInt());
    const int place = params.value(QStringLiteral("unallocatedIndex")).toInt();
    return place >= 0 && place < static_cast<int>(regions.size()) ? regions[static_cast<std::size_t>(place)]
                                                                  : nullptr;
}

} // namespace host

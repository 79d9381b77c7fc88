#include "host/machine/RuleParts.h"

#include <algorithm>

namespace host {

Answer no(const char* reason)
{
    return Text(reason);
}

Answer yes()
{
    return Answer();
}

Answer diskKnown(const Question& q)
{
    return q.disk() != nullptr ? yes()
                               : Text(QT_TRANSLATE_NOOP("Sandbox", "there is no disk %1"),
                                      {QString::number(q.number("diskIndex"))});
}

Answer letterKnown(const Question& q)
{
    return q.partition() != nullptr
               ? yes()
               : Text(QT_TRANSLATE_NOOP("Sandbox", "no drive has the letter %1"), {q.text("driveLetter")});
}

Answer writableDisk(const Question& q)
{
    const Answer answer = diskKnown(q);
    return !answer.isEmpty() || q.disk()->isWritable()
               ? answer
               : no(QT_TRANSLATE_NOOP("Sandbox", "the disk cannot be written to"));
}

Answer erasableDisk(const Question& q)
{
    const Answer answer = writableDisk(q);
    if (!answer.isEmpty())
        return answer;
    return q.disk()->holdsRunningSystem()
               ? no(QT_TRANSLATE_NOOP("Sandbox", "the disk holds the running system"))
               : yes();
}

Answer writablePartition(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    if (partition.readonly || partition.isBad || !q.diskOf(partition)->isWritable())
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drive cannot be written to"));
    return yes();
}

Answer erasablePartition(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    return partition.isBoot || partition.isSystem
               ? no(QT_TRANSLATE_NOOP("Sandbox", "the drive holds the running system"))
               : yes();
}

Answer readableVolume(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    if (q.partition()->isLocked())
        return no(QT_TRANSLATE_NOOP("Sandbox", "the drive is locked by BitLocker"));
    return knownFileSystem(q.partition()->fsString).isEmpty()
               ? no(QT_TRANSLATE_NOOP("Sandbox", "the drive has no file system that can be read"))
               : yes();
}

Answer newVolume(const Question& q, qint64 size, int cluster, const char* fileSystemKey, const char* labelKey)
{
    const FileSystem* kind = fileSystem(q.text(fileSystemKey));
    if (kind == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "the file system \"%1\" cannot be made"),
                    {q.text(fileSystemKey)});
    return newVolumeObjection(*kind, size, cluster, q.text(labelKey));
}

Answer basicDisk(const Disk& disk)
{
    return disk.isDynamic ? no(QT_TRANSLATE_NOOP("Sandbox", "the disk is dynamic")) : yes();
}

Answer lettersLeft(const Machine& machine, int count)
{
    int left = 0;
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        if (machine.partition(QString(QLatin1Char(letter))) == nullptr)
            ++left;
    }
    return left < count ? no(QT_TRANSLATE_NOOP("Sandbox", "all drive letters are taken")) : yes();
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

qint64 freeBehind(const Disk& disk, const Partition& partition)
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

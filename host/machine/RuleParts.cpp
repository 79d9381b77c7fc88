#include "host/machine/RuleParts.h"

#include <algorithm>

namespace host {

namespace {

constexpr int kSmallestCluster = 512;
constexpr int kLargestCluster = 2 * 1024 * 1024;
constexpr int kLongLabel = 32;
constexpr int kFatLabel = 11;

} // namespace

Answer no(const char* reason)
{
    return QString::fromLatin1(reason);
}

Answer yes()
{
    return Answer();
}

Answer diskKnown(const Question& q)
{
    return q.disk() != nullptr ? yes() : QStringLiteral("there is no disk %1").arg(q.number("diskIndex"));
}

Answer letterKnown(const Question& q)
{
    return q.partition() != nullptr ? yes()
                                    : QStringLiteral("no drive has the letter %1").arg(q.text("driveLetter"));
}

Answer writableDisk(const Question& q)
{
    const Answer answer = diskKnown(q);
    return !answer.isEmpty() || q.disk()->isWritable() ? answer : no("the disk cannot be written to");
}

Answer erasableDisk(const Question& q)
{
    const Answer answer = writableDisk(q);
    if (!answer.isEmpty())
        return answer;
    return q.disk()->holdsRunningSystem() ? no("the disk holds the running system") : yes();
}

Answer writablePartition(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    if (partition.readonly || partition.isBad || !q.diskOf(partition)->isWritable())
        return no("the drive cannot be written to");
    return yes();
}

Answer erasablePartition(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    return partition.isBoot || partition.isSystem ? no("the drive holds the running system") : yes();
}

Answer readableVolume(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    if (q.partition()->isLocked())
        return no("the drive is locked by BitLocker");
    return knownFileSystem(q.partition()->fsString).isEmpty()
               ? no("the drive has no file system that can be read")
               : yes();
}

Answer fileSystemAndLabel(const Question& q, const char* fileSystemKey, const char* labelKey)
{
    const QString fileSystem = knownFileSystem(q.text(fileSystemKey));
    if (fileSystem.isEmpty())
        return QStringLiteral("the file system \"%1\" cannot be made").arg(q.text(fileSystemKey));
    return q.text(labelKey).size() > labelLimit(fileSystem) ? no("the label is too long") : yes();
}

Answer clusterFits(int bytes)
{
    const bool powerOfTwo = bytes > 0 && (bytes & (bytes - 1)) == 0;
    return powerOfTwo && bytes >= kSmallestCluster && bytes <= kLargestCluster ? yes()
                                                                               : no("no such cluster size");
}

Answer roomInTable(const Disk& disk)
{
    const auto count =
        std::count_if(disk.partitions.begin(), disk.partitions.end(),
                      [](const Partition& entry) { return !entry.unallocated && entry.isPrimary; });
    return count < (disk.isGPT ? kGptPartitions : kMbrPrimaries) ? yes() : no("the partition table is full");
}

Answer letterLeft(const Question& q)
{
    return q.machine.firstFreeLetter().isEmpty() ? no("all drive letters are taken") : yes();
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

int labelLimit(const QString& fileSystem)
{
    return fileSystem.startsWith(QLatin1String("FAT")) ? kFatLabel : kLongLabel;
}

QString knownFileSystem(const QString& name)
{
    static const QStringList names = {
        QStringLiteral("NTFS"),  QStringLiteral("FAT"),  QStringLiteral("FAT16"), QStringLiteral("FAT32"),
        QStringLiteral("exFAT"), QStringLiteral("EXT2"), QStringLiteral("EXT3"),  QStringLiteral("EXT4")};
    const auto found = std::find_if(names.begin(), names.end(), [&](const QString& known) {
        return known.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? QString() : *found;
}

qint64 freeBehind(const Disk& disk, const Partition& partition)
{
    for (const Partition& entry : disk.partitions) {
        if (entry.unallocated && entry.startSector > partition.startSector &&
            areNeighbours(disk, partition, entry))
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

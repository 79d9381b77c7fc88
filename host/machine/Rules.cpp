#include "host/machine/Rules.h"

#include "host/machine/Functions.h"

#include <algorithm>
#include <map>

namespace host {

namespace {

constexpr qint64 kMbrLimit = qint64(512) << 32;
constexpr int kMbrPrimaries = 4;
constexpr int kGptPartitions = 128;
constexpr int kSmallestCluster = 512;
constexpr int kLargestCluster = 2 * 1024 * 1024;
constexpr int kLongLabel = 32;
constexpr int kFatLabel = 11;

struct Question
{
    const Machine& machine;
    const QVariantMap& params;

    QString text(const char* key) const { return params.value(QLatin1String(key)).toString(); }
    int number(const char* key) const { return params.value(QLatin1String(key)).toInt(); }
    qint64 bytes(const char* key) const { return params.value(QLatin1String(key)).toLongLong(); }
    const Partition* partition(const char* key = "driveLetter") const { return machine.partition(text(key)); }
    const Disk* disk() const { return machine.disk(number("diskIndex")); }
    const Disk* diskOf(const Partition& entry) const { return machine.disk(entry.diskIndex); }
};

// An answer is empty for yes; the rules below give their first objection.
using Answer = QString;
using Rule = Answer (*)(const Question&);

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
    return q.partition() != nullptr ? yes() : QStringLiteral("no drive has the letter %1").arg(q.text("driveLetter"));
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
    return knownFileSystem(q.partition()->fsString).isEmpty() ? no("the drive has no file system that can be read")
                                                               : yes();
}

Answer fileSystemAndLabel(const Question& q, const char* fileSystemKey, const char* labelKey)
{
    const QString fileSystem = knownFileSystem(q.text(fileSystemKey));
    if (fileSystem.isEmpty())
        return QStringLiteral("the file system \"%1\" cannot be made").arg(q.text(fileSystemKey));
    const int limit = fileSystem.startsWith(QLatin1String("FAT")) ? kFatLabel : kLongLabel;
    return q.text(labelKey).size() > limit ? no("the label is too long") : yes();
}

Answer clusterFits(int bytes)
{
    const bool powerOfTwo = bytes > 0 && (bytes & (bytes - 1)) == 0;
    return powerOfTwo && bytes >= kSmallestCluster && bytes <= kLargestCluster ? yes()
                                                                              : no("no such cluster size");
}

Answer roomInTable(const Disk& disk)
{
    const auto count = std::count_if(disk.partitions.begin(), disk.partitions.end(),
                                     [](const Partition& entry) { return !entry.unallocated && entry.isPrimary; });
    return count < (disk.isGPT ? kGptPartitions : kMbrPrimaries) ? yes() : no("the partition table is full");
}

Answer letterLeft(const Question& q)
{
    return q.machine.firstFreeLetter().isEmpty() ? no("all drive letters are taken") : yes();
}

Answer anyDisk(const Question& q)
{
    return diskKnown(q);
}

Answer anyLetter(const Question& q)
{
    return letterKnown(q);
}

Answer smartAdjust(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition* own = q.partition();
    const auto& entries = q.diskOf(*own)->partitions;
    const bool room = std::any_of(entries.begin(), entries.end(), [&](const Partition& entry) {
        return &entry != own && !entry.gptReserved && !entry.gptEFI && entry.freeSize() > 0;
    });
    return room ? yes() : no("there is no room to take on that disk");
}

Answer initialize(const Question& q)
{
    const Answer answer = erasableDisk(q);
    if (!answer.isEmpty())
        return answer;
    const auto& entries = q.disk()->partitions;
    const bool empty =
        std::all_of(entries.begin(), entries.end(), [](const Partition& entry) { return entry.unallocated; });
    return empty ? yes() : no("the disk has partitions");
}

Answer deleteAll(const Question& q)
{
    const Answer answer = erasableDisk(q);
    return !answer.isEmpty() || !q.disk()->isUnInitialize ? answer : no("the disk has no partition table");
}

Answer wipeDisk(const Question& q)
{
    const Answer answer = erasableDisk(q);
    return !answer.isEmpty() || q.number("eraseCount") > 0 ? answer : no("the erase count must be positive");
}

Answer resize(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    const qint64 size = q.bytes("size");
    if (size <= 0 || size < partition.usedSize)
        return no("the data does not fit into that size");
    return size > partition.size + freeBehind(*q.diskOf(partition), partition)
        ? no("there is not that much free space behind the drive")
        : yes();
}

Answer format(const Question& q)
{
    const Answer answer = erasablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const int cluster = q.number("clusterSize");
    const Answer clusterAnswer = cluster == 0 ? yes() : clusterFits(cluster);
    return clusterAnswer.isEmpty() ? fileSystemAndLabel(q, "fileSystem", "label") : clusterAnswer;
}

Answer split(const Question& q)
{
    Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const qint64 size = q.bytes("newPartitionCapacity");
    if (size <= 0 || size >= q.partition()->freeSize())
        return no("the drive has not that much free space");
    answer = fileSystemAndLabel(q, "newPartitionFileSystem", "newPartitionLabel");
    if (answer.isEmpty())
        answer = roomInTable(*q.diskOf(*q.partition()));
    return answer.isEmpty() ? letterLeft(q) : answer;
}

Answer regionFits(const Question& q)
{
    const Partition* region = namedRegion(q.machine, q.params);
    if (region == nullptr)
        return no("the disk has no such free region");
    const qint64 capacity = q.bytes("capacity");
    if (capacity <= 0 || capacity > region->size)
        return no("the free region is not that large");
    const bool beyond = region->startSector * region->sectorSize + capacity > kMbrLimit;
    return !q.disk()->isGPT && beyond ? no("an MBR disk cannot use space beyond 2 TiB") : yes();
}

Answer create(const Question& q)
{
    Answer answer = writableDisk(q);
    if (answer.isEmpty() && q.disk()->isUnInitialize)
        answer = no("the disk has no partition table");
    if (answer.isEmpty())
        answer = regionFits(q);
    if (answer.isEmpty())
        answer = fileSystemAndLabel(q, "fileSystem", "label");
    if (answer.isEmpty())
        answer = roomInTable(*q.disk());
    return answer.isEmpty() ? letterLeft(q) : answer;
}

bool areNeighbours(const Disk& disk, const Partition& one, const Partition& other)
{
    const Partition& first = one.startSector < other.startSector ? one : other;
    const Partition& second = &first == &one ? other : one;
    return std::none_of(disk.partitions.begin(), disk.partitions.end(), [&](const Partition& entry) {
        return !entry.unallocated && entry.startSector > first.startSector
            && entry.startSector < second.startSector;
    });
}

Answer merge(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const Partition* other = q.partition("driveLetter2");
    if (other == nullptr || other == q.partition() || other->diskIndex != q.partition()->diskIndex)
        return no("both drives must lie on one disk");
    if (other->isBoot || other->isSystem || other->isLocked())
        return no("the second drive cannot be given up");
    return areNeighbours(*q.diskOf(*other), *q.partition(), *other) ? yes() : no("the drives are no neighbours");
}

Answer allocate(const Question& q)
{
    Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const qint64 size = q.bytes("partitionCapacity");
    if (size <= 0 || size >= q.partition()->freeSize())
        return no("the drive has not that much free space");
    if (q.text("targetDriveLetter") == QLatin1String("CreateNew")) {
        answer = fileSystemAndLabel(q, "fileSystem", "label");
        return answer.isEmpty() ? letterLeft(q) : answer;
    }
    const Partition* target = q.partition("targetDriveLetter");
    return target != nullptr && target != q.partition() && target->diskIndex == q.partition()->diskIndex
        ? yes()
        : no("the target must be another drive of the same disk");
}

Answer wipePartition(const Question& q)
{
    const Answer answer = erasablePartition(q);
    return !answer.isEmpty() || q.number("eraseCount") > 0 ? answer : no("the erase count must be positive");
}

Answer convertKind(const Question& q, bool toPrimary)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    if (partition.isGPT || partition.isPrimary == toPrimary)
        return no("the drive is of that kind already, or its disk knows no kinds");
    if (!toPrimary)
        return partition.isActive || partition.isBoot ? no("the machine starts from the drive") : yes();
    return roomInTable(*q.diskOf(partition));
}

Answer toPrimary(const Question& q)
{
    return convertKind(q, true);
}

Answer toLogical(const Question& q)
{
    return convertKind(q, false);
}

Answer clusterSize(const Question& q)
{
    const Answer answer = readableVolume(q);
    return answer.isEmpty() ? clusterFits(q.number("newClusterSize")) : answer;
}

Answer changeLetter(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    if (q.partition()->isBoot)
        return no("the running system needs its letter");
    const QString letter = q.text("newDriveLetter");
    const bool wellFormed = !letterOf(letter).isEmpty() && (letter.size() == 1 || letter.mid(1) == QLatin1String(":"));
    return wellFormed && q.machine.partition(letter) == nullptr ? yes() : no("the new letter is none, or is taken");
}

Answer changeLabel(const Question& q)
{
    const Answer answer = readableVolume(q);
    if (!answer.isEmpty())
        return answer;
    const int limit = q.partition()->fsString.startsWith(QLatin1String("FAT")) ? kFatLabel : kLongLabel;
    return q.text("newLabel").size() > limit ? no("the label is too long") : yes();
}

Answer setActive(const Question& q)
{
    const Answer answer = writablePartition(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& partition = *q.partition();
    return partition.isGPT || !partition.isPrimary || partition.isActive
        ? no("only a primary drive of an MBR disk can be made active, once")
        : yes();
}

Answer setHidden(const Question& q)
{
    const Answer answer = erasablePartition(q);
    return !answer.isEmpty() || !q.partition()->isHidden ? answer : no("the drive is hidden already");
}

Answer migrate(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    const Partition& source = *q.partition();
    for (const Disk& disk : q.machine.disks) {
        for (const Partition& entry : disk.partitions) {
            if (disk.isWritable() && entry.diskIndex != source.diskIndex && entry.freeSize() >= source.usedSize)
                return yes();
        }
    }
    return no("no other disk has room for the data");
}

Answer autoCreate(const Question& q)
{
    const Answer answer = erasableDisk(q);
    if (!answer.isEmpty())
        return answer;
    const QString table = q.text("GptOrMbr").toUpper();
    if (table != QLatin1String("GPT") && table != QLatin1String("MBR"))
        return no("the table must be GPT or MBR");
    const int count = q.number("partitionCount");
    const int limit = table == QLatin1String("GPT") ? kGptPartitions : kMbrPrimaries;
    return count >= 1 && count <= limit ? yes() : no("the table does not hold that many partitions");
}

Answer bringOnline(const Question& q)
{
    const Answer answer = diskKnown(q);
    return !answer.isEmpty() || q.disk()->isOffline ? answer : no("the disk is online");
}

Answer eject(const Question& q)
{
    const Answer answer = letterKnown(q);
    if (!answer.isEmpty())
        return answer;
    const Disk& disk = *q.diskOf(*q.partition());
    return disk.isUSB || disk.isRemoveUsb ? yes() : no("the drive is not on a USB disk");
}

const std::map<Function, Rule>& rules()
{
    static const std::map<Function, Rule> table = {
        {Function::OpenDiskLayoutEditor, anyDisk},
        {Function::SmartSpaceAdjustment, smartAdjust},
        {Function::DeleteAllPartitions, deleteAll},
        {Function::InitializeDiskToMbr, initialize},
        {Function::InitializeDiskToGpt, initialize},
        {Function::WipeDisk, wipeDisk},
        {Function::ResizePartition, resize},
        {Function::FormatPartition, format},
        {Function::DeletePartition, erasablePartition},
        {Function::SplitPartition, split},
        {Function::CreatePartition, create},
        {Function::ShowBitLockerStatus, anyLetter},
        {Function::MergePartitions, merge},
        {Function::OpenPartitionLayoutEditor, anyLetter},
        {Function::AllocateSpace, allocate},
        {Function::WipePartition, wipePartition},
        {Function::ConvertPartitionToPrimary, toPrimary},
        {Function::ConvertPartitionToLogical, toLogical},
        {Function::ChangePartitionClusterSize, clusterSize},
        {Function::ChangePartitionDriveLetter, changeLetter},
        {Function::ChangePartitionLabel, changeLabel},
        {Function::SetPartitionActive, setActive},
        {Function::SetPartitionHidden, setHidden},
        {Function::MigrateSystemDriveData, migrate},
        {Function::AutoCreatePartitions, autoCreate},
        {Function::DiskBringOnline, bringOnline},
        {Function::EjectUsb, eject},
        {Function::LowLevelFormat, erasableDisk},
    };
    return table;
}

} // namespace

QString refusal(const Machine& machine, int function, const QVariantMap& params)
{
    const auto rule = rules().find(static_cast<Function>(function));
    if (rule == rules().end())
        return QStringLiteral("there is no function %1").arg(function);
    return rule->second(Question{machine, params});
}

QString knownFileSystem(const QString& name)
{
    static const QStringList names = {QStringLiteral("NTFS"), QStringLiteral("FAT"),  QStringLiteral("FAT16"),
                                      QStringLiteral("FAT32"), QStringLiteral("exFAT"), QStringLiteral("EXT2"),
                                      QStringLiteral("EXT3"), QStringLiteral("EXT4")};
    const auto found = std::find_if(names.begin(), names.end(), [&](const QString& known) {
        return known.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? QString() : *found;
}

qint64 freeBehind(const Disk& disk, const Partition& partition)
{
    for (const Partition& entry : disk.partitions) {
        if (entry.unallocated && entry.startSector > partition.startSector
            && areNeighbours(disk, partition, entry))
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

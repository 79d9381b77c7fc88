#include "host/machine/MachineReader.h"

#include "host/machine/Fields.h"
#include "host/machine/Records.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace host {

namespace {

const QString kPartitions = QStringLiteral("partitions");

// Limits within which no sum or product of sizes overflows; far beyond any disk.
constexpr qint64 kLargestSize = qint64(1) << 50;
constexpr qint64 kLastSector = qint64(1) << 44;
constexpr int kLargestSector = 1 << 16;
// Limits of a description, far beyond any machine and still fast to read.
constexpr qint64 kLargestFile = qint64(16) * 1024 * 1024;
constexpr int kMostDisks = 1024;
// Bytes before an error in which its key is searched.
constexpr int kKeyDistance = 1 << 16;
constexpr int kMostPartitions = 4096;

// Thrown and caught in this file only.
struct InvalidMachine
{
    QString text;
};

template <class Number> Number wholeNumber(const QJsonValue& value, const QString& path)
{
    const double number = value.toDouble(std::nan(""));
    const auto whole = value.toVariant().toLongLong();
    if (!value.isDouble() || number != std::floor(number) || std::fabs(number) > 9.2e18 ||
        whole > std::numeric_limits<Number>::max() || whole < std::numeric_limits<Number>::min())
        throw InvalidMachine{QStringLiteral("%1 must be a whole number").arg(path)};
    return static_cast<Number>(whole);
}

void assign(bool& target, const QJsonValue& value, const QString& path)
{
    if (!value.isBool())
        throw InvalidMachine{QStringLiteral("%1 must be true or false").arg(path)};
    target = value.toBool();
}

void assign(QString& target, const QJsonValue& value, const QString& path)
{
    if (!value.isString())
        throw InvalidMachine{QStringLiteral("%1 must be a string").arg(path)};
    target = value.toString();
}

void assign(int& target, const QJsonValue& value, const QString& path)
{
    target = wholeNumber<int>(value, path);
}

void assign(qint64& target, const QJsonValue& value, const QString& path)
{
    target = wholeNumber<qint64>(value, path);
}

template <class Record>
void assignKey(Record& record, const std::vector<Field<Record>>& fields, const QString& key,
               const QJsonValue& value, const QString& path)
{
    for (const Field<Record>& field : fields) {
        if (key != QLatin1String(field.key))
            continue;
        std::visit([&](auto member) { assign(record.*member, value, path); }, field.member);
        return;
    }
    throw InvalidMachine{QStringLiteral("%1 is not a key of the inventory").arg(path)};
}

QJsonObject objectAt(const QJsonValue& value, const QString& path)
{
    if (!value.isObject())
        throw InvalidMachine{QStringLiteral("%1 must be an object").arg(path)};
    return value.toObject();
}

QJsonArray listAt(const QJsonValue& value, const QString& path)
{
    if (!value.isArray())
        throw InvalidMachine{QStringLiteral("%1 must be an array").arg(path)};
    return value.toArray();
}

bool isSize(qint64 bytes)
{
    return bytes >= 0 && bytes <= kLargestSize;
}

void requireKey(const QJsonObject& object, const char* key, const QString& path)
{
    if (!object.contains(QLatin1String(key)))
        throw InvalidMachine{QStringLiteral("%1.%2 is missing").arg(path, QLatin1String(key))};
}

// A partition with the values that it inherits from its disk; its own keys override them.
Partition partitionIn(const Disk& disk)
{
    Partition partition;
    partition.diskIndex = disk.diskIndex;
    partition.isGPT = disk.isGPT;
    partition.isDynamic = disk.isDynamic;
    partition.isStorageSpace = disk.isStorageSpace;
    partition.isVirtualDisk = disk.isVirtualDisk;
    partition.isRemovable = disk.isRemoveUsb;
    return partition;
}

Partition readPartition(const QJsonObject& object, const Disk& disk, const QString& path)
{
    requireKey(object, "size", path);
    Partition partition = partitionIn(disk);
    for (auto it = object.begin(); it != object.end(); ++it)
        assignKey(partition, partitionFields(), it.key(), it.value(), path + QLatin1Char('.') + it.key());
    if (!isSize(partition.size) || !isSize(partition.usedSize) || partition.startSector < 0 ||
        partition.startSector > kLastSector || partition.sectorSize <= 0 ||
        partition.sectorSize > kLargestSector)
        throw InvalidMachine{QStringLiteral("%1 has a size or place that no partition can have").arg(path)};
    const int sectorSize = partition.sectorSize;
    if (!object.contains(QStringLiteral("startSector")))
        partition.startSector =
            (disk.partitions.empty() ? 0 : disk.partitions.back().endOffset() + sectorSize - 1) / sectorSize;
    if (!object.contains(QStringLiteral("partitionIndex")))
        partition.partitionIndex = static_cast<int>(disk.partitions.size());
    if (!object.contains(QStringLiteral("endSector")))
        partition.endSector = partition.startSector + partition.size / sectorSize - 1;
    if (!object.contains(QStringLiteral("isBitLocker")))
        partition.isBitLocker = partition.bltState != 0;
    return partition;
}

// Derives values from the partitions; the disk's own keys take precedence.
void fillFromPartitions(Disk& disk, const QJsonObject& object)
{
    Disk settled = disk;
    settle(settled);
    if (!object.contains(QStringLiteral("usedSize")))
        disk.usedSize = settled.usedSize;
    if (!object.contains(QStringLiteral("emptyPartitionCount")))
        disk.emptyPartitionCount = settled.emptyPartitionCount;
    if (!object.contains(QStringLiteral("bltState")))
        disk.bltState = settled.bltState;
}

Disk readDisk(const QJsonObject& object, const QString& path)
{
    requireKey(object, "diskIndex", path);
    requireKey(object, "size", path);
    Disk disk;
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it.key() != kPartitions)
            assignKey(disk, diskFields(), it.key(), it.value(), path + QLatin1Char('.') + it.key());
    }
    if (!isSize(disk.size))
        throw InvalidMachine{QStringLiteral("%1 has a size that no disk can have").arg(path)};
    if (!object.contains(kPartitions))
        return disk;
    const QString listPath = path + QLatin1String(".partitions");
    const QJsonArray partitions = listAt(object.value(kPartitions), listPath);
    if (partitions.size() > kMostPartitions)
        throw InvalidMachine{
            QStringLiteral("%1 has more than %2 entries").arg(listPath).arg(kMostPartitions)};
    for (int i = 0; i < partitions.size(); ++i) {
        const QString entryPath = QStringLiteral("%1[%2]").arg(listPath).arg(i);
        disk.partitions.push_back(readPartition(objectAt(partitions.at(i), entryPath), disk, entryPath));
    }
    fillFromPartitions(disk, object);
    return disk;
}

void readDisks(Machine& machine, const QJsonValue& value)
{
    const QJsonArray disks = listAt(value, QStringLiteral("disks"));
    if (disks.size() > kMostDisks)
        throw InvalidMachine{QStringLiteral("disks has more than %1 entries").arg(kMostDisks)};
    for (int i = 0; i < disks.size(); ++i) {
        const QString path = QStringLiteral("disks[%1]").arg(i);
        machine.disks.push_back(readDisk(objectAt(disks.at(i), path), path));
    }
}

void readToolbox(Machine& machine, const QJsonValue& value)
{
    const QJsonObject gates = objectAt(value, QStringLiteral("toolbox"));
    for (auto it = gates.begin(); it != gates.end(); ++it)
        assign(machine.toolbox[it.key()], it.value(), QLatin1String("toolbox.") + it.key());
}

void readSmartErrors(Machine& machine, const QJsonValue& value)
{
    const QJsonArray disks = listAt(value, QStringLiteral("smartErrors"));
    for (const QJsonValue& disk : disks)
        machine.smartErrors.insert(wholeNumber<int>(disk, QStringLiteral("smartErrors")));
}

void readSwitch(Machine& machine, const QString& key, const QJsonValue& value)
{
    static const QMap<QString, bool Machine::*> switches = {
        {QStringLiteral("preOsEnabled"), &Machine::preOsEnabled},
        {QStringLiteral("win11CheckerEnabled"), &Machine::win11CheckerEnabled},
        {QStringLiteral("bootMediaEnabled"), &Machine::bootMediaEnabled},
        {QStringLiteral("busy"), &Machine::busy},
        {QStringLiteral("popuped"), &Machine::popuped},
    };
    const auto member = switches.find(key);
    if (member == switches.end())
        throw InvalidMachine{QStringLiteral("%1 is not a key of a machine").arg(key)};
    assign(machine.*member.value(), value, key);
}

void readTaskMilliseconds(Machine& machine, const QJsonValue& value)
{
    assign(machine.taskMilliseconds, value, QStringLiteral("taskMilliseconds"));
    if (machine.taskMilliseconds < 0)
        throw InvalidMachine{QStringLiteral("taskMilliseconds must not be negative")};
}

void readTop(Machine& machine, const QString& key, const QJsonValue& value)
{
    if (key == QLatin1String("disks"))
        readDisks(machine, value);
    else if (key == QLatin1String("toolbox"))
        readToolbox(machine, value);
    else if (key == QLatin1String("smartErrors"))
        readSmartErrors(machine, value);
    else if (key == QLatin1String("name"))
        assign(machine.name, value, key);
    else if (key == QLatin1String("taskMilliseconds"))
        readTaskMilliseconds(machine, value);
    else
        readSwitch(machine, key, value);
}

// The last key before the offset; empty if no key precedes it.
QString keyBefore(const QByteArray& json, int offset)
{
    static const QRegularExpression key(QStringLiteral("\"([^\"\\n]{1,64})\"\\s*:"));
    const int begin = std::max(0, offset - kKeyDistance);
    auto found = key.globalMatch(QString::fromUtf8(json.mid(begin, offset - begin)));
    QString last;
    while (found.hasNext())
        last = found.next().captured(1);
    return last;
}

// A position as a person finds it in an editor.
QString placeIn(const QByteArray& json, int offset)
{
    const int line = json.left(offset).count('\n') + 1;
    const QString key = keyBefore(json, offset);
    return key.isEmpty() ? QStringLiteral("line %1").arg(line)
                         : QStringLiteral("line %1, near \"%2\"").arg(line).arg(key);
}

Machine readDocument(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw InvalidMachine{
            QStringLiteral("not JSON: %1 in %2").arg(error.errorString(), placeIn(json, error.offset))};
    if (!document.isObject())
        throw InvalidMachine{QStringLiteral("the top must be an object")};
    const QJsonObject top = document.object();
    if (!top.contains(QStringLiteral("disks")))
        throw InvalidMachine{QStringLiteral("disks is missing")};
    Machine machine;
    for (auto it = top.begin(); it != top.end(); ++it)
        readTop(machine, it.key(), it.value());
    if (const auto rejection = machineRejection(machine))
        throw InvalidMachine{rejection->text};
    return machine;
}

std::optional<MachineError> diskRejection(const Disk& disk)
{
    const auto reject = [&](const QString& reason) {
        return MachineError{QStringLiteral("disk %1: %2").arg(disk.diskIndex).arg(reason)};
    };
    qint64 end = 0;
    for (const Partition& partition : disk.partitions) {
        if (partition.diskIndex != disk.diskIndex)
            return reject(QStringLiteral("a partition names disk %1").arg(partition.diskIndex));
        if (partition.usedSize > partition.size)
            return reject(QStringLiteral("the used size of a partition exceeds its size"));
        if (partition.startSector * partition.sectorSize < end)
            return reject(QStringLiteral("its partitions overlap or are out of order"));
        end = partition.endOffset();
    }
    if (end > disk.size)
        return reject(QStringLiteral("its partitions are larger than the disk"));
    return std::nullopt;
}

} // namespace

std::optional<MachineError> machineRejection(const Machine& machine)
{
    QSet<int> numbers;
    QSet<QString> letters;
    for (const Disk& disk : machine.disks) {
        if (disk.diskIndex < 0 || numbers.contains(disk.diskIndex))
            return MachineError{
                QStringLiteral("disk number %1 is negative or used twice").arg(disk.diskIndex)};
        numbers.insert(disk.diskIndex);
        for (const Partition& partition : disk.partitions) {
            const QString letter = letterOf(partition.driveLetter);
            if (!letter.isEmpty() && letters.contains(letter))
                return MachineError{QStringLiteral("drive letter %1 is used twice").arg(letter)};
            letters.insert(letter);
        }
        if (const auto rejection = diskRejection(disk))
            return rejection;
    }
    return std::nullopt;
}

std::variant<Machine, MachineError> readMachine(const QByteArray& json)
{
    try {
        return readDocument(json);
    } catch (const InvalidMachine& error) {
        return MachineError{error.text};
    }
}

std::variant<Machine, MachineError> readMachineFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return MachineError{file.errorString()};
    // A pipe or a device has no size, so the number of bytes read is limited.
    QByteArray json;
    while (json.size() <= kLargestFile) {
        // One read of a pipe can give a part.
        const QByteArray part = file.read(kLargestFile + 1 - json.size());
        if (part.isEmpty())
            break;
        json += part;
    }
    if (json.size() > kLargestFile)
        return MachineError{QStringLiteral("the file is larger than %1 bytes").arg(kLargestFile)};
    return readMachine(json);
}

} // namespace host

#include "host/machine/MachineReader.h"

#include "host/machine/Fields.h"
#include "host/machine/JsonLines.h"
#include "host/machine/NearestKey.h"
#include "host/machine/Records.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

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
constexpr int kMostPartitions = 4096;

// Thrown and caught in this file only. The line of the error is that of the value at the path.
struct InvalidMachine
{
    QString text;
    QString path;
};

[[noreturn]] void reject(const QString& path, const QString& fault)
{
    throw InvalidMachine{path + QLatin1Char(' ') + fault, path};
}

[[noreturn]] void rejectKey(const QString& path, const QString& key, const QString& fault,
                            const QStringList& keys)
{
    const QString nearest = nearestKey(key, keys);
    reject(path, nearest.isEmpty() ? fault : QStringLiteral("%1; nearest: %2").arg(fault, nearest));
}

template <class Number> Number wholeNumber(const QJsonValue& value, const QString& path)
{
    const double number = value.toDouble(std::nan(""));
    const auto whole = value.toVariant().toLongLong();
    if (!value.isDouble() || number != std::floor(number) || std::fabs(number) > 9.2e18 ||
        whole > std::numeric_limits<Number>::max() || whole < std::numeric_limits<Number>::min())
        reject(path, QStringLiteral("must be a whole number"));
    return static_cast<Number>(whole);
}

void assign(bool& target, const QJsonValue& value, const QString& path)
{
    if (!value.isBool())
        reject(path, QStringLiteral("must be true or false"));
    target = value.toBool();
}

void assign(QString& target, const QJsonValue& value, const QString& path)
{
    if (!value.isString())
        reject(path, QStringLiteral("must be a string"));
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
    QStringList keys;
    for (const Field<Record>& field : fields)
        keys.append(QLatin1String(field.key));
    rejectKey(path, key, QStringLiteral("is not a key of the inventory"), keys);
}

QJsonObject objectAt(const QJsonValue& value, const QString& path)
{
    if (!value.isObject())
        reject(path, QStringLiteral("must be an object"));
    return value.toObject();
}

QJsonArray listAt(const QJsonValue& value, const QString& path)
{
    if (!value.isArray())
        reject(path, QStringLiteral("must be an array"));
    return value.toArray();
}

bool isSize(qint64 bytes)
{
    return bytes >= 0 && bytes <= kLargestSize;
}

void requireKey(const QJsonObject& object, const char* key, const QString& path)
{
    if (!object.contains(QLatin1String(key)))
        throw InvalidMachine{QStringLiteral("%1.%2 is missing").arg(path, QLatin1String(key)), path};
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
        reject(path, QStringLiteral("has a size or place that no partition can have"));
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
        reject(path, QStringLiteral("has a size that no disk can have"));
    if (!object.contains(kPartitions))
        return disk;
    const QString listPath = path + QLatin1String(".partitions");
    const QJsonArray partitions = listAt(object.value(kPartitions), listPath);
    if (partitions.size() > kMostPartitions)
        reject(listPath, QStringLiteral("has more than %1 entries").arg(kMostPartitions));
    for (int i = 0; i < partitions.size(); ++i) {
        const QString entryPath = QStringLiteral("%1[%2]").arg(listPath).arg(i);
        disk.partitions.push_back(readPartition(objectAt(partitions.at(i), entryPath), disk, entryPath));
    }
    fillFromPartitions(disk, object);
    return disk;
}

// The readers of the top object's keys.
void readDisks(Machine& machine, const QJsonValue& value, const QString& key)
{
    const QJsonArray disks = listAt(value, key);
    if (disks.size() > kMostDisks)
        reject(key, QStringLiteral("has more than %1 entries").arg(kMostDisks));
    for (int i = 0; i < disks.size(); ++i) {
        const QString path = QStringLiteral("%1[%2]").arg(key).arg(i);
        machine.disks.push_back(readDisk(objectAt(disks.at(i), path), path));
    }
}

void readToolbox(Machine& machine, const QJsonValue& value, const QString& key)
{
    const QJsonObject gates = objectAt(value, key);
    for (auto it = gates.begin(); it != gates.end(); ++it)
        assign(machine.toolbox[it.key()], it.value(), QStringLiteral("%1.%2").arg(key, it.key()));
}

void readSmartErrors(Machine& machine, const QJsonValue& value, const QString& key)
{
    const QJsonArray disks = listAt(value, key);
    for (int i = 0; i < disks.size(); ++i)
        machine.smartErrors.insert(wholeNumber<int>(disks.at(i), QStringLiteral("%1[%2]").arg(key).arg(i)));
}

void readTaskMilliseconds(Machine& machine, const QJsonValue& value, const QString& key)
{
    assign(machine.taskMilliseconds, value, key);
    if (machine.taskMilliseconds < 0)
        reject(key, QStringLiteral("must not be negative"));
}

template <auto member> void readMember(Machine& machine, const QJsonValue& value, const QString& key)
{
    assign(machine.*member, value, key);
}

using ReadKey = void (*)(Machine& machine, const QJsonValue& value, const QString& key);

const QMap<QString, ReadKey>& machineKeys()
{
    static const QMap<QString, ReadKey> keys = {
        {QStringLiteral("disks"), readDisks},
        {QStringLiteral("toolbox"), readToolbox},
        {QStringLiteral("smartErrors"), readSmartErrors},
        {QStringLiteral("name"), readMember<&Machine::name>},
        {QStringLiteral("taskMilliseconds"), readTaskMilliseconds},
        {QStringLiteral("preOsEnabled"), readMember<&Machine::preOsEnabled>},
        {QStringLiteral("win11CheckerEnabled"), readMember<&Machine::win11CheckerEnabled>},
        {QStringLiteral("bootMediaEnabled"), readMember<&Machine::bootMediaEnabled>},
        {QStringLiteral("busy"), readMember<&Machine::busy>},
        {QStringLiteral("popuped"), readMember<&Machine::popuped>},
    };
    return keys;
}

void readTop(Machine& machine, const QString& key, const QJsonValue& value)
{
    const auto reader = machineKeys().find(key);
    if (reader == machineKeys().end())
        rejectKey(key, key, QStringLiteral("is not a key of a machine"), machineKeys().keys());
    reader.value()(machine, value, key);
}

Machine readDocument(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw InvalidMachine{
            QStringLiteral("not JSON: %1 in %2").arg(error.errorString(), placeOfOffset(json, error.offset)),
            QString()};
    if (!document.isObject())
        throw InvalidMachine{QStringLiteral("the top must be an object"), QString()};
    const QJsonObject top = document.object();
    if (!top.contains(QStringLiteral("disks")))
        throw InvalidMachine{QStringLiteral("disks is missing"), QString()};
    Machine machine;
    for (auto it = top.begin(); it != top.end(); ++it)
        readTop(machine, it.key(), it.value());
    if (const auto rejection = machineRejection(machine))
        throw InvalidMachine{rejection->text, rejection->path};
    return machine;
}

} // namespace

std::variant<Machine, MachineError> readMachine(const QByteArray& json)
{
    try {
        return readDocument(json);
    } catch (const InvalidMachine& error) {
        const int line = error.path.isEmpty() ? 0 : lineOfPath(json, error.path);
        return MachineError{line == 0 ? error.text : QStringLiteral("line %1: %2").arg(line).arg(error.text),
                            error.path};
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

#include "host/machine/MachineWriter.h"

#include "host/OutputFile.h"
#include "host/machine/Fields.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <vector>

namespace host {

namespace {

QJsonValue json(bool value)
{
    return value;
}

QJsonValue json(int value)
{
    return value;
}

QJsonValue json(qint64 value)
{
    return value;
}

QJsonValue json(const QString& value)
{
    return value;
}

// Every key whose value differs from that of a bare record, and the keys in @p always.
template <class Record>
QJsonObject changedKeys(const Record& record, const std::vector<Field<Record>>& fields, const Record& bare,
                        const std::vector<QLatin1String>& always)
{
    QJsonObject object;
    for (const Field<Record>& field : fields) {
        const QLatin1String key(field.key);
        const bool needed = std::find(always.begin(), always.end(), key) != always.end();
        std::visit(
            [&](auto member) {
                if (needed || record.*member != bare.*member)
                    object.insert(key, json(record.*member));
            },
            field.member);
    }
    return object;
}

QJsonObject partitionObject(const Partition& partition)
{
    // The reader derives these from the disk or the position, so a default cannot be omitted.
    static const std::vector<QLatin1String> always = {
        QLatin1String("diskIndex"),   QLatin1String("partitionIndex"), QLatin1String("size"),
        QLatin1String("startSector"), QLatin1String("endSector"),      QLatin1String("isGPT"),
        QLatin1String("isDynamic"),   QLatin1String("isStorageSpace"), QLatin1String("isVirtualDisk"),
        QLatin1String("isRemovable"), QLatin1String("isBitLocker")};
    return changedKeys(partition, partitionFields(), Partition(), always);
}

QJsonObject diskObject(const Disk& disk)
{
    static const std::vector<QLatin1String> always = {QLatin1String("diskIndex"), QLatin1String("size"),
                                                      QLatin1String("usedSize"), QLatin1String("bltState"),
                                                      QLatin1String("emptyPartitionCount")};
    QJsonObject object = changedKeys(disk, diskFields(), Disk(), always);
    QJsonArray partitions;
    for (const Partition& partition : disk.partitions)
        partitions.append(partitionObject(partition));
    object.insert(QStringLiteral("partitions"), partitions);
    return object;
}

void addSwitches(QJsonObject& top, const Machine& machine)
{
    top.insert(QStringLiteral("preOsEnabled"), machine.preOsEnabled);
    top.insert(QStringLiteral("win11CheckerEnabled"), machine.win11CheckerEnabled);
    top.insert(QStringLiteral("bootMediaEnabled"), machine.bootMediaEnabled);
    top.insert(QStringLiteral("busy"), machine.busy);
    top.insert(QStringLiteral("popuped"), machine.popuped);
    top.insert(QStringLiteral("taskMilliseconds"), machine.taskMilliseconds);
}

} // namespace

QByteArray writeMachine(const Machine& machine)
{
    QJsonObject top;
    top.insert(QStringLiteral("name"), machine.name);
    addSwitches(top, machine);
    QJsonObject toolbox;
    for (auto it = machine.toolbox.begin(); it != machine.toolbox.end(); ++it)
        toolbox.insert(it.key(), it.value());
    top.insert(QStringLiteral("toolbox"), toolbox);
    std::vector<int> sick(machine.smartErrors.begin(), machine.smartErrors.end());
    std::sort(sick.begin(), sick.end());
    QJsonArray errors;
    for (const int disk : sick)
        errors.append(disk);
    top.insert(QStringLiteral("smartErrors"), errors);
    QJsonArray disks;
    for (const Disk& disk : machine.disks)
        disks.append(diskObject(disk));
    top.insert(QStringLiteral("disks"), disks);
    return QJsonDocument(top).toJson(QJsonDocument::Indented);
}

QString writeMachineFile(const Machine& machine, const QString& path)
{
    return OutputFile::replace(path, writeMachine(machine));
}

QString tryMachineFile(const Machine& machine, const QString& path)
{
    return OutputFile::tryReplace(path, writeMachine(machine));
}

} // namespace host

#include "tests/host/MachineProperties.h"

#include "host/machine/Fields.h"
#include "host/machine/MachineReader.h"
#include "host/machine/MachineWriter.h"
#include "tests/host/MachineText.h"

#include <algorithm>
#include <iterator>
#include <variant>

namespace {

using host::Disk;
using host::Machine;
using host::Partition;

constexpr qint64 kTwoTiB = 2048 * kGiB;

QString on(const Disk& disk, const char* violation)
{
    return QString("disk %1: %2").arg(disk.diskIndex).arg(violation);
}

template <class Record>
bool sameFields(const Record& one, const Record& other, const std::vector<host::Field<Record>>& fields)
{
    return std::all_of(fields.begin(), fields.end(), [&](const host::Field<Record>& field) {
        return std::visit([&](auto member) { return one.*member == other.*member; }, field.member);
    });
}

QString diskPlacesViolation(const Disk& disk)
{
    qint64 end = disk.partitions.empty() ? 0 : disk.partitions.front().startOffset();
    for (const Partition& entry : disk.partitions) {
        if (entry.startOffset() < end)
            return on(disk, "two entries overlap");
        if (entry.startOffset() > end)
            return on(disk, "a hole between two entries");
        if (entry.size <= 0 || entry.size % entry.sectorSize != 0)
            return on(disk, "an entry of no whole sectors");
        if (entry.endSector != entry.startSector + entry.size / entry.sectorSize - 1)
            return on(disk, "a wrong end sector");
        end = entry.endOffset();
    }
    return end > disk.size ? on(disk, "an entry outside") : QString();
}

QString diskTableViolation(const Disk& disk)
{
    int primaries = 0;
    int areas = 0;
    int active = 0;
    bool inArea = false;
    for (const Partition& entry : disk.partitions) {
        if (entry.unallocated)
            continue;
        if (!disk.isGPT && entry.endOffset() > kTwoTiB)
            return on(disk, "beyond 2 TiB of an MBR disk");
        if (entry.isGPT != disk.isGPT || (disk.isGPT && !entry.isPrimary))
            return on(disk, "a partition of another kind of table");
        primaries += entry.isPrimary ? 1 : 0;
        areas += !entry.isPrimary && !inArea ? 1 : 0;
        inArea = !entry.isPrimary;
        active += entry.isActive ? 1 : 0;
    }
    if (disk.isUnInitialize && primaries + areas > 0)
        return on(disk, "partitions without a table");
    if (areas > 1)
        return on(disk, "a primary partition between logical drives");
    if (!disk.isGPT && primaries + areas > 4)
        return on(disk, "more than an MBR table holds");
    return active > 1 ? on(disk, "two active partitions") : QString();
}

// The limits, independent of the tested code.
struct Limit
{
    const char* fileSystem;
    qint64 smallest;
    qint64 largest;
    int label;
};
const Limit kLimits[] = {{"NTFS", 8 * kMiB, 256 * 1024 * kGiB, 32},  {"FAT", 4 * kMiB, 4 * kGiB, 11},
                         {"FAT16", 4 * kMiB, 4 * kGiB, 11},          {"FAT32", 33 * kMiB, kTwoTiB, 11},
                         {"exFAT", 4 * kMiB, 256 * 1024 * kGiB, 11}, {"EXT2", 4 * kMiB, 8 * kTwoTiB, 16},
                         {"EXT3", 4 * kMiB, 8 * kTwoTiB, 16},        {"EXT4", 4 * kMiB, 8 * kTwoTiB, 16}};

QString partitionVolumeViolation(const Disk& disk, const Partition& entry)
{
    const auto limit = std::find_if(std::begin(kLimits), std::end(kLimits), [&](const Limit& row) {
        return entry.fsString == QLatin1String(row.fileSystem);
    });
    if (entry.unallocated || limit == std::end(kLimits))
        return QString();
    const qint64 cluster = qint64(entry.clusterSize) * entry.sectorSize;
    // A hand-written machine can omit its clusters.
    const bool tooMany = cluster != 0 && entry.size >> 32 >= cluster;
    if (entry.size > limit->largest || entry.size < limit->smallest || tooMany)
        return on(disk, "a volume of a size that it cannot have");
    if ((cluster != 0 && cluster < 512) || cluster > 2 * kMiB || (cluster & (cluster - 1)) != 0)
        return on(disk, "a cluster of a size that there is not");
    return entry.label.size() <= limit->label ? QString() : on(disk, "a label that is too long");
}

template <class Property> QString firstOf(const Machine& machine, Property violation)
{
    for (const Disk& disk : machine.disks) {
        const QString text = violation(disk);
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

} // namespace

QString placesViolation(const Machine& machine)
{
    return firstOf(machine, diskPlacesViolation);
}

QString lettersViolation(const Machine& machine)
{
    QStringList letters;
    for (const Disk& disk : machine.disks) {
        for (const Partition& entry : disk.partitions) {
            if (entry.driveLetter.isEmpty())
                continue;
            if (entry.unallocated || letters.contains(entry.driveLetter))
                return on(disk, "a duplicate letter, or a letter of a free region");
            letters.append(entry.driveLetter);
        }
    }
    return QString();
}

QString useViolation(const Machine& machine)
{
    return firstOf(machine, [](const Disk& disk) {
        qint64 used = 0;
        for (const Partition& entry : disk.partitions) {
            if (entry.usedSize < 0 || entry.usedSize > (entry.unallocated ? 0 : entry.size))
                return on(disk, "more in use than there is");
            used += entry.usedSize;
        }
        return used == disk.usedSize ? QString() : on(disk, "a wrong sum of use");
    });
}

QString tableViolation(const Machine& machine)
{
    return firstOf(machine, diskTableViolation);
}

QString volumeViolation(const Machine& machine)
{
    return firstOf(machine, [](const Disk& disk) {
        for (const Partition& entry : disk.partitions) {
            const QString violation = partitionVolumeViolation(disk, entry);
            if (!violation.isEmpty())
                return violation;
        }
        return QString();
    });
}

QString tripViolation(const Machine& machine)
{
    const auto read = host::readMachine(host::writeMachine(machine));
    if (const auto* error = std::get_if<host::MachineError>(&read))
        return "cannot be read again: " + error->text;
    return isSame(std::get<Machine>(read), machine) ? QString() : "comes back changed";
}

QString machineViolation(const Machine& machine)
{
    for (const auto& violation :
         {placesViolation, lettersViolation, useViolation, tableViolation, volumeViolation}) {
        const QString text = violation(machine);
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

bool isSame(const Disk& one, const Disk& other)
{
    return sameFields(one, other, host::diskFields()) &&
           std::equal(one.partitions.begin(), one.partitions.end(), other.partitions.begin(),
                      other.partitions.end(), [](const Partition& a, const Partition& b) {
                          return sameFields(a, b, host::partitionFields());
                      });
}

bool isSame(const Machine& one, const Machine& other)
{
    const bool switches = one.name == other.name && one.toolbox == other.toolbox &&
                          one.preOsEnabled == other.preOsEnabled && one.smartErrors == other.smartErrors &&
                          one.win11CheckerEnabled == other.win11CheckerEnabled &&
                          one.bootMediaEnabled == other.bootMediaEnabled && one.busy == other.busy &&
                          one.popuped == other.popuped && one.taskMilliseconds == other.taskMilliseconds;
    return switches && std::equal(one.disks.begin(), one.disks.end(), other.disks.begin(), other.disks.end(),
                                  [](const Disk& a, const Disk& b) { return isSame(a, b); });
}

qint64 unlisted(const Disk& disk)
{
    qint64 listed = 0;
    for (const Partition& entry : disk.partitions)
        listed += entry.size;
    return disk.size - listed;
}

qint64 reservedByTable(const Disk& disk)
{
    const qint64 sector = disk.partitions.empty() ? 512 : disk.partitions.front().sectorSize;
    const qint64 table = disk.isUnInitialize ? 0 : kMiB + (disk.isGPT ? 33 * sector : 0);
    return table + disk.size % sector;
}

qint64 usedOf(const Machine& machine)
{
    qint64 used = 0;
    for (const Disk& disk : machine.disks)
        used += disk.usedSize;
    return used;
}

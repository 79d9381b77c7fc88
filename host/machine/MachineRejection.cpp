#include "host/machine/MachineReader.h"

#include <QtCore/QSet>

namespace host {

namespace {

QString pathOfDisk(std::size_t index)
{
    return QStringLiteral("disks[%1]").arg(index);
}

QString pathOfPartition(std::size_t disk, std::size_t index)
{
    return QStringLiteral("%1.partitions[%2]").arg(pathOfDisk(disk)).arg(index);
}

std::optional<QString> partitionFault(const Disk& disk, const Partition& partition, qint64 previousEnd)
{
    if (partition.diskIndex != disk.diskIndex)
        return QStringLiteral("a partition names disk %1").arg(partition.diskIndex);
    if (partition.usedSize > partition.size)
        return QStringLiteral("the used size of a partition exceeds its size");
    if (partition.startSector * partition.sectorSize < previousEnd)
        return QStringLiteral("its partitions overlap or are out of order");
    return std::nullopt;
}

std::optional<MachineError> diskRejection(const Disk& disk, std::size_t index)
{
    const QString text = QStringLiteral("disk %1: %2").arg(disk.diskIndex);
    qint64 end = 0;
    for (std::size_t i = 0; i < disk.partitions.size(); ++i) {
        if (const auto fault = partitionFault(disk, disk.partitions[i], end))
            return MachineError{text.arg(*fault), pathOfPartition(index, i)};
        end = disk.partitions[i].endOffset();
    }
    if (end > disk.size)
        return MachineError{text.arg(QStringLiteral("its partitions are larger than the disk")),
                            pathOfDisk(index)};
    return std::nullopt;
}

// The letters that disks share are collected over all disks.
std::optional<MachineError> letterRejection(const Disk& disk, std::size_t index, QSet<QString>* letters)
{
    for (std::size_t i = 0; i < disk.partitions.size(); ++i) {
        const QString letter = letterOf(disk.partitions[i].driveLetter);
        if (!letter.isEmpty() && letters->contains(letter))
            return MachineError{QStringLiteral("drive letter %1 is used twice").arg(letter),
                                pathOfPartition(index, i)};
        letters->insert(letter);
    }
    return std::nullopt;
}

} // namespace

std::optional<MachineError> machineRejection(const Machine& machine)
{
    QSet<int> numbers;
    QSet<QString> letters;
    for (std::size_t i = 0; i < machine.disks.size(); ++i) {
        const Disk& disk = machine.disks[i];
        if (disk.diskIndex < 0 || numbers.contains(disk.diskIndex))
            return MachineError{
                QStringLiteral("disk number %1 is negative or used twice").arg(disk.diskIndex),
                pathOfDisk(i)};
        numbers.insert(disk.diskIndex);
        if (const auto rejection = letterRejection(disk, i, &letters))
            return rejection;
        if (const auto rejection = diskRejection(disk, i))
            return rejection;
    }
    return std::nullopt;
}

} // namespace host

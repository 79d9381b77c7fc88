// Cases that check the free space of partitions.
#include "recscan/CaseTools.h"

#include "recscan/ActionIndex.h"
#include "tools/FunctionIndex.h"
#include "tools/HostPages.h"

#include <QtCore/QObject>

#include <algorithm>

namespace {

constexpr double kRatioLimit = 0.85;
constexpr qint64 kFreeLimit = 5368709120;

double usedRatio(const PartitionInfo& partition)
{
    return static_cast<double>(partition.usedSize) / static_cast<double>(partition.rawCapacity);
}

qint64 freeBytes(const PartitionInfo& partition)
{
    // The host's numbers are unchecked and can overflow; unsigned arithmetic wraps without undefined
    // behaviour.
    return static_cast<qint64>(static_cast<quint64>(partition.rawCapacity) -
                               static_cast<quint64>(partition.usedSize));
}

bool isShortOfSpace(const PartitionInfo& partition)
{
    return usedRatio(partition) > kRatioLimit || freeBytes(partition) < kFreeLimit;
}

// Not the negation of isShortOfSpace: a partition exactly at a limit can fail both tests.
bool hasRoom(const PartitionInfo& partition)
{
    return usedRatio(partition) < kRatioLimit && freeBytes(partition) > kFreeLimit;
}

bool isPartitionSkippedForSpace(const PartitionInfo& partition)
{
    return partition.isCurrentBootPartition || partition.isBadPartition ||
           partition.isCurrentSystemPartition || partition.gptEfi || partition.gptRecovery ||
           partition.gptReserved || partition.isDynamic || partition.bitlockerState == kBitLockerLocked;
}

bool hasRoomOnDisk(const ScanSubject& subject, int diskIndex, char systemLetter)
{
    const std::vector<PartitionInfo>* partitions = partitionsOf(subject, diskIndex);
    return partitions != nullptr &&
           std::any_of(partitions->begin(), partitions->end(), [=](const PartitionInfo& partition) {
               const bool isSystem =
                   !partition.driveLetter.empty() && partition.driveLetter.front() == systemLetter;
               return !isSystem && hasRoom(partition);
           });
}

bool hasRoomOnOtherDisk(const ScanSubject& subject, int diskIndex)
{
    return std::any_of(
        subject.partitionsByDisk.begin(), subject.partitionsByDisk.end(), [=](const auto& entry) {
            return entry.first != diskIndex && std::any_of(entry.second.begin(), entry.second.end(), hasRoom);
        });
}

// Empty if the host's page rejects the function for that drive.
std::optional<Recommendation> recommendSmartLayout(const ScanSubject& subject, const QString& message,
                                                   const QString& driveLetter)
{
    const Recommendation result = recommendForDrive(ActionSmartLayout, message, driveLetter);
    if (subject.pages == nullptr ||
        !subject.pages->isFunValidForAI(FunSmartSpaceAdjustment, result.actionParams))
        return std::nullopt;
    return result;
}

// The letter of the first drive that is short of space, on a disk that also has a partition with room.
std::optional<QString> findDriveToEnlarge(const std::vector<PartitionInfo>& partitions)
{
    const PartitionInfo* low = nullptr;
    bool roomFound = false;
    for (const PartitionInfo& partition : partitions) {
        if (isPartitionSkippedForSpace(partition))
            continue;
        if (low == nullptr && hasDriveLetter(partition) && isShortOfSpace(partition))
            low = &partition;
        roomFound = roomFound || hasRoom(partition);
    }
    return low != nullptr && roomFound ? std::optional<QString>(QString::fromStdString(low->driveLetter))
                                       : std::nullopt;
}

} // namespace

std::optional<Recommendation> checkSystemDriveSpace(const ScanSubject& subject)
{
    const std::optional<SystemDrive> drive = findSystemDrive(subject);
    if (!drive || !isShortOfSpace(*drive->partition))
        return std::nullopt;
    const int diskIndex = drive->partition->diskIndex;
    if (hasRoomOnDisk(subject, diskIndex, drive->letterByte)) {
        const QString text =
            QObject::tr("Drive %1 has low space. We recommend using \"Smart Layout Adjust\" to "
                        "quickly expand %2 drive space!");
        // The tool reads the first letter only, so the directory can be passed as the drive.
        return recommendSmartLayout(subject, text.arg(drive->letter, drive->letter), drive->directory);
    }
    if (!hasRoomOnOtherDisk(subject, diskIndex))
        return std::nullopt;
    const QString text =
        QObject::tr("Drive %1 has low space. We recommend using the \"Data Migration\" feature to "
                    "free up more space on %2 drive!");
    return recommend(ActionMigrateData, text.arg(drive->letter, drive->letter));
}

std::optional<Recommendation> checkDriveSpace(const ScanSubject& subject)
{
    for (const DiskInfo& disk : subject.disks) {
        const std::vector<PartitionInfo>* partitions = partitionsOf(subject, disk.diskIndex);
        const std::optional<QString> letter =
            partitions == nullptr ? std::nullopt : findDriveToEnlarge(*partitions);
        if (!letter)
            continue;
        const QString text =
            QObject::tr("Drive %1 has low space. We recommend using \"Smart Layout Adjust\" to "
                        "adjust the disk layout with one click!");
        return recommendSmartLayout(subject, text.arg(*letter), *letter);
    }
    return std::nullopt;
}

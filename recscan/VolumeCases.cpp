// Cases that check single partitions.
#include "recscan/CaseTools.h"

#include "platform/Platform.h"
#include "recscan/ActionIndex.h"
#include "tools/ZorHandle.h"

#include <QtCore/QObject>

#include <algorithm>

namespace {

constexpr quint64 kLargeFat32 = 34359738368;

bool isLargeFat32(const PartitionInfo& partition)
{
    return partition.fileSystemType == "FAT32" && hasDriveLetter(partition) &&
           static_cast<quint64>(partition.rawCapacity) > kLargeFat32;
}

} // namespace

std::optional<Recommendation> checkLargeFat32External(const ScanSubject& subject)
{
    for (const DiskInfo& disk : subject.disks) {
        const std::vector<PartitionInfo>* partitions = partitionsOf(subject, disk.diskIndex);
        if ((!disk.isRemovable && !disk.isUsb) || partitions == nullptr)
            continue;
        const auto found = std::find_if(partitions->begin(), partitions->end(), isLargeFat32);
        if (found == partitions->end())
            continue;
        const QString text = QObject::tr(
            "We recommend converting the file system of the large external disk %1 to ExFAT for better "
            "performance and cross-platform accessibility! ");
        return recommendForDrive(ActionConvertToExfat, text.arg(disk.diskIndex),
                                 QString::fromStdString(found->driveLetter));
    }
    return std::nullopt;
}

std::optional<Recommendation> checkBitLockerUsb(const ScanSubject& subject)
{
    const std::optional<SystemDrive> drive = findSystemDrive(subject);
    if (!drive || drive->partition->bitlockerState == "unencrypted" || isArm64Machine())
        return std::nullopt;
    const QString text = QObject::tr(
        "For users with BitLocker encryption on %1 drive, we recommend creating a secure USB drive. In "
        "the event of a system boot failure, the secure USB drive can boot the computer and access data "
        "on the encrypted disk!");
    return recommend(ActionCreateUsb, text.arg(drive->letter));
}

std::optional<Recommendation> checkRawPartition(const ScanSubject& subject)
{
    const PartitionInfo* raw =
        firstOnLastDisk(subject, [](const PartitionInfo& partition) { return partition.isRawPartition; });
    if (raw == nullptr)
        return std::nullopt;
    return recommendForDrive(
        ActionRepairRaw,
        QObject::tr("A Raw partition was detected on the system. We recommend repairing the Raw "
                    "partition as soon as possible to avoid permanent data loss!"),
        normalisedLetter(raw->driveLetter));
}

std::optional<Recommendation> checkBitLockerLocked(const ScanSubject& subject)
{
    const PartitionInfo* locked = firstOnLastDisk(
        subject, [](const PartitionInfo& partition) { return partition.bitlockerState == kBitLockerLocked; });
    if (locked == nullptr)
        return std::nullopt;
    const QString letter = QString::fromStdString(locked->driveLetter);
    const QString text =
        QObject::tr("Drive %1 is locked by BitLocker. You can use BitLocker Key Finder to recover "
                    "your BitLocker recovery key if you forget the password!");
    return recommendForDrive(ActionFindBitLockerKey, text.arg(letter), letter);
}

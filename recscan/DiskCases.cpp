// Cases that check whole disks.
#include "recscan/CaseTools.h"

#include "closed/LLFProc/LLFProc.h"
#include "plugin/HostCall.h"
#include "recscan/ActionIndex.h"

#include <QtCore/QObject>
#include <QtQml/QQmlEngine>

#include <algorithm>

namespace {

// Capacity that an MBR can address with sectors of 512 bytes, in bytes.
constexpr qint64 kMbrLimit = 2199023255552;

bool holdsBootPartition(const ScanSubject& subject, int diskIndex)
{
    const std::vector<PartitionInfo>* partitions = partitionsOf(subject, diskIndex);
    return partitions != nullptr &&
           std::any_of(partitions->begin(), partitions->end(),
                       [](const PartitionInfo& partition) { return partition.isBootPartitionContainer; });
}

} // namespace

std::optional<Recommendation> checkDiskSmart(const ScanSubject& subject)
{
    const HostMethod hasError(contextObject(subject.engine, QStringLiteral("partitionmanager")),
                              "hasDiskSmartInfoError");
    for (const DiskInfo& disk : subject.disks) {
        const int diskIndex = disk.diskIndex;
        if (!hasError.call<bool>(ConnectionRule::Direct, diskIndex).value_or(false))
            continue;
        const QString text =
            QObject::tr("We have detected an anomaly in the health status of disk %1. We recommend "
                        "checking the disk health as soon as possible!");
        return recommendForDisk(ActionDiskHealth, text.arg(diskIndex), diskIndex);
    }
    return std::nullopt;
}

std::optional<Recommendation> checkWastedMbrSpace(const ScanSubject& subject)
{
    // Only the first large disk is considered.
    const auto disk = std::find_if(subject.disks.begin(), subject.disks.end(), [](const DiskInfo& candidate) {
        return !candidate.isGpt && candidate.totalCapacity > kMbrLimit;
    });
    if (disk == subject.disks.end())
        return std::nullopt;
    // A machine without UEFI could not boot from the converted disk.
    if (holdsBootPartition(subject, disk->diskIndex) && !MayBeSupportUEFI())
        return std::nullopt;
    const QString text =
        QObject::tr("Due to incorrect partition table settings on disk %1, its space is not fully "
                    "utilized. We recommend converting to GPT disk!");
    return recommendForDisk(ActionConvertToGpt, text.arg(disk->diskIndex), disk->diskIndex);
}

std::optional<Recommendation> check4kAlignment(const ScanSubject& subject)
{
    const auto disk = std::find_if(subject.disks.begin(), subject.disks.end(), [](const DiskInfo& candidate) {
        return candidate.not4kAligned && candidate.isSsd;
    });
    if (disk == subject.disks.end())
        return std::nullopt;
    const QString text = QObject::tr(
        "The %1 drive on the SSD is not 4K aligned. We recommend performing 4K alignment immediately to "
        "significantly improve its performance!");
    return recommendForDisk(ActionAlign4k, text.arg(disk->diskIndex), disk->diskIndex);
}

std::optional<Recommendation> checkSlowBootDisk(const ScanSubject& subject)
{
    const std::optional<SystemDrive> drive = findSystemDrive(subject);
    if (!drive)
        return std::nullopt;
    const auto disk =
        std::find_if(subject.disks.begin(), subject.disks.end(), [&](const DiskInfo& candidate) {
            return candidate.diskIndex == drive->partition->diskIndex;
        });
    if (disk == subject.disks.end() || disk->isSsd)
        return std::nullopt;
    Recommendation result;
    result.record = makeRecord(
        QObject::tr(
            "The performance of this machine is significantly affected by the boot disk. We recommend "
            "replacing it with an SSD for better performance. Once you are ready with the SSD, use \"System "
            "Migration\" to easily transfer the system to the SSD! "),
        {QObject::tr("Got it")});
    result.actionIndex = ActionNone;
    return result;
}

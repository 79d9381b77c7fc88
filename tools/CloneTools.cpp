// The clone tools. Each converts its arguments to a source record and a destination record.
#include "tools/ZorHandle.h"

#include "tools/CloneTask.h"
#include "tools/HostRecords.h"
#include "tools/ToolBridge.h"

#include <QtCore/QDir>

namespace {

QVariantMap withType(QVariantMap destination, CloneType type)
{
    destination[QStringLiteral("cloneType")] = static_cast<int>(type);
    return destination;
}

bool isBoot(const QVariantMap& record)
{
    return record.value(QStringLiteral("isBoot")).toBool();
}

QVariantMap partition(const ToolBridge* bridge, const std::string& letter)
{
    return findPartitionRecord(pagesOf(bridge), QString::fromStdString(letter), SelectForClone);
}

QVariantMap disk(const ToolBridge* bridge, int32_t diskIndex)
{
    return findDiskRecord(pagesOf(bridge), SelectForClone, diskIndex);
}

} // namespace

QString driveLetterOf(const QString& rootPath)
{
    return rootPath.isEmpty() ? QStringLiteral("C") : rootPath.left(1).toUpper();
}

void CZorHandle::CloneOSDataFromCurrent(std::string& answer, int32_t targetDiskIndex)
{
    const QVariantMap source =
        findPartitionRecord(pagesOf(bridge), driveLetterOf(QDir::rootPath()), SelectForClone);
    answer = runCloneTask(bridge, source, withType(disk(bridge, targetDiskIndex), CloneSystemPartition),
                          SelectNone);
}

void CZorHandle::CloneOSDataFromDisk(std::string& answer, int32_t targetDiskIndex, int32_t osDiskIndex)
{
    const QVariantMap source = disk(bridge, osDiskIndex);
    if (!isBoot(source) && targetDiskIndex != -1 && osDiskIndex != -1) {
        answer = QStringLiteral("It seems that disk%1 is not os disk").arg(osDiskIndex).toStdString();
        return;
    }
    answer =
        runCloneTask(bridge, source, withType(disk(bridge, targetDiskIndex), CloneSystemDisk), SelectNone);
}

void CZorHandle::CloneOSDataFromPartition(std::string& answer, int32_t targetDiskIndex,
                                          const std::string& osDriveLetter)
{
    answer = runCloneTask(bridge, partition(bridge, osDriveLetter),
                          withType(disk(bridge, targetDiskIndex), CloneSystemPartition), SelectNone);
}

void CZorHandle::CloneDiskToDisk(std::string& answer, int32_t sourceDiskIndex, int32_t destDiskIndex)
{
    answer = runCloneTask(bridge, disk(bridge, sourceDiskIndex),
                          withType(disk(bridge, destDiskIndex), CloneDisk), sourceDiskIndex);
}

void CZorHandle::ClonePartitionToPartition(std::string& answer, const std::string& sourceDriveLetter,
                                           const std::string& destDriveLetter)
{
    answer = runCloneTask(bridge, partition(bridge, sourceDriveLetter),
                          withType(partition(bridge, destDriveLetter), ClonePartition), SelectNone);
}

void CZorHandle::ClonePartitionToDisk(std::string& answer, const std::string& sourceDriveLetter,
                                      int32_t destDiskIndex)
{
    const QVariantMap source = partition(bridge, sourceDriveLetter);
    const QVariantMap target = disk(bridge, destDiskIndex);
    const QVariantMap destination =
        isBoot(source) ? withType(target, CloneSystemPartition)
                       : withType(pickTargetPartition(pagesOf(bridge), target), ClonePartition);
    answer = runCloneTask(bridge, source, destination, SelectNone);
}

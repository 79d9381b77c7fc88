// Recovery, health, BitLocker and the toolbox.
#include "plugin/AIBridge.h"
#include "plugin/HostCall.h"
#include "tools/HostRecords.h"
#include "tools/Reply.h"
#include "tools/ToolBox.h"

#include <QtQml/QQmlApplicationEngine>

namespace {

const QString kDiskIndex = QStringLiteral("diskIndex");

// The repair of damaged partitions is switched off; its body stays beside it.
constexpr bool kRepairRawEnabled = false;

QVariantMap diskOf(const AIBridge* bridge, int32_t diskIndex)
{
    return findDiskRecord(bridge, SelectForTask, diskIndex);
}

QVariantMap partitionOf(const AIBridge* bridge, const std::string& driveLetter)
{
    return findPartitionRecord(bridge, QString::fromStdString(driveLetter), SelectForTask);
}

// Orders a function of the main object. Once the method is there the order counts as given, whatever became
// of it.
bool startOnMain(const AIBridge* bridge, const char* method, const QVariantMap& info)
{
    const HostMethod start(hostMainObject(*bridge), method);
    if (!start.isValid())
        return false;
    start.order(ConnectionRule::Call, QVariant(info));
    return true;
}

// The inventory has no entry for a disk without partitions.
bool hasPartitionsOf(AIBridge& bridge, int diskIndex)
{
    std::vector<PartitionInfo> partitions;
    bridge.getPartitionInfo(partitions, diskIndex);
    return !partitions.empty();
}

// A virtual disk has no surface to test; it is refused before any guide is closed.
bool scanBadSectors(const AIBridge* bridge, const QVariantMap& record)
{
    return !record.value(QStringLiteral("isVirtualDisk")).toBool() &&
           runToolBoxTask(bridge, ToolBoxBadSectors, record);
}

} // namespace

bool AIBridge::doPrFunForAI(bool isPartRecov, QVariantMap info)
{
    closeGuide();
    info[QStringLiteral("isPartRecov")] = isPartRecov;
    // The check is for agents: a call on the application thread is the user's own.
    if (isPartRecov && !isApplicationThread()) {
        QObject* recovery = contextObject(engine(), QStringLiteral("partitionrecovery"));
        if (!callHost<bool>(recovery, "isDiskIndexValid", ConnectionRule::Call, QVariant(info))
                 .value_or(false))
            return false;
    }
    return startOnMain(this, "doprfunction", info);
}

bool AIBridge::openDiskHealth(int diskIndex)
{
    closeGuide();
    if (!isApplicationThread() && !hasPartitionsOf(*this, diskIndex))
        return false;
    return startOnMain(this, "opendiskhealth", {{kDiskIndex, diskIndex}});
}

void CZorHandle::RecoverLostPartition(std::string& answer, int32_t diskIndex)
{
    answer = kTaskNotValid;
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(kDiskIndex, QVariant(diskIndex));
    answer = reply(bridge->doPrFunForAI(true, paramsCopy()));
}

void CZorHandle::RepairRawOrDamagedPartition(std::string& answer, const std::string& driveLetter)
{
    answer = kTaskNotValid;
    if (!kRepairRawEnabled || bridge == nullptr)
        return;
    answer = kTaskQueued;
    ResetParams();
    setParam(QStringLiteral("driveLetter"), driveLetter);
    if (bridge->doPrFunForAI(false, paramsCopy()))
        answer = kTaskQueued;
}

void CZorHandle::DiskHealthCheck(std::string& answer, int32_t diskIndex)
{
    answer = reply(bridge != nullptr && bridge->openDiskHealth(diskIndex));
}

void CZorHandle::ShowBitLockerStatus(std::string& answer, const std::string& driveLetter)
{
    runLetterTask(answer, FunShowBitLockerStatus, driveLetter);
}

void CZorHandle::RetrieveBitLockerRecoveryKey(std::string& answer, const std::string& driveLetter)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxBitLockerKey, partitionOf(bridge, driveLetter)));
}

void CZorHandle::CheckPartitionFileSystem(std::string& answer, const std::string& driveLetter)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxCheckFileSystem, partitionOf(bridge, driveLetter)));
}

void CZorHandle::ScanDiskBadSectors(std::string& answer, int32_t diskIndex)
{
    answer = reply(scanBadSectors(bridge, diskOf(bridge, diskIndex)));
}

void CZorHandle::ScanPartitionBadSectors(std::string& answer, const std::string& driveLetter)
{
    answer = reply(scanBadSectors(bridge, partitionOf(bridge, driveLetter)));
}

void CZorHandle::RebuildMbr(std::string& answer, int32_t diskIndex)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxRebuildMbr, diskOf(bridge, diskIndex)));
}

void CZorHandle::ToggleWriteProtection(std::string& answer, const std::string& driveLetter)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxWriteProtection, partitionOf(bridge, driveLetter)));
}

void CZorHandle::AlignDiskTo4k(std::string& answer, int32_t diskIndex)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxAlign4k, diskOf(bridge, diskIndex)));
}

void CZorHandle::RepairWindowsBoot(std::string& answer)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxRepairWindowsBoot, QVariantMap()));
}

void CZorHandle::PasswordReset(std::string& answer)
{
    answer = reply(runToolBoxTask(bridge, ToolBoxPasswordReset, QVariantMap()));
}

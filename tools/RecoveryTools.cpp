// Tools for recovery, disk health, BitLocker and the toolbox.
#include "tools/HostPages.h"
#include "tools/HostRecords.h"
#include "tools/Reply.h"
#include "tools/ToolBox.h"
#include "tools/ToolBridge.h"
#include "tools/ZorHandle.h"

namespace {

const QString kDiskIndex = QStringLiteral("diskIndex");

// Disables the repair of damaged partitions, whose implementation is kept.
constexpr bool kRepairRawEnabled = false;

QVariantMap diskOf(const ToolBridge* bridge, int32_t diskIndex)
{
    return findDiskRecord(pagesOf(bridge), SelectForTask, diskIndex);
}

QVariantMap partitionOf(const ToolBridge* bridge, const std::string& driveLetter)
{
    return findPartitionRecord(pagesOf(bridge), QString::fromStdString(driveLetter), SelectForTask);
}

// A virtual disk has no surface to test. It is rejected before any guide is closed.
bool scanBadSectors(const ToolBridge* bridge, const QVariantMap& record)
{
    return !record.value(QStringLiteral("isVirtualDisk")).toBool() &&
           runToolBoxTask(bridge, ToolBoxBadSectors, record);
}

} // namespace

void CZorHandle::RecoverLostPartition(std::string& answer, int32_t diskIndex)
{
    answer = reply(false);
    if (bridge == nullptr)
        return;
    ResetParams();
    setParam(kDiskIndex, QVariant(diskIndex));
    answer = reply(bridge->pages.doPrFunForAI(true, paramsCopy()));
}

void CZorHandle::RepairRawOrDamagedPartition(std::string& answer, const std::string& driveLetter)
{
    answer = reply(false);
    if (!kRepairRawEnabled || bridge == nullptr)
        return;
    answer = reply(true);
    ResetParams();
    setParam(QStringLiteral("driveLetter"), driveLetter);
    if (bridge->pages.doPrFunForAI(false, paramsCopy()))
        answer = reply(true);
}

void CZorHandle::DiskHealthCheck(std::string& answer, int32_t diskIndex)
{
    answer = reply(bridge != nullptr && bridge->pages.openDiskHealth(diskIndex));
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

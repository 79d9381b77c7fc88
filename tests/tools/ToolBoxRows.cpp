// The tools of the host's main object: boot media, recovery, health and the toolbox.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"

namespace {

const QString kCloseGuide = "window.closeGuide@app? list[invalid]";
const QString kLookUp = "deviceMgr.disks@caller? list[int:3,bool:false]";
const QString kPreOsQuestion = "bootablemedia.isAlreadyEnable@app? list[]";

QString mediaQuestion(const QString& info)
{
    return "__zormain.createBootMediaEnabled@app? list[" + info + "]";
}

QString mediaOrder(const QString& info)
{
    return "__zormain.dobmfunction@app list[" + info + "]";
}

QString toolBox(int index, const QString& info)
{
    return QStringLiteral("__zormain.doToolBox@app? list[int:%1,%2]").arg(index).arg(info);
}

ToolRow queued(const char* method, std::function<QString(CZorHandle&)> call, const QStringList& calls)
{
    return {method, std::move(call), answers::queued, calls};
}

ToolRow askedMedia(const char* method, std::function<QString(CZorHandle&)> call, const QString& info)
{
    return queued(method, std::move(call), {kCloseGuide, mediaQuestion(info), mediaOrder(info)});
}

ToolRow recordTask(const char* method, std::function<QString(CZorHandle&)> call, int index,
                   const QString& record)
{
    return queued(method, std::move(call), {kLookUp, kCloseGuide, toolBox(index, record)});
}

std::vector<ToolRow> mediaRows()
{
    return {
        askedMedia("CreateBootableISO", tool(&CZorHandle::CreateBootableISO),
                   "map{createToFile=bool:true,isBurn=bool:false}"),
        askedMedia("CreateBootableUsbByDisk", tool(&CZorHandle::CreateBootableUsbByDisk, -1),
                   "map{diskIndex=int:-1,isBurn=bool:false}"),
        askedMedia("CreateBootableUsbByDriveLetter", tool(&CZorHandle::CreateBootableUsbByDriveLetter, "k:"),
                   "map{isBurn=bool:false,usbDriveLetter=QString:\"K\"}"),
        queued("CreateWindowsInstallerMedia", tool(&CZorHandle::CreateWindowsInstallerMedia),
               {kCloseGuide, mediaOrder("map{isBurn=bool:true}")}),
        // The environment is not installed, so only the first of the two succeeds.
        queued("InstallAndEnablePreOS", tool(&CZorHandle::InstallAndEnablePreOS),
               {kPreOsQuestion, kCloseGuide, mediaOrder("map{isInstallPreOs=bool:true}")}),
        {"DisablePreOS", tool(&CZorHandle::DisablePreOS), answers::notValid, {kPreOsQuestion}},
    };
}

std::vector<ToolRow> recoveryRows()
{
    const QString info = "map{diskIndex=int:9,isPartRecov=bool:true}";
    return {
        {"RecoverLostPartition",
         tool(&CZorHandle::RecoverLostPartition, 9),
         answers::queued,
         {kCloseGuide, "partitionrecovery.isDiskIndexValid@app? list[" + info + "]",
          "__zormain.doprfunction@app list[" + info + "]"},
         "partitionrecovery."},
        {"RepairRawOrDamagedPartition",
         tool(&CZorHandle::RepairRawOrDamagedPartition, "E"),
         answers::notValid,
         {}},
        queued("DiskHealthCheck", tool(&CZorHandle::DiskHealthCheck, 1),
               {kCloseGuide, "__zormain.opendiskhealth@app list[map{diskIndex=int:1}]"}),
    };
}

std::vector<ToolRow> boxRows()
{
    const QString none = "map{}";
    return {
        queued("PasswordReset", tool(&CZorHandle::PasswordReset),
               {kCloseGuide, "__zormain.passwordResetEnabled@app? list[]", toolBox(1, none)}),
        queued("RepairWindowsBoot", tool(&CZorHandle::RepairWindowsBoot),
               {kCloseGuide, "__zormain.bootrepairEnabled@app? list[]", toolBox(2, none)}),
        queued("Windows11UpgradeCheck", tool(&CZorHandle::Windows11UpgradeCheck),
               {"partitionmanager.isWin11CheckerEnable@app? list[]", kCloseGuide, toolBox(7, none)}),
        recordTask("ToggleWriteProtection", tool(&CZorHandle::ToggleWriteProtection, "e"), 3,
                   machine::partitionE),
        recordTask("RebuildMbr", tool(&CZorHandle::RebuildMbr, 1), 4, machine::disk1),
        recordTask("AlignDiskTo4k", tool(&CZorHandle::AlignDiskTo4k, 1), 5, machine::disk1),
        recordTask("ScanDiskBadSectors", tool(&CZorHandle::ScanDiskBadSectors, 1), 9, machine::disk1),
        recordTask("ScanPartitionBadSectors", tool(&CZorHandle::ScanPartitionBadSectors, "E:"), 9,
                   machine::partitionE),
        recordTask("RetrieveBitLockerRecoveryKey", tool(&CZorHandle::RetrieveBitLockerRecoveryKey, "e"), 10,
                   machine::partitionE),
        recordTask("CheckPartitionFileSystem", tool(&CZorHandle::CheckPartitionFileSystem, "e"), 12,
                   machine::partitionE),
    };
}

} // namespace

std::vector<ToolRow> toolBoxRows()
{
    std::vector<ToolRow> rows = mediaRows();
    for (const auto& group : {recoveryRows(), boxRows()})
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}

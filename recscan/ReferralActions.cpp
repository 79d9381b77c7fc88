// The actions of accepted referral recommendations.
#include "recscan/RecScanThread.h"

#include "platform/Platform.h"
#include "recscan/RecActions.h"
#include "service/ZorHandle.h"

#include <QtCore/QByteArray>

#include <map>

namespace {

using Action = void (*)(CZorHandle& tools, std::string& answer);

// -1 and an empty letter leave the choice of the target to the host.
const std::map<QByteArray, Action>& referralActions()
{
    static const std::map<QByteArray, Action> actions = {
        {"align_disk_to_4k", [](CZorHandle& t, std::string& a) { t.AlignDiskTo4k(a, -1); }},
        {"burn_windows_iso", [](CZorHandle& t, std::string& a) { t.CreateWindowsInstallerMedia(a); }},
        {"create_windows_pe_image", [](CZorHandle& t, std::string& a) { t.CreateBootableUsbByDisk(a, -1); }},
        {"get_bitlocker_recovery_key",
         [](CZorHandle& t, std::string& a) { t.RetrieveBitLockerRecoveryKey(a, std::string()); }},
        {"password_reset", [](CZorHandle& t, std::string& a) { t.PasswordReset(a); }},
        {"rebuild_mbr", [](CZorHandle& t, std::string& a) { t.RebuildMbr(a, -1); }},
        {"recover_partition", [](CZorHandle& t, std::string& a) { t.RecoverLostPartition(a, -1); }},
        {"repair_raw_partition",
         [](CZorHandle& t, std::string& a) { t.RepairRawOrDamagedPartition(a, std::string()); }},
        {"repair_windows_boot", [](CZorHandle& t, std::string& a) { t.RepairWindowsBoot(a); }},
        {"scan_bad_sectors", [](CZorHandle& t, std::string& a) { t.ScanDiskBadSectors(a, -1); }},
        {"toggle_write_protection",
         [](CZorHandle& t, std::string& a) { t.ToggleWriteProtection(a, std::string()); }},
        {"bitlocker_manager",
         [](CZorHandle& t, std::string& a) {
             t.ShowBitLockerStatus(a, QString::fromLocal8Bit(upperSystemDirectory()).toStdString());
         }},
        {"disk_health", [](CZorHandle& t, std::string& a) { t.DiskHealthCheck(a, -1); }},
        {"migrate_data", [](CZorHandle& t, std::string& a) { t.MigrateSystemDriveData(a); }},
        {"migrate_os",
         [](CZorHandle& t, std::string& a) { t.CloneOSDataFromPartition(a, -1, std::string()); }},
        // No record that is accepted names these: their work is the agent's.
        {"clone_disk", [](CZorHandle& t, std::string& a) { t.CloneDiskToDisk(a, -1, -1); }},
        {"clone_os_data", [](CZorHandle& t, std::string& a) { t.CloneOSDataFromDisk(a, -1, -1); }},
        {"clone_partition",
         [](CZorHandle& t, std::string& a) { t.ClonePartitionToPartition(a, std::string(), std::string()); }},
        {"convert_disk_to_gpt", [](CZorHandle& t, std::string& a) { t.ConvertDiskToGpt(a, -1); }},
        {"enable_secure_boot", [](CZorHandle& t, std::string& a) { t.ConvertDiskToGpt(a, -1); }},
        {"convert_disk_to_mbr", [](CZorHandle& t, std::string& a) { t.ConvertDiskToMbr(a, -1); }},
        {"convert_disk_to_basic", [](CZorHandle& t, std::string& a) { t.ConvertDiskToBasic(a, -1); }},
        {"convert_disk_to_dynamic", [](CZorHandle& t, std::string& a) { t.ConvertDiskToDynamic(a, -1); }}};
    return actions;
}

} // namespace

void runReferralAction(CZorHandle& tools, const QByteArray& funKey)
{
    const auto action = referralActions().find(funKey);
    // Nobody is told what the tool answers.
    std::string answer;
    if (action != referralActions().end())
        action->second(tools, answer);
}

void RecScanThread::performReferralFun(const QString& funKey)
{
    runReferralAction(*toolHandler, funKey.toUtf8());
}

#include "recscan/RecAction.h"

#include "platform/Platform.h"

#include "ZORNativePlugin.h"

#include <QtCore/QByteArray>

#include <map>

namespace {

using Action = void (*)(ZORNativePluginIf& tools, std::string& answer);

// A disk index of -1 or an empty letter lets the host choose the target.
const std::map<QByteArray, Action>& referralActions()
{
    static const std::map<QByteArray, Action> actions = {
        {"align_disk_to_4k", [](ZORNativePluginIf& t, std::string& a) { t.AlignDiskTo4k(a, -1); }},
        {"burn_windows_iso", [](ZORNativePluginIf& t, std::string& a) { t.CreateWindowsInstallerMedia(a); }},
        {"create_windows_pe_image",
         [](ZORNativePluginIf& t, std::string& a) { t.CreateBootableUsbByDisk(a, -1); }},
        {"get_bitlocker_recovery_key",
         [](ZORNativePluginIf& t, std::string& a) { t.RetrieveBitLockerRecoveryKey(a, std::string()); }},
        {"password_reset", [](ZORNativePluginIf& t, std::string& a) { t.PasswordReset(a); }},
        {"rebuild_mbr", [](ZORNativePluginIf& t, std::string& a) { t.RebuildMbr(a, -1); }},
        {"recover_partition", [](ZORNativePluginIf& t, std::string& a) { t.RecoverLostPartition(a, -1); }},
        {"repair_raw_partition",
         [](ZORNativePluginIf& t, std::string& a) { t.RepairRawOrDamagedPartition(a, std::string()); }},
        {"repair_windows_boot", [](ZORNativePluginIf& t, std::string& a) { t.RepairWindowsBoot(a); }},
        {"scan_bad_sectors", [](ZORNativePluginIf& t, std::string& a) { t.ScanDiskBadSectors(a, -1); }},
        {"toggle_write_protection",
         [](ZORNativePluginIf& t, std::string& a) { t.ToggleWriteProtection(a, std::string()); }},
        {"bitlocker_manager",
         [](ZORNativePluginIf& t, std::string& a) {
             t.ShowBitLockerStatus(a, QString::fromLocal8Bit(upperSystemDirectory()).toStdString());
         }},
        {"disk_health", [](ZORNativePluginIf& t, std::string& a) { t.DiskHealthCheck(a, -1); }},
        {"migrate_data", [](ZORNativePluginIf& t, std::string& a) { t.MigrateSystemDriveData(a); }},
        {"migrate_os",
         [](ZORNativePluginIf& t, std::string& a) { t.CloneOSDataFromPartition(a, -1, std::string()); }},
        // The agent does the work of these functions. Their recommendations have an empty key, so no answer
        // selects them.
        {"clone_disk", [](ZORNativePluginIf& t, std::string& a) { t.CloneDiskToDisk(a, -1, -1); }},
        {"clone_os_data", [](ZORNativePluginIf& t, std::string& a) { t.CloneOSDataFromDisk(a, -1, -1); }},
        {"clone_partition",
         [](ZORNativePluginIf& t,
            std::string& a) { t.ClonePartitionToPartition(a, std::string(), std::string()); }},
        {"convert_disk_to_gpt", [](ZORNativePluginIf& t, std::string& a) { t.ConvertDiskToGpt(a, -1); }},
        {"enable_secure_boot", [](ZORNativePluginIf& t, std::string& a) { t.ConvertDiskToGpt(a, -1); }},
        {"convert_disk_to_mbr", [](ZORNativePluginIf& t, std::string& a) { t.ConvertDiskToMbr(a, -1); }},
        {"convert_disk_to_basic", [](ZORNativePluginIf& t, std::string& a) { t.ConvertDiskToBasic(a, -1); }},
        {"convert_disk_to_dynamic",
         [](ZORNativePluginIf& t, std::string& a) { t.ConvertDiskToDynamic(a, -1); }}};
    return actions;
}

} // namespace

void runReferralAction(ZORNativePluginIf& tools, const QByteArray& funKey)
{
    const auto action = referralActions().find(funKey);
    std::string answer;
    if (action != referralActions().end())
        action->second(tools, answer);
}

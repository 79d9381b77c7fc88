// The functions that real disks do not have, with the reasons that the user reads.
#include "host/machine/Functions.h"
#include "host/udisks/OrderRules.h"

#include <map>

namespace host {

namespace {

using Reasons = std::map<Function, const char*>;

const Reasons& partitionReasons()
{
    static const Reasons reasons = {
        {Function::MergePartitions,
         QT_TRANSLATE_NOOP("Sandbox",
                           "Drives of real disks cannot be merged: no safe tool moves the files of one drive "
                           "to the other.")},
        {Function::ConvertPartitionToPrimary,
         QT_TRANSLATE_NOOP("Sandbox",
                           "No safe tool changes a logical drive of a real disk to a primary drive.")},
        {Function::ConvertPartitionToLogical,
         QT_TRANSLATE_NOOP("Sandbox",
                           "No safe tool changes a primary drive of a real disk to a logical drive.")},
        {Function::ChangePartitionClusterSize,
         QT_TRANSLATE_NOOP(
             "Sandbox",
             "No safe tool changes the cluster size of a drive on a real disk and keeps its files.")},
        {Function::ConvertPartitionToNtfs,
         QT_TRANSLATE_NOOP("Sandbox",
                           "No safe tool converts a drive of a real disk to NTFS and keeps its files.")},
        {Function::ConvertPartitionToFat,
         QT_TRANSLATE_NOOP("Sandbox",
                           "No safe tool converts a drive of a real disk to FAT and keeps its files.")},
        {Function::ConvertPartitionToExfat,
         QT_TRANSLATE_NOOP("Sandbox",
                           "No safe tool converts a drive of a real disk to exFAT and keeps its files.")},
    };
    return reasons;
}

const Reasons& diskReasons()
{
    static const Reasons reasons = {
        {Function::MigrateSystemDriveData,
         QT_TRANSLATE_NOOP("Sandbox", "No safe tool moves the data of a system drive to another real disk.")},
        {Function::DiskBringOnline,
         QT_TRANSLATE_NOOP("Sandbox", "Real disks are always online under this operating system.")},
        {Function::ConvertDiskToBasic,
         QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot convert dynamic disks to basic disks.")},
        {Function::ConvertDiskToDynamic,
         QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot create dynamic disks.")},
        {Function::CreateBootMedia,
         QT_TRANSLATE_NOOP("Sandbox", "The host has no system files for a real boot medium.")},
        {Function::InstallPreOs,
         QT_TRANSLATE_NOOP("Sandbox", "The host has no pre-OS environment to install on a real disk.")},
        {Function::DisablePreOs,
         QT_TRANSLATE_NOOP("Sandbox", "The host cannot remove a pre-OS environment from a real disk.")},
        {Function::RecoverLostPartition,
         QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot search real disks for lost partitions.")},
        {Function::ToggleWriteProtection,
         QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot change the write protection of a real disk.")},
        {Function::RebuildMbr,
         QT_TRANSLATE_NOOP("Sandbox", "The disk service cannot write the boot code of a real disk.")},
        {Function::AlignDiskTo4k,
         QT_TRANSLATE_NOOP("Sandbox",
                           "Real disks cannot be aligned: no safe tool moves the start of a partition.")},
        {Function::CloneSystem,
         QT_TRANSLATE_NOOP("Sandbox",
                           "The host does not know which partitions of a real disk belong to an operating "
                           "system.")},
    };
    return reasons;
}

} // namespace

Rejection unavailableRejection(int function)
{
    for (const Reasons* reasons : {&partitionReasons(), &diskReasons()}) {
        const auto found = reasons->find(static_cast<Function>(function));
        if (found != reasons->end())
            return Text(found->second);
    }
    return kAccepted;
}

} // namespace host

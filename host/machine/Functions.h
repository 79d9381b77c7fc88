#pragma once

#include <QtCore/QString>

namespace host {

/// The functions of the partition page, by the numbers under which an agent's orders arrive; and from 1000 on
/// the work of the host's own guides, which only its user begins.
enum class Function : int {
    OpenDiskLayoutEditor = 0,
    SmartSpaceAdjustment = 1,
    DeleteAllPartitions = 2,
    InitializeDiskToMbr = 5,
    InitializeDiskToGpt = 6,
    WipeDisk = 7,
    ResizePartition = 14,
    FormatPartition = 15,
    DeletePartition = 16,
    SplitPartition = 17,
    CreatePartition = 18,
    ShowBitLockerStatus = 19,
    MergePartitions = 20,
    OpenPartitionLayoutEditor = 21,
    AllocateSpace = 22,
    WipePartition = 23,
    ConvertPartitionToPrimary = 24,
    ConvertPartitionToLogical = 25,
    ChangePartitionClusterSize = 29,
    ChangePartitionDriveLetter = 30,
    ChangePartitionLabel = 31,
    SetPartitionActive = 33,
    SetPartitionHidden = 34,
    MigrateSystemDriveData = 39,
    AutoCreatePartitions = 43,
    DiskBringOnline = 45,
    EjectUsb = 46,
    LowLevelFormat = 47,

    CloneDisk = 1000,
    CloneSystem,
    ClonePartition,
    ConvertDiskToGpt,
    ConvertDiskToMbr,
    ConvertDiskToBasic,
    ConvertDiskToDynamic,
    ConvertPartitionToNtfs,
    ConvertPartitionToFat,
    ConvertPartitionToExfat,
    CreateBootMedia,
    InstallPreOs,
    DisablePreOs,
    RecoverLostPartition,
    ToggleWriteProtection,
    RebuildMbr,
    AlignDiskTo4k,
    ScanBadSectors,
    CheckFileSystem
};

/// The function's name for the log, empty for a number that is none.
QString functionName(int number);
/// The function of that name in any case; -1 if there is none.
int functionNumber(const QString& name);

} // namespace host

#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace host {

Q_NAMESPACE

/// The functions of the partition page, with the numbers in an agent's orders; and from 1000 on the work of
/// the host's own guides, which only the user starts. The names appear in the log, the transcript and --fail.
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
Q_ENUM_NS(Function)

/// Empty for an unknown number.
QString functionName(int number);
/// Case-insensitive; -1 for an unknown name.
int functionNumber(const QString& name);
/// The functions that run as tasks.
QStringList taskNames();

} // namespace host

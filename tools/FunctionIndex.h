#pragma once

/// Functions of the host's partition page, by the host's numbers. The library sends no other numbers.
enum FunctionIndex : int {
    FunOpenDiskLayoutEditor = 0,
    FunSmartSpaceAdjustment = 1,
    FunDeleteAllPartitions = 2,
    FunInitializeDiskToMbr = 5,
    FunInitializeDiskToGpt = 6,
    FunWipeDisk = 7,
    FunResizePartition = 14,
    FunFormatPartition = 15,
    FunDeletePartition = 16,
    FunSplitPartition = 17,
    FunCreatePartition = 18,
    FunShowBitLockerStatus = 19,
    FunMergePartitions = 20,
    FunOpenPartitionLayoutEditor = 21,
    FunAllocateSpace = 22,
    FunWipePartition = 23,
    FunConvertPartitionToPrimary = 24,
    FunConvertPartitionToLogical = 25,
    FunChangePartitionClusterSize = 29,
    FunChangePartitionDriveLetter = 30,
    FunChangePartitionLabel = 31,
    FunSetPartitionActive = 33,
    FunSetPartitionHidden = 34,
    FunMigrateSystemDriveData = 39,
    FunAutoCreatePartitions = 43,
    FunDiskBringOnline = 45,
    FunEjectUsb = 46,
    FunLowLevelFormat = 47
};

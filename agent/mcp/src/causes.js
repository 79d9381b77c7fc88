import { Call, firstOf } from './checks/call.js';
import { diskKnown, driveKnown, erasableDisk, erasableDrive, hasTable, positivePasses } from './checks/conditions.js';
import * as disks from './checks/disks.js';
import * as guides from './checks/guides.js';
import * as partitions from './checks/partitions.js';

/** @import { PlainRecord, Tool } from './types.js' */
/** @import { Facts } from './inventory.js' */
/** @import { Cause, Check } from './checks/call.js' */

/**
 * For each tool, the checks of what the inventory shows, in the order in which an application rejects a call. A tool
 * that is absent depends only on facts that the inventory does not contain, so its rejections have no known cause.
 * @type {Record<string, Check>}
 */
export const checks = {
    ShowBitLockerStatus: driveKnown,
    RetrieveBitLockerRecoveryKey: guides.recoveryKey,
    CreateBootableUsbByDisk: guides.stickByDisk,
    CreateBootableUsbByDriveLetter: guides.stickByDrive,
    CloneOSDataFromCurrent: guides.cloneCurrent,
    CloneOSDataFromDisk: guides.cloneSystemDisk,
    CloneOSDataFromPartition: guides.cloneSystemDrive,
    CloneDiskToDisk: guides.cloneDisk,
    ClonePartitionToPartition: guides.clonePartition,
    ClonePartitionToDisk: guides.clonePartitionToDisk,
    ConvertDiskToGpt: guides.toGpt,
    ConvertDiskToMbr: guides.toMbr,
    ConvertDiskToDynamic: guides.toDynamic,
    ConvertDiskToBasic: guides.toBasic,
    ConvertPartitionToPrimary: partitions.toPrimary,
    ConvertPartitionToLogical: partitions.toLogical,
    ConvertPartitionToFat: guides.toFileSystem('FAT32'),
    ConvertPartitionToExfat: guides.toFileSystem('exFAT'),
    ConvertPartitionToNtfs: guides.toFileSystem('NTFS'),
    SmartSpaceAdjustment: partitions.smartAdjust,
    OpenPartitionLayoutEditor: driveKnown,
    OpenDiskLayoutEditor: diskKnown,
    DeleteAllPartitions: firstOf(erasableDisk, hasTable),
    InitializeDiskToGpt: disks.initialize,
    InitializeDiskToMbr: disks.initialize,
    WipeDisk: firstOf(erasableDisk, positivePasses),
    FormatPartition: partitions.format,
    DeletePartition: erasableDrive,
    SplitPartition: partitions.split,
    CreatePartition: partitions.create,
    MergePartitions: partitions.merge,
    ResizePartition: partitions.resize,
    ResizePartitionRelative: partitions.resizeRelative,
    AllocateSpaceFromPartitionToNewPartition: partitions.allocateNew,
    AllocateSpaceFromPartitionToPartition: partitions.allocate,
    WipePartition: firstOf(erasableDrive, positivePasses),
    ChangePartitionClusterSize: partitions.changeCluster,
    ChangePartitionDriveLetter: partitions.changeLetter,
    ChangePartitionLabel: partitions.changeLabel,
    SetPartitionHidden: partitions.setHidden,
    SetPartitionActive: partitions.setActive,
    CheckPartitionFileSystem: driveKnown,
    AutoCreatePartitions: disks.autoCreate,
    DiskBringOnline: disks.bringOnline,
    EjectUsb: disks.eject,
    DiskHealthCheck: guides.health,
    MigrateSystemDriveData: disks.migrate,
    LowLevelFormat: erasableDisk,
    RecoverLostPartition: guides.readableDisk,
    RepairRawOrDamagedPartition: guides.disabled,
    ScanDiskBadSectors: guides.scanDisk,
    ScanPartitionBadSectors: guides.scanDrive,
    RebuildMbr: guides.rebuildMbr,
    ToggleWriteProtection: driveKnown,
    AlignDiskTo4k: guides.align,
};

/**
 * The cause for which the application rejects a call, or its guide cannot continue; undefined if the inventory shows
 * none.
 * @param {Tool} tool
 * @param {PlainRecord} args
 * @param {Facts} facts the inventory, read immediately before
 * @returns {Cause | undefined}
 */
export const causeOf = (tool, args, facts) => checks[tool.name]?.(new Call(tool, args, facts));

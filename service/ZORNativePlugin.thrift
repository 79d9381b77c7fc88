/*
 * The service through which an agent controls the disk and partition manager, the host.
 *
 * ListAllDisks, ListPartitionsOnDisk, GetPartitionInfo and GetAllPartitionInfo read the inventory and need one call. All
 * other tools act and need three: PreProcessing; the tool, if allow is true; PostProcessing with the tool's answer.
 *
 * A tool that acts returns "Task Queued" if the host accepted the order. The work may still be waiting or fail later; the
 * inventory shows its effect. It returns "Task NotValid", without a reason, if the host received no order. The clone tools
 * also return a sentence that names an unsuitable disk, or an empty string if the host has no clone page. A guide is a
 * dialog of the host that the user completes.
 *
 * Sizes are in bytes unless a comment states another unit. Strings are UTF-8. A missing field, or one of another type, is
 * read as false, 0 or empty. Unless a comment states otherwise, arguments reach the host unchanged. A drive letter is
 * - checked (the default): if it does not begin with A to Z in either case, the tool returns "Task NotValid";
 * - looked up: its first character, in either case, selects a partition of the host, and an unknown letter is accepted;
 * - reduced: the host receives its first character in upper case.
 */

/** Answer of a tool that acts: the host accepted the order. The work may still be waiting or fail later. */
const string TASK_QUEUED = "Task Queued"

/** Answer of a tool that acts: the host received no order. */
const string TASK_NOT_VALID = "Task NotValid"

/**
 * reasons of PreProcessing while a dialog of the host is open, and for 2000 ms after PostProcessing or the service's
 * start.
 */
const string OPERATION_IN_PROGRESS = "An operation is currently in progress, please wait a few moments and try again. If you need further assistance, please let me know!"

/** reasons of PreProcessing while the host is executing tasks. */
const string TASKS_IN_EXECUTION = "One or more tasks are currently in execution, please wait a few moments and try again. If you need further assistance, please let me know!"

/** A disk of the inventory. */
struct DiskInfo {
    /** Interface of the disk, for example "SATA" or "NVMe". */
    1: string diskLabel
    /** Disk number, the argument of the tools. */
    2: i32 diskIndex
    /** Number of partitions and unallocated regions. */
    3: i32 partitionCount
    /** Capacity in bytes. */
    4: i64 totalCapacity
    /** totalCapacity as a display string, for example "465.76 GB". */
    5: string displayTotalCapacity
    /** Bytes in use. */
    6: i64 usedSize
    /** usedSize as a display string. */
    7: string displayUsedSize
    /** totalCapacity minus usedSize in bytes; can be negative. */
    8: i64 availableSpace
    /** availableSpace as a display string; "0 Byte" if it is not positive. */
    9: string displayAvailableSpace
    /** The disk has no partition table. */
    10: bool isUninitialized
    /** GPT disk. */
    11: bool isGpt
    /** Not GPT; also true for a disk without a partition table. */
    12: bool isMbr
    /** Member of a storage space. */
    13: bool isStorageSpace
    /** Dynamic disk. */
    14: bool isDynamic
    /** Read-only. */
    15: bool isReadOnly
    /** Offline. */
    16: bool isOffline
    /** Marked as faulty. */
    17: bool isBadDisk
    /** Write-protected. */
    18: bool isWriteProtected
    /** Removable. */
    19: bool isRemovable
    /** Virtual hard disk file. */
    20: bool isVhd
    /** VMD device. */
    21: bool isVmd
    /** Virtual disk. */
    22: bool isVirtualDisk
    /** Attached by USB. */
    23: bool isUsb
    /** Solid-state disk. */
    24: bool isSsd
    /** Contains a BitLocker volume. */
    25: bool existsBitLocker
    /** Low on space. */
    26: bool isLowSpace
    /** A partition is not aligned to 4 KiB; false if the host could not check. */
    27: bool not4kAligned
    /** Number of empty partitions. */
    28: i32 emptyPartitionCount
    /** Serial number of the device. */
    29: string serialNumber
}

/** A partition or unallocated region of the inventory. */
struct PartitionInfo {
    /** Unallocated region, not a partition. */
    1: bool isUnallocated
    /** Disk number. */
    2: i32 diskIndex
    /** Index on the disk. */
    3: i32 partitionIndex
    /** Capacity in bytes. */
    4: i64 rawCapacity
    /** rawCapacity as a display string. */
    5: string displayRawCapacity
    /** Size of the whole dynamic volume in bytes. */
    6: i64 dynamicVolumeSize
    /** dynamicVolumeSize as a display string. */
    7: string displayDynamicVolumeSize
    /** Bytes in use. */
    8: i64 usedSize
    /** usedSize as a display string. */
    9: string displayUsedSize
    /** rawCapacity minus usedSize in bytes; can be negative. */
    10: i64 freeSize
    /** freeSize as a display string; "0 Byte" if it is not positive. */
    11: string displayFreeSize
    /** Offset of the first byte from the start of the disk. */
    12: i64 startingOffset
    /** Bytes per sector. */
    13: i32 sectorSize
    /** Bytes per cluster. */
    14: i32 clusterSize
    /** Sector number of the boot record. */
    15: i64 dbrStartSector
    /** First sector number. */
    16: i64 startSector
    /** Last sector number. */
    17: i64 endSector
    /** Without a file system. */
    18: bool isUnformatted
    /** The file system is unreadable; false if the host could not check. */
    19: bool isRawPartition
    /** Encrypted with BitLocker. */
    20: bool isBitlockerEncrypted
    /** Read-only. */
    21: bool isReadOnly
    /** Hidden. */
    22: bool isHidden
    /** Active. */
    23: bool isActive
    /** This machine starts from the partition. */
    24: bool isCurrentSystemPartition
    /** Contains the running Windows. */
    25: bool isCurrentBootPartition
    /** Contains the boot partition. */
    26: bool isBootPartitionContainer
    /** Primary. */
    27: bool isPrimary
    /** Not primary. */
    28: bool isLogical
    /** On a GPT disk. */
    29: bool isGpt
    /** Not on a GPT disk. */
    30: bool isMbr
    /** On a storage space. */
    31: bool isStorageSpace
    /** Dynamic volume. */
    32: bool isDynamic
    /** Removable. */
    33: bool isRemovable
    /** Marked as faulty. */
    34: bool isBadPartition
    /** Can only be copied sector by sector. */
    35: bool requiresSectorBySector
    /** Boot partition of an offline system. */
    36: bool isOfflineBootPartition
    /** Low on space. */
    37: bool isLowSpace
    /** GPT reserved partition. */
    38: bool gptReserved
    /** EFI system partition. */
    39: bool gptEfi
    /** Recovery partition. */
    40: bool gptRecovery
    /** GUID of the partition. */
    41: string partitionGuid
    /** "unencrypted", "encrypted", "encryption unlocked", "encryption not unlocked", or empty if unknown. */
    42: string bitlockerState
    /** Drive letter as the host writes it; empty or "*" if the partition has no letter. */
    43: string driveLetter
    /** Volume label. */
    44: string label
    /** Name of the file system. */
    45: string fileSystemType
    /** "TYPE_UNKNOWN", "BASIC", "SIMPLE", "SPAN", "STRIPE", "MIRROR", "RAID", "SIMPLE_EX", or empty if unknown. */
    46: string dynamicVolumeType
}

/** Answer of the gate. */
struct TaskInfo {
    /** The tool may be called. */
    1: bool allow
    /** Reason for the rejection, for the user; empty if the call is allowed. */
    2: string reasons
}

/** Binary protocol over buffered TCP; at most three connections at a time. */
service ZORNativePlugin {
    /** Confirms that the service is reachable. Always returns true and has no other effect. */
    bool Init()

    /**
     * Ends a tool call. Returns true only for exactly "Task Queued". PreProcessing rejects calls for the next 2000 ms.
     */
    bool PostProcessing(
        /** The tool's answer, unchanged. */
        1: string result)

    /**
     * Asks whether a tool may be called now. Call it before each tool that acts, and call the tool only if allow is
     * true.
     */
    TaskInfo PreProcessing(
        /** Description of the call; passed to the host, which may show it. */
        1: string toolCalls)

    /** Shows the BitLocker state of a partition to the user. The state is not returned. */
    string ShowBitLockerStatus(
        /** Drive letter. */
        1: string driveLetter)

    /** Opens the search for a BitLocker recovery key. The key is not returned. */
    string RetrieveBitLockerRecoveryKey(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Opens the function that creates a rescue ISO file. */
    string CreateBootableISO()

    /** Opens the function that creates a rescue stick on a USB disk, which is overwritten. */
    string CreateBootableUsbByDisk(
        /** Disk number of the stick; -1 leaves the choice to the host. */
        1: i32 diskIndex)

    /** Opens the function that creates a rescue stick on the USB disk of a drive, which is overwritten. */
    string CreateBootableUsbByDriveLetter(
        /** Drive letter of the stick, reduced; can be empty, and the host then decides. */
        1: string driveLetter)

    /** Installs and enables the pre-OS environment; rejected if it is already enabled. */
    string InstallAndEnablePreOS()

    /** Disables the pre-OS environment; rejected if it is not enabled. */
    string DisablePreOS()

    /** Opens the function that writes a Windows installer image to a medium. */
    string CreateWindowsInstallerMedia()

    /** Opens the clone guide with the running system as the source. The clone overwrites the target disk. */
    string CloneOSDataFromCurrent(
        /** Number of the disk that is overwritten. */
        1: i32 targetDiskIndex)

    /** Opens the clone guide with the system of a disk as the source. The clone overwrites the target disk. */
    string CloneOSDataFromDisk(
        /** Number of the disk that is overwritten. */
        1: i32 targetDiskIndex,
        /**
         * Number of the disk that contains the running system; -1 leaves the choice to the guide. Any other disk is
         * rejected with a sentence.
         */
        2: i32 osDiskIndex)

    /** Opens the clone guide with the system on a partition as the source. The clone overwrites the target disk. */
    string CloneOSDataFromPartition(
        /** Number of the disk that is overwritten. */
        1: i32 targetDiskIndex,
        /** Drive letter of the system, looked up. */
        2: string osDriveLetter)

    /** Opens the clone guide for a whole disk. The clone overwrites the target disk. */
    string CloneDiskToDisk(
        /** Number of the disk that is read. */
        1: i32 sourceDiskIndex,
        /** Number of the disk that is overwritten. */
        2: i32 destDiskIndex)

    /** Opens the clone guide for a partition. The clone overwrites the target partition. */
    string ClonePartitionToPartition(
        /** Drive letter of the partition that is read, looked up. */
        1: string sourceDriveLetter,
        /** Drive letter of the partition that is overwritten, looked up. */
        2: string destDriveLetter)

    /**
     * Opens the clone guide for a partition and a target disk. The clone overwrites the disk's first unallocated region
     * after its first entry, otherwise its first entry; from the partition of the running system, the whole disk.
     */
    string ClonePartitionToDisk(
        /** Drive letter of the partition that is read, looked up. */
        1: string sourceDriveLetter,
        /** Number of the target disk. */
        2: i32 destDiskIndex)

    /** Opens the guide that converts an MBR disk to GPT. The tool does not check the disk. */
    string ConvertDiskToGpt(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the guide that converts a GPT disk to MBR. The tool does not check the disk. */
    string ConvertDiskToMbr(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the guide that converts a basic disk to dynamic. The tool does not check the disk. */
    string ConvertDiskToDynamic(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the guide that converts a dynamic disk to basic. The tool does not check the disk. */
    string ConvertDiskToBasic(
        /** Disk number. */
        1: i32 diskIndex)

    /** Converts a logical partition to primary. */
    string ConvertPartitionToPrimary(
        /** Drive letter. */
        1: string driveLetter)

    /** Converts a primary partition to logical. */
    string ConvertPartitionToLogical(
        /** Drive letter. */
        1: string driveLetter)

    /** Opens the guide that converts a partition to FAT32. The tool does not check the partition. */
    string ConvertPartitionToFat(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Opens the guide that converts a partition to exFAT. The tool does not check the partition. */
    string ConvertPartitionToExfat(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Opens the guide that converts a partition to NTFS. The tool does not check the partition. */
    string ConvertPartitionToNtfs(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Lists all disks, in the host's order. */
    list<DiskInfo> ListAllDisks()

    /** Lists the partitions and unallocated regions of a disk, in order; empty for an unknown disk. */
    list<PartitionInfo> ListPartitionsOnDisk(
        /** Disk number. */
        1: i32 diskIndex)

    /**
     * Returns one partition. An unknown letter returns a record of default values. A letter that is no longer in use
     * returns its last record.
     */
    PartitionInfo GetPartitionInfo(
        /** Drive letter; its first byte counts, in either case. */
        1: string driveLetter)

    /** Lists the partitions and unallocated regions of all disks. */
    list<PartitionInfo> GetAllPartitionInfo()

    /** Opens the smart layout page for a drive that is low on space. */
    string SmartSpaceAdjustment(
        /** Drive letter. */
        1: string driveLetter)

    /** Opens the layout editor for a partition. */
    string OpenPartitionLayoutEditor(
        /** Drive letter. */
        1: string driveLetter)

    /** Opens the layout editor for a disk. */
    string OpenDiskLayoutEditor(
        /** Disk number. */
        1: i32 diskIndex)

    /** Deletes all partitions of a disk. Their data is permanently lost. */
    string DeleteAllPartitions(
        /** Disk number. */
        1: i32 diskIndex)

    /** Creates an empty GPT partition table on a disk. All its data is permanently lost. */
    string InitializeDiskToGpt(
        /** Disk number. */
        1: i32 diskIndex)

    /** Creates an empty MBR partition table on a disk. All its data is permanently lost. */
    string InitializeDiskToMbr(
        /** Disk number. */
        1: i32 diskIndex)

    /** Overwrites a whole disk. All its data is permanently lost. */
    string WipeDisk(
        /** Disk number. */
        1: i32 diskIndex,
        /** Number of overwrite passes, 1 or more; the host decides the maximum. */
        2: i32 eraseCount)

    /** Formats a partition. Its data is permanently lost. */
    string FormatPartition(
        /** Drive letter. */
        1: string driveLetter,
        /** File system, for example "NTFS", "FAT32" or "exFAT"; the host decides which it accepts. */
        2: string fileSystem,
        /** Volume label; can be empty. */
        3: string label,
        /** Cluster size in bytes; 0 leaves the choice to the host. */
        4: i32 clusterSize,
        /** True for a quick format, false for a full one. */
        5: bool quickFormat)

    /** Deletes a partition. Its data is permanently lost. */
    string DeletePartition(
        /** Drive letter. */
        1: string driveLetter)

    /** Splits a partition in two. */
    string SplitPartition(
        /** Drive letter. */
        1: string driveLetter,
        /** Capacity of the new partition in bytes; the existing partition keeps the rest. */
        2: i64 newPartitionCapacity,
        /** File system of the new partition, as in FormatPartition. */
        3: string newPartitionFileSystem,
        /** Volume label of the new partition; can be empty. */
        4: string newPartitionLabel)

    /** Creates a partition in unallocated space. */
    string CreatePartition(
        /** Disk number. */
        1: i32 diskIndex,
        /** Capacity of the new partition in bytes. */
        2: i64 capacity,
        /** File system, as in FormatPartition. */
        3: string fileSystem,
        /** Volume label; can be empty. */
        4: string label,
        /** Index among the disk's unallocated regions, from 0; -1 selects the first that is large enough. */
        5: i32 unallocatedIndex)

    /**
     * Merges the second partition into the first. The second partition and its letter disappear; the host decides
     * whether its files are kept.
     */
    string MergePartitions(
        /** Drive letter of the partition that remains. */
        1: string driveLetter1,
        /** Drive letter of the partition that is merged into the first, reduced. */
        2: string driveLetter2)

    /** Changes the capacity of a partition. */
    string ResizePartition(
        /** Drive letter. */
        1: string driveLetter,
        /** New capacity of the whole partition in bytes. */
        2: i64 newPartitionCapacity)

    /** Changes the capacity of a partition by a number of bytes. */
    string ResizePartitionRelative(
        /** Drive letter. */
        1: string driveLetter,
        /** Bytes to add to the capacity in the inventory; a negative number shrinks the partition. */
        2: i64 sizeAdjustment)

    /** Shrinks a partition, the source, and creates a new one from the space. */
    string AllocateSpaceFromPartitionToNewPartition(
        /** Drive letter of the source, checked and reduced. */
        1: string sourceDriveLetter,
        /** Capacity of the new partition in bytes; the source shrinks by the same number. */
        2: i64 partitionCapacity,
        /** File system, as in FormatPartition. */
        3: string fileSystem,
        /** Volume label; can be empty. */
        4: string label)

    /** Moves space from a source to a target partition. */
    string AllocateSpaceFromPartitionToPartition(
        /** Drive letter of the source, checked and reduced. */
        1: string sourceDriveLetter,
        /** Drive letter of the target, reduced. */
        2: string targetDriveLetter,
        /** Bytes to move from the source to the target; despite its name, not a new capacity. */
        3: i64 newPartitionCapacity)

    /** Overwrites a partition. Its data is permanently lost. */
    string WipePartition(
        /** Drive letter. */
        1: string driveLetter,
        /** Number of overwrite passes, 1 or more; the host decides the maximum. */
        2: i32 eraseCount)

    /** Changes the cluster size of a partition. */
    string ChangePartitionClusterSize(
        /** Drive letter. */
        1: string driveLetter,
        /** New cluster size in bytes; 0 is invalid. */
        2: i32 newClusterSize)

    /** Changes the drive letter of a partition. */
    string ChangePartitionDriveLetter(
        /** Drive letter. */
        1: string driveLetter,
        /** New drive letter, reduced, with a colon appended. */
        2: string newDriveLetter)

    /** Changes the volume label of a partition. */
    string ChangePartitionLabel(
        /** Drive letter. */
        1: string driveLetter,
        /** New volume label; an empty string removes it. */
        2: string newLabel)

    /** Hides a partition. The service cannot show it again. */
    string SetPartitionHidden(
        /** Drive letter. */
        1: string driveLetter)

    /** Marks a partition as active. */
    string SetPartitionActive(
        /** Drive letter. */
        1: string driveLetter)

    /** Opens the file system check of a partition. */
    string CheckPartitionFileSystem(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Replaces all partitions of a disk with new ones. All its data is permanently lost. */
    string AutoCreatePartitions(
        /** Disk number. */
        1: i32 diskIndex,
        /** Number of partitions to create. */
        2: i32 partitionCount,
        /** Partition style, "GPT" or "MBR". */
        3: string GptOrMbr)

    /** Brings an offline disk online. */
    string DiskBringOnline(
        /** Disk number. */
        1: i32 diskIndex)

    /** Ejects the USB disk of a drive. */
    string EjectUsb(
        /** Drive letter. */
        1: string driveLetter)

    /** Opens the health page of a disk. */
    string DiskHealthCheck(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the page that moves applications and data off the system drive. */
    string MigrateSystemDriveData()

    /** Overwrites a whole disk at the lowest level that the host offers. All its data is permanently lost. */
    string LowLevelFormat(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the search for lost partitions on a disk. */
    string RecoverLostPartition(
        /** Disk number. */
        1: i32 diskIndex)

    /** Disabled: always returns "Task NotValid" and has no effect. */
    string RepairRawOrDamagedPartition(
        /** Drive letter, not used. */
        1: string driveLetter)

    /** Opens the surface test of a disk; rejected for a virtual disk. */
    string ScanDiskBadSectors(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the surface test of a partition; rejected on a virtual disk. */
    string ScanPartitionBadSectors(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Opens the function that rewrites the boot code in a disk's master boot record. */
    string RebuildMbr(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the function that switches the write protection of a USB drive. */
    string ToggleWriteProtection(
        /** Drive letter, looked up. */
        1: string driveLetter)

    /** Opens the 4 KiB alignment of a disk. */
    string AlignDiskTo4k(
        /** Disk number. */
        1: i32 diskIndex)

    /** Opens the boot repair; rejected if the host reports that it is unavailable. */
    string RepairWindowsBoot()

    /** Opens the password reset; rejected if the host reports that it is unavailable. */
    string PasswordReset()

    /** Opens the Windows 11 checker. Its result is not returned. */
    string Windows11UpgradeCheck()
}

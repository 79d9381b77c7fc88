/*
 * The service through which an agent drives the disk and partition manager.
 *
 * A tool that acts is three calls in a row: PreProcessing, the tool if allow came back true, PostProcessing
 * with the tool's answer. The tools that only read need neither. "Task Queued" means that the host took the
 * order, never that the work is done: look at the inventory again to see its effect. "Task NotValid" means
 * that nothing was handed over; it carries no reason.
 *
 * Sizes are bytes unless a field says otherwise. Texts are UTF-8. A field that is absent, or sent with another
 * type, reads as false, 0 or empty.
 */

/** Answer of a tool that acts: the host accepted the order. Its work may still be waiting or fail later. */
const string TASK_QUEUED = "Task Queued"

/** Answer of a tool that acts: no order was given. */
const string TASK_NOT_VALID = "Task NotValid"

/** reasons of PreProcessing while a dialog of the host is open, and within two seconds of the last call. */
const string OPERATION_IN_PROGRESS = "An operation is currently in progress, please wait a few moments and try again. If you need further assistance, please let me know!"

/** reasons of PreProcessing while the host carries out tasks. */
const string TASKS_IN_EXECUTION = "One or more tasks are currently in execution, please wait a few moments and try again. If you need further assistance, please let me know!"

/** One disk of the inventory. */
struct DiskInfo {
    /** The disk's interface as text, for example "SATA" or "NVMe". */
    1: string diskLabel
    /** Disk number; this is what the tools take. */
    2: i32 diskIndex
    /** Entries in the partition list, unallocated regions included. */
    3: i32 partitionCount
    /** Capacity in bytes. */
    4: i64 totalCapacity
    /** totalCapacity as text, for example "465.76 GB". */
    5: string displayTotalCapacity
    /** Bytes in use. */
    6: i64 usedSize
    /** usedSize as text. */
    7: string displayUsedSize
    /** totalCapacity minus usedSize in bytes; may be negative. */
    8: i64 availableSpace
    /** availableSpace as text; "0 Byte" when not positive. */
    9: string displayAvailableSpace
    /** The disk has no partition table. */
    10: bool isUninitialized
    /** GPT disk. */
    11: bool isGpt
    /** Not GPT; true also for a disk without a table. */
    12: bool isMbr
    /** Member of a storage space. */
    13: bool isStorageSpace
    /** Dynamic disk. */
    14: bool isDynamic
    /** Read-only. */
    15: bool isReadOnly
    /** Offline. */
    16: bool isOffline
    /** Marked bad. */
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
    /** A BitLocker volume is on the disk. */
    25: bool existsBitLocker
    /** Low on space. */
    26: bool isLowSpace
    /** A partition is not aligned to 4 KiB; false also when the host could not say. */
    27: bool not4kAligned
    /** Number of empty partitions. */
    28: i32 emptyPartitionCount
    /** Serial number of the device. */
    29: string serialNumber
}

/** One partition or unallocated region of the inventory. */
struct PartitionInfo {
    /** The entry is unallocated space and no partition. */
    1: bool isUnallocated
    /** Number of the disk it lies on. */
    2: i32 diskIndex
    /** Index on the disk. */
    3: i32 partitionIndex
    /** Capacity in bytes. */
    4: i64 rawCapacity
    /** rawCapacity as text. */
    5: string displayRawCapacity
    /** Size of the whole dynamic volume in bytes. */
    6: i64 dynamicVolumeSize
    /** dynamicVolumeSize as text. */
    7: string displayDynamicVolumeSize
    /** Bytes in use. */
    8: i64 usedSize
    /** usedSize as text. */
    9: string displayUsedSize
    /** rawCapacity minus usedSize in bytes; may be negative. */
    10: i64 freeSize
    /** freeSize as text; "0 Byte" when not positive. */
    11: string displayFreeSize
    /** First byte, counted from the start of the disk. */
    12: i64 startingOffset
    /** Bytes in a sector. */
    13: i32 sectorSize
    /** Bytes in a cluster. */
    14: i32 clusterSize
    /** Sector number of the boot record. */
    15: i64 dbrStartSector
    /** First sector number. */
    16: i64 startSector
    /** Last sector number. */
    17: i64 endSector
    /** No file system. */
    18: bool isUnformatted
    /** The file system cannot be read; false also when the host could not say. */
    19: bool isRawPartition
    /** BitLocker-encrypted. */
    20: bool isBitlockerEncrypted
    /** Read-only. */
    21: bool isReadOnly
    /** Hidden. */
    22: bool isHidden
    /** Active. */
    23: bool isActive
    /** The running machine starts from it. */
    24: bool isCurrentSystemPartition
    /** It holds the running Windows. */
    25: bool isCurrentBootPartition
    /** It holds the boot partition. */
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
    /** Marked bad. */
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
    /** "unencrypted", "encrypted", "encryption unlocked", "encryption not unlocked", or empty when unknown. */
    42: string bitlockerState
    /** Drive letter as the host writes it; empty or "*" when it has none. */
    43: string driveLetter
    /** Volume label. */
    44: string label
    /** File system name. */
    45: string fileSystemType
    /** "TYPE_UNKNOWN", "BASIC", "SIMPLE", "SPAN", "STRIPE", "MIRROR", "RAID", "SIMPLE_EX", or empty when unknown. */
    46: string dynamicVolumeType
}

/** The answer of the gate. */
struct TaskInfo {
    /** The tool may be called. */
    1: bool allow
    /** Why not, as text for the user; empty when allowed. */
    2: string reasons
}

/** Binary protocol over buffered TCP, at most three connections at a time. */
service ZORNativePlugin {
    /** Says that the service answers. Always true, with no other effect. */
    bool Init()

    /**
     * Ends a tool call: pass the tool's answer. True only for exactly "Task Queued". Starts the pause of
     * 2000 ms in which PreProcessing refuses.
     */
    bool PostProcessing(
        /** The tool's answer, unchanged. Absent: empty, which counts as not queued. */
        1: string result)

    /**
     * Asks whether a tool may be called now. Call it before each tool that acts, and call the tool only
     * when allow is true.
     */
    TaskInfo PreProcessing(
        /** Free text that names the call about to be made; passed to the host, which may show it. Absent: empty. */
        1: string toolCalls)

    /**
     * Opens a page of the host; changes nothing by itself. Shows the BitLocker state of a partition to the
     * user; the state itself is not answered. Answers "Task Queued" or "Task NotValid".
     */
    string ShowBitLockerStatus(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the search for a BitLocker recovery key;
     * no key is answered. Answers "Task Queued" or "Task NotValid".
     */
    string RetrieveBitLockerRecoveryKey(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Starts making a rescue ISO file. Answers "Task
     * Queued" or "Task NotValid".
     */
    string CreateBootableISO()

    /**
     * Destroys data. Starts making a rescue stick on a USB disk, which is overwritten. Answers "Task
     * Queued" or "Task NotValid".
     */
    string CreateBootableUsbByDisk(
        /** Disk number of the stick; -1 leaves the choice to the host. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Destroys data. Starts making a rescue stick on the USB disk of a drive, which is overwritten.
     * Answers "Task Queued" or "Task NotValid".
     */
    string CreateBootableUsbByDriveLetter(
        /** Drive letter of the stick; reduced to one upper-case character. It may be empty: the host then receives an empty letter and decides what that means. */
        1: string driveLetter)

    /**
     * Changes data. Installs and switches on the pre-OS environment; refused when it is there already.
     * Answers "Task Queued" or "Task NotValid".
     */
    string InstallAndEnablePreOS()

    /**
     * Changes data. Switches the pre-OS environment off; refused when it is not there. Answers "Task
     * Queued" or "Task NotValid".
     */
    string DisablePreOS()

    /**
     * Opens a page of the host; changes nothing by itself. Starts writing a Windows installer image to a
     * medium. Answers "Task Queued" or "Task NotValid".
     */
    string CreateWindowsInstallerMedia()

    /**
     * Destroys data. Opens the clone guide with the running system as source and a disk as target. Answers
     * "Task Queued" when the guide was sent the task, "Task NotValid", a sentence that names a disk the
     * host does not list, or an empty string when the host has no clone page.
     */
    string CloneOSDataFromCurrent(
        /** Number of the disk that is overwritten. Absent: 0. */
        1: i32 targetDiskIndex)

    /**
     * Destroys data. Opens the clone guide with the system of a disk as source and another disk as target.
     * Answers "Task Queued" when the guide was sent the task, "Task NotValid", a sentence that names a
     * disk the host does not list or that is not the system disk, or an empty string when the host has no
     * clone page.
     */
    string CloneOSDataFromDisk(
        /** Number of the disk that is overwritten. Absent: 0. */
        1: i32 targetDiskIndex,
        /** Number of the disk that holds the running system; -1 leaves the choice to the guide. Absent: 0. */
        2: i32 osDiskIndex)

    /**
     * Destroys data. Opens the clone guide with the system on a partition as source and a disk as target.
     * Answers "Task Queued" when the guide was sent the task, "Task NotValid", a sentence that names a
     * disk the host does not list, or an empty string when the host has no clone page.
     */
    string CloneOSDataFromPartition(
        /** Number of the disk that is overwritten. Absent: 0. */
        1: i32 targetDiskIndex,
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. The partition that holds the system. */
        2: string osDriveLetter)

    /**
     * Destroys data. Opens the clone guide for a whole disk. Answers "Task Queued" when the guide was sent
     * the task, "Task NotValid", a sentence that names a disk the host does not list, or an empty string
     * when the host has no clone page.
     */
    string CloneDiskToDisk(
        /** Number of the disk that is read. Absent: 0. */
        1: i32 sourceDiskIndex,
        /** Number of the disk that is overwritten. Absent: 0. */
        2: i32 destDiskIndex)

    /**
     * Destroys data. Opens the clone guide for one partition onto another. Answers "Task Queued" when the
     * guide was sent the task, "Task NotValid", a sentence that names a disk the host does not list, or an
     * empty string when the host has no clone page.
     */
    string ClonePartitionToPartition(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string sourceDriveLetter,
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. The partition that is overwritten. */
        2: string destDriveLetter)

    /**
     * Destroys data. Opens the clone guide for one partition onto a disk: its later free space, else its
     * first partition; for a system partition the whole disk. Answers "Task Queued" when the guide was
     * sent the task, "Task NotValid", a sentence that names a disk the host does not list, or an empty
     * string when the host has no clone page.
     */
    string ClonePartitionToDisk(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string sourceDriveLetter,
        /** Number of the disk that is overwritten. Absent: 0. */
        2: i32 destDiskIndex)

    /**
     * Changes data. Opens the conversion guide: MBR to GPT. Answers "Task Queued" or "Task NotValid".
     * Nothing is validated before the guide opens.
     */
    string ConvertDiskToGpt(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Changes data. Opens the conversion guide: GPT to MBR. Answers "Task Queued" or "Task NotValid".
     * Nothing is validated before the guide opens.
     */
    string ConvertDiskToMbr(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Changes data. Opens the conversion guide: basic to dynamic. Answers "Task Queued" or "Task
     * NotValid". Nothing is validated before the guide opens.
     */
    string ConvertDiskToDynamic(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Changes data. Opens the conversion guide: dynamic to basic. Answers "Task Queued" or "Task
     * NotValid". Nothing is validated before the guide opens.
     */
    string ConvertDiskToBasic(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Changes data. Turns a logical partition into a primary one. Answers "Task Queued" or "Task
     * NotValid".
     */
    string ConvertPartitionToPrimary(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Changes data. Turns a primary partition into a logical one. Answers "Task Queued" or "Task
     * NotValid".
     */
    string ConvertPartitionToLogical(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Changes data. Opens the conversion guide: partition to FAT32. Answers "Task Queued" or "Task
     * NotValid". Nothing is validated before the guide opens.
     */
    string ConvertPartitionToFat(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /**
     * Changes data. Opens the conversion guide: partition to exFAT. Answers "Task Queued" or "Task
     * NotValid". Nothing is validated before the guide opens.
     */
    string ConvertPartitionToExfat(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /**
     * Changes data. Opens the conversion guide: partition to NTFS. Answers "Task Queued" or "Task
     * NotValid". Nothing is validated before the guide opens.
     */
    string ConvertPartitionToNtfs(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /** Reads the inventory: every disk, in the host's order. Needs no PreProcessing. */
    list<DiskInfo> ListAllDisks()

    /**
     * Reads the inventory: a disk's partitions and unallocated regions in order; empty for an unknown
     * disk. Needs no PreProcessing.
     */
    list<PartitionInfo> ListPartitionsOnDisk(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Reads the inventory: one partition. An unknown letter answers an all-default record whose
     * driveLetter is empty. Needs no PreProcessing.
     */
    PartitionInfo GetPartitionInfo(
        /** Drive letter; only its first byte counts, in either case ("C", "c" and "C:" are the same). Absent: empty, which is unknown. */
        1: string driveLetter)

    /** Reads the inventory: the partitions and unallocated regions of all disks. Needs no PreProcessing. */
    list<PartitionInfo> GetAllPartitionInfo()

    /**
     * Opens a page of the host; changes nothing by itself. Opens the smart layout page for a drive that is
     * short of space. Answers "Task Queued" or "Task NotValid".
     */
    string SmartSpaceAdjustment(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the layout editor for a partition.
     * Answers "Task Queued" or "Task NotValid".
     */
    string OpenPartitionLayoutEditor(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the layout editor for a disk. Answers
     * "Task Queued" or "Task NotValid".
     */
    string OpenDiskLayoutEditor(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /** Destroys data. Deletes every partition of a disk. Answers "Task Queued" or "Task NotValid". */
    string DeleteAllPartitions(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /** Destroys data. Gives a disk an empty GPT partition table. Answers "Task Queued" or "Task NotValid". */
    string InitializeDiskToGpt(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /** Destroys data. Gives a disk an empty MBR partition table. Answers "Task Queued" or "Task NotValid". */
    string InitializeDiskToMbr(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /** Destroys data. Overwrites a whole disk. Answers "Task Queued" or "Task NotValid". */
    string WipeDisk(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex,
        /** Number of times that everything is overwritten, 1 or more; the host's page decides how many it accepts. Passed on unchanged. Absent: 0. */
        2: i32 eraseCount)

    /** Destroys data. Formats a partition. Answers "Task Queued" or "Task NotValid". */
    string FormatPartition(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** File system name, for example "NTFS", "FAT32" or "exFAT"; the host's page decides what it accepts. Absent: empty. */
        2: string fileSystem,
        /** Volume label, UTF-8; may be empty. Absent: empty. */
        3: string label,
        /** Cluster size in bytes, as in PartitionInfo; 0 leaves the choice to the host's page. Passed on unchanged. Absent: 0. */
        4: i32 clusterSize,
        /** True for a quick format, false for a full one. Absent: false. */
        5: bool quickFormat)

    /** Destroys data. Deletes a partition. Answers "Task Queued" or "Task NotValid". */
    string DeletePartition(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /** Changes data. Splits a partition in two. Answers "Task Queued" or "Task NotValid". */
    string SplitPartition(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** Capacity in bytes of the new partition; the partition that is split keeps the rest. Absent: 0. */
        2: i64 newPartitionCapacity,
        /** File system of the new partition, as in FormatPartition. Absent: empty. */
        3: string newPartitionFileSystem,
        /** Label of the new partition, UTF-8. Absent: empty. */
        4: string newPartitionLabel)

    /** Changes data. Creates a partition in unallocated space. Answers "Task Queued" or "Task NotValid". */
    string CreatePartition(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex,
        /** Capacity of the new partition in bytes. Absent: 0. */
        2: i64 capacity,
        /** File system name, for example "NTFS", "FAT32" or "exFAT"; the host's page decides what it accepts. Absent: empty. */
        3: string fileSystem,
        /** Volume label, UTF-8; may be empty. Absent: empty. */
        4: string label,
        /** Place of the region among the disk's unallocated regions, from 0; -1 takes the first one that is large enough. Absent: 0. */
        5: i32 unallocatedIndex)

    /**
     * Changes data. Merges the second partition into the first, which takes over its place on the disk. The
     * second partition and its drive letter are gone afterwards; the host's page decides whether its files are
     * kept. Answers "Task Queued" or "Task NotValid".
     */
    string MergePartitions(
        /** Drive letter of the partition that stays, with its letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter1,
        /** Drive letter of the partition that gives up its place and its letter; reduced to one upper-case character. Absent: empty, which only the host can refuse. */
        2: string driveLetter2)

    /** Changes data. Gives a partition a new size. Answers "Task Queued" or "Task NotValid". */
    string ResizePartition(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** New capacity of the whole partition in bytes. Absent: 0. */
        2: i64 newPartitionCapacity)

    /**
     * Changes data. Gives a partition a size relative to the one in the inventory. Answers "Task Queued"
     * or "Task NotValid".
     */
    string ResizePartitionRelative(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** Bytes to add to the present size as the inventory knows it; negative shrinks. Absent: 0. */
        2: i64 sizeAdjustment)

    /**
     * Changes data. Takes space from a partition and makes a new one of it. Answers "Task Queued" or "Task
     * NotValid".
     */
    string AllocateSpaceFromPartitionToNewPartition(
        /** Drive letter of the partition that gives space; reduced to one upper-case character. */
        1: string sourceDriveLetter,
        /** Capacity in bytes of the new partition; the source becomes smaller by as much. Absent: 0. */
        2: i64 partitionCapacity,
        /** File system name, for example "NTFS", "FAT32" or "exFAT"; the host's page decides what it accepts. Absent: empty. */
        3: string fileSystem,
        /** Volume label, UTF-8; may be empty. Absent: empty. */
        4: string label)

    /**
     * Changes data. Takes space from a partition and gives it to another. Answers "Task Queued" or "Task
     * NotValid".
     */
    string AllocateSpaceFromPartitionToPartition(
        /** Drive letter of the partition that gives space; reduced to one upper-case character. */
        1: string sourceDriveLetter,
        /** Drive letter of the partition that receives the space; reduced to one upper-case character. Absent: empty, which only the host can refuse. */
        2: string targetDriveLetter,
        /** Bytes that the source loses and the target gains; in spite of the name not the new capacity of either. Absent: 0. */
        3: i64 newPartitionCapacity)

    /** Destroys data. Overwrites a partition. Answers "Task Queued" or "Task NotValid". */
    string WipePartition(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** Number of times that everything is overwritten, 1 or more; the host's page decides how many it accepts. Passed on unchanged. Absent: 0. */
        2: i32 eraseCount)

    /** Changes data. Changes the cluster size of a partition. Answers "Task Queued" or "Task NotValid". */
    string ChangePartitionClusterSize(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** Wanted cluster size in bytes, as in PartitionInfo; 0 is not a cluster size. Passed on unchanged. Absent: 0. */
        2: i32 newClusterSize)

    /** Changes data. Gives a partition another drive letter. Answers "Task Queued" or "Task NotValid". */
    string ChangePartitionDriveLetter(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** Wanted letter; reduced to one upper-case character and a colon. Absent: empty. */
        2: string newDriveLetter)

    /** Changes data. Changes the volume label of a partition. Answers "Task Queued" or "Task NotValid". */
    string ChangePartitionLabel(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter,
        /** Wanted volume label, UTF-8; empty removes it. Absent: empty. */
        2: string newLabel)

    /**
     * Changes data. Hides a partition. There is no argument for showing it again. Answers "Task Queued" or
     * "Task NotValid".
     */
    string SetPartitionHidden(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /** Changes data. Marks a partition active. Answers "Task Queued" or "Task NotValid". */
    string SetPartitionActive(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the file system check for a partition.
     * Answers "Task Queued" or "Task NotValid".
     */
    string CheckPartitionFileSystem(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /**
     * Destroys data. Lays out a disk with a number of partitions. Answers "Task Queued" or "Task
     * NotValid".
     */
    string AutoCreatePartitions(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex,
        /** Number of partitions to lay out. Passed on unchanged. Absent: 0. */
        2: i32 partitionCount,
        /** Partition style for the disk, "GPT" or "MBR", handed to the host as it stands. Absent: empty. */
        3: string GptOrMbr)

    /** Changes data. Brings an offline disk online. Answers "Task Queued" or "Task NotValid". */
    string DiskBringOnline(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /** Changes data. Ejects the USB disk of a drive. Answers "Task Queued" or "Task NotValid". */
    string EjectUsb(
        /** Drive letter. Must begin with a letter A to Z, in either case; nothing else is checked, and the host receives the text unchanged. Absent: empty, which is refused. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the health page of a disk. Answers "Task
     * Queued" or "Task NotValid".
     */
    string DiskHealthCheck(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the page that moves applications and data
     * off the system drive. Answers "Task Queued" or "Task NotValid".
     */
    string MigrateSystemDriveData()

    /**
     * Destroys data. Overwrites a whole disk at the lowest level that the host offers. Answers "Task
     * Queued" or "Task NotValid".
     */
    string LowLevelFormat(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the search for lost partitions on a disk.
     * Answers "Task Queued" or "Task NotValid".
     */
    string RecoverLostPartition(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /** Switched off: always answers "Task NotValid" and does nothing. */
    string RepairRawOrDamagedPartition(
        /** Drive letter; not looked at. */
        1: string driveLetter)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the surface test for a disk; refused for
     * a virtual disk. Answers "Task Queued" or "Task NotValid".
     */
    string ScanDiskBadSectors(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Opens a page of the host; changes nothing by itself. Opens the surface test for a partition; refused
     * for a virtual one. Answers "Task Queued" or "Task NotValid".
     */
    string ScanPartitionBadSectors(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /**
     * Changes data. Rewrites the boot code of a disk's master boot record. Answers "Task Queued" or "Task
     * NotValid".
     */
    string RebuildMbr(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Changes data. Switches the write protection of a USB drive. Answers "Task Queued" or "Task
     * NotValid".
     */
    string ToggleWriteProtection(
        /** Drive letter; only its first character counts, in either case. A letter that no partition has is not refused here: the host's guide decides. */
        1: string driveLetter)

    /** Changes data. Opens the 4K alignment for a disk. Answers "Task Queued" or "Task NotValid". */
    string AlignDiskTo4k(
        /** Disk number as ListAllDisks reports it. Absent: 0. */
        1: i32 diskIndex)

    /**
     * Changes data. Opens the boot repair; refused when the host says that it is not available. Answers
     * "Task Queued" or "Task NotValid".
     */
    string RepairWindowsBoot()

    /**
     * Changes data. Opens the password reset; refused when the host says that it is not available. Answers
     * "Task Queued" or "Task NotValid".
     */
    string PasswordReset()

    /**
     * Opens a page of the host; changes nothing by itself. Opens the host's Windows 11 checker; its
     * finding is not answered. Answers "Task Queued" or "Task NotValid".
     */
    string Windows11UpgradeCheck()
}

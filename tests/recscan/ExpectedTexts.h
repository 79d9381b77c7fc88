#pragma once

// The strings that the user reads, with placeholders for numbers and letters. They are typed independently
// of the strings of the library, so that a typing error in either is detected.

#include <vector>

struct ExpectedFunction
{
    const char* key;
    const char* text;
};

// clang-format off
constexpr char kTextNeedsGpt[] =
    "Windows 10 support ends soon! To install Windows 11, convert your system disk to GPT first.";
constexpr char kTextNotReady[] =
    "Windows 10 support ends soon! Your device may not be compatible with Windows 11.";
constexpr char kTextReady[] =
    "Windows 10 support ends soon! Your PC is ready for Windows 11.";
constexpr char kTextDiskSmart[] =
    "We have detected an anomaly in the health status of disk %1. We recommend checking the disk health as soon as possible!";
constexpr char kTextSmartLayoutSystem[] =
    "Drive %1 has low space. We recommend using \"Smart Layout Adjust\" to quickly expand %2 drive space!";
constexpr char kTextMigrate[] =
    "Drive %1 has low space. We recommend using the \"Data Migration\" feature to free up more space on %2 drive!";
constexpr char kTextSmartLayout[] =
    "Drive %1 has low space. We recommend using \"Smart Layout Adjust\" to adjust the disk layout with one click!";
constexpr char kTextWastedMbr[] =
    "Due to incorrect partition table settings on disk %1, its space is not fully utilized. We recommend converting to GPT disk!";
constexpr char kTextFat32[] =
    "We recommend converting the file system of the large external disk %1 to ExFAT for better performance and cross-platform accessibility! ";
constexpr char kTextBootEntries[] =
    "Invalid or duplicate boot entries were found in the system boot menu. We recommend removing them with one click! ";
constexpr char kText4k[] =
    "The %1 drive on the SSD is not 4K aligned. We recommend performing 4K alignment immediately to significantly improve its performance!";
constexpr char kTextBitLockerUsb[] =
    "For users with BitLocker encryption on %1 drive, we recommend creating a secure USB drive. In the event of a system boot failure, the secure USB drive can boot the computer and access data on the encrypted disk!";
constexpr char kTextSlowBoot[] =
    "The performance of this machine is significantly affected by the boot disk. We recommend replacing it with an SSD for better performance. Once you are ready with the SSD, use \"System Migration\" to easily transfer the system to the SSD! ";
constexpr char kTextRaw[] =
    "A Raw partition was detected on the system. We recommend repairing the Raw partition as soon as possible to avoid permanent data loss!";
constexpr char kTextLocked[] =
    "Drive %1 is locked by BitLocker. You can use BitLocker Key Finder to recover your BitLocker recovery key if you forget the password!";

const std::vector<ExpectedFunction> kExpectedOwn = {
    {"align_disk_to_4k",
     "If you're looking to optimize your hard drive's performance, we recommend enabling the [4K alignment] function. It can significantly boost read/write speeds and help extend the lifespan of your hard drive."},
    {"burn_windows_iso",
     "If you need to create a bootable Windows installation disk, we recommend using the [ISO Burner] function. It allows you to easily burn Windows system images to a CD or USB drive."},
    {"create_windows_pe_image",
     "If your system fails to boot, we recommend using the [Create Bootable Media] function to create a Windows PE boot disk. This allows you to easily troubleshoot and repair your system, ensuring you can quickly get back up and running."},
    {"get_bitlocker_recovery_key",
     "If you've lost access to your BitLocker-encrypted hard drive, we recommend using the [BitLocker Key Finder] function. It helps you quickly retrieve your recovery key, ensuring you can regain access to your encrypted data."},
    {"password_reset",
     "If you've forgotten your Windows login password, we recommend using the [Password Clear] function. It allows you to easily reset your password, ensuring you can regain access to your system quickly and securely."},
    {"rebuild_mbr",
     "If your hard drive is having boot issues, we recommend using the [Rebuild MBR] function. It repairs the Master Boot Record (MBR), helping you resolve startup problems and get your system running smoothly again."},
    {"recover_partition",
     "If you've accidentally deleted a partition, we recommend using the [Partition Recovery] function. It helps you recover lost partitions and restore your data quickly and safely."},
    {"repair_raw_partition",
     "If your hard disk partition has become inaccessible or turned RAW, we recommend using the [Repair RAW Partition] function. It helps you restore access to your partition and recover your data quickly and effectively."},
    {"repair_windows_boot",
     "If your Windows system is having startup issues, we recommend using the [Boot Repair] function. It helps you resolve a wide range of boot problems, ensuring your system can start up smoothly and reliably."},
    {"scan_bad_sectors",
     "If you suspect your hard drive may have bad sectors or performance issues, we recommend using the [Surface Test] function. It scans your drive for potential problems, helping you identify and address issues before they lead to data loss."},
    {"toggle_write_protection",
     "If your USB device is write-protected and you can't modify or save files, we recommend using the [Write Protection] function. It helps you remove the write protection status, allowing you to use your USB device normally again."},
    {"bitlocker_manager",
     "If you need to manage BitLocker-encrypted hard drives, we recommend using the [BitLocker Manager] function. It simplifies the process of handling encryption, allowing you to easily unlock, lock, or modify BitLocker settings."},
    {"disk_health",
     "Worried about your hard drive's health? Try the [Disk Health] function! It monitors key indicators and alerts you to potential issues before they become serious."},
    {"migrate_data",
     "If your C drive is running out of space, we recommend using the [Data Migration] feature. It allows you to easily move applications and data to another disk drive, freeing up space and improving your system's performance."},
    {"migrate_os",
     "If you're upgrading to a new SSD, we recommend using the [Migrate OS] function. It allows you to seamlessly transfer your operating system, along with all your files and settings, to the new drive, ensuring a smooth transition and faster performance."},
};

const std::vector<ExpectedFunction> kExpectedAgent = {
    {"enable_secure_boot",
     "To enable Secure Boot, please first complete the prerequisite: converting the disk to GPT."},
    {"clone_disk",
     "If you're looking to transfer all your data from one hard drive to another, we recommend using the [Clone Disk] function. It creates a complete copy of your entire hard disk."},
    {"clone_os_data",
     "If you need to transfer your entire operating system to a new hard drive, we recommend using the [Clone OS Disk] function. It creates a full copy of your system disk, including the OS, installed programs, and settings."},
    {"clone_partition",
     "If you need to transfer a specific partition to another hard drive, we recommend using the [Clone Partition] function. It creates an exact copy of your partition data, including files and settings."},
    {"convert_disk_to_gpt",
     "If your hard drive exceeds 2TB and isn't fully recognized, or if you're preparing to install Windows 11, we recommend using the [Convert to GPT] function. It resolves capacity recognition issues and ensures your drive is ready for modern systems like Windows 11."},
    {"convert_disk_to_mbr",
     "If you're using older devices or systems, we recommend using the [Convert to MBR] function. It ensures compatibility with legacy hardware and operating systems, making it easier to use your hard drive in older environments."},
    {"convert_disk_to_basic",
     "Are you trying to convert a dynamic disk back to a basic disk? The [Convert to Basic Disk] function can help! It allows you to easily switch your disk type, making it compatible with standard storage configurations."},
    {"convert_disk_to_dynamic",
     "Are you trying to expand your storage capabilities? The [Convert to Dynamic Disk] function can help! It allows you to convert your basic disk to a dynamic disk, enabling advanced features like creating spanned, striped, or mirrored volumes for better storage management."},
    {"allocate_space_from_partition",
     "If you're running out of disk space, we recommend trying the [Allocation Space] function. It allows you to easily adjust partition sizes, freeing up space and ensuring your system runs smoothly without storage limitations."},
    {"change_partition_cluster_size",
     "If you need to optimize your partition's performance or storage efficiency, we recommend using the [Change Cluster Size] function. It allows you to adjust the cluster size, helping you better manage disk space and improve file system performance."},
    {"change_partition_drive_letter",
     "If you need to reorganize your drives or resolve conflicts, we recommend using the [Change Drive Letter] function. It allows you to easily assign a new drive letter to your partition, making it easier to manage and access your storage."},
    {"convert_logical_to_primary",
     "If you need to convert a logical partition to a primary partition, we recommend using the [Convert to Primary] function. It allows you to easily change the partition type, ensuring compatibility with operating systems and boot requirements."},
    {"convert_partition_to_exfat",
     "If you need to upgrade your FAT partition to support larger files and better performance, we recommend using the [Convert to exFAT] function. It allows you to easily convert your partition to exFAT, ensuring compatibility with modern devices and improved storage efficiency."},
    {"convert_partition_to_fat",
     "If you need to convert an NTFS partition to FAT for compatibility with older devices or systems, we recommend using the [Convert to FAT] function. It allows you to easily change the file system, ensuring seamless use with legacy hardware and software."},
    {"convert_partition_to_ntfs",
     "If you need to upgrade your FAT partition to NTFS, we recommend using the [Convert to NTFS] function. It allows you to easily change the file system, ensuring improved reliability and compatibility with modern systems."},
    {"convert_primary_to_logical",
     "If you need to reorganize your disk layout and convert a primary partition to a logical partition, we recommend using the [Convert to Logical] function. It allows you to easily adjust your partition structure, making it more flexible for managing multiple partitions on your drive."},
    {"create_partition",
     "If you need to organize your hard drive by creating separate storage spaces, we recommend using the [Create Partition] function. It allows you to easily create new partitions, helping you better manage your files and improve disk efficiency."},
    {"delete_all_partitions",
     "If you need to completely clear your hard drive and remove all partitions, we recommend using the [Delete All] function. It allows you to quickly and securely erase all partitions, preparing your disk for a fresh start or new configurations."},
    {"delete_partition",
     "If you need to remove a specific partition from your hard drive, we recommend using the [Delete] function. It allows you to easily delete the partition, freeing up space for new storage or reorganizing your disk layout."},
    {"format_partition",
     "If you need to prepare a partition for use or clear its data, we recommend using the [Format] function. It allows you to easily format the partition, ensuring it's clean, organized, and ready for new files or operating systems."},
    {"initialize_disk",
     "If you're setting up a new hard drive or need to prepare an uninitialized disk for use, we recommend using the [Initialize Disk] function. It allows you to quickly initialize the disk, making it ready for partitioning and storing data."},
    {"merge_partitions",
     "If you need to combine two partitions into a single, larger one, we recommend using the [Merge] function. It allows you to easily merge partitions, freeing up space and simplifying your disk management."},
    {"resize_partition",
     "If you need to resize your partitions to better manage disk space, we recommend using the [Adjust Layout] function. It allows you to easily adjust partition sizes, ensuring your storage is optimized for your needs."},
    {"move_resize_partition",
     "If you need to reorganize your disk space by moving or resizing partitions, we recommend using the [Resize/Move] function. It allows you to easily adjust partition sizes and locations, ensuring your storage is optimized for better performance and efficiency."},
    {"split_partition",
     "If you need to divide a large partition into two smaller ones for better organization, we recommend using the [Split] function. It allows you to easily split the partition, helping you manage your files and storage more efficiently."},
    {"wipe_disk",
     "If you need to securely and permanently erase all data from your hard disk, we recommend using the [Wipe Disk] function. It ensures that your data is completely removed, making it unrecoverable and preparing the disk for reuse or disposal."},
    {"wipe_partition",
     "If you need to securely and permanently erase all data from a specific partition, we recommend using the [Wipe Partition] function. It ensures that your data is completely removed, making it unrecoverable and preparing the partition for reuse or reallocation."},
};
// clang-format on

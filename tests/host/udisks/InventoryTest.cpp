// The inventory from readings of the disk service, without a service.
#include "host/udisks/Inventory.h"

#include <gtest/gtest.h>

namespace {

using host::BlockDevice;
using host::DiskSnapshot;
using host::PartitionEntry;

constexpr qint64 kMiB = 1024 * 1024;
const QString kDiskPath = "/org/freedesktop/UDisks2/block_devices/loop7";
const QString kData = "ebd0a0a2-b9e5-4433-87c0-68b6b72699c7";

class DiskInventory : public testing::Test
{
protected:
    void disk(const QString& table, qint64 size = 1024 * kMiB)
    {
        BlockDevice device;
        device.path = kDiskPath;
        device.device = "/dev/loop7";
        device.size = size;
        device.backingFile = "/tmp/a.img";
        if (!table.isEmpty())
            device.table = table;
        snapshot.devices.push_back(device);
    }

    BlockDevice& partition(int number, qint64 offset, qint64 size, const QString& type)
    {
        BlockDevice device;
        device.path = kDiskPath + "p" + QString::number(number);
        device.size = size;
        PartitionEntry entry;
        entry.table = kDiskPath;
        entry.number = number;
        entry.offset = offset;
        entry.size = size;
        entry.type = type;
        entry.uuid = QString("uuid-%1").arg(number);
        device.partition = entry;
        snapshot.devices.push_back(device);
        return snapshot.devices.back();
    }

    host::Disk read()
    {
        const auto facts = [this](const BlockDevice&) { return deviceFacts; };
        const auto disks = host::disksOf(snapshot, sources, letters, facts);
        EXPECT_EQ(disks.size(), 1u);
        return disks.empty() ? host::Disk() : disks.front();
    }

    DiskSnapshot snapshot;
    std::vector<host::DiskSource> sources{{"/tmp/a.img", true}};
    host::DriveLetters letters;
    host::DeviceFacts deviceFacts;
};

TEST_F(DiskInventory, DiskWithoutTable_IsOneFreeRegion)
{
    disk("");
    const host::Disk result = read();
    EXPECT_TRUE(result.isUnInitialize);
    ASSERT_EQ(result.partitions.size(), 1u);
    EXPECT_TRUE(result.partitions[0].unallocated);
    EXPECT_EQ(result.partitions[0].size, 1024 * kMiB);
}

// The service reports a partition before it has read the partition's UUID.
TEST_F(DiskInventory, GptPartitionWithoutAUuid_TakesNoLetter)
{
    disk("gpt");
    partition(1, kMiB, 100 * kMiB, kData).partition->uuid.clear();
    EXPECT_EQ(read().partitions[0].driveLetter, "");
    snapshot.devices[1].partition->uuid = "uuid-1";
    EXPECT_EQ(read().partitions[0].driveLetter, "D");
}

TEST_F(DiskInventory, OtherDevices_AreNotShown)
{
    disk("gpt");
    BlockDevice other;
    other.path = "/org/freedesktop/UDisks2/block_devices/sda";
    other.device = "/dev/sda";
    other.size = 4096 * kMiB;
    snapshot.devices.push_back(other);
    read();
}

TEST_F(DiskInventory, GptPartitions_HaveRegionsAroundThem)
{
    disk("gpt");
    partition(2, 300 * kMiB, 100 * kMiB, kData);
    partition(1, kMiB, 100 * kMiB, kData);
    const host::Disk result = read();
    EXPECT_TRUE(result.isGPT);
    ASSERT_EQ(result.partitions.size(), 4u);
    EXPECT_EQ(result.partitions[0].startSector, 2048);
    EXPECT_EQ(result.partitions[0].partGUID, "{uuid-1}");
    EXPECT_TRUE(result.partitions[1].unallocated);
    EXPECT_EQ(result.partitions[1].size, 199 * kMiB);
    EXPECT_EQ(result.partitions[2].startSector, 300 * 2048);
    // The backup table uses the last 33 sectors.
    EXPECT_EQ(result.partitions[3].size, 624 * kMiB - 33 * 512);
}

TEST_F(DiskInventory, UnknownUsage_CountsAsFull)
{
    disk("gpt");
    partition(1, kMiB, 100 * kMiB, kData).type = "ntfs";
    EXPECT_EQ(read().partitions[0].usedSize, 100 * kMiB);
    deviceFacts.usedBytes = 7 * kMiB;
    EXPECT_EQ(read().partitions[0].usedSize, 7 * kMiB);
}

TEST_F(DiskInventory, ExtendedPartition_IsNotAnEntry)
{
    disk("dos");
    partition(1, kMiB, 100 * kMiB, "0x07").partition->flags = 0x80;
    partition(4, 400 * kMiB, 600 * kMiB, "0x05").partition->isContainer = true;
    partition(5, 402 * kMiB, 100 * kMiB, "0x17").partition->isContained = true;
    const host::Disk result = read();
    ASSERT_EQ(result.partitions.size(), 5u);
    EXPECT_TRUE(result.partitions[0].isPrimary);
    EXPECT_TRUE(result.partitions[0].isActive);
    EXPECT_FALSE(result.partitions[0].isHidden);
    EXPECT_EQ(result.partitions[2].startSector, 402 * 2048);
    EXPECT_FALSE(result.partitions[2].isPrimary);
    EXPECT_TRUE(result.partitions[2].isHidden);
    // The free space inside the extended partition is a region of its own.
    EXPECT_EQ(result.partitions[1].size, 299 * kMiB);
    EXPECT_EQ(result.partitions[3].startSector, 502 * 2048);
    EXPECT_EQ(result.partitions[3].size, 498 * kMiB - 512);
    EXPECT_EQ(result.partitions[4].startSector, 1000 * 2048);
}

TEST_F(DiskInventory, LogicalDrives_HaveSpaceForTheirTableEntries)
{
    disk("dos");
    partition(1, 100 * kMiB, 924 * kMiB, "0x05").partition->isContainer = true;
    partition(5, 200 * kMiB, 100 * kMiB, "0x07").partition->isContained = true;
    partition(6, 301 * kMiB, 100 * kMiB, "0x07").partition->isContained = true;
    partition(7, 600 * kMiB, 100 * kMiB, "0x07").partition->isContained = true;
    const host::Disk result = read();
    ASSERT_EQ(result.partitions.size(), 7u);
    // Before the extended partition, before its first drive, which needs no space in front of it, and before
    // the third drive, whose cylinder starts at 596.2 MiB.
    EXPECT_EQ(result.partitions[0].size, 99 * kMiB);
    EXPECT_EQ(result.partitions[1].startSector, 102 * 2048);
    EXPECT_EQ(result.partitions[1].size, 98 * kMiB);
    EXPECT_FALSE(result.partitions[3].unallocated);
    EXPECT_EQ(result.partitions[4].startSector, 401 * 2048);
    EXPECT_EQ(result.partitions[4].size, 195 * kMiB);
    EXPECT_EQ(result.partitions[6].size, 324 * kMiB - 512);
}

TEST_F(DiskInventory, Types_GiveFileSystemsAndFlags)
{
    disk("gpt");
    partition(1, kMiB, 10 * kMiB, "c12a7328-f81f-11d2-ba4b-00a0c93ec93b");
    BlockDevice& locked = partition(2, 11 * kMiB, 10 * kMiB, kData);
    locked.type = "BitLocker";
    BlockDevice& fat = partition(3, 21 * kMiB, 10 * kMiB, kData);
    fat.type = "vfat";
    fat.version = "FAT32";
    fat.label = "STICK";
    const host::Disk result = read();
    EXPECT_TRUE(result.partitions[0].gptEFI);
    EXPECT_EQ(result.partitions[0].driveLetter, "");
    EXPECT_EQ(result.partitions[0].fsString, "RAW");
    EXPECT_TRUE(result.partitions[1].isLocked());
    EXPECT_EQ(result.partitions[2].fsString, "FAT32");
    EXPECT_EQ(result.partitions[2].label, "STICK");
}

TEST_F(DiskInventory, Letter_StaysWithItsPartition)
{
    disk("gpt");
    partition(1, kMiB, 100 * kMiB, kData);
    partition(2, 300 * kMiB, 100 * kMiB, kData);
    EXPECT_EQ(read().partitions[2].driveLetter, "E");
    // The first partition is deleted.
    snapshot.devices.erase(snapshot.devices.begin() + 1);
    EXPECT_EQ(read().partitions[1].driveLetter, "E");
}

TEST_F(DiskInventory, LetterOfAnMbrPartition_DoesNotDependOnItsNumber)
{
    disk("dos");
    partition(5, 100 * kMiB, 100 * kMiB, "0x07").partition->isContained = true;
    partition(6, 300 * kMiB, 100 * kMiB, "0x07").partition->isContained = true;
    EXPECT_EQ(read().partitions[3].driveLetter, "E");
    snapshot.devices.erase(snapshot.devices.begin() + 1);
    snapshot.devices[1].partition->number = 5;
    snapshot.devices[1].partition->uuid = "uuid-5";
    EXPECT_EQ(read().partitions[1].driveLetter, "E");
}

TEST_F(DiskInventory, EntryWithoutType_IsNotSettled)
{
    disk("gpt");
    EXPECT_TRUE(host::isSettled(snapshot, sources));
    partition(1, kMiB, 100 * kMiB, "");
    EXPECT_FALSE(host::isSettled(snapshot, sources));
    snapshot.devices[1].partition->type = "0fc63daf-8483-4772-8e79-3d69d8477de4";
    EXPECT_TRUE(host::isSettled(snapshot, sources));
    // The letter and the identity of a partition depend on it.
    snapshot.devices[1].partition->uuid.clear();
    EXPECT_FALSE(host::isSettled(snapshot, sources));
    snapshot.devices[0].table = "dos";
    EXPECT_TRUE(host::isSettled(snapshot, sources));
    snapshot.devices.clear();
    EXPECT_FALSE(host::isSettled(snapshot, sources));
}

TEST_F(DiskInventory, Interface_IsTheBusOrFollowsFromTheName)
{
    disk("gpt");
    EXPECT_EQ(read().diskInterface, "Image");
    snapshot.devices[0].backingFile.reset();
    snapshot.devices[0].device = "/dev/sda";
    sources = {{"/dev/sda", false}};
    EXPECT_EQ(read().diskInterface, "SATA");
    snapshot.devices[0].device = sources[0].file = "/dev/nvme0n1";
    EXPECT_EQ(read().diskInterface, "NVMe");
    host::DriveInfo drive;
    drive.path = snapshot.devices[0].drive = "/org/freedesktop/UDisks2/drives/Disk";
    snapshot.drives.push_back(drive);
    EXPECT_EQ(read().diskInterface, "NVMe");
    snapshot.drives[0].bus = "usb";
    EXPECT_EQ(read().diskInterface, "USB");
}

TEST_F(DiskInventory, DriveWithAFailingSelfTest_HasAHealthError)
{
    disk("gpt");
    EXPECT_TRUE(host::disksWithHealthErrors(snapshot, sources).isEmpty());
    host::DriveInfo drive;
    drive.path = "/org/freedesktop/UDisks2/drives/Disk";
    drive.hasHealthError = true;
    snapshot.drives.push_back(drive);
    EXPECT_TRUE(host::disksWithHealthErrors(snapshot, sources).isEmpty());
    snapshot.devices[0].drive = drive.path;
    EXPECT_EQ(host::disksWithHealthErrors(snapshot, sources), QSet<int>{0});
}

class DriveHealth : public testing::Test
{
protected:
    bool hasHealthError(const QString& interface, const QVariantMap& properties)
    {
        host::DiskServiceInterfaces interfaces;
        interfaces["org.freedesktop.UDisks2.Drive"] = {{"Vendor", "Maker"}};
        interfaces["org.freedesktop.UDisks2." + interface] = properties;
        const QDBusObjectPath path("/org/freedesktop/UDisks2/drives/Disk");
        return host::snapshotOf({{path, interfaces}}).drives.at(0).hasHealthError;
    }
};

TEST_F(DriveHealth, AtaDrive_FailsOnlyIfItsValuesWereRead)
{
    QVariantMap ata{{"SmartSupported", true},
                    {"SmartEnabled", true},
                    {"SmartUpdated", qulonglong(1700000000)},
                    {"SmartFailing", true}};
    EXPECT_TRUE(hasHealthError("Drive.Ata", ata));
    ata["SmartFailing"] = false;
    EXPECT_FALSE(hasHealthError("Drive.Ata", ata));
    ata["SmartFailing"] = true;
    ata["SmartUpdated"] = qulonglong(0);
    EXPECT_FALSE(hasHealthError("Drive.Ata", ata));
    ata["SmartUpdated"] = qulonglong(1700000000);
    ata["SmartEnabled"] = false;
    EXPECT_FALSE(hasHealthError("Drive.Ata", ata));
}

TEST_F(DriveHealth, NvmeDrive_FailsWithACriticalWarning)
{
    QVariantMap nvme{{"SmartUpdated", qulonglong(1700000000)}, {"SmartCriticalWarning", QStringList()}};
    EXPECT_FALSE(hasHealthError("NVMe.Controller", nvme));
    nvme["SmartCriticalWarning"] = QStringList{"spare"};
    EXPECT_TRUE(hasHealthError("NVMe.Controller", nvme));
    nvme["SmartUpdated"] = qulonglong(0);
    EXPECT_FALSE(hasHealthError("NVMe.Controller", nvme));
}

} // namespace

// The machine of this computer, from recorded output of lsblk.
#include "host/machine/SystemMachine.h"

#include <gtest/gtest.h>

namespace {

const QByteArray kListing = R"({"blockdevices": [
 {"name": "loop0", "type": "loop", "size": 4096},
 {"name": "zram0", "type": "disk", "size": 4294967296, "log-sec": 4096},
 {"name": "nvme0n1", "type": "disk", "size": 107374182400, "tran": "nvme", "rm": false, "ro": false, "rota": false,
  "log-sec": 512, "pttype": "gpt", "serial": "S1", "fstype": null, "children": [
   {"name": "nvme0n1p1", "type": "part", "size": 536870912, "start": 2048, "fstype": "vfat", "label": null,
    "parttype": "c12a7328-f81f-11d2-ba4b-00a0c93ec93b", "partuuid": "u1", "mountpoint": "/boot/efi", "fsused": "6291456"},
   {"name": "nvme0n1p2", "type": "part", "size": 53687091200, "start": 1050624, "fstype": "crypto_LUKS",
    "mountpoint": null, "children": [
     {"name": "root", "type": "crypt", "size": 53687000000, "fstype": "ext4", "mountpoints": ["/"], "fsused": 1073741824}]}]},
 {"name": "sda", "type": "disk", "size": 64023257088, "tran": "usb", "rm": true, "hotplug": true, "rota": false,
  "log-sec": 512, "pttype": "dos", "children": [
   {"name": "sda1", "type": "part", "size": 64022208512, "start": 2048, "fstype": "exfat", "label": "STICK"}]},
 {"name": "vdb", "type": "disk", "size": 1073741824, "tran": null, "rota": true, "log-sec": 512, "pttype": null,
  "fstype": "ext4", "mountpoint": "/srv", "fsused": "1024"},
 {"name": "vdc", "type": "disk", "size": 1073741824, "rota": true, "log-sec": 512, "pttype": null, "fstype": null}
]})";

host::Machine listed()
{
    auto read = host::machineFromLsblk(kListing);
    EXPECT_TRUE(std::holds_alternative<host::Machine>(read));
    return std::get<host::Machine>(read);
}

TEST(SystemMachine, Disks_AreNumberedInOrderWithoutLoopAndMemoryDevices)
{
    const host::Machine machine = listed();
    ASSERT_EQ(machine.disks.size(), 4u);
    EXPECT_EQ(machine.disks[0].diskInterface, "NVMe");
    EXPECT_TRUE(machine.disks[0].isGPT);
    EXPECT_TRUE(machine.disks[0].isSSD);
    EXPECT_EQ(machine.disks[1].diskIndex, 1);
    EXPECT_TRUE(machine.disks[1].isUSB);
    EXPECT_TRUE(machine.disks[1].isRemoveUsb);
    EXPECT_FALSE(machine.disks[2].isSSD);
}

TEST(SystemMachine, RootFileSystem_InsideEncryption_IsDriveC)
{
    const host::Machine machine = listed();
    const host::Partition* root = machine.partition("C");
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->diskIndex, 0);
    EXPECT_TRUE(root->isBoot);
    EXPECT_EQ(root->usedSize, 1073741824);
    EXPECT_EQ(root->startSector, 1050624);
}

TEST(SystemMachine, FirmwarePartition_IsTheSystemPartitionAndHasNoLetter)
{
    const host::Machine machine = listed();
    const host::Partition& efi = machine.disks[0].partitions.at(0);
    EXPECT_TRUE(efi.gptEFI);
    EXPECT_TRUE(efi.isSystem);
    EXPECT_EQ(efi.driveLetter, "");
    EXPECT_EQ(efi.fsString, "FAT32");
}

TEST(SystemMachine, SpaceAfterTheLastPartition_IsAFreeRegion)
{
    const host::Machine machine = listed();
    const auto regions = machine.freeRegions(0);
    ASSERT_EQ(regions.size(), 1u);
    EXPECT_EQ(regions[0]->startSector * 512, 1050624LL * 512 + 53687091200);
    EXPECT_EQ(regions[0]->endOffset(), 107374182400);
}

TEST(SystemMachine, FileSystemWithoutATable_IsOnePartition)
{
    const host::Machine machine = listed();
    ASSERT_EQ(machine.disks[2].partitions.size(), 1u);
    EXPECT_EQ(machine.disks[2].partitions[0].fsString, "EXT4");
    EXPECT_FALSE(machine.disks[2].isUnInitialize);
}

TEST(SystemMachine, EmptyDisk_HasNoTable)
{
    const host::Machine machine = listed();
    EXPECT_TRUE(machine.disks[3].isUnInitialize);
    EXPECT_EQ(machine.freeRegions(3).size(), 1u);
}

TEST(SystemMachine, DetectedMachine_IsAccepted)
{
    EXPECT_FALSE(host::machineRejection(listed()));
}

TEST(SystemMachine, UnexpectedOutput_IsAnError)
{
    EXPECT_TRUE(std::holds_alternative<host::MachineError>(host::machineFromLsblk("lsblk: bad usage")));
    EXPECT_TRUE(std::holds_alternative<host::MachineError>(host::machineFromLsblk("{}")));
}

TEST(SystemMachine, MountedDiskWithoutATableOrAKnownFileSystem_IsOnePartition)
{
    const auto read = host::machineFromLsblk(
        R"({"blockdevices":[{"name":"vda","type":"disk","size":274877906944,"fstype":null,"mountpoint":"/"}]})");
    ASSERT_TRUE(std::holds_alternative<host::Machine>(read));
    const host::Disk& disk = std::get<host::Machine>(read).disks.at(0);
    ASSERT_EQ(disk.partitions.size(), 1u);
    EXPECT_EQ(disk.partitions.at(0).driveLetter, "C");
    EXPECT_EQ(disk.partitions.at(0).size, 274877906944);
    EXPECT_FALSE(disk.partitions.at(0).unallocated);
    EXPECT_FALSE(disk.partitions.at(0).isUnformattedType);
}

} // namespace

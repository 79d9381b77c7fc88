// Which disk is behind a device file.
#include "host/udisks/DeviceIdentity.h"

#include <gtest/gtest.h>

namespace {

using host::BlockDevice;
using host::DiskSource;

class DeviceIdentity : public testing::Test
{
protected:
    DeviceIdentity()
    {
        addDisk("sdx", "Stick", "123");
        addDisk("sdy", "Other", "456");
    }

    void addDisk(const QString& name, const QString& model, const QString& serial)
    {
        host::DriveInfo drive;
        drive.path = "/drives/" + name;
        drive.vendor = "Maker";
        drive.model = model;
        drive.serial = serial;
        snapshot.drives.push_back(drive);
        BlockDevice device;
        device.path = "/devices/" + name;
        device.device = "/dev/" + name;
        device.drive = drive.path;
        device.size = 1000;
        snapshot.devices.push_back(device);
    }

    std::string identify() { return host::identifyDevices(snapshot, sources).toStdString(); }

    host::DiskSnapshot snapshot;
    std::vector<DiskSource> sources{{"/dev/sdx"}};
};

TEST_F(DeviceIdentity, UnchangedDisk_IsFound)
{
    ASSERT_EQ(identify(), "");
    EXPECT_EQ(sources[0].find(snapshot), &snapshot.devices[0]);
    EXPECT_FALSE(sources[0].isReplaced(snapshot));
    EXPECT_EQ(sources[0].identity->model, "Maker Stick");
}

TEST_F(DeviceIdentity, DiskWithAnotherSerialNumber_IsNotFound)
{
    ASSERT_EQ(identify(), "");
    snapshot.drives[0].serial = "124";
    EXPECT_EQ(sources[0].find(snapshot), nullptr);
    EXPECT_TRUE(sources[0].isReplaced(snapshot));
}

TEST_F(DeviceIdentity, DiskWithAnotherSize_IsNotFound)
{
    ASSERT_EQ(identify(), "");
    snapshot.devices[0].size = 1001;
    EXPECT_EQ(sources[0].find(snapshot), nullptr);
    EXPECT_TRUE(sources[0].isReplaced(snapshot));
}

TEST_F(DeviceIdentity, RemovedDisk_IsMissingAndNotReplaced)
{
    ASSERT_EQ(identify(), "");
    snapshot.devices.erase(snapshot.devices.begin());
    EXPECT_EQ(sources[0].find(snapshot), nullptr);
    EXPECT_FALSE(sources[0].isReplaced(snapshot));
}

TEST_F(DeviceIdentity, Partition_IsRejected)
{
    snapshot.devices[0].partition = host::PartitionEntry();
    EXPECT_EQ(identify(), "/dev/sdx: a partition; name its whole disk");
}

TEST_F(DeviceIdentity, ContentOfAnEncryptedVolume_IsRejected)
{
    snapshot.devices[0].encryptedDevice = "/devices/sdy";
    EXPECT_EQ(identify(), "/dev/sdx: the content of an encrypted volume, not a disk");
}

TEST_F(DeviceIdentity, UnknownDevice_IsRejected)
{
    sources = {{"/dev/sdz"}};
    EXPECT_EQ(identify(), "/dev/sdz: the disk service does not know this disk");
}

TEST_F(DeviceIdentity, OneDiskWithTwoDeviceFiles_IsRejected)
{
    addDisk("sdz", "Stick", "123");
    sources = {{"/dev/sdx"}, {"/dev/sdy"}, {"/dev/sdz"}};
    EXPECT_EQ(identify(), "/dev/sdz: the same disk as /dev/sdx");
}

TEST_F(DeviceIdentity, LoopDeviceOfAnImage_IsTheSameDisk)
{
    snapshot.devices[0].drive = "/";
    snapshot.devices[0].backingFile = "/tmp/a.img";
    sources = {{"/tmp/a.img", true}, {"/dev/sdx"}};
    EXPECT_EQ(identify(), "/dev/sdx: the same disk as /tmp/a.img");
    sources = {{"/tmp/b.img", true}, {"/dev/sdx"}};
    EXPECT_EQ(identify(), "");
}

TEST_F(DeviceIdentity, DisksWithoutSerialNumbers_AreDifferent)
{
    for (BlockDevice& device : snapshot.devices)
        device.drive = "/";
    sources = {{"/dev/sdx"}, {"/dev/sdy"}};
    EXPECT_EQ(identify(), "");
}

TEST_F(DeviceIdentity, Names_AreModelsOrFileNames)
{
    sources = {{"/tmp/a.img", true}, {"/dev/sdx"}, {"/dev/sdy"}};
    snapshot.devices[1].drive = "/";
    ASSERT_EQ(identify(), "");
    EXPECT_EQ(host::namesOf(sources), "a.img, Maker Stick, sdy");
}

} // namespace

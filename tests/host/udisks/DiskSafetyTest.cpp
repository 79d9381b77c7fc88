// Orders on disks that are in use, or that differ from what the host showed: nothing is written.
#include "tests/host/udisks/DiskBackendFixture.h"

#include <QtCore/QThread>

#include <fcntl.h>
#include <unistd.h>

namespace {

using DiskSafetyTest = DiskBackendFixture;

TEST_F(DiskSafetyTest, FileSystemAppearingOnAnEmptyDisk_IsNotErased)
{
    backend.reset();
    image = service.image("empty.img", 64 * kMiB);
    open();
    ASSERT_NE(backend, nullptr);
    outputOf("mkfs.ext4", {"-q", "-F", PrivateDiskService::loopDeviceOf(image)});
    outputOf("udevadm", {"settle"});
    EXPECT_NE(order(kInitializeToMbr, {{"diskIndex", 0}}), "");
    EXPECT_EQ(outputOf("blkid", {"-p", "-s", "TYPE", "-o", "value", image}).trimmed(), "ext4");
}

TEST_F(DiskSafetyTest, MountedFileSystem_IsNeverChanged)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    QTemporaryDir place;
    // A writable mount writes to the file system itself.
    outputOf("mount", {"-o", "ro,noload", device, place.path()});
    const QString before = checksum();
    const QString formatError =
        order(kFormat, {{"driveLetter", "D"}, {"fileSystem", "NTFS"}, {"label", ""}, {"quickFormat", true}});
    const QString deleteError = order(kDelete, {{"driveLetter", "D"}});
    const QString after = checksum();
    outputOf("umount", {place.path()});
    EXPECT_NE(formatError, "");
    EXPECT_NE(deleteError, "");
    EXPECT_EQ(before, after);
}

TEST_F(DiskSafetyTest, OrderForADiskShownAsMounted_IsRejectedInAdvance)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    QTemporaryDir place;
    outputOf("mount", {"-o", "ro,noload", device, place.path()});
    const QString reason = QString("%1 holds a mounted file system (%2).").arg(device, place.path());
    const QVariantMap disk{{"diskIndex", 0}}, partition{{"driveLetter", "D"}};
    EXPECT_TRUE(pumpUntil([&] { return rejection(kDelete, partition) == reason; }, kTestMs));
    EXPECT_EQ(rejection(kDeleteAll, disk), reason);
    // The letter belongs to the host.
    EXPECT_EQ(rejection(kLetter, {{"driveLetter", "D"}, {"newDriveLetter", "X"}}), "");
    outputOf("umount", {place.path()});
    EXPECT_TRUE(pumpUntil([&] { return rejection(kDelete, partition).isEmpty(); }, kTestMs));
}

TEST_F(DiskSafetyTest, DeviceHeldByAnotherProgram_IsNeverChanged)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "Data"), "");
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    const int held = ::open(device.toLocal8Bit().constData(), O_RDONLY | O_EXCL | O_CLOEXEC);
    ASSERT_GE(held, 0);
    const QString before = checksum();
    const QString error =
        order(kFormat, {{"driveLetter", "D"}, {"fileSystem", "EXT4"}, {"label", ""}, {"quickFormat", true}});
    EXPECT_EQ(checksum(), before);
    ::close(held);
    EXPECT_TRUE(error.contains("Device or resource busy")) << error.toStdString();
}

TEST_F(DiskSafetyTest, PartitionAppearingAfterTheLastReading_SavesTheDisk)
{
    outputOf("sh", {"-c", QString("echo 'start=2048, size=204800' | sfdisk -q --append '%1'")
                              .arg(PrivateDiskService::loopDeviceOf(image))});
    // The service knows the partition, and the host has not processed its signals.
    host::DiskService reader(service.bus());
    const auto isKnown = [&] {
        const auto snapshot = std::get<host::DiskSnapshot>(reader.readNow());
        return !snapshot.partitionsOf(snapshot.image(image)->path).empty();
    };
    for (int i = 0; i < 1000 && !isKnown(); ++i)
        QThread::msleep(10);
    ASSERT_TRUE(isKnown());
    EXPECT_EQ(order(kInitializeToMbr, {{"diskIndex", 0}}),
              "The partitions of the disk have changed since the order was accepted.");
    EXPECT_EQ(table().size(), 1);
    EXPECT_TRUE(pumpUntil([&] { return backend->machine()->partition("D") != nullptr; }, kTestMs));
}

TEST_F(DiskSafetyTest, PartitionReplacedFromOutside_IsNotChanged)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "Data"), "");
    const QString loop = PrivateDiskService::loopDeviceOf(image);
    // The host has not read the new partition at the same place when the order starts.
    outputOf(
        "sh",
        {"-c", QString("echo 'label: gpt\nstart=2048, size=204800' | sfdisk -q --no-reread '%1'").arg(loop)});
    const QString before = table()[0].toObject()["uuid"].toString();
    EXPECT_EQ(order(kDelete, {{"driveLetter", "D"}}),
              "The partition has changed since the order was accepted.");
    ASSERT_EQ(table().size(), 1);
    EXPECT_EQ(table()[0].toObject()["uuid"].toString(), before);
}

} // namespace

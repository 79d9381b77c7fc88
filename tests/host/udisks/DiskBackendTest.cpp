// The life of the back end on images: opening, changes from outside, letters, loss of the service.
#include "host/udisks/KernelPartitions.h"
#include "tests/host/udisks/DiskBackendFixture.h"

#include <QtTest/QSignalSpy>

namespace {

using host::DiskBackend;
using host::Execution;
using DiskBackendTest = DiskBackendFixture;

TEST_F(DiskBackendTest, EmptyGptImage_IsOneDiskWithAFreeRegion)
{
    ASSERT_EQ(backend->machine()->disks.size(), 1u);
    const host::Disk& disk = backend->machine()->disks[0];
    EXPECT_TRUE(disk.isGPT);
    EXPECT_EQ(disk.size, 1024 * kMiB);
    ASSERT_EQ(disk.partitions.size(), 1u);
    EXPECT_TRUE(disk.partitions[0].unallocated);
}

// The error of opening a file. The failed start leaves nothing attached.
class UnreadableImage : public DiskBackendFixture
{
protected:
    QString errorOfOpening(const QString& file)
    {
        QString error;
        {
            const auto result = DiskBackend::open(service.bus(), {{file, true}});
            error = std::holds_alternative<QString>(result) ? std::get<QString>(result) : QString();
        }
        EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(file).isEmpty(); }, kTestMs));
        return error;
    }
};

TEST_F(UnreadableImage, FileSystemWithoutTable_IsNotShownAsAnEmptyDisk)
{
    const QString bare = service.image("bare.img", 64 * kMiB);
    outputOf("mkfs.ext4", {"-q", "-F", bare});
    const QString error = errorOfOpening(bare);
    EXPECT_TRUE(error.startsWith(bare + ": /dev/loop")) << error.toStdString();
    EXPECT_TRUE(error.endsWith(" holds a file system without a partition table.")) << error.toStdString();
}

TEST_F(UnreadableImage, TableThatHasBeenCutOff_IsNotShownAsAnEmptyDisk)
{
    const QString cut = service.image("cut.img", 64 * kMiB);
    outputOf("sh", {"-c", QString("printf 'label: gpt\nsize=30M\n' | sfdisk -q '%1'").arg(cut)});
    outputOf("truncate", {"--size=40M", cut});
    const QString error = errorOfOpening(cut);
    EXPECT_TRUE(error.endsWith(" is damaged or of an unsupported type (PMBR).")) << error.toStdString();
}

TEST_F(UnreadableImage, DataWithoutTable_IsNotShownAsAnEmptyDisk)
{
    const QString reason = ": the file holds data, but no partition table; an image without a table must "
                           "begin and end with a mebibyte of zeros";
    const QString first = service.image("first.img", 8 * kMiB);
    outputOf("sh",
             {"-c", QString("printf x | dd of='%1' conv=notrunc bs=1 seek=1048575 status=none").arg(first)});
    EXPECT_EQ(errorOfOpening(first), first + reason);
    const QString last = service.image("last.img", 8 * kMiB);
    outputOf("sh",
             {"-c", QString("printf x | dd of='%1' conv=notrunc bs=1 seek=7340032 status=none").arg(last)});
    EXPECT_EQ(errorOfOpening(last), last + reason);
    // The middle is not read.
    const QString middle = service.image("middle.img", 8 * kMiB);
    outputOf("sh",
             {"-c", QString("printf x | dd of='%1' conv=notrunc bs=1 seek=1048576 status=none").arg(middle)});
    EXPECT_EQ(errorOfOpening(middle), "");
}

TEST_F(UnreadableImage, ImpossibleSizes_AreNamed)
{
    const QString empty = service.image("empty.img", 0);
    EXPECT_EQ(errorOfOpening(empty), empty + ": the image is smaller than 4 MiB");
    const QString small = service.image("small.img", 4 * kMiB - 512);
    EXPECT_EQ(errorOfOpening(small), small + ": the image is smaller than 4 MiB");
    const QString odd = service.image("odd.img", 4 * kMiB + 1);
    EXPECT_EQ(errorOfOpening(odd), odd + ": the image is not a multiple of 512 bytes");
    const QString smallest = service.image("smallest.img", 4 * kMiB);
    EXPECT_EQ(errorOfOpening(smallest), "");
}

TEST_F(DiskBackendTest, ReadingOlderThanTheKernelsTable_IsNotCurrent)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    host::DiskService reader(service.bus());
    const auto read = std::get<host::DiskSnapshot>(reader.readNow());
    const auto matches = [&](const std::function<void(host::BlockDevice&)>& edit) {
        host::DiskSnapshot snapshot = read;
        const QString disk = snapshot.image(image)->path;
        const QString entry = snapshot.partitionsOf(disk).at(0)->path;
        edit(*std::find_if(snapshot.devices.begin(), snapshot.devices.end(),
                           [&](const host::BlockDevice& device) { return device.path == entry; }));
        return host::matchesKernel(snapshot, *snapshot.device(disk));
    };
    EXPECT_TRUE(matches([](host::BlockDevice&) {}));
    EXPECT_FALSE(matches([](host::BlockDevice& entry) { entry.partition->size -= kMiB; }));
    EXPECT_FALSE(matches([](host::BlockDevice& entry) { entry.size -= kMiB; }));
    EXPECT_FALSE(matches([](host::BlockDevice& entry) { entry.partition->offset += kMiB; }));
    EXPECT_FALSE(matches([](host::BlockDevice& entry) { entry.partition.reset(); }));
}

TEST_F(DiskBackendTest, ChangeOfAnotherDisk_DoesNotPushTheMachineAgain)
{
    QSignalSpy changes(backend.get(), &DiskBackend::machineChanged);
    const QString other = service.image("other.img", 8 * kMiB);
    outputOf("sh", {"-c", QString("losetup --find --show '%1'").arg(other)});
    const QString loop = PrivateDiskService::loopDeviceOf(other);
    outputOf("udevadm", {"settle"});
    // The next order is read after the change of the other disk.
    EXPECT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    EXPECT_EQ(changes.size(), 1);
    outputOf("losetup", {"--detach", loop});
}

TEST_F(DiskBackendTest, ClosedBackEnd_DetachesItsImage)
{
    EXPECT_NE(PrivateDiskService::loopDeviceOf(image), "");
    backend.reset();
    EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(image).isEmpty(); }, kTestMs));
}

TEST_F(DiskBackendTest, Machine_IsNotReadDuringAnOrder)
{
    ASSERT_EQ(create(600 * kMiB, "NTFS", "Data"), "");
    const auto execution = backend->execute(
        kFormat, {{"driveLetter", "D"}, {"fileSystem", "NTFS"}, {"label", ""}, {"quickFormat", false}});
    bool ended = false;
    int changesAtEnd = -1;
    QSignalSpy changes(backend.get(), &DiskBackend::machineChanged);
    QObject::connect(execution.get(), &Execution::ended, execution.get(), [&] {
        ended = true;
        changesAtEnd = changes.size();
    });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return ended; }, kTestMs));
    // An open device blocks a change of the partition table.
    EXPECT_EQ(changesAtEnd, 1);
}

TEST_F(DiskBackendTest, ChangeFromOutside_UpdatesTheMachine)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    outputOf("e2label", {device, "Outside"});
    // udevd sends this event itself where it watches the device.
    outputOf("udevadm", {"trigger", "--action=change", "--name-match=" + device});
    EXPECT_TRUE(pumpUntil([&] { return drive("D").label == "Outside"; }, kTestMs));
}

TEST_F(DiskBackendTest, ChangedLetter_StaysWithItsPartition)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "One"), "");
    EXPECT_EQ(order(kLetter, {{"driveLetter", "D"}, {"newDriveLetter", "q:"}}), "");
    EXPECT_EQ(drive("Q").label, "One");
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Two"), "");
    EXPECT_EQ(drive("Q").label, "One");
    EXPECT_EQ(drive("D").label, "Two");
}

TEST_F(DiskBackendTest, LostService_RejectsOrders)
{
    service.stop();
    const auto reason = [&] { return backend->orderRejection(kDelete, {{"driveLetter", "D"}})->english(); };
    EXPECT_TRUE(pumpUntil([&] { return reason() == "The disk service is not running."; }, kTestMs));
    outputOf("losetup", {"--detach", PrivateDiskService::loopDeviceOf(image)});
}

} // namespace

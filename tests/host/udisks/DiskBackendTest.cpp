// Orders on images through UDisks2 on a private bus, verified with independent tools.
#include "host/udisks/DiskBackend.h"
#include "tests/host/udisks/PrivateDiskService.h"
#include "tests/support/Threads.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

using host::DiskBackend;
using host::Execution;

constexpr qint64 kMiB = 1024 * 1024;
constexpr int kTestMs = 120000;
constexpr int kInitializeToMbr = 5;
constexpr int kResize = 14;
constexpr int kFormat = 15;
constexpr int kDelete = 16;
constexpr int kCreate = 18;
constexpr int kLetter = 30;
constexpr int kLabel = 31;

class DiskBackendTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!service.error().isEmpty())
            GTEST_SKIP() << service.error().toStdString();
        image = service.image("a.img", 1024 * kMiB);
        outputOf("sh", {"-c", QString("echo label: gpt | sfdisk -q '%1'").arg(image)});
        open();
    }

    void open()
    {
        auto result = DiskBackend::open(service.bus(), {{image, true}});
        ASSERT_FALSE(std::holds_alternative<QString>(result)) << std::get<QString>(result).toStdString();
        backend = std::move(std::get<std::unique_ptr<DiskBackend>>(result));
    }

    // The error of an order; empty if it was carried out.
    QString order(int function, const QVariantMap& params)
    {
        // No order of a test reaches a device that is not the loop device of the test's own image.
        EXPECT_TRUE(PrivateDiskService::loopDeviceOf(image).startsWith("/dev/loop"));
        const auto execution = backend->execute(function, params);
        QString result = "not ended";
        QObject::connect(execution.get(), &Execution::ended, execution.get(),
                         [&](Execution::Outcome, const host::Text& error) { result = error.english(); });
        execution->start();
        EXPECT_TRUE(pumpUntil([&] { return result != "not ended"; }, kTestMs));
        return result;
    }

    QString create(qint64 size, const QString& fileSystem, const QString& label, int region = 0)
    {
        return order(kCreate, {{"diskIndex", 0},
                               {"unallocatedIndex", region},
                               {"capacity", size},
                               {"fileSystem", fileSystem},
                               {"label", label}});
    }

    const host::Partition& drive(const char* letter)
    {
        const host::Partition* found = backend->machine()->partition(letter);
        static const host::Partition missing;
        EXPECT_NE(found, nullptr) << letter;
        return found == nullptr ? missing : *found;
    }

    // The partitions of the image as sfdisk reads them from the file.
    QJsonArray table() const
    {
        const QByteArray json = outputOf("sfdisk", {"--json", image}).toUtf8();
        return QJsonDocument::fromJson(json).object()["partitiontable"].toObject()["partitions"].toArray();
    }

    // Of the table and the first partition.
    QString checksum() const
    {
        return outputOf("sh", {"-c", QString("head -c 110M '%1' | sha256sum").arg(image)});
    }

    QString blkid(const char* letter, const char* tag)
    {
        const QString offset = QString::number(drive(letter).startOffset());
        return outputOf("blkid", {"-p", "-s", tag, "-o", "value", "-O", offset, image}).trimmed();
    }

    PrivateDiskService service;
    QString image;
    std::unique_ptr<DiskBackend> backend;
};

TEST_F(DiskBackendTest, EmptyGptImage_IsOneDiskWithAFreeRegion)
{
    ASSERT_EQ(backend->machine()->disks.size(), 1u);
    const host::Disk& disk = backend->machine()->disks[0];
    EXPECT_TRUE(disk.isGPT);
    EXPECT_EQ(disk.size, 1024 * kMiB);
    ASSERT_EQ(disk.partitions.size(), 1u);
    EXPECT_TRUE(disk.partitions[0].unallocated);
}

TEST_F(DiskBackendTest, FileSystemWithoutTable_IsNotShownAsAnEmptyDisk)
{
    const QString bare = service.image("bare.img", 64 * kMiB);
    outputOf("mkfs.ext4", {"-q", "-F", bare});
    const auto result = DiskBackend::open(service.bus(), {{bare, true}});
    ASSERT_TRUE(std::holds_alternative<QString>(result));
    EXPECT_EQ(std::get<QString>(result), bare + ": a file system without a partition table is not supported");
    EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(bare).isEmpty(); }, kTestMs));
}

TEST_F(DiskBackendTest, FileSystemAppearingOnAnEmptyDisk_IsNotErased)
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

TEST_F(DiskBackendTest, ClosedBackEnd_DetachesItsImage)
{
    EXPECT_NE(PrivateDiskService::loopDeviceOf(image), "");
    backend.reset();
    EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(image).isEmpty(); }, kTestMs));
}

TEST_F(DiskBackendTest, CreatePartition_WritesTableAndFileSystem)
{
    EXPECT_EQ(create(200 * kMiB, "NTFS", "Data"), "");
    EXPECT_EQ(drive("D").fsString, "NTFS");
    EXPECT_EQ(drive("D").label, "Data");
    const QJsonArray entries = table();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].toObject()["start"].toInt(), 2048);
    EXPECT_EQ(entries[0].toObject()["size"].toInt(), 200 * 2048);
    EXPECT_EQ(entries[0].toObject()["type"].toString(), "EBD0A0A2-B9E5-4433-87C0-68B6B72699C7");
    EXPECT_EQ(blkid("D", "TYPE"), "ntfs");
    EXPECT_EQ(blkid("D", "LABEL"), "Data");
}

TEST_F(DiskBackendTest, FormatAndLabel_ChangeOnlyTheirPartition)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "One"), "");
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Two"), "");
    EXPECT_EQ(order(kFormat,
                    {{"driveLetter", "D"}, {"fileSystem", "exFAT"}, {"label", "New"}, {"quickFormat", true}}),
              "");
    EXPECT_EQ(order(kLabel, {{"driveLetter", "E"}, {"newLabel", "Renamed"}}), "");
    EXPECT_EQ(blkid("D", "TYPE"), "exfat");
    EXPECT_EQ(blkid("D", "LABEL"), "New");
    EXPECT_EQ(blkid("E", "TYPE"), "ext4");
    EXPECT_EQ(blkid("E", "LABEL"), "Renamed");
}

TEST_F(DiskBackendTest, DeletePartition_KeepsTheOthersAndTheirLetters)
{
    ASSERT_EQ(create(100 * kMiB, "NTFS", "One"), "");
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Two"), "");
    EXPECT_EQ(order(kDelete, {{"driveLetter", "D"}}), "");
    const QJsonArray entries = table();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].toObject()["start"].toInt(), 101 * 2048);
    EXPECT_EQ(backend->machine()->partition("D"), nullptr);
    EXPECT_EQ(drive("E").label, "Two");
}

TEST_F(DiskBackendTest, Ntfs_ShrinksAndGrowsAgain)
{
    ASSERT_EQ(create(300 * kMiB, "NTFS", "Data"), "");
    EXPECT_LT(drive("D").usedSize, 100 * kMiB);
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 200 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 400 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 400 * kMiB);
    EXPECT_EQ(table()[0].toObject()["size"].toInt(), 400 * 2048);
    EXPECT_NE(outputOf("ntfsresize", {"--info", "--force", PrivateDiskService::loopDeviceOf(image) + "p1"})
                  .indexOf("Current volume size: 4194"),
              -1);
}

TEST_F(DiskBackendTest, Ext4_ShrinksAndGrowsAgain)
{
    ASSERT_EQ(create(300 * kMiB, "EXT4", "Data"), "");
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 200 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 400 * kMiB}}), "");
    outputOf("e2fsck", {"-fn", PrivateDiskService::loopDeviceOf(image) + "p1"});
}

TEST_F(DiskBackendTest, MountedFileSystem_IsNeverChanged)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    QTemporaryDir place;
    outputOf("mount", {device, place.path()});
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

TEST_F(DiskBackendTest, DeviceHeldByAnotherProgram_IsNeverChanged)
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

TEST_F(DiskBackendTest, PartitionReplacedFromOutside_IsNotChanged)
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

TEST_F(DiskBackendTest, FullFormat_ReportsProgressAndCanBeCancelled)
{
    ASSERT_EQ(create(900 * kMiB, "NTFS", "Data"), "");
    const auto execution = backend->execute(
        kFormat, {{"driveLetter", "D"}, {"fileSystem", "NTFS"}, {"label", ""}, {"quickFormat", false}});
    std::optional<Execution::Outcome> outcome;
    QObject::connect(execution.get(), &Execution::ended, execution.get(),
                     [&](Execution::Outcome ended) { outcome = ended; });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return outcome || execution->progress() > 0; }, kTestMs));
    EXPECT_GT(execution->progress(), 0);
    EXPECT_LT(execution->progress(), 1);
    execution->cancel();
    EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }, kTestMs));
    EXPECT_EQ(outcome, Execution::Outcome::Cancelled);
    // The service erases the signature first.
    EXPECT_EQ(drive("D").fsString, "RAW");
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

TEST_F(DiskBackendTest, InitializeToMbr_WritesAnEmptyTable)
{
    EXPECT_EQ(order(kInitializeToMbr, {{"diskIndex", 0}}), "");
    EXPECT_FALSE(backend->machine()->disks[0].isGPT);
    EXPECT_EQ(create(100 * kMiB, "FAT32", "STICK"), "");
    const QJsonObject entry = table()[0].toObject();
    EXPECT_EQ(entry["start"].toInt(), 2048);
    EXPECT_EQ(entry["type"].toString(), "c");
}

TEST_F(DiskBackendTest, LogicalDrive_IsDeletedByItsPosition)
{
    ASSERT_EQ(order(kInitializeToMbr, {{"diskIndex", 0}}), "");
    backend.reset();
    outputOf(
        "sh",
        {"-c", QString("printf 'label: dos\nstart=2048,size=204800,type=7\nstart=409600,type=f\n"
                       "start=411648,size=204800,type=7\nstart=620544,size=204800,type=7\n' | sfdisk -q '%1'")
                   .arg(image)});
    open();
    ASSERT_NE(backend, nullptr);
    EXPECT_TRUE(pumpUntil([&] { return backend->machine()->partition("F") != nullptr; }, kTestMs));
    EXPECT_FALSE(drive("F").isPrimary);
    EXPECT_EQ(order(kDelete, {{"driveLetter", "E"}}), "");
    // The table gives the number of the deleted drive to the next one.
    EXPECT_EQ(drive("F").startSector, 620544);
    EXPECT_EQ(
        order(kFormat, {{"driveLetter", "F"}, {"fileSystem", "NTFS"}, {"label", "L"}, {"quickFormat", true}}),
        "");
    EXPECT_EQ(blkid("F", "LABEL"), "L");
    EXPECT_EQ(order(kDelete, {{"driveLetter", "F"}}), "");
    EXPECT_NE(backend->machine()->partition("D"), nullptr);
}

TEST_F(DiskBackendTest, RegionInAnExtendedPartition_GetsALogicalDrive)
{
    backend.reset();
    outputOf("sh", {"-c", QString("printf 'label: dos\nstart=2048,size=204800,type=7\nstart=409600,type=f\n"
                                  "start=411648,size=204800,type=7\n' | sfdisk -q '%1'")
                              .arg(image)});
    open();
    ASSERT_NE(backend, nullptr);
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("E") != nullptr; }, kTestMs));
    EXPECT_EQ(create(100 * kMiB, "NTFS", "Inside", 1), "");
    EXPECT_EQ(create(50 * kMiB, "NTFS", "Before", 0), "");
    EXPECT_FALSE(drive("F").isPrimary);
    EXPECT_EQ(drive("F").label, "Inside");
    EXPECT_GT(drive("F").startSector, 616448);
    EXPECT_TRUE(drive("G").isPrimary);
    EXPECT_EQ(drive("G").startSector, 101 * 2048);
    EXPECT_EQ(table().size(), 5);
}

TEST_F(DiskBackendTest, FileSystemThatCannotBeResized_IsRejectedInAdvance)
{
    ASSERT_EQ(create(100 * kMiB, "exFAT", "Data"), "");
    const auto rejection = backend->orderRejection(kResize, {{"driveLetter", "D"}, {"size", 150 * kMiB}});
    ASSERT_TRUE(rejection);
    EXPECT_EQ(rejection->english(), "The disk service cannot resize exfat file systems.");
}

TEST_F(DiskBackendTest, ChangeFromOutside_UpdatesTheMachine)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Data"), "");
    const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
    outputOf("e2label", {device, "Outside"});
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

// The used space of real file systems, read without blocking the application thread.
#include "host/udisks/DeviceFactsReader.h"
#include "tests/host/udisks/PrivateDiskService.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

namespace {

using host::BlockDevice;

constexpr qint64 kMiB = 1024 * 1024;
constexpr int kTestMs = 120000;

// An image with four partitions of 40 MiB: NTFS, ext4, FAT32 and exFAT.
class FactsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!daemon.error().isEmpty())
            GTEST_SKIP() << daemon.error().toStdString();
        image = daemon.image("facts.img", 200 * kMiB);
        const QString entry = "size=40MiB, type=EBD0A0A2-B9E5-4433-87C0-68B6B72699C7\\n";
        outputOf("sh",
                 {"-c", QString("printf 'label: gpt\\n%1' | sfdisk -q '%2'").arg(entry.repeated(4), image)});
        outputOf("losetup", {"--find", image});
        loop = PrivateDiskService::loopDeviceOf(image);
        ASSERT_TRUE(loop.startsWith("/dev/loop"));
        // Events of the new device can remove its partitions on a kernel without partition table support.
        for (int i = 0; i < 20 && !QFile::exists(loop + "p4"); ++i) {
            outputOf("udevadm", {"settle"});
            outputOf("partx", {"-u", loop});
            outputOf("udevadm", {"settle"});
        }
        outputOf("mkntfs", {"-q", "-F", loop + "p1"});
        outputOf("mkfs.ext4", {"-q", "-F", loop + "p2"});
        outputOf("mkfs.fat", {"-F", "32", loop + "p3"});
        outputOf("mkfs.exfat", {loop + "p4"});
        outputOf("udevadm", {"settle"});
        service = std::make_unique<host::DiskService>(daemon.bus());
        // On a loaded computer the service does not always notice the new file systems.
        for (int i = 0; i < 20 && !pumpUntil([this] { return isKnown(); }, 3000); ++i)
            outputOf("udevadm", {"trigger", "--action=change", "--settle", "--subsystem-match=block",
                                 "--sysname-match=" + loop.section('/', -1) + "*"});
        ASSERT_EQ(partitions.size(), 4u);
        reader = std::make_unique<host::DeviceFactsReader>(*service);
    }

    void TearDown() override
    {
        reader.reset();
        if (loop.startsWith("/dev/loop"))
            outputOf("losetup", {"--detach", loop});
    }

    bool isKnown()
    {
        const auto snapshot = std::get<host::DiskSnapshot>(service->readNow());
        partitions.clear();
        for (int number = 1; number <= 4; ++number) {
            const BlockDevice* device = snapshot.deviceFile(loop + "p" + QString::number(number));
            if (device != nullptr && !device->type.isEmpty())
                partitions.push_back(*device);
        }
        return partitions.size() == 4;
    }

    void read()
    {
        bool done = false;
        reader->read(partitions, [&] { done = true; });
        EXPECT_FALSE(done);
        EXPECT_TRUE(pumpUntil([&] { return done; }, kTestMs));
    }

    // By this process or a child process. Programs such as udevd open devices at any time.
    static bool isOpen(const QString& device)
    {
        const QString script =
            "for process in %1 $(pgrep -P %1); do ls -l /proc/$process/fd; done 2>/dev/null |"
            " grep -c -- '-> %2$'; true";
        return outputOf("sh", {"-c", script.arg(QCoreApplication::applicationPid()).arg(device)}).toInt() > 0;
    }

    PrivateDiskService daemon;
    QString image;
    QString loop;
    std::unique_ptr<host::DiskService> service;
    std::vector<BlockDevice> partitions;
    std::unique_ptr<host::DeviceFactsReader> reader;
};

TEST_F(FactsTest, EachFileSystem_ReportsItsUsedSpaceAndClusters)
{
    read();
    const int clusters[] = {4096, 1024, 512, 4096};
    for (std::size_t i = 0; i < 4; ++i) {
        const host::DeviceFacts facts = reader->factsOf(partitions[i]);
        ASSERT_TRUE(facts.usedBytes) << i;
        EXPECT_GT(*facts.usedBytes, 0) << i;
        EXPECT_LT(*facts.usedBytes, 20 * kMiB) << i;
        EXPECT_EQ(facts.clusterBytes, clusters[i]) << i;
        EXPECT_EQ(facts.sectorSize, 512) << i;
    }
}

TEST_F(FactsTest, UnchangedPartition_IsNotReadAgain)
{
    QSignalSpy started(reader.get(), &host::DeviceFactsReader::toolStarted);
    read();
    EXPECT_EQ(started.size(), 4);
    read();
    EXPECT_EQ(started.size(), 4);
    reader->forget(partitions[1].path);
    read();
    ASSERT_EQ(started.size(), 5);
    EXPECT_EQ(started[4][0], loop + "p2");
    partitions[0].uuid = "another file system";
    read();
    EXPECT_EQ(started.size(), 6);
}

TEST_F(FactsTest, StoppedReading_HoldsNoDeviceAndDoesNotEnd)
{
    QSignalSpy started(reader.get(), &host::DeviceFactsReader::toolStarted);
    bool done = false;
    reader->read(partitions, [&] { done = true; });
    EXPECT_TRUE(pumpUntil([&] { return started.size() == 4; }, kTestMs));
    // The replies that brought the descriptors.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    reader->stop();
    for (const BlockDevice& device : partitions)
        EXPECT_FALSE(isOpen(device.device)) << device.device.toStdString();
    read();
    EXPECT_FALSE(done);
    EXPECT_TRUE(reader->factsOf(partitions[0]).usedBytes);
}

TEST_F(FactsTest, MountedFileSystem_IsReadEachTime)
{
    QTemporaryDir place;
    outputOf("mount", {loop + "p2", place.path()});
    partitions[1].mountPoints = QStringList{place.path()};
    read();
    const qint64 before = reader->factsOf(partitions[1]).usedBytes.value_or(-1);
    outputOf("dd", {"if=/dev/zero", "of=" + place.filePath("file"), "bs=1M", "count=5", "conv=fsync"});
    read();
    const qint64 after = reader->factsOf(partitions[1]).usedBytes.value_or(-1);
    outputOf("umount", {place.path()});
    EXPECT_GE(after - before, 5 * kMiB);
    EXPECT_LT(after - before, 6 * kMiB);
}

TEST_F(FactsTest, DamagedFileSystem_HasUnknownSpace)
{
    outputOf("dd", {"if=/dev/zero", "of=" + loop + "p2", "bs=1024", "seek=1", "count=1", "conv=fsync"});
    read();
    EXPECT_FALSE(reader->factsOf(partitions[1]).usedBytes);
    EXPECT_TRUE(reader->factsOf(partitions[0]).usedBytes);
}

} // namespace

// A whole disk as the user names it with --device. It is a loop device on an image of the test.
#include "host/machine/MachineReader.h"
#include "host/machine/MachineWriter.h"
#include "host/udisks/DiskBackend.h"
#include "tests/host/udisks/PrivateDiskService.h"
#include "tests/support/Printing.h"
#include "tests/support/Threads.h"

#include <QtCore/QFile>
#include <QtCore/QThread>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

using host::DiskBackend;
using host::Execution;

constexpr qint64 kMiB = 1024 * 1024;
constexpr int kTestMs = 120000;
constexpr int kInitializeToGpt = 6;
constexpr int kFormat = 15;
constexpr int kLabel = 31;

class Device : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!service.error().isEmpty())
            GTEST_SKIP() << service.error().toStdString();
        image = service.image("disk.img", 64 * kMiB);
        outputOf("sh", {"-c", QString("printf 'label: gpt\nsize=32MiB\n' | sfdisk -q '%1'").arg(image)});
        attach();
    }

    void TearDown() override
    {
        backend.reset();
        if (!loop.isEmpty() && PrivateDiskService::loopDeviceOf(image) == loop)
            outputOf("losetup", {"--detach", loop});
    }

    void attach()
    {
        outputOf("mkfs.ext4", {"-q", "-F", "-L", "Data", "-E", "offset=1048576", image, "32M"});
        QFile file(image);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QVariant descriptor = QVariant::fromValue(QDBusUnixFileDescriptor(file.handle()));
        host::DiskService disks(service.bus());
        const QDBusMessage reply = disks.callNow(
            {"/org/freedesktop/UDisks2/Manager", "Manager", "LoopSetup", {descriptor, QVariantMap()}});
        ASSERT_EQ(host::errorOf(reply), "");
        loop = PrivateDiskService::loopDeviceOf(image);
        ASSERT_TRUE(loop.startsWith("/dev/loop")) << loop.toStdString();
    }

    // The error of the start; empty if it succeeds.
    QString open(std::vector<host::DiskSource> sources)
    {
        auto result = DiskBackend::open(service.bus(), std::move(sources));
        if (const QString* error = std::get_if<QString>(&result))
            return *error;
        backend = std::move(std::get<std::unique_ptr<DiskBackend>>(result));
        return QString();
    }
    QString open() { return open({{loop, false}}); }
    // The service reads a new loop device a moment after the kernel.
    bool opens()
    {
        const QString error = open();
        EXPECT_EQ(error, "");
        return error.isEmpty() && pumpUntil([&] { return drive() != nullptr && drive()->label == "Data"; });
    }
    const host::Partition* drive() { return backend->machine()->partition("D"); }

    QString order(int function, const QVariantMap& params)
    {
        // No order of a test reaches a device that is not the loop device of the test's own image.
        EXPECT_TRUE(loop.startsWith("/dev/loop"));
        const auto execution = backend->execute(function, params);
        QString result = "not ended";
        QObject::connect(execution.get(), &Execution::ended, execution.get(),
                         [&](Execution::Outcome, const host::Text& error) { result = error.english(); });
        execution->start();
        EXPECT_TRUE(pumpUntil([&] { return result != "not ended"; }, kTestMs));
        return result;
    }

    static QString checksum(const QString& file) { return outputOf("sha256sum", {file}); }

    PrivateDiskService service;
    QString image;
    QString loop;
    std::unique_ptr<DiskBackend> backend;
    const QVariantMap format{
        {"driveLetter", "D"}, {"fileSystem", "EXT4"}, {"label", "New"}, {"quickFormat", true}};
};

TEST_F(Device, WholeDisk_IsShownAndChanged)
{
    ASSERT_TRUE(opens());
    EXPECT_TRUE(backend->isReal());
    EXPECT_EQ(backend->machine()->name, QString(loop).remove("/dev/"));
    EXPECT_FALSE(backend->machine()->disks[0].isVirtualDisk);
    EXPECT_EQ(order(kFormat, format), "");
    EXPECT_EQ(drive()->label, "New");
    backend.reset();
    // Only images are detached.
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), loop);
}

TEST_F(Device, OrderThatDestroysData_NeedsAConfirmation)
{
    ASSERT_TRUE(opens());
    const auto question = backend->confirmation(kFormat, format);
    ASSERT_TRUE(question);
    EXPECT_EQ(question->device, loop);
    EXPECT_EQ(question->size, 64 * kMiB);
    ASSERT_EQ(question->loss.partitions.size(), 1u);
    EXPECT_EQ(question->loss.partitions[0].label, "Data");
    EXPECT_FALSE(backend->confirmation(kLabel, {{"driveLetter", "D"}, {"newLabel", "New"}}));
}

TEST_F(Device, Image_NeedsNoConfirmation)
{
    const QString other = service.image("other.img", 32 * kMiB);
    outputOf("sh", {"-c", QString("echo label: gpt | sfdisk -q '%1'").arg(other)});
    ASSERT_EQ(open({{other, true}}), "");
    EXPECT_FALSE(backend->confirmation(kInitializeToGpt, {{"diskIndex", 0}}));
    EXPECT_EQ(backend->machine()->name, "other.img");
}

TEST_F(Device, MountedPartition_IsRefusedAtTheStartAndBeforeAnOrder)
{
    ASSERT_TRUE(opens());
    const QTemporaryDir place;
    // Reading leaves the file system as it is.
    outputOf("mount", {"--options", "ro,noload", loop + "p1", place.path()});
    const QString before = checksum(image);
    const QString orderError = order(kFormat, format);
    backend.reset();
    const QString startError = open();
    const QString after = checksum(image);
    outputOf("umount", {place.path()});
    const QString expected = QString("%1p1 holds a mounted file system (%2).").arg(loop, place.path());
    EXPECT_EQ(orderError, expected);
    EXPECT_EQ(startError, expected);
    EXPECT_EQ(before, after);
}

TEST_F(Device, FileSystemAppearingOnAnEmptyDisk_IsNotErased)
{
    // udevd can have removed the partitions already.
    outputOf("sh", {"-c", QString("wipefs -aq %1 && { partx -d %1 2>/dev/null; true; }").arg(loop)});
    ASSERT_TRUE(pumpUntil([&] { return open().isEmpty() && backend->machine()->disks[0].isUnInitialize; }));
    outputOf("mkfs.ext4", {"-q", "-F", loop});
    outputOf("udevadm", {"trigger", "--action=change", loop});
    host::DiskService reader(service.bus());
    ASSERT_TRUE(pumpUntil([&] {
        const auto snapshot = std::get<host::DiskSnapshot>(reader.readNow());
        return snapshot.deviceFile(loop)->type == "ext4";
    }));
    EXPECT_EQ(order(kInitializeToGpt, {{"diskIndex", 0}}),
              loop + " holds a file system without a partition table.");
    EXPECT_EQ(outputOf("blkid", {"-p", "-s", "TYPE", "-o", "value", image}).trimmed(), "ext4");
}

TEST_F(Device, DiskHeldByTheSystem_IsRefusedAtTheStart)
{
    ASSERT_TRUE(opens());
    backend.reset();
    const int held = ::open((loop + "p1").toLocal8Bit().constData(), O_RDONLY | O_EXCL | O_CLOEXEC);
    ASSERT_GE(held, 0);
    const QString error = open();
    ::close(held);
    EXPECT_TRUE(error.startsWith(loop + " is in use: ")) << error.toStdString();
    EXPECT_TRUE(error.contains("Device or resource busy")) << error.toStdString();
}

TEST_F(Device, Partition_IsRefused)
{
    ASSERT_TRUE(opens());
    EXPECT_EQ(open({{loop + "p1", false}}), loop + "p1: a partition; name its whole disk");
}

TEST_F(Device, DiskAndItsImageTogether_AreRefused)
{
    ASSERT_TRUE(opens());
    backend.reset();
    EXPECT_NE(open({{image, true}, {loop, false}}), "");
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), loop);
}

TEST_F(Device, ReplacedDisk_IsNeitherShownNorChanged)
{
    ASSERT_TRUE(opens());
    const QString other = service.image("other.img", 64 * kMiB);
    outputOf("cp", {image, other});
    const QString before = checksum(other);
    ASSERT_EQ(PrivateDiskService::loopDeviceOf(image), loop);
    outputOf("losetup", {"--detach", loop});
    // The device is free when the last program has closed it. The host must not process events until then.
    outputOf("sh",
             {"-c", QString("for i in $(seq 500); do losetup '%1' '%2' 2>/dev/null && exit; sleep 0.02; "
                            "done; exit 1")
                        .arg(loop, other)});
    host::DiskService reader(service.bus());
    const auto isKnown = [&] {
        return std::get<host::DiskSnapshot>(reader.readNow()).image(other) != nullptr;
    };
    for (int i = 0; i < 1000 && !isKnown(); ++i)
        QThread::msleep(20);
    ASSERT_TRUE(isKnown());
    const QString error = order(kFormat, format);
    EXPECT_TRUE(pumpUntil([&] { return backend->machine()->disks.empty(); }, kTestMs));
    backend.reset();
    const QString after = checksum(other);
    if (PrivateDiskService::loopDeviceOf(other) == loop)
        outputOf("losetup", {"--detach", loop});
    EXPECT_EQ(error, "Another disk has taken the place of this disk.");
    EXPECT_EQ(before, after);
}

TEST_F(Device, SavedMachine_IsTheDiskAsItIs)
{
    ASSERT_TRUE(opens());
    const QTemporaryDir folder;
    const QString file = folder.filePath("machine.json");
    ASSERT_EQ(host::writeMachineFile(*backend->machine(), file), "");
    const auto saved = host::readMachineFile(file);
    ASSERT_TRUE(std::holds_alternative<host::Machine>(saved));
    const host::Machine& machine = std::get<host::Machine>(saved);
    ASSERT_EQ(machine.disks.size(), 1u);
    EXPECT_EQ(machine.disks[0].size, 64 * kMiB);
    ASSERT_NE(machine.partition("D"), nullptr);
    EXPECT_EQ(machine.partition("D")->label, "Data");
    EXPECT_EQ(machine.partition("D")->startSector, 2048);
    EXPECT_EQ(machine.partition("D")->size, 32 * kMiB);
}

} // namespace

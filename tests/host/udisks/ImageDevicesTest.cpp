// Who may use an image: this host, a later one, another host, another program; and images that cannot be
// written.
#include "tests/host/udisks/DiskBackendFixture.h"

#include <QtCore/QDir>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

using host::DiskBackend;

class ImageDevicesTest : public DiskBackendFixture
{
protected:
    // Of a second host on the image; empty if it can use the image.
    QString errorOfSecondHost()
    {
        const auto result = DiskBackend::open(service.bus(), {{image, true}});
        return std::holds_alternative<QString>(result) ? std::get<QString>(result) : QString();
    }

    // The state of a host that was killed: its loop device and its entry remain, its lock is gone.
    void leaveAttached()
    {
        QFile state(service.folder() + "/zorhost/images.json");
        ASSERT_TRUE(state.open(QIODevice::ReadOnly));
        const QByteArray entry = state.readAll();
        state.close();
        backend.reset();
        outputOf("losetup", {"--partscan", "--find", image});
        ASSERT_TRUE(state.open(QIODevice::WriteOnly));
        state.write(entry);
    }

    void detach() { outputOf("losetup", {"--detach", PrivateDiskService::loopDeviceOf(image)}); }
};

TEST_F(ImageDevicesTest, SecondHost_IsRefusedUntilTheFirstEnds)
{
    const QString device = PrivateDiskService::loopDeviceOf(image);
    EXPECT_EQ(errorOfSecondHost(), image + ": the image is already open in another host or program");
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), device);
    backend.reset();
    EXPECT_EQ(errorOfSecondHost(), "");
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), "");
}

TEST_F(ImageDevicesTest, ImageOfAnotherProgram_IsRefusedAndStaysAttached)
{
    backend.reset();
    outputOf("losetup", {"--find", image});
    const QString device = PrivateDiskService::loopDeviceOf(image);
    EXPECT_TRUE(pumpUntil([&] { return errorOfSecondHost() != ""; }, kTestMs));
    EXPECT_EQ(errorOfSecondHost(), image + ": another program has attached the image as " + device +
                                       "; detach it with losetup --detach " + device);
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), device);
    detach();
}

TEST_F(ImageDevicesTest, ImageLockedByAnotherProgram_IsRefused)
{
    backend.reset();
    const int held = ::open(image.toLocal8Bit().constData(), O_RDWR | O_CLOEXEC);
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_start = 100;
    lock.l_len = 1;
    ASSERT_EQ(fcntl(held, F_OFD_SETLK, &lock), 0);
    EXPECT_EQ(errorOfSecondHost(), image + ": another program has locked the image");
    ::close(held);
    EXPECT_EQ(errorOfSecondHost(), "");
}

TEST_F(ImageDevicesTest, DeviceOfAKilledHost_IsReportedUsedAndFinallyRemoved)
{
    leaveAttached();
    const QString device = PrivateDiskService::loopDeviceOf(image);
    open();
    ASSERT_NE(backend, nullptr);
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), device);
    const auto notices = backend->takeNotices();
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].english(), "The image " + image + " was still attached as " + device +
                                        " by a host that ended unexpectedly. The device is used again.");
    backend.reset();
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), "");
}

// The service can still be carrying out an order of the killed host.
TEST_F(ImageDevicesTest, DeviceOfAKilledHost_StaysAttachedIfItIsInUse)
{
    leaveAttached();
    const QString device = PrivateDiskService::loopDeviceOf(image);
    const int held = ::open(device.toLocal8Bit().constData(), O_RDWR | O_EXCL | O_CLOEXEC);
    ASSERT_GE(held, 0);
    const QString error = errorOfSecondHost();
    EXPECT_TRUE(error.startsWith(image + " is in use: ")) << error.toStdString();
    ::close(held);
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), device);
    open();
    ASSERT_NE(backend, nullptr);
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), device);
    backend.reset();
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), "");
}

TEST_F(ImageDevicesTest, Release_DetachesBeforeAnExitWithoutDestructors)
{
    backend->release();
    EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(image) == ""; }, kTestMs));
}

TEST_F(ImageDevicesTest, ImageThatStaysAttached_IsNamed)
{
    const QString device = PrivateDiskService::loopDeviceOf(image);
    backend->takeNotices();
    service.kill("udisksd");
    EXPECT_TRUE(pumpUntil([&] { return backend->unavailability().has_value(); }, kTestMs));
    backend->release();
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), device);
    const std::vector<host::Text> notices = backend->takeNotices();
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].english(), "The image " + image + " stays attached as " + device +
                                        ": The disk service has ended or does not answer.");
    backend.reset();
    outputOf("losetup", {"--detach", device});
}

// A file that also root cannot write.
class ReadOnlyImage : public ImageDevicesTest
{
protected:
    void TearDown() override
    {
        backend.reset();
        if (isImmutable_)
            outputOf("chattr", {"-i", image});
    }

    bool makeReadOnly()
    {
        backend.reset();
        outputOf("sh", {"-c", QString("echo 'size=50M' | sfdisk -q '%1'").arg(image)});
        isImmutable_ = QProcess::execute("chattr", {"+i", image}) == 0;
        return isImmutable_;
    }

    bool isImmutable_ = false;
};

TEST_F(ReadOnlyImage, IsShownAndEveryChangeIsRejected)
{
    if (!makeReadOnly())
        GTEST_SKIP() << "the file system of the scratch folder has no immutable files";
    const QString before = checksum();
    open();
    ASSERT_NE(backend, nullptr);
    ASSERT_TRUE(pumpUntil([&] { return backend->machine()->partition("D") != nullptr; }, kTestMs));
    EXPECT_TRUE(backend->machine()->disks[0].readonly);
    EXPECT_TRUE(drive("D").readonly);
    EXPECT_EQ(order(kInitializeToMbr, {{"diskIndex", 0}}), "The disk cannot be written to.");
    EXPECT_EQ(create(100 * kMiB, "NTFS", ""), "The disk cannot be written to.");
    EXPECT_NE(order(kDelete, {{"driveLetter", "D"}}), "");
    EXPECT_NE(
        order(kFormat, {{"driveLetter", "D"}, {"fileSystem", "EXT4"}, {"label", ""}, {"quickFormat", true}}),
        "");
    EXPECT_EQ(checksum(), before);
}

} // namespace

// A refusal by the service, and a file system under the image that is full.
#include "tests/host/udisks/DiskBackendFixture.h"

#include <unistd.h>

namespace {

using host::DiskBackend;
using FaultsTest = DiskBackendFixture;

constexpr uid_t kOrdinaryUser = 65534;

// A connection of a user without rights.
class OrdinaryUser
{
public:
    explicit OrdinaryUser(const QString& address)
    {
        EXPECT_EQ(seteuid(kOrdinaryUser), 0);
        QDBusConnection::connectToBus(address, "ordinary");
        EXPECT_EQ(seteuid(0), 0);
    }
    ~OrdinaryUser() { QDBusConnection::disconnectFromBus("ordinary"); }
    QDBusConnection bus() const { return QDBusConnection("ordinary"); }
};

TEST_F(FaultsTest, RefusalByTheService_IsShownUnchanged)
{
    backend.reset();
    const QString before = checksum();
    const OrdinaryUser user(service.address());
    const auto result = DiskBackend::open(user.bus(), {{image, true}});
    ASSERT_TRUE(std::holds_alternative<QString>(result));
    const QString error = std::get<QString>(result);
    EXPECT_TRUE(error.startsWith(image + ": ")) << error.toStdString();
    // The service's own sentence. Without polkit only root is authorised.
    EXPECT_TRUE(error.contains("Not authorized to perform operation")) << error.toStdString();
    EXPECT_EQ(PrivateDiskService::loopDeviceOf(image), "");
    EXPECT_EQ(checksum(), before);
}

TEST_F(FaultsTest, RefusalInMidOrder_LeavesTheFilesAndShowsTheDisk)
{
    ASSERT_EQ(create(300 * kMiB, "EXT4", "Data"), "");
    const QString tablesBefore = outputOf("sfdisk", {"--dump", image});
    service.refuse("Partition", "Resize");
    // The file system has been shrunk when the service is asked to shrink the partition.
    const QString error = order(kResize, {{"driveLetter", "D"}, {"size", 200 * kMiB}});
    EXPECT_TRUE(error.contains("Rejected send message")) << error.toStdString();
    EXPECT_TRUE(error.contains("member=\"Resize\"")) << error.toStdString();
    EXPECT_EQ(error.count('\n'), 0) << error.toStdString();
    EXPECT_EQ(outputOf("sfdisk", {"--dump", image}), tablesBefore);
    EXPECT_EQ(drive("D").size, 300 * kMiB);
    outputOf("e2fsck", {"-f", "-n", partitionDevice(1)});
    // The same order completes as soon as the service permits it.
    service.refuse("", "");
    EXPECT_EQ(order(kResize, {{"driveLetter", "D"}, {"size", 200 * kMiB}}), "");
    EXPECT_EQ(drive("D").size, 200 * kMiB);
    outputOf("e2fsck", {"-f", "-n", partitionDevice(1)});
}

TEST_F(FaultsTest, FullFileSystemUnderTheImage_EndsTheOrderWithOneLine)
{
    backend.reset();
    QTemporaryDir small;
    outputOf("mount", {"-t", "tmpfs", "-o", "size=8m", "tmpfs", small.path()});
    image = small.filePath("full.img");
    outputOf("truncate", {"--size=400M", image});
    outputOf("sh", {"-c", QString("echo label: gpt | sfdisk -q '%1'").arg(image)});
    outputOf("sh",
             {"-c", QString("dd if=/dev/zero of='%1' bs=64k 2>/dev/null; true").arg(small.filePath("f"))});
    open();
    if (backend != nullptr) {
        const QString error = create(300 * kMiB, "NTFS", "Data");
        EXPECT_NE(error, "");
        EXPECT_EQ(error.count('\n'), 0) << error.toStdString();
        // The machine is what the device holds, whatever that is.
        ASSERT_EQ(backend->machine()->disks.size(), 1u);
        const QString device = PrivateDiskService::loopDeviceOf(image) + "p1";
        const QString type =
            outputOf("sh", {"-c", QString("blkid -p -s TYPE -o value %1; true").arg(device)}).trimmed();
        const host::Partition* shown = backend->machine()->partition("D");
        const QString fileSystem = shown == nullptr || shown->fsString == "RAW" ? "" : shown->fsString;
        EXPECT_EQ(fileSystem.toLower(), type);
    }
    backend.reset();
    EXPECT_TRUE(pumpUntil([&] { return PrivateDiskService::loopDeviceOf(image) == ""; }, kTestMs));
    outputOf("umount", {small.path()});
}

} // namespace

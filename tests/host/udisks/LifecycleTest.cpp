// The loss of the disk service and of its bus, before and during an order.
#include "tests/host/udisks/DiskBackendFixture.h"

#include <QtTest/QSignalSpy>

namespace {

using host::DiskBackend;
using host::Execution;

class LifecycleTest : public DiskBackendFixture
{
protected:
    bool waitForService(bool available)
    {
        return pumpUntil([&] { return backend->unavailability().has_value() != available; }, kTestMs);
    }

    void reopenWithReconnect()
    {
        backend.reset();
        const QString address = service.address();
        auto result = DiskBackend::open(service.bus(), {{image, true}}, [address](const QString& name) {
            return QDBusConnection::connectToBus(address, name);
        });
        ASSERT_FALSE(std::holds_alternative<QString>(result)) << std::get<QString>(result).toStdString();
        backend = std::move(std::get<std::unique_ptr<DiskBackend>>(result));
    }
};

TEST_F(LifecycleTest, RestartedService_IsUsedAgain)
{
    QSignalSpy changes(backend.get(), &DiskBackend::availabilityChanged);
    service.kill("udisksd");
    ASSERT_TRUE(waitForService(false));
    EXPECT_EQ(backend->unavailability()->english(), "The disk service is not running.");
    EXPECT_EQ(order(kDelete, {{"driveLetter", "D"}}), "The disk service is not running.");
    outputOf("sh", {"-c", QString("echo 'size=50M' | sfdisk -q '%1'").arg(image)});
    service.restart("udisksd");
    ASSERT_TRUE(waitForService(true));
    EXPECT_EQ(changes.size(), 2);
    outputOf("partx", {"-u", PrivateDiskService::loopDeviceOf(image)});
    // The machine is read again, and orders run again.
    EXPECT_TRUE(pumpUntil([&] { return backend->machine()->partition("D") != nullptr; }, kTestMs));
    EXPECT_EQ(order(kDelete, {{"driveLetter", "D"}}), "");
    EXPECT_EQ(table().size(), 0);
}

TEST_F(LifecycleTest, RestartedBus_IsConnectedAgain)
{
    reopenWithReconnect();
    service.kill("bus");
    ASSERT_TRUE(waitForService(false));
    service.kill("udisksd");
    service.restart("bus");
    service.restart("udisksd");
    ASSERT_TRUE(waitForService(true));
    EXPECT_EQ(create(50 * kMiB, "EXT4", "After"), "");
    EXPECT_EQ(table().size(), 1);
}

TEST_F(LifecycleTest, ServiceKilledDuringAFormat_EndsTheOrderWithOneLine)
{
    ASSERT_EQ(create(100 * kMiB, "EXT4", "Kept"), "");
    ASSERT_EQ(create(800 * kMiB, "NTFS", "Lost", 0), "");
    const auto execution = backend->execute(
        kFormat, {{"driveLetter", "E"}, {"fileSystem", "NTFS"}, {"label", ""}, {"quickFormat", false}});
    std::optional<Execution::Outcome> outcome;
    QString error;
    QObject::connect(execution.get(), &Execution::ended, execution.get(),
                     [&](Execution::Outcome ended, const host::Text& text) {
                         outcome = ended;
                         error = text.english();
                     });
    execution->start();
    EXPECT_TRUE(pumpUntil([&] { return outcome || execution->progress() > 0; }, kTestMs));
    ASSERT_FALSE(outcome);
    service.kill("udisksd");
    EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }, kTestMs));
    EXPECT_EQ(outcome, Execution::Outcome::Failed);
    EXPECT_EQ(error, "The disk service has ended or does not answer.");
    EXPECT_TRUE(waitForService(false));
    service.restart("udisksd");
    ASSERT_TRUE(waitForService(true));
    // The service erases the signature first.
    EXPECT_TRUE(pumpUntil([&] { return drive("E").fsString == "RAW"; }, kTestMs));
    EXPECT_EQ(drive("D").label, "Kept");
    outputOf("e2fsck", {"-fn", PrivateDiskService::loopDeviceOf(image) + "p1"});
}

} // namespace

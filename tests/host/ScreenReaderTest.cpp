// The window as a screen reader in another process reads it: through AT-SPI, on a virtual X display. The
// tests of WindowAccess check the details inside the process; these check that they reach a screen reader.
#include "tests/host/AssistiveBus.h"
#include "tests/host/ZorhostProcess.h"
#include "tests/support/Threads.h"

#include <QtCore/QRect>
#include <QtCore/QStandardPaths>

#include <gtest/gtest.h>

namespace {

constexpr int kLimitMs = 60000;

/// An X server without a screen, on a free display number.
class VirtualDisplay
{
public:
    explicit VirtualDisplay(const QString& size)
    {
        // Xvfb writes the number of the free display that it found.
        process_.start("Xvfb", {"-displayfd", "1", "-screen", "0", size + "x24", "-nolisten", "tcp"});
        while (process_.state() != QProcess::NotRunning && !process_.canReadLine() &&
               process_.waitForReadyRead(kLimitMs)) {
        }
        name_ = ":" + QString::fromLocal8Bit(process_.readLine()).trimmed();
    }
    ~VirtualDisplay()
    {
        process_.terminate();
        process_.waitForFinished();
    }
    QString name() const { return name_; }

private:
    QProcess process_;
    QString name_;
};

class ScreenReader : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char* program : {"Xvfb", "dbus-daemon"}) {
            if (QStandardPaths::findExecutable(program).isEmpty())
                GTEST_SKIP() << program << " is not installed";
        }
        ASSERT_EQ(bus.error(), QString());
    }

    /// Starts the program, and then the screen reader.
    void start(const QString& screen, const QStringList& arguments)
    {
        display = std::make_unique<VirtualDisplay>(screen);
        QProcessEnvironment& environment = host.environment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("DISPLAY", display->name());
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        environment.insert("QT_QUICK_BACKEND", "software");
        environment.insert("XDG_RUNTIME_DIR", host.file("."));
        ASSERT_TRUE(host.startReady(QStringList("--window") + arguments)) << host.errors().constData();
        ASSERT_TRUE(bus.turnOn());
        ASSERT_TRUE(pumpUntil([&] { return bus.hasProgram(); }, kLimitMs)) << host.errors().constData();
    }
    void TearDown() override
    {
        if (HasFailure() && bus.hasProgram())
            printItems();
        if (host.isRunning()) {
            host.signal(SIGTERM);
            EXPECT_NE(host.exitCode(), -1) << host.errors().constData();
        }
    }
    void printItems()
    {
        for (const AssistiveBus::Item& item : bus.visibleBelow())
            printf("%u %s\n", item.role, item.name.toUtf8().constData());
    }

    AssistiveBus::Item awaited(atspi::Role role, const QString& name)
    {
        AssistiveBus::Item item;
        EXPECT_TRUE(pumpUntil([&] { return !(item = bus.find(role, name)).path.isEmpty(); }, kLimitMs))
            << role << " " << name.toStdString();
        return item;
    }
    bool awaitDescription(atspi::Role role, const QString& name, const QString& part)
    {
        return pumpUntil([&] { return bus.description(bus.find(role, name)).contains(part); }, kLimitMs);
    }
    QStringList names(atspi::Role role, const QString& path = {})
    {
        QStringList found;
        for (const AssistiveBus::Item& item : bus.visibleBelow(path)) {
            if (item.role == role)
                found.append(item.name);
        }
        return found;
    }

    AssistiveBus bus;
    std::unique_ptr<VirtualDisplay> display;
    ZorhostProcess host;
};

TEST_F(ScreenReader, Machine_IsAListOfDisksWithTheirPartitions)
{
    start("1400x1000", {"--machine", "desktop"});
    const AssistiveBus::Item list = awaited(atspi::kList, "Disks");
    EXPECT_TRUE(list.has(atspi::kFocusable));
    QStringList disks = names(atspi::kListItem, list.path).filter("Disk ");
    EXPECT_EQ(disks,
              QStringList({"Disk 0, 931.5 GB", "Disk 1, 3.6 TB", "Disk 2, 232.9 GB", "Disk 3, 59.6 GB"}));
    const AssistiveBus::Item partition = awaited(atspi::kListItem, "C: Windows");
    EXPECT_TRUE(partition.has(atspi::kSelectable));
    EXPECT_FALSE(partition.has(atspi::kSelected));
    for (const char* part : {"NTFS", "GB used", "from sector"})
        EXPECT_TRUE(bus.description(partition).contains(part)) << part;
    bus.press(partition);
    EXPECT_TRUE(pumpUntil([&] { return bus.find(atspi::kListItem, "C: Windows").has(atspi::kSelected); }));
}

TEST_F(ScreenReader, Focus_IsReadAndMoved)
{
    start("1400x1000", {"--machine", "desktop"});
    const AssistiveBus::Item button = awaited(atspi::kPushButton, "Show log");
    EXPECT_TRUE(button.has(atspi::kFocusable));
    EXPECT_FALSE(button.has(atspi::kFocused));
    bus.grabFocus(button);
    EXPECT_TRUE(pumpUntil([&] { return bus.find(atspi::kPushButton, "Show log").has(atspi::kFocused); }));
}

TEST_F(ScreenReader, WorkOfAnAgent_IsReadAsTasksCallsRecommendationGuideAndLog)
{
    const QString zorcall = qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + "/bin/zorcall --gated --patient ";
    const QStringList calls = {zorcall + "ChangePartitionLabel driveLetter=D newLabel=Projects",
                               zorcall + "DeletePartition driveLetter=C",
                               zorcall + "CloneDiskToDisk sourceDiskIndex=2 destDiskIndex=1"};
    start("1400x1000", {"--machine", "desktop", "--scan", "--agent", calls.join("; ")});
    // Task.
    awaited(atspi::kList, "Tasks");
    EXPECT_TRUE(awaitDescription(atspi::kListItem, "ChangePartitionLabel", "done"));
    awaited(atspi::kListItem, "D: Projects");
    // Call with its rejection.
    const AssistiveBus::Item list = awaited(atspi::kList, "Calls of the agent");
    EXPECT_TRUE(awaitDescription(atspi::kListItem, "DeletePartition", "The drive holds the running system."));
    EXPECT_TRUE(awaitDescription(atspi::kListItem, "DeletePartition", "driveLetter=C"));
    EXPECT_TRUE(names(atspi::kListItem, list.path).contains("DeletePartition"));
    // Guide.
    const AssistiveBus::Item guide = awaited(atspi::kPanel, "Clone: disk 2 to disk 1");
    EXPECT_TRUE(names(atspi::kPushButton, guide.path).contains("Close"));
    EXPECT_TRUE(names(atspi::kLabel, guide.path).contains("Kind: disk to disk"));
    bus.press(bus.find(atspi::kPushButton, "Close"));
    EXPECT_TRUE(pumpUntil([&] { return bus.find(atspi::kPanel, "Clone: disk 2 to disk 1").path.isEmpty(); },
                          kLimitMs));
    // Recommendation.
    ASSERT_TRUE(pumpUntil([&] { return !bus.all(atspi::kAlert).empty(); }, kLimitMs));
    const AssistiveBus::Item alert = bus.all(atspi::kAlert).front();
    EXPECT_TRUE(alert.name.contains("disk", Qt::CaseInsensitive)) << alert.name.toStdString();
    EXPECT_EQ(names(atspi::kPushButton, alert.path).size(), 2);
    // Log.
    bus.press(bus.find(atspi::kPushButton, "Show log"));
    const AssistiveBus::Item log = awaited(atspi::kList, "Log");
    EXPECT_TRUE(pumpUntil(
        [&] { return !names(atspi::kListItem, log.path).filter("done ChangePartitionLabel").isEmpty(); },
        kLimitMs));
}

TEST_F(ScreenReader, SmallScreenInGerman_HasNamedTabsInsideTheScreen)
{
    start("800x600", {"--machine", "laptop", "--language", "de"});
    awaited(atspi::kList, "Datenträger");
    EXPECT_EQ(names(atspi::kPageTab).mid(0, 3), QStringList({"Datenträger", "Aufgaben", "Agent"}));
    EXPECT_TRUE(bus.find(atspi::kList, "Aufgaben").path.isEmpty());
    bus.press(bus.find(atspi::kPageTab, "Aufgaben"));
    awaited(atspi::kList, "Aufgaben");
    const QRect screen(0, 0, 800, 600);
    int count = 0;
    for (const AssistiveBus::Item& item : bus.visibleBelow()) {
        if (item.role != atspi::kPushButton && item.role != atspi::kPageTab && item.role != atspi::kCheckBox)
            continue;
        EXPECT_NE(item.name, "");
        const QRect place = bus.placeOf(item);
        EXPECT_TRUE(place.isValid() && screen.contains(place))
            << item.name.toStdString() << " " << place.x() << " " << place.right() << " " << place.bottom();
        ++count;
    }
    EXPECT_GE(count, 4);
}

} // namespace

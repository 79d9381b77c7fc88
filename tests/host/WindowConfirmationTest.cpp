// The dialog that asks a person before an order destroys data. The pictures remain in build/screenshots.
#include "host/Screenshot.h"
#include "tests/host/AskingSimulation.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtGui/QAccessible>
#include <QtTest/QTest>

namespace {

constexpr int kDeleteAll = 2;
constexpr int kFormat = 15;

class WindowConfirmation : public WindowTest
{
protected:
    explicit WindowConfirmation(host::ThemeMode theme = host::ThemeMode::Light)
        : WindowTest(std::make_unique<AskingSimulation>(testMachine()), theme)
    {
    }

    AskingSimulation& asking() { return static_cast<AskingSimulation&>(simulation); }

    void format()
    {
        scene.core().orders().order(kFormat, {{"driveLetter", "D"},
                                              {"fileSystem", "exFAT"},
                                              {"label", "New"},
                                              {"clusterSize", 0},
                                              {"quickFormat", true}});
        ASSERT_NE(awaited("confirmationDialog"), nullptr);
        ASSERT_TRUE(pumpUntil([&] { return focused() == "confirmationKeep"; })) << focused().toStdString();
    }
    bool isClosed()
    {
        return pumpUntil([&] { return item("confirmationDialog") == nullptr; });
    }
    bool hasState(const QString& state)
    {
        return pumpUntil([&] { return text("taskState") == state; });
    }
    QString fileSystem() { return scene.core().machine()->partition("D")->fsString; }

    // A disk with many partitions whose names are as long as possible.
    void fillDisk(int count)
    {
        host::Machine machine = testMachine();
        host::Disk& disk = *machine.disk(1);
        disk.partitions.clear();
        for (int i = 0; i < count; ++i) {
            host::Partition partition;
            partition.diskIndex = 1;
            partition.partitionIndex = i + 1;
            partition.startSector = 2048 * (i + 1);
            partition.size = kMiB;
            partition.fsString = "NTFS";
            partition.label = "Accounts of the whole company " + QString(60, 'x');
            disk.partitions.push_back(partition);
        }
        simulation.change(machine);
        asking().model = "Maker " + QString(300, 'M');
    }

    QImage take(const char* name)
    {
        QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
        folder.mkpath("screenshots");
        host::Screenshot screenshot(folder.filePath(QString("screenshots/") + name));
        EXPECT_EQ(screenshot.open(), "");
        EXPECT_EQ(screenshot.take(*scene.window()), "");
        return QImage(folder.filePath(QString("screenshots/") + name));
    }
};

TEST_F(WindowConfirmation, Dialog_NamesTheOrderTheDiskAndTheData)
{
    format();
    EXPECT_EQ(text("confirmationTitle"), "Format a partition");
    EXPECT_TRUE(text("confirmationDisk").startsWith("/dev/sdx, Maker Stick, "));
    EXPECT_EQ(text("confirmationWarning"),
              "This order changes a real disk. It destroys this data permanently:");
    ASSERT_EQ(texts("confirmationLoss").size(), 1);
    EXPECT_TRUE(text("confirmationLoss").contains("D: Data"));
    EXPECT_EQ(text("taskState"), "waiting for confirmation");
    EXPECT_TRUE(mainPage()->property("busy").toBool());
    EXPECT_FALSE(isPopuped());
    take("confirmation-light.png");
}

TEST_F(WindowConfirmation, EscapeReturnAndSpace_KeepTheData)
{
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        format();
        press(key);
        EXPECT_TRUE(isClosed()) << key;
        EXPECT_TRUE(pumpUntil([&] { return !mainPage()->property("busy").toBool(); })) << key;
        EXPECT_EQ(texts("taskState").last(), "cancelled") << key;
        EXPECT_EQ(fileSystem(), "NTFS") << key;
    }
}

TEST_F(WindowConfirmation, ClickOutside_DoesNotAnswer)
{
    format();
    QTest::mouseClick(scene.window(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_NE(item("confirmationDialog"), nullptr);
    EXPECT_TRUE(scene.core().orders().confirmation().isOpen());
}

TEST_F(WindowConfirmation, Tab_StaysInTheDialogAndReachesTheOtherButton)
{
    format();
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "confirmationConfirm");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "confirmationKeep");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "confirmationConfirm");
    press(Qt::Key_Return);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(hasState("done"));
    EXPECT_EQ(fileSystem(), "exFAT");
}

TEST_F(WindowConfirmation, CancelledTask_ClosesTheDialog)
{
    format();
    scene.core().tasks()->cancel(1);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(hasState("cancelled"));
    EXPECT_EQ(fileSystem(), "NTFS");
}

TEST_F(WindowConfirmation, ScreenReader_GetsAnAlertWithAllTexts)
{
    QAccessible::setActive(true);
    format();
    QAccessibleInterface* alert = QAccessible::queryAccessibleInterface(item("confirmationDialog"));
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->role(), QAccessible::AlertMessage);
    for (const char* part : {"Format a partition", "/dev/sdx", "destroys this data permanently", "D: Data"})
        EXPECT_TRUE(alert->text(QAccessible::Name).contains(part)) << part;
    QAccessibleInterface* keep = QAccessible::queryAccessibleInterface(item("confirmationKeep"));
    ASSERT_NE(keep, nullptr);
    EXPECT_EQ(keep->role(), QAccessible::Button);
    EXPECT_EQ(keep->text(QAccessible::Name), "Do not change");
}

TEST_F(WindowConfirmation, LongTexts_StayInASmallWindow)
{
    fillDisk(40);
    const QSize size(800, 600);
    scene.window()->setMinimumSize(size);
    scene.window()->resize(size);
    scene.core().orders().order(kDeleteAll, {{"diskIndex", 1}});
    ASSERT_NE(awaited("confirmationDialog"), nullptr);
    scene.window()->grabWindow();
    EXPECT_EQ(scene.window()->size(), size);
    const QRect window(QPoint(0, 0), size);
    for (const char* name : {"confirmationTitle", "confirmationDisk", "confirmationWarning",
                             "confirmationLosses", "confirmationConfirm", "confirmationKeep"}) {
        ASSERT_NE(item(name), nullptr) << name;
        EXPECT_TRUE(window.contains(placeOf(item(name)))) << name;
    }
    EXPECT_LT(placeOf(item("confirmationLosses")).bottom(), placeOf(item("confirmationKeep")).top());
    // The keyboard reaches the end of the list.
    ASSERT_TRUE(pumpUntil([&] { return focused() == "confirmationKeep"; })) << focused().toStdString();
    ASSERT_TRUE(tabTo("confirmationLoss"));
    for (int presses = 0; presses < 40; ++presses)
        press(Qt::Key_Down);
    const QQuickItem* list = item("confirmationLosses");
    EXPECT_TRUE(pumpUntil([&] { return list->property("atYEnd").toBool(); }));
    press(Qt::Key_Home);
    EXPECT_TRUE(pumpUntil([&] { return list->property("atYBeginning").toBool(); }));
    press(Qt::Key_End);
    EXPECT_TRUE(pumpUntil([&] { return list->property("atYEnd").toBool(); }));
    take("confirmation-small.png");
}

TEST_F(WindowConfirmation, DiskWithoutPartitions_IsNamedAsSuch)
{
    scene.core().orders().order(6, {{"diskIndex", 3}});
    ASSERT_NE(awaited("confirmationNoPartition"), nullptr);
    EXPECT_EQ(text("confirmationTitle"), "Write a new partition table");
}

TEST_F(WindowConfirmation, German_TranslatesTheOpenDialog)
{
    format();
    scene.language().setLanguage("de");
    EXPECT_EQ(text("confirmationTitle"), "Partition formatieren");
    EXPECT_EQ(text("confirmationKeep"), "Nicht ändern");
    EXPECT_NE(item("confirmationDialog"), nullptr);
}

TEST_F(WindowConfirmation, Header_ShowsThatTheDisksAreReal)
{
    EXPECT_EQ(text("modeMark"), "Real disks");
    EXPECT_EQ(scene.window()->title(), "Sandbox host: test (real disks)");
}

TEST_F(WindowConfirmation, GermanHeader_FitsTheSmallestWindow)
{
    host::Machine machine = testMachine();
    machine.name = "stick-with-a-long-name.img, another-stick.img";
    simulation.change(machine);
    scene.language().setLanguage("de");
    const QSize size(960, 600);
    scene.window()->resize(size);
    scene.core().setDialogOpen(true);
    format();
    scene.window()->grabWindow();
    for (const char* name : {"machineName", "modeMark", "serviceBadge", "popupBadge", "scanButton"})
        EXPECT_TRUE(QRect(QPoint(0, 0), size).contains(placeOf(item(name))))
            << name << " " << placeOf(item(name)).right();
    EXPECT_FALSE(item("modeMark")->childItems().first()->property("truncated").toBool());
}

class SimulatedWindow : public WindowTest
{
};

TEST_F(SimulatedWindow, Header_ShowsTheSimulation)
{
    EXPECT_EQ(text("modeMark"), "Simulation");
    EXPECT_EQ(scene.window()->title(), "Sandbox host: test (simulation)");
}

class DarkConfirmation : public WindowConfirmation
{
protected:
    DarkConfirmation() : WindowConfirmation(host::ThemeMode::Dark) {}
};

TEST_F(DarkConfirmation, Dialog_IsDark)
{
    format();
    const QImage picture = take("confirmation-dark.png");
    const QPoint corner = placeOf(item("confirmationDialog")).topLeft() - QPoint(5, 5);
    ASSERT_TRUE(picture.rect().contains(corner));
    EXPECT_EQ(picture.pixelColor(corner), scene.theme().surface());
    EXPECT_LT(picture.pixelColor(corner).lightness(), 80);
}

} // namespace

// The question before a task that destroys data is cancelled, or the window is closed during it.
#include "host/Screenshot.h"
#include "tests/host/AskingSimulation.h"
#include "tests/host/MachineText.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Threads.h"

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>

namespace {

constexpr int kWipeDisk = 7;
constexpr int kLabel = 31;
constexpr int kHour = 3600000;

class WindowInterruption : public WindowTest
{
protected:
    explicit WindowInterruption(std::unique_ptr<host::Simulation> backend = simulated(testMachine()))
        : WindowTest(std::move(backend), host::ThemeMode::Light)
    {
    }

    void SetUp() override
    {
        WindowTest::SetUp();
        host::Machine machine = testMachine();
        machine.taskMilliseconds = kHour;
        simulation.setPace(host::Pace());
        simulation.change(machine);
    }

    void startWipe()
    {
        scene.core().orders().order(kWipeDisk, {{"diskIndex", 1}, {"eraseCount", 1}});
        ASSERT_TRUE(waitForText("taskState", "0 %")) << text("taskError").toStdString();
    }
    void startLabel()
    {
        scene.core().orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "New"}});
        ASSERT_TRUE(waitForText("taskState", "0 %")) << text("taskError").toStdString();
    }
    bool isAsked()
    {
        return awaited("interruptionDialog") != nullptr &&
               pumpUntil([&] { return focused() == "interruptionKeep"; });
    }
    bool isClosed()
    {
        return pumpUntil([&] { return item("interruptionDialog") == nullptr; });
    }
};

TEST_F(WindowInterruption, CancelOfAWipe_AsksAndTheFocusedButtonContinuesTheTask)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
        if (texts("taskTitle").isEmpty())
            startWipe();
        click(item("cancelButton"));
        ASSERT_TRUE(isAsked()) << focused().toStdString();
        EXPECT_EQ(text("interruptionTitle"), "Overwrite the whole disk");
        EXPECT_EQ(text("interruptionWarning"),
                  "This task is changing data. If it is cancelled, the partitions that it changes remain "
                  "incomplete and can be unusable.");
        press(key);
        EXPECT_TRUE(isClosed());
        EXPECT_EQ(text("taskState"), "0 %");
    }
}

TEST_F(WindowInterruption, ConfirmedCancel_CancelsTheTask)
{
    startWipe();
    click(item("cancelButton"));
    ASSERT_TRUE(isAsked());
    QDir folder(qEnvironmentVariable("AIBRIDGE_BUILD_DIR"));
    folder.mkpath("screenshots");
    host::pictureOf(*scene.window()).save(folder.filePath("screenshots/interruption.png"));
    click(item("interruptionConfirm"));
    EXPECT_TRUE(waitForText("taskState", "cancelled"));
    EXPECT_TRUE(isClosed());
}

TEST_F(WindowInterruption, CancelOfATaskThatKeepsAllData_AsksNothing)
{
    startLabel();
    click(item("cancelButton"));
    EXPECT_TRUE(waitForText("taskState", "cancelled"));
    EXPECT_EQ(item("interruptionDialog"), nullptr);
}

TEST_F(WindowInterruption, CancelOfAWaitingTask_AsksNothing)
{
    startWipe();
    scene.core().orders().order(kWipeDisk, {{"diskIndex", 2}, {"eraseCount", 1}});
    ASSERT_TRUE(pumpUntil([&] { return items("cancelButton").size() == 2; }));
    click(items("cancelButton")[1]);
    EXPECT_TRUE(pumpUntil([&] { return texts("taskState") == QStringList({"0 %", "cancelled"}); }));
    EXPECT_EQ(item("interruptionDialog"), nullptr);
}

TEST_F(WindowInterruption, CloseDuringAWipe_AsksAndClosesOnceAfterTheConfirmation)
{
    startWipe();
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    scene.window()->close();
    ASSERT_TRUE(isAsked());
    EXPECT_TRUE(scene.window()->isVisible());
    EXPECT_EQ(closed.count(), 0);
    EXPECT_TRUE(text("interruptionWarning").startsWith("Closing the window cancels this task."));
    click(item("interruptionConfirm"));
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(scene.window()->isVisible());
}

TEST_F(WindowInterruption, RejectedClose_KeepsTheWindowAndTheTask)
{
    startWipe();
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    scene.window()->close();
    ASSERT_TRUE(isAsked());
    click(item("interruptionKeep"));
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(closed.count(), 0);
    EXPECT_TRUE(scene.window()->isVisible());
    EXPECT_EQ(text("taskState"), "0 %");
}

TEST_F(WindowInterruption, CloseWithoutSuchATask_AsksNothing)
{
    startLabel();
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    scene.window()->close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(scene.window()->isVisible());
}

// As after SIGTERM, which nobody may be able to answer.
TEST_F(WindowInterruption, ClosingHost_AsksNothing)
{
    startWipe();
    scene.core().status().setClosing();
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    scene.window()->close();
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(WindowInterruption, EndOfTheTask_ClosesTheQuestion)
{
    startWipe();
    click(item("cancelButton"));
    ASSERT_TRUE(isAsked());
    scene.core().tasks()->cancel(1);
    EXPECT_TRUE(isClosed());
    EXPECT_FALSE(scene.core().interruption().isOpen());
}

TEST_F(WindowInterruption, German_TranslatesTheOpenQuestion)
{
    startWipe();
    scene.window()->close();
    ASSERT_TRUE(isAsked());
    scene.language().setLanguage("de");
    EXPECT_EQ(text("interruptionKeep"), "Aufgabe fortsetzen");
    EXPECT_EQ(text("interruptionConfirm"), "Aufgabe abbrechen und schließen");
    EXPECT_EQ(text("interruptionTitle"), "Gesamten Datenträger überschreiben");
}

class WindowAskedInterruption : public WindowInterruption
{
protected:
    WindowAskedInterruption() : WindowInterruption(std::make_unique<AskingSimulation>(testMachine())) {}
};

// Nothing has been written yet.
TEST_F(WindowAskedInterruption, CloseDuringAnOpenConfirmation_AsksNothing)
{
    scene.core().orders().order(kWipeDisk, {{"diskIndex", 1}, {"eraseCount", 1}});
    ASSERT_NE(awaited("confirmationDialog"), nullptr);
    QSignalSpy closed(scene.window(), &host::HostWindow::closed);
    scene.window()->close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(item("interruptionDialog"), nullptr);
}

} // namespace

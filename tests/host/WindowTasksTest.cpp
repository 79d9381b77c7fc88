// The list of tasks: the running task in view, its buttons, and the end of a task in the agent's list.
#include "tests/host/WindowTest.h"

#include "host/objects/TaskQueue.h"
#include "tests/host/MachineText.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QMap>

namespace {

constexpr int kWipeDisk = 7;
constexpr int kFormat = 15;
constexpr int kLabel = 31;
constexpr int kHour = 3600000;

host::TaskWork task(const QString& title, int milliseconds, const QString& error = QString())
{
    host::TimedWork work;
    work.plan = [milliseconds] {
        host::TaskPlan plan;
        plan.milliseconds = milliseconds;
        return plan;
    };
    work.finish = [error]() -> host::Rejection {
        return error.isEmpty() ? host::kAccepted : host::Rejection(host::Text(error));
    };
    work.interrupt = [](double) {};
    return {title, "driveLetter=D", [work] { return std::make_unique<host::TimedExecution>(work); }};
}

class WindowTasks : public WindowTest
{
protected:
    void add(const QString& title, int count, int milliseconds = 0)
    {
        for (int i = 0; i < count; ++i)
            scene.core().tasks()->add(task(title, milliseconds));
    }
    // Titles of the rows inside the list's visible part, from top to bottom.
    QStringList visibleTitles()
    {
        scene.window()->grabWindow();
        const QRect list = placeOf(item("taskList"));
        QMap<int, QString> found;
        for (QQuickItem* each : items("taskTitle")) {
            if (list.contains(placeOf(each)))
                found.insert(placeOf(each).top(), each->property("text").toString());
        }
        return found.values();
    }
};

TEST_F(WindowTasks, RunningTask_StaysInViewBetweenEndedAndWaitingTasks)
{
    add("Ended", 10);
    ASSERT_TRUE(pumpUntil([&] { return scene.core().tasks()->endedCount() == 10; }));
    scene.core().tasks()->add(task("Running", kHour));
    add("Waiting", 10, kHour);
    ASSERT_TRUE(pumpUntil([&] { return visibleTitles().contains("Running"); }));
    EXPECT_EQ(visibleTitles().first(), "Ended");
    EXPECT_EQ(visibleTitles().last(), "Waiting");
}

TEST_F(WindowTasks, NextTask_IsInViewWhenItStarts)
{
    scene.core().tasks()->add(task("First", kHour));
    add("Waiting", 10, kHour);
    scene.core().tasks()->add(task("Next", kHour));
    add("Later", 10, kHour);
    ASSERT_TRUE(pumpUntil([&] { return visibleTitles().contains("First"); }));
    for (int id = 1; id <= 11; ++id)
        scene.core().tasks()->cancel(id);
    EXPECT_TRUE(pumpUntil([&] { return visibleTitles().contains("Next"); }));
    EXPECT_EQ(visibleTitles().last(), "Later");
}

TEST_F(WindowTasks, ClearButton_RemovesEndedTasksOnly)
{
    scene.core().tasks()->add(task("Done", 0));
    scene.core().tasks()->add(task("Failed", 0, "broken"));
    scene.core().tasks()->add(task("Running", kHour));
    scene.core().tasks()->add(task("Waiting", kHour));
    scene.core().tasks()->add(task("Cancelled", kHour));
    scene.core().tasks()->cancel(5);
    ASSERT_TRUE(pumpUntil([&] { return scene.core().tasks()->endedCount() == 3; }));
    ASSERT_TRUE(pumpUntil([&] { return scene.core().tasks()->runningTask() == 3; }));
    click(item("clearButton"));
    EXPECT_TRUE(pumpUntil([&] { return texts("taskTitle") == QStringList({"Running", "Waiting"}); }));
    EXPECT_FALSE(item("clearButton")->isEnabled());
}

TEST_F(WindowTasks, CancelAllButton_EndsRunningAndWaitingTasks)
{
    add("Endless", 3, kHour);
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    click(item("cancelAllButton"));
    EXPECT_TRUE(pumpUntil([&] {
        return texts("taskState") == QStringList({"cancelled", "cancelled", "cancelled"});
    }));
    EXPECT_FALSE(item("cancelAllButton")->isEnabled());
}

TEST_F(WindowTasks, CancelAllDuringAWipe_EndsWaitingTasksAndAsksOnceAboutTheWipe)
{
    host::Machine machine = testMachine();
    machine.taskMilliseconds = kHour;
    simulation.setPace(host::Pace());
    simulation.change(machine);
    scene.core().orders().order(kWipeDisk, {{"diskIndex", 1}, {"eraseCount", 1}});
    scene.core().orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "New"}});
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    click(item("cancelAllButton"));
    ASSERT_NE(awaited("interruptionDialog"), nullptr);
    EXPECT_TRUE(pumpUntil([&] { return texts("taskState") == QStringList({"0 %", "cancelled"}); }));
    ASSERT_TRUE(pumpUntil([&] { return focused() == "interruptionKeep"; }));
    click(item("interruptionConfirm"));
    EXPECT_TRUE(pumpUntil([&] { return texts("taskState") == QStringList({"cancelled", "cancelled"}); }));
    EXPECT_TRUE(pumpUntil([&] { return item("interruptionDialog") == nullptr; }));
}

class WindowTaskEnds : public WindowTest
{
protected:
    // The agent's call for an order that the simulation carries out.
    void callLabel(int failing)
    {
        simulation.setFailures({{failing, 0.5}});
        Q_EMIT bridge.sigAbout2CallFun("ChangePartitionLabel driveLetter=D newLabel=Photos");
        scene.core().orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "Photos"}});
        Q_EMIT bridge.sigAfterCallFun(answers::queued, true);
    }
};

TEST_F(WindowTaskEnds, FailedTask_IsShownAsFailedWithItsReason)
{
    callLabel(kLabel);
    ASSERT_TRUE(waitForText("callOutcome", "failed"));
    EXPECT_EQ(item("callOutcome")->property("tone"), "bad");
    EXPECT_EQ(text("callReason"), text("taskError"));
    EXPECT_NE(text("callReason"), "");
    EXPECT_EQ(items("callTool").size(), 1u);
}

TEST_F(WindowTaskEnds, TaskThatEnds_IsShownAsDone)
{
    callLabel(kFormat);
    ASSERT_TRUE(waitForText("callOutcome", "done"));
    EXPECT_EQ(item("callOutcome")->property("tone"), "good");
}

// A fast task ends before the agent reports the tool's answer.
TEST_F(WindowTaskEnds, AnswerAfterTheFailure_KeepsTheFailure)
{
    simulation.setFailures({{kLabel, 0.5}});
    Q_EMIT bridge.sigAbout2CallFun("ChangePartitionLabel driveLetter=D newLabel=Photos");
    scene.core().orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "Photos"}});
    ASSERT_TRUE(waitForText("callOutcome", "failed"));
    Q_EMIT bridge.sigAfterCallFun(answers::queued, true);
    EXPECT_EQ(text("callOutcome"), "failed");
}

TEST_F(WindowTaskEnds, CancelledTask_IsShownAsCancelled)
{
    host::Machine machine = testMachine();
    machine.taskMilliseconds = kHour;
    simulation.setPace(host::Pace());
    simulation.change(machine);
    callLabel(kFormat);
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    EXPECT_EQ(text("callOutcome"), answers::queued);
    scene.core().tasks()->cancel(1);
    EXPECT_TRUE(waitForText("callOutcome", "cancelled"));
}

TEST_F(WindowTaskEnds, OrderWithoutAnAnnouncement_ShowsTheEndInItsOwnRow)
{
    simulation.setFailures({{kLabel, 0.5}});
    scene.core().orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "Photos"}});
    ASSERT_TRUE(waitForText("callOutcome", "failed"));
    EXPECT_EQ(texts("callTool"), QStringList("ChangePartitionLabel"));
}

TEST_F(WindowTaskEnds, SizesAndRecords_AreReadable)
{
    Q_EMIT bridge.sigAbout2CallFun(
        "ResizePartition {\"driveLetter\":\"D\",\"newPartitionCapacity\":32212254720}");
    ASSERT_TRUE(waitForText("callTool", "ResizePartition"));
    EXPECT_EQ(text("callArguments"), "driveLetter=\"D\" newPartitionCapacity=30 GB");
}

} // namespace

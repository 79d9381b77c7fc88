// The agent's calls and the tasks in the window.
#include "tests/host/WindowTest.h"

#include "host/objects/TaskQueue.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtGui/QColor>

namespace {

using WindowTimeline = WindowTest;
using WindowQueue = WindowTest;

// A task that runs until it is cancelled.
host::TaskWork endlessTask(const QString& title, int& interrupted)
{
    host::TimedWork work;
    work.plan = [] {
        host::TaskPlan plan;
        plan.milliseconds = 24 * 3600 * 1000;
        return plan;
    };
    work.finish = [] { return QString(); };
    work.interrupt = [&interrupted](double) { ++interrupted; };
    return {title, "driveLetter=D", [work] { return std::make_unique<host::TimedExecution>(work); }};
}

TEST_F(WindowTimeline, QueuedCall_ShowsToolArgumentsAndAnswer)
{
    Q_EMIT bridge.sigAbout2CallFun("ChangePartitionLabel driveLetter=D newLabel=Photos");
    ASSERT_TRUE(waitForText("callTool", "ChangePartitionLabel"));
    EXPECT_EQ(text("callArguments"), "driveLetter=D newLabel=Photos");
    EXPECT_EQ(text("callOutcome"), "running");
    Q_EMIT bridge.sigAfterCallFun(answers::queued, true);
    ASSERT_TRUE(waitForText("callOutcome", answers::queued));
    EXPECT_EQ(item("callOutcome")->property("tone"), "good");
    EXPECT_EQ(items("callTool").size(), 1u);
}

TEST_F(WindowTimeline, Rejection_IsHighlightedWithTheHostsReason)
{
    Q_EMIT bridge.sigAbout2CallFun("DeletePartition driveLetter=C");
    EXPECT_TRUE(scene.core().orders().rejection(16, {{"driveLetter", "C"}}));
    Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
    ASSERT_TRUE(waitForText("callOutcome", answers::notValid));
    EXPECT_EQ(item("callOutcome")->property("tone"), "bad");
    ASSERT_NE(item("callReason"), nullptr);
    EXPECT_NE(text("callReason"), "");
    EXPECT_EQ(item("callReason")->property("color").value<QColor>(), scene.theme().bad());
}

TEST_F(WindowTimeline, RejectionWithItsOwnMessage_ShowsItWhole)
{
    Q_EMIT bridge.sigAbout2CallFun("CloneDiskToDisk sourceDiskIndex=0 destDiskIndex=9");
    Q_EMIT bridge.sigAfterCallFun("It seems that disk9 is not exist", false);
    ASSERT_TRUE(waitForText("callResult", "It seems that disk9 is not exist"));
    EXPECT_EQ(text("callOutcome"), "rejected");
    EXPECT_EQ(item("callResult")->property("color").value<QColor>(), scene.theme().bad());
}

// The gate reads on its own threads.
void readAsTheGate(QObject* window, QObject* page, bool goesOn)
{
    runOnOtherThread([&] {
        window->property("popuped");
        if (goesOn)
            page->property("busy");
    });
}

TEST_F(WindowTimeline, GateRejectionsForADialog_ShareOneRow)
{
    scene.core().setDialogOpen(true);
    for (int times = 0; times < 3; ++times)
        readAsTheGate(scene.window(), mainPage(), false);
    ASSERT_TRUE(waitForText("callOutcome", "rejected 3 times"));
    EXPECT_EQ(texts("callTool"), QStringList("Gate"));
    EXPECT_EQ(text("callResult"), answers::inProgress);
    EXPECT_EQ(item("callOutcome")->property("tone"), "warn");
}

TEST_F(WindowTimeline, GateRejectionForATask_ShowsItsMessage)
{
    int interrupted = 0;
    scene.core().tasks()->add(endlessTask("FormatPartition", interrupted));
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    readAsTheGate(scene.window(), mainPage(), true);
    EXPECT_TRUE(waitForText("callResult", answers::inExecution));
}

TEST_F(WindowTimeline, AdmittingGate_AddsNoRow)
{
    readAsTheGate(scene.window(), mainPage(), true);
    Q_EMIT bridge.sigAbout2CallFun("Eject");
    ASSERT_TRUE(waitForText("callTool", "Eject"));
    EXPECT_EQ(items("callTool").size(), 1u);
}

// Too soon after another call, the gate stops after the first read.
TEST(GateWatch, FirstReadWithoutTheSecond_IsARejectionAfterTheTimeout)
{
    host::GateWatch gate(0);
    QStringList rejections;
    QObject::connect(&gate, &host::GateWatch::rejected,
                     [&](const QString& text) { rejections.append(text); });
    runOnOtherThread([&] { gate.recordPopupedRead(false); });
    ASSERT_TRUE(pumpUntil([&] { return !rejections.isEmpty(); }));
    EXPECT_EQ(rejections, QStringList(answers::inProgress.text()));
}

TEST(GateWatch, ReadsOnTheApplicationThread_AreIgnored)
{
    host::GateWatch gate(0);
    int rejections = 0;
    QObject::connect(&gate, &host::GateWatch::rejected, [&] { ++rejections; });
    gate.recordPopupedRead(true);
    gate.recordBusyRead(true);
    int turns = 0;
    pumpUntil([&] { return ++turns > 3; });
    EXPECT_EQ(rejections, 0);
}

TEST_F(WindowTimeline, AnswerOfAReadingTool_IsNeitherQueuedNorRejected)
{
    Q_EMIT bridge.sigAbout2CallFun("ShowBitLockerStatus");
    Q_EMIT bridge.sigAfterCallFun("not encrypted", false);
    ASSERT_TRUE(waitForText("callOutcome", "not encrypted"));
    EXPECT_EQ(item("callOutcome")->property("tone"), "plain");
}

TEST_F(WindowTimeline, Calls_AreInOrder)
{
    for (const char* call : {"First", "Second", "Third"}) {
        Q_EMIT bridge.sigAbout2CallFun(call);
        Q_EMIT bridge.sigAfterCallFun(answers::queued, true);
    }
    ASSERT_TRUE(pumpUntil([&] { return items("callTool").size() == 3; }));
    EXPECT_LT(placeOf(items("callTool")[0]).y(), placeOf(items("callTool")[1]).y());
    EXPECT_EQ(texts("callTool"), QStringList({"First", "Second", "Third"}));
}

TEST_F(WindowTimeline, LogButton_SwitchesToTheLog)
{
    scene.core().log()->write("something happened");
    click(item("logButton"));
    ASSERT_NE(awaited("logList"), nullptr);
    EXPECT_EQ(item("timelineList"), nullptr);
    EXPECT_EQ(text("logButton"), "Show agent");
}

TEST_F(WindowQueue, EmptyQueue_ShowsAHint)
{
    EXPECT_TRUE(items("taskTitle").empty());
}

TEST_F(WindowQueue, Tasks_ShowTitleParametersAndState)
{
    int interrupted = 0;
    scene.core().tasks()->add(endlessTask("FormatPartition", interrupted));
    scene.core().tasks()->add(endlessTask("ResizePartition", interrupted));
    ASSERT_TRUE(pumpUntil([&] { return texts("taskState") == QStringList({"0 %", "waiting"}); }));
    EXPECT_EQ(texts("taskTitle"), QStringList({"FormatPartition", "ResizePartition"}));
    EXPECT_EQ(text("taskDetail"), "driveLetter=D");
    EXPECT_EQ(items("taskProgress").size(), 1u);
    EXPECT_EQ(text("busyBadge"), "busy: FormatPartition");
}

TEST_F(WindowQueue, CancelButton_EndsTheTaskAndDisappears)
{
    int interrupted = 0;
    scene.core().tasks()->add(endlessTask("FormatPartition", interrupted));
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    click(item("cancelButton"));
    EXPECT_EQ(interrupted, 1);
    EXPECT_TRUE(waitForText("taskState", "cancelled"));
    EXPECT_EQ(item("cancelButton"), nullptr);
}

TEST_F(WindowQueue, CancelButton_WorksByKeyboard)
{
    int interrupted = 0;
    scene.core().tasks()->add(endlessTask("FormatPartition", interrupted));
    ASSERT_NE(awaited("cancelButton"), nullptr);
    ASSERT_TRUE(waitForText("taskState", "0 %"));
    ASSERT_TRUE(tabTo("cancelButton"));
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForText("taskState", "cancelled"));
}

TEST_F(WindowQueue, FailedTask_ShowsItsError)
{
    host::TimedWork work;
    work.plan = [] { return host::TaskPlan(); };
    work.finish = [] { return QString("the medium is gone"); };
    work.interrupt = [](double) {};
    scene.core().tasks()->add(
        {"FormatPartition", QString(), [work] { return std::make_unique<host::TimedExecution>(work); }});
    ASSERT_TRUE(waitForText("taskState", "failed"));
    EXPECT_EQ(text("taskError"), "the medium is gone");
    EXPECT_EQ(item("taskError")->property("color").value<QColor>(), scene.theme().bad());
}

} // namespace

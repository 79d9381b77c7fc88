// The task queue: order, progress, failure, cancellation and rows.
#include "host/objects/TaskQueue.h"
#include "host/simulation/TimedExecution.h"
#include "tests/support/Threads.h"

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

namespace {

using host::TaskPlan;
using host::TaskQueue;
using host::TaskWork;
using host::TimedExecution;
using host::TimedWork;

struct Trace
{
    QStringList lines;

    TaskWork work(const QString& title, TaskPlan plan = {}, const QString& error = {})
    {
        TimedWork work;
        work.plan = [this, title, plan] { return lines.append("plan " + title), plan; };
        work.finish = [this, title, error]() -> host::Rejection {
            lines.append("finish " + title);
            return error.isEmpty() ? host::kAccepted : host::Rejection(error);
        };
        work.interrupt = [this, title](double share) {
            lines.append(QString("interrupt %1 at %2").arg(title).arg(share));
        };
        return {title, "of " + title, [work] { return std::make_unique<TimedExecution>(work); }};
    }
};

QVariant cell(const TaskQueue& queue, int row, const char* role)
{
    return queue.data(queue.index(row), queue.roleNames().key(role));
}

bool pumpUntilIdle(const TaskQueue& queue)
{
    return pumpUntil([&] { return !queue.isAtWork(); }, 120000);
}

TaskPlan endless()
{
    TaskPlan plan;
    plan.milliseconds = 3600 * 1000;
    return plan;
}

TEST(TaskQueue, Tasks_RunInSequenceFromTheEventLoop)
{
    Trace trace;
    TaskQueue queue;
    queue.add(trace.work("a"));
    queue.add(trace.work("b"));
    EXPECT_EQ(trace.lines, QStringList());
    EXPECT_EQ(cell(queue, 0, "state"), "waiting");
    ASSERT_TRUE(pumpUntilIdle(queue));
    EXPECT_EQ(trace.lines, QStringList({"plan a", "finish a", "plan b", "finish b"}));
}

TEST(TaskQueue, Rows_HaveTitleDetailStateProgressErrorAndId)
{
    Trace trace;
    TaskQueue queue;
    EXPECT_EQ(queue.add(trace.work("good")), 1);
    EXPECT_EQ(queue.add(trace.work("bad", {}, "no room")), 2);
    ASSERT_TRUE(pumpUntilIdle(queue));
    EXPECT_EQ(cell(queue, 0, "title"), "good");
    EXPECT_EQ(cell(queue, 0, "detail"), "of good");
    EXPECT_EQ(cell(queue, 0, "state"), "done");
    EXPECT_EQ(cell(queue, 0, "progress"), 1.0);
    EXPECT_EQ(cell(queue, 0, "error"), "");
    EXPECT_EQ(cell(queue, 0, "taskId"), 1);
    EXPECT_EQ(cell(queue, 1, "state"), "failed");
    EXPECT_EQ(cell(queue, 1, "error"), "no room");
    EXPECT_EQ(cell(queue, 1, "taskId"), 2);
}

TEST(TaskQueue, Signals_ReportStartAndEndOfEachTask)
{
    Trace trace;
    TaskQueue queue;
    QSignalSpy started(&queue, &TaskQueue::taskStarted);
    QSignalSpy ended(&queue, &TaskQueue::taskEnded);
    queue.add(trace.work("good"));
    queue.add(trace.work("bad", {}, "no room"));
    ASSERT_TRUE(pumpUntilIdle(queue));
    ASSERT_EQ(started.size(), 2);
    EXPECT_EQ(started.at(0), QVariantList({1, "good"}));
    ASSERT_EQ(ended.size(), 2);
    EXPECT_EQ(ended.at(0), QVariantList({1, "done", ""}));
    EXPECT_EQ(ended.at(1), QVariantList({2, "failed", "no room"}));
}

TEST(TaskQueue, TaskRejectedAtItsStart_FailsWithoutWork)
{
    Trace trace;
    TaskQueue queue;
    TaskPlan plan;
    plan.rejection = "the drive is gone";
    queue.add(trace.work("late", plan));
    ASSERT_TRUE(pumpUntilIdle(queue));
    EXPECT_EQ(trace.lines, QStringList({"plan late"}));
    EXPECT_EQ(cell(queue, 0, "error"), "the drive is gone");
}

TEST(TaskQueue, PlannedFailure_InterruptsAtItsShare)
{
    Trace trace;
    TaskQueue queue;
    TaskPlan plan;
    plan.milliseconds = 20;
    plan.failsAt = 0.4;
    plan.failure = "broken";
    queue.add(trace.work("f", plan));
    ASSERT_TRUE(pumpUntilIdle(queue));
    EXPECT_EQ(trace.lines, QStringList({"plan f", "interrupt f at 0.4"}));
    EXPECT_EQ(cell(queue, 0, "state"), "failed");
    EXPECT_EQ(cell(queue, 0, "error"), "broken");
    EXPECT_DOUBLE_EQ(cell(queue, 0, "progress").toDouble(), 0.4);
}

TEST(TaskQueue, Progress_GrowsWhileATaskRuns)
{
    Trace trace;
    TaskQueue queue;
    queue.add(trace.work("long", endless()));
    ASSERT_TRUE(pumpUntil([&] { return cell(queue, 0, "progress").toDouble() > 0; }));
    EXPECT_LT(cell(queue, 0, "progress").toDouble(), 1);
    EXPECT_EQ(cell(queue, 0, "state"), "running");
    EXPECT_EQ(queue.currentTitle(), "long");
}

TEST(TaskQueue, CancelOfTheRunningTask_InterruptsItAndStartsTheNext)
{
    Trace trace;
    TaskQueue queue;
    const int first = queue.add(trace.work("long", endless()));
    queue.add(trace.work("next"));
    ASSERT_TRUE(pumpUntil([&] { return cell(queue, 0, "state") == "running"; }));
    queue.cancel(first);
    EXPECT_EQ(cell(queue, 0, "state"), "cancelled");
    EXPECT_EQ(cell(queue, 0, "error"), "");
    ASSERT_TRUE(pumpUntilIdle(queue));
    ASSERT_EQ(trace.lines.size(), 4);
    EXPECT_TRUE(trace.lines.at(1).startsWith("interrupt long at "));
    EXPECT_EQ(trace.lines.at(3), "finish next");
}

TEST(TaskQueue, CancelOfAWaitingTask_LeavesTheOthers)
{
    Trace trace;
    TaskQueue queue;
    queue.add(trace.work("a"));
    queue.cancel(queue.add(trace.work("b")));
    queue.add(trace.work("c"));
    ASSERT_TRUE(pumpUntilIdle(queue));
    EXPECT_EQ(trace.lines, QStringList({"plan a", "finish a", "plan c", "finish c"}));
    EXPECT_EQ(cell(queue, 1, "state"), "cancelled");
}

TEST(TaskQueue, CancelOfAnEndedOrUnknownTask_HasNoEffect)
{
    Trace trace;
    TaskQueue queue;
    const int id = queue.add(trace.work("a"));
    ASSERT_TRUE(pumpUntilIdle(queue));
    queue.cancel(id);
    queue.cancel(99);
    EXPECT_EQ(cell(queue, 0, "state"), "done");
}

TEST(TaskQueue, CancelAll_EndsTheRunningTaskAndStartsNoOther)
{
    Trace trace;
    TaskQueue queue;
    queue.add(trace.work("long", endless()));
    queue.add(trace.work("next"));
    ASSERT_TRUE(pumpUntil([&] { return cell(queue, 0, "state") == "running"; }));
    queue.cancelAll();
    EXPECT_FALSE(queue.isAtWork());
    EXPECT_EQ(trace.lines.size(), 2);
}

TEST(TaskQueue, EndedTasks_AreKeptUpToTwoHundred)
{
    Trace trace;
    TaskQueue queue;
    for (int i = 0; i < 250; ++i)
        queue.add(trace.work("t"));
    EXPECT_EQ(queue.rowCount(), 250);
    ASSERT_TRUE(pumpUntilIdle(queue));
    queue.add(trace.work("u"));
    EXPECT_EQ(queue.rowCount(), 200);
    EXPECT_EQ(cell(queue, 199, "taskId"), 251);
}

} // namespace

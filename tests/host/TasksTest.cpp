// Orders and guides as tasks: duration, failure, cancellation and the resulting machine.
#include "host/machine/Conversions.h"
#include "host/machine/Records.h"
#include "host/objects/HostCore.h"
#include "tests/host/MachineText.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

namespace {

using host::Pace;
using host::TaskQueue;

constexpr int kFormat = 15;
constexpr int kLabel = 31;

class Tasks : public testing::Test
{
protected:
    bool finish()
    {
        return pumpUntil([&] { return !core.status().isBusy(); });
    }
    QVariant cell(int row, int role) { return core.tasks()->data(core.tasks()->index(row), role); }
    QString state(int row) { return cell(row, TaskQueue::StateRole).toString(); }
    const host::Partition& drive(const char* letter) { return *core.machine()->partition(letter); }

    host::Simulation& simulation = *new host::Simulation(testMachine());
    host::HostCore core{std::unique_ptr<host::Backend>(&simulation)};
    const QVariantMap format{{"driveLetter", "D"},
                             {"fileSystem", "exFAT"},
                             {"label", "New"},
                             {"clusterSize", 0},
                             {"quickFormat", false}};
};

TEST_F(Tasks, FullFormat_TakesTheTimeOfItsBytes)
{
    // 50 GiB at 4 MiB per second: longer than any test.
    simulation.setPace(Pace{false, 0.001});
    core.orders().order(kFormat, format);
    ASSERT_TRUE(pumpUntil([&] { return cell(0, TaskQueue::ProgressRole).toDouble() > 0; }));
    EXPECT_LT(cell(0, TaskQueue::ProgressRole).toDouble(), 0.9);
    EXPECT_TRUE(core.status().isBusy());
    EXPECT_EQ(drive("D").fsString, "NTFS");
    EXPECT_EQ(core.work(), "FormatPartition");
    core.tasks()->cancelAll();
    EXPECT_FALSE(core.status().isBusy());
}

TEST_F(Tasks, Instant_TakesNoTime)
{
    simulation.setPace(Pace{true, 1});
    core.orders().order(kFormat, format);
    ASSERT_TRUE(finish());
    EXPECT_EQ(drive("D").fsString, "exFAT");
    EXPECT_EQ(state(0), "done");
}

TEST_F(Tasks, FailedFormat_LeavesThePartitionRaw)
{
    simulation.setPace(Pace{true, 1});
    simulation.setFailures({{kFormat, 0.4}});
    core.orders().order(kFormat, format);
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(0), "failed");
    EXPECT_EQ(cell(0, TaskQueue::ErrorRole), "The task failed after 40%, as --fail requests.");
    EXPECT_EQ(drive("D").fsString, "RAW");
    EXPECT_TRUE(drive("D").isUnformattedType);
    EXPECT_EQ(drive("D").usedSize, 0);
    EXPECT_EQ(drive("D").size, 50 * kGiB);
}

TEST_F(Tasks, PlannedFailure_AffectsOnlyTheNextTaskOfItsFunction)
{
    simulation.setPace(Pace{true, 1});
    simulation.setFailures({{kFormat, 0.5}, {kFormat, 0.0}});
    core.orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "Data2"}});
    core.orders().order(kFormat, format);
    core.orders().order(kFormat, format);
    core.orders().order(kFormat, format);
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(0), "done");
    EXPECT_EQ(state(1), "failed");
    EXPECT_EQ(state(2), "failed");
    EXPECT_EQ(state(3), "done");
    EXPECT_EQ(drive("D").label, "New");
}

TEST_F(Tasks, FailureAtZeroPercent_LeavesTheMachineUnchanged)
{
    simulation.setPace(Pace{true, 1});
    simulation.setFailures({{kFormat, 0.0}});
    core.orders().order(kFormat, format);
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(0), "failed");
    EXPECT_EQ(host::diskRecords(*core.machine()), host::diskRecords(testMachine()));
}

TEST_F(Tasks, FailedResize_LeavesTheMachineUnchanged)
{
    simulation.setPace(Pace{true, 1});
    simulation.setFailures({{14, 0.9}});
    core.orders().order(14, {{"driveLetter", "D"}, {"size", 20 * kGiB}});
    ASSERT_TRUE(finish());
    EXPECT_EQ(state(0), "failed");
    EXPECT_EQ(host::diskRecords(*core.machine()), host::diskRecords(testMachine()));
}

TEST_F(Tasks, CancelledFormat_LeavesThePartitionRawAndTheNextTaskRuns)
{
    simulation.setPace(Pace{false, 0.001});
    core.orders().order(kFormat, format);
    ASSERT_TRUE(pumpUntil([&] { return cell(0, TaskQueue::ProgressRole).toDouble() > 0; }));
    core.orders().order(33, {{"driveLetter", "E"}});
    simulation.setPace(Pace{true, 1});
    core.tasks()->cancel(1);
    EXPECT_EQ(state(0), "cancelled");
    EXPECT_EQ(drive("D").fsString, "RAW");
    ASSERT_TRUE(finish());
    EXPECT_TRUE(drive("E").isActive);
}

TEST_F(Tasks, OrderToAClosingHost_IsDiscarded)
{
    core.status().setClosing();
    core.orders().order(kLabel, {{"driveLetter", "D"}, {"newLabel", "late"}});
    EXPECT_EQ(core.tasks()->rowCount(), 0);
}

host::GuidedWork toMbr()
{
    return host::conversionWork(host::Conversion::ToMbr, {{"diskIndex", 5}, {"isDiskItem", true}});
}

TEST_F(Tasks, Guide_StartsItsWorkOnRequest)
{
    core.guides().open({"Convert", "", toMbr()});
    EXPECT_TRUE(core.guides().canStart());
    EXPECT_FALSE(core.status().isBusy());
    core.guides().start();
    EXPECT_EQ(core.guides().current(), nullptr);
    EXPECT_FALSE(core.guides().canStart());
    ASSERT_TRUE(finish());
    EXPECT_FALSE(core.machine()->disk(5)->isGPT);
    EXPECT_EQ(cell(0, TaskQueue::TitleRole), "ConvertDiskToMbr");
}

TEST_F(Tasks, InformingOrRejectedGuide_CannotBeStarted)
{
    core.guides().open({"Health", "good"});
    EXPECT_FALSE(core.guides().canStart());
    core.guides().start();
    ASSERT_NE(core.guides().current(), nullptr);
    EXPECT_EQ(core.guides().current()->title, "Health");
    core.guides().open(
        {"Convert", "",
         host::conversionWork(host::Conversion::ToMbr, {{"diskIndex", 1}, {"isDiskItem", true}})});
    EXPECT_FALSE(core.guides().canStart());
    core.guides().start();
    EXPECT_FALSE(core.status().isBusy());
}

TEST_F(Tasks, ClosedGuide_CannotBeStarted)
{
    core.guides().open({"Convert", "", toMbr()});
    core.guides().close();
    core.guides().start();
    EXPECT_FALSE(core.status().isBusy());
}

TEST_F(Tasks, StartsGuides_StartsEachGuideAsItOpens)
{
    core.guides().setStartsGuides(true);
    core.guides().open({"Convert", "", toMbr()});
    EXPECT_EQ(core.guides().current(), nullptr);
    ASSERT_TRUE(finish());
    EXPECT_FALSE(core.machine()->disk(5)->isGPT);
}

} // namespace

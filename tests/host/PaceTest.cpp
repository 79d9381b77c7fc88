// Duration of tasks, and the values of --speed and --fail.
#include "host/simulation/Pace.h"

#include <gtest/gtest.h>

namespace {

using host::Pace;
using host::readFailure;
using host::readPace;

constexpr qint64 kGiB = 1024 * 1024 * 1024;

TEST(Pace, Task_TakesItsFixedTimePlusItsBytesAtFourGibibytesPerSecond)
{
    EXPECT_EQ(Pace().milliseconds(200, 0), 200);
    EXPECT_EQ(Pace().milliseconds(0, 4 * kGiB), 1000);
    EXPECT_EQ(Pace().milliseconds(200, 40 * kGiB), 10200);
}

TEST(Pace, Factor_DividesTheWholeTime)
{
    EXPECT_EQ((Pace{false, 10}).milliseconds(200, 40 * kGiB), 1020);
    EXPECT_EQ((Pace{false, 0.5}).milliseconds(200, 40 * kGiB), 20400);
}

TEST(Pace, Instant_TakesNoTime)
{
    EXPECT_EQ((Pace{true, 1}).milliseconds(600000, 4000 * kGiB), 0);
}

TEST(Pace, SlowestFactor_DoesNotOverflow)
{
    EXPECT_GT((Pace{false, 1e-300}).milliseconds(200, 1000 * kGiB), 0);
}

TEST(Pace, Read_AcceptsFactorsAboveZeroAndInstant)
{
    EXPECT_TRUE(readPace("instant")->instant);
    EXPECT_DOUBLE_EQ(readPace("0.25")->factor, 0.25);
    EXPECT_DOUBLE_EQ(readPace("100")->factor, 100);
    for (const char* bad : {"", "0", "-1", "fast", "nan", "inf", "Instant", "1x"})
        EXPECT_FALSE(readPace(bad).has_value()) << bad;
}

TEST(PlannedFailure, Read_AcceptsATaskAndAShare)
{
    const auto failure = readFailure("FormatPartition after 40%");
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->function, 15);
    EXPECT_DOUBLE_EQ(failure->share, 0.4);
    EXPECT_DOUBLE_EQ(readFailure("clonedisk  after 99.5 %")->share, 0.995);
    EXPECT_DOUBLE_EQ(readFailure("MergePartitions after 0%")->share, 0);
    EXPECT_DOUBLE_EQ(readFailure("MergePartitions after 100%")->share, 1);
}

TEST(PlannedFailure, Read_RejectsOtherStrings)
{
    for (const char* bad : {"", "FormatPartition", "FormatPartition after 40", "FormatPartition after 101%",
                            "FormatPartition after -1%", "Nothing after 40%", "after 40%",
                            "FormatPartition 40%", "FormatPartition after 40% or so"})
        EXPECT_FALSE(readFailure(bad).has_value()) << bad;
}

} // namespace

// The two steps that the tools of the partition page share, and the parameter map that they work on.
#include "service/ZorHandle.h"
#include "tests/support/Answers.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

namespace {

const QString kQuestion = "partitionmanager.doFunFromAI";

// Opens what the tools use.
class Steps : public CZorHandle
{
public:
    using CZorHandle::paramsCopy;
    using CZorHandle::ResetParams;
    using CZorHandle::RunDriveTask;
    using CZorHandle::RunTask;
    using CZorHandle::setParam;
};

class RunSteps : public testing::Test
{
protected:
    void build()
    {
        host.build();
        steps.setBridge(host.bridge());
    }

    std::string runDriveTask(const QVariant& driveLetter)
    {
        std::string answer;
        steps.ResetParams();
        steps.setParam("driveLetter", driveLetter);
        runOnOtherThread([&] { steps.RunDriveTask(answer, 16); });
        return answer;
    }

    RecordingHost host;
    Steps steps;
};

TEST_F(RunSteps, ANewHandler_HasNoParameters)
{
    EXPECT_TRUE(steps.paramsCopy().isEmpty());
}

TEST_F(RunSteps, ResetParams_EmptiesTheMap)
{
    steps.setParam("a", QVariant(1));
    steps.setParam("b", std::string("text"));
    EXPECT_EQ(typed(steps.paramsCopy()), "map{a=int:1,b=QString:\"text\"}");
    steps.ResetParams();
    EXPECT_TRUE(steps.paramsCopy().isEmpty());
}

TEST_F(RunSteps, RunDriveTask_WithALetterInFront_AsksTheHostWhateverFollows)
{
    build();
    for (const char* text : {"A", "Z", "a", "z", "q", "C:\\Windows", "dummy", "d5"}) {
        host.recorder().clear();
        EXPECT_EQ(runDriveTask(QString(text)), answers::queued) << text;
        EXPECT_EQ(host.recorder().sequence().value(0), kQuestion) << text;
    }
}

TEST_F(RunSteps, RunDriveTask_WithoutALetterInFront_IsRefusedAndAsksNobody)
{
    build();
    for (const char* text : {"", "1", "1C", " C", ":", "*", "@", "[", "`", "{", "\xC3\x84"})
        EXPECT_EQ(runDriveTask(QString::fromUtf8(text)), answers::notValid) << text;
    EXPECT_EQ(runDriveTask(QVariant()), answers::notValid);
    EXPECT_EQ(runDriveTask(QVariant(5)), answers::notValid);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(RunSteps, RunDriveTask_WithoutTheKey_IsRefusedAndAsksNobody)
{
    build();
    std::string answer;
    steps.RunDriveTask(answer, 16);
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(RunSteps, RunTask_DoesNotLookAtTheLetter)
{
    build();
    std::string answer;
    steps.setParam("driveLetter", std::string("1"));
    steps.RunTask(answer, 2);
    EXPECT_EQ(answer, answers::queued);
}

TEST_F(RunSteps, WithoutABridge_BothAreRefused)
{
    std::string answer = "left as it was";
    steps.RunTask(answer, 2);
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_EQ(runDriveTask("C"), answers::notValid);
}

TEST_F(RunSteps, TheQuestionsKey_StaysOutOfTheParameters)
{
    build();
    EXPECT_EQ(runDriveTask("C"), answers::queued);
    EXPECT_EQ(typed(steps.paramsCopy()), "map{driveLetter=QString:\"C\"}");
    const auto calls = host.recorder().calls();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(typed(calls[0].arguments),
              "list[int:16,map{TestFunValid=bool:true,driveLetter=QString:\"C\"}]");
    EXPECT_EQ(typed(calls[2].arguments), "list[int:16,map{driveLetter=QString:\"C\"}]");
}

TEST_F(RunSteps, ATaskThatTheHostRefuses_LeavesTheParametersUntilTheNextTool)
{
    host.spec("partitionmanager").answer("doFunFromAI", false);
    build();
    EXPECT_EQ(runDriveTask("C"), answers::notValid);
    EXPECT_EQ(typed(steps.paramsCopy()), "map{driveLetter=QString:\"C\"}");
    std::string answer;
    steps.WipeDisk(answer, 1, 2);
    EXPECT_EQ(typed(steps.paramsCopy()), "map{diskIndex=int:1,eraseCount=int:2}");
}

// Two tools that overlap share the map; the order is made from what it holds by then.
TEST_F(RunSteps, AKeyThatComesInDuringTheQuestion_GoesOutWithTheOrder)
{
    host.spec("partitionmanager").answer("doFunFromAI", [this](const QVariantList&) {
        steps.setParam("late", QVariant(true));
        return QVariant(true);
    });
    build();
    EXPECT_EQ(runDriveTask("C"), answers::queued);
    EXPECT_EQ(typed(host.recorder().calls().back().arguments),
              "list[int:16,map{driveLetter=QString:\"C\",late=bool:true}]");
}

TEST_F(RunSteps, TheAnswer_IsSetBeforeTheOrderRuns)
{
    std::string answer;
    std::string atTheOrder;
    host.spec("partitionmanager").answer("doFunFromAI", [&](const QVariantList& arguments) {
        if (!arguments.at(1).toMap().contains("TestFunValid"))
            atTheOrder = answer;
        return QVariant(true);
    });
    build();
    steps.RunTask(answer, 2);
    EXPECT_EQ(atTheOrder, answers::queued);
}

TEST_F(RunSteps, AnOrderThatTheHostAnswersWithFalse_IsStillQueued)
{
    host.spec("partitionmanager").answer("doFunFromAI", [](const QVariantList& arguments) {
        return QVariant(arguments.at(1).toMap().contains("TestFunValid"));
    });
    build();
    EXPECT_EQ(runDriveTask("C"), answers::queued);
}

} // namespace

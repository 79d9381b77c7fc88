// The two run steps of the partition page's tools, and their parameter map.
#include "tests/support/Answers.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <gtest/gtest.h>

namespace {

const QString kCheck = "partitionmanager.doFunFromAI";

// Exposes the members that the tools use.
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
        steps.setBridge(host.toolBridge());
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

TEST_F(RunSteps, NewHandler_HasEmptyParameters)
{
    EXPECT_TRUE(steps.paramsCopy().isEmpty());
}

TEST_F(RunSteps, ResetParams_ClearsTheMap)
{
    steps.setParam("a", QVariant(1));
    steps.setParam("b", std::string("text"));
    EXPECT_EQ(typed(steps.paramsCopy()), "map{a=int:1,b=QString:\"text\"}");
    steps.ResetParams();
    EXPECT_TRUE(steps.paramsCopy().isEmpty());
}

TEST_F(RunSteps, RunDriveTask_FirstCharacterIsALetter_ChecksWithTheHost)
{
    build();
    for (const char* text : {"A", "Z", "a", "z", "q", "C:\\Windows", "dummy", "d5"}) {
        host.recorder().clear();
        EXPECT_EQ(runDriveTask(QString(text)), answers::queued) << text;
        EXPECT_EQ(host.recorder().sequence().value(0), kCheck) << text;
    }
}

TEST_F(RunSteps, RunDriveTask_FirstCharacterIsNotALetter_IsRejectedWithoutAHostCall)
{
    build();
    for (const char* text : {"", "1", "1C", " C", ":", "*", "@", "[", "`", "{", "\xC3\x84"})
        EXPECT_EQ(runDriveTask(QString::fromUtf8(text)), answers::notValid) << text;
    EXPECT_EQ(runDriveTask(QVariant()), answers::notValid);
    EXPECT_EQ(runDriveTask(QVariant(5)), answers::notValid);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(RunSteps, RunDriveTask_WithoutTheKey_IsRejectedWithoutAHostCall)
{
    build();
    std::string answer;
    steps.RunDriveTask(answer, 16);
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(RunSteps, RunTask_IgnoresTheLetter)
{
    build();
    std::string answer;
    steps.setParam("driveLetter", std::string("1"));
    steps.RunTask(answer, 2);
    EXPECT_EQ(answer, answers::queued);
}

TEST_F(RunSteps, WithoutABridge_BothStepsAreRejected)
{
    std::string answer = "unchanged";
    steps.RunTask(answer, 2);
    EXPECT_EQ(answer, answers::notValid);
    EXPECT_EQ(runDriveTask("C"), answers::notValid);
}

TEST_F(RunSteps, TestFunValid_IsNotAddedToTheParameters)
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

TEST_F(RunSteps, TaskRejectedByTheHost_KeepsTheParametersUntilTheNextTool)
{
    host.spec("partitionmanager").answer("doFunFromAI", false);
    build();
    EXPECT_EQ(runDriveTask("C"), answers::notValid);
    EXPECT_EQ(typed(steps.paramsCopy()), "map{driveLetter=QString:\"C\"}");
    std::string answer;
    steps.WipeDisk(answer, 1, 2);
    EXPECT_EQ(typed(steps.paramsCopy()), "map{diskIndex=int:1,eraseCount=int:2}");
}

// Overlapping tools share the map, and the request is built from its current content.
TEST_F(RunSteps, KeyAddedDuringTheCheck_IsPartOfTheRequest)
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

TEST_F(RunSteps, Answer_IsSetBeforeTheRequest)
{
    std::string answer;
    std::string answerAtRequest;
    host.spec("partitionmanager").answer("doFunFromAI", [&](const QVariantList& arguments) {
        if (!arguments.at(1).toMap().contains("TestFunValid"))
            answerAtRequest = answer;
        return QVariant(true);
    });
    build();
    steps.RunTask(answer, 2);
    EXPECT_EQ(answerAtRequest, answers::queued);
}

TEST_F(RunSteps, RequestThatReturnsFalse_IsStillQueued)
{
    host.spec("partitionmanager").answer("doFunFromAI", [](const QVariantList& arguments) {
        return QVariant(arguments.at(1).toMap().contains("TestFunValid"));
    });
    build();
    EXPECT_EQ(runDriveTask("C"), answers::queued);
}

} // namespace

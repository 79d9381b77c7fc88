// A gated call: its three answers, and the cases that end it early.
#include "tests/agent/Answers.h"
#include "tests/agent/TestService.h"
#include "tests/agent/ZorcallProcess.h"
#include "tests/support/RecordingHost.h"

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <mutex>
#include <stdexcept>

namespace {

/// One line of a gated call: the answer of one method, which is JSON.
QByteArray line(const QByteArray& method, const QByteArray& answer)
{
    return "{\"" + method + "\": " + answer + "}\n";
}

QByteArray inProgress()
{
    return line("PreProcessing", answers::operationInProgress());
}

struct GatedHost
{
    GatedHost()
    {
        host.build();
        tools->setBridge(host.toolBridge());
        service = std::make_unique<TestService>(tools);
    }
    Ran call(const char* line) { return zorcall(words(line), service->port()); }

    RecordingHost host;
    std::shared_ptr<PacedTools> tools = std::make_shared<PacedTools>();
    std::unique_ptr<TestService> service;
};

/// Allows every call and records it; its only tool fails.
class FailingTools : public ZORNativePluginNull
{
public:
    void PreProcessing(TaskInfo& answer, const std::string& toolCalls) override
    {
        answer.allow = true;
        note("pre " + toolCalls);
    }
    bool PostProcessing(const std::string& result) override
    {
        note("post " + result);
        return false;
    }
    void RebuildMbr(std::string&, const int32_t) override { throw std::runtime_error("out of order"); }

    std::vector<std::string> notes()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return notes_;
    }

private:
    void note(const std::string& text)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        notes_.push_back(text);
    }
    std::mutex mutex_;
    std::vector<std::string> notes_;
};

TEST(ZorcallGate, AllowedCall_PrintsThreeAnswersWithCode0)
{
    GatedHost gated;
    QSignalSpy before(gated.host.bridge(), &AIBridge::sigAbout2CallFun);
    QSignalSpy after(gated.host.bridge(), &AIBridge::sigAfterCallFun);
    EXPECT_EQ(gated.call("--gated EjectUsb driveLetter=E"),
              (Ran{0,
                   line("PreProcessing", answers::allowed()) + line("EjectUsb", answers::queued()) +
                       line("PostProcessing", "true"),
                   ""}));
    ASSERT_EQ(before.count(), 1);
    EXPECT_EQ(before[0][0].toString(), QStringLiteral("EjectUsb driveLetter=E"));
    ASSERT_EQ(after.count(), 1);
    EXPECT_EQ(after[0][0].toString().toStdString(), g_ZORNativePlugin_constants.TASK_QUEUED);
    EXPECT_TRUE(after[0][1].toBool());
}

TEST(ZorcallGate, RejectionByTheTool_StillCallsPostProcessingWithCode1)
{
    GatedHost gated;
    EXPECT_EQ(gated.call("--gated EjectUsb driveLetter=5"),
              (Ran{1,
                   line("PreProcessing", answers::allowed()) + line("EjectUsb", answers::notValid()) +
                       line("PostProcessing", "false"),
                   ""}));
}

TEST(ZorcallGate, RejectionByTheGate_PreventsTheCallWithCode1)
{
    GatedHost gated;
    gated.tools->setEarlyCalls(1);
    QSignalSpy after(gated.host.bridge(), &AIBridge::sigAfterCallFun);
    EXPECT_EQ(gated.call("--gated EjectUsb driveLetter=E"), (Ran{1, inProgress(), ""}));
    EXPECT_TRUE(gated.host.recorder().sequence().isEmpty());
    EXPECT_EQ(after.count(), 0);
}

TEST(ZorcallGate, Patient_RepeatsPreProcessingUntilThePauseEnds)
{
    GatedHost gated;
    gated.tools->setEarlyCalls(2);
    const Ran ran = gated.call("--gated --patient EjectUsb driveLetter=E");
    EXPECT_EQ(ran.code, 0);
    EXPECT_TRUE(ran.out.startsWith(line("PreProcessing", answers::allowed()))) << ran;
    EXPECT_LT(gated.tools->earlyCalls(), 0);
}

TEST(ZorcallGate, PatientAfterTheTimeout_Code1)
{
    GatedHost gated;
    gated.tools->setEarlyCalls(1000000);
    EXPECT_EQ(gated.call("--gated --patient --timeout 2 EjectUsb driveLetter=E"), (Ran{1, inProgress(), ""}));
    EXPECT_LT(gated.tools->earlyCalls(), 999999);
}

TEST(ZorcallGate, PatientWithABusyHost_DoesNotWait)
{
    GatedHost gated;
    gated.host.object(QStringLiteral("__zormain"))->setValue("busy", true);
    EXPECT_EQ(gated.call("--gated --patient EjectUsb driveLetter=E"),
              (Ran{1, line("PreProcessing", answers::tasksInExecution()), ""}));
    // One call of PreProcessing reads the clock once.
    EXPECT_EQ(gated.tools->earlyCalls(), -1);
}

TEST(ZorcallGate, ToolThatReads_PassesItsJsonToPostProcessing)
{
    GatedHost gated;
    QSignalSpy after(gated.host.bridge(), &AIBridge::sigAfterCallFun);
    EXPECT_EQ(gated.call("--gated ListAllDisks"),
              (Ran{0,
                   line("PreProcessing", answers::allowed()) + line("ListAllDisks", "[]") +
                       line("PostProcessing", "false"),
                   ""}));
    ASSERT_EQ(after.count(), 1);
    EXPECT_EQ(after[0][0].toString(), QStringLiteral("[]"));
}

TEST(ZorcallGate, ExceptionOfTheTool_StillCallsPostProcessingWithCode5)
{
    const auto tools = std::make_shared<FailingTools>();
    TestService service(tools);
    const Ran ran = zorcall(words("--gated RebuildMbr diskIndex=1"), service.port());
    EXPECT_EQ(ran.code, 5);
    EXPECT_EQ(ran.err, "zorcall: the service answered with an exception: out of order\n");
    EXPECT_EQ(tools->notes(), (std::vector<std::string>{"pre RebuildMbr diskIndex=1", "post out of order"}));
}

} // namespace

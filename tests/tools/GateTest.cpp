// The gate around a tool call: its two rejections and their order, the pause, its calls to the host, and the
// recognition of a queued task.
#include "tests/support/Answers.h"
#include "tests/support/DebugLines.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

namespace {

// A gate whose clock the test sets.
class GateWithTestClock : public CZorHandle
{
public:
    qint64 elapsed = 2000;

private:
    qint64 sinceLastCall() const override { return elapsed; }
};

class Gate : public testing::Test
{
protected:
    // Records each read of the property as a host call and returns @p value.
    void recordReads(const QString& object, const QByteArray& property, bool value)
    {
        host.spec(object).reading(property, [=](const QVariantList&) {
            host.recorder().add({object, QString::fromLatin1(property), {}, QThread::currentThread(), true});
            return QVariant(value);
        });
    }

    void build(bool popuped, bool busy)
    {
        recordReads("window", "popuped", popuped);
        recordReads("__zormain", "busy", busy);
        host.build();
        gate.setBridge(host.toolBridge());
    }

    TaskInfo preProcess(const std::string& toolCalls = "call")
    {
        TaskInfo answer;
        answer.allow = true;
        answer.reasons = "unchanged";
        runOnOtherThread([&] {
            caller = QThread::currentThread();
            gate.PreProcessing(answer, toolCalls);
        });
        return answer;
    }

    RecordingHost host;
    GateWithTestClock gate;
    QThread* caller = nullptr;
};

TEST_F(Gate, Init_WithoutABridgeOrOnABusyHost_ReturnsTrue)
{
    EXPECT_TRUE(gate.Init());
    build(true, true);
    EXPECT_TRUE(gate.Init());
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(Gate, PreProcessing_OnAnIdleHost_IsAllowedAndReportsThenSignals)
{
    build(false, false);
    QSignalSpy about(host.bridge(), &AIBridge::sigAbout2CallFun);
    const TaskInfo answer = preProcess("Zerteile \xC3\xBC");
    EXPECT_TRUE(answer.allow);
    EXPECT_EQ(answer.reasons, "");
    EXPECT_EQ(host.recorder().sequence(),
              QStringList({"window.popuped", "__zormain.busy", "__qml_executer.sendUserInfo"}));
    const auto calls = host.recorder().calls();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].thread, caller);
    EXPECT_EQ(calls[1].thread, caller);
    EXPECT_EQ(calls[2].thread, QCoreApplication::instance()->thread());
    EXPECT_EQ(typed(calls[2].arguments),
              QString::fromUtf8("list[QString:\"AIPixie\",QString:\"Info_SpriteCalling\","
                                "map{function=QString:\"Zerteile \xC3\xBC\"},invalid]"));
    ASSERT_EQ(about.count(), 1);
    EXPECT_EQ(typed(about[0]), QString::fromUtf8("list[QString:\"Zerteile \xC3\xBC\"]"));
}

TEST_F(Gate, PreProcessing_WhenAllowed_SignalsOnTheCallersThreadAfterTheEvent)
{
    build(false, false);
    QThread* thread = nullptr;
    QStringList before;
    QObject::connect(host.bridge(), &AIBridge::sigAbout2CallFun, [&] {
        thread = QThread::currentThread();
        before = host.recorder().sequence();
    });
    preProcess();
    EXPECT_EQ(thread, caller);
    EXPECT_EQ(before.last(), "__qml_executer.sendUserInfo");
}

TEST_F(Gate, PreProcessing_WithAPopup_IsRejectedAsInProgressWithoutReadingBusy)
{
    build(true, true);
    QSignalSpy about(host.bridge(), &AIBridge::sigAbout2CallFun);
    const TaskInfo answer = preProcess();
    EXPECT_FALSE(answer.allow);
    EXPECT_EQ(answer.reasons, answers::inProgress);
    EXPECT_EQ(host.recorder().sequence(), QStringList({"window.popuped"}));
    EXPECT_EQ(about.count(), 0);
}

TEST_F(Gate, PreProcessing_WithinThePause_IsRejectedAsInProgressWithoutReadingBusy)
{
    build(false, true);
    QSignalSpy about(host.bridge(), &AIBridge::sigAbout2CallFun);
    gate.elapsed = 1999;
    const TaskInfo answer = preProcess();
    EXPECT_FALSE(answer.allow);
    EXPECT_EQ(answer.reasons, answers::inProgress);
    EXPECT_EQ(host.recorder().sequence(), QStringList({"window.popuped"}));
    EXPECT_EQ(about.count(), 0);
}

TEST_F(Gate, PreProcessing_OnABusyHost_IsRejectedAsInExecutionWithoutEventOrSignal)
{
    build(false, true);
    QSignalSpy about(host.bridge(), &AIBridge::sigAbout2CallFun);
    const TaskInfo answer = preProcess();
    EXPECT_FALSE(answer.allow);
    EXPECT_EQ(answer.reasons, answers::inExecution);
    EXPECT_EQ(host.recorder().sequence(), QStringList({"window.popuped", "__zormain.busy"}));
    EXPECT_EQ(about.count(), 0);
}

TEST_F(Gate, PreProcessing_At1999Milliseconds_IsRejectedAndAt2000Allowed)
{
    build(false, false);
    for (const qint64 elapsed : {0, 1, 1999}) {
        gate.elapsed = elapsed;
        EXPECT_FALSE(preProcess().allow) << elapsed;
    }
    for (const qint64 elapsed : {2000, 2001, 1000000}) {
        gate.elapsed = elapsed;
        EXPECT_TRUE(preProcess().allow) << elapsed;
    }
}

TEST_F(Gate, PreProcessing_WithoutABridge_IsRejectedWithoutReasonLogCallOrSignal)
{
    build(false, false);
    QSignalSpy about(host.bridge(), &AIBridge::sigAbout2CallFun);
    gate.setBridge(nullptr);
    DebugLines lines;
    const TaskInfo answer = preProcess("tool(5)");
    EXPECT_FALSE(answer.allow);
    EXPECT_EQ(answer.reasons, "");
    EXPECT_EQ(lines.take(), QStringList{});
    EXPECT_EQ(host.recorder().sequence(), QStringList{});
    EXPECT_EQ(about.count(), 0);
}

TEST_F(Gate, PreProcessing_OnTheApplicationThread_ReportsDirectly)
{
    build(false, false);
    TaskInfo answer;
    gate.PreProcessing(answer, "");
    EXPECT_TRUE(answer.allow);
    EXPECT_EQ(typed(host.recorder().calls().back().arguments),
              "list[QString:\"AIPixie\",QString:\"Info_SpriteCalling\",map{function=QString:\"\"},invalid]");
}

TEST_F(Gate, PreProcessing_WhenTheEventCannotBeSent_IsAllowedAndSignals)
{
    host.without("__qml_executer");
    build(false, false);
    QSignalSpy about(host.bridge(), &AIBridge::sigAbout2CallFun);
    EXPECT_TRUE(preProcess().allow);
    EXPECT_EQ(about.count(), 1);
}

TEST_F(Gate, PreProcessing_WithStringProperties_ConvertsThemToBool)
{
    host.spec("window").remove("popuped").property("popuped", "QVariant", QVariant("yes"));
    host.build();
    gate.setBridge(host.toolBridge());
    EXPECT_EQ(preProcess().reasons, answers::inProgress);
    host.window()->setValue("popuped", QVariant());
    EXPECT_TRUE(preProcess().allow);
}

TEST_F(Gate, PreProcessing_WhenRejected_StillLogsTheCall)
{
    build(true, false);
    DebugLines lines;
    preProcess("tool(5)");
    const QStringList logged = lines.take();
    ASSERT_EQ(logged.size(), 1);
    EXPECT_TRUE(QRegularExpression("^CZorHandle::PreProcessing \\d+ toolCalls0: \"tool\\(5\\)\"\\s*$")
                    .match(logged[0])
                    .hasMatch())
        << logged[0].toStdString();
}

TEST_F(Gate, PostProcessing_ReturnsTrueOnlyForTaskQueued)
{
    build(false, false);
    EXPECT_TRUE(gate.PostProcessing(answers::queued));
    const std::string queued = answers::queued;
    for (const std::string& text : {std::string(), queued + ' ', ' ' + queued, std::string("task queued"),
                                    queued + '\n', answers::notValid.bytes(), queued + ": partition E",
                                    std::string("It seems that disk7 is not exist"), queued + '\0'})
        EXPECT_FALSE(gate.PostProcessing(text)) << text;
}

TEST_F(Gate, PostProcessing_SignalsTheAnswerAndTheResultOnTheCallersThread)
{
    build(false, false);
    QSignalSpy after(host.bridge(), &AIBridge::sigAfterCallFun);
    QThread* thread = nullptr;
    QObject::connect(host.bridge(), &AIBridge::sigAfterCallFun, [&] { thread = QThread::currentThread(); });
    QThread* other = nullptr;
    runOnOtherThread([&] {
        other = QThread::currentThread();
        gate.PostProcessing(answers::queued);
        gate.PostProcessing(answers::notValid);
    });
    ASSERT_EQ(after.count(), 2);
    EXPECT_EQ(typed(after[0]), "list[QString:\"" + answers::queued.text() + "\",bool:true]");
    EXPECT_EQ(typed(after[1]), "list[QString:\"" + answers::notValid.text() + "\",bool:false]");
    EXPECT_EQ(thread, other);
    EXPECT_TRUE(host.recorder().sequence().isEmpty());
}

TEST_F(Gate, PostProcessing_WithoutABridge_StillReturnsTheResult)
{
    EXPECT_TRUE(gate.PostProcessing(answers::queued));
    EXPECT_FALSE(gate.PostProcessing(answers::notValid));
}

} // namespace

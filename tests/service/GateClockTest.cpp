// The gate on the real clock: the pause begins with the handler and again with each PostProcessing.
#include "service/ZorHandle.h"
#include "tests/support/Answers.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

namespace {

// Gives sight of the clock that the gate goes by.
class GateInView : public CZorHandle
{
public:
    using CZorHandle::sinceLastCall;
};

class GateClock : public testing::Test
{
protected:
    GateClock()
        // The gate logs each question, and here there are very many.
        : handler_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}))
    {
        host.build();
        gate.setBridge(host.bridge());
    }

    ~GateClock() override { qInstallMessageHandler(handler_); }

    bool allowed()
    {
        TaskInfo answer;
        gate.PreProcessing(answer, "call");
        return answer.allow;
    }

    // Asks until the gate says yes; the milliseconds on the gate's clock just after that.
    qint64 firstYes()
    {
        for (;;) {
            const qint64 before = gate.sinceLastCall();
            if (allowed())
                return gate.sinceLastCall();
            EXPECT_LT(before, 2000);
        }
    }

    RecordingHost host;
    GateInView gate;

private:
    QtMessageHandler handler_;
};

TEST_F(GateClock, AfterTheStart_RefusesFor2000MillisecondsAndThenAdmits)
{
    EXPECT_LT(gate.sinceLastCall(), 60000);
    EXPECT_GE(firstYes(), 2000);
}

TEST_F(GateClock, AfterAnyPostProcessing_ThePauseBeginsAnewAlsoForARefusedTask)
{
    pumpUntil([this] { return gate.sinceLastCall() >= 2000; });
    ASSERT_TRUE(allowed());
    QElapsedTimer since;
    since.start();
    gate.PostProcessing(answers::notValid);
    const qint64 onTheClock = gate.sinceLastCall();
    EXPECT_LE(onTheClock, since.elapsed());
    EXPECT_GE(firstYes(), 2000);
}

TEST_F(GateClock, ARefusedPreProcessing_LeavesTheClockAlone)
{
    pumpUntil([this] { return gate.sinceLastCall() >= 50; });
    allowed();
    EXPECT_GE(gate.sinceLastCall(), 50);
    pumpUntil([this] { return gate.sinceLastCall() >= 2000; });
    // An admitted one does as well: only PostProcessing starts the pause.
    EXPECT_TRUE(allowed());
    EXPECT_TRUE(allowed());
}

TEST_F(GateClock, PostProcessingWithoutABridge_RestartsTheClockToo)
{
    GateInView lone;
    pumpUntil([&] { return lone.sinceLastCall() >= 50; });
    QElapsedTimer since;
    since.start();
    lone.PostProcessing("");
    const qint64 onTheClock = lone.sinceLastCall();
    EXPECT_LE(onTheClock, since.elapsed());
}

} // namespace

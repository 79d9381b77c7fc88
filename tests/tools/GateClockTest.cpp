// The gate on the real clock: the construction of the handler and each PostProcessing start the pause.
#include "tests/support/Answers.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

namespace {

// Exposes the gate's clock.
class ObservableGate : public CZorHandle
{
public:
    using CZorHandle::sinceLastCall;
};

class GateClock : public testing::Test
{
protected:
    GateClock()
        // The tests poll the gate, which logs each call.
        : handler_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}))
    {
        host.build();
        gate.setBridge(host.toolBridge());
    }

    ~GateClock() override { qInstallMessageHandler(handler_); }

    bool allowed()
    {
        TaskInfo answer;
        gate.PreProcessing(answer, "call");
        return answer.allow;
    }

    // Polls until the gate admits a call. Returns the gate's clock just after that, in milliseconds.
    qint64 waitUntilAdmitted()
    {
        for (;;) {
            const qint64 before = gate.sinceLastCall();
            if (allowed())
                return gate.sinceLastCall();
            EXPECT_LT(before, 2000);
        }
    }

    RecordingHost host;
    ObservableGate gate;

private:
    QtMessageHandler handler_;
};

TEST_F(GateClock, AfterConstruction_RejectsFor2000MillisecondsThenAdmits)
{
    EXPECT_LT(gate.sinceLastCall(), 60000);
    EXPECT_GE(waitUntilAdmitted(), 2000);
}

TEST_F(GateClock, PostProcessingOfARejectedTask_RestartsThePause)
{
    pumpUntil([this] { return gate.sinceLastCall() >= 2000; });
    ASSERT_TRUE(allowed());
    QElapsedTimer since;
    since.start();
    gate.PostProcessing(answers::notValid);
    const qint64 gateElapsed = gate.sinceLastCall();
    EXPECT_LE(gateElapsed, since.elapsed());
    EXPECT_GE(waitUntilAdmitted(), 2000);
}

TEST_F(GateClock, PreProcessing_DoesNotRestartTheClock)
{
    pumpUntil([this] { return gate.sinceLastCall() >= 50; });
    allowed();
    EXPECT_GE(gate.sinceLastCall(), 50);
    pumpUntil([this] { return gate.sinceLastCall() >= 2000; });
    // An admitted call does not start the pause either.
    EXPECT_TRUE(allowed());
    EXPECT_TRUE(allowed());
}

TEST_F(GateClock, PostProcessingWithoutABridge_RestartsTheClock)
{
    ObservableGate unbridged;
    pumpUntil([&] { return unbridged.sinceLastCall() >= 50; });
    QElapsedTimer since;
    since.start();
    unbridged.PostProcessing("");
    const qint64 gateElapsed = unbridged.sinceLastCall();
    EXPECT_LE(gateElapsed, since.elapsed());
}

} // namespace

// Repeated init and Release on one component: each round behaves like the first.
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QPointer>

#include <gtest/gtest.h>

namespace {

const std::string kInit = wire::call("Init", 1);
const std::string kShow = wire::call("ShowBitLockerStatus", 5, wire::Fields().string(1, "D"));

class ServiceRounds : public testing::Test
{
protected:
    ServiceRounds() { host.build(); }
    ~ServiceRounds() override { AIBridgeAccess::release(bridge()); }

    AIBridge& bridge() { return *host.bridge(); }
    AIFuncallThread* thread() { return AIBridgeAccess::serverThread(bridge()); }

    // Starts a round on the port and waits until the service listens or has ended.
    void init(int port)
    {
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port)));
        bridge().init();
        ASSERT_TRUE(bridge().isServerRunning());
        ASSERT_TRUE(pumpUntil([&] { return thread()->isFinished() || RawClient::isListening(port); }));
    }

    std::string ask(int port, const std::string& call)
    {
        std::string raw;
        runOnOtherThread([&] { raw = RawClient(port).ask(call).raw; });
        return raw;
    }

    void expectPorts(int port)
    {
        EXPECT_EQ(qgetenv("AGENT_NATIVE_PORT"), QByteArray::number(port));
        EXPECT_EQ(qgetenv("AGENT_CHAT_PORT"), QByteArray::number(port + 1));
    }

    void expectServes(int port)
    {
        EXPECT_TRUE(bridge().isServerRunning());
        host.recorder().clear();
        EXPECT_EQ(ask(port, kShow), wire::strictHeader("ShowBitLockerStatus", 5, wire::Reply) +
                                        wire::Fields().string(0, answers::queued).end());
        EXPECT_TRUE(host.recorder().sequence().contains(QStringLiteral("partitionmanager.doFunFromAI")));
    }

    void expectEnded(int port)
    {
        EXPECT_FALSE(bridge().isServerRunning());
        EXPECT_FALSE(RawClient::isListening(port));
        expectOneChild();
    }

    void expectOneChild()
    {
        EXPECT_EQ(bridge().findChildren<AIFuncallThread*>(), QList<AIFuncallThread*>{thread()});
        EXPECT_EQ(bridge().children().size(), 1);
    }

    RecordingHost host;
};

TEST_F(ServiceRounds, TenTimesInitAndRelease_EachRoundBehavesLikeTheFirst)
{
    const AIFuncallThread* previous = nullptr;
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        const ReservedPort port;
        ASSERT_FALSE(bridge().isServerRunning());
        ASSERT_NO_FATAL_FAILURE(init(port.number()));
        EXPECT_NE(thread(), previous);
        expectPorts(port.number());
        expectServes(port.number());
        expectOneChild();

        RawClient idle(port.number());
        idle.ask(kInit);
        AIBridgeAccess::release(bridge());
        EXPECT_TRUE(idle.isEndedByServer());
        expectEnded(port.number());
        AIBridgeAccess::release(bridge());
        expectEnded(port.number());
        expectPorts(port.number());
        previous = thread();
    }
}

TEST_F(ServiceRounds, InitWhileALaterRoundRuns_HasNoEffect)
{
    const ReservedPort firstPort;
    ASSERT_NO_FATAL_FAILURE(init(firstPort.number()));
    AIBridgeAccess::release(bridge());
    const ReservedPort port;
    ASSERT_NO_FATAL_FAILURE(init(port.number()));
    const AIFuncallThread* running = thread();
    RawClient client(port.number());
    client.ask(kInit);
    bridge().init();
    EXPECT_EQ(thread(), running);
    EXPECT_EQ(client.ask(kInit).name, "Init");
    expectPorts(port.number());
    expectOneChild();
}

TEST_F(ServiceRounds, InitDuringALaterPortSearch_HasNoEffect)
{
    const ReservedPort firstPort;
    ASSERT_NO_FATAL_FAILURE(init(firstPort.number()));
    AIBridgeAccess::release(bridge());
    const ReservedPort port;
    const HeldNetstat netstat(listingThatLeadsTo(port.number()));
    bridge().init();
    const AIFuncallThread* running = thread();
    ASSERT_TRUE(pumpUntil([&] { return netstat.isWaiting(); }));
    bridge().init();
    EXPECT_EQ(thread(), running);
    EXPECT_TRUE(bridge().isServerRunning());
    // The variables keep the previous round's ports until the search ends.
    expectPorts(firstPort.number());
    netstat.finish();
    ASSERT_TRUE(pumpUntil([&] { return RawClient::isListening(port.number()); }));
    expectServes(port.number());
    expectPorts(port.number());
}

TEST_F(ServiceRounds, InitAfterTheServiceEndedByItself_StartsANewService)
{
    const ServiceRunner other(nullptr);
    {
        // The port is in use, so the service ends without Release.
        const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(other.port())));
        bridge().init();
        ASSERT_TRUE(pumpUntil([&] { return !bridge().isServerRunning(); }));
    }
    const ReservedPort port;
    ASSERT_NO_FATAL_FAILURE(init(port.number()));
    expectPorts(port.number());
    expectServes(port.number());
    expectOneChild();
    AIBridgeAccess::release(bridge());
    expectEnded(port.number());
}

TEST_F(ServiceRounds, HandlerOfAnEarlierRound_StaysUsable)
{
    const ReservedPort firstPort;
    ASSERT_NO_FATAL_FAILURE(init(firstPort.number()));
    const std::shared_ptr<ZORNativePluginIf> first = thread()->toolHandler();
    const QPointer<AIFuncallThread> firstThread = thread();
    AIBridgeAccess::release(bridge());
    EXPECT_EQ(thread(), firstThread);
    const ReservedPort port;
    ASSERT_NO_FATAL_FAILURE(init(port.number()));
    EXPECT_TRUE(firstThread.isNull());
    EXPECT_NE(thread()->toolHandler(), first);
    std::string answer;
    first->ShowBitLockerStatus(answer, "D");
    EXPECT_EQ(answer, answers::queued);
}

} // namespace

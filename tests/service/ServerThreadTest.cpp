// The service's thread: how many clients it lets in, and how it ends.
#include "service/ServerSocket.h"
#include "service/ToolServer.h"
#include "service/ZorHandle.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Aside.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"

#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TTransportException.h>

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <future>

namespace {

using wire::Fields;

constexpr int kEndLimitMs = 1000;
const std::string kInit = wire::call("Init", 1);
const std::string kShow = wire::call("ShowBitLockerStatus", 5, Fields().string(1, "D"));

std::string queuedReply()
{
    return wire::strictHeader("ShowBitLockerStatus", 5, wire::Reply) +
           Fields().string(0, "Task Queued").end();
}

TEST(ServerThread, FourthClient_WaitsUntilOneOfTheFirstThreeLeaves)
{
    ServiceRunner service(nullptr);
    auto first = std::make_unique<RawClient>(service.port());
    RawClient second(service.port());
    RawClient third(service.port());
    for (RawClient* client : {first.get(), &second, &third})
        client->ask(kInit);
    RawClient fourth(service.port());
    fourth.send(kInit);
    // The three go on being served while the fourth is not.
    for (int i = 0; i < 50; ++i)
        second.ask(kInit);
    EXPECT_FALSE(fourth.hasInput(200));
    first.reset();
    EXPECT_EQ(fourth.receive().name, "Init");
}

TEST(ServerThread, ManyClientsOneAfterTheOther_AreAllServedAndLeaveNothingBehind)
{
    ServiceRunner service(nullptr);
    for (int i = 0; i < 20; ++i)
        RawClient(service.port()).ask(kInit);
    const ProcessFigures before = ProcessFigures::now();
    for (int i = 0; i < 300; ++i)
        RawClient(service.port()).ask(kInit);
    const ProcessFigures after = ProcessFigures::now();
    // The last connections may not have been cleared away yet.
    EXPECT_LE(after.fileDescriptors, before.fileDescriptors + 6);
    EXPECT_LE(after.threads, before.threads + 3);
}

TEST(ServerThread, AfterStart_TheThreadHoldsAHandlerAndRuns)
{
    ServiceRunner service(nullptr);
    EXPECT_NE(service.thread().toolHandler(), nullptr);
    EXPECT_TRUE(service.thread().isRunning());
}

TEST(ServerThread, BeforeStart_StoppingDoesNothingAndThereIsNoHandler)
{
    AIFuncallThread thread(nullptr);
    thread.stopServer();
    EXPECT_EQ(thread.toolHandler(), nullptr);
}

TEST(ServerThread, StopWithoutClients_EndsAndTheHandlerStays)
{
    ServiceRunner service(nullptr);
    QElapsedTimer timer;
    timer.start();
    service.thread().stopServer();
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_LT(timer.elapsed(), kEndLimitMs);
    EXPECT_NE(service.thread().toolHandler(), nullptr);
    EXPECT_FALSE(RawClient::isListening(service.port()));
}

TEST(ServerThread, StopTwiceAndAfterTheEnd_DoesNothingMore)
{
    ServiceRunner service(nullptr);
    service.thread().stopServer();
    service.thread().stopServer();
    ASSERT_TRUE(service.waitForEnd());
    service.thread().stopServer();
}

TEST(ServerThread, StopWithThreeIdleClients_CutsThemAndEnds)
{
    ServiceRunner service(nullptr);
    RawClient first(service.port());
    RawClient second(service.port());
    RawClient third(service.port());
    for (RawClient* client : {&first, &second, &third})
        client->ask(kInit);
    QElapsedTimer timer;
    timer.start();
    service.thread().stopServer();
    for (RawClient* client : {&first, &second, &third})
        EXPECT_TRUE(client->isEndedByServer());
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_LT(timer.elapsed(), kEndLimitMs);
}

TEST(ServerThread, StopWithAClientInTheMiddleOfAMessage_CutsIt)
{
    ServiceRunner service(nullptr);
    RawClient client(service.port());
    client.ask(kInit);
    client.send(kInit.substr(0, 9));
    service.thread().stopServer();
    EXPECT_TRUE(client.isEndedByServer());
    EXPECT_TRUE(service.waitForEnd());
}

// A host whose page, on its way through a tool's call, does what a test tells it to.
class HostWithAPage
{
public:
    explicit HostWithAPage(std::function<void()> onOrder)
    {
        host.spec("partitionmanager").answer("doFunFromAI", [this, onOrder](const QVariantList& arguments) {
            if (!arguments.at(1).toMap().contains(QStringLiteral("TestFunValid"))) {
                onOrder();
                lastOrder.start();
            }
            return QVariant(true);
        });
        host.build();
    }
    RecordingHost host;
    QElapsedTimer lastOrder;
};

TEST(ServerThread, StopInMidCall_TheToolIsAnsweredAndTheThreadEndsAfterIt)
{
    ServiceRunner* running = nullptr;
    bool endedEarly = false;
    HostWithAPage page([&] {
        running->thread().stopServer();
        // The tool is inside this call, so the thread has nothing to do but wait for it.
        endedEarly = running->thread().wait(300);
    });
    ServiceRunner service(page.host.bridge());
    running = &service;
    RawClient client(service.port());
    {
        const Aside call([&] {
            EXPECT_EQ(client.ask(kShow).raw, queuedReply());
            EXPECT_TRUE(client.isEndedByServer());
        });
    }
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_FALSE(endedEarly);
    EXPECT_LT(page.lastOrder.elapsed(), kEndLimitMs);
}

TEST(ServerThread, StopAtTheLimitWithOneInMidCallAndAFourthWaiting_EndsAfterTheTool)
{
    ServiceRunner* running = nullptr;
    HostWithAPage page([&] { running->thread().stopServer(); });
    ServiceRunner service(page.host.bridge());
    running = &service;
    RawClient first(service.port());
    RawClient second(service.port());
    RawClient busy(service.port());
    for (RawClient* client : {&first, &second, &busy})
        client->ask(kInit);
    RawClient fourth(service.port());
    fourth.send(kInit);
    {
        const Aside call([&] { EXPECT_EQ(busy.ask(kShow).raw, queuedReply()); });
    }
    for (RawClient* client : {&first, &second, &busy, &fourth})
        EXPECT_TRUE(client->isEndedByServer());
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_LT(page.lastOrder.elapsed(), kEndLimitMs);
}

TEST(ServerThread, StopWithThreeInMidCall_AllAreAnswered)
{
    std::atomic<int> answered{0};
    int orders = 0;
    ServiceRunner* running = nullptr;
    HostWithAPage page([&] {
        if (++orders == 1)
            running->thread().stopServer();
    });
    ServiceRunner service(page.host.bridge());
    running = &service;
    {
        std::vector<std::unique_ptr<RawClient>> clients;
        for (int i = 0; i < 3; ++i) {
            clients.push_back(std::make_unique<RawClient>(service.port()));
            clients.back()->ask(kInit);
        }
        // All three have sent their call before the application thread serves any of them.
        for (const auto& client : clients)
            client->send(kShow);
        pumpUntil([&] { return page.host.recorder().calls().size() >= 3; }, 2000);
        const Aside reading([&] {
            for (const auto& client : clients) {
                try {
                    answered += client->receive().raw == queuedReply() ? 1 : 0;
                } catch (const std::runtime_error&) {
                    // Its call had not been read when the stop came.
                }
            }
        });
    }
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_EQ(answered, orders);
    EXPECT_GE(orders, 1);
}

// Its answers are larger than what a connection holds by itself.
class HandlerOfLongAnswers : public ZORNativePluginNull
{
public:
    static constexpr std::size_t length = 64u << 20;
    void ShowBitLockerStatus(std::string& answer, const std::string&) override { answer.assign(length, 'x'); }
};

TEST(ServerStop, WithAClientThatDoesNotReadItsAnswer_Ends)
{
    auto server = std::make_unique<HandlerServer>(std::make_shared<HandlerOfLongAnswers>());
    RawClient client(server->port());
    client.send(kShow);
    ASSERT_TRUE(client.hasInput(RawClient::limitMs));
    QElapsedTimer timer;
    timer.start();
    std::future<void> end = std::async(std::launch::async, [&] { server.reset(); });
    if (end.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
        // It would wait for the rest to be read.
        client.receive();
        FAIL() << "the server does not end";
    }
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST(ServerStop, WithAClientThatReadsItsAnswer_SendsAllOfIt)
{
    auto server = std::make_unique<HandlerServer>(std::make_shared<HandlerOfLongAnswers>());
    RawClient client(server->port());
    client.send(kShow);
    ASSERT_TRUE(client.hasInput(RawClient::limitMs));
    std::future<void> end = std::async(std::launch::async, [&] { server.reset(); });
    EXPECT_EQ(client.receive().body.field(0).bytes.size(), HandlerOfLongAnswers::length);
    end.get();
}

TEST(ServerThread, ClientThatIsSlowToRead_GetsItsWholeAnswer)
{
    HandlerServer server(std::make_shared<HandlerOfLongAnswers>());
    RawClient client(server.port());
    client.send(kShow);
    ASSERT_TRUE(client.hasInput(RawClient::limitMs));
    // Longer than the server waits for such a client when it is to end.
    std::this_thread::sleep_for(std::chrono::milliseconds(1300));
    EXPECT_EQ(client.receive().body.field(0).bytes.size(), HandlerOfLongAnswers::length);
}

// A server made by hand, so that a stop can come at any point of its start.
struct BareServer
{
    std::unique_ptr<apache::thrift::server::TThreadedServer> server =
        makeToolServer(std::make_shared<CZorHandle>(), "localhost", 0);

    void stop()
    {
        server->getServerTransport()->interrupt();
        server->getServerTransport()->close();
        server->stop();
    }
};

TEST(ServerStop, BetweenBuildingAndServing_ServeReturnsAtOnce)
{
    BareServer bare;
    bare.stop();
    std::future<void> end = std::async(std::launch::async, [&] { bare.server->serve(); });
    ASSERT_EQ(end.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    EXPECT_NO_THROW(end.get());
}

TEST(ServerStop, AtAnyMomentOfTheStart_ServeReturnsInTimeAndReportsNoFailure)
{
    for (int round = 0; round < 1000; ++round) {
        BareServer bare;
        std::promise<void> go;
        std::future<void> end = std::async(std::launch::async, [&] {
            go.set_value();
            bare.server->serve();
        });
        go.get_future().wait();
        for (volatile int spin = 0; spin < (round % 100) * 200; spin = spin + 1) {
        }
        QElapsedTimer timer;
        timer.start();
        bare.stop();
        ASSERT_EQ(end.wait_for(std::chrono::seconds(20)), std::future_status::ready) << round;
        EXPECT_LT(timer.elapsed(), kEndLimitMs) << round;
        ASSERT_NO_THROW(end.get()) << round;
    }
}

TEST(ServerStop, AnInterruptBeforeListening_IsRemembered)
{
    ServerSocket socket("localhost", 0);
    socket.interrupt();
    socket.listen();
    try {
        socket.accept();
        FAIL() << "accepted";
    } catch (const apache::thrift::transport::TTransportException& exception) {
        EXPECT_EQ(exception.getType(), apache::thrift::transport::TTransportException::INTERRUPTED);
    }
}

TEST(ServerThread, StopBeforeTheServerExists_HasNoEffect)
{
    AIFuncallThread thread(nullptr);
    thread.stopServer();
    EXPECT_FALSE(thread.isRunning());
    EXPECT_FALSE(thread.isFinished());
}

TEST(ServerThread, InitTwice_StartsOneService)
{
    const ReservedPort port;
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port.number())));
    AIBridge bridge;
    bridge.init();
    AIFuncallThread* thread = AIBridgeAccess::serverThread(bridge);
    ASSERT_NE(thread, nullptr);
    bridge.init();
    EXPECT_EQ(AIBridgeAccess::serverThread(bridge), thread);
    ASSERT_TRUE(pumpUntil([&] { return thread->isFinished() || RawClient::isListening(port.number()); }));
    AIBridgeAccess::release(bridge);
    EXPECT_FALSE(bridge.isServerRunning());
}

} // namespace

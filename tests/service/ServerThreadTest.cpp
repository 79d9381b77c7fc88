// The service's thread: how many clients it lets in, and how it ends.
#include "service/ConnectionSocket.h"
#include "service/ServerSocket.h"
#include "service/ToolServer.h"
#include "service/ZorHandle.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/Aside.h"
#include "tests/support/DebugLines.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/Median.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TTransportException.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QSemaphore>

#include <gtest/gtest.h>

#include <future>

namespace {

using wire::Fields;

// Closing waits up to half a second for the server's thread to leave its socket; a stop that always waited in
// vain would take longer than this.
constexpr int kMedianEndMs = 250;
const std::string kInit = wire::call("Init", 1);
const std::string kShow = wire::call("ShowBitLockerStatus", 5, Fields().string(1, "D"));

std::string queuedReply()
{
    return wire::strictHeader("ShowBitLockerStatus", 5, wire::Reply) +
           Fields().string(0, answers::queued).end();
}

// Notes the port once the server listens.
struct ListenEvent : public apache::thrift::server::TServerEventHandler
{
    void preServe() override { port = socket->getPort(); }
    std::shared_ptr<ServerSocket> socket;
    std::atomic<int> port{0};
};

// The service's thread with a view of its server.
class WatchedThread : public AIFuncallThread
{
public:
    using AIFuncallThread::AIFuncallThread;

    /// The port that the service listens on; 0 until it listens.
    int boundPort() const { return event_->port; }
    /// The most clients that were connected at the same time.
    std::int64_t mostClients() const { return server_.load()->getConcurrentClientCountHWM(); }

    static std::unique_ptr<AIFuncallThread> make(AIBridge* bridge)
    {
        return std::make_unique<WatchedThread>(bridge);
    }
    static WatchedThread& of(ServiceRunner& service) { return static_cast<WatchedThread&>(service.thread()); }

protected:
    std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<CZorHandle>& tools, const std::string& address, int port) override
    {
        auto made = AIFuncallThread::makeServer(tools, address, port);
        event_->socket = std::dynamic_pointer_cast<ServerSocket>(made->getServerTransport());
        made->setServerEventHandler(event_);
        server_ = made.get();
        return made;
    }

private:
    std::shared_ptr<ListenEvent> event_ = std::make_shared<ListenEvent>();
    std::atomic<apache::thrift::server::TThreadedServer*> server_{nullptr};
};

TEST(ServerThread, FourthClient_WaitsUntilOneOfTheFirstThreeLeaves)
{
    ServiceRunner service(nullptr, WatchedThread::make);
    auto first = std::make_unique<RawClient>(service.port());
    RawClient second(service.port());
    RawClient third(service.port());
    for (RawClient* client : {first.get(), &second, &third})
        client->ask(kInit);
    RawClient fourth(service.port());
    fourth.send(kInit);
    // The three go on being served while the fourth is not.
    for (int i = 0; i < 200; ++i)
        second.ask(kInit);
    EXPECT_FALSE(fourth.hasInput());
    first.reset();
    EXPECT_EQ(fourth.receive().name, "Init");
    EXPECT_EQ(WatchedThread::of(service).mostClients(), 3);
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
    service.thread().stopServer();
    ASSERT_TRUE(service.waitForEnd());
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
    service.thread().stopServer();
    for (RawClient* client : {&first, &second, &third})
        EXPECT_TRUE(client->isEndedByServer());
    ASSERT_TRUE(service.waitForEnd());
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

// A host whose page runs a test's function when it gets an order.
class HostWithAPage
{
public:
    explicit HostWithAPage(std::function<void()> onOrder)
    {
        host.spec("partitionmanager").answer("doFunFromAI", [onOrder](const QVariantList& arguments) {
            if (!arguments.at(1).toMap().contains(QStringLiteral("TestFunValid")))
                onOrder();
            return QVariant(true);
        });
        host.build();
    }
    RecordingHost host;
};

TEST(ServerThread, StopInMidCall_TheToolIsAnsweredAndTheThreadEndsAfterIt)
{
    ServiceRunner* running = nullptr;
    RawClient* idle = nullptr;
    bool idleWasCut = false;
    bool endedEarly = true;
    HostWithAPage page([&] {
        running->thread().stopServer();
        // The server has reacted to the stop once the idle connection is cut; the tool is still in this call.
        idleWasCut = idle->isEndedByServer();
        endedEarly = running->thread().isFinished();
    });
    ServiceRunner service(page.host.bridge());
    running = &service;
    RawClient other(service.port());
    other.ask(kInit);
    idle = &other;
    RawClient client(service.port());
    {
        const Aside call([&] {
            EXPECT_EQ(client.ask(kShow).raw, queuedReply());
            EXPECT_TRUE(client.isEndedByServer());
        });
    }
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_TRUE(idleWasCut);
    EXPECT_FALSE(endedEarly);
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
}

TEST(ServerThread, StopWithThreeInMidCall_AllAreAnswered)
{
    QSemaphore entered;
    QSemaphore leave;
    RecordingHost host;
    // The tools call this member on their connection threads, so all three can be inside it at once.
    host.spec("deviceMgr").answer("disks", [&](const QVariantList&) {
        entered.release();
        leave.acquire();
        leave.release();
        const QString key = QStringLiteral("diskIndex");
        return QVariant(QVariantList{QVariantMap{{key, 0}}, QVariantMap{{key, 1}}});
    });
    host.build();
    ServiceRunner service(host.bridge());
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 3; ++i) {
        clients.push_back(std::make_unique<RawClient>(service.port()));
        clients.back()->send(wire::call("CloneDiskToDisk", i, Fields().number(1, 0).number(2, 1)));
    }
    const bool allInside = pumpUntil([&] { return entered.available() == 3; });
    service.thread().stopServer();
    EXPECT_FALSE(service.thread().isFinished());
    leave.release();
    ASSERT_TRUE(allInside);
    {
        const Aside reading([&] {
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(clients[std::size_t(i)]->receive().raw,
                          wire::strictHeader("CloneDiskToDisk", i, wire::Reply) +
                              Fields().string(0, answers::queued).end());
                EXPECT_TRUE(clients[std::size_t(i)]->isEndedByServer());
            }
        });
    }
    ASSERT_TRUE(service.waitForEnd());
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
    std::future<void> end = std::async(std::launch::async, [&] { server.reset(); });
    if (end.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
        // It would wait for the rest to be read.
        client.receive();
        FAIL() << "the server does not end";
    }
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

// Counts the attempts to send that ended without a byte: half a second in which the client reads nothing.
class CountingSocket : public ConnectionSocket
{
public:
    using ConnectionSocket::ConnectionSocket;
    std::uint32_t write_partial(const std::uint8_t* bytes, std::uint32_t length) override
    {
        const std::uint32_t count = ConnectionSocket::write_partial(bytes, length);
        stalls += count == 0 ? 1 : 0;
        return count;
    }
    std::atomic<int> stalls{0};
};

class CountingListener : public ServerSocket
{
public:
    using ServerSocket::ServerSocket;
    std::shared_ptr<CountingSocket> acceptCounting()
    {
        return std::dynamic_pointer_cast<CountingSocket>(accept());
    }

protected:
    std::shared_ptr<apache::thrift::transport::TSocket> createSocket(THRIFT_SOCKET client) override
    {
        return std::make_shared<CountingSocket>(client, pChildInterruptSockReader_,
                                                std::make_shared<std::atomic<bool>>(false));
    }
};

TEST(ServerThread, ClientThatReadsNothingForSeveralLimits_GetsItsWholeAnswer)
{
    CountingListener listener("localhost", 0);
    listener.listen();
    RawClient client(listener.getPort());
    const std::shared_ptr<CountingSocket> connection = listener.acceptCounting();
    ASSERT_NE(connection, nullptr);
    const std::string answer(HandlerOfLongAnswers::length, 'x');
    std::future<void> sent = std::async(std::launch::async, [&] {
        connection->write(reinterpret_cast<const std::uint8_t*>(answer.data()), std::uint32_t(answer.size()));
    });
    EXPECT_TRUE(pumpUntil([&] { return connection->stalls >= 3; }));
    EXPECT_EQ(client.take(answer.size()), answer);
    EXPECT_NO_THROW(sent.get());
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

TEST(ServerStop, AtAnyMomentOfTheStart_ServeReturnsAndReportsNoFailureAndTheMedianIsShort)
{
    std::vector<qint64> durations;
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
        durations.push_back(timer.elapsed());
        ASSERT_NO_THROW(end.get()) << round;
    }
    EXPECT_LT(median(durations), kMedianEndMs);
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

TEST(ServerThread, StopDuringThePortSearch_DoesNothingAndTheServiceStarts)
{
    const ReservedPort port;
    const HeldNetstat netstat(listingThatLeadsTo(port.number()));
    AIFuncallThread thread(nullptr);
    thread.start();
    ASSERT_TRUE(pumpUntil([&] { return netstat.isWaiting(); }));
    thread.stopServer();
    EXPECT_TRUE(thread.isRunning());
    netstat.finish();
    EXPECT_TRUE(pumpUntil([&] { return thread.isFinished() || RawClient::isListening(port.number()); }));
    if (!thread.isFinished()) {
        EXPECT_EQ(RawClient(port.number()).ask(kInit).name, "Init");
        EXPECT_TRUE(thread.isRunning());
    } else {
        ADD_FAILURE() << "the thread has ended";
    }
    thread.stopServer();
    EXPECT_TRUE(thread.wait(20000));
}

TEST(ServerThread, WithoutAFreePort_PublishesZeroAndListensOnAPortOfTheSystems)
{
    QByteArray listing;
    for (int busy = 1; busy <= 65534; ++busy)
        listing += ":" + QByteArray::number(busy) + "\n";
    const FakeNetstat netstat(FakeNetstat::printing(listing));
    WatchedThread thread(nullptr);
    thread.start();
    ASSERT_TRUE(pumpUntil([&] { return thread.isFinished() || thread.boundPort() != 0; }));
    EXPECT_EQ(qgetenv("AGENT_NATIVE_PORT"), "0");
    EXPECT_EQ(qgetenv("AGENT_CHAT_PORT"), "0");
    ASSERT_TRUE(thread.isRunning());
    // Any port that the system has free: no variable and no log names it.
    EXPECT_GT(thread.boundPort(), 0);
    EXPECT_EQ(RawClient(thread.boundPort()).ask(kInit).name, "Init");
    thread.stopServer();
    EXPECT_TRUE(thread.wait(20000));
}

TEST(ServerThread, AddressInUse_EndsTheThreadWithItsMessage)
{
    const ServiceRunner other(nullptr);
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(other.port())));
    DebugLines lines;
    AIFuncallThread thread(nullptr);
    thread.start();
    ASSERT_TRUE(thread.wait(20000));
    EXPECT_EQ(lines.take(), QStringList{"AIFuncallThread::run() exception"});
    thread.stopServer();
    EXPECT_EQ(lines.take(), QStringList{});
}

// A socket that throws something other than an exception class, once, at one call.
class ThrowingSocket : public ServerSocket
{
public:
    enum class At { Listen, Interrupt };
    ThrowingSocket(const std::string& address, int port, At at) : ServerSocket(address, port), at_(at) {}
    void listen() override
    {
        throwAt(At::Listen);
        ServerSocket::listen();
    }
    void interrupt() override
    {
        throwAt(At::Interrupt);
        ServerSocket::interrupt();
    }

private:
    void throwAt(At at)
    {
        if (at == at_ && !thrown_.exchange(true))
            throw 7;
    }
    const At at_;
    std::atomic<bool> thrown_{false};
};

class ThreadOnThrowingSocket : public AIFuncallThread
{
public:
    ThreadOnThrowingSocket(AIBridge* bridge, ThrowingSocket::At at) : AIFuncallThread(bridge), at_(at) {}

protected:
    std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<CZorHandle>& tools, const std::string& address, int port) override
    {
        namespace transport = apache::thrift::transport;
        return std::make_unique<apache::thrift::server::TThreadedServer>(
            std::make_shared<ZORNativePluginProcessor>(tools),
            std::make_shared<ThrowingSocket>(address, port, at_),
            std::make_shared<transport::TBufferedTransportFactory>(),
            std::make_shared<apache::thrift::protocol::TBinaryProtocolFactory>());
    }

private:
    const ThrowingSocket::At at_;
};

TEST(ServerThread, AnyExceptionFromServe_EndsTheThreadWithItsMessage)
{
    const ReservedPort port;
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port.number())));
    DebugLines lines;
    ThreadOnThrowingSocket thread(nullptr, ThrowingSocket::At::Listen);
    thread.start();
    ASSERT_TRUE(thread.wait(20000));
    EXPECT_EQ(lines.take(), QStringList{"AIFuncallThread::run() exception"});
}

TEST(ServerThread, AnyExceptionDuringAStop_IsCaughtWithItsMessageAndTheServiceGoesOn)
{
    ServiceRunner service(nullptr, [](AIBridge* bridge) {
        return std::make_unique<ThreadOnThrowingSocket>(bridge, ThrowingSocket::At::Interrupt);
    });
    DebugLines lines;
    EXPECT_NO_THROW(service.thread().stopServer());
    EXPECT_EQ(lines.take(), QStringList{"AIFuncallThread::stopServer() exception"});
    EXPECT_EQ(RawClient(service.port()).ask(kInit).name, "Init");
    service.thread().stopServer();
    EXPECT_TRUE(service.waitForEnd());
    EXPECT_EQ(lines.take(), QStringList{});
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

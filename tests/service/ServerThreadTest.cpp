// The service's thread: the limit of three clients, and shutdown.
#include "service/ConnectionSocket.h"
#include "service/ServerSocket.h"
#include "service/ToolServer.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Answers.h"
#include "tests/support/BackgroundWork.h"
#include "tests/support/DebugLines.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/Median.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/SettledFigures.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <thrift/protocol/TBinaryProtocol.h>
#include <thrift/server/TThreadedServer.h>
#include <thrift/transport/TTransportException.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QSemaphore>

#include <gtest/gtest.h>

#include <future>

namespace {

using wire::Fields;

// Closing waits up to half a second for the server's thread to leave its socket. If every stop used the whole
// wait, the median would exceed this.
constexpr int kMedianEndMs = 250;
const std::string kInit = wire::call("Init", 1);
const std::string kShow = wire::call("ShowBitLockerStatus", 5, Fields().string(1, "D"));

std::string queuedReply()
{
    return wire::strictHeader("ShowBitLockerStatus", 5, wire::Reply) +
           Fields().string(0, answers::queued).end();
}

// Records the port when the server starts to listen.
struct ListenEvent : public apache::thrift::server::TServerEventHandler
{
    void preServe() override { port = socket->getPort(); }
    std::shared_ptr<ServerSocket> socket;
    std::atomic<int> port{0};
};

// Exposes the server of the service's thread.
class ObservableThread : public AIFuncallThread
{
public:
    using AIFuncallThread::AIFuncallThread;

    /// 0 until the service listens.
    int boundPort() const { return event_->port; }
    /// The maximum number of simultaneous clients.
    std::int64_t maxClients() const { return server_.load()->getConcurrentClientCountHWM(); }

    static std::unique_ptr<AIFuncallThread> make(AIBridge* bridge)
    {
        return std::make_unique<ObservableThread>(bridge, AIBridgeAccess::makeHandler(bridge));
    }
    static ObservableThread& of(ServiceRunner& service)
    {
        return static_cast<ObservableThread&>(service.thread());
    }

protected:
    std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<ZORNativePluginIf>& tools, const std::string& address, int port) override
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

TEST(ServerThread, FourthClient_WaitsUntilOneOfTheFirstThreeDisconnects)
{
    ServiceRunner service(nullptr, ObservableThread::make);
    auto first = std::make_unique<RawClient>(service.port());
    RawClient second(service.port());
    RawClient third(service.port());
    for (RawClient* client : {first.get(), &second, &third})
        client->ask(kInit);
    RawClient fourth(service.port());
    fourth.send(kInit);
    // The first three are still served while the fourth waits.
    for (int i = 0; i < 200; ++i)
        second.ask(kInit);
    EXPECT_FALSE(fourth.hasInput());
    first.reset();
    EXPECT_EQ(fourth.receive().name, "Init");
    EXPECT_EQ(ObservableThread::of(service).maxClients(), 3);
}

TEST(ServerThread, ConsecutiveClients_AreServedWithoutLeaks)
{
    ServiceRunner service(nullptr);
    for (int i = 0; i < 20; ++i)
        RawClient(service.port()).ask(kInit);
    const ProcessFigures before = ProcessFigures::now();
    for (int i = 0; i < 300; ++i)
        RawClient(service.port()).ask(kInit);
    expectSettled(before);
}

TEST(ServerThread, AfterStart_ThreadRunsAndHasAHandler)
{
    ServiceRunner service(nullptr);
    EXPECT_NE(service.thread().toolHandler(), nullptr);
    EXPECT_TRUE(service.thread().isRunning());
}

TEST(ServerThread, BeforeStart_StopHasNoEffectAndHandlerIsNull)
{
    AIFuncallThread thread(nullptr, AIBridgeAccess::makeHandler(nullptr));
    thread.stopServer();
    EXPECT_EQ(thread.toolHandler(), nullptr);
}

TEST(ServerThread, StopWithoutClients_EndsAndKeepsTheHandler)
{
    ServiceRunner service(nullptr);
    service.thread().stopServer();
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_NE(service.thread().toolHandler(), nullptr);
    EXPECT_FALSE(RawClient::isListening(service.port()));
}

TEST(ServerThread, StopTwiceAndAfterTheEnd_HasNoEffect)
{
    ServiceRunner service(nullptr);
    service.thread().stopServer();
    service.thread().stopServer();
    ASSERT_TRUE(service.waitForEnd());
    service.thread().stopServer();
}

TEST(ServerThread, StopWithThreeIdleClients_ClosesTheirConnectionsAndEnds)
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

TEST(ServerThread, StopDuringAPartialMessage_ClosesTheConnection)
{
    ServiceRunner service(nullptr);
    RawClient client(service.port());
    client.ask(kInit);
    client.send(kInit.substr(0, 9));
    service.thread().stopServer();
    EXPECT_TRUE(client.isEndedByServer());
    EXPECT_TRUE(service.waitForEnd());
}

// A host whose page calls a function of the test on each request.
class HostWithAPage
{
public:
    explicit HostWithAPage(std::function<void()> onRequest)
    {
        host.spec("partitionmanager").answer("doFunFromAI", [onRequest](const QVariantList& arguments) {
            if (!arguments.at(1).toMap().contains(QStringLiteral("TestFunValid")))
                onRequest();
            return QVariant(true);
        });
        host.build();
    }
    RecordingHost host;
};

TEST(ServerThread, StopInMidCall_ToolIsAnsweredBeforeTheThreadEnds)
{
    ServiceRunner* running = nullptr;
    RawClient* idle = nullptr;
    bool idleWasClosed = false;
    bool endedEarly = true;
    HostWithAPage page([&] {
        running->thread().stopServer();
        // The closed idle connection shows that the server has handled the stop during this call.
        idleWasClosed = idle->isEndedByServer();
        endedEarly = running->thread().isFinished();
    });
    ServiceRunner service(page.host.bridge());
    running = &service;
    RawClient other(service.port());
    other.ask(kInit);
    idle = &other;
    RawClient client(service.port());
    {
        const BackgroundWork call([&] {
            EXPECT_EQ(client.ask(kShow).raw, queuedReply());
            EXPECT_TRUE(client.isEndedByServer());
        });
    }
    ASSERT_TRUE(service.waitForEnd());
    EXPECT_TRUE(idleWasClosed);
    EXPECT_FALSE(endedEarly);
}

TEST(ServerThread, StopInMidCallWithAFourthClientWaiting_EndsAfterTheTool)
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
        const BackgroundWork call([&] { EXPECT_EQ(busy.ask(kShow).raw, queuedReply()); });
    }
    for (RawClient* client : {&first, &second, &busy, &fourth})
        EXPECT_TRUE(client->isEndedByServer());
    ASSERT_TRUE(service.waitForEnd());
}

TEST(ServerThread, StopWithThreeClientsInMidCall_EachIsAnswered)
{
    QSemaphore entered;
    QSemaphore leave;
    RecordingHost host;
    // The tools call this member on their connection threads, so three calls can overlap.
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
        const BackgroundWork reading([&] {
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

// Its answers exceed the buffers of a connection.
class LongAnswerHandler : public ZORNativePluginNull
{
public:
    static constexpr std::size_t length = 64u << 20;
    void ShowBitLockerStatus(std::string& answer, const std::string&) override { answer.assign(length, 'x'); }
};

TEST(ServerStop, ClientThatReadsNothing_DoesNotBlockTheStop)
{
    auto server = std::make_unique<HandlerServer>(std::make_shared<LongAnswerHandler>());
    RawClient client(server->port());
    client.send(kShow);
    ASSERT_TRUE(client.hasInput(RawClient::limitMs));
    std::future<void> end = std::async(std::launch::async, [&] { server.reset(); });
    if (end.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
        // Reads the rest so that the server can end.
        client.receive();
        FAIL() << "the server did not end";
    }
}

TEST(ServerStop, ClientThatReads_ReceivesTheWholeAnswer)
{
    auto server = std::make_unique<HandlerServer>(std::make_shared<LongAnswerHandler>());
    RawClient client(server->port());
    client.send(kShow);
    ASSERT_TRUE(client.hasInput(RawClient::limitMs));
    std::future<void> end = std::async(std::launch::async, [&] { server.reset(); });
    EXPECT_EQ(client.receive().body.field(0).bytes.size(), LongAnswerHandler::length);
    end.get();
}

// Counts send timeouts: half a second in which the client reads nothing.
class CountingSocket : public ConnectionSocket
{
public:
    using ConnectionSocket::ConnectionSocket;
    std::uint32_t write_partial(const std::uint8_t* bytes, std::uint32_t length) override
    {
        const std::uint32_t count = ConnectionSocket::write_partial(bytes, length);
        timeouts += count == 0 ? 1 : 0;
        return count;
    }
    std::atomic<int> timeouts{0};
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

TEST(ServerThread, ClientThatPausesForSeveralTimeouts_ReceivesTheWholeAnswer)
{
    CountingListener listener("localhost", 0);
    listener.listen();
    RawClient client(listener.getPort());
    const std::shared_ptr<CountingSocket> connection = listener.acceptCounting();
    ASSERT_NE(connection, nullptr);
    const std::string answer(LongAnswerHandler::length, 'x');
    std::future<void> sent = std::async(std::launch::async, [&] {
        connection->write(reinterpret_cast<const std::uint8_t*>(answer.data()), std::uint32_t(answer.size()));
    });
    EXPECT_TRUE(pumpUntil([&] { return connection->timeouts >= 3; }));
    EXPECT_EQ(client.take(answer.size()), answer);
    EXPECT_NO_THROW(sent.get());
}

// A server outside its thread class, so that a test can stop it at any point of its start.
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

TEST(ServerStop, BetweenConstructionAndServe_ServeReturns)
{
    BareServer bare;
    bare.stop();
    std::future<void> end = std::async(std::launch::async, [&] { bare.server->serve(); });
    ASSERT_EQ(end.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    EXPECT_NO_THROW(end.get());
}

TEST(ServerStop, AtAnyPointOfTheStart_ServeReturnsWithoutFailureAndTheMedianIsShort)
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

TEST(ServerStop, InterruptBeforeListen_InterruptsTheFirstAccept)
{
    ServerSocket socket("localhost", 0);
    socket.interrupt();
    socket.listen();
    try {
        socket.accept();
        FAIL() << "accept returned";
    } catch (const apache::thrift::transport::TTransportException& exception) {
        EXPECT_EQ(exception.getType(), apache::thrift::transport::TTransportException::INTERRUPTED);
    }
}

TEST(ServerThread, StopDuringThePortSearch_IsIgnoredAndTheServiceStarts)
{
    const ReservedPort port;
    const HeldNetstat netstat(listingThatLeadsTo(port.number()));
    AIFuncallThread thread(nullptr, AIBridgeAccess::makeHandler(nullptr));
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
        ADD_FAILURE() << "the thread ended";
    }
    thread.stopServer();
    EXPECT_TRUE(thread.wait(20000));
}

TEST(ServerThread, WithoutAFreePort_PublishesZeroAndListensOnASystemAssignedPort)
{
    QByteArray listing;
    for (int busy = 1; busy <= 65534; ++busy)
        listing += ":" + QByteArray::number(busy) + "\n";
    const FakeNetstat netstat(FakeNetstat::printing(listing));
    ObservableThread thread(nullptr, AIBridgeAccess::makeHandler(nullptr));
    thread.start();
    ASSERT_TRUE(pumpUntil([&] { return thread.isFinished() || thread.boundPort() != 0; }));
    EXPECT_EQ(qgetenv("AGENT_NATIVE_PORT"), "0");
    EXPECT_EQ(qgetenv("AGENT_CHAT_PORT"), "0");
    ASSERT_TRUE(thread.isRunning());
    EXPECT_GT(thread.boundPort(), 0);
    EXPECT_EQ(RawClient(thread.boundPort()).ask(kInit).name, "Init");
    thread.stopServer();
    EXPECT_TRUE(thread.wait(20000));
}

TEST(ServerThread, AddressInUse_EndsTheThreadAndIsLogged)
{
    const ServiceRunner other(nullptr);
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(other.port())));
    DebugLines lines;
    AIFuncallThread thread(nullptr, AIBridgeAccess::makeHandler(nullptr));
    thread.start();
    ASSERT_TRUE(thread.wait(20000));
    EXPECT_EQ(lines.take(), QStringList{"AIFuncallThread::run() exception"});
    thread.stopServer();
    EXPECT_EQ(lines.take(), QStringList{});
}

// Throws an int, once, from one of two functions.
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
    ThreadOnThrowingSocket(AIBridge* bridge, ThrowingSocket::At at)
        : AIFuncallThread(bridge, AIBridgeAccess::makeHandler(bridge)), at_(at)
    {
    }

protected:
    std::unique_ptr<apache::thrift::server::TThreadedServer>
    makeServer(const std::shared_ptr<ZORNativePluginIf>& tools, const std::string& address, int port) override
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

TEST(ServerThread, ExceptionOfAnyTypeFromServe_EndsTheThreadAndIsLogged)
{
    const ReservedPort port;
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port.number())));
    DebugLines lines;
    ThreadOnThrowingSocket thread(nullptr, ThrowingSocket::At::Listen);
    thread.start();
    ASSERT_TRUE(thread.wait(20000));
    EXPECT_EQ(lines.take(), QStringList{"AIFuncallThread::run() exception"});
}

TEST(ServerThread, ExceptionOfAnyTypeDuringStop_IsLoggedAndTheServiceContinues)
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

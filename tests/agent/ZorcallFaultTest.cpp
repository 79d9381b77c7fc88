// Missing, slow, faulty and foreign servers: exit code, time and memory.
#include "tests/agent/FakeServer.h"
#include "tests/agent/WireBytes.h"
#include "tests/agent/ZorcallProcess.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <gtest/gtest.h>

#ifdef Q_OS_LINUX
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace {

Ran callFake(const FakeServer& server, const char* line = "Init", const char* timeout = "20")
{
    return zorcall(words("--host 127.0.0.1 --timeout") << QString::fromLatin1(timeout) << words(line),
                   server.port());
}

/// Calls a server that sends these bytes and then waits or closes.
Ran callWithReply(const QByteArray& reply, const char* line = "Init", bool thenClose = false,
                  const char* timeout = "20")
{
    const FakeServer server(FakeServer::once([reply](const QByteArray&) { return reply; }, thenClose));
    return callFake(server, line, timeout);
}

/// As callWithReply, with a message header for the call before the bytes.
Ran callWithBody(const QByteArray& name, const QByteArray& body, bool thenClose = false,
                 const char* timeout = "20")
{
    const FakeServer server(FakeServer::once(
        [name, body](const QByteArray& call) {
            return wire::message(wire::kReply, name, wire::sequenceOf(call)) + body;
        },
        thenClose));
    return callFake(server, name.constData(), timeout);
}

const char* const kLost =
    "zorcall: the connection was lost before the answer was complete; the call may have been "
    "executed\n";

constexpr long kMemoryLimit = 300 * 1024;

/// Maximum resident memory of any child process so far, in KiB; 0 if the system does not report it.
long largestChild()
{
#ifdef Q_OS_LINUX
    rusage usage{};
    return getrusage(RUSAGE_CHILDREN, &usage) == 0 ? usage.ru_maxrss : 0;
#else
    return 0;
#endif
}

void expectCode(int code, const char* beginning, const Ran& ran)
{
    EXPECT_EQ(ran.code, code) << ran;
    EXPECT_EQ(ran.out, "") << ran;
    EXPECT_TRUE(ran.err.startsWith(beginning)) << ran;
    EXPECT_EQ(ran.err.count('\n'), 1) << ran;
}

TEST(ZorcallFault, NoListener_Code3)
{
    // Bound without listening, so that no other program can use the port.
    QTcpSocket holder;
    ASSERT_TRUE(holder.bind(QHostAddress(QHostAddress::LocalHost)));
    const QByteArray port = QByteArray::number(holder.localPort());
    EXPECT_EQ(zorcall(words("--host 127.0.0.1 Init"), port),
              (Ran{3, "", "zorcall: no connection to 127.0.0.1:" + port + ": Connection refused\n"}));
}

TEST(ZorcallFault, InvalidHost_Code3)
{
    // Invalid characters, so that no name server is queried.
    expectCode(3, "zorcall: no connection to not/a/host:1: ", zorcall(words("--host not/a/host Init"), "1"));
}

TEST(ZorcallFault, ServerThatNeverAnswers_Code4AtTheTimeout)
{
    const FakeServer server([](QTcpSocket*, const QByteArray&) {});
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(callFake(server, "Init", "0.5"),
              (Ran{4, "", "zorcall: no answer within 0.5 s; the call may still be executed\n"}));
    EXPECT_GE(timer.elapsed(), 500);
    EXPECT_LT(timer.elapsed(), 20000);
}

TEST(ZorcallFault, SlowBytes_DoNotExtendTheTimeout)
{
    // A string that arrives one byte at a time, with intervals far below the timeout.
    QTimer byteTimer;
    QList<QPointer<QTcpSocket>> clients;
    const FakeServer slow([&](QTcpSocket* client, const QByteArray& call) {
        client->write(wire::message(wire::kReply, "PasswordReset", wire::sequenceOf(call)) +
                      wire::field(11, 0) + wire::i32(1000000));
        clients.append(client);
        byteTimer.start(20);
    });
    QObject::connect(&byteTimer, &QTimer::timeout, [&clients] {
        for (const QPointer<QTcpSocket>& client : clients) {
            if (client)
                client->write("x");
        }
    });
    expectCode(4, "zorcall: no answer within 0.6 s;", callFake(slow, "PasswordReset", "0.6"));
}

TEST(ZorcallFault, ServerThatNeverReadsALargeCall_Code4)
{
#ifdef Q_OS_LINUX
    // Listens and never accepts, so the system's buffers fill.
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), length), 0);
    ASSERT_EQ(listen(listener, 4), 0);
    ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length), 0);
    const Ran ran =
        zorcall(words("--host 127.0.0.1 --timeout 1 --script -"), QByteArray::number(ntohs(address.sin_port)),
                "PostProcessing result=" + QByteArray(30 * 1024 * 1024, 'x') + "\n");
    close(listener);
    EXPECT_EQ(ran.code, 4) << ran.err.constData();
#else
    GTEST_SKIP() << "requires POSIX sockets";
#endif
}

TEST(ZorcallFault, ConnectionAttemptWithoutAnAnswer_Code4)
{
#ifdef Q_OS_LINUX
    // A listener with a full queue neither accepts nor rejects connections.
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), length), 0);
    ASSERT_EQ(listen(listener, 0), 0);
    ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length), 0);
    std::vector<int> fillers;
    for (int i = 0; i < 4; ++i) {
        fillers.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
        static_cast<void>(connect(fillers.back(), reinterpret_cast<sockaddr*>(&address), length));
    }
    const QByteArray port = QByteArray::number(ntohs(address.sin_port));
    EXPECT_EQ(zorcall(words("--host 127.0.0.1 --timeout 0.5 Init"), port),
              (Ran{4, "", "zorcall: no connection to 127.0.0.1:" + port + " within 0.5 s\n"}));
    for (const int filler : fillers)
        close(filler);
    close(listener);
#else
    GTEST_SKIP() << "requires POSIX sockets";
#endif
}

TEST(ZorcallFault, ServerThatClosesImmediately_Code3)
{
    const FakeServer server([](QTcpSocket* client, const QByteArray&) { client->disconnectFromHost(); });
    EXPECT_EQ(callFake(server), (Ran{3, "", kLost}));
}

TEST(ZorcallFault, ServerThatClosesAtAnyByteOfItsReply_Code3)
{
    const QByteArray whole =
        wire::message(wire::kReply, "Init", 1) + wire::field(2, 0) + wire::byte(1) + wire::stop();
    for (int length = 1; length < whole.size(); ++length)
        EXPECT_EQ(callWithReply(whole.left(length), "Init", true), (Ran{3, "", kLost})) << length;
    EXPECT_EQ(callWithReply(whole, "Init", true), (Ran{0, "true\n", ""}));
}

TEST(ZorcallFault, ServerThatResetsTheConnection_Code3)
{
    const FakeServer server([](QTcpSocket* client, const QByteArray&) { client->abort(); });
    EXPECT_EQ(callFake(server).code, 3);
}

TEST(ZorcallFault, ExceptionMessage_Code5)
{
    const FakeServer server(FakeServer::once([](const QByteArray& call) {
        return wire::message(wire::kException, "Init", wire::sequenceOf(call)) + wire::field(11, 1) +
               wire::text("Invalid method name: 'Init'") + wire::field(8, 2) + wire::i32(1) + wire::stop();
    }));
    EXPECT_EQ(callFake(server),
              (Ran{5, "", "zorcall: the service answered with an exception: Invalid method name: 'Init'\n"}));
}

TEST(ZorcallFault, ServerOfAnotherProtocol_Code5)
{
    for (const char* bytes : {"HTTP/1.1 400 Bad Request\r\n\r\n", "SSH-2.0-Server\r\n", "220 mail ready\r\n"})
        expectCode(5, "zorcall: invalid reply: ", callWithReply(bytes));
    expectCode(5, "zorcall: invalid reply: ", callWithReply(QByteArray(4096, '\xFF')));
    expectCode(5, "zorcall: invalid reply: ", callWithReply(QByteArray(4096, '\0')));
}

TEST(ZorcallFault, ReplyToAnotherCall_Code5)
{
    const QByteArray result = wire::field(2, 0) + wire::byte(1) + wire::stop();
    EXPECT_EQ(callWithReply(wire::message(wire::kReply, "Init", 77) + result),
              (Ran{5, "", "zorcall: invalid reply: it belongs to call number 77 instead of 1\n"}));
    EXPECT_EQ(callWithReply(wire::message(wire::kReply, "In\x1Bit", 1) + result),
              (Ran{5, "", "zorcall: invalid reply: it belongs to 'In?it'\n"}));
}

TEST(ZorcallFault, ReplyWithoutAResult_Code5)
{
    EXPECT_EQ(callWithBody("Init", wire::stop()),
              (Ran{5, "", "zorcall: invalid reply: it contains no result of type bool\n"}));
}

TEST(ZorcallFault, UnknownFieldsOfAReply_AreSkipped)
{
    EXPECT_EQ(callWithBody("Init", wire::field(11, 9) + wire::text("more") + wire::field(2, 0) +
                                       wire::byte(1) + wire::stop()),
              (Ran{0, "true\n", ""}));
}

TEST(ZorcallFault, HugeLengths_Code5WithoutAllocation)
{
    const long before = largestChild();
    const QByteArray most = wire::i32(0x7FFFFFFF);
    const char* const beginning = "zorcall: invalid reply: ";
    expectCode(5, beginning, callWithReply(wire::i32(0x80010002LL) + most + "In"));
    expectCode(5, beginning, callWithBody("PasswordReset", wire::field(11, 0) + most));
    expectCode(5, beginning, callWithBody("PasswordReset", wire::field(11, 0) + wire::i32(-1)));
    expectCode(5, beginning, callWithBody("ListAllDisks", wire::field(15, 0) + wire::byte(12) + most));
    expectCode(5, beginning,
               callWithBody("ListAllDisks", wire::field(15, 0) + wire::byte(12) + wire::i32(-5)));
    expectCode(5, beginning, callWithBody("Init", wire::field(13, 4) + wire::byte(2) + wire::byte(2) + most));
    EXPECT_TRUE(before > kMemoryLimit || largestChild() < kMemoryLimit) << largestChild() << " KiB";
}

TEST(ZorcallFault, LargestAcceptedLengths_Code4AtTheTimeoutWithoutAllocation)
{
    const long before = largestChild();
    EXPECT_EQ(
        callWithBody("PasswordReset", wire::field(11, 0) + wire::i32(16 * 1024 * 1024), false, "0.5").code,
        4);
    EXPECT_EQ(
        callWithBody("ListAllDisks", wire::field(15, 0) + wire::byte(12) + wire::i32(200000), false, "0.5")
            .code,
        4);
    EXPECT_TRUE(before > kMemoryLimit || largestChild() < kMemoryLimit) << largestChild() << " KiB";
}

TEST(ZorcallFault, EndlessReply_Code5)
{
    // Strings in unknown fields, for as long as the client reads.
    QByteArray block;
    for (int i = 0; i < 64; ++i)
        block += wire::field(11, 50) + wire::text(QByteArray(16 * 1024, 'x'));
    const FakeServer server([block](QTcpSocket* client, const QByteArray& call) {
        client->write(wire::message(wire::kReply, "Init", wire::sequenceOf(call)) + block);
        QObject::connect(client, &QTcpSocket::bytesWritten, [client, block] {
            if (client->bytesToWrite() < block.size())
                client->write(block);
        });
    });
    EXPECT_EQ(callFake(server, "Init", "50"),
              (Ran{5, "", "zorcall: invalid reply: it is longer than 134217728 bytes\n"}));
}

TEST(ZorcallFault, DeepNesting_Code5)
{
    QByteArray deep;
    for (int i = 0; i < 200000; ++i)
        deep += wire::field(12, 50);
    expectCode(5, "zorcall: invalid reply: ", callWithBody("Init", deep));
}

} // namespace

// The search for the service, if the user selects no port.
#include "tests/agent/FakeServer.h"
#include "tests/agent/TestService.h"
#include "tests/agent/ZorcallProcess.h"

#include <gtest/gtest.h>

namespace {

/// The pages of a host are not needed: Init answers true without them.
struct Service : TestService
{
    Service() : TestService(std::make_shared<CZorHandle>()) {}
};

FakeServer::Answer silence()
{
    return [](QTcpSocket*, const QByteArray&) {};
}

/// Bound without listening, so that no other program can use the port.
struct ClosedPort
{
    ClosedPort() { EXPECT_TRUE(holder.bind(QHostAddress(QHostAddress::LocalHost))); }
    QByteArray port() const { return QByteArray::number(holder.localPort()); }

    QTcpSocket holder;
};

Ran search(const QList<QByteArray>& ports, const char* line)
{
    return zorcallWith({QStringLiteral("ZORCALL_PORTS=") + QString::fromLatin1(ports.join(','))},
                       words(line));
}

TEST(ZorcallFinder, OnlyService_IsUsed)
{
    const Service service;
    const ClosedPort closed;
    EXPECT_EQ(search({closed.port(), service.port()}, "Init"), (Ran{0, "true\n", ""}));
    EXPECT_EQ(search({service.port() + '-' + service.port()}, "Init"), (Ran{0, "true\n", ""}));
}

TEST(ZorcallFinder, TwoServices_AreRefusedWithBothPorts)
{
    const Service first;
    const Service second;
    EXPECT_EQ(search({first.port(), second.port()}, "Init"),
              (Ran{2, "",
                   "zorcall: several services answer, on the ports " + first.port() + ", " + second.port() +
                       "; select one with --port\n"}));
}

TEST(ZorcallFinder, SelectedPort_IsNotSearched)
{
    const Service first;
    const Service second;
    const QString ports = QStringLiteral("ZORCALL_PORTS=%1,%2")
                              .arg(QString::fromLatin1(first.port()), QString::fromLatin1(second.port()));
    const QString port = QString::fromLatin1(second.port());
    EXPECT_EQ(zorcallWith({ports}, {QStringLiteral("--port"), port, QStringLiteral("Init")}),
              (Ran{0, "true\n", ""}));
    EXPECT_EQ(zorcallWith({ports, QStringLiteral("AGENT_NATIVE_PORT=") + port}, words("Init")),
              (Ran{0, "true\n", ""}));
}

TEST(ZorcallFinder, NoService_Code3WithTheSearchedPorts)
{
    const ClosedPort closed;
    EXPECT_EQ(search({closed.port()}, "Init"),
              (Ran{3, "",
                   "zorcall: no service answers on the ports " + closed.port() +
                       " of this computer; start the host, or select a port with --port\n"}));
}

TEST(ZorcallFinder, OtherProtocolsAndClosedConnections_AreNotServices)
{
    const FakeServer web(
        FakeServer::once([](const QByteArray&) { return "HTTP/1.1 400 Bad Request\r\n\r\n"; }));
    const FakeServer closing(FakeServer::once([](const QByteArray&) { return QByteArray(); }, true));
    const Service service;
    EXPECT_EQ(search({web.port(), closing.port(), service.port()}, "EjectUsb driveLetter=5").code, 1);
}

TEST(ZorcallFinder, SilentListener_IsRefusedForAnOrderAndIgnoredForAReading)
{
    const FakeServer silent(silence());
    const Service service;
    const QList<QByteArray> ports{silent.port(), service.port()};
    EXPECT_EQ(search(ports, "ListAllDisks").code, 0);
    const Ran refused{2, "",
                      "zorcall: the service on port " + service.port() + " may not be the only one: port " +
                          silent.port() +
                          " accepted the connection but did not answer; select one with --port\n"};
    EXPECT_EQ(search(ports, "WipeDisk diskIndex=1 eraseCount=1"), refused);
    EXPECT_EQ(search(ports, "--gated ListAllDisks"), refused);
    EXPECT_EQ(search(ports, "--script -"), refused);
}

TEST(ZorcallFinder, OnlyASilentListener_Code3)
{
    const FakeServer silent(silence());
    EXPECT_EQ(search({silent.port()}, "Init"),
              (Ran{3, "",
                   "zorcall: no service answers on the ports " + silent.port() +
                       " of this computer; start the host, or select a port with --port (port " +
                       silent.port() + " accepted the connection but did not answer)\n"}));
}

TEST(ZorcallFinder, InvalidOptions_AreReportedWithoutASearch)
{
    const ClosedPort closed;
    EXPECT_EQ(search({closed.port()}, "watch --interval 0.01"),
              (Ran{2, "", "zorcall: --interval is '0.01', not a number of seconds from 0.1 to 86400\n"}));
    EXPECT_EQ(search({closed.port()}, "Init --timeout 0"),
              (Ran{2, "", "zorcall: --timeout is '0', not a number of seconds from 0.001 to 86400\n"}));
}

TEST(ZorcallFinder, InvalidPorts_Code2)
{
    EXPECT_EQ(
        search({"9100-9090"}, "Init"),
        (Ran{2, "", "zorcall: ZORCALL_PORTS is '9100-9090', not a list of ports as in 9090-9153,12000\n"}));
    for (const char* ports : {"0", "9090,", "1-2-3", "x", "65536"})
        EXPECT_EQ(search({ports}, "Init").code, 2) << ports;
    EXPECT_EQ(search({"1-401"}, "Init"),
              (Ran{2, "", "zorcall: ZORCALL_PORTS contains more than 400 ports\n"}));
}

} // namespace

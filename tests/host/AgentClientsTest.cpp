// The connected clients: their processes, calls and orders.
#include "host/objects/AgentClients.h"
#include "tests/host/WindowTest.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gtest/gtest.h>

namespace {

using host::AgentClients;
using host::PeerProcess;

std::optional<PeerProcess> fakeProcess(int clientPort)
{
    if (clientPort == 50001)
        return PeerProcess{4711, "python3"};
    if (clientPort == 50002)
        return PeerProcess{4712, QString()};
    return std::nullopt;
}

struct Clients
{
    Clients() { clients.setLookingUp(true); }

    QVariant cell(int row, const char* role)
    {
        return clients.data(clients.index(row), clients.roleNames().key(role));
    }
    bool waitForRows(int count)
    {
        return pumpUntil([&] { return clients.count() == count; });
    }

    AgentClients clients{fakeProcess};
};

TEST(AgentClients, Connections_AreListedWithProcessTimeAndCalls)
{
    Clients test;
    test.clients.connectionOpened(1, "127.0.0.1", 50001);
    test.clients.connectionOpened(2, "127.0.0.1", 50002);
    test.clients.connectionOpened(3, "127.0.0.1", 50003);
    test.clients.callStarted(1, "ListAllDisks");
    test.clients.callEnded(1);
    test.clients.callStarted(1, "FormatPartition");
    ASSERT_TRUE(test.waitForRows(3));
    EXPECT_EQ(test.cell(0, "name"), "python3 (4711)");
    EXPECT_EQ(test.cell(1, "name"), "process 4712");
    EXPECT_EQ(test.cell(2, "name"), "client on port 50003");
    EXPECT_EQ(test.cell(0, "calls"), 2);
    EXPECT_EQ(test.cell(0, "tool"), "FormatPartition");
    EXPECT_EQ(test.cell(0, "since").toString().size(), 8);
    test.clients.connectionClosed(2);
    ASSERT_TRUE(test.waitForRows(2));
    EXPECT_EQ(test.cell(1, "name"), "client on port 50003");
}

TEST(AgentClients, CallsOfOtherThreads_ReachTheRows)
{
    Clients test;
    runOnOtherThread([&] {
        test.clients.connectionOpened(1, "127.0.0.1", 50001);
        test.clients.callStarted(1, "ListAllDisks");
        EXPECT_EQ(test.clients.clientOfThisThread().english(), "python3 (4711)");
        test.clients.connectionOpened(2, "127.0.0.1", 50003);
        test.clients.connectionClosed(2);
        EXPECT_EQ(test.clients.clientOfThisThread().english(), "");
    });
    // The rows can already show the connection without its call.
    EXPECT_TRUE(pumpUntil([&] { return test.clients.count() == 1 && test.cell(0, "calls") == 1; }));
    EXPECT_EQ(test.clients.clientOfThisThread().english(), "");
}

// A search for a process costs milliseconds, and only the window shows its result.
TEST(AgentClients, HiddenWindow_LooksNothingUpUntilItIsShown)
{
    int searches = 0;
    AgentClients clients([&](int) { return ++searches, std::optional<PeerProcess>({4711, "python3"}); });
    clients.connectionOpened(1, "127.0.0.1", 50001);
    clients.callStarted(1, "ListAllDisks");
    EXPECT_EQ(searches, 0);
    clients.setLookingUp(true);
    clients.callStarted(1, "ListAllDisks");
    clients.callStarted(1, "ListAllDisks");
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(clients.clientOfThisThread().english(), "python3 (4711)");
    clients.connectionClosed(1);
}

TEST(AgentClients, Sender_IsTheClientThatRunsTheTool)
{
    Clients test;
    test.clients.connectionOpened(1, "127.0.0.1", 50001);
    test.clients.connectionOpened(2, "127.0.0.1", 50003);
    EXPECT_EQ(test.clients.senderOf("FormatPartition").english(), "");
    test.clients.callStarted(2, "GetPartitionInfo");
    EXPECT_EQ(test.clients.senderOf("FormatPartition").english(), "");
    test.clients.callStarted(1, "FormatPartition");
    EXPECT_EQ(test.clients.senderOf("FormatPartition").english(), "python3 (4711)");
    test.clients.callStarted(2, "WipeDisk");
    EXPECT_EQ(test.clients.senderOf("FormatPartition").english(), "python3 (4711)");
    EXPECT_EQ(test.clients.senderOf("WipeDisk").english(), "client on port 50003");
    test.clients.connectionClosed(1);
    test.clients.connectionClosed(2);
}

TEST(AgentClients, SenderAmongClientsWithTheSameTool_IsNotGuessed)
{
    Clients test;
    test.clients.connectionOpened(1, "127.0.0.1", 50001);
    test.clients.connectionOpened(2, "127.0.0.1", 50003);
    test.clients.callStarted(1, "AllocateSpaceFromPartitionToPartition");
    test.clients.callStarted(2, "AllocateSpaceFromPartitionToNewPartition");
    EXPECT_EQ(test.clients.senderOf("AllocateSpace").english(), "one of 2 clients");
    test.clients.callEnded(2);
    EXPECT_EQ(test.clients.senderOf("AllocateSpace").english(), "python3 (4711)");
    test.clients.connectionClosed(1);
    test.clients.connectionClosed(2);
}

TEST(AgentClients, Observer_IsRemovedWithTheObject)
{
    {
        AgentClients clients(fakeProcess);
        clients.observe();
        EXPECT_EQ(QCoreApplication::instance()->property("agentObserver").value<QObject*>(), &clients);
    }
    EXPECT_FALSE(QCoreApplication::instance()->property("agentObserver").isValid());
}

TEST(PeerProcess, OwnConnection_BelongsToThisProcess)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QTcpSocket client;
    client.connectToHost(QHostAddress::LocalHost, server.serverPort());
    ASSERT_TRUE(pumpUntil([&] { return client.state() == QAbstractSocket::ConnectedState; }));
    const auto found = host::findPeerProcess(client.localPort(), server.serverPort());
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->id, QCoreApplication::applicationPid());
    EXPECT_EQ(found->name.toStdString(),
              QFileInfo(QCoreApplication::applicationFilePath()).fileName().toStdString());
}

TEST(PeerProcess, UnknownConnection_HasNoProcess)
{
    EXPECT_FALSE(host::findPeerProcess(1, 2).has_value());
}

class WindowClients : public WindowTest
{
protected:
    // The connection and its calls have a thread of their own.
    void onConnection(const std::function<void(AgentClients&)>& work)
    {
        runOnOtherThread([&] { work(scene.core().clients()); });
    }
};

TEST_F(WindowClients, ConnectedClients_AreShownWithTheirCalls)
{
    ASSERT_NE(awaited("noClients"), nullptr);
    EXPECT_EQ(text("noClients"), "No client is connected.");
    onConnection([](AgentClients& clients) {
        clients.connectionOpened(1, "127.0.0.1", 1);
        clients.callStarted(1, "ListAllDisks");
    });
    ASSERT_TRUE(waitForText("clientName", "client on port 1"));
    // The window can already show the connection without its call.
    EXPECT_TRUE(pumpUntil([&] { return text("clientCalls").endsWith(" \u00b7 1 call"); }))
        << text("clientCalls").toStdString();
    EXPECT_EQ(item("noClients"), nullptr);
    onConnection([](AgentClients& clients) { clients.connectionClosed(1); });
    EXPECT_NE(awaited("noClients"), nullptr);
}

TEST_F(WindowClients, OrderAndAnnouncement_ShowTheirClient)
{
    onConnection([&](AgentClients& clients) {
        clients.connectionOpened(1, "127.0.0.1", 1);
        clients.callStarted(1, "PreProcessing");
        Q_EMIT bridge.sigAbout2CallFun("ChangePartitionLabel driveLetter=D newLabel=Photos");
        clients.callEnded(1);
        clients.callStarted(1, "ChangePartitionLabel");
    });
    scene.core().orders().order(31, {{"driveLetter", "D"}, {"newLabel", "Photos"}});
    EXPECT_TRUE(waitForText("callClient", "client on port 1"));
    EXPECT_TRUE(waitForText("taskAside", "client on port 1"));
    onConnection([](AgentClients& clients) { clients.connectionClosed(1); });
}

TEST_F(WindowClients, OrderWithoutAnAgent_ShowsNoClient)
{
    scene.core().orders().order(31, {{"driveLetter", "D"}, {"newLabel", "Photos"}});
    ASSERT_TRUE(waitForText("taskState", "done"));
    EXPECT_EQ(texts("taskAside"), QStringList());
    EXPECT_EQ(texts("callClient"), QStringList());
}

} // namespace

// The program as users start it: ready line, ports and agent.
#include "tests/host/ZorhostProcess.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtNetwork/QTcpSocket>

#include <gtest/gtest.h>

#include <csignal>

namespace {

QString agentCommand()
{
    return QString("/usr/bin/python3 %1 %2").arg(AGENT_SCRIPT, AGENT_CODE);
}

TEST(Zorhost, HelpAndVersion_ArePrintedOnStandardOutputWithCode0)
{
    ZorhostProcess version;
    version.start({"--version"});
    EXPECT_EQ(version.exitCode(), 0);
    EXPECT_EQ(version.output(), "zorhost 1.0.0\n");
    ZorhostProcess help;
    help.start({"-h"});
    EXPECT_EQ(help.exitCode(), 0);
    EXPECT_TRUE(help.output().startsWith("usage: zorhost [options]\n")) << help.output().constData();
    EXPECT_TRUE(help.output().contains("\n  -h, --help          prints this help\n"))
        << help.output().constData();
    EXPECT_EQ(version.errors() + help.errors(), "");
}

TEST(Zorhost, ReadyLine_NamesThePortThatAnswers)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless"})) << host.errors().constData();
    EXPECT_TRUE(host.waitForOutput(QByteArray("agent service on localhost:") +
                                   QByteArray::number(host.firstPort()) + "\n"))
        << host.output().constData();
    QTcpSocket socket;
    socket.connectToHost("localhost", static_cast<quint16>(host.firstPort()));
    EXPECT_TRUE(socket.waitForConnected(30000));
    socket.abort();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, WithoutADisplay_RunsHeadlessByItself)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--machine", "server"})) << host.errors().constData();
    host.signal(SIGINT);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, UnusableDisplay_DoesNotMatterWithoutAWindow)
{
    ZorhostProcess host;
    host.environment().insert("DISPLAY", ":59000");
    ASSERT_TRUE(host.startReady({"--headless", "--agent", "true", "--exit-with-agent"}));
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    host.start({"--check-host"});
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, WithoutAMachine_SimulatesTheDesktop)
{
    ZorhostProcess host;
    ASSERT_TRUE(
        host.startReady({"--headless", "--transcript", "t.jsonl", "--agent", "true", "--exit-with-agent"}));
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(host.waitForContent("t.jsonl", "\"machine\":\"desktop\""));
}

// Larger than the buffer of a pipe, so that one read gets only a part.
TEST(Zorhost, MachineFromAPipe_IsReadToItsEnd)
{
    ZorhostProcess host;
    host.start({"--headless", "--machine", "/dev/stdin"});
    host.send("{\"disks\":" + QByteArray(300000, ' ') + "[], \"unknownKey\": 1}");
    EXPECT_EQ(host.exitCode(), 2);
    EXPECT_EQ(host.errors().toStdString(),
              "zorhost: machine /dev/stdin: line 1: unknownKey is not a key of a machine\n");
}

TEST(Zorhost, AnswerWithAButtonThatDoesNotExist_EndsWithExitCode2)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--machine", "desktop", "--scan", "--answer", "7"}));
    EXPECT_EQ(host.exitCode(), 2);
    EXPECT_EQ(host.errors().toStdString(),
              "zorhost: option --answer names button 7, but the recommendation has the buttons 0 to 1\n");
    EXPECT_FALSE(host.output().contains("recommendation answered")) << host.output().constData();
}

TEST(Zorhost, Window_IsShownOnAnOffscreenPlatform)
{
    ZorhostProcess host;
    host.environment().insert("QT_QPA_PLATFORM", "offscreen");
    ASSERT_TRUE(host.startReady({"--window", "--agent", "true", "--exit-with-agent"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, ConfiguredAddress_IsUsedAndNamed)
{
    ZorhostProcess host;
    host.write("config.ini", "[main]\naiAddress=127.0.0.1\n");
    ASSERT_TRUE(host.startReady({"--headless"})) << host.errors().constData();
    EXPECT_TRUE(host.output().contains("agent service on 127.0.0.1:"));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, Agent_GetsBothPortsAndItsOutputIsForwarded)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady(
        {"--headless", "--exit-with-agent", "--agent", "echo ports $AGENT_NATIVE_PORT $AGENT_CHAT_PORT"}))
        << host.errors().constData();
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    const QByteArray expected = "ports " + QByteArray::number(host.firstPort()) + " " +
                                QByteArray::number(host.firstPort() + 1) + "\n";
    EXPECT_TRUE(host.output().contains(expected)) << host.output().constData();
}

TEST(Zorhost, ExitWithAgent_ReturnsTheAgentsExitCode)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--exit-with-agent", "--agent", "exit 7"}));
    EXPECT_EQ(host.exitCode(), 7) << host.errors().constData();
}

TEST(Zorhost, AgentThatEnds_LeavesTheHostRunning)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--agent", "exit 7"}));
    EXPECT_TRUE(host.waitForOutput("agent ended with exit code 7"));
    EXPECT_TRUE(host.isRunning());
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, AgentInPython_ListsCreatesRenamesAndIsRejectedOnce)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady(
        {"--headless", "--machine", "desktop", "--exit-with-agent", "--agent", agentCommand()}));
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    const QByteArray output = host.output();
    for (const char* line :
         {"disks [0, 1, 2, 3]\n", "CreatePartition -> Task Queued True\n",
          "created I 10737418240 NTFS False\n", "ChangePartitionLabel -> Task Queued True\n",
          "DeletePartition -> Task NotValid False\n",
          "order CreatePartition capacity=10737418240 diskIndex=0", "done CreatePartition\n",
          "order ChangePartitionLabel driveLetter=\"I\" newLabel=\"Renamed\"\n",
          "rejected DeletePartition driveLetter=\"C\": The drive holds the running system.\n"})
        EXPECT_TRUE(output.contains(line)) << line << "\n" << output.constData();
    EXPECT_EQ(output.count("rejected "), 1);
}

TEST(Zorhost, MachineSystem_DescribesThisComputer)
{
    ZorhostProcess host;
    host.write("path/lsblk", R"(#!/bin/sh
echo '{"blockdevices": [{"name": "sda", "type": "disk", "size": 1073741824, "fstype": "ext4", "mountpoint": "/"}]}'
)");
    QFile::setPermissions(host.file("path/lsblk"), QFile::ReadOwner | QFile::ExeOwner);
    ASSERT_TRUE(host.startReady({"--headless", "--machine", "system"})) << host.errors().constData();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, Scan_PrintsTheRecommendation)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--machine", "desktop", "--scan", "--answer", "1"}));
    EXPECT_TRUE(host.waitForOutput("scan ended\n"));
    EXPECT_TRUE(
        host.waitForOutput("recommendation {\"buttons\":[\"Accept\",\"Cancel\"],\"default\":0,\"msg\":"))
        << host.output().constData();
    EXPECT_TRUE(host.waitForOutput("recommendation answered with button 1\n"));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, ScanState_DoesNotReachTheNextRun)
{
    ZorhostProcess host;
    QByteArray recommendations[2];
    for (QByteArray& recommendation : recommendations) {
        ASSERT_TRUE(host.startReady({"--headless", "--machine", "desktop", "--scan", "--answer", "1"}));
        EXPECT_TRUE(host.waitForOutput("recommendation answered with button 1\n"));
        EXPECT_TRUE(host.waitForOutput("scan ended\n"));
        host.signal(SIGTERM);
        EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
        const int begin = host.output().indexOf("recommendation {");
        // The time of the scan follows.
        recommendation = host.output().mid(begin, host.output().indexOf("\"time\"", begin) - begin);
        EXPECT_TRUE(recommendation.contains("\"msg\"")) << recommendation.constData();
        EXPECT_FALSE(QFile::exists(host.file("recscan.info")));
    }
    EXPECT_EQ(recommendations[0].toStdString(), recommendations[1].toStdString());
}

TEST(Zorhost, ScanStateFolder_KeepsTheAnswer)
{
    ZorhostProcess host;
    ASSERT_TRUE(QDir().mkdir(host.file("state")));
    ASSERT_TRUE(host.startReady(
        {"--headless", "--machine", "desktop", "--scan", "--answer", "1", "--scan-state", "state"}));
    EXPECT_TRUE(host.waitForFile("state/recscan.info"));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, EmptyScan_IsReported)
{
    ZorhostProcess host;
    host.write("empty.json", R"({"disks": []})");
    ASSERT_TRUE(host.startReady({"--headless", "--machine", host.file("empty.json"), "--scan"}));
    EXPECT_TRUE(host.waitForOutput("scan ended without a recommendation\n")) << host.output().constData();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

TEST(Zorhost, Win11Switch_MakesItsCaseFire)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--machine", "laptop", "--win11", "on", "--scan"}));
    EXPECT_TRUE(host.waitForOutput("\"checkResultType\":")) << host.output().constData();
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

} // namespace

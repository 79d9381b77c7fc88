// Scripts: one call per line on one connection.
#include "tests/agent/Answers.h"
#include "tests/agent/FakeServer.h"
#include "tests/agent/TestService.h"
#include "tests/agent/WireBytes.h"
#include "tests/agent/ZorcallProcess.h"
#include "tests/support/RecordingHost.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct ScriptedHost
{
    ScriptedHost()
    {
        host.build();
        tools->setBridge(host.toolBridge());
        service = std::make_unique<TestService>(tools);
    }
    Ran run(const QByteArray& script, const char* options = "")
    {
        return zorcall(words("--script -") + words(options), service->port(), script);
    }

    RecordingHost host;
    std::shared_ptr<PacedTools> tools = std::make_shared<PacedTools>();
    std::unique_ptr<TestService> service;
};

TEST(ZorcallScript, EachLine_IsPrintedWithItsAnswer)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("# these lines read\n"
                           "Init\n"
                           "\n"
                           "  ListAllDisks   # every disk\r\n"
                           "ChangePartitionLabel driveLetter=C 'newLabel=my disk'"),
              (Ran{0,
                   "> Init\n"
                   "true\n"
                   "> ListAllDisks\n"
                   "[]\n"
                   "> ChangePartitionLabel driveLetter=C 'newLabel=my disk'\n" +
                       answers::queued() + "\n",
                   ""}));
    EXPECT_TRUE(
        typed(scripted.host.recorder().calls().at(2).arguments).contains(QStringLiteral("\"my disk\"")));
}

TEST(ZorcallScript, File_IsReadLikeStandardInput)
{
    ScriptedHost scripted;
    const QTemporaryDir folder;
    QFile file(folder.filePath(QString::fromUtf8("calls \xC3\xB6.zor")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Init\n");
    file.close();
    EXPECT_EQ(zorcall({QStringLiteral("--script"), file.fileName()}, scripted.service->port()),
              (Ran{0, "> Init\ntrue\n", ""}));
}

TEST(ZorcallScript, UnreadableFile_Code2)
{
    const QTemporaryDir folder;
    for (const QString& name : {folder.filePath(QStringLiteral("missing")), folder.path()})
        EXPECT_EQ(zorcall({QStringLiteral("--script"), name}, "1"),
                  (Ran{2, "", "zorcall: " + name.toUtf8() + " cannot be read\n"}));
}

TEST(ZorcallScript, GatedLine_PrintsThreeAnswers)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("--gated EjectUsb driveLetter=E\n"),
              (Ran{0,
                   "> --gated EjectUsb driveLetter=E\n"
                   "{\"PreProcessing\": " +
                       answers::allowed() + "}\n{\"EjectUsb\": " + answers::queued() +
                       "}\n"
                       "{\"PostProcessing\": true}\n",
                   ""}));
}

TEST(ZorcallScript, RejectedLine_ContinuesAndEndsWithCode1)
{
    ScriptedHost scripted;
    scripted.tools->setEarlyCalls(1);
    EXPECT_EQ(scripted.run("EjectUsb driveLetter=5\n--gated EjectUsb driveLetter=E\nInit\n").out,
              "> EjectUsb driveLetter=5\n" + answers::notValid() +
                  "\n"
                  "> --gated EjectUsb driveLetter=E\n"
                  "{\"PreProcessing\": " +
                  answers::operationInProgress() +
                  "}\n"
                  "> Init\n"
                  "true\n");
    EXPECT_EQ(scripted.run("EjectUsb driveLetter=5\nInit\n").code, 1);
}

TEST(ZorcallScript, Patient_WaitsForThePauseOnEachGatedLine)
{
    ScriptedHost scripted;
    scripted.tools->setEarlyCalls(2);
    const Ran ran = scripted.run("--gated EjectUsb driveLetter=E\n", "--patient");
    EXPECT_EQ(ran.code, 0) << ran;
    EXPECT_LT(scripted.tools->earlyCalls(), 0);
}

TEST(ZorcallScript, UsageErrorInALine_StopsTheScriptWithTheLineNumber)
{
    ScriptedHost scripted;
    const Ran ran = scripted.run("Init\n\nWipeDisk diskIndex=x\nInit\n");
    EXPECT_EQ(ran,
              (Ran{2, "> Init\ntrue\n",
                   "zorcall: standard input line 3: argument 'diskIndex': 'x' is not a whole number\n"}));
}

TEST(ZorcallScript, OpenQuoteOrGatedWithoutAMethod_IsAUsageError)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("Init 'x\n"),
              (Ran{2, "", "zorcall: standard input line 1: a quote (') is not closed\n"}));
    EXPECT_EQ(scripted.run("--gated\n"),
              (Ran{2, "", "zorcall: standard input line 1: --gated requires a method\n"}));
    EXPECT_EQ(scripted.run("--gated Init\n").code, 2);
}

TEST(ZorcallScript, InvalidUtf8_IsAUsageError)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("EjectUsb driveLetter=\xFF\n"),
              (Ran{2, "", "zorcall: standard input line 1: argument 'driveLetter' is not UTF-8\n"}));
}

TEST(ZorcallScript, MissingArguments_RequireTheOption)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("WipeDisk diskIndex=1\n").code, 2);
    EXPECT_EQ(scripted.run("WipeDisk diskIndex=1\n", "--allow-missing").code, 0);
}

TEST(ZorcallScript, Lines_UseOneConnectionWithIncreasingSequenceNumbers)
{
    int connections = 0;
    std::vector<int> numbers;
    FakeServer server([&](QTcpSocket* client, const QByteArray& received) {
        if (!client->property("seen").toBool())
            ++connections;
        client->setProperty("seen", true);
        // Length of a call message: 4 + 4 + "Init" + 4 + 1 bytes.
        const int answered = client->property("answered").toInt();
        if (received.size() < 17 * (answered + 1))
            return;
        const int sequence = wire::sequenceOf(received.mid(17 * answered));
        numbers.push_back(sequence);
        client->setProperty("answered", answered + 1);
        client->write(wire::message(wire::kReply, "Init", sequence) + wire::field(2, 0) + wire::byte(1) +
                      wire::stop());
    });
    const Ran ran = zorcall(words("--script - --host 127.0.0.1"), server.port(), "Init\nInit\nInit\n");
    EXPECT_EQ(ran.code, 0) << ran;
    EXPECT_EQ(connections, 1);
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
}

TEST(ZorcallScript, ConnectionLostInALine_StopsTheScriptWithCode3)
{
    FakeServer server([](QTcpSocket* client, const QByteArray&) { client->disconnectFromHost(); });
    const Ran ran = zorcall(words("--script - --host 127.0.0.1"), server.port(), "# first\nInit\nInit\n");
    EXPECT_EQ(ran,
              (Ran{3, "> Init\n",
                   "zorcall: standard input line 2: the connection was lost before the answer was complete; "
                   "the call may have been executed\n"}));
}

TEST(ZorcallScript, ExitCode_IsTheHighestOfTheLines)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("EjectUsb driveLetter=5\nNothing\n").code, 2);
}

TEST(ZorcallScript, Table_HasOneRowPerCall)
{
    ScriptedHost scripted;
    scripted.tools->setEarlyCalls(1);
    const QByteArray script = "Init\n"
                              "--gated EjectUsb driveLetter=E\n"
                              "\n"
                              "--gated EjectUsb driveLetter=E\n"
                              "EjectUsb driveLetter=5\n"
                              "ListAllDisks\n"
                              "GetPartitionInfo driveLetter=C\n"
                              "PreProcessing toolCalls=x\n";
    const auto& constants = g_ZORNativePlugin_constants;
    const QByteArray reasons = QByteArray::fromStdString(constants.OPERATION_IN_PROGRESS);
    const QByteArray queued = QByteArray::fromStdString(constants.TASK_QUEUED);
    const QByteArray notValid = QByteArray::fromStdString(constants.TASK_NOT_VALID);
    EXPECT_EQ(scripted.run(script, "--table"),
              (Ran{1,
                   "line  tool                                      answer\n"
                   "   1  Init                                      true\n"
                   "   2  EjectUsb                                  rejected by the gate: " +
                       reasons + "\n   4  EjectUsb                                  " + queued +
                       "\n   5  EjectUsb                                  " + notValid +
                       "\n"
                       "   6  ListAllDisks                              0 DiskInfo\n"
                       "   7  GetPartitionInfo                          1 PartitionInfo\n"
                       "   8  PreProcessing                             allowed\n",
                   ""}));
}

TEST(ZorcallScript, TableWithoutHeaders_HasOnlyTheRows)
{
    ScriptedHost scripted;
    EXPECT_EQ(scripted.run("Init\n", "--table --no-headers"),
              (Ran{0, "   1  Init                                      true\n", ""}));
}

} // namespace

// Shutdown by signals at any moment, and starts that fail.
#include "tests/host/ZorhostProcess.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

namespace {

// A start that fails: one line with the cause, empty standard output and exit code 2.
struct FailedStart
{
    const char* name;
    QStringList arguments; ///< "FILE" means the file bad.json
    QByteArray error;      ///< part of the line; "FOLDER" means the program's folder
    std::function<void(ZorhostProcess&)> prepare = nullptr;

    friend void PrintTo(const FailedStart& row, std::ostream* out) { *out << row.name; }
};

class ZorhostRejects : public testing::TestWithParam<FailedStart>
{
};

TEST_P(ZorhostRejects, Start_PrintsOneLineAndEndsWithExitCode2)
{
    const FailedStart& row = GetParam();
    ZorhostProcess host;
    if (row.prepare)
        row.prepare(host);
    const QString folder = QFileInfo(host.file("zorhost")).path();
    QStringList arguments = row.arguments;
    arguments.replaceInStrings("FILE", host.file("bad.json"));
    arguments.replaceInStrings("FOLDER", folder);
    host.start(arguments);
    EXPECT_EQ(host.exitCode(), 2) << host.errors().constData();
    EXPECT_EQ(host.output(), QByteArray());
    const QByteArray errors = host.errors();
    EXPECT_TRUE(errors.startsWith("zorhost: ")) << errors.constData();
    EXPECT_EQ(errors.count('\n'), 1) << errors.constData();
    const QByteArray error = QByteArray(row.error).replace("FOLDER", folder.toLocal8Bit());
    EXPECT_TRUE(errors.contains(error)) << errors.constData();
}

std::function<void(ZorhostProcess&)> machineFile(const QByteArray& json)
{
    return [json](ZorhostProcess& host) { host.write("bad.json", json); };
}

std::function<void(ZorhostProcess&)> without(const QStringList& names)
{
    return [names](ZorhostProcess& host) {
        for (const QString& name : names)
            host.remove(name);
    };
}

const QStringList kMachineFile = {"--machine", "FILE"};

const FailedStart kFailedStarts[] = {
    {"UnknownOption", {"--nonsense"}, "unknown option nonsense"},
    {"InvalidSpeed", {"--speed", "fast"}, "option --speed needs a factor above 0, or instant"},
    {"InvalidFailure", {"--fail", "FormatPartition after 400%"}, "option --fail needs a task and a share"},
    {"FailureOfAnUnknownTask", {"--fail", "FormatDisk after 40%"}, "the tasks are OpenDiskLayoutEditor, "},
    {"WindowAndHeadless", {"--headless", "--window"}, "options --window and --headless exclude each other"},
    {"AnswerWithoutAScan", {"--answer", "1"}, "option --answer needs --scan"},
    {"MissingMachine", {"--machine", "toaster"}, "toaster"},
    {"MachineIsAFolder", {"--machine", "FOLDER"}, "machine FOLDER: a folder, not a machine file"},
    {"MachineFileWithoutAComma", kMachineFile, "not JSON: unterminated object in line 4, near \"diskIndex\"",
     machineFile("{\n  \"name\": \"x\",\n  \"disks\": [\n    {\"diskIndex\": 0 \"size\": 1}\n  ]\n}\n")},
    {"MachineFileNotJson", kMachineFile, "not JSON", machineFile("{ disks")},
    {"MachineFileWithManyBrackets", kMachineFile, "not JSON", machineFile(QByteArray(1 << 20, '['))},
    {"MachineFileBinary", kMachineFile, "not JSON", machineFile(QByteArray("\0\1\2\377", 4))},
    {"MachineFileEmpty", kMachineFile, "not JSON", machineFile("")},
    {"MachineFileWithAKeyOfAWrongType", kMachineFile, "line 2: disks[0].size must be a whole number",
     machineFile("{\"disks\": [{\"diskIndex\": 0,\n\"size\": \"big\"}]}")},
    {"MachineWithOverlappingPartitions", kMachineFile, "disk 0: its partitions overlap or are out of order",
     machineFile(
         R"({"disks": [{"diskIndex": 0, "size": 4096, "partitions": [{"size": 1024}, {"size": 512, "startSector": 1}]}]})")},
    {"MachineWithANegativeSize", kMachineFile, "disks[0] has a size that no disk can have",
     machineFile(R"({"disks": [{"diskIndex": 0, "size": -1}]})")},
    {"MachineWithPartitionsLargerThanTheDisk", kMachineFile,
     "disk 0: its partitions are larger than the disk",
     machineFile(R"({"disks": [{"diskIndex": 0, "size": 512, "partitions": [{"size": 1024}]}]})")},
    {"MachineWithADuplicateLetter", kMachineFile, "drive letter D is used twice",
     machineFile(R"({"disks": [{"diskIndex": 0, "size": 1024, "partitions": [
            {"size": 512, "driveLetter": "D"}, {"size": 512, "driveLetter": "d"}]}]})")},
    {"MachineFileOfAGigabyte", kMachineFile, "the file is larger than 16777216 bytes",
     [](ZorhostProcess& host) {
         host.write("bad.json", "");
         ASSERT_TRUE(QFile::resize(host.file("bad.json"), Q_INT64_C(1) << 30));
     }},
    {"MissingImage", {"--image", "FOLDER/none.img"}, "FOLDER/none.img: not an existing regular file"},
    {"ImageIsAFolder", {"--image", "FOLDER"}, "FOLDER: not an existing regular file"},
    {"ImageIsADevice", {"--image", "/dev/null"}, "/dev/null: not an existing regular file"},
    {"ImageWithoutAName", {"--image", ""}, "option --image needs a file"},
    {"ImageAndMachine",
     {"--image", "FILE", "--machine", "laptop"},
     "options --machine and --image exclude each other",
     machineFile("")},
    {"ImageWithoutADiskService",
     {"--image", "FILE"},
     "the disk service UDisks2 is not running",
     [](ZorhostProcess& host) {
         host.write("bad.json", "");
         host.environment().insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + host.file("none"));
     }},
    {"MissingScanStateFolder",
     {"--headless", "--scan-state", "FOLDER/none"},
     "scan state FOLDER/none: not a folder"},
    {"UnwritableTranscript",
     {"--headless", "--transcript", "FOLDER/none/t.jsonl"},
     "No such file or directory"},
    {"UnwritableSavedMachine",
     {"--headless", "--save", "FOLDER/none/after.json"},
     "No such file or directory"},
    {"DisplayThatCannotBeOpened",
     {},
     "the display cannot be opened (DISPLAY=:59000); --headless runs without a window",
     [](ZorhostProcess& host) { host.environment().insert("DISPLAY", ":59000"); }},
    {"WaylandDisplayThatCannotBeOpened",
     {"--verbose"},
     "the display cannot be opened (WAYLAND_DISPLAY=none-0); --headless runs without a window",
     [](ZorhostProcess& host) { host.environment().insert("WAYLAND_DISPLAY", "none-0"); }},
    {"UnknownQtPlatform",
     {"--window"},
     "the display cannot be opened (QT_QPA_PLATFORM=none); --headless runs without a window",
     [](ZorhostProcess& host) { host.environment().insert("QT_QPA_PLATFORM", "none"); }},
    {"WindowWithoutADisplay", {"--window"}, "option --window needs a display"},
    {"MissingLibrary", {"--headless"}, "the library FOLDER/AIBridge.so is missing", without({"AIBridge.so"})},
    {"MissingDependencies_NameTheLibrary",
     {"--headless"},
     "FOLDER/AIBridge.so",
     without({"libZorLog.so", "libUIUtility.so", "libLLFProc.so"})},
    // The loader names the first missing dependency, so one is removed at a time.
    {"MissingLog", {"--headless"}, "libZorLog.so", without({"libZorLog.so"})},
    {"MissingUiUtility", {"--headless"}, "libUIUtility.so", without({"libUIUtility.so"})},
    {"MissingFirmware", {"--headless"}, "libLLFProc.so", without({"libLLFProc.so"})},
    {"InvalidLibrary",
     {"--headless"},
     "FOLDER/AIBridge.so",
     [](ZorhostProcess& host) {
         host.remove("AIBridge.so");
         host.write("AIBridge.so", "text");
     }},
    {"ComponentNotListed",
     {"--headless"},
     "does not name the component AIBridge",
     [](ZorhostProcess& host) { host.write("components.ini", "[COMPONENT1]\nname=Other\n"); }},
    {"MissingComponentList", {"--headless"}, "components.ini", without({"components.ini"})},
    {"ComputerWithoutLsblk",
     {"--headless", "--machine", "system"},
     "lsblk",
     [](ZorhostProcess& host) { host.environment().insert("PATH", host.file("path")); }},
};

INSTANTIATE_TEST_SUITE_P(All, ZorhostRejects, testing::ValuesIn(kFailedStarts),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ZorhostEnd, RunningTask_IsCancelledAndTheMachineSaved)
{
    ZorhostProcess host;
    ASSERT_TRUE(
        host.startReady({"--headless", "--machine", "desktop", "--speed", "0.001", "--save", "after.json",
                         "--transcript", "t.jsonl", "--agent",
                         QString("/usr/bin/python3 -c \"%1\"")
                             .arg(QString("import sys; sys.path.insert(0, '%1')\n"
                                          "import os\n"
                                          "from thrift.protocol import TBinaryProtocol\n"
                                          "from thrift.transport import TSocket, TTransport\n"
                                          "from ZORNativePlugin import ZORNativePlugin\n"
                                          "t = TTransport.TBufferedTransport(TSocket.TSocket('localhost', "
                                          "int(os.environ['AGENT_NATIVE_PORT'])))\n"
                                          "t.open()\n"
                                          "a = ZORNativePlugin.Client(TBinaryProtocol.TBinaryProtocol(t))\n"
                                          "a.FormatPartition('D', 'NTFS', 'x', 0, False)\n")
                                      .arg(AGENT_CODE))}));
    ASSERT_TRUE(host.waitForOutput("agent ended with exit code 0")) << host.output().constData();
    const auto transcript = [&] {
        QFile file(host.file("t.jsonl"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    ASSERT_TRUE(host.waitForContent("t.jsonl", "\"kind\":\"taskStart\""));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_TRUE(transcript().contains("\"state\":\"cancelled\"")) << transcript().constData();
    EXPECT_TRUE(host.output().contains("cancelled FormatPartition\n"));
    QFile saved(host.file("after.json"));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_TRUE(saved.readAll().contains("\"fsString\": \"RAW\""));
}

// Every line is flushed at once, so that it survives a kill.
TEST(ZorhostEnd, KilledHost_LeavesACompleteTranscript)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--transcript", "t.jsonl"}));
    host.signal(SIGKILL);
    host.exitCode();
    QFile file(host.file("t.jsonl"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("{")) << text.constData();
    EXPECT_TRUE(text.endsWith("}\n")) << text.constData();
    EXPECT_TRUE(text.contains("\"kind\":\"inventoryPush\""));
}

TEST(ZorhostEnd, PortInUse_IsReportedWithExitCode1)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::Any, static_cast<quint16>(freePort())));
    ZorhostProcess host;
    host.setFirstPort(other.serverPort());
    host.start({"--headless"});
    EXPECT_EQ(host.exitCode(), 1) << host.errors().constData();
    EXPECT_FALSE(host.output().contains("agent service on"));
    EXPECT_TRUE(host.errors().contains("zorhost: the agent service could not listen on localhost:"))
        << host.errors().constData();
}

TEST(ZorhostEnd, UnboundableAddress_IsReportedWithExitCode1)
{
    ZorhostProcess host;
    host.write("config.ini", "[main]\naiAddress=192.0.2.1\n");
    host.start({"--headless"});
    EXPECT_EQ(host.exitCode(), 1) << host.errors().constData();
    EXPECT_TRUE(host.errors().contains("could not listen on 192.0.2.1:")) << host.errors().constData();
}

// Release would hang before the service is up.
TEST(ZorhostEnd, SignalBeforeTheServiceIsUp_WaitsForItAndEndsCleanly)
{
    ZorhostProcess host;
    host.write("path/netstat", "#!/bin/sh\necho started >> started\nwhile [ ! -e go ]; do sleep 0.05; done\n"
                               "seq -f ':%g ' 9090 " +
                                   QByteArray::number(host.firstPort() - 1) + "\n");
    host.start({"--headless"});
    ASSERT_TRUE(host.waitForFile("started"));
    host.signal(SIGTERM);
    host.write("go", "");
    const int code = host.exitCode();
    EXPECT_EQ(code, host.errors().contains("could not listen") ? 1 : 0);
    EXPECT_FALSE(host.output().contains("agent service on"));
}

TEST(ZorhostEnd, Signal_EndsTheAgentAndItsChildren)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless", "--agent", "sleep 300 & echo child $!; wait"}));
    ASSERT_TRUE(host.waitForOutput("child "));
    ASSERT_TRUE(host.waitForOutput("\n"));
    const QByteArray rest = host.output().mid(host.output().indexOf("child ") + 6);
    const int child = rest.left(rest.indexOf('\n')).toInt();
    ASSERT_GT(child, 1);
    host.signal(SIGINT);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    // The process may still be a zombie until its new parent collects it.
    QFile status(QString("/proc/%1/stat").arg(child));
    const bool gone = !status.open(QIODevice::ReadOnly);
    EXPECT_TRUE(gone || status.readAll().contains(") Z ")) << child;
}

TEST(ZorhostEnd, IdleConnectedClient_DoesNotDelayTheShutdown)
{
    ZorhostProcess host;
    ASSERT_TRUE(host.startReady({"--headless"}));
    QTcpSocket client;
    client.connectToHost("localhost", static_cast<quint16>(host.firstPort()));
    ASSERT_TRUE(client.waitForConnected(30000));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
}

// A client that calls tools in a loop without the gate; "loop.py" in the program's folder.
void writeLoopingClient(const ZorhostProcess& host)
{
    const QString code = QString("import sys; sys.path.insert(0, '%1')\n"
                                 "import os\n"
                                 "from thrift.protocol import TBinaryProtocol\n"
                                 "from thrift.transport import TSocket, TTransport\n"
                                 "from ZORNativePlugin import ZORNativePlugin\n"
                                 "t = TTransport.TBufferedTransport(TSocket.TSocket('localhost', "
                                 "int(os.environ['AGENT_NATIVE_PORT'])))\n"
                                 "a = ZORNativePlugin.Client(TBinaryProtocol.TBinaryProtocol(t))\n"
                                 "t.open()\n"
                                 "while True: a.ChangePartitionLabel('C', 'x'); a.CloneDiskToDisk(0, 0)\n")
                             .arg(AGENT_CODE);
    host.write("loop.py", code.toUtf8());
}

TEST(ZorhostEnd, SignalWhileTheAgentCallsTools_EndsTheAgentThenTheHost)
{
    ZorhostProcess host;
    writeLoopingClient(host);
    ASSERT_TRUE(host.startReady({"--headless", "--agent", "/usr/bin/python3 loop.py"}));
    ASSERT_TRUE(host.waitForOutput("done ChangePartitionLabel"));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 0) << host.errors().constData();
    EXPECT_EQ(host.errors().count("ending without"), 0);
}

// Such a client never stops, and Release would hang.
TEST(ZorhostEnd, SignalWhileAClientKeepsCallingTools_EndsWithoutTheReleaseAndReportsIt)
{
    ZorhostProcess host;
    writeLoopingClient(host);
    ASSERT_TRUE(host.startReady({"--headless"}));
    QProcess client;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("AGENT_NATIVE_PORT", QString::number(host.firstPort()));
    client.setProcessEnvironment(environment);
    client.start("/usr/bin/python3", {host.file("loop.py")});
    ASSERT_TRUE(host.waitForOutput("done ChangePartitionLabel"));
    host.signal(SIGTERM);
    EXPECT_EQ(host.exitCode(), 1) << host.errors().constData();
    EXPECT_TRUE(host.errors().contains("ending without the release")) << host.errors().constData();
    client.kill();
    client.waitForFinished();
}

} // namespace

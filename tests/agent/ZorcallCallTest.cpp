// Single calls to a real service with the library's handler, and with a handler that returns unusual answers.
#include "tests/agent/Answers.h"
#include "tests/agent/TestService.h"
#include "tests/agent/ZorcallProcess.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

/// A recording host and its service.
struct ServedHost
{
    ServedHost()
    {
        host.build();
        tools->setBridge(host.toolBridge());
        service = std::make_unique<TestService>(tools);
    }
    Ran call(const char* line) { return zorcall(words(line), service->port()); }

    RecordingHost host;
    std::shared_ptr<PacedTools> tools = std::make_shared<PacedTools>();
    std::unique_ptr<TestService> service;
};

/// Returns answers that a host never gives.
class OddTools : public ZORNativePluginNull
{
public:
    void ListAllDisks(std::vector<DiskInfo>& out) override
    {
        DiskInfo disk;
        disk.diskLabel = "Gr\xC3\xB6\xC3\x9F\x65 \"\xE6\x95\xB0\"";
        disk.totalCapacity = INT64_MAX;
        disk.availableSpace = -9007199254740993;
        out = {disk, DiskInfo()};
    }
    void EjectUsb(std::string& answer, const std::string& driveLetter) override { answer = driveLetter; }
    void RebuildMbr(std::string&, const int32_t) override { throw std::runtime_error("the handler\nfailed"); }
};

Ran oddCall(const QStringList& arguments)
{
    TestService service(std::make_shared<OddTools>());
    return zorcall(arguments, service.port());
}

TEST(ZorcallCall, Init_PrintsTrueWithCode0)
{
    ServedHost served;
    EXPECT_EQ(served.call("Init"), (Ran{0, "true\n", ""}));
}

TEST(ZorcallCall, PortOption_OverridesTheEnvironment)
{
    ServedHost served;
    EXPECT_EQ(zorcall(QStringList{QStringLiteral("--port"), QString::fromLatin1(served.service->port()),
                                  QStringLiteral("Init")},
                      "1"),
              (Ran{0, "true\n", ""}));
}

TEST(ZorcallCall, HostOption_SelectsTheAddress)
{
    ServedHost served;
    // A loopback address without a listener on this port.
    const Ran ran = served.call("--host 127.77.77.77 Init");
    EXPECT_EQ(ran.code, 3);
    EXPECT_TRUE(ran.err.startsWith("zorcall: no connection to 127.77.77.77:")) << ran;
    EXPECT_EQ(served.call("--host localhost Init").code, 0);
}

TEST(ZorcallCall, AcceptedTool_PrintsTheAnswerAndReachesTheHost)
{
    ServedHost served;
    EXPECT_EQ(served.call("FormatPartition driveLetter=D fileSystem=NTFS label=daten clusterSize=4096 "
                          "quickFormat=true"),
              (Ran{0, answers::queued() + "\n", ""}));
    const auto calls = served.host.recorder().calls();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(typed(calls[2].arguments),
              "list[int:15,map{clusterSize=int:4096,driveLetter=QString:\"D\",fileSystem=QString:\"NTFS\","
              "label=QString:\"daten\",quickFormat=bool:true}]");
}

TEST(ZorcallCall, Utf8AndSpacesInAValue_ReachTheHost)
{
    ServedHost served;
    const QString label = QString::fromUtf8("newLabel=Gr\xC3\xB6\xC3\x9F\x65 \xE6\x95\xB0");
    EXPECT_EQ(zorcall({QStringLiteral("ChangePartitionLabel"), QStringLiteral("driveLetter=C"), label},
                      served.service->port())
                  .code,
              0);
    const auto calls = served.host.recorder().calls();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_TRUE(
        typed(calls[2].arguments).contains(QString::fromUtf8("\"Gr\xC3\xB6\xC3\x9F\x65 \xE6\x95\xB0\"")))
        << typed(calls[2].arguments).toStdString();
}

TEST(ZorcallCall, RejectedTool_PrintsTheAnswerWithCode1)
{
    ServedHost served;
    EXPECT_EQ(served.call("EjectUsb driveLetter=5"), (Ran{1, answers::notValid() + "\n", ""}));
    EXPECT_EQ(served.host.recorder().calls().size(), 0u);
}

TEST(ZorcallCall, AnswerOtherThanExactlyTaskQueued_Code1)
{
    const QString queued = QString::fromStdString(g_ZORNativePlugin_constants.TASK_QUEUED);
    EXPECT_EQ(oddCall(words("EjectUsb") << QStringLiteral("driveLetter=") + queued),
              (Ran{0, answers::queued() + "\n", ""}));
    EXPECT_EQ(oddCall(words("EjectUsb") << QStringLiteral("driveLetter=") + queued + QLatin1Char(' ')),
              (Ran{1, answers::json(g_ZORNativePlugin_constants.TASK_QUEUED + ' ') + "\n", ""}));
}

TEST(ZorcallCall, AllowedMissingArgument_IsNotSentAndReadAsItsDefault)
{
    ServedHost served;
    EXPECT_EQ(served.call("--allow-missing WipeDisk eraseCount=3"), (Ran{0, answers::queued() + "\n", ""}));
    EXPECT_EQ(typed(served.host.recorder().calls().at(2).arguments),
              "list[int:7,map{diskIndex=int:0,eraseCount=int:3}]");
}

TEST(ZorcallCall, ListOfRecords_KeepsOrderDigitsAndUtf8)
{
    const Ran ran = oddCall(words("ListAllDisks"));
    EXPECT_EQ(ran.code, 0);
    EXPECT_EQ(ran.err, "");
    EXPECT_TRUE(ran.out.startsWith("[{\"diskLabel\": \"Gr\xC3\xB6\xC3\x9F\x65 \\\"\xE6\x95\xB0\\\"\", "
                                   "\"diskIndex\": 0, \"partitionCount\": 0, "
                                   "\"totalCapacity\": 9223372036854775807, "))
        << ran;
    EXPECT_TRUE(ran.out.contains("\"availableSpace\": -9007199254740993, ")) << ran;
    EXPECT_TRUE(ran.out.endsWith("\"serialNumber\": \"\"}]\n")) << ran;
    EXPECT_EQ(ran.out.count("\"serialNumber\""), 2) << ran;
}

TEST(ZorcallCall, UnknownLetter_PrintsTheDefaultRecordWithCode0)
{
    ServedHost served;
    const Ran ran = served.call("GetPartitionInfo driveLetter=Q");
    EXPECT_EQ(ran.code, 0);
    EXPECT_TRUE(ran.out.startsWith("{\"isUnallocated\": false, \"diskIndex\": 0, ")) << ran;
    EXPECT_TRUE(ran.out.endsWith("\"dynamicVolumeType\": \"\"}\n")) << ran;
}

TEST(ZorcallCall, PreProcessingThatRejects_Code1)
{
    ServedHost served;
    served.tools->setEarlyCalls(1);
    EXPECT_EQ(served.call("PreProcessing toolCalls=x"), (Ran{1, answers::operationInProgress() + "\n", ""}));
    EXPECT_EQ(served.call("PreProcessing toolCalls=x"), (Ran{0, answers::allowed() + "\n", ""}));
}

TEST(ZorcallCall, FalseFromPostProcessing_Code0)
{
    ServedHost served;
    EXPECT_EQ(served.call("PostProcessing result=x"), (Ran{0, "false\n", ""}));
    const QString queued = QString::fromStdString(g_ZORNativePlugin_constants.TASK_QUEUED);
    EXPECT_EQ(zorcall(words("PostProcessing") << QStringLiteral("result=") + queued, served.service->port()),
              (Ran{0, "true\n", ""}));
}

TEST(ZorcallCall, ExceptionOfTheService_Code5WithItsMessageOnOneLine)
{
    EXPECT_EQ(oddCall(words("RebuildMbr diskIndex=1")),
              (Ran{5, "", "zorcall: the service answered with an exception: the handler?failed\n"}));
}

TEST(ZorcallCall, StringOfAMegabyte_IsSentAndReturned)
{
    // Linux limits one argument to 128 KiB, but not standard input.
    QByteArray text;
    for (int i = 0; i < 512 * 1024; ++i)
        text += "\xC3\xB6";
    TestService service(std::make_shared<OddTools>());
    const Ran ran = zorcall(words("--script -"), service.port(), "EjectUsb driveLetter=" + text + "\n");
    EXPECT_EQ(ran.code, 1);
    EXPECT_TRUE(ran.out.endsWith("\n\"" + text + "\"\n"));
}

} // namespace

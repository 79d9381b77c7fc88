// The chain from the number in the registry to a function, and its failures.
#include "tests/recscan/ReferralService.h"
#include "tests/recscan/ScanFixture.h"

#include "recscan/Referral.h"
#include "tests/recscan/ExpectedTexts.h"
#include "tests/support/Threads.h"

#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

namespace {

const QByteArray kPage = "https://example.org/how-to/clone";
const QByteArray kSuccess = "{\"status\":\"Success\",\"url\":\"" + kPage + "\"}";

class Referral : public ScanFixture
{
protected:
    void useService(const QString& address) { setConfig("[main]\nseoUrl=" + address.toUtf8() + "\n"); }
    void setFunctions(const QByteArray& json)
    {
        application.write(application.current() + "/seo2fun.json", json);
    }
    static QByteArray entry(const QByteArray& key, const QByteArray& page = kPage)
    {
        return "{\"url\":\"" + page + "\",\"zorfun\":[\"ZORNativePlugin::" + key + "\"]}";
    }
    // The address in the reply of the service, fetched on another thread.
    QString fetch(const ReferralService::Reply& reply)
    {
        ReferralService service(reply);
        useService(service.address("/?id="));
        QString result;
        runOnOtherThread([&] { result = fetchSeoPage("7"); });
        EXPECT_EQ(service.paths().value(0), "/?id=7");
        return result;
    }
    // The record of a first scan whose service returns the page.
    QVariantMap refer(const QByteArray& functions)
    {
        ReferralService service(ReferralService::answering(kSuccess));
        useService(service.address("/"));
        setFunctions(functions);
        build();
        const QVariantList records = scan();
        return records.isEmpty() ? QVariantMap() : records.first().toMap();
    }
};

// --- the number

TEST_F(Referral, Number_IsTheDigitsAfterTheLastB)
{
    const QList<QPair<QByteArray, QString>> table = {{"abc123b456x7", "456"},
                                                     {"b1", "1"},
                                                     {"b", ""},
                                                     {"123b", ""},
                                                     {"bx9", ""},
                                                     {"123", "-1"},
                                                     {"B99", "-1"},
                                                     {"aBb07C", "07"},
                                                     {"b1b", ""},
                                                     {"b12345678901234567890", "12345678901234567890"}};
    for (const auto& row : table) {
        setReferralNumber(row.first);
        EXPECT_EQ(readReferralNumber(), row.second) << row.first.toStdString();
    }
}

TEST_F(Referral, Number_MissingInTheRegistry_IsMissing)
{
    EXPECT_EQ(readReferralNumber(), "-1");
}

TEST_F(Referral, Number_OtherNamesAndOtherCase_AreIgnored)
{
    for (const char* name : {"XURLID", "xurlid", "other"}) {
        registry.set(name, "b1");
        EXPECT_EQ(readReferralNumber(), "-1") << name;
    }
    registry.set("xurlID", "b4", "xurlID");
    EXPECT_EQ(readReferralNumber(), "-1");
}

TEST_F(Referral, Number_EmptyValue_IsMissing)
{
    setReferralNumber("");
    EXPECT_EQ(readReferralNumber(), "-1");
}

// --- the request

TEST_F(Referral, Request_NumberFollowsTheAddressDirectly)
{
    ReferralService service(ReferralService::answering(kSuccess));
    useService(service.address("/page?id="));
    QString result;
    runOnOtherThread([&] { result = fetchSeoPage("456"); });
    EXPECT_EQ(result, QString(kPage));
    EXPECT_EQ(service.paths(), QStringList("/page?id=456"));
    EXPECT_TRUE(service.lastRequest().startsWith("GET "));
}

TEST_F(Referral, Request_WithoutANumber_SendsMinusOne)
{
    ReferralService service(ReferralService::answering("{}"));
    useService(service.address("/x"));
    build();
    scan();
    EXPECT_EQ(service.paths(), QStringList("/x-1"));
}

TEST_F(Referral, Request_EmptyNumber_SendsTheBareAddress)
{
    setReferralNumber("123b");
    ReferralService service(ReferralService::answering("{}"));
    useService(service.address("/bare"));
    build();
    scan();
    EXPECT_EQ(service.paths(), QStringList("/bare"));
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"seo \"}"));
    EXPECT_EQ(hostCalls(), QStringList());
}

TEST_F(Referral, Request_WithoutConfigIni_UsesTheRemoteConfiguration)
{
    ReferralService service(ReferralService::answering(kSuccess));
    setRemoteConfig("{\"url_pattern_fetch_seo_page\":\"" + service.address("/remote").toUtf8() + "\"}");
    build();
    scan();
    EXPECT_EQ(service.paths(), QStringList("/remote-1"));
}

TEST_F(Referral, Request_WithConfigIni_DoesNotReadTheRemoteConfiguration)
{
    ReferralService service(ReferralService::answering(kSuccess));
    ReferralService other(ReferralService::answering(kSuccess));
    setRemoteConfig("{\"url_pattern_fetch_seo_page\":\"" + other.address("/remote").toUtf8() + "\"}");
    useService(service.address("/ini"));
    build();
    scan();
    EXPECT_EQ(service.paths(), QStringList("/ini-1"));
    EXPECT_EQ(other.paths(), QStringList());
}

TEST_F(Referral, Request_OnLaterScans_IsNotMade)
{
    ReferralService service(ReferralService::answering("{}"));
    useService(service.address("/x"));
    setState(stateBytes(0, 1));
    build();
    scan();
    EXPECT_EQ(service.paths(), QStringList());
}

TEST_F(Referral, Request_AddressWithBlanksAndOtherLetters_IsSentEncoded)
{
    ReferralService service(ReferralService::answering(kSuccess));
    useService(service.address(QString::fromUtf8("/a b/\xc3\xa9?id=")));
    QString result;
    runOnOtherThread([&] { result = fetchSeoPage("7"); });
    EXPECT_EQ(service.paths(), QStringList("/a%20b/%C3%A9?id=7"));
}

TEST_F(Referral, Report_WithoutANumber_ContainsTheFirstIndexOfTheScan)
{
    for (const qint32 index : {5, 11, 12, 2147483647, -3}) {
        setState(stateBytes(index, 0));
        if (host.bridge() == nullptr)
            build();
        host.recorder().clear();
        scan();
        EXPECT_EQ(events("Info_SmartReferScan"),
                  QStringList(QString("{\"case-index-start\":\"") + QString::number(index) + "\"}"));
    }
}

// --- the answer

TEST_F(Referral, Answer_Success_IsThePage)
{
    EXPECT_EQ(fetch(ReferralService::answering(kSuccess)), QString(kPage));
}

TEST_F(Referral, Answer_ErrorStatusWithAGoodBody_Counts)
{
    EXPECT_EQ(fetch(ReferralService::answering(kSuccess, "500 Internal Server Error")), QString(kPage));
    EXPECT_EQ(fetch(ReferralService::answering(kSuccess, "404 Not Found")), QString(kPage));
}

TEST_F(Referral, Answer_Redirect_IsNotFollowed)
{
    ReferralService target(ReferralService::answering(kSuccess));
    const QByteArray location = "Location: " + target.address("/other").toUtf8() + "\r\n";
    EXPECT_EQ(fetch(ReferralService::answering("", "302 Found", location)), "-1");
    EXPECT_EQ(fetch(ReferralService::answering(kSuccess, "302 Found", location)), QString(kPage));
    EXPECT_EQ(target.paths(), QStringList());
}

TEST_F(Referral, Answer_OtherOrMissingStatus_IsMissing)
{
    for (const char* body :
         {"{\"status\":\"success\",\"url\":\"x\"}", "{\"status\":\"Failed\",\"url\":\"x\"}",
          "{\"url\":\"x\"}", "{\"status\":true,\"url\":\"x\"}", "{}"})
        EXPECT_EQ(fetch(ReferralService::answering(body)), "-1") << body;
}

TEST_F(Referral, Answer_SuccessWithoutAUrl_IsTheEmptyString)
{
    for (const char* body : {"{\"status\":\"Success\"}", "{\"status\":\"Success\",\"url\":7}",
                             "{\"status\":\"Success\",\"url\":null}"})
        EXPECT_EQ(fetch(ReferralService::answering(body)), "") << body;
}

TEST_F(Referral, Answer_NotJson_IsMissing)
{
    for (const char* body : {"", "<html></html>", "{\"status\":\"Success\",\"url\":\"x\"", "\xff\xfe\x00",
                             "[\"Success\"]", "\"Success\"", "12345678901234567890"})
        EXPECT_EQ(fetch(ReferralService::answering(body)), "-1") << body;
    EXPECT_EQ(fetch(ReferralService::answering(QByteArray(100000, '['))), "-1");
}

TEST_F(Referral, Answer_ConnectionClosedBeforeIt_IsMissing)
{
    ReferralService service([](QTcpSocket& socket, const QString&) { socket.abort(); });
    useService(service.address("/?id="));
    QString result;
    runOnOtherThread([&] { result = fetchSeoPage("7"); });
    EXPECT_EQ(result, "-1");
}

TEST_F(Referral, Answer_ConnectionClosedInTheMiddle_IsMissing)
{
    EXPECT_EQ(fetch([](QTcpSocket& socket, const QString&) {
                  socket.write("HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\n{\"status\":\"Succ");
                  socket.disconnectFromHost();
              }),
              "-1");
}

TEST_F(Referral, Answer_InPiecesAndSlowly_IsWaitedFor)
{
    EXPECT_EQ(fetch([](QTcpSocket& socket, const QString&) {
                  socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(kSuccess.size()) +
                               "\r\n\r\n" + kSuccess.left(10));
                  QTimer::singleShot(700, &socket, [&socket] { socket.write(kSuccess.mid(10)); });
              }),
              QString(kPage));
}

TEST_F(Referral, Answer_UnreachableService_IsMissing)
{
    QString address;
    {
        const ReferralService gone(ReferralService::answering(kSuccess));
        address = gone.address("/?id=");
    }
    useService(address);
    QString result;
    runOnOtherThread([&] { result = fetchSeoPage("7"); });
    EXPECT_EQ(result, "-1");
}

TEST_F(Referral, Answer_InvalidAddress_IsMissing)
{
    for (const char* address : {"", "no such scheme://%%%", "http://[::bad", "file:///there/is/no/such/"}) {
        useService(address);
        QString result;
        runOnOtherThread([&] { result = fetchSeoPage("7"); });
        EXPECT_EQ(result, "-1") << address;
    }
}

TEST_F(Referral, Answer_OfOneCharacter_SkipsTheCaseOfThatNumber)
{
    ReferralService service(ReferralService::answering("{\"status\":\"Success\",\"url\":\"\\u0001\"}"));
    useService(service.address("/"));
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
    build();
    EXPECT_TRUE(scan().isEmpty());
    EXPECT_EQ(hostCalls(), QStringList("partitionmanager.isWin11CheckerEnable list[]"));
}

// --- the file of functions

TEST_F(Referral, Functions_AreReadFromTheCurrentFolder)
{
    QMap<QString, QString> map;
    setFunctions("[" + entry("a", "u1") + "," + entry("b", "u2") + "]");
    loadSeoToFun(map);
    EXPECT_EQ(map, (QMap<QString, QString>{{"u1", "a"}, {"u2", "b"}}));
}

TEST_F(Referral, Functions_OnlyTheFirstEntryCounts)
{
    QMap<QString, QString> map;
    setFunctions("[{\"url\":\"u\",\"zorfun\":[\"ZORNativePlugin::a\",\"ZORNativePlugin::b\"]}]");
    loadSeoToFun(map);
    EXPECT_EQ(map.value("u"), "a");
}

TEST_F(Referral, Functions_LaterElementOfOnePage_ReplacesTheEarlier)
{
    QMap<QString, QString> map;
    setFunctions("[" + entry("a", "u") + "," + entry("b", "u") + "]");
    loadSeoToFun(map);
    EXPECT_EQ(map, (QMap<QString, QString>{{"u", "b"}}));
}

TEST_F(Referral, Functions_WithoutThePrefix_AreSkipped)
{
    QMap<QString, QString> map;
    setFunctions("[{\"url\":\"a\",\"zorfun\":[]},{\"url\":\"b\",\"zorfun\":[\"zornativeplugin::x\"]},"
                 "{\"url\":\"c\",\"zorfun\":[\" ZORNativePlugin::x\"]},{\"url\":\"d\",\"zorfun\":[7]},"
                 "{\"url\":\"e\",\"zorfun\":\"ZORNativePlugin::x\"},{\"url\":\"f\"},7,null,[],\"x\"]");
    loadSeoToFun(map);
    EXPECT_TRUE(map.isEmpty());
}

TEST_F(Referral, Functions_PrefixTwice_TakesWhatIsBetween)
{
    QMap<QString, QString> map;
    setFunctions("[" + entry("aZORNativePlugin::b", "u") + "," + entry("", "empty") + "]");
    loadSeoToFun(map);
    EXPECT_EQ(map, (QMap<QString, QString>{{"u", "a"}, {"empty", ""}}));
}

TEST_F(Referral, Functions_FileThatIsNotAnArray_AddsNothing)
{
    QMap<QString, QString> map;
    loadSeoToFun(map);
    for (const char* text :
         {"", "{}", "7", "[", "\xff\xfe", "{\"url\":\"u\",\"zorfun\":[\"ZORNativePlugin::a\"]}"}) {
        setFunctions(text);
        loadSeoToFun(map);
    }
    EXPECT_TRUE(map.isEmpty());
}

// --- the whole chain

TEST_F(Referral, OwnFunction_GivesAPlainRecordAndNoCaseRuns)
{
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
    const QVariantMap record = refer("[" + entry("disk_health") + "]");
    EXPECT_EQ(typed(withoutTime(record)), plainRecord(kExpectedOwn[12].text));
    EXPECT_EQ(QString(kExpectedOwn[12].key), "disk_health");
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
    EXPECT_EQ(state(), stateBytes(0, 1));
}

TEST_F(Referral, OwnFunctionAccepted_CallsItsTool)
{
    ASSERT_FALSE(refer("[" + entry("repair_windows_boot") + "]").isEmpty());
    startService();
    host.recorder().clear();
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls().last(), "__zormain.doToolBox list[int:2,map{}]");
    EXPECT_EQ(state(), stateBytes(0, 1));
}

TEST_F(Referral, AgentFunction_NamesTheAgentAndItsFunction)
{
    const QVariantMap record = refer("[" + entry("clone_disk") + "]");
    EXPECT_EQ(typed(withoutTime(record)),
              "map{buttons=list[QString:\"Accept\",QString:\"Cancel\"],callAgent=int:1,default=int:0,"
              "fun=QString:\"clone_disk\",msg=QString:\"" +
                  QString(kExpectedAgent[1].text) + "\"}");
}

TEST_F(Referral, SecureBoot_ShowsItsOwnTextAndOffersTheConversion)
{
    const QVariantMap record = refer("[" + entry("enable_secure_boot") + "]");
    EXPECT_EQ(record.value("msg"), QVariant(QString(kExpectedAgent[0].text)));
    EXPECT_EQ(record.value("fun"), QVariant("convert_disk_to_gpt"));
}

TEST_F(Referral, AgentFunctionAccepted_OnlySavesTheState)
{
    ASSERT_FALSE(refer("[" + entry("convert_disk_to_gpt") + "]").isEmpty());
    startService();
    host.recorder().clear();
    QFile::remove(application.folder() + "/recscan.info");
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(0, 1));
}

TEST_F(Referral, UnknownKey_RecommendsNothing)
{
    EXPECT_TRUE(refer("[" + entry("no_such_function") + "]").isEmpty());
}

TEST_F(Referral, EmptyKey_RecommendsNothing)
{
    EXPECT_TRUE(refer("[" + entry("") + "]").isEmpty());
}

TEST_F(Referral, PageMissingInTheFile_RecommendsNothing)
{
    EXPECT_TRUE(refer("[" + entry("disk_health", kPage + "/") + "]").isEmpty());
}

TEST_F(Referral, SuccessWithoutAUrl_MatchesAnEmptyUrlOfTheFile)
{
    ReferralService service(ReferralService::answering("{\"status\":\"Success\"}"));
    useService(service.address("/"));
    setFunctions("[" + entry("migrate_os", "") + "]");
    build();
    ASSERT_EQ(scan().size(), 1);
}

TEST_F(Referral, FoundWithANumber_IsReportedByTheNumber)
{
    setReferralNumber("b42");
    ASSERT_FALSE(refer("[" + entry("disk_health") + "]").isEmpty());
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList("{\"case-index-start\":\"seo 42\"}"));
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"seo 42\"}"));
}

} // namespace

// Answers to recommendations: the state that they save, and the tool that each one calls.
#include "tests/recscan/ScanFixture.h"

#include "recscan/ActionIndex.h"
#include "recscan/RecAction.h"
#include "recscan/RecScanThread.h"
#include "tests/recscan/ReferralService.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

#include <functional>
#include <memory>
#include <utility>

namespace {

// Records which tools are called, and their arguments.
class RecordingTools : public CZorHandle
{
public:
    QStringList calls;

#include "EchoMethods.inc"

private:
    template <class... Arguments> std::string echo(const char* method, const Arguments&... arguments)
    {
        QStringList words{method};
        (words.append(word(arguments)), ...);
        calls << words.join(' ');
        return method;
    }
    template <class Result> static void answer(Result&, const std::string&) {}

    static QString word(qint64 number)
    {
        return QString::number(number);
    }
    static QString word(const std::string& letter)
    {
        return '"' + QString::fromStdString(letter) + '"';
    }
};

// A scan's thread object with tools that only record their calls.
class RecActions : public ScanFixture
{
protected:
    void runScanFrom(int index)
    {
        setState(stateBytes(index, 1));
        run();
    }
    void run()
    {
        if (host.bridge() == nullptr)
            build();
        own = std::make_unique<RecScanThread>(host.bridge(), *host.pages());
        own->setScanEngine(host.engine());
        std::vector<DiskInfo> disks;
        host.bridge()->getDiskInfo(disks);
        std::map<int, std::vector<PartitionInfo>> byDisk;
        std::map<char, PartitionInfo> byLetter;
        std::vector<PartitionInfo> all;
        host.bridge()->getAllPartitionInfo(all);
        for (const PartitionInfo& info : all) {
            byDisk[info.diskIndex].push_back(info);
            if (!info.driveLetter.empty())
                byLetter[info.driveLetter.front()] = info;
        }
        own->setScanData(disks, byDisk, byLetter);
        own->setToolHandler(tools);
        own->start();
        ASSERT_TRUE(waitForScan(*own));
    }
    QStringList act(const QVariantMap& map = {})
    {
        tools->calls.clear();
        own->performRecAction(map);
        return tools->calls;
    }
    QStringList refer(const QByteArray& key)
    {
        ReferralService service(ReferralService::answering("{\"status\":\"Success\",\"url\":\"u\"}"));
        setConfig("[main]\nseoUrl=" + service.address("/").toUtf8() + "\n");
        application.write(application.current() + "/seo2fun.json",
                          "[{\"url\":\"u\",\"zorfun\":[\"ZORNativePlugin::" + key + "\"]}]");
        QFile::remove(application.folder() + "/recscan.info");
        run();
        EXPECT_TRUE(own->hasResult());
        return act();
    }

    std::shared_ptr<RecordingTools> tools = std::make_shared<RecordingTools>();
    std::unique_ptr<RecScanThread> own;
};

struct ActionRow
{
    const char* behaviour;
    int firstCase;
    QVariantList machine; ///< empty: that of the fixture
    QStringList calls;
    /// A member that answers with true or false, or null.
    const char* object = nullptr;
    const char* member = nullptr;
    bool answer = false;
};

void PrintTo(const ActionRow& row, std::ostream* out)
{
    *out << row.behaviour;
}

const std::vector<ActionRow>& actionRows()
{
    static const QVariantMap shortC = partitionMap(0, "C", 10 * kGib, 9 * kGib);
    static const QVariantMap shortD = partitionMap(0, "D", 10 * kGib, 9 * kGib);
    static const QVariantMap emptyE = partitionMap(0, "E", 100 * kGib, 0);
    static const QVariantMap fat32{{"fsString", "FAT32"}};
    static const std::vector<ActionRow> rows{
        {"DiskSmart_ChecksTheDisk",
         1,
         {diskMap(6, {})},
         {"DiskHealthCheck 6"},
         "partitionmanager",
         "hasDiskSmartInfoError",
         true},
        {"SystemDriveWithRoomElsewhere_MigratesData",
         2,
         {diskMap(0, {shortC}), diskMap(1, {partitionMap(1, "E", 100 * kGib, 0)})},
         {"MigrateSystemDriveData"}},
        {"SystemDriveWithRoomOnItsDisk_AdjustsTheWholeDirectory",
         2,
         {diskMap(0, {shortC, emptyE})},
         {"SmartSpaceAdjustment \"C:\\WINDOWS\\SYSTEM32\""}},
        {"DriveShortOfSpace_AdjustsIt", 3, {diskMap(0, {shortD, emptyE})}, {"SmartSpaceAdjustment \"D\""}},
        {"LargeMbrDisk_ConvertsIt",
         4,
         {diskMap(4, {}, {{"isGPT", false}, {"size", qlonglong(2199023255553)}})},
         {"ConvertDiskToGpt 4"}},
        {"LargeFat32Drive_ConvertsIt",
         5,
         {diskMap(2, {partitionMap(2, "F", 34359738369, 0, fat32)}, {{"isUSB", true}})},
         {"ConvertPartitionToExfat \"F\""}},
        {"BootEntries_RepairTheBoot", 6, {}, {"RepairWindowsBoot"}},
        {"UnalignedSsd_AlignsIt", 7, {diskMap(5, {})}, {"AlignDiskTo4k 5"}, "toolbox", "check4kAlign", false},
        {"BitLockerSystemDrive_CreatesAMediumOnNoDiskInParticular",
         8,
         {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib, {{"bltState", 2}})})},
         {"CreateBootableUsbByDisk -1"}},
        {"SlowBootDisk_DoesNothing",
         9,
         {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib)}, {{"isSSD", false}})},
         {}},
        {"RawPartition_RepairsIt",
         10,
         {diskMap(1, {partitionMap(1, "g", kGib, 0)})},
         {"RepairRawOrDamagedPartition \"G\""},
         "partitionrecovery",
         "isRawPart",
         true},
        {"LockedBitLockerDrive_FindsItsKey",
         11,
         {diskMap(1, {partitionMap(1, "g", kGib, 0, {{"bltState", 3}})})},
         {"RetrieveBitLockerRecoveryKey \"g\""}},
    };
    return rows;
}

class CaseActions : public RecActions, public testing::WithParamInterface<ActionRow>
{
};

TEST_P(CaseActions, AcceptedRecommendation_CallsTheToolOfItsRow)
{
    const ActionRow& row = GetParam();
    if (row.object != nullptr)
        host.spec(row.object).answer(row.member, row.answer);
    if (!row.machine.isEmpty())
        machine = row.machine;
    if (row.firstCase == 6)
        installBootChecker("echo FindErrorItem\nexit 1\n");
    runScanFrom(row.firstCase);
    ASSERT_TRUE(own->hasResult());
    EXPECT_EQ(act(), row.calls);
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseActions, testing::ValuesIn(actionRows()),
                         [](const auto& row) { return row.param.behaviour; });

TEST_F(RecActions, NothingFound_DoesNothing)
{
    runScanFrom(0);
    EXPECT_EQ(act(), QStringList());
}

// The actions that need no tool are not performed either.
TEST_F(RecActions, WithoutAToolHandler_OpensNoAddressAndReadsNoBootDisk)
{
    runScanFrom(12);
    host.recorder().clear();
    for (const bool withHandler : {false, true}) {
        own->setToolHandler(withHandler ? tools : nullptr);
        for (const int type : {0, 1, 2})
            own->performRecAction({{"callByWin11Checker", true}, {"checkResultType", type}});
        EXPECT_EQ(hostCalls(), withHandler ? QStringList({"window.openUrl list[QString:\"\"]",
                                                          "deviceMgr.bootDisks list[int:0,bool:true]",
                                                          "window.openUrl list[QString:\"\"]"})
                                           : QStringList());
    }
    EXPECT_EQ(tools->calls, QStringList("ConvertDiskToGpt 0"));
}

TEST_F(RecActions, WithoutAToolHandler_RecordsStayUnperformedAndCanBePerformedLater)
{
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
    runScanFrom(1);
    own->setToolHandler(nullptr);
    EXPECT_EQ(act(), QStringList());
    own->setToolHandler(tools);
    EXPECT_EQ(act(), QStringList("DiskHealthCheck 0"));
    EXPECT_EQ(refer("password_reset"), QStringList("PasswordReset"));
    own->setToolHandler(nullptr);
    EXPECT_EQ(act(), QStringList());
    own->setToolHandler(tools);
    EXPECT_EQ(act(), QStringList("PasswordReset"));
}

TEST_F(RecActions, EveryOwnReferralFunction_CallsItsTool)
{
    const QList<QPair<QByteArray, QString>> table = {
        {"align_disk_to_4k", "AlignDiskTo4k -1"},
        {"burn_windows_iso", "CreateWindowsInstallerMedia"},
        {"create_windows_pe_image", "CreateBootableUsbByDisk -1"},
        {"get_bitlocker_recovery_key", "RetrieveBitLockerRecoveryKey \"\""},
        {"password_reset", "PasswordReset"},
        {"rebuild_mbr", "RebuildMbr -1"},
        {"recover_partition", "RecoverLostPartition -1"},
        {"repair_raw_partition", "RepairRawOrDamagedPartition \"\""},
        {"repair_windows_boot", "RepairWindowsBoot"},
        {"scan_bad_sectors", "ScanDiskBadSectors -1"},
        {"toggle_write_protection", "ToggleWriteProtection \"\""},
        {"bitlocker_manager", "ShowBitLockerStatus \"C:\\WINDOWS\\SYSTEM32\""},
        {"disk_health", "DiskHealthCheck -1"},
        {"migrate_data", "MigrateSystemDriveData"},
        {"migrate_os", "CloneOSDataFromPartition -1 \"\""}};
    for (const auto& row : table)
        EXPECT_EQ(refer(row.first), QStringList(row.second)) << row.first.toStdString();
}

TEST_F(RecActions, AgentReferralFunction_CallsNoTool)
{
    for (const char* key :
         {"clone_disk", "clone_os_data", "clone_partition", "convert_disk_to_gpt", "enable_secure_boot",
          "convert_disk_to_mbr", "convert_disk_to_basic", "convert_disk_to_dynamic", "wipe_disk"})
        EXPECT_EQ(refer(key), QStringList()) << key;
}

// Keys whose records a user cannot accept have tools as well.
TEST_F(RecActions, KeyOfAnAgentsFunction_CallsItsTool)
{
    const std::map<QByteArray, QString> table = {{"clone_disk", "CloneDiskToDisk -1 -1"},
                                                 {"clone_os_data", "CloneOSDataFromDisk -1 -1"},
                                                 {"clone_partition", "ClonePartitionToPartition \"\" \"\""},
                                                 {"convert_disk_to_gpt", "ConvertDiskToGpt -1"},
                                                 {"enable_secure_boot", "ConvertDiskToGpt -1"},
                                                 {"convert_disk_to_mbr", "ConvertDiskToMbr -1"},
                                                 {"convert_disk_to_basic", "ConvertDiskToBasic -1"},
                                                 {"convert_disk_to_dynamic", "ConvertDiskToDynamic -1"}};
    for (const auto& [key, call] : table) {
        tools->calls.clear();
        runReferralAction(*tools, key);
        EXPECT_EQ(tools->calls, QStringList(call)) << key.constData();
    }
    tools->calls.clear();
    runReferralAction(*tools, "no_such_function");
    EXPECT_EQ(tools->calls, QStringList());
}

TEST_F(RecActions, ReferralRecord_PrecedesTheWin11Page)
{
    refer("disk_health");
    EXPECT_EQ(act({{"callByWin11Checker", true}, {"checkResultType", 1}}), QStringList("DiskHealthCheck -1"));
}

// --- the Windows 11 action

TEST_F(RecActions, Win11Page_PrecedesTheCaseThatWasFound)
{
    machine = {diskMap(4, {}, {{"isGPT", false}, {"size", qlonglong(2199023255553)}})};
    host.spec("deviceMgr").answer("bootDisks", QVariantList{QVariantMap{{"diskIndex", 8}}});
    runScanFrom(4);
    EXPECT_EQ(act({{"callByWin11Checker", true}, {"checkResultType", 1}}), QStringList("ConvertDiskToGpt 8"));
    EXPECT_EQ(act({{"callByWin11Checker", false}, {"checkResultType", 1}}),
              QStringList("ConvertDiskToGpt 4"));
}

TEST_F(RecActions, Win11NeedsGpt_ByTheRecord_ConvertsTheSystemDisk)
{
    host.spec("partitionmanager").answer("isWin11CheckerEnable", true);
    host.spec("deviceMgr").answer("bootDisks", QVariantList{QVariantMap{{"diskIndex", 8}}});
    machine = {diskMap(3, {partitionMap(3, "C", 200 * kGib, 100 * kGib)})};
    runScanFrom(0);
    EXPECT_EQ(act({{"checkResultType", 1}}), QStringList("ConvertDiskToGpt 3"));
    EXPECT_EQ(act({{"checkResultType", 1}, {"callByWin11Checker", true}}), QStringList("ConvertDiskToGpt 8"));
}

TEST_F(RecActions, Win11NeedsGpt_WithoutASystemPartition_SendsDisk0)
{
    host.spec("partitionmanager").answer("isWin11CheckerEnable", true);
    machine = {diskMap(3, {})};
    runScanFrom(0);
    EXPECT_EQ(act({{"checkResultType", 1}}), QStringList("ConvertDiskToGpt 0"));
    EXPECT_EQ(act({{"checkResultType", 1}, {"callByWin11Checker", true}}), QStringList("ConvertDiskToGpt 0"));
}

TEST_F(RecActions, Win11Outcomes_OpenTheirAddresses)
{
    runScanFrom(12);
    setRemoteConfig("{\"url_win11_hw_ready\":\"http://ready\",\"url_win11_hw_not_ready\":\"http://not\"}");
    host.recorder().clear();
    act({{"callByWin11Checker", true}, {"checkResultType", 0}});
    act({{"callByWin11Checker", true}, {"checkResultType", 2}});
    act({{"callByWin11Checker", true}});
    EXPECT_EQ(hostCalls(), QStringList({"window.openUrl list[QString:\"http://ready\"]",
                                        "window.openUrl list[QString:\"http://not\"]",
                                        "window.openUrl list[QString:\"http://ready\"]"}));
}

TEST_F(RecActions, Win11Outcome_WithoutConfiguration_OpensAnEmptyAddress)
{
    runScanFrom(12);
    host.recorder().clear();
    act({{"callByWin11Checker", true}, {"checkResultType", 0}});
    EXPECT_EQ(hostCalls(), QStringList("window.openUrl list[QString:\"\"]"));
}

TEST_F(RecActions, Win11Outcome_OfAnyOtherNumber_DoesNothing)
{
    runScanFrom(12);
    host.recorder().clear();
    for (const QVariant& type : {QVariant(3), QVariant(-1), QVariant(2147483647)})
        EXPECT_EQ(act({{"callByWin11Checker", true}, {"checkResultType", type}}), QStringList());
    EXPECT_EQ(hostCalls(), QStringList());
}

TEST_F(RecActions, OpenUrl_ReturnsTheHostsAnswer)
{
    build();
    EXPECT_TRUE(openUrlOnHost("http://x"));
    bool fromOther = false;
    runOnOtherThread([&] { fromOther = openUrlOnHost("http://y"); });
    EXPECT_TRUE(fromOther);
    for (const HostCallRecord& call : host.recorder().calls())
        EXPECT_EQ(call.thread, QCoreApplication::instance()->thread());
}

TEST_F(RecActions, OpenUrl_OfAHostThatRefuses_IsFalse)
{
    host.spec("window").answer("openUrl", QVariant(false));
    build();
    EXPECT_FALSE(openUrlOnHost("http://x"));
    EXPECT_EQ(hostCalls(), QStringList("window.openUrl list[QString:\"http://x\"]"));
}

TEST_F(RecActions, OpenUrl_WithoutTheMethod_IsFalse)
{
    host.spec("window").remove("openUrl");
    build();
    EXPECT_FALSE(openUrlOnHost("http://x"));
}

TEST_F(RecActions, OpenUrl_WithoutAWindow_IsFalse)
{
    host.without("window");
    build();
    EXPECT_FALSE(openUrlOnHost("http://x"));
}

// --- answers through the bridge

class Answers : public ScanFixture
{
protected:
    void findSmartError()
    {
        host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
        ASSERT_FALSE(scanFrom(1).isEmpty());
        host.recorder().clear();
    }
    QByteArray log() const { return application.read(application.folder() + "/aibridge.log"); }
};

const QString kHealth = QStringLiteral("__zormain.opendiskhealth list[map{diskIndex=int:0}]");

TEST_F(Answers, Result1_SavesTheStateAndCallsNoTool)
{
    findSmartError();
    startService();
    answer({{"result", 1}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(2, 1));
}

TEST_F(Answers, OtherResults_CallNoTool)
{
    findSmartError();
    startService();
    for (const int result : {-1, 2, 2147483647})
        answer({{"result", result}});
    EXPECT_EQ(hostCalls(), QStringList());
}

TEST_F(Answers, WithoutAResult_CountsAsTheAction)
{
    findSmartError();
    startService();
    answer({});
    EXPECT_TRUE(hostCalls().contains(kHealth));
    EXPECT_EQ(state(), stateBytes(2, 1));
}

TEST_F(Answers, ValueThatIsNotAMap_CountsAsTheAction)
{
    findSmartError();
    startService();
    host.bridge()->doRecOperation(QVariant("garbage"));
    waitForAnswers();
    EXPECT_TRUE(hostCalls().contains(kHealth));
}

TEST_F(Answers, CallReturnsBeforeTheAction_WhichComesAfter100Milliseconds)
{
    findSmartError();
    startService();
    QElapsedTimer timer;
    timer.start();
    host.bridge()->doRecOperation(QVariantMap{{"result", 0}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(1, 1));
    ASSERT_TRUE(pumpUntil([this] { return !hostCalls().isEmpty(); }));
    EXPECT_GE(timer.elapsed(), 99);
}

TEST_F(Answers, TwiceWithin100Milliseconds_ActTwice)
{
    findSmartError();
    startService();
    host.bridge()->doRecOperation(QVariantMap{{"result", 0}});
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls().count(kHealth), 2);
}

TEST_F(Answers, BeforeTheFirstScan_HaveNoEffect)
{
    build();
    startService();
    answer({{"callByWin11Checker", true}, {"checkResultType", 0}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_FALSE(QFile::exists(application.folder() + "/recscan.info"));
}

TEST_F(Answers, WithoutTheService_HaveNoEffect)
{
    findSmartError();
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(1, 1));
}

TEST_F(Answers, WhileTheServiceHasNoHandler_SaveTheStateAndCallNoTool)
{
    findSmartError();
    startServiceHeld();
    answer({{"result", 0}});
    answer({{"callByWin11Checker", true}, {"checkResultType", 0}});
    EXPECT_FALSE(serviceHasHandler());
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(2, 1));
    letServiceGoOn();
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls().count(kHealth), 1);
}

TEST_F(Answers, AfterAScanWithoutARecord_OnlySaveTheState)
{
    EXPECT_TRUE(scanFrom(0).isEmpty());
    startService();
    host.recorder().clear();
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(12, 1));
    answer({{"callByWin11Checker", true}});
    EXPECT_EQ(hostCalls(), QStringList("window.openUrl list[QString:\"\"]"));
}

TEST_F(Answers, Win11PageWithAnotherCaseHeld_ActsAsCase0)
{
    machine.append(diskMap(4, {}, {{"isGPT", false}, {"size", qlonglong(2199023255553)}}));
    ASSERT_FALSE(scanFrom(4).isEmpty());
    startService();
    host.recorder().clear();
    answer({{"callByWin11Checker", true}, {"checkResultType", 2}});
    EXPECT_EQ(hostCalls(), QStringList("window.openUrl list[QString:\"\"]"));
}

TEST_F(Answers, Log_NamesTheCallAndEachEntryInKeyOrder)
{
    findSmartError();
    startService();
    application.write(application.folder() + "/aibridge.log", "");
    answer({{"result", 0}, {"note", "100%s"}, {"checkResultType", 2}});
    EXPECT_EQ(log(),
              "doRecOperation callback\nrec operation param: checkResultType: 2 note: 100%s result: 0 \n");
    application.write(application.folder() + "/aibridge.log", "");
    answer({{"result", 1}});
    EXPECT_EQ(log(), "doRecOperation callback\n");
}

TEST_F(Answers, TheAction_RunsOnTheApplicationThreadWithoutTheGate)
{
    host.spec("__zormain").answer("opendiskhealth", QVariant());
    findSmartError();
    startService();
    host.object("__zormain")->setValue("busy", true);
    answer({{"result", 0}});
    ASSERT_TRUE(hostCalls().contains(kHealth));
    for (const HostCallRecord& call : host.recorder().calls())
        EXPECT_EQ(call.thread, QCoreApplication::instance()->thread());
}

// The tool asks the page whether the order is valid. The host's code replaces the service inside that call.
TEST_F(Answers, ActionDuringWhichTheServiceEndsAndAnotherAnswerArrives_CompletesWithItsHandler)
{
    std::function<void()> duringNextCall;
    host.spec("partitionmanager").answer("doFunFromAI", [&](const QVariantList&) {
        if (const auto run = std::exchange(duringNextCall, nullptr))
            run();
        return QVariant(true);
    });
    machine = {diskMap(0, {partitionMap(0, "D", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)})};
    ASSERT_FALSE(scanFrom(3).isEmpty());
    startService();
    host.recorder().clear();
    const std::weak_ptr<ZORNativePluginIf> handler =
        AIBridgeAccess::serverThread(*host.bridge())->toolHandler();
    duringNextCall = [&] {
        release();
        startServiceHeld();
        answer({{"result", 0}});
        EXPECT_FALSE(serviceHasHandler());
        EXPECT_FALSE(handler.expired());
    };
    answer({{"result", 0}});
    EXPECT_EQ(hostCalls(),
              QStringList({"partitionmanager.doFunFromAI "
                           "list[int:1,map{TestFunValid=bool:true,driveLetter=QString:\"D\"}]",
                           "window.closeGuide list[invalid]",
                           "partitionmanager.doFunFromAI list[int:1,map{driveLetter=QString:\"D\"}]"}));
    EXPECT_TRUE(handler.expired());
    letServiceGoOn();
}

} // namespace

// The way back: answers, what they save, and the tool that each recommendation calls.
#include "tests/recscan/ScanFixture.h"

#include "recscan/HostUrl.h"
#include "recscan/RecActions.h"
#include "recscan/RecScanThread.h"
#include "service/ZorHandle.h"
#include "tests/recscan/ReferralService.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

namespace {

// Writes down which tools are called, and with what.
class RecordingTools : public CZorHandle
{
public:
    QStringList calls;

    void DiskHealthCheck(std::string&, int32_t disk) override { add("DiskHealthCheck", disk); }
    void MigrateSystemDriveData(std::string&) override { calls << "MigrateSystemDriveData"; }
    void SmartSpaceAdjustment(std::string&, const std::string& l) override { add("SmartSpaceAdjustment", l); }
    void ConvertDiskToGpt(std::string&, int32_t disk) override { add("ConvertDiskToGpt", disk); }
    void ConvertPartitionToExfat(std::string&, const std::string& l) override
    {
        add("ConvertPartitionToExfat", l);
    }
    void RepairWindowsBoot(std::string&) override { calls << "RepairWindowsBoot"; }
    void AlignDiskTo4k(std::string&, int32_t disk) override { add("AlignDiskTo4k", disk); }
    void CreateBootableUsbByDisk(std::string&, int32_t disk) override
    {
        add("CreateBootableUsbByDisk", disk);
    }
    void RepairRawOrDamagedPartition(std::string&, const std::string& l) override
    {
        add("RepairRawOrDamagedPartition", l);
    }
    void RetrieveBitLockerRecoveryKey(std::string&, const std::string& l) override
    {
        add("RetrieveBitLockerRecoveryKey", l);
    }
    void CreateWindowsInstallerMedia(std::string&) override { calls << "CreateWindowsInstallerMedia"; }
    void PasswordReset(std::string&) override { calls << "PasswordReset"; }
    void RebuildMbr(std::string&, int32_t disk) override { add("RebuildMbr", disk); }
    void RecoverLostPartition(std::string&, int32_t disk) override { add("RecoverLostPartition", disk); }
    void ScanDiskBadSectors(std::string&, int32_t disk) override { add("ScanDiskBadSectors", disk); }
    void ToggleWriteProtection(std::string&, const std::string& l) override
    {
        add("ToggleWriteProtection", l);
    }
    void ShowBitLockerStatus(std::string&, const std::string& l) override { add("ShowBitLockerStatus", l); }
    void CloneOSDataFromPartition(std::string&, int32_t disk, const std::string& l) override
    {
        calls << QString("CloneOSDataFromPartition %1 \"%2\"").arg(disk).arg(QString::fromStdString(l));
    }
    void CloneDiskToDisk(std::string&, int32_t from, int32_t to) override
    {
        calls << QString("CloneDiskToDisk %1 %2").arg(from).arg(to);
    }
    void CloneOSDataFromDisk(std::string&, int32_t from, int32_t to) override
    {
        calls << QString("CloneOSDataFromDisk %1 %2").arg(from).arg(to);
    }
    void ClonePartitionToPartition(std::string&, const std::string& from, const std::string& to) override
    {
        calls << QString("ClonePartitionToPartition \"%1\" \"%2\"")
                     .arg(QString::fromStdString(from), QString::fromStdString(to));
    }
    void ConvertDiskToMbr(std::string&, int32_t disk) override { add("ConvertDiskToMbr", disk); }
    void ConvertDiskToBasic(std::string&, int32_t disk) override { add("ConvertDiskToBasic", disk); }
    void ConvertDiskToDynamic(std::string&, int32_t disk) override { add("ConvertDiskToDynamic", disk); }
    void WipeDisk(std::string&, int32_t disk, int32_t) override { add("WipeDisk", disk); }

private:
    void add(const char* name, int32_t disk) { calls << QString("%1 %2").arg(name).arg(disk); }
    void add(const char* name, const std::string& letter)
    {
        calls << QString("%1 \"%2\"").arg(name, QString::fromStdString(letter));
    }
};

// A scan's thread object with tools that only write down their calls.
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
        own = std::make_unique<RecScanThread>(host.bridge());
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

TEST_F(RecActions, DiskSmart_ChecksTheDisk)
{
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
    machine = {diskMap(6, {})};
    runScanFrom(1);
    EXPECT_EQ(act(), QStringList("DiskHealthCheck 6"));
}

TEST_F(RecActions, SystemDriveWithRoomElsewhere_MigratesData)
{
    machine = {diskMap(0, {partitionMap(0, "C", 10 * kGib, 9 * kGib)}),
               diskMap(1, {partitionMap(1, "E", 100 * kGib, 0)})};
    runScanFrom(2);
    EXPECT_EQ(act(), QStringList("MigrateSystemDriveData"));
}

TEST_F(RecActions, SystemDriveWithRoomBeside_AdjustsTheWholeDirectory)
{
    machine = {diskMap(0, {partitionMap(0, "C", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)})};
    runScanFrom(2);
    EXPECT_EQ(act(), QStringList("SmartSpaceAdjustment \"C:\\WINDOWS\\SYSTEM32\""));
}

TEST_F(RecActions, DriveShortOfSpace_AdjustsIt)
{
    machine = {diskMap(0, {partitionMap(0, "D", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)})};
    runScanFrom(3);
    EXPECT_EQ(act(), QStringList("SmartSpaceAdjustment \"D\""));
}

TEST_F(RecActions, LargeMbrDisk_ConvertsIt)
{
    machine = {diskMap(4, {}, {{"isGPT", false}, {"size", qlonglong(2199023255553)}})};
    runScanFrom(4);
    EXPECT_EQ(act(), QStringList("ConvertDiskToGpt 4"));
}

TEST_F(RecActions, LargeFat32Drive_ConvertsIt)
{
    machine = {
        diskMap(2, {partitionMap(2, "F", 34359738369, 0, {{"fsString", "FAT32"}})}, {{"isUSB", true}})};
    runScanFrom(5);
    EXPECT_EQ(act(), QStringList("ConvertPartitionToExfat \"F\""));
}

TEST_F(RecActions, BootEntries_RepairTheBoot)
{
    installBootChecker("echo FindErrorItem\nexit 1\n");
    runScanFrom(6);
    EXPECT_EQ(act(), QStringList("RepairWindowsBoot"));
}

TEST_F(RecActions, UnalignedSsd_AlignsIt)
{
    host.spec("toolbox").answer("check4kAlign", false);
    machine = {diskMap(5, {})};
    runScanFrom(7);
    EXPECT_EQ(act(), QStringList("AlignDiskTo4k 5"));
}

TEST_F(RecActions, BitLockerSystemDrive_CreatesAMediumOnNoDiskInParticular)
{
    machine = {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib, {{"bltState", 2}})})};
    runScanFrom(8);
    EXPECT_EQ(act(), QStringList("CreateBootableUsbByDisk -1"));
}

TEST_F(RecActions, SlowBootDisk_DoesNothing)
{
    machine = {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib)}, {{"isSSD", false}})};
    runScanFrom(9);
    ASSERT_TRUE(own->hasResult());
    EXPECT_EQ(act(), QStringList());
}

TEST_F(RecActions, RawPartition_RepairsIt)
{
    host.spec("partitionrecovery").answer("isRawPart", true);
    machine = {diskMap(1, {partitionMap(1, "g", kGib, 0)})};
    runScanFrom(10);
    EXPECT_EQ(act(), QStringList("RepairRawOrDamagedPartition \"G\""));
}

TEST_F(RecActions, LockedBitLockerDrive_FindsItsKey)
{
    machine = {diskMap(1, {partitionMap(1, "g", kGib, 0, {{"bltState", 3}})})};
    runScanFrom(11);
    EXPECT_EQ(act(), QStringList("RetrieveBitLockerRecoveryKey \"g\""));
}

TEST_F(RecActions, NothingFound_DoesNothing)
{
    runScanFrom(0);
    EXPECT_EQ(act(), QStringList());
}

// The actions that need no tool end there as well.
TEST_F(RecActions, WithoutAToolHandler_OpensNoAddressAndAsksForNoBootDisk)
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

// The keys whose records no user can accept have their tools all the same.
TEST_F(RecActions, KeyOfAnAgentsFunction_StandsForItsTool)
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

TEST_F(RecActions, ReferralRecord_GoesBeforeTheWin11Page)
{
    refer("disk_health");
    EXPECT_EQ(act({{"callByWin11Checker", true}, {"checkResultType", 1}}), QStringList("DiskHealthCheck -1"));
}

// --- the Windows 11 action

TEST_F(RecActions, Win11Page_GoesBeforeTheCaseThatWasFound)
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

TEST_F(RecActions, OpenUrl_GivesTheHostsAnswer)
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

TEST_F(Answers, SomethingElseThanAMap_CountsAsTheAction)
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

TEST_F(Answers, BeforeTheFirstScan_DoNothingAtAll)
{
    build();
    startService();
    answer({{"callByWin11Checker", true}, {"checkResultType", 0}});
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_FALSE(QFile::exists(application.folder() + "/recscan.info"));
}

TEST_F(Answers, WithoutTheService_DoNothingAtAll)
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

TEST_F(Answers, AfterAScanWithoutARecord_SaveTheStateAndDoNothingMore)
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

TEST_F(Answers, TheAction_RunsOnTheApplicationThreadAndPassesNoGate)
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

} // namespace

// Every case through a whole scan: the inventory, the record, the answer, and the calls of the host.
#include "tests/recscan/ExpectedTexts.h"
#include "tests/recscan/ScanFixture.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <functional>
#include <vector>

namespace {

constexpr qint64 kTwoTib = 2199023255552;

QString filled(const char* text, const QString& value)
{
    return QString(text).replace("%1", value).replace("%2", value);
}

class ScanCases : public ScanFixture
{
protected:
    // Makes the system partition low on space, with these partitions on its disk.
    void fillSystemDrive(const QVariantList& onItsDisk, const QVariantList& otherDisks = {})
    {
        machine =
            QVariantList{diskMap(0, QVariantList{partitionMap(0, "C", 10 * kGib, 9 * kGib)} + onItsDisk)} +
            otherDisks;
    }
    void bootDisks(const QVariantList& disks) { host.spec("deviceMgr").answer("bootDisks", disks); }
    void enableWin11() { host.spec("partitionmanager").answer("isWin11CheckerEnable", true); }
    // Answers with the first button and returns the host calls.
    QStringList accept(const QVariantMap& more = {})
    {
        startService();
        host.recorder().clear();
        QVariantMap map = more;
        map.insert("result", 0);
        answer(map);
        return hostCalls();
    }
};

const QString kDisks = QStringLiteral("deviceMgr.disks list[int:3,bool:false]");
const QString kClose = QStringLiteral("window.closeGuide list[invalid]");

// --- case 0

TEST_F(ScanCases, Win10_BootDiskOfMbr_OffersTheConversionOfTheSystemDisk)
{
    enableWin11();
    machine = {diskMap(3, {partitionMap(3, "C", 200 * kGib, 100 * kGib)})};
    bootDisks({QVariantMap{{"isOfflineBoot", true}, {"isGPT", true}, {"diskIndex", 9}},
               QVariantMap{{"isOfflineBoot", false}, {"isGPT", false}, {"diskIndex", 5}}});
    const QVariantMap record = scanFrom(0);
    EXPECT_EQ(
        typed(withoutTime(record)),
        "map{buttons=list[QString:\"Convert today\",QString:\"Cancel\"],checkResultType=int:1,default=int:0,"
        "msg=QString:\"" +
            QString(kTextNeedsGpt) + "\"}");
    EXPECT_EQ(hostCalls(), QStringList({"partitionmanager.isWin11CheckerEnable list[]",
                                        "deviceMgr.bootDisks list[int:0,bool:true]"}));
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"0\"}"));
    EXPECT_EQ(accept({{"checkResultType", 1}}), QStringList({kClose, kDisks}));
    EXPECT_EQ(typed(conversions), "list[map{funIdx=int:0,info=map{diskIndex=int:3}}]");
    EXPECT_EQ(state(), stateBytes(1, 1));
}

TEST_F(ScanCases, Win10_CheckerIsCalledOnTheApplicationThreadAndBootDisksOnTheScanThread)
{
    enableWin11();
    scanFrom(0);
    const auto calls = host.recorder().calls();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[0].thread, QCoreApplication::instance()->thread());
    EXPECT_NE(calls[1].thread, QCoreApplication::instance()->thread());
}

TEST_F(ScanCases, Win10_BootDiskOfGptAndCheckFails_OffersUpgradeOptions)
{
    enableWin11();
    bootDisks({QVariantMap{{"isGPT", true}}});
    EXPECT_EQ(typed(withoutTime(scanFrom(0))),
              "map{buttons=list[QString:\"See upgrade "
              "options\"],checkResultType=int:2,default=int:0,msg=QString:\"" +
                  QString(kTextNotReady) + "\"}");
}

TEST_F(ScanCases, Win10_BootDiskOfGptAndCheckPasses_OffersToLearnMore)
{
    enableWin11();
    passReadinessChecks();
    bootDisks({QVariantMap{{"isGPT", true}}});
    EXPECT_EQ(typed(withoutTime(scanFrom(0))),
              "map{buttons=list[QString:\"Learn more\"],checkResultType=int:0,default=int:0,msg=QString:\"" +
                  QString(kTextReady) + "\"}");
    setRemoteConfig("{\"url_win11_hw_ready\":\"http://ready\"}");
    EXPECT_EQ(accept({{"checkResultType", 0}}), QStringList("window.openUrl list[QString:\"http://ready\"]"));
}

TEST_F(ScanCases, Win10_CheckerSwitchedOff_DoesNotFire)
{
    EXPECT_EQ(scanFrom(0), QVariantMap());
    EXPECT_FALSE(host.recorder().sequence().contains("deviceMgr.bootDisks"));
}

TEST_F(ScanCases, Win10_WithoutTheHostsMethod_DoesNotFire)
{
    host.spec("partitionmanager").remove("isWin11CheckerEnable");
    EXPECT_EQ(scanFrom(0), QVariantMap());
}

TEST_F(ScanCases, Win10_WithoutThePage_DoesNotFire)
{
    host.without("partitionmanager");
    EXPECT_EQ(scanFrom(0), QVariantMap());
}

TEST_F(ScanCases, Win10_WithoutBootDisks_CountsAsNotGpt)
{
    enableWin11();
    host.spec("deviceMgr").remove("bootDisks");
    EXPECT_EQ(scanFrom(0).value("checkResultType"), QVariant(1));
}

TEST_F(ScanCases, Win10_WithoutDeviceManager_CountsAsNotGpt)
{
    enableWin11();
    host.without("deviceMgr");
    EXPECT_EQ(scanFrom(0).value("checkResultType"), QVariant(1));
}

TEST_F(ScanCases, Win10_OnlyOfflineBootDisks_CountAsNotGpt)
{
    enableWin11();
    bootDisks({QVariantMap{{"isOfflineBoot", true}, {"isGPT", true}}, QVariant("garbage")});
    EXPECT_EQ(scanFrom(0).value("checkResultType"), QVariant(1));
}

TEST_F(ScanCases, Win10_Enabled_PrecedesEveryOtherCase)
{
    enableWin11();
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
    EXPECT_EQ(scanFrom(0).value("msg"), QVariant(QString(kTextNeedsGpt)));
}

// --- case 1

TEST_F(ScanCases, DiskSmart_TheFirstDiskWithAnErrorIsNamedAndChecked)
{
    machine = {diskMap(4, {}), diskMap(2, {}), diskMap(6, {})};
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", [](const QVariantList& arguments) {
        return QVariant(arguments.first().toInt() != 4);
    });
    EXPECT_EQ(typed(withoutTime(scanFrom(1))), plainRecord(filled(kTextDiskSmart, "2")));
    EXPECT_EQ(hostCalls(), QStringList({"partitionmanager.hasDiskSmartInfoError list[int:4]",
                                        "partitionmanager.hasDiskSmartInfoError list[int:2]"}));
    EXPECT_NE(host.recorder().calls().front().thread, QCoreApplication::instance()->thread());
    EXPECT_EQ(accept(), QStringList({kClose, "__zormain.opendiskhealth list[map{diskIndex=int:2}]"}));
}

TEST_F(ScanCases, DiskSmart_NoError_DoesNotFire)
{
    EXPECT_EQ(scanFrom(1), QVariantMap());
    EXPECT_EQ(hostCalls(), QStringList("partitionmanager.hasDiskSmartInfoError list[int:0]"));
}

TEST_F(ScanCases, DiskSmart_WithoutTheHostsMethod_DoesNotFire)
{
    host.spec("partitionmanager").remove("hasDiskSmartInfoError");
    EXPECT_EQ(scanFrom(1), QVariantMap());
}

// --- case 2

TEST_F(ScanCases, SystemDrive_RoomOnItsDisk_OffersSmartLayoutForTheWholeDirectory)
{
    fillSystemDrive({partitionMap(0, "D", 100 * kGib, 0)});
    EXPECT_EQ(typed(withoutTime(scanFrom(2))), plainRecord(filled(kTextSmartLayoutSystem, "C")));
    EXPECT_EQ(hostCalls(), QStringList("partitionmanager.doFunFromAI list[int:1,map{TestFunValid=bool:true,"
                                       "driveLetter=QString:\"C:\\WINDOWS\\SYSTEM32\"}]"));
    EXPECT_EQ(host.recorder().calls().front().thread, QCoreApplication::instance()->thread());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"3\"}"));
    EXPECT_EQ(
        accept(),
        QStringList(
            {"partitionmanager.doFunFromAI list[int:1,map{TestFunValid=bool:true,"
             "driveLetter=QString:\"C:\\WINDOWS\\SYSTEM32\"}]",
             kClose,
             "partitionmanager.doFunFromAI list[int:1,map{driveLetter=QString:\"C:\\WINDOWS\\SYSTEM32\"}]"}));
}

TEST_F(ScanCases, SystemDrive_RoomElsewhere_OffersDataMigrationWithoutAQuestion)
{
    fillSystemDrive({}, {diskMap(1, {partitionMap(1, "E", 100 * kGib, 0)})});
    EXPECT_EQ(typed(withoutTime(scanFrom(2))), plainRecord(filled(kTextMigrate, "C")));
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"2\"}"));
    const QString order =
        "partitionmanager.doFunFromAI list[int:39,map{%1driveLetter=QString:\"C:\\WINDOWS\\SYSTEM32\"}]";
    EXPECT_EQ(accept(), QStringList({order.arg("TestFunValid=bool:true,"), kClose, order.arg("")}));
}

TEST_F(ScanCases, SystemDrive_PageRefuses_ContinuesWithTheNextCaseAndOffersNoMigration)
{
    fillSystemDrive({partitionMap(0, "D", 100 * kGib, 0)},
                    {diskMap(1, {partitionMap(1, "E", 100 * kGib, 0)})});
    host.spec("partitionmanager").answer("doFunFromAI", false);
    EXPECT_EQ(scanFrom(2), QVariantMap());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
}

TEST_F(ScanCases, SystemDrive_PageRefusesThatDriveOnly_TheNextCaseFires)
{
    fillSystemDrive({partitionMap(0, "D", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)});
    host.spec("partitionmanager").answer("doFunFromAI", [](const QVariantList& arguments) {
        return QVariant(arguments.at(1).toMap().value("driveLetter") == QVariant("D"));
    });
    EXPECT_EQ(scanFrom(2).value("msg"), QVariant(filled(kTextSmartLayout, "D")));
}

TEST_F(ScanCases, SystemDrive_WithoutThePagesMethod_DoesNotFire)
{
    fillSystemDrive({partitionMap(0, "D", 100 * kGib, 0)});
    host.spec("partitionmanager").remove("doFunFromAI");
    EXPECT_EQ(scanFrom(2), QVariantMap());
}

// --- case 3

TEST_F(ScanCases, Drive_ShortOfSpace_OffersSmartLayoutForIt)
{
    machine = {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib),
                           partitionMap(0, "D", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)})};
    EXPECT_EQ(typed(withoutTime(scanFrom(3))), plainRecord(filled(kTextSmartLayout, "D")));
    const QString order = "partitionmanager.doFunFromAI list[int:1,map{%1driveLetter=QString:\"D\"}]";
    EXPECT_EQ(accept(), QStringList({order.arg("TestFunValid=bool:true,"), kClose, order.arg("")}));
    EXPECT_EQ(state(), stateBytes(4, 1));
}

TEST_F(ScanCases, Drive_SystemPartition_CountsNeitherAsShortNorAsRoom)
{
    // The drive of the running system is identified by its letter, so its 100 GiB do not count as room.
    machine = {diskMap(
        0, {partitionMap(0, "C", 200 * kGib, 100 * kGib), partitionMap(0, "D", 10 * kGib, 9 * kGib)})};
    EXPECT_EQ(scanFrom(3), QVariantMap());
}

TEST_F(ScanCases, Drive_WithoutThePagesMethod_DoesNotFire)
{
    machine = {diskMap(0, {partitionMap(0, "D", 10 * kGib, 9 * kGib), partitionMap(0, "E", 100 * kGib, 0)})};
    host.spec("partitionmanager").remove("doFunFromAI");
    EXPECT_EQ(scanFrom(3), QVariantMap());
}

// --- cases 4 to 11

struct CaseRow
{
    const char* behaviour;
    int index;
    QVariantList machine; ///< empty: that of the fixture
    QString record;
    QStringList calls; ///< after the first button
    QString conversion = {};
    std::function<void(RecordingHost&)> prepare = {};
};

void PrintTo(const CaseRow& row, std::ostream* out)
{
    *out << row.behaviour;
}

QVariantMap systemDisk(const QVariantMap& diskKeys = {}, const QVariantMap& partitionKeys = {})
{
    return diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib, partitionKeys)}, diskKeys);
}

void misalign(RecordingHost& host)
{
    host.spec("toolbox").answer("check4kAlign", false);
}

void makeRaw(RecordingHost& host)
{
    host.spec("partitionrecovery").answer("isRawPart", [](const QVariantList& arguments) {
        return QVariant(arguments.first().toMap().value("driveLetter") == QVariant("g:"));
    });
}

std::vector<CaseRow> diskRows()
{
    const QVariantMap largeMbr{{"isGPT", false}, {"size", qlonglong(kTwoTib + 1)}};
    const QVariantMap fat32 = partitionMap(2, "F", 34359738369, 0, {{"fsString", "FAT32"}});
    return {
        {"LargeMbrDisk_OffersTheConversion",
         4,
         {systemDisk(), diskMap(2, {}, largeMbr)},
         plainRecord(filled(kTextWastedMbr, "2")),
         {kClose, kDisks},
         "map{funIdx=int:0,info=map{diskIndex=int:2}}"},
        {"LargeFat32Drive_OffersTheConversion",
         5,
         {systemDisk(), diskMap(2, {fat32}, {{"isUSB", true}})},
         plainRecord(filled(kTextFat32, "2")),
         {kDisks},
         "map{funIdx=int:6,info=map{diskIndex=int:-1,driveLetter=QString:\"F\"}}"},
        {"BootEntries_OfferTheRepair",
         6,
         {},
         plainRecord(kTextBootEntries),
         {kClose, "__zormain.bootrepairEnabled list[]", "__zormain.doToolBox list[int:2,map{}]"}},
        {"UnalignedSsd_OffersTheAlignment",
         7,
         {diskMap(5, {})},
         plainRecord(filled(kText4k, "5")),
         {kDisks, kClose, "__zormain.doToolBox list[int:5,map{diskIndex=int:5}]"},
         {},
         misalign},
    };
}

std::vector<CaseRow> driveRows()
{
    const QString medium = "list[map{diskIndex=int:-1,isBurn=bool:false}]";
    return {
        {"BitLockerSystemDrive_OffersABootMedium",
         8,
         {systemDisk({}, {{"bltState", 1}})},
         plainRecord(filled(kTextBitLockerUsb, "C")),
         {kClose, "__zormain.createBootMediaEnabled " + medium, "__zormain.dobmfunction " + medium}},
        {"SlowBootDisk_HasOneButtonAndNoAction",
         9,
         {systemDisk({{"isSSD", false}})},
         "map{buttons=list[QString:\"Got it\"],default=int:0,msg=QString:\"" + QString(kTextSlowBoot) + "\"}",
         {}},
        {"RawPartition_OffersTheRepairWhoseToolIsSwitchedOff",
         10,
         {systemDisk(), diskMap(1, {partitionMap(1, "g:", kGib, 0)})},
         plainRecord(kTextRaw),
         {},
         {},
         makeRaw},
        {"LockedBitLockerDrive_OffersTheKeyFinder",
         11,
         {systemDisk(), diskMap(1, {partitionMap(1, "G", kGib, 0, {{"bltState", 3}})})},
         plainRecord(filled(kTextLocked, "G")),
         {kDisks, kClose,
          "__zormain.doToolBox list[int:10,map{diskIndex=int:-1,driveLetter=QString:\"G\"}]"}},
    };
}

std::vector<CaseRow> caseRows()
{
    std::vector<CaseRow> rows = diskRows();
    for (const CaseRow& row : driveRows())
        rows.push_back(row);
    return rows;
}

class CaseRows : public ScanCases, public testing::WithParamInterface<CaseRow>
{
};

TEST_P(CaseRows, Case_RecommendsAndActsAsItsRowExpects)
{
    const CaseRow& row = GetParam();
    if (row.prepare)
        row.prepare(host);
    if (!row.machine.isEmpty())
        machine = row.machine;
    if (row.index == 6)
        installBootChecker("echo FindErrorItem\nexit 3\n");
    EXPECT_EQ(typed(withoutTime(scanFrom(row.index))), row.record);
    EXPECT_EQ(events("Result_SmartReferScan"),
              QStringList("{\"smart-refer\":\"" + QString::number(row.index) + "\"}"));
    EXPECT_EQ(accept(), row.calls);
    EXPECT_EQ(typed(conversions), "list[" + row.conversion + ']');
    EXPECT_EQ(state(), stateBytes(row.index + 1, 1));
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseRows, testing::ValuesIn(caseRows()),
                         [](const auto& row) { return row.param.behaviour; });

TEST_F(ScanCases, BootEntries_OnArm64_StartNoProcess)
{
    installBootChecker("echo started > \"$0.started\"\necho FindErrorItem\nexit 3\n");
    platform.registry[{"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment",
                       "PROCESSOR_ARCHITECTURE"}] = "ARM64";
    EXPECT_EQ(scanFrom(6), QVariantMap());
    EXPECT_FALSE(QFile::exists(application.root() + "/BootRepair/BootRepair_Console.exe.started"));
}

TEST_F(ScanCases, EmptyDiskList_FindsNothing)
{
    machine.clear();
    EXPECT_EQ(scanFrom(0), QVariantMap());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
}

TEST_F(ScanCases, EmptyHost_FindsNothingAndDoesNotCrash)
{
    for (const QString& name : RecordingHost::contextObjects())
        host.without(name);
    host.without("window").without("__zormain").without("__qml_executer");
    EXPECT_EQ(scanFrom(0), QVariantMap());
}

} // namespace

// The scan thread and its saved state: the order of its steps, the five bytes, and a second run.
#include "tests/recscan/ExpectedTexts.h"
#include "tests/recscan/ScanFixture.h"

#include "recscan/RecScanThread.h"
#include "recscan/ScanStateFile.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"
#include "tools/ZorHandle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>

#include <future>

namespace {

class ScanRun : public ScanFixture
{
protected:
    void failDisk(int disk)
    {
        host.spec("partitionmanager").answer("hasDiskSmartInfoError", [disk](const QVariantList& arguments) {
            return QVariant(arguments.first().toInt() == disk);
        });
    }
    QString smart(int disk) { return QString(kTextDiskSmart).replace("%1", QString::number(disk)); }
};

TEST_F(ScanRun, FirstScan_NothingUsable_TriesAllCasesAndSavesIndex0AndReferralDone)
{
    build();
    EXPECT_TRUE(scan().isEmpty());
    EXPECT_EQ(state(), stateBytes(0, 1));
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList("{\"case-index-start\":\"0\"}"));
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
    EXPECT_EQ(hostCalls(), QStringList({"partitionmanager.isWin11CheckerEnable list[]",
                                        "partitionmanager.hasDiskSmartInfoError list[int:0]"}));
}

TEST_F(ScanRun, FirstScan_ACaseFires_FileStillContainsIndex0)
{
    failDisk(0);
    build();
    ASSERT_EQ(scan().size(), 1);
    EXPECT_EQ(state(), stateBytes(0, 1));
}

TEST_F(ScanRun, FirstScan_SavesTheStateAfterTheReferralRuleAndBeforeTheFirstCase)
{
    QByteArray duringReferral = "not asked";
    QByteArray duringCases = "not asked";
    host.spec("__qml_executer").answer("sendUserInfo", [&](const QVariantList& arguments) {
        if (arguments.value(1).toString() == "Info_SmartReferScan")
            duringReferral = state();
        return QVariant();
    });
    host.spec("partitionmanager").answer("isWin11CheckerEnable", [&](const QVariantList&) {
        duringCases = state();
        return QVariant(false);
    });
    build();
    scan();
    EXPECT_EQ(duringReferral, QByteArray());
    EXPECT_EQ(duringCases, stateBytes(0, 1));
}

TEST_F(ScanRun, ReferralNumberWithoutAMatch_RunsTheCasesOnlyInTheNextScan)
{
    setReferralNumber("ab123");
    failDisk(0);
    build();
    EXPECT_TRUE(scan().isEmpty());
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList("{\"case-index-start\":\"seo 123\"}"));
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"seo 123\"}"));
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(state(), stateBytes(0, 1));
    host.recorder().clear();
    const QVariantList records = scan();
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records.first().toMap().value("msg"), QVariant(smart(0)));
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"1\"}"));
}

TEST_F(ScanRun, AnsweredWithEitherButton_MovesTheIndexAfterTheCase)
{
    failDisk(0);
    build();
    startService();
    ASSERT_EQ(scan().size(), 1);
    EXPECT_EQ(state(), stateBytes(0, 1));
    answer({{"result", 1}});
    EXPECT_EQ(state(), stateBytes(2, 1));
    setState(stateBytes(0, 1));
    answer({{"result", 0}});
    EXPECT_EQ(state(), stateBytes(2, 1));
}

TEST_F(ScanRun, Case2FiresFromIndex0_FileContains0UntilTheAnswerAnd3AfterIt)
{
    machine = {diskMap(0, {partitionMap(0, "C", 10 * kGib, 9 * kGib)}),
               diskMap(1, {partitionMap(1, "E", 100 * kGib, 0)})};
    setState(stateBytes(0, 1));
    build();
    startService();
    ASSERT_EQ(scan().size(), 1);
    EXPECT_EQ(state(), stateBytes(0, 1));
    answer({{"result", 1}});
    EXPECT_EQ(state(), stateBytes(3, 1));
}

TEST_F(ScanRun, SavedIndexOf12OrMore_RunsNoCase)
{
    failDisk(0);
    for (const qint32 index : {12, 13, 2147483647}) {
        setState(stateBytes(index, 1));
        if (host.bridge() == nullptr)
            build();
        host.recorder().clear();
        EXPECT_TRUE(scan().isEmpty());
        EXPECT_EQ(hostCalls(), QStringList());
        EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
        EXPECT_EQ(state(), stateBytes(index, 1));
    }
}

TEST_F(ScanRun, NegativeIndex_StartsWithCase0)
{
    failDisk(0);
    for (const qint32 index : {-1, -2147483647 - 1}) {
        setState(stateBytes(index, 1));
        if (host.bridge() == nullptr)
            build();
        ASSERT_EQ(scan().size(), 1);
    }
    startService();
    answer({{"result", 1}});
    // The second run of the object already has its record and tries no case, so the index is unchanged.
    EXPECT_EQ(state(), stateBytes(-2147483647 - 1, 1));
}

TEST_F(ScanRun, NegativeIndex_OneRun_LeavesTheIndexAfterTheCase)
{
    failDisk(0);
    // The walk up to case 0 costs nothing at any distance.
    EXPECT_EQ(scanFrom(-2147483647 - 1).value("msg"), QVariant(smart(0)));
    startService();
    answer({{"result", 1}});
    EXPECT_EQ(state(), stateBytes(2, 1));
}

TEST_F(ScanRun, SecondScanAfterARecord_EmitsTheSameRecordWithItsOldTime)
{
    failDisk(0);
    const QVariantMap first = scanFrom(0);
    ASSERT_FALSE(first.isEmpty());
    host.recorder().clear();
    // The times of records have a resolution of one second.
    ASSERT_TRUE(
        pumpUntil([&] { return QDateTime::currentSecsSinceEpoch() > first.value("time").toLongLong(); }));
    const QVariantList again = scan();
    ASSERT_EQ(again.size(), 1);
    EXPECT_EQ(again.first().toMap(), first);
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"1\"}"));
}

TEST_F(ScanRun, SecondScanAfterAnAnswer_EmitsTheSameRecordAndActsAgain)
{
    failDisk(0);
    ASSERT_FALSE(scanFrom(0).isEmpty());
    startService();
    answer({{"result", 1}});
    ASSERT_EQ(scan().size(), 1);
    host.recorder().clear();
    answer({{"result", 0}});
    EXPECT_TRUE(hostCalls().join('\n').contains("__zormain.opendiskhealth list[map{diskIndex=int:0}]"));
}

TEST_F(ScanRun, SecondScanAfterTheDisksChanged_SeesTheFirstSnapshot)
{
    setState(stateBytes(1, 1));
    build();
    EXPECT_TRUE(scan().isEmpty());
    host.bridge()->setDiskInfo({diskMap(7, {}), diskMap(8, {})});
    host.recorder().clear();
    scan();
    EXPECT_EQ(hostCalls(), QStringList("partitionmanager.hasDiskSmartInfoError list[int:0]"));
}

TEST_F(ScanRun, SecondScanWithTheFileRemoved_LeavesReferralUndoneWhileARecordIsHeld)
{
    failDisk(0);
    ASSERT_FALSE(scanFrom(0).isEmpty());
    QFile::remove(application.folder() + "/recscan.info");
    host.recorder().clear();
    EXPECT_EQ(scan().size(), 1);
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList());
    EXPECT_EQ(state(), stateBytes(0, 0));
}

TEST_F(ScanRun, BeginTwiceWhileAScanRuns_HasNoSecondEffect)
{
    std::promise<void> reached;
    std::promise<void> go;
    auto mayGo = go.get_future().share();
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", [&, mayGo](const QVariantList&) {
        reached.set_value();
        mayGo.wait();
        return QVariant(true);
    });
    setState(stateBytes(1, 1));
    build();
    host.bridge()->beginRecScan();
    auto there = reached.get_future();
    ASSERT_TRUE(
        pumpUntil([&] { return there.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    RecScanThread* first = thread();
    host.bridge()->beginRecScan();
    EXPECT_EQ(thread(), first);
    EXPECT_EQ(host.bridge()->findChildren<RecScanThread*>().size(), 1);
    go.set_value();
    ASSERT_TRUE(waitForScan());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(emitted.size(), 1);
    EXPECT_EQ(events("Result_SmartReferScan").size(), 1);
}

TEST_F(ScanRun, StopRecScan_LeavesTheScanRunning)
{
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", true);
    setState(stateBytes(0, 1));
    build();
    host.bridge()->beginRecScan();
    host.bridge()->stopRecScan();
    ASSERT_TRUE(waitForScan());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(emitted.size(), 1);
}

TEST_F(ScanRun, RequestStop_EndsTheWalkAfterTheCaseInProgress)
{
    build();
    setState(stateBytes(1, 1));
    scan();
    thread()->requestStop();
    host.recorder().clear();
    EXPECT_TRUE(scan().isEmpty());
    EXPECT_EQ(hostCalls(), QStringList());
    EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
}

TEST_F(ScanRun, Release_SetsTheStopFlag)
{
    setState(stateBytes(1, 1));
    build();
    scan();
    EXPECT_EQ(hostCalls().size(), 1);
    release();
    host.recorder().clear();
    scan();
    EXPECT_EQ(hostCalls(), QStringList());
}

TEST_F(ScanRun, RequestStopInsideACase_TriesNoFurtherCase)
{
    host.spec("partitionmanager").answer("isWin11CheckerEnable", [this](const QVariantList&) {
        thread()->requestStop();
        return QVariant(false);
    });
    setState(stateBytes(0, 1));
    build();
    scan();
    EXPECT_EQ(hostCalls(), QStringList("partitionmanager.isWin11CheckerEnable list[]"));
}

TEST_F(ScanRun, RequestStopBeforeTheFirstScan_LeavesTheReferralRuleForLater)
{
    setState(stateBytes(3, 0));
    build();
    RecScanThread scanThread(host.bridge(), *host.pages());
    scanThread.setScanEngine(host.engine());
    scanThread.requestStop();
    scanThread.start();
    ASSERT_TRUE(waitForScan(scanThread));
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList());
    EXPECT_EQ(state(), stateBytes(3, 0));
    EXPECT_FALSE(scanThread.hasResult());
    EXPECT_FALSE(scanThread.result().isValid());
}

TEST_F(ScanRun, FirstScan_LogsItsBeginOnce)
{
    build();
    scan();
    scan();
    EXPECT_EQ(application.read(application.folder() + "/aibridge.log"), "rec scan begin\n");
}

TEST_F(ScanRun, StateFileThatCannotBeWritten_IsIgnored)
{
    QDir().mkpath(application.folder() + "/recscan.info");
    failDisk(0);
    build();
    EXPECT_EQ(scan().size(), 1);
    EXPECT_TRUE(QFileInfo(application.folder() + "/recscan.info").isDir());
}

TEST_F(ScanRun, StateFileThatCannotBeRead_CountsAsAFirstScan)
{
    QDir().mkpath(application.folder() + "/recscan.info");
    build();
    scan();
    EXPECT_EQ(events("Info_SmartReferScan"), QStringList("{\"case-index-start\":\"0\"}"));
}

// --- the five bytes

class StateFile : public testing::Test
{
protected:
    void put(const QByteArray& bytes) { application.write(application.folder() + "/recscan.info", bytes); }
    QByteArray bytes() const { return application.read(application.folder() + "/recscan.info"); }
    ScratchApplication application;
};

TEST_F(StateFile, FolderOfTheHostsProperty_ReplacesTheApplicationsFolder)
{
    QTemporaryDir folder;
    QCoreApplication::instance()->setProperty("recscanFolder", folder.path());
    writeScanState({3, true});
    EXPECT_EQ(readScanState().nextCaseIndex, 3);
    EXPECT_TRUE(QFile::exists(folder.filePath("recscan.info")));
    QCoreApplication::instance()->setProperty("recscanFolder", QVariant());
    EXPECT_EQ(readScanState().nextCaseIndex, 0);
}

TEST_F(StateFile, Missing_ReadsAsIndex0AndNotDone)
{
    const ScanState state = readScanState();
    EXPECT_EQ(state.nextCaseIndex, 0);
    EXPECT_FALSE(state.referralDone);
}

TEST_F(StateFile, TruncatedAtEveryLength_ReadsTheCompleteValues)
{
    const QByteArray whole = QByteArray::fromHex("000000070155");
    for (int length = 0; length <= 6; ++length) {
        put(whole.left(length));
        const ScanState state = readScanState();
        EXPECT_EQ(state.nextCaseIndex, length >= 4 ? 7 : 0) << length;
        EXPECT_EQ(state.referralDone, length >= 5) << length;
    }
}

TEST_F(StateFile, EachByteFlipped_ReadsAsTheResultingNumber)
{
    const qint32 expected[] = {int(0xff000007), 0x00ff0007, 0x0000ff07, 0x000000f8, 7};
    for (int place = 0; place < 5; ++place) {
        QByteArray flipped = QByteArray::fromHex("0000000701");
        flipped[place] = static_cast<char>(~flipped.at(place));
        put(flipped);
        const ScanState state = readScanState();
        EXPECT_EQ(state.nextCaseIndex, expected[place]) << place;
        EXPECT_TRUE(state.referralDone) << place;
    }
    put(QByteArray::fromHex("0000000700"));
    EXPECT_FALSE(readScanState().referralDone);
}

TEST_F(StateFile, Written_IsFiveBytesInBigEndianOrder)
{
    writeScanState({0x01020304, true});
    EXPECT_EQ(bytes().toHex(), "0102030401");
    writeScanState({-1, false});
    EXPECT_EQ(bytes().toHex(), "ffffffff00");
}

TEST_F(StateFile, WrittenOverALongerFile_LeavesNoTail)
{
    put(QByteArray(100, 'x'));
    writeScanState({3, true});
    EXPECT_EQ(bytes().toHex(), "0000000301");
}

TEST_F(ScanRun, WholeScanOnEveryTruncatedAndFlippedFile_EndsWithoutACrash)
{
    build();
    QList<QByteArray> files;
    for (int length = 0; length <= 6; ++length)
        files << QByteArray::fromHex("000000070155").left(length);
    for (int place = 0; place < 5; ++place) {
        files << QByteArray::fromHex("0000000701");
        files.last()[place] = static_cast<char>(~files.last().at(place));
    }
    for (const QByteArray& file : files) {
        setState(file);
        host.recorder().clear();
        EXPECT_TRUE(scan().isEmpty());
        EXPECT_EQ(events("Result_SmartReferScan"), QStringList("{\"smart-refer\":\"-1\"}"));
        EXPECT_EQ(events("Info_SmartReferScan").size(), file.size() < 5 ? 1 : 0);
    }
}

// --- together with other operations

TEST_F(ScanRun, InventoryRefreshedWhileAScanRuns_BothEnd)
{
    setState(stateBytes(0, 1));
    build();
    host.bridge()->beginRecScan();
    for (int round = 0; round < 200; ++round) {
        host.bridge()->setDiskInfo({diskMap(round, {partitionMap(round, "C", kGib, 0)})});
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(waitForScan());
}

TEST_F(ScanRun, ToolsThatRunWhileAScanRuns_AllEnd)
{
    setState(stateBytes(0, 1));
    build();
    CZorHandle tools;
    tools.setBridge(host.toolBridge());
    host.bridge()->beginRecScan();
    std::string reply;
    runOnOtherThread([&] {
        for (int round = 0; round < 50; ++round) {
            std::vector<DiskInfo> disks;
            tools.ListAllDisks(disks);
            tools.DeletePartition(reply, "D");
        }
    });
    EXPECT_EQ(reply, answers::queued);
    EXPECT_TRUE(waitForScan());
    EXPECT_EQ(events("Result_SmartReferScan").size(), 1);
}

TEST_F(ScanRun, AnswerOfTheWin11PageWhileAScanRuns_BothEnd)
{
    std::promise<void> go;
    auto mayGo = go.get_future().share();
    host.spec("partitionmanager").answer("hasDiskSmartInfoError", [mayGo](const QVariantList&) {
        mayGo.wait();
        return QVariant(true);
    });
    setState(stateBytes(1, 1));
    build();
    startService();
    host.bridge()->beginRecScan();
    answer({{"callByWin11Checker", true}, {"checkResultType", 0}});
    EXPECT_TRUE(hostCalls().contains("window.openUrl list[QString:\"\"]"));
    go.set_value();
    ASSERT_TRUE(waitForScan());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(emitted.size(), 1);
}

} // namespace

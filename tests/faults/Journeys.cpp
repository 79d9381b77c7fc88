#include "tests/faults/Journeys.h"
#include "tests/support/AIBridgeAccess.h"

#include "plugin/ComponentMgr.h"
#include "recscan/RecScanThread.h"
#include "tests/faults/FaultHost.h"
#include "tests/support/FakeNetstat.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScratchApplication.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"
#include "tools/CloneTask.h"
#include "tools/ConversionTask.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

const char* const kConversionCheck = "ConversionCheck";
const char* const kPageCalls = "PageCalls";
const char* const kLanguage = "Language";

namespace {

constexpr qlonglong kGib = 1073741824;

QVariantMap with(QVariantMap map, const QVariantMap& more)
{
    for (auto it = more.begin(); it != more.end(); ++it)
        map.insert(it.key(), it.value());
    return map;
}

QVariantMap disk(int index, const QVariantList& partitions, const QVariantMap& more = {})
{
    return with({{"diskIndex", index},
                 {"size", 500 * kGib},
                 {"isGPT", true},
                 {"isSSD", true},
                 {"partitions", partitions}},
                more);
}

// A partition of 200 GiB.
QVariantMap part(int index, const char* letter, qlonglong usedGib, const QVariantMap& more = {})
{
    return with({{"diskIndex", index},
                 {"driveLetter", QString::fromLatin1(letter)},
                 {"size", 200 * kGib},
                 {"usedSize", usedGib * kGib},
                 {"fsString", "NTFS"}},
                more);
}

// On this host only the case of the journey fires.
void quiet(RecordingHost& host)
{
    host.spec("partitionmanager").answer("isWin11CheckerEnable", QVariant(false));
    host.spec("toolbox").answer("check4kAlign", QVariant(true));
    host.spec("partitionrecovery").answer("isRawPart", QVariant(false));
    const QVariantMap boot{{"diskIndex", 1}, {"isGPT", true}, {"isOfflineBoot", false}};
    host.spec("deviceMgr").answer("bootDisks", QVariant(QVariantList{boot}));
}

std::function<void(RecordingHost&)> quietBut(const char* object, const char* member, bool answer)
{
    return [=](RecordingHost& host) {
        quiet(host);
        host.spec(object).answer(member, QVariant(answer));
    };
}

QString callsOf(const std::vector<HostCallRecord>& records)
{
    QStringList texts;
    for (const HostCallRecord& record : records)
        texts << record.member;
    return texts.join(' ');
}

QString conversionText(const QVariant& task)
{
    const QVariantMap info = task.toMap().value("info").toMap();
    return QStringLiteral("sigConvertResult:%1:%2/%3")
        .arg(task.toMap().value("funIdx").toInt())
        .arg(info.value("diskIndex").toInt())
        .arg(info.size());
}

// Starts the service, which creates the handler of the answers, on a separate port.
void startService(AIBridge* bridge)
{
    const ReservedPort port;
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port.number())));
    bridge->init();
    ASSERT_TRUE(
        pumpUntil([bridge] { return AIBridgeAccess::serverThread(*bridge)->toolHandler() != nullptr; }));
}

QVariantMap scan(AIBridge* bridge)
{
    QVariantMap record;
    QObject::connect(bridge, &AIBridge::sigRecScanResult,
                     [&record](const QVariant& v) { record = v.toMap(); });
    bridge->beginRecScan();
    RecScanThread* thread = AIBridgeAccess::scanThread(*bridge);
    EXPECT_TRUE(pumpUntil([thread] { return thread->isFinished(); }) && thread->wait(20000));
    QCoreApplication::sendPostedEvents();
    QObject::disconnect(bridge, &AIBridge::sigRecScanResult, nullptr, nullptr);
    return record;
}

// Returns after the action of the answer, because this timer is due later.
void give(AIBridge* bridge, const QVariantMap& answer)
{
    bool over = false;
    bridge->doRecOperation(answer);
    QTimer::singleShot(101, Qt::PreciseTimer, bridge, [&over] { over = true; });
    EXPECT_TRUE(pumpUntil([&over] { return over; }));
}

// The host objects to both conversions of a partition table.
void complain(RecordingHost& host)
{
    host.spec("diskconverter")
        .answer("isMBR2GPTValid", QVariant("no good"))
        .answer("isGPT2MBRValid", QVariant("no good"));
}

} // namespace

const std::vector<Journey>& scanJourneys()
{
    static const QVariantMap accept{{"result", 0}};
    static const QVariantList plain{disk(0, {part(0, "C", 100)})};
    static const std::vector<Journey> all{
        {"UpgradeOptions", 0, plain, quietBut("partitionmanager", "isWin11CheckerEnable", true), accept,
         "isWin11CheckerEnable bootDisks sendUserInfo | Windows 10 support ends soon! Your device may not | "
         "openUrl"},
        {"DiskSmart", 1, plain, quietBut("partitionmanager", "hasDiskSmartInfoError", true), accept,
         "hasDiskSmartInfoError sendUserInfo | We have detected an anomaly in the health status | closeGuide "
         "opendiskhealth"},
        {"SmartLayout",
         2,
         {disk(0, {part(0, "C", 199), part(0, "D", 1)})},
         quiet,
         accept,
         "doFunFromAI sendUserInfo | Drive C has low space. We recommend using \"Smart | doFunFromAI "
         "closeGuide "
         "doFunFromAI"},
        {"DataMigration",
         2,
         {disk(0, {part(0, "C", 199)}), disk(1, {part(1, "E", 1)})},
         quiet,
         accept,
         "sendUserInfo | Drive C has low space. We recommend using the | doFunFromAI closeGuide doFunFromAI"},
        {"DriveSpace", 3, plain + QVariantList{disk(1, {part(1, "E:", 199), part(1, "F:", 1)})}, quiet,
         accept,
         "doFunFromAI sendUserInfo | Drive E: has low space. We recommend using \"Smart | doFunFromAI "
         "closeGuide doFunFromAI"},
        {"WastedMbr", 4, plain + QVariantList{disk(1, {}, {{"isGPT", false}, {"size", 3000 * kGib}})}, quiet,
         accept,
         "sendUserInfo | Due to incorrect partition table settings on disk 1, | closeGuide disks "
         "sigConvertResult:0:1/3"},
        {"LargeFat32", 5,
         plain + QVariantList{disk(1, {part(1, "E:", 1, {{"fsString", "FAT32"}})}, {{"isUSB", true}})}, quiet,
         accept,
         "sendUserInfo | We recommend converting the file system of the large | disks "
         "sigConvertResult:6:1/3"},
        {"BootEntries", 6, plain, quiet, accept,
         "sendUserInfo | Invalid or duplicate boot entries were found in the | closeGuide bootrepairEnabled "
         "doToolBox"},
        {"Alignment", 7, plain, quietBut("toolbox", "check4kAlign", false), accept,
         "sendUserInfo | The 0 drive on the SSD is not 4K | disks closeGuide doToolBox"},
        {"BitLockerUsb",
         8,
         {disk(0, {part(0, "C", 100, {{"bltState", 1}})})},
         quiet,
         accept,
         "sendUserInfo | For users with BitLocker encryption on C drive, we | closeGuide "
         "createBootMediaEnabled dobmfunction"},
        {"SlowBootDisk",
         9,
         {disk(0, {part(0, "C", 100)}, {{"isSSD", false}})},
         quiet,
         accept,
         "sendUserInfo | The performance of this machine is significantly affected by | "},
        {"RawPartition", 10, plain, quietBut("partitionrecovery", "isRawPart", true), accept,
         "sendUserInfo | A Raw partition was detected on the system. We | "},
        {"BitLockerLocked", 11, plain + QVariantList{disk(1, {part(1, "E:", 1, {{"bltState", 3}})})}, quiet,
         accept, "sendUserInfo | Drive E: is locked by BitLocker. You can use | disks closeGuide doToolBox"},
        {"CheckerPage",
         12,
         plain,
         quiet,
         {{"callByWin11Checker", true}, {"checkResultType", 1}},
         "sendUserInfo |  | bootDisks closeGuide disks sigConvertResult:0:1/3"},
    };
    return all;
}

QString outcomeOf(const Journey& journey, const FaultCase& row)
{
    const ScratchApplication application;
    FakePlatform platform;
    const Platform::Scope scope(platform);
    qputenv("AIBRIDGE_UEFI", "1");
    if (journey.firstCase == 6)
        ScratchApplication::script(application.root() + "/BootRepair/BootRepair_Console.exe",
                                   "echo FindErrorItem\nexit 1\n");
    ScratchApplication::write(application.folder() + "/recscan.info",
                              QByteArray(3, '\0') + char(journey.firstCase) + '\1');
    FaultHost host(row, journey.prepare);
    host.host().build();
    AIBridge* bridge = host.host().bridge();
    bridge->setDiskInfo(journey.machine);
    QStringList conversions;
    QObject::connect(bridge, &AIBridge::sigConvertResult,
                     [&](const QVariant& v) { conversions << ' ' + conversionText(v); });
    startService(bridge);
    Recorder& recorder = host.host().recorder();
    recorder.clear();
    const QVariantMap record = scan(bridge);
    const QString scanned = callsOf(recorder.calls());
    recorder.clear();
    QVariantMap answer = journey.answer;
    if (record.contains("checkResultType"))
        answer["checkResultType"] = record["checkResultType"];
    give(bridge, answer);
    AIBridgeAccess::release(*bridge);
    const QString acted = (callsOf(recorder.calls()) + conversions.join(QString())).trimmed();
    if (row.fault == Throws && (scanned + ' ' + acted).contains(row.member.name)) {
        EXPECT_GT(host.thrown(), 0) << journey.name;
    }
    return scanned + " | " + record["msg"].toString().section(' ', 0, 8) + " | " + acted;
}

QString conversionCheckOutcome(const FaultCase& row)
{
    FaultHost host(row, complain);
    host.host().build();
    QStringList answers;
    for (int funIdx : {0, 1, 2})
        answers << (isConvertTaskValid(host.host().toolBridge(), {{"funIdx", funIdx}}) ? "true" : "false");
    return callsOf(host.host().recorder().calls()) + " | " + answers.join(' ');
}

QString pageCallsOutcome(const FaultCase& row)
{
    FaultHost host(
        row, [](RecordingHost& pages) { pages.spec("clone").answer("invalidInfo", QVariant("no good")); });
    host.host().build();
    AIBridge* bridge = host.host().bridge();
    QString result = "no signal";
    QObject::connect(bridge, &AIBridge::sigCloneResult, [&result](const QVariant& v) {
        result = v.toMap()["goToPageIndex"].toString() + ':' + v.toMap()["errMsg"].toString();
    });
    runCloneTask(host.host().toolBridge(), {{"diskIndex", 0}}, {{"diskIndex", 1}, {"cloneType", 2}}, -2);
    const bool started = bridge->doPrFunForAI(true, {{"diskIndex", 1}});
    return callsOf(host.host().recorder().calls()) + " | " + result + " | " + (started ? "true" : "false");
}

QString languageOutcome(const FaultCase& row)
{
    const ScratchApplication application;
    QFile::copy(QStringLiteral(FIXTURE_COMPONENT), application.folder() + "/Probe.so");
    FaultHost host(row);
    host.host().build();
    CComponentMgr manager(host.host().engine());
    QObject* component = manager.loadComponent("Probe");
    if (component == nullptr)
        return "not loaded";
    const QSignalSpy renamed(component, SIGNAL(sigDisplayNameChanged()));
    if (FakeObject* language = host.host().object("multilanguage"))
        language->emitSignal();
    return QStringLiteral("onTranslate %1").arg(renamed.size());
}

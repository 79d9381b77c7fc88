#include "tests/recscan/ScanFixture.h"
#include "tests/support/AIBridgeAccess.h"

#include "recscan/RecScanThread.h"
#include "service/AIFuncallThread.h"
#include "tests/support/Threads.h"
#include "tests/support/UniqueComment.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <stdexcept>

namespace {

QVariantMap merged(QVariantMap map, const QVariantMap& more)
{
    for (auto it = more.begin(); it != more.end(); ++it)
        map.insert(it.key(), it.value());
    return map;
}

bool isListening(int port)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("localhost"), static_cast<quint16>(port));
    return socket.waitForConnected(2000);
}

int unusedPort()
{
    for (int attempt = 0; attempt < 800; ++attempt) {
        const int port = 9100 + static_cast<int>((QCoreApplication::applicationPid() * 13 + attempt) % 800);
        QTcpServer probe;
        if (probe.listen(QHostAddress::Any, static_cast<quint16>(port)))
            return port;
    }
    throw std::runtime_error("no free port");
}

} // namespace

QVariantMap diskMap(int diskIndex, const QVariantList& partitions, const QVariantMap& more)
{
    return merged({{"diskIndex", diskIndex},
                   {"size", qlonglong(500 * kGib)},
                   {"isGPT", true},
                   {"isSSD", true},
                   {"partitions", partitions}},
                  more);
}

QVariantMap partitionMap(int diskIndex, const QString& letter, qint64 size, qint64 used,
                         const QVariantMap& more)
{
    return merged({{"diskIndex", diskIndex},
                   {"driveLetter", letter},
                   {"size", qlonglong(size)},
                   {"usedSize", qlonglong(used)},
                   {"fsString", "NTFS"},
                   {"bltState", 0}},
                  more);
}

ScanFixture::ScanFixture() : previousPath_(qgetenv("PATH"))
{
    host.spec("partitionmanager").answer("isWin11CheckerEnable", false);
    machine = {diskMap(0, {partitionMap(0, "C", 200 * kGib, 100 * kGib)})};
    qputenv("AIBRIDGE_UEFI", "1");
}

ScanFixture::~ScanFixture()
{
    if (host.bridge() != nullptr && AIBridgeAccess::serverThread(*host.bridge()) != nullptr)
        AIBridgeAccess::release(*host.bridge());
    if (RecScanThread* scanThread = host.bridge() == nullptr ? nullptr : thread())
        waitForScan(*scanThread);
    qputenv("PATH", previousPath_);
}

void ScanFixture::build()
{
    host.build();
    QObject::connect(host.bridge(), &AIBridge::sigRecScanResult,
                     [this](const QVariant& v) { emitted.append(v); });
    QObject::connect(host.bridge(), &AIBridge::sigConvertResult,
                     [this](const QVariant& v) { conversions.append(v); });
    host.bridge()->setDiskInfo(machine);
    host.recorder().clear();
}

RecScanThread* ScanFixture::thread()
{
    return AIBridgeAccess::scanThread(*host.bridge());
}

void ScanFixture::release()
{
    AIBridgeAccess::release(*host.bridge());
}

bool ScanFixture::waitForScan()
{
    return waitForScan(*thread());
}

bool ScanFixture::waitForScan(RecScanThread& scanThread)
{
    // A thread counts as finished shortly before it emits the signal.
    return pumpUntil([&] { return scanThread.isFinished(); }) && scanThread.wait(20000);
}

QVariantList ScanFixture::scan()
{
    emitted.clear();
    host.bridge()->beginRecScan();
    EXPECT_TRUE(waitForScan());
    QCoreApplication::sendPostedEvents();
    return emitted;
}

QVariantMap ScanFixture::scanFrom(int index)
{
    setState(stateBytes(index, 1));
    build();
    const QVariantList records = scan();
    EXPECT_LE(records.size(), 1);
    return records.isEmpty() ? QVariantMap() : records.first().toMap();
}

void ScanFixture::answer(const QVariantMap& map)
{
    host.bridge()->doRecOperation(map);
    waitForAnswers();
}

void ScanFixture::waitForAnswers()
{
    // Due after every earlier answer.
    bool over = false;
    QTimer::singleShot(130, Qt::PreciseTimer, host.bridge(), [&] { over = true; });
    ASSERT_TRUE(pumpUntil([&] { return over; }));
}

void ScanFixture::startService()
{
    beginService();
    waitForService();
}

void ScanFixture::startServiceHeld()
{
    application.write(holdFile(), "");
    beginService();
}

void ScanFixture::letServiceGoOn()
{
    QFile::remove(holdFile());
    waitForService();
}

bool ScanFixture::serviceHasHandler()
{
    return AIBridgeAccess::serverThread(*host.bridge())->toolHandler() != nullptr;
}

void ScanFixture::beginService()
{
    port_ = unusedPort();
    QByteArray listing;
    for (int busy = 9090; busy < port_; ++busy)
        listing += "TCP 127.0.0.1:" + QByteArray::number(busy) + "\n";
    application.write(application.current() + "/listing", listing);
    application.script(application.current() + "/netstat",
                       "while [ -e \"" + holdFile().toUtf8() +
                           "\" ]; do sleep 0.1; done\n"
                           "while read -r line; do echo \"$line\"; done < \"" +
                           application.current().toUtf8() + "/listing\"\n");
    qputenv("PATH", application.current().toUtf8() + QDir::listSeparator().toLatin1() + previousPath_);
    host.bridge()->init();
}

void ScanFixture::waitForService()
{
    AIFuncallThread* server = AIBridgeAccess::serverThread(*host.bridge());
    ASSERT_TRUE(pumpUntil([&] {
        // The handler exists even if another process has bound the port.
        return server->isFinished() || (server->toolHandler() != nullptr && isListening(port_));
    }));
    ASSERT_NE(server->toolHandler(), nullptr);
}

void ScanFixture::passReadinessChecks()
{
    const QString space = "ROOT\\CIMV2";
    platform.rows[{space, "SELECT * FROM Win32_Processor"}] = {{{"Name", "Intel i5"}, {"AddressWidth", 64}}};
    platform.rows[{space, "SELECT * FROM Win32_OperatingSystem"}] = {{{"OSArchitecture", "64-bit"}}};
    platform.rows[{space + "\\Security\\MicrosoftTPM", "SELECT * FROM Win32_TPM"}] = {
        {{"IsActivated_InitialValue", true}, {"IsEnabled_InitialValue", true}, {"SpecVersion", "2.0"}}};
    platform.firmware = 2;
    platform.memoryKib = 8388608;
    platform.volumes["C:"] = {8, 512, 64 * 1073741824ULL / 4096};
    platform.hidden = [this](const QString& command) {
        const bool directX = command.startsWith("dxdiag");
        application.write(application.temp() + (directX ? "\\TVDxCheck.txt" : "\\TVSecBootCheck.txt"),
                          directX ? "DDI Version: 12\nDriver Model: WDDM 3.0\n" : "True");
    };
    application.write(application.root() + "/Win11Checker/SupportedProcessorsIntel.txt", "i5\n");
}

void ScanFixture::installBootChecker(const QByteArray& body)
{
    application.script(application.root() + "/BootRepair/BootRepair_Console.exe", body);
}

QByteArray ScanFixture::state() const
{
    return application.read(application.folder() + "/recscan.info");
}

void ScanFixture::setState(const QByteArray& bytes)
{
    application.write(application.folder() + "/recscan.info", bytes);
}

QByteArray ScanFixture::stateBytes(qint32 index, char done)
{
    const auto bits = static_cast<quint32>(index);
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(bits >> shift));
    return bytes.append(done);
}

QStringList ScanFixture::events(const QString& name)
{
    QStringList details;
    for (const HostCallRecord& call : host.recorder().calls()) {
        if (call.member != "sendUserInfo" || call.arguments.value(1).toString() != name)
            continue;
        EXPECT_EQ(typed(call.arguments.value(0)), "QString:\"AIPixie\"");
        EXPECT_EQ(typed(call.arguments.value(3)), "invalid");
        EXPECT_EQ(call.thread, QCoreApplication::instance()->thread());
        details.append(call.arguments.value(2).toString());
    }
    return details;
}

QStringList ScanFixture::hostCalls()
{
    QStringList calls;
    for (const HostCallRecord& call : host.recorder().calls()) {
        if (call.member != "sendUserInfo")
            calls.append(call.where() + ' ' + typed(call.arguments));
    }
    return calls;
}

void ScanFixture::setReferralNumber(const QByteArray& text)
{
    registry.set("xurlID", text);
}

void ScanFixture::setConfig(const QByteArray& ini)
{
    application.write(application.folder() + "/config.ini", ini + uniqueComment());
}

void ScanFixture::setRemoteConfig(const QByteArray& json)
{
    application.write(application.folder() + "/remoteconfig.json", json);
}

QVariantMap withoutTime(const QVariantMap& record)
{
    QVariantMap rest = record;
    const QVariant time = rest.take("time");
    EXPECT_EQ(time.userType(), int(QMetaType::UInt));
    const qint64 age = QDateTime::currentSecsSinceEpoch() - time.toLongLong();
    EXPECT_TRUE(age >= 0 && age < 300) << age;
    return rest;
}

QString plainRecord(const QString& message)
{
    return "map{buttons=list[QString:\"Accept\",QString:\"Cancel\"],default=int:0,msg=QString:\"" + message +
           "\"}";
}

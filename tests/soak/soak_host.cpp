// The host of a soak: the recording host with the real bridge and its service. It refreshes the inventory,
// starts scans and answers recommendations. It prints its port, then its counters four times per second, and
// shuts down at the end of its standard input.
//
// soak_host SEED [FAULT]
#include "plugin/TsanAnnotations.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/FakeNetstat.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/RawClient.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ScratchApplication.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"
#include "tests/tools/ToolRow.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <thrift/TOutput.h>

#include <cstdio>
#include <random>
#include <thread>

#include <malloc.h>
#include <unistd.h>

namespace {

// A seed reproduces the decisions, but not their timing.
std::mt19937& randomEngine()
{
    static std::mt19937 engine;
    return engine;
}

constexpr int kVariants = 3;
constexpr int kDisks = 24;
constexpr int kPartitions = 10;

// Inventories that differ in one string of each record, so that a reader can detect a mixture of two.
QVariantList inventory(int variant)
{
    const QString mark = QStringLiteral("variant-%1").arg(variant);
    QVariantList disks;
    for (int disk = 0; disk < kDisks; ++disk) {
        QVariantList partitions;
        for (int i = 0; i < kPartitions; ++i) {
            QVariantMap partition{{"diskIndex", disk},
                                  {"partitionIndex", i},
                                  {"label", mark},
                                  {"size", qlonglong(500) << 30},
                                  {"usedSize", qlonglong(100) << 30},
                                  {"isGPT", true}};
            if (i == 0 && disk < 2)
                partition["driveLetter"] = disk == 0 ? "C:" : "E:";
            partitions.append(partition);
        }
        disks.append(QVariantMap{
            {"diskIndex", disk}, {"serialNO", mark}, {"isGPT", true}, {"partitions", partitions}});
    }
    return disks;
}

// Injects a fault that the run must detect.
class FaultInjector
{
public:
    explicit FaultInjector(QByteArray fault) : fault_(std::move(fault)) { clock_.start(); }

    void onRequest()
    {
        ++requests_;
        if (fault_ == "leak")
            kept_.push_back(std::vector<char>(64 * 1024));
        else if (fault_ == "descriptor" && requests_ <= kKept)
            ::dup(STDOUT_FILENO);
        else if (fault_ == "thread" && requests_ <= kKept)
            std::thread([] { ::pause(); }).detach();
        else if (fault_ == "stall" && !stalled_ && clock_.elapsed() > 2000)
            stall();
    }
    bool answer() { return fault_ != "wrong" || ++answers_ % 3 != 0; }

private:
    // Above the limits of soak.py, below those of a process.
    static constexpr int kKept = 200;

    void stall()
    {
        stalled_ = true;
        std::this_thread::sleep_for(std::chrono::seconds(8));
    }

    QByteArray fault_;
    QElapsedTimer clock_;
    std::vector<std::vector<char>> kept_;
    int requests_ = 0;
    int answers_ = 0;
    bool stalled_ = false;
};

class SoakHost
{
public:
    explicit SoakHost(const QByteArray& fault) : faults_(fault) {}

    /// False if the service does not start.
    bool start();
    /// Waits until connections and scan have ended, then releases the bridge.
    void end();

    int port() const { return port_.number(); }

private:
    void fillSpecs();
    void every(int milliseconds, const std::function<void()>& work);
    void refresh() { host_.bridge()->setDiskInfo(inventory(static_cast<int>(randomEngine()() % kVariants))); }
    void answerRecommendation();
    void checkCalls();
    void print();

    FaultInjector faults_;
    ScratchApplication application_;
    RecordingHost host_;
    ReservedPort port_;
    std::vector<std::unique_ptr<QTimer>> timers_;
    QElapsedTimer clock_;
    ProcessFigures before_;
    int refreshes_ = 0;
    int scans_ = 0;
    int answers_ = 0;
    int calls_ = 0;
};

void SoakHost::fillSpecs()
{
    host_.spec("deviceMgr").answer("disks", QVariant(machine::disks()));
    host_.spec("partitionmanager").answer("doFunFromAI", [this](const QVariantList&) {
        faults_.onRequest();
        return QVariant(true);
    });
    host_.spec("__zormain").answer("doToolBox", [this](const QVariantList&) {
        return QVariant(faults_.answer());
    });
    // For five seconds scans run through all cases without a result; then a disk reports an error.
    host_.spec("partitionmanager").answer("hasDiskSmartInfoError", [this](const QVariantList&) {
        return QVariant(clock_.elapsed() > 5000);
    });
}

bool SoakHost::start()
{
    // Keeps the referral rule from querying a service in the network.
    ScratchApplication::write(application_.folder() + "/recscan.info", QByteArray("\0\0\0\0\1", 5));
    fillSpecs();
    clock_.start();
    host_.build();
    refresh();
    AIBridge* bridge = host_.bridge();
    QObject::connect(bridge, &AIBridge::sigRecScanResult, [this] { answerRecommendation(); });
    before_ = ProcessFigures::now();
    const FakeNetstat netstat(FakeNetstat::printing(listingThatLeadsTo(port())));
    bridge->init();
    if (!pumpUntil([this] { return RawClient::isListening(port()); }))
        return false;
    every(20, [this] {
        refresh();
        ++refreshes_;
    });
    every(100, [this] {
        host_.bridge()->beginRecScan();
        ++scans_;
    });
    every(50, [this] { checkCalls(); });
    every(250, [this] { print(); });
    return true;
}

void SoakHost::every(int milliseconds, const std::function<void()>& work)
{
    timers_.push_back(std::make_unique<QTimer>());
    QObject::connect(timers_.back().get(), &QTimer::timeout, work);
    timers_.back()->start(milliseconds);
}

void SoakHost::answerRecommendation()
{
    ++answers_;
    host_.bridge()->doRecOperation(QVariantMap{{"result", static_cast<int>(randomEngine()() % 2)}});
}

// Checks the recorded calls and discards them, to keep memory constant.
void SoakHost::checkCalls()
{
    const std::vector<HostCallRecord> calls = host_.recorder().calls();
    host_.recorder().clear();
    calls_ += static_cast<int>(calls.size());
    for (const HostCallRecord& call : calls) {
        if (call.member != "doFunFromAI")
            continue;
        if (call.arguments.at(1).toMap().contains("TestFunValid") != call.withResult) {
            std::puts("wrong: TestFunValid in a request, or missing in a check");
            std::fflush(stdout);
        }
    }
}

void SoakHost::print()
{
    std::printf("holds %zu refreshes %d scans %d answers %d calls %d\n", mallinfo2().uordblks, refreshes_,
                scans_, answers_, calls_);
    std::fflush(stdout);
}

void SoakHost::end()
{
    timers_.clear();
    const int ownThreads = before_.threads + 1; // and the service's
    pumpUntil([ownThreads] { return ProcessFigures::now().threads <= ownThreads; });
    AIBridgeAccess::release(*host_.bridge());
    print();
    // The system counts a finished thread for a moment.
    ProcessFigures after;
    pumpUntil([&] {
        after = ProcessFigures::now();
        return after.threads <= before_.threads && after.fileDescriptors <= before_.fileDescriptors;
    });
    std::printf("left threads %d descriptors %d\n", after.threads - before_.threads,
                after.fileDescriptors - before_.fileDescriptors);
}

} // namespace

int main(int argc, char** argv)
{
    // With one arena the next connection threads reuse the memory that earlier ones freed.
    mallopt(M_ARENA_MAX, 1);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Suppresses the runtime's message for each client that disconnects.
    apache::thrift::GlobalOutput.setOutputFunction([](const char*) {});
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    TsanAnnotations::Annotated<QGuiApplication> application(argc, argv);
    randomEngine().seed(argc > 1 ? static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10)) : 0);
    SoakHost host(argc > 2 ? argv[2] : "");
    if (!host.start())
        return 1;
    std::printf("port %d\n", host.port());
    std::fflush(stdout);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [] {
        char bytes[64];
        if (::read(STDIN_FILENO, bytes, sizeof bytes) <= 0)
            QCoreApplication::quit();
    });
    application.exec();
    host.end();
    return 0;
}

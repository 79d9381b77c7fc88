// Release while a tool and a scan are at work: which of the two threads it ends first, and that it waits for
// both.
#include "recscan/RecScanThread.h"
#include "service/AIFuncallThread.h"
#include "tests/recscan/ScanFixture.h"
#include "tests/support/Aside.h"
#include "tests/support/RawClient.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QSemaphore>

#include <atomic>
#include <chrono>

namespace {

const std::string kInit = wire::call("Init", 1);

// A host's member that holds its callers until it is opened.
class Gate
{
public:
    FakeBody body()
    {
        return [this](const QVariantList&) {
            entered_.release();
            open_.acquire();
            open_.release();
            return QVariant();
        };
    }
    /// Any thread.
    bool waitForCaller() { return entered_.tryAcquire(1, RawClient::limitMs); }
    void open() { open_.release(); }

private:
    QSemaphore entered_;
    QSemaphore open_;
};

class ReleaseWhileBusy : public ScanFixture
{
protected:
    ReleaseWhileBusy()
    {
        // Nothing here needs the thread that Release blocks: both members run on the thread of their caller,
        // and the event at the end of a scan, which would, is not sent.
        host.without("__qml_executer").without("clone").without("window");
        host.spec("deviceMgr").answer("disks", tool.body());
        host.spec("partitionmanager").answer("hasDiskSmartInfoError", firstCase.body());
        application.script(
            checkerFolder() + "/BootRepair_Console.exe",
            "cd '" + QFile::encodeName(checkerFolder()) +
                "'\necho > started\nwhile [ ! -e finish ] && [ -e started ]; do sleep 0.02; done\n");
    }

    // Scans from the case that asks for SMART errors; a later case runs the boot checker.
    void startScan()
    {
        setState(stateBytes(1, 1));
        build();
        host.bridge()->beginRecScan();
    }

    QString checkerFolder() const { return application.root() + "/BootRepair"; }

    // Any thread.
    bool waitForBootChecker() const
    {
        const QDeadlineTimer limit(RawClient::limitMs);
        while (!QFile::exists(checkerFolder() + "/started") && !limit.hasExpired())
            QThread::msleep(5);
        return QFile::exists(checkerFolder() + "/started");
    }
    void finishBootChecker() const { application.write(checkerFolder() + "/finish", ""); }

    Gate tool;
    Gate firstCase;
};

TEST_F(ReleaseWhileBusy, EndsTheServiceFirstThenTheScanAndWaitsForBoth)
{
    startScan();
    EXPECT_TRUE(firstCase.waitForCaller());
    startService();
    const int port = qEnvironmentVariableIntValue("AGENT_NATIVE_PORT");
    RawClient idle(port);
    idle.ask(kInit);
    RawClient client(port);
    client.send(wire::call("CloneDiskToDisk", 5, wire::Fields().number(1, 0).number(2, 1)));
    EXPECT_TRUE(tool.waitForCaller());

    AIFuncallThread* service = host.bridge()->findChild<AIFuncallThread*>();
    std::atomic<bool> released{false};
    std::thread other([&] {
        // Cut by the first step of Release, which then waits for the tool.
        EXPECT_TRUE(idle.isEndedByServer());
        EXPECT_FALSE(released);
        // The scan goes on to its later case: it has not been asked to stop.
        firstCase.open();
        EXPECT_TRUE(waitForBootChecker());
        EXPECT_TRUE(service->isRunning());
        EXPECT_FALSE(released);
        tool.open();
        EXPECT_TRUE(service->wait(RawClient::limitMs));
        // Time for a Release that does not wait for the scan; one that waits cannot return.
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        EXPECT_FALSE(released);
        finishBootChecker();
    });
    release();
    released = true;
    EXPECT_TRUE(service->isFinished());
    EXPECT_TRUE(thread()->isFinished());
    other.join();
}

TEST_F(ReleaseWhileBusy, WithoutAService_WaitsForTheScan)
{
    startScan();
    EXPECT_TRUE(firstCase.waitForCaller());
    std::atomic<bool> released{false};
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        EXPECT_FALSE(released);
        finishBootChecker();
        firstCase.open();
    });
    release();
    released = true;
    EXPECT_TRUE(thread()->isFinished());
    other.join();
}

} // namespace

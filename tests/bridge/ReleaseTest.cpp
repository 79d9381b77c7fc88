// Release during a tool call and a scan: it stops the service first and waits for both threads.
#include "recscan/RecScanThread.h"
#include "service/AIFuncallThread.h"
#include "tests/recscan/ScanFixture.h"
#include "tests/support/BackgroundWork.h"
#include "tests/support/RawClient.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QSemaphore>

#include <atomic>
#include <chrono>

namespace {

const std::string kInit = wire::call("Init", 1);

// A host member that blocks its callers until open().
class BlockingMember
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
        // Release blocks the application thread. Both members run on their caller's thread, and without the
        // executer the scan sends no event to the application thread.
        host.without("__qml_executer").without("clone").without("window");
        host.spec("deviceMgr").answer("disks", tool.body());
        host.spec("partitionmanager").answer("hasDiskSmartInfoError", firstCase.body());
        application.script(
            checkerFolder() + "/BootRepair_Console.exe",
            "cd '" + QFile::encodeName(checkerFolder()) +
                "'\necho > started\nwhile [ ! -e finish ] && [ -e started ]; do sleep 0.02; done\n");
    }

    // Starts a scan at the case that checks for SMART errors; a later case runs the boot checker.
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

    BlockingMember tool;
    BlockingMember firstCase;
};

TEST_F(ReleaseWhileBusy, StopsTheServiceBeforeTheScanAndWaitsForBoth)
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
        // Release closes this connection first, then waits for the tool.
        EXPECT_TRUE(idle.isEndedByServer());
        EXPECT_FALSE(released);
        // The scan continues with its later case because Release has not stopped it yet.
        firstCase.open();
        EXPECT_TRUE(waitForBootChecker());
        EXPECT_TRUE(service->isRunning());
        EXPECT_FALSE(released);
        tool.open();
        EXPECT_TRUE(service->wait(RawClient::limitMs));
        // An incorrect Release, which does not wait for the scan, returns within this time.
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

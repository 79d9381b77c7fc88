// The reports of connections and calls to the host's optional object.
#include "service/ConnectionReport.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/HandlerServer.h"
#include "tests/support/ServiceRunner.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <mutex>

namespace {

// Records the reports of each connection. The methods run on the connections' threads.
class Observer : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void connectionOpened(int connection, const QString& address, int port)
    {
        const bool isOtherThread = QThread::currentThread() != thread();
        add(connection, QString("opened %1 %2").arg(address, port > 0 && isOtherThread ? "" : "wrongly"));
    }
    Q_INVOKABLE void callStarted(int connection, const QString& tool) { add(connection, "started " + tool); }
    Q_INVOKABLE void callEnded(int connection) { add(connection, "ended"); }
    Q_INVOKABLE void connectionClosed(int connection) { add(connection, "closed"); }

    // The reports of the connections that called a tool, oldest connection first.
    QList<QStringList> clients()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        QList<QStringList> found;
        for (const QStringList& lines : qAsConst(lines_)) {
            if (lines.size() > 2)
                found.append(lines);
        }
        return found;
    }
    bool waitForClosed(int count)
    {
        return pumpUntil([&] {
            int closed = 0;
            for (const QStringList& lines : clients())
                closed += lines.last() == "closed" ? 1 : 0;
            return closed == count;
        });
    }

private:
    void add(int connection, const QString& line)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        lines_[connection].append(line.trimmed());
    }

    std::mutex mutex_; // the thread sanitizer does not see a QMutex
    QMap<int, QStringList> lines_;
};

// The thread of the component, without an event handler of the test's own.
std::unique_ptr<AIFuncallThread> makeThread(AIBridge* bridge)
{
    return std::make_unique<AIFuncallThread>(nullptr, AIBridgeAccess::makeHandler(bridge));
}

class ConnectionReportTest : public testing::Test
{
protected:
    ~ConnectionReportTest() override { observe(nullptr); }

    static void observe(QObject* observer)
    {
        QCoreApplication::instance()->setProperty(
            "agentObserver", observer == nullptr ? QVariant() : QVariant::fromValue(observer));
    }

    std::vector<DiskInfo> disks_;
};

TEST_F(ConnectionReportTest, Connection_IsReportedWithItsCallsOnItsThread)
{
    Observer observer;
    observe(&observer);
    ServiceRunner service(nullptr, makeThread);
    GeneratedClient client(service.port());
    client->ListAllDisks(disks_);
    std::string answer;
    client->ShowBitLockerStatus(answer, "C");
    client.close();
    ASSERT_TRUE(observer.waitForClosed(1));
    QStringList lines = observer.clients().first();
    const QString opened = lines.takeFirst();
    EXPECT_TRUE(opened == "opened 127.0.0.1" || opened == "opened ::1") << opened.toStdString();
    EXPECT_EQ(lines, QStringList({"started ListAllDisks", "ended", "started ShowBitLockerStatus", "ended",
                                  "closed"}));
}

TEST_F(ConnectionReportTest, Connections_AreReportedSeparately)
{
    Observer observer;
    observe(&observer);
    ServiceRunner service(nullptr, makeThread);
    GeneratedClient first(service.port());
    first->ListAllDisks(disks_);
    GeneratedClient second(service.port());
    second->ListAllDisks(disks_);
    first.close();
    second.close();
    EXPECT_TRUE(observer.waitForClosed(2));
    for (const QStringList& lines : observer.clients())
        EXPECT_EQ(lines.mid(1), QStringList({"started ListAllDisks", "ended", "closed"}));
}

TEST_F(ConnectionReportTest, ObserverWithoutMethods_ChangesNoAnswer)
{
    QObject empty;
    observe(&empty);
    ServiceRunner service(nullptr, makeThread);
    GeneratedClient client(service.port());
    disks_.resize(1);
    client->ListAllDisks(disks_);
    EXPECT_TRUE(disks_.empty());
}

TEST_F(ConnectionReportTest, ServiceThatStartedWithoutObserver_ReportsNothing)
{
    Observer observer;
    ServiceRunner service(nullptr, makeThread);
    observe(&observer);
    GeneratedClient client(service.port());
    client->ListAllDisks(disks_);
    EXPECT_TRUE(observer.clients().isEmpty());
}

} // namespace

#include "ConnectionReportTest.moc"

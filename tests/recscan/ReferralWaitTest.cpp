// The wait of the scan for the referral service, on a clock that the test moves. The calls that read the
// system's clock are replaced here.
#include "tests/recscan/ReferralService.h"
#include "tests/recscan/ScanFixture.h"

#include "plugin/TsanAnnotations.h"
#include "recscan/Referral.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include <atomic>
#include <future>

#include <ctime>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// Offset of the monotonic clock on all threads but the first, so that the test's own timeouts use the real
// time.
std::atomic<long> secondsAhead{0};

} // namespace

extern "C" Q_DECL_EXPORT int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const int result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result == 0 && clock == CLOCK_MONOTONIC && syscall(SYS_gettid) != getpid())
        time->tv_sec += secondsAhead;
    return result;
}

namespace {

const QByteArray kSuccess = "{\"status\":\"Success\",\"url\":\"the page\"}";

// An object of the waiting thread. It receives events and not functors, because the thread sanitizer
// recognises only the order of events.
class Waiting : public QObject
{
public:
    static constexpr QEvent::Type kRound = QEvent::User;
    static constexpr QEvent::Type kStartTimer = static_cast<QEvent::Type>(QEvent::User + 1);

    bool event(QEvent* event) override
    {
        if (event->type() == kRound) {
            ++rounds;
        } else if (event->type() == kStartTimer) {
            QTimer::singleShot(23 * 3600 * 1000, this, [this] { expired = true; });
            timerStarted = true;
        }
        return QObject::event(event);
    }

    std::atomic<int> rounds{0};
    std::atomic<bool> timerStarted{false};
    std::atomic<bool> expired{false};
};

// fetchSeoPage on another thread, with an event loop that receives events of the test.
class ReferralWait : public ScanFixture
{
protected:
    void startRequest()
    {
        setConfig("[main]\nseoUrl=" + service.address("/?id=").toUtf8() + "\n");
        result = std::async(std::launch::async, [this, go = mayEnd.get_future().share()] {
            Waiting inThatThread;
            receiver = &inThatThread;
            const QString page = fetchSeoPage("7");
            isOver = true;
            go.wait();
            return page;
        });
        EXPECT_TRUE(pumpUntil([this] { return asking != nullptr; }));
    }
    // After this call all timers of the waiting thread that are due within a day have expired: its event
    // loop has run twice at the new time.
    void passADay()
    {
        secondsAhead += 86400;
        for (int round = 0; round < 2; ++round) {
            const int seen = receiver.load()->rounds;
            post(Waiting::kRound);
            ASSERT_TRUE(pumpUntil([&] { return receiver.load()->rounds > seen || isOver; }));
            if (isOver)
                return;
        }
    }
    void post(QEvent::Type type)
    {
        auto* event = new QEvent(type);
        TsanAnnotations::release();
        QCoreApplication::postEvent(receiver, event);
    }
    void reply()
    {
        asking->write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(kSuccess.size()) +
                      "\r\nConnection: close\r\n\r\n" + kSuccess);
        asking->disconnectFromHost();
    }
    QString end()
    {
        EXPECT_TRUE(pumpUntil([this] { return isOver.load(); }));
        mayEnd.set_value();
        return result.get();
    }

    ReferralService service{[this](QTcpSocket& socket, const QString&) { asking = &socket; }};
    QTcpSocket* asking = nullptr;
    std::atomic<Waiting*> receiver{nullptr};
    std::atomic<bool> isOver{false};
    std::promise<void> mayEnd;
    std::future<QString> result;
};

TEST_F(ReferralWait, ReplyAfterThreeDays_IsStillAccepted)
{
    startRequest();
    for (int day = 1; day <= 3; ++day) {
        passADay();
        EXPECT_FALSE(isOver) << "given up on day " << day;
    }
    if (!isOver)
        reply();
    EXPECT_EQ(end(), "the page");
}

// Shows that the test above can fail.
TEST_F(ReferralWait, ClockThatTheTestMoves_IsThatOfTheWaitingThread)
{
    startRequest();
    post(Waiting::kStartTimer);
    ASSERT_TRUE(pumpUntil([this] { return receiver.load()->timerStarted.load(); }));
    passADay();
    EXPECT_TRUE(receiver.load()->expired);
    reply();
    EXPECT_EQ(end(), "the page");
}

} // namespace

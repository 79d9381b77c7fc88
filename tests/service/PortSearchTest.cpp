// The selection of the service's two ports from the text of a port listing.
#include "service/PortSearch.h"
#include "service/AIFuncallThread.h"
#include "tests/support/AIBridgeAccess.h"
#include "tests/support/FakeNetstat.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace {

using Ports = std::pair<int, int>;

Ports pick(const QByteArray& listing)
{
    Ports ports{0, 0};
    pickFreePorts(listing, &ports.first, &ports.second);
    return ports;
}

QByteArray busy(int from, int to)
{
    QByteArray text;
    for (int port = from; port <= to; ++port)
        text += ":" + QByteArray::number(port) + "\n";
    return text;
}

Ports searchThroughThread()
{
    AIFuncallThread thread(nullptr, AIBridgeAccess::makeHandler(nullptr));
    Ports ports{-1, -1};
    thread.findFreePorts(&ports.first, &ports.second);
    return ports;
}

TEST(PortSearch, EmptyListing_SelectsTheFirstTwoPorts)
{
    EXPECT_EQ(pick(""), Ports(9090, 9091));
}

TEST(PortSearch, ListenerOn9090_SelectsTheNextTwo)
{
    EXPECT_EQ(pick("  TCP    127.0.0.1:9090    0.0.0.0:0    LISTENING    4711\r\n"), Ports(9091, 9092));
}

TEST(PortSearch, Only9091Busy_IsSkippedForTheSecondPort)
{
    EXPECT_EQ(pick("  TCP    127.0.0.1:9091    0.0.0.0:0    LISTENING    4711\r\n"), Ports(9090, 9092));
}

TEST(PortSearch, FiveDigitPortStartingWith9090_Hides9090)
{
    EXPECT_EQ(pick("  TCP    127.0.0.1:90905    0.0.0.0:0    LISTENING    4711\r\n"), Ports(9091, 9092));
}

TEST(PortSearch, ForeignAddressAndClosedState_CountAsBusy)
{
    EXPECT_EQ(pick("  TCP    10.0.0.2:50000    10.0.0.1:9090    TIME_WAIT    0\r\n"), Ports(9091, 9092));
}

TEST(PortSearch, NumberWithoutColon_IsIgnored)
{
    EXPECT_EQ(pick("9090 and 9091, PID 9092"), Ports(9090, 9091));
}

TEST(PortSearch, PortInAnIpv6Address_IsFound)
{
    EXPECT_EQ(pick("tcp6  0  0 :::9090  :::*  LISTEN"), Ports(9091, 9092));
}

TEST(PortSearch, OnlyTheLastPortFree_LeavesTheSecondZero)
{
    EXPECT_EQ(pick(busy(9090, 65533)), Ports(65534, 0));
}

TEST(PortSearch, OnlyTheLastTwoPortsFree_SelectsBoth)
{
    EXPECT_EQ(pick(busy(9090, 65532)), Ports(65533, 65534));
}

TEST(PortSearch, EveryPortBusy_LeavesBothZero)
{
    EXPECT_EQ(pick(busy(1, 65534)), Ports(0, 0));
}

TEST(PortSearch, Port65535_IsNeverSelected)
{
    EXPECT_EQ(pick(busy(1, 65534)).first, 0);
    EXPECT_EQ(pick(busy(9090, 65533)).second, 0);
}

TEST(PortSearch, EveryPortFrom9090Busy_SearchesTheSecondFrom1)
{
    // Without a first port the search for the second starts at 1. Ports 1 to 6 are prefixes of busy ports;
    // 7 is the first number that is not a prefix of one from 9090 to 65534.
    EXPECT_EQ(pick(busy(9090, 65534)), Ports(0, 7));
}

TEST(PortSearch, AnyText_MatchesAPlainSearchForEachNumber)
{
    std::mt19937 random(20240607);
    const QByteArray alphabet = ":::0123456789 99900\n";
    for (int round = 0; round < 300; ++round) {
        QByteArray text;
        for (int i = 0; i < 2000; ++i)
            text += random() % 8 == 0 ? QByteArray(":909") + char('0' + random() % 10)
                                      : QByteArray(1, alphabet[int(random() % unsigned(alphabet.size()))]);
        std::vector<int> expected;
        for (int port = 9090; port <= 65534 && expected.size() < 2; ++port) {
            if (!text.contains(":" + QByteArray::number(port)))
                expected.push_back(port);
        }
        ASSERT_EQ(pick(text), Ports(expected.at(0), expected.at(1))) << text.constData();
    }
}

// The minimum of five runs, in nanoseconds.
template <class Work> qint64 minimumTime(Work work)
{
    qint64 minimum = std::numeric_limits<qint64>::max();
    for (int run = 0; run < 5; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        minimum = std::min(minimum, timer.nsecsElapsed());
    }
    return minimum;
}

TEST(PortSearch, ListingOfEveryPort_CostsLessThanReadingIt100Times)
{
    const QByteArray listing = busy(1, 65534);
    volatile int digits = 0;
    const qint64 reading = minimumTime([&] {
        for (const char character : listing)
            digits = digits + (character >= '0' && character <= '9' ? 1 : 0);
    });
    Ports ports{-1, -1};
    const qint64 searching = minimumTime([&] { ports = pick(listing); });
    EXPECT_EQ(ports, Ports(0, 0));
    // Searching the whole text for each of the 56,445 ports would cost thousands of times as much.
    EXPECT_LT(searching, 100 * reading);
}

TEST(Netstat, InThePath_IsStartedWithOneArgument)
{
    const FakeNetstat netstat("echo \"$#:$*\" > arguments\necho ':9090 :9091'\n");
    EXPECT_EQ(searchThroughThread(), Ports(9092, 9093));
    EXPECT_EQ(netstat.readFile("arguments"), "1:-ano\n");
}

TEST(Netstat, PrefixOfABusyPort_IsSkipped)
{
    const FakeNetstat netstat(FakeNetstat::printing(":90900 :90911"));
    EXPECT_EQ(searchThroughThread(), Ports(9092, 9093));
}

TEST(Netstat, EmptyOutput_SelectsTheFirstTwoPorts)
{
    const FakeNetstat netstat("exit 0\n");
    EXPECT_EQ(searchThroughThread(), Ports(9090, 9091));
}

TEST(Netstat, FailureAfterOutput_KeepsTheListing)
{
    const FakeNetstat netstat("echo ':9090'\nexit 3\n");
    EXPECT_EQ(searchThroughThread(), Ports(9091, 9092));
}

TEST(Netstat, ErrorOutput_IsNotPartOfTheListing)
{
    const FakeNetstat netstat("echo ':9090' >&2\n");
    EXPECT_EQ(searchThroughThread(), Ports(9090, 9091));
}

TEST(Netstat, NotInThePath_SelectsTheFirstTwoPorts)
{
    const EmptyPath path;
    EXPECT_EQ(busyPortListing(), "");
    EXPECT_EQ(searchThroughThread(), Ports(9090, 9091));
}

TEST(Netstat, Timeout_KeepsThePartialListing)
{
    const FakeNetstat netstat("echo ':9090'\necho > printed\nwhile [ -e \"$0\" ]; do sleep 0.1; done\n");
    QElapsedTimer timer;
    timer.start();
    // A slow machine may not print the first line within the limit, so retry with a longer one.
    QByteArray listing;
    for (int limitMs = 300; listing.isEmpty() && limitMs < 10000; limitMs *= 2) {
        timer.restart();
        listing = busyPortListing(limitMs);
        EXPECT_GE(timer.elapsed(), limitMs - 20);
    }
    EXPECT_EQ(listing, ":9090\n");
    EXPECT_EQ(pick(listing), Ports(9091, 9092));
}

// On the real clock, with the default timeout.
TEST(Netstat, HangingProcess_IsAbandonedAfterThirtySeconds)
{
    const HeldNetstat netstat(":9090");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(searchThroughThread(), Ports(9090, 9091));
    EXPECT_TRUE(netstat.isWaiting());
    EXPECT_GE(timer.elapsed(), 29900);
    EXPECT_LT(timer.elapsed(), 45000);
}

TEST(Netstat, OutputLargerThanAPipe_IsReadCompletely)
{
    QByteArray text;
    for (int port = 9090; port < 12090; ++port)
        text += "  TCP    127.0.0.1:" + QByteArray::number(port) + "    0.0.0.0:0    LISTENING    4711\n";
    ASSERT_GT(text.size(), 128 * 1024);
    const FakeNetstat netstat("while read line; do echo \"$line\"; done <<'END'\n" + text + "END\n");
    EXPECT_EQ(searchThroughThread(), Ports(12090, 12091));
}

} // namespace

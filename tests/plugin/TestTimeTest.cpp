// The scope timer: format, channel and threshold of its log lines.
#include "plugin/TestTime.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

std::vector<std::pair<QtMsgType, QString>> lines;

void collect(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    lines.emplace_back(type, text);
}

// The fake clock; only advance() moves it.
QTime timeOfDay(12, 0);

QTime now()
{
    return timeOfDay;
}

void advance(int milliseconds)
{
    timeOfDay = timeOfDay.addMSecs(milliseconds);
}

class TestTime : public testing::Test
{
protected:
    TestTime()
    {
        lines.clear();
        timeOfDay = QTime(12, 0);
        previous_ = qInstallMessageHandler(collect);
    }
    ~TestTime() override { qInstallMessageHandler(previous_); }

private:
    QtMessageHandler previous_;
};

TEST_F(TestTime, CheckPoint_LogsFunctionLineAndMilliseconds)
{
    CTestTime timer(0, now);
    advance(37);
    timer.checkPoint("CThing::work", 42);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^CThing::work\\(42\\)\\D*37\\D*$"))
                    .match(lines[0].second)
                    .hasMatch())
        << qPrintable(lines[0].second);
}

TEST_F(TestTime, WithoutAClock_ReadsTheTimeOfDay)
{
    CTestTime timer;
    timer.checkPoint("f", 1);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(
        QRegularExpression(QStringLiteral("^f\\(1\\)\\D*\\d+\\D*$")).match(lines[0].second).hasMatch())
        << qPrintable(lines[0].second);
}

TEST_F(TestTime, Level_SelectsTheChannel)
{
    const std::vector<std::pair<int, QtMsgType>> channels{
        {0, QtDebugMsg}, {1, QtWarningMsg}, {2, QtCriticalMsg}, {4, QtInfoMsg}};
    for (const auto& channel : channels) {
        lines.clear();
        CTestTime timer(channel.first, now);
        timer.checkPoint("f", 1);
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0].first, channel.second) << channel.first;
    }
}

TEST_F(TestTime, Threshold_RaisesTheLevelOfThatLineOnly)
{
    CTestTime timer(1, now);
    advance(99);
    timer.checkPoint("below", 1);
    advance(100);
    timer.checkPoint("at", 2);
    advance(99);
    timer.checkPoint("below", 3);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].first, QtWarningMsg);
    EXPECT_EQ(lines[1].first, QtInfoMsg);
    EXPECT_EQ(lines[2].first, QtWarningMsg);
}

TEST_F(TestTime, LevelAboveInfo_IsNeitherLoggedNorRaised)
{
    CTestTime timer(5, now);
    advance(5000);
    timer.checkPoint("silent", 1);
    EXPECT_TRUE(lines.empty());
}

TEST_F(TestTime, EffectiveLevel_IsRaisedAtTheThreshold)
{
    EXPECT_EQ(CTestTime::kThresholdMs, 100);
    for (const int level : {0, 1, 2}) {
        EXPECT_EQ(CTestTime::effectiveLevel(level, 99), level);
        EXPECT_EQ(CTestTime::effectiveLevel(level, 100), 4);
    }
    EXPECT_EQ(CTestTime::effectiveLevel(4, 5000), 4);
}

TEST_F(TestTime, CheckPointAndRestart_ResetTheElapsedTime)
{
    CTestTime timer(0, now);
    advance(120);
    timer.checkPoint("first", 1);
    advance(20);
    timer.checkPoint("second", 2);
    advance(120);
    timer.restart();
    advance(5);
    timer.checkPoint("third", 3);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].second, QStringLiteral("first(1) 120 ms"));
    EXPECT_EQ(lines[1].second, QStringLiteral("second(2) 20 ms"));
    EXPECT_EQ(lines[2].second, QStringLiteral("third(3) 5 ms"));
}

TEST_F(TestTime, IntervalAcrossMidnight_KeepsItsDurationAndLevel)
{
    timeOfDay = QTime(23, 59, 59, 950);
    CTestTime timer(0, now);
    advance(60);
    ASSERT_EQ(timeOfDay, QTime(0, 0, 0, 10));
    timer.checkPoint("short", 1);
    timeOfDay = QTime(23, 59, 59, 950);
    timer.restart();
    advance(150);
    timer.checkPoint("long", 2);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].second, QStringLiteral("short(1) 60 ms"));
    EXPECT_EQ(lines[0].first, QtDebugMsg);
    EXPECT_EQ(lines[1].second, QStringLiteral("long(2) 150 ms"));
    EXPECT_EQ(lines[1].first, QtInfoMsg);
}

} // namespace

// The scope timer: its label, its channels and its threshold.
#include "plugin/TestTime.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QThread>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

std::vector<std::pair<QtMsgType, QString>> lines;

void collect(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    lines.emplace_back(type, text);
}

class TestTime : public testing::Test
{
protected:
    TestTime()
    {
        lines.clear();
        previous_ = qInstallMessageHandler(collect);
    }
    ~TestTime() override { qInstallMessageHandler(previous_); }

private:
    QtMessageHandler previous_;
};

TEST_F(TestTime, CheckPoint_LogsFunctionLineAndMilliseconds)
{
    CTestTime timer;
    timer.checkPoint("CThing::work", 42);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^CThing::work\\(42\\)\\D*\\d+\\D*$"))
                    .match(lines[0].second)
                    .hasMatch())
        << qPrintable(lines[0].second);
}

TEST_F(TestTime, Level_ChoosesTheChannel)
{
    const std::vector<std::pair<int, QtMsgType>> channels{
        {0, QtDebugMsg}, {1, QtWarningMsg}, {2, QtCriticalMsg}, {4, QtInfoMsg}};
    for (const auto& channel : channels) {
        // A pause of the machine would raise the level: then another try.
        for (int tries = 0; tries < 5; ++tries) {
            lines.clear();
            CTestTime timer(channel.first);
            timer.checkPoint("f", 1);
            ASSERT_EQ(lines.size(), 1u);
            if (lines[0].first == channel.second)
                break;
        }
        EXPECT_EQ(lines[0].first, channel.second) << channel.first;
    }
}

TEST_F(TestTime, Threshold_RaisesTheLevelForThatLineOnly)
{
    CTestTime timer(1);
    QThread::msleep(CTestTime::thresholdMs + 20);
    timer.checkPoint("slow", 1);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].first, QtInfoMsg);
    for (int tries = 0; tries < 5 && lines.back().first != QtWarningMsg; ++tries)
        timer.checkPoint("fast", 2);
    EXPECT_EQ(lines.back().first, QtWarningMsg);
}

TEST_F(TestTime, LevelThatIsNone_IsNotWritten)
{
    // Above Info, so that a pause of the machine does not raise it.
    CTestTime timer(5);
    timer.checkPoint("silent", 1);
    EXPECT_TRUE(lines.empty());
}

TEST_F(TestTime, EffectiveLevel_IsRaisedFromTheThresholdOn)
{
    EXPECT_EQ(CTestTime::thresholdMs, 100);
    for (const int level : {0, 1, 2}) {
        EXPECT_EQ(CTestTime::effectiveLevel(level, 99), level);
        EXPECT_EQ(CTestTime::effectiveLevel(level, 100), 4);
    }
    EXPECT_EQ(CTestTime::effectiveLevel(4, 5000), 4);
}

TEST_F(TestTime, CheckPoint_RestartsTheClock)
{
    CTestTime timer;
    QThread::msleep(120);
    timer.checkPoint("first", 1);
    for (int tries = 0; tries < 5; ++tries) {
        timer.checkPoint("second", 2);
        if (lines.back().first == QtDebugMsg)
            break;
    }
    EXPECT_EQ(lines.front().first, QtInfoMsg);
    EXPECT_EQ(lines.back().first, QtDebugMsg);
}

} // namespace

#pragma once

#include <QtCore/QString>
#include <QtCore/QTime>

/// A small scope timer: each check-point logs its label and the milliseconds since the one before.
class CTestTime
{
public:
    /// The channels of the log that a line can go to.
    enum Level { Debug = 0, Warning = 1, Critical = 2, Info = 4 };

    /// The time of day.
    using Clock = QTime (*)();

    /// Starts the clock. @p now is read at each check-point.
    explicit CTestTime(int level = Debug, Clock now = &QTime::currentTime);

    /// Logs the place "function(line)" with the elapsed milliseconds and restarts the clock. A line that took
    /// the threshold or longer goes to the level Info.
    void checkPoint(const char* function, int line);

    /// Starts the clock anew without a line.
    void restart();

    static constexpr int thresholdMs = 100;

    /// The level that a line of @p level goes to after @p elapsedMs.
    static int effectiveLevel(int level, int elapsedMs);

private:
    int elapsedMs() const;
    void log(int level, int elapsedMs);

    Clock now_;
    QTime clock_;
    QString label_;
    int level_;
    int threshold_ = thresholdMs;
    QString text_;
};

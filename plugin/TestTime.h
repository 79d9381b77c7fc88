#pragma once

#include <QtCore/QString>
#include <QtCore/QTime>

/// A scope timer: each check-point logs its label and the milliseconds since the previous one.
class CTestTime
{
public:
    /// Log channels.
    enum Level { Debug = 0, Warning = 1, Critical = 2, Info = 4 };

    /// Returns the time of day.
    using Clock = QTime (*)();

    /// Starts the timer. Each check-point reads @p now.
    explicit CTestTime(int level = Debug, Clock now = &QTime::currentTime);

    /// Logs "function(line)" with the elapsed milliseconds and restarts the timer. From the threshold on, the
    /// line is logged at the level Info.
    void checkPoint(const char* function, int line);

    /// Restarts the timer without logging.
    void restart();

    static constexpr int kThresholdMs = 100;

    /// The level at which a line of @p level is logged after @p elapsedMs.
    static int effectiveLevel(int level, int elapsedMs);

private:
    int elapsedMs() const;
    void log(int level, int elapsedMs);

    Clock now_;
    QTime clock_;
    QString label_;
    int level_;
    int threshold_ = kThresholdMs;
    QString text_;
};

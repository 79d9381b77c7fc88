#include "plugin/TestTime.h"

#include <QtCore/QDebug>
#include <QtCore/QMessageLogger>

CTestTime::CTestTime(int level, Clock now) : now_(now), clock_(now()), level_(level) {}

void CTestTime::checkPoint(const char* function, int line)
{
    label_ = QStringLiteral("%1(%2)").arg(QLatin1String(function)).arg(line);
    const int elapsed = elapsedMs();
    log(elapsed >= threshold_ ? effectiveLevel(level_, elapsed) : level_, elapsed);
    restart();
}

void CTestTime::restart()
{
    clock_ = now_();
}

int CTestTime::elapsedMs() const
{
    constexpr int kDayMs = 24 * 60 * 60 * 1000;
    const int elapsed = clock_.msecsTo(now_());
    // The time of day restarts at midnight.
    return elapsed < 0 ? elapsed + kDayMs : elapsed;
}

int CTestTime::effectiveLevel(int level, int elapsedMs)
{
    return elapsedMs >= kThresholdMs && level < Info ? Info : level;
}

void CTestTime::log(int level, int elapsedMs)
{
    text_ = QStringLiteral("%1 %2 ms").arg(label_).arg(elapsedMs);
    const QMessageLogger logger;
    const QByteArray line = text_.toUtf8();
    switch (level) {
    case Debug:
        logger.debug("%s", line.constData());
        break;
    case Warning:
        logger.warning("%s", line.constData());
        break;
    case Critical:
        logger.critical("%s", line.constData());
        break;
    case Info:
        logger.info("%s", line.constData());
        break;
    default:
        break;
    }
}

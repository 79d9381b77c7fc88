#include "host/simulation/Pace.h"

#include "host/machine/Functions.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr double kBytesPerMillisecond = 4.0 * 1024 * 1024 * 1024 / 1000;
// Limits the duration, so that it fits into the integer type.
constexpr double kLongest = 1e12;

QRegularExpressionMatch matchFailure(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*(\\w+)\\s+after\\s+(\\d{1,3}(?:\\.\\d+)?)\\s*%\\s*$"));
    return form.match(text);
}

} // namespace

qint64 Pace::milliseconds(qint64 fixed, qint64 bytes) const
{
    if (instant)
        return 0;
    const double all = static_cast<double>(fixed) + static_cast<double>(bytes) / kBytesPerMillisecond;
    return static_cast<qint64>(std::min(all / factor, kLongest));
}

std::optional<Pace> readPace(const QString& text)
{
    if (text == QLatin1String("instant"))
        return Pace{true, 1};
    bool isNumber = false;
    const double factor = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(factor) || factor <= 0)
        return std::nullopt;
    return Pace{false, factor};
}

std::optional<PlannedFailure> readFailure(const QString& text)
{
    const QRegularExpressionMatch match = matchFailure(text);
    const int function = functionNumber(match.captured(1));
    const double share = match.captured(2).toDouble() / 100;
    if (!match.hasMatch() || function < 0 || share > 1)
        return std::nullopt;
    return PlannedFailure{function, share};
}

QString unknownTask(const QString& text)
{
    const QString name = matchFailure(text).captured(1);
    return functionNumber(name) < 0 ? name : QString();
}

} // namespace host

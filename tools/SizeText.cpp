#include "tools/SizeText.h"

namespace {

constexpr qint64 kKilo = 1024;
constexpr qint64 kMega = kKilo * 1024;
constexpr qint64 kGiga = kMega * 1024;
constexpr qint64 kTera = kGiga * 1024;

double rounded(double number, int precision)
{
    int factor = 1;
    for (int i = 0; i < precision; ++i)
        factor *= 10;
    return static_cast<double>(static_cast<qint32>(qRound64(number * factor))) / factor;
}

QString numberWithUnit(double number, int precision, const char* unit)
{
    return QString::number(number, 'f', precision) + QLatin1Char(' ') + QLatin1String(unit);
}

} // namespace

QString formatSizeText(qint64 value, int precision, bool showMegabyteDecimals)
{
    if (value <= 0)
        return QStringLiteral("0 Byte");
    const auto number = static_cast<double>(value);
    if (value < kKilo)
        return numberWithUnit(number, precision, "Bytes");
    if (value < kMega)
        return numberWithUnit(number / kKilo, precision, "KB");
    if (value < kGiga) {
        const double megabytes = rounded(number / kMega, precision);
        if (static_cast<int>(megabytes) == 1024)
            return QStringLiteral("1.00 GB");
        return numberWithUnit(megabytes, showMegabyteDecimals ? precision : 0, "MB");
    }
    if (value < kTera)
        return numberWithUnit(rounded(number / kGiga, precision), precision, "GB");
    return numberWithUnit(rounded(number / kTera, precision), precision, "TB");
}

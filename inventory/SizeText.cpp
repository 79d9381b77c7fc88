#include "inventory/SizeText.h"

#include <QtCore/QByteArray>

namespace {

constexpr qint64 kKilo = 1024;
constexpr qint64 kMega = kKilo * 1024;
constexpr qint64 kGiga = kMega * 1024;
constexpr qint64 kTera = kGiga * 1024;

int powerOfTen(int exponent)
{
    int power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= 10;
    return power;
}

// The number in units of the last decimal place.
qint32 rounded(double number, int precision)
{
    return static_cast<qint32>(qRound64(number * powerOfTen(precision)));
}

std::string withDecimals(double number, int precision)
{
    return QByteArray::number(number, 'f', precision).toStdString();
}

// Formats an already rounded number from its integer digits, which is faster than formatting a double.
// Numbers below 1, including negative ones after an overflow, and numbers without decimals still use the
// double.
std::string withDecimals(qint32 steps, int precision)
{
    const int one = powerOfTen(precision);
    if (precision == 0 || steps < one)
        return withDecimals(static_cast<double>(steps) / one, precision);
    std::string digits = std::to_string(steps);
    return digits.insert(digits.size() - static_cast<std::size_t>(precision), 1, '.');
}

std::string megabytes(double number, int precision, bool showDecimals)
{
    const double value = static_cast<double>(rounded(number, precision)) / powerOfTen(precision);
    if (static_cast<int>(value) == 1024)
        return "1.00 GB";
    return withDecimals(value, showDecimals ? precision : 0) + " MB";
}

} // namespace

std::string sizeText(qint64 value, int precision, bool showMegabyteDecimals)
{
    if (value <= 0)
        return "0 Byte";
    const auto number = static_cast<double>(value);
    if (value < kKilo)
        return withDecimals(number, precision) + " Bytes";
    if (value < kMega)
        return withDecimals(number / kKilo, precision) + " KB";
    if (value < kGiga)
        return megabytes(number / kMega, precision, showMegabyteDecimals);
    if (value < kTera)
        return withDecimals(rounded(number / kGiga, precision), precision) + " GB";
    return withDecimals(rounded(number / kTera, precision), precision) + " TB";
}

QString formatSizeText(qint64 value, int precision, bool showMegabyteDecimals)
{
    return QString::fromStdString(sizeText(value, precision, showMegabyteDecimals));
}

// Formatting of byte counts, at each boundary.
#include "inventory/SizeText.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr qint64 kMega = 1048576;
constexpr qint64 kGiga = 1073741824;
constexpr qint64 kTera = 1099511627776;

struct Case
{
    qint64 value;
    const char* text;
};

TEST(SizeText, HasTwoDecimalsExceptForMegabytes)
{
    const Case cases[] = {
        {std::numeric_limits<qint64>::min(), "0 Byte"},
        {-1, "0 Byte"},
        {0, "0 Byte"},
        {1, "1.00 Bytes"},
        {512, "512.00 Bytes"},
        {1023, "1023.00 Bytes"},
        {1024, "1.00 KB"},
        {1536, "1.50 KB"},
        // The unit is chosen before rounding: the last value of a row prints like the first of the next unit.
        {kMega - 1, "1024.00 KB"},
        {kMega - 6, "1023.99 KB"},
        {kMega, "1 MB"},
        {kMega + kMega / 2 - 1, "2 MB"},
        {kMega + kMega * 49 / 100, "1 MB"},
        // 1023.9 and the largest value that rounds to 1023.99
        {1073636966, "1024 MB"},
        {1073736581, "1024 MB"},
        {1073736582, "1.00 GB"},
        {kGiga - 1, "1.00 GB"},
        {kGiga, "1.00 GB"},
        {1610612736, "1.50 GB"},
        {kGiga + 5368709, "1.00 GB"},
        {kGiga + 5368710, "1.01 GB"},
        {kTera - 1073742, "1024.00 GB"},
        {kTera - 1, "1024.00 GB"},
        {kTera, "1.00 TB"},
        {kTera * 3 / 2, "1.50 TB"},
        {std::numeric_limits<qint64>::max(), "8388608.00 TB"}};
    for (const Case& c : cases)
        EXPECT_EQ(formatSizeText(c.value, 2, false).toStdString(), c.text) << c.value;
}

TEST(SizeText, WithMegabyteDecimals_OnlyTheMegabyteRowChanges)
{
    const Case cases[] = {{0, "0 Byte"},           {1023, "1023.00 Bytes"}, {1536, "1.50 KB"},
                          {kMega, "1.00 MB"},      {1572864, "1.50 MB"},    {1073736581, "1023.99 MB"},
                          {1073736582, "1.00 GB"}, {1610612736, "1.50 GB"}, {kTera * 3 / 2, "1.50 TB"}};
    for (const Case& c : cases)
        EXPECT_EQ(formatSizeText(c.value, 2, true).toStdString(), c.text) << c.value;
}

TEST(SizeText, WithAnotherPrecision_RoundsToIt)
{
    EXPECT_EQ(formatSizeText(1, 0, false), "1 Bytes");
    EXPECT_EQ(formatSizeText(1536, 1, false), "1.5 KB");
    EXPECT_EQ(formatSizeText(1536, 3, false), "1.500 KB");
    // At the boundary, only the lower row has the fixed string.
    EXPECT_EQ(formatSizeText(kGiga - 1, 3, false), "1.00 GB");
    EXPECT_EQ(formatSizeText(kGiga, 0, false), "1 GB");
    EXPECT_EQ(formatSizeText(kGiga + kGiga / 2, 1, false), "1.5 GB");
    // The rounded number is truncated to 32 bits.
    EXPECT_EQ(formatSizeText(std::numeric_limits<qint64>::max(), 3, false), "-201326.592 TB");
    EXPECT_EQ(formatSizeText(kGiga, 3, false), "1.000 GB");
    EXPECT_EQ(formatSizeText(kTera, 3, false), "1.000 TB");
    // Halves are rounded away from zero.
    EXPECT_EQ(formatSizeText(kGiga + kGiga / 2, 0, false), "2 GB");
    EXPECT_EQ(formatSizeText(kGiga * 2 + kGiga / 2, 0, false), "3 GB");
    EXPECT_EQ(formatSizeText(kGiga + kGiga / 4, 1, false), "1.3 GB");
    // The rounded number selects the fixed string: 1023.5 is 1024 without decimals.
    EXPECT_EQ(formatSizeText(kGiga - kMega / 2, 0, false), "1.00 GB");
    EXPECT_EQ(formatSizeText(kGiga - kMega / 2, 1, true), "1023.5 MB");
}

} // namespace

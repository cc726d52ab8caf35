#include "access/jet_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace accessfile;

TEST(JetDateText, CountsDaysFromTheEndOf1899WithTheTimeOfDayOnlyWhenPresent) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, std::optional<QString>> cases[] = {
        {0.0, "1899-12-30"},
        {2.0, "1900-01-01"},
        {31898.0, "1987-05-01"},
        {36526.5, "2000-01-01 12:00:00"},
        {31898.0 + (13 * 3600 + 45 * 60 + 30) / 86400.0, "1987-05-01 13:45:30"},
        // Stored fractions are inexact; a value a hair below midnight is the next day.
        {36526.9999999999, "2000-01-02"},
        // Before day zero the fraction still counts forward.
        {-1.0, "1899-12-29"},
        {-1.25, "1899-12-29 06:00:00"},
        // Only the years Access knows.
        {-657434.0, "0100-01-01"},
        {2958465.0, "9999-12-31"},
        {-657435.0, std::nullopt},
        {2958466.0, std::nullopt},
        {nan, std::nullopt},
        {1e300, std::nullopt},
    };
    for (const auto& [serial, text] : cases)
        EXPECT_EQ(jetDateText(serial), text) << serial;
}

TEST(JetNumbers, SinglesReadAsTheirShortestDecimalAndCurrencyAsTenThousandths) {
    EXPECT_EQ(singleAsDouble(0.1f), 0.1);
    EXPECT_EQ(singleAsDouble(-2.25e10f), -2.25e10);
    EXPECT_EQ(singleAsDouble(16777216.0f), 16777216.0);
    EXPECT_TRUE(std::isinf(singleAsDouble(std::numeric_limits<float>::infinity())));
    EXPECT_EQ(currencyAsDouble(12345678), 1234.5678);
    EXPECT_EQ(currencyAsDouble(-1), -0.0001);
}

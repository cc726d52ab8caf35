#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "query/field_values.h"
#include "query/number_text.h"
#include "query/value_printers.h"

namespace {

using namespace query;

TEST(FormatTimeTest, SplitsWholeSeconds) {
    EXPECT_EQ(formatTime(0), QStringLiteral("00:00:00"));
    EXPECT_EQ(formatTime(2947), QStringLiteral("00:49:07"));
    EXPECT_EQ(formatTime(86399), QStringLiteral("23:59:59"));
    EXPECT_EQ(formatTime(90000), QStringLiteral("25:00:00"));
    EXPECT_EQ(formatTime(359999), QStringLiteral("99:59:59"));
    EXPECT_EQ(formatTime(360000), QStringLiteral("100:00:00"));
}

TEST(ParseTimeTest, ReadsHoursMinutesSeconds) {
    EXPECT_EQ(parseTime("00:49:07"), 2947.0);
    EXPECT_EQ(parseTime("100:00:00"), 360000.0);
    EXPECT_EQ(parseTime(" 1:2:3"), 3723.0);
    EXPECT_EQ(parseTime("0:546:0"), 32760.0);
}

TEST(ParseTimeTest, RefusesMalformedTexts) {
    for (const char* bad : {"", "0149", "01:49", "aa:49:07", "01:49:07:00", "0:547:0", "01::07"})
        EXPECT_THROW(parseTime(QString::fromLatin1(bad)), std::invalid_argument) << bad;
}

TEST(ParseTimeTest, RoundTripsEveryTimeUpToOneHundredHours) {
    int mismatches = 0;
    for (int s = 0; s <= 359999; ++s) {
        if (parseTime(formatTime(s)) != double(s) && ++mismatches <= 5)
            ADD_FAILURE() << s << " -> " << formatTime(s).toStdString();
    }
    EXPECT_EQ(mismatches, 0);
}

TEST(EscapeSqlTest, PassesDependOnTheMode) {
    EXPECT_EQ(escapeSql("AVOID", "O'Neil"), QStringLiteral("O''Neil"));
    EXPECT_EQ(escapeSql("CONTAINS", "Rock'n'Roll [Live]*"),
              QStringLiteral("Rock''n''Roll [[]Live][*]"));
    EXPECT_EQ(escapeSql("AVOID", "a[b*"), QStringLiteral("a[b*"));
    EXPECT_EQ(escapeSql("", "a[b*"), QStringLiteral("a[[]b*"));
    EXPECT_EQ(escapeSql("Like", "'?*#["), QStringLiteral("''?*#[[]"));
    EXPECT_EQ(escapeSql("starts", "#1?"), QStringLiteral("[#]1[?]"));
    EXPECT_EQ(escapeSql("Starts", "[[x"), QStringLiteral("[[][[]x"));
}

TEST(EscapeSqlTest, PlainAndEmptyTextsStayUnchanged) {
    for (const char* mode : {"AVOID", "CONTAINS", "STARTS", "Not Like", ""}) {
        EXPECT_EQ(escapeSql(mode, "Abba Gold 1992"), QStringLiteral("Abba Gold 1992")) << mode;
        EXPECT_EQ(escapeSql(mode, ""), QString()) << mode;
    }
}

TEST(SqlDateLiteralTest, MonthDayTwoDigitYear) {
    EXPECT_EQ(sqlDateLiteral(QDate(1997, 1, 21)), QStringLiteral("#1/21/97#"));
    EXPECT_EQ(sqlDateLiteral(QDate(2000, 12, 5)), QStringLiteral("#12/5/00#"));
    EXPECT_EQ(sqlDateLiteral(QDate(2009, 3, 30)), QStringLiteral("#3/30/09#"));
}

TEST(UpcaseKeyTest, OnlyLowerCaseLettersChange) {
    const std::pair<qint16, qint16> cases[] = {{97, 65},   {122, 90}, {65, 65},  {48, 48},
                                               {228, 228}, {96, 96},  {123, 123}};
    for (auto [key, expected] : cases) {
        qint16 code = key;
        upcaseKey(code);
        EXPECT_EQ(code, expected) << key;
    }
}

TEST(ReadScaledNumberTest, DecimalPointsSignsAndRounding) {
    EXPECT_EQ(readScaledNumber("1.5", 2), 150);
    EXPECT_EQ(readScaledNumber("1,005", 2), 100);
    EXPECT_EQ(readScaledNumber("1.015", 2), 102);
    EXPECT_EQ(readScaledNumber("+.5", 0), 0);
    EXPECT_EQ(readScaledNumber("5.", 0), 5);
    EXPECT_EQ(readScaledNumber("-0.5", 0), 0);
    EXPECT_EQ(readScaledNumber("9223372036854775807", 0), std::numeric_limits<qint64>::max());
    EXPECT_EQ(readScaledNumber("-9223372036854775808", 0), std::numeric_limits<qint64>::min());
    EXPECT_EQ(readScaledNumber("9223372036854775807.5", 0), std::nullopt);
    EXPECT_EQ(readScaledNumber("9223372036854775808", 0), std::nullopt);
    for (const char* bad : {"", " ", ".", "+", "1 000", "1.000,5", "0x10", "--1"})
        EXPECT_EQ(readScaledNumber(QString::fromLatin1(bad), 0), std::nullopt) << bad;
}

TEST(CurrencyTest, TextAndDoubleConversions) {
    EXPECT_EQ(Currency::fromText("12.5")->units(), 125000);
    EXPECT_EQ(Currency::fromUnits(125000).toText(), QStringLiteral("12.5"));
    EXPECT_EQ(Currency::fromUnits(30000).toText(), QStringLiteral("3"));
    EXPECT_EQ(Currency::fromUnits(-1).toText(), QStringLiteral("-0.0001"));
    EXPECT_EQ(Currency::fromUnits(std::numeric_limits<qint64>::min()).toText(),
              QStringLiteral("-922337203685477.5808"));
    EXPECT_DOUBLE_EQ(Currency::fromUnits(-25).toDouble(), -0.0025);
    // 1/32 and 3/32 are exact binary fractions that fall on half a ten-thousandth.
    EXPECT_EQ(Currency::fromDouble(0.03125)->units(), 312);
    EXPECT_EQ(Currency::fromDouble(0.09375)->units(), 938);
    EXPECT_EQ(Currency::fromDouble(1e15), std::nullopt);
    EXPECT_EQ(Currency::fromDouble(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

}  // namespace

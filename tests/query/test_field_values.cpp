#include <gtest/gtest.h>

#include "platform/scripted_dialogs.h"
#include "query/field_values.h"
#include "query/value_printers.h"

namespace {

using query::checkValue;
using query::Currency;
using query::FieldValue;

const QString kTimeMessage = QStringLiteral("Value must be a valid time (e.g. 00:49:07).");
const QString kYesNoMessage = QStringLiteral("Value must be 'Yes' or 'No'.");
const QString kIntegerMessage = QStringLiteral("Value must be a number (integer).");
const QString kCurrencyMessage = QStringLiteral("Value must be a currency.");
const QString kDateMessage = QStringLiteral("Value must be a valid date (e.g. 21.01.97).");

const FieldValue kFailed = FieldValue::fromText(QString());

class CheckValueTest : public testing::Test {
  protected:
    FieldValue check(const QVariant& value, const QString& letter, bool quiet = false) {
        return checkValue(value, letter, quiet, dialogs_);
    }
    // Checks a value that must fail: the empty text comes back and exactly one message, the
    // expected one, is shown as an exclamation titled with the program's name.
    void expectRefused(const QVariant& value, const QString& letter, const QString& message) {
        SCOPED_TRACE(value.toString().toStdString() + " as " + letter.toStdString());
        dialogs_.clear();
        EXPECT_EQ(check(value, letter), kFailed);
        ASSERT_EQ(dialogs_.messages().size(), 1u);
        const platform::MessageRequest& shown = dialogs_.messages().front();
        EXPECT_EQ(shown.text, message);
        EXPECT_EQ(shown.title, QStringLiteral("Mixorama"));
        EXPECT_EQ(shown.icon, platform::MessageIcon::Exclamation);
        EXPECT_EQ(shown.buttons, platform::MessageButtons::Ok);
    }
    bool nothingShown() const { return dialogs_.messages().empty(); }

    platform::ScriptedDialogs dialogs_;
};

TEST_F(CheckValueTest, TimeShortFormIsNormalisedAndLongFormKept) {
    EXPECT_EQ(check("014907", "t"), FieldValue::fromText("01:49:07"));
    EXPECT_EQ(check("01:49:07", "T"), FieldValue::fromText("01:49:07"));
    EXPECT_EQ(check("99:59:59", "t"), FieldValue::fromText("99:59:59"));
    EXPECT_EQ(check("995959", "t"), FieldValue::fromText("99:59:59"));
    EXPECT_EQ(check("00:00:00", "t"), FieldValue::fromText("00:00:00"));
    EXPECT_TRUE(nothingShown());
}

TEST_F(CheckValueTest, MalformedOrOutOfRangeTimesAreRefused) {
    for (const char* typed : {"1:49:07", "01:60:00", "0149", "01-49-07", "100:00:00", "01:49:60",
                              "016000", "ab:cd:ef", "", "0149070"})
        expectRefused(QString::fromLatin1(typed), "t", kTimeMessage);
}

TEST_F(CheckValueTest, YesNoWordsIgnoreCase) {
    for (const char* yes : {"Ja", "-1", "y", "YES", "True", "on", "j"})
        EXPECT_EQ(check(QString::fromLatin1(yes), "b"), FieldValue::fromYesNo(true)) << yes;
    for (const char* no : {"NEIN", "0", "n", "No", "false", "OFF"})
        EXPECT_EQ(check(QString::fromLatin1(no), "B"), FieldValue::fromYesNo(false)) << no;
    EXPECT_EQ(check(true, "b"), FieldValue::fromYesNo(true));
    EXPECT_TRUE(nothingShown());
    for (const char* other : {"maybe", "", " yes", "1", "nope"})
        expectRefused(QString::fromLatin1(other), "b", kYesNoMessage);
}

TEST_F(CheckValueTest, IntegersAreSixteenBitAndRoundHalvesToEven) {
    EXPECT_EQ(check("12", "N"), FieldValue::fromInteger(12));
    EXPECT_EQ(check(" -32768 ", "n"), FieldValue::fromInteger(-32768));
    EXPECT_EQ(check("32767", "n"), FieldValue::fromInteger(32767));
    EXPECT_EQ(check("2.5", "n"), FieldValue::fromInteger(2));
    EXPECT_EQ(check("3.5", "n"), FieldValue::fromInteger(4));
    EXPECT_EQ(check("-2.5", "n"), FieldValue::fromInteger(-2));
    EXPECT_EQ(check("2.51", "n"), FieldValue::fromInteger(3));
    EXPECT_EQ(check(2.5, "n"), FieldValue::fromInteger(2));
    EXPECT_EQ(check(1234, "n"), FieldValue::fromInteger(1234));
    EXPECT_TRUE(nothingShown());
    for (const QVariant& bad : {QVariant("40000"), QVariant("32767.5"), QVariant("-32769"),
                                QVariant("12a"), QVariant("1.2.3"), QVariant(""), QVariant("-"),
                                QVariant(40000), QVariant(1e300), QVariant()})
        expectRefused(bad, "n", kIntegerMessage);
}

TEST_F(CheckValueTest, CurrencyKeepsFourDecimals) {
    EXPECT_EQ(check("12.5", "r"), FieldValue::fromCurrency(Currency::fromUnits(125000)));
    EXPECT_EQ(check("0,00005", "R"), FieldValue::fromCurrency(Currency::fromUnits(0)));
    EXPECT_EQ(check("0.00015", "r"), FieldValue::fromCurrency(Currency::fromUnits(2)));
    EXPECT_EQ(check(" -922337203685477.5808", "r"),
              FieldValue::fromCurrency(Currency::fromUnits(std::numeric_limits<qint64>::min())));
    EXPECT_EQ(check(19.99, "r"), FieldValue::fromCurrency(Currency::fromUnits(199900)));
    EXPECT_TRUE(nothingShown());
    for (const char* bad : {"922337203685477.5808", "12 EUR", "", "1e5", "99999999999999999999"})
        expectRefused(QString::fromLatin1(bad), "r", kCurrencyMessage);
}

TEST_F(CheckValueTest, DatesAcrossTheCenturyAndWithFourDigitYears) {
    EXPECT_EQ(check("21.01.97", "d"), FieldValue::fromDate(QDate(1997, 1, 21)));
    EXPECT_EQ(check("31.12.99", "D"), FieldValue::fromDate(QDate(1999, 12, 31)));
    EXPECT_EQ(check("01.01.00", "d"), FieldValue::fromDate(QDate(2000, 1, 1)));
    EXPECT_EQ(check("29.02.00", "d"), FieldValue::fromDate(QDate(2000, 2, 29)));
    EXPECT_EQ(check("1.1.29", "d"), FieldValue::fromDate(QDate(2029, 1, 1)));
    EXPECT_EQ(check("1.1.30", "d"), FieldValue::fromDate(QDate(1930, 1, 1)));
    EXPECT_EQ(check("21.01.1997", "d"), FieldValue::fromDate(QDate(1997, 1, 21)));
    EXPECT_EQ(check("21/1/2031", "d"), FieldValue::fromDate(QDate(2031, 1, 21)));
    EXPECT_EQ(check("21-01-97", "d"), FieldValue::fromDate(QDate(1997, 1, 21)));
    EXPECT_EQ(check("1997-01-21", "d"), FieldValue::fromDate(QDate(1997, 1, 21)));
    EXPECT_EQ(check(QDate(2001, 9, 3), "d"), FieldValue::fromDate(QDate(2001, 9, 3)));
    EXPECT_EQ(check("21.01.97", "d").toText(), QStringLiteral("21.01.97"));
    EXPECT_TRUE(nothingShown());
    for (const char* bad : {"31.02.97", "29.02.99", "21.13.97", "21.01", "21.01.197", "21.01/97",
                            "tomorrow", "", "1997-02-30"})
        expectRefused(QString::fromLatin1(bad), "d", kDateMessage);
}

TEST_F(CheckValueTest, UncheckedLettersGiveTheEmptyValueSilently) {
    for (const char* letter : {"c", "C", "z", "", "nn"})
        EXPECT_EQ(check("anything", QString::fromLatin1(letter)), FieldValue()) << letter;
    EXPECT_TRUE(nothingShown());
    EXPECT_NE(FieldValue(), kFailed);
}

TEST_F(CheckValueTest, QuietFailuresShowNothing) {
    EXPECT_EQ(check("40000", "n", true), kFailed);
    EXPECT_EQ(check("abc", "r", true), kFailed);
    EXPECT_EQ(check("31.02.97", "d", true), kFailed);
    EXPECT_EQ(check("0149", "t", true), kFailed);
    EXPECT_EQ(check("maybe", "b", true), kFailed);
    EXPECT_TRUE(nothingShown());
}

TEST(FieldValueTest, WrittenAsText) {
    EXPECT_EQ(FieldValue().toText(), QString());
    EXPECT_EQ(kFailed.toText(), QString());
    EXPECT_EQ(FieldValue::fromInteger(-12).toText(), QStringLiteral("-12"));
    EXPECT_EQ(FieldValue::fromYesNo(true).toText(), QStringLiteral("True"));
    EXPECT_EQ(FieldValue::fromYesNo(false).toText(), QStringLiteral("False"));
    EXPECT_EQ(FieldValue::fromDate(QDate(2005, 3, 7)).toText(), QStringLiteral("07.03.05"));
    EXPECT_EQ(FieldValue::fromText("01:49:07").toText(), QStringLiteral("01:49:07"));
}

TEST(FieldValueTest, EqualityNeedsTheSameKind) {
    EXPECT_NE(FieldValue::fromInteger(0), FieldValue::fromYesNo(false));
    EXPECT_NE(FieldValue::fromInteger(1), FieldValue::fromCurrency(Currency::fromUnits(1)));
    EXPECT_NE(FieldValue::fromText("1"), FieldValue::fromInteger(1));
    EXPECT_EQ(FieldValue::fromInteger(5).kind(), FieldValue::Kind::Integer);
    EXPECT_THROW(FieldValue::fromInteger(5).text(), std::bad_variant_access);
}

}  // namespace

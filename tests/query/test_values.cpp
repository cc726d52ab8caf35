#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/scripted_dialogs.h"
#include "query/field_values.h"
#include "query/goto_fixture.h"

namespace {

using namespace query;
using K = ValueKind;

// Per kind: typed texts with their normal form ("typed>normal"), and typed texts refused.
struct KindCases {
    ValueKind kind;
    const char* message;
    QStringList accepted;
    QStringList refused;
};

const KindCases kKinds[] = {
    {K::Time,
     "Value must be a valid time (e.g. 00:49:07).",
     {"014907>01:49:07", "99:59:59>99:59:59", "000000>00:00:00"},
     {"1:49:07", "01:60:00", "016000", "01:49:60", "100:00:00", "0149", "01-49-07", ""}},
    {K::YesNo,
     "Value must be 'Yes' or 'No'.",
     {"Ja>True", "-1>True", "on>True", "NEIN>False", "off>False", "0>False"},
     {" yes", "1", "maybe"}},
    {K::Number,
     "Value must be a number (integer).",
     {" -32768 >-32768", "32767>32767", "2.5>2", "3.5>4", "-2.5>-2", "2.51>3"},
     {"32768", "-32769", "32767.5", "12a", "1.2.3", "-", ""}},
    {K::Currency,
     "Value must be a currency.",
     {"12.5>12.5", "0,00015>0.0002", " -922337203685477.5808>-922337203685477.5808"},
     {"922337203685477.5808", "1e5", "12 EUR"}},
    {K::Date,
     "Value must be a valid date (e.g. 21.01.97).",
     {"21.01.97>21.01.97", "29.02.00>29.02.00", "21/1/2031>21.01.31", "21-1-97>21.01.97",
      "1997-01-21>21.01.97"},
     {"31.02.97", "29.02.99", "21.01/97", "21.01.197", "21.01", "1997-02-30"}},
};

TEST(CheckValue, TypedValuesComeBackInNormalFormOrAreRefusedWithTheKindsMessage) {
    for (const KindCases& cases : kKinds) {
        for (const QString& accepted : cases.accepted) {
            platform::ScriptedDialogs dialogs;
            const QStringList typed = accepted.split('>');
            EXPECT_EQ(checkValue(typed[0], cases.kind, false, dialogs).toText(), typed[1]);
            EXPECT_TRUE(dialogs.messages().empty()) << accepted.toStdString();
        }
        for (const QString& refused : cases.refused) {
            SCOPED_TRACE(refused.toStdString());
            platform::ScriptedDialogs dialogs;
            EXPECT_EQ(checkValue(refused, cases.kind, false, dialogs), FieldValue::fromText({}));
            ASSERT_EQ(dialogs.messages().size(), 1u);
            EXPECT_EQ(dialogs.messages()[0].text, cases.message);
            EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
            EXPECT_EQ(checkValue(refused, cases.kind, true, dialogs), FieldValue::fromText({}));
            EXPECT_EQ(dialogs.messages().size(), 1u);  // the quiet check shows nothing
        }
    }
}

TEST(CheckValue, ValuesOfOtherTypesTheCenturyAndKeyCodes) {
    EXPECT_EQ(checkValue(true, K::YesNo), FieldValue::fromYesNo(true));
    EXPECT_EQ(checkValue(2.5, K::Number), FieldValue::fromInteger(2));
    EXPECT_EQ(checkValue(40000, K::Number), FieldValue::fromText({}));
    EXPECT_EQ(checkValue(QVariant(), K::Number), FieldValue::fromText({}));
    EXPECT_EQ(checkValue(19.99, K::Currency).currency().units(), 199900);
    EXPECT_EQ(checkValue(QDate(2001, 9, 3), K::Date).date(), QDate(2001, 9, 3));
    EXPECT_EQ(checkValue("1.1.29", K::Date).date(), QDate(2029, 1, 1));
    EXPECT_EQ(checkValue("1.1.30", K::Date).date(), QDate(1930, 1, 1));
    EXPECT_EQ(checkValue("anything", K::Text), FieldValue());  // text is not checked
    EXPECT_EQ(Currency::fromDouble(0.03125)->units(), 312);    // half a unit, to even
    EXPECT_EQ(sqlDateLiteral(QDate(2000, 12, 5)), "#12/5/00#");
    for (auto [key, upper] : {std::pair<qint16, qint16>{96, 96}, {97, 65}, {122, 90}, {123, 123}}) {
        upcaseKey(key);  // only the lower case letters change
        EXPECT_EQ(key, upper);
    }
}

TEST(PlayTimes, FormatAndParseRoundTripUpToOneHundredHours) {
    EXPECT_EQ(formatTime(2947), QStringLiteral("00:49:07"));
    EXPECT_EQ(formatTime(360000), QStringLiteral("100:00:00"));
    int mismatches = 0;
    for (int s = 0; s <= 360000; ++s) {
        if (parseTime(formatTime(s)) != double(s) && ++mismatches <= 5)
            ADD_FAILURE() << s << " -> " << formatTime(s).toStdString();
    }
    EXPECT_EQ(parseTime(" 1:2:3"), 3723.0);
    EXPECT_EQ(parseTime("0:546:0"), 32760.0);  // minutes count in 16 bits
    for (const char* bad : {"0149", "01:49:07:00", "0:547:0", "01::07"})
        EXPECT_THROW(parseTime(QString::fromLatin1(bad)), std::invalid_argument) << bad;
}

TEST(EscapeSql, EachUseEscapesItsSpecialCharacters) {
    const QString text = QStringLiteral("O'Neil [live] *#?");
    EXPECT_EQ(escapeSql(EscapeFor::Literal, text), "O''Neil [live] *#?");
    EXPECT_EQ(escapeSql(EscapeFor::TypedPattern, text), "O''Neil [[]live] *#?");
    EXPECT_EQ(escapeSql(EscapeFor::TextInPattern, text), "O''Neil [[]live] [*][#][?]");
    EXPECT_EQ(textCondition("starts", "#1"), "LIKE '[#]1**'");
    EXPECT_EQ(textCondition("Not Like", "[x]*"), "Not Like '[[]x]*'");
}

}  // namespace

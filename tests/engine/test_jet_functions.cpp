// The Jet functions and Like as SQLite runs them, one table of {expression, value} per family.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QLocale>

#include "engine/jet_dialect.h"
#include "engine/jet_functions.h"
#include "support/databases.h"

namespace {

const QString kNull = QStringLiteral("<null>");
const QString kError = QStringLiteral("<error>");

struct Evaluation {
    const char* expression;
    QString expected;
};

class JetFunctions : public ::testing::Test {
  protected:
    void SetUp() override { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    void TearDown() override { QLocale::setDefault(QLocale::system()); }

    // The value of a Jet expression as text: "<null>" for Null, "<error>" on failure.
    QString eval(const QString& expression) {
        try {
            return db.lines("SELECT " + engine::translateJetExpression(expression)).value(0);
        } catch (const std::exception&) {
            return kError;
        }
    }
    void expectAll(std::initializer_list<Evaluation> evaluations) {
        for (const Evaluation& e : evaluations)
            EXPECT_EQ(eval(QString::fromUtf8(e.expression)).toStdString(),
                      e.expected.toStdString());
    }

    testsupport::SqliteFile db{":memory:"};
};

// The tables keep two cases to a line.
// clang-format off
TEST_F(JetFunctions, LikeWildcardsSetsAndNull) {
    expectAll({
        {"'Beatles' LIKE 'beat*'", "1"},           {"'The Beatles' LIKE 'beat*'", "0"},
        {"'Beatles' LIKE 'B?atles'", "1"},         {"'Btles' LIKE 'B?tles*'", "0"},
        {"'Track 7' LIKE 'Track #'", "1"},         {"'Track X' LIKE 'Track #'", "0"},
        {"'Bad' LIKE '[a-c]ad'", "1"},             {"'dad' LIKE '[a-c]ad'", "0"},
        {"'dad' LIKE '[!a-c]ad'", "1"},            {"'Bad' LIKE '[!a-c]ad'", "0"},
        {"'a[b' LIKE 'a[[]b'", "1"},               {"'a*b' LIKE 'a[*]b'", "1"},
        {"'axb' LIKE 'a[*]b'", "0"},               {"'50% [live]' LIKE '*50% [[]live]*'", "1"},
        {"'50% live' LIKE '*50% [[]live]*'", "0"}, {"'x?' LIKE '*[?]'", "1"},
        {"'x' LIKE '*[?]'", "0"},                  {"'#1' LIKE '[#]#'", "1"},
        {"'' LIKE '*'", "1"},                      {"'' LIKE '?'", "0"},
        {"'ärzte' LIKE 'ÄRZ*'", "1"},              {"'ÉRIC' LIKE 'é*'", "1"},
        {"'Eric' LIKE 'é*'", "0"},                 {"'abc' LIKE 'a*c*'", "1"},
        {"'O''Neil' LIKE '*o''n*'", "1"},          {"'ab]' LIKE 'ab]'", "1"},
        {"180 LIKE '1#0'", "1"},                   {"NULL LIKE 'a*'", kNull},
        {"'a' LIKE NULL", kNull},                  {"'abc' LIKE 'a[bc'", kError},
        {"'abc' LIKE 'a%' ESCAPE '!'", kError}});
}

TEST_F(JetFunctions, Format) {
    expectAll({
        {"format(-1, 'Yes/No')", "Yes"},           {"format(1, 'Yes/No')", "Yes"},
        {"format(0, 'Yes/No')", "No"},             {"format(NULL, 'Yes/No')", kNull},
        {"format(-1, 'True/False')", "True"},      {"format(0, 'on/off')", "Off"},
        {"format(1234.5, 'Currency')", "$1,234.50"}, {"format(1234.5, 'Fixed')", "1234.50"},
        {"format(0.125, 'Percent')", "12.50%"},    {"format('abc', '>')", "ABC"},
        {"format('1997-01-21', 'dd.mm.yy')", "21.01.97"}, {"format('2000-01-01', 'yyyy')", "2000"},
        {"format('2000-03-04', 'd/m/yyyy')", "4/3/2000"},
        {"format('1999-12-31 23:05:09', 'hh:mm:ss')", "23:05:09"},
        {"format('1999-12-31 13:05:09', 'h:nn AM/PM')", "1:05 PM"},
        {"format('00:03:25', 'N:Ss')", "3:25"},
        {"format('1997-01-21', 'mmm d, yyyy')", "Jan 21, 1997"},
        {"format(3.14159, '0.00')", "3.14"},      {"format(1234567, '#,##0')", "1,234,567"},
        {"format(7, '000')", "007"},              {"format(-2.5, '0.0')", "-2.5"},
        {"format('not a date', 'dd.mm.yy')", "not a date"}});
}

TEST_F(JetFunctions, Text) {
    expectAll({
        {"Mid('Beatles', 2, 3)", "eat"},          {"Mid('Beatles', 4)", "tles"},
        {"Mid('Beatles', 10)", ""},               {"Mid(NULL, 1)", kNull},
        {"Mid('x', 0)", kError},                  {"Left('Ärzte', 2)", "Är"},
        {"Right('Ärzte', 10)", "Ärzte"},          {"Len('Ärzte')", "5"},
        {"Left('Beatles', 3) || Right('Beatles', 3) || Right('ab', 5) || Left('x', 0)",
         "Bealesab"},
        {"Len(NULL)", kNull},                     {"UCase('ärzte')", "ÄRZTE"},
        {"LCase('ÉRIC')", "éric"},                {"InStr('Beatles', 'TLE')", "4"},
        {"'[' || Trim('  a b  ') || '|' || LTrim('  a ') || '|' || RTrim(' a  ') || ']'",
         "[a b|a | a]"},
        {"InStr(5, 'abcabc', 'b')", "5"},         {"InStr(1, 'abcABC', 'B', 0)", "5"},
        {"InStr('abc', 'x')", "0"},               {"InStr(NULL, 'x')", kNull}});
}

TEST_F(JetFunctions, ConversionsAndChoices) {
    expectAll({
        // Plain digits, the common case, give the same whole numbers as the general reading.
        {"Val(' 1 2.5x')", "12.5"},               {"Val('1987-05-01')", "1987"},
        {"Val('abc')", "0"},                      {"Val('0042')", "42"},
        {"Val('1234567890123456')", "1234567890123456"}, {"Val('19 87')", "1987"},
        {"Val('')", "0"},                         {"typeof(Val('7'))", "integer"},
        {"CInt(2.5)", "2"},                       {"CInt(3.5)", "4"},
        {"CInt(-2.5)", "-2"},                     {"CInt('12')", "12"},
        {"CInt(40000)", kError},                  {"CInt('abc')", kError},
        {"CLng(40000.5)", "40000"},               {"CLng(3000000000)", kError},
        {"Int(-1.5)", "-2"},                      {"Int(1.9)", "1"},
        {"CStr(1.5) || CStr(2)", "1.52"},         {"IIf(-1, 'yes', 'no')", "yes"},
        {"IIf(NULL, 'yes', 'no')", "no"},         {"Nz(NULL, 7)", "7"},
        {"Nz(NULL)", ""},                         {"Nz('x', 7)", "x"},
        {"Year('1997-01-21') || '/' || Month('1997-01-21') || '/' || Day('1997-01-21')",
         "1997/1/21"},
        {"Year('2000-01-01 10:30:00')", "2000"},  {"Year(NULL)", kNull},
        {"Month('junk')", kError}});
    EXPECT_EQ(engine::jetVal("-3.5e2 apples"), -350);
    EXPECT_EQ(engine::jetVal("12e"), 12);
}
// clang-format on

TEST_F(JetFunctions, TodayAndNow) {
    const QString before = QDate::currentDate().toString("yyyy-MM-dd");
    const QString today = eval("Date()");
    const QString now = eval("Now()");
    const QString after = QDate::currentDate().toString("yyyy-MM-dd");
    EXPECT_TRUE(today == before || today == after) << today.toStdString();
    EXPECT_TRUE(QDateTime::fromString(now, "yyyy-MM-dd HH:mm:ss").isValid()) << now.toStdString();
}

}  // namespace

#include "access/jet_values.h"
#include "access/jet_header.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cmath>
#include <limits>

#include "engine/jet_dialect.h"

using namespace accessfile;

TEST(JetDateText, DaysCountFromTheEndOf1899) {
    EXPECT_EQ(jetDateText(0.0), QStringLiteral("1899-12-30"));
    EXPECT_EQ(jetDateText(2.0), QStringLiteral("1900-01-01"));
    EXPECT_EQ(jetDateText(31898.0), QStringLiteral("1987-05-01"));
    EXPECT_EQ(jetDateText(36526.0), QStringLiteral("2000-01-01"));
}

TEST(JetDateText, TimeOfDayOnlyWhenPresent) {
    EXPECT_EQ(jetDateText(36526.5), QStringLiteral("2000-01-01 12:00:00"));
    EXPECT_EQ(jetDateText(31898.0 + (13 * 3600 + 45 * 60 + 30) / 86400.0),
              QStringLiteral("1987-05-01 13:45:30"));
    // Stored fractions are inexact; a value a hair below midnight is the next day.
    EXPECT_EQ(jetDateText(36526.9999999999), QStringLiteral("2000-01-02"));
}

TEST(JetDateText, BeforeDayZeroTheFractionStillCountsForward) {
    EXPECT_EQ(jetDateText(-1.0), QStringLiteral("1899-12-29"));
    EXPECT_EQ(jetDateText(-1.25), QStringLiteral("1899-12-29 06:00:00"));
}

TEST(JetDateText, OnlyTheYearsAccessKnows) {
    EXPECT_EQ(jetDateText(-657434.0), QStringLiteral("0100-01-01"));
    EXPECT_EQ(jetDateText(2958465.0), QStringLiteral("9999-12-31"));
    EXPECT_FALSE(jetDateText(-657435.0).has_value());
    EXPECT_FALSE(jetDateText(2958466.0).has_value());
    EXPECT_FALSE(jetDateText(std::numeric_limits<double>::quiet_NaN()).has_value());
    EXPECT_FALSE(jetDateText(1e300).has_value());
}

TEST(JetNumbers, SinglesReadAsTheirShortestDecimal) {
    EXPECT_EQ(singleAsDouble(0.1f), 0.1);
    EXPECT_EQ(singleAsDouble(-2.25e10f), -2.25e10);
    EXPECT_EQ(singleAsDouble(16777216.0f), 16777216.0);
    EXPECT_TRUE(std::isinf(singleAsDouble(std::numeric_limits<float>::infinity())));
}

TEST(JetNumbers, CurrencyIsTenThousandths) {
    EXPECT_EQ(currencyAsDouble(12345678), 1234.5678);
    EXPECT_EQ(currencyAsDouble(-1), -0.0001);
    EXPECT_EQ(currencyAsDouble(0), 0.0);
}

namespace {

struct TableColumn {
    QString name;
    QString type;
    QString collation;
};

// Creates the table in a fresh in-memory database and reads back what SQLite made of it.
QList<TableColumn> createdColumns(const QString& createSql, const QString& table) {
    sqlite3* db = nullptr;
    sqlite3_open(":memory:", &db);
    engine::registerJetFunctions(db);
    QList<TableColumn> columns;
    if (sqlite3_exec(db, createSql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK) {
        sqlite3_stmt* info = nullptr;
        const QByteArray sql =
            QStringLiteral("PRAGMA table_info(%1)").arg(quotedIdentifier(table)).toUtf8();
        sqlite3_prepare_v2(db, sql.constData(), -1, &info, nullptr);
        while (sqlite3_step(info) == SQLITE_ROW) {
            TableColumn column;
            column.name =
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(info, 1)));
            column.type =
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(info, 2)));
            const char* collation = nullptr;
            const QByteArray name = column.name.toUtf8();
            sqlite3_table_column_metadata(db, nullptr, table.toUtf8().constData(), name.constData(),
                                          nullptr, &collation, nullptr, nullptr, nullptr);
            column.collation = QString::fromUtf8(collation);
            columns << column;
        }
        sqlite3_finalize(info);
    }
    sqlite3_close(db);
    return columns;
}

}  // namespace

TEST(CopiedTableSql, DeclaresTypesAndCaseBlindText) {
    const QList<ColumnSpec> definitions{
        {QStringLiteral("Title"), QStringLiteral("TEXT(50)"), true},
        {QStringLiteral("Index"), QStringLiteral("SMALLINT"), false},
        {QStringLiteral("Say \"hi\""), QStringLiteral("LONGTEXT"), true}};
    const QString table = QStringLiteral("Track Rating");
    const QList<TableColumn> columns = createdColumns(createTableSql(table, definitions), table);
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns[0].name, QStringLiteral("Title"));
    EXPECT_EQ(columns[0].type, QStringLiteral("TEXT(50)"));
    EXPECT_EQ(columns[0].collation, QStringLiteral("MIXORAMA_TEXT"));
    EXPECT_EQ(columns[1].name, QStringLiteral("Index"));
    EXPECT_EQ(columns[1].collation, QStringLiteral("BINARY"));
    EXPECT_EQ(columns[2].name, QStringLiteral("Say \"hi\""));
    EXPECT_EQ(columns[2].collation, QStringLiteral("MIXORAMA_TEXT"));
}

namespace {
QByteArray header(const char* name) {
    QByteArray bytes("\x00\x01\x00\x00", 4);
    bytes += QByteArray(name);
    bytes += QByteArray(4096 - bytes.size(), '\0');
    return bytes;
}
}  // namespace

TEST(JetHeader, RecognisesJetAndAceFiles) {
    EXPECT_TRUE(hasJetHeader(header("Standard Jet DB")));
    EXPECT_TRUE(hasJetHeader(header("Standard ACE DB")));
}

TEST(JetHeader, RejectsOtherStarts) {
    EXPECT_FALSE(hasJetHeader(header("Standard Jet DBX")));
    EXPECT_FALSE(hasJetHeader(header("Standard Jet")));
    EXPECT_FALSE(hasJetHeader(QByteArray("SQLite format 3").append(char(0)).append(4096, '\0')));
    EXPECT_FALSE(hasJetHeader(header("Standard Jet DB").mid(1)));
    EXPECT_FALSE(hasJetHeader(header("Standard Jet DB").left(12)));
    EXPECT_FALSE(hasJetHeader(QByteArray()));
}

#include "jet4/jet4.h"
#include "support/temp_dir.h"
#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

namespace {

using jet4::Format;
using jet4::Type;

// Every character of code page 1252 beyond ASCII that album data is likely to hold.
const QString kWestern = QStringLiteral("äöüß éèñ € “quoted” it's – Ærø ½ ™");

class Jet3Writer : public ::testing::Test {
  protected:
    QString write(const std::vector<jet4::Table>& tables) {
        const QString path = dir_.file(QStringLiteral("db%1.mdb").arg(++files_));
        jet4::writeDatabase(path, tables, Format::Jet3);
        return path;
    }
    static jet4::Table table(const QString& name, std::vector<jet4::Column> columns) {
        return jet4::Table(name, std::move(columns), Format::Jet3);
    }

    testsupport::TempDir dir_;
    int files_ = 0;
};

jet4::Table allTypes() {
    return jet4::Table{"Alle Typen",
                       {{"Flag", Type::Boolean},
                        {"Small", Type::Byte},
                        {"Int", Type::Integer},
                        {"Big", Type::Long},
                        {"Money", Type::Currency},
                        {"Float", Type::Single},
                        {"Real", Type::Double},
                        {"When", Type::DateTime},
                        {"Name", Type::Text, 50},
                        {"Notiz", Type::Memo},
                        {"Künstler", Type::Text}},
                       Format::Jet3};
}

// Text that changes along its length, so misplaced parts of a long value show.
QString numberedText(int characters) {
    QString text;
    for (int i = 0; text.size() < characters; ++i)
        text += QStringLiteral("%1 Björk’s €|").arg(i);
    return text.left(characters);
}

QVariantList strings(std::initializer_list<QString> cells) {
    QVariantList out;
    for (const QString& c : cells)
        out << (c.isNull() ? QVariant() : QVariant(c));
    return out;
}

TEST_F(Jet3Writer, WritesAJet3FileWithItsTablesAndSchema) {
    jet4::Table album = table("Album", {{"AlbumID", Type::Long}});
    album.addRow({1});
    const QString path = write({album, allTypes(), table("Leer", {{"Name", Type::Text}})});

    EXPECT_EQ(mdbtools::run("mdb-ver", {path}).trimmed(), "JET3");
    EXPECT_EQ(QFile(path).size() % 2048, 0);
    EXPECT_EQ(mdbtools::tables(path), QStringList({"Album", "Alle Typen", "Leer"}));
    EXPECT_TRUE(mdbtools::tables(path, true).contains("MSysObjects"));
    const std::vector<std::pair<QString, QString>> expected{
        {"Flag", "Boolean NOT NULL"}, {"Small", "Byte"},
        {"Int", "Integer"},           {"Big", "Long Integer"},
        {"Money", "Currency"},        {"Float", "Single"},
        {"Real", "Double"},           {"When", "DateTime"},
        {"Name", "Text (50)"},        {"Notiz", "Memo/Hyperlink (255)"},
        {"Künstler", "Text (255)"}};
    EXPECT_EQ(mdbtools::columns(path, "Alle Typen"), expected);
    EXPECT_TRUE(mdbtools::rows(path, "Leer").empty());
}

TEST_F(Jet3Writer, EveryTypeAndWesternTextReadBack) {
    jet4::Table t = allTypes();
    t.addRow({true, 255, -32768, 2147483647, 1234.5678, 1.5, 3.141592653589793,
              QDateTime(QDate(1987, 5, 1), QTime(13, 45, 30)), "Die Ärzte", kWestern,
              "Motörhead – “Ace of Spades”"});
    t.addRow({false, 0, 32767, -2147483647 - 1, -0.0001, -2.25e10, 1e-300, QDate(1899, 12, 30), "ñ",
              "O'Neil\nzweite Zeile", kWestern});
    t.addRow(QVariantList(11));
    t.addRow({{}, 1, {}, 2, {}, {}, {}, QDate(1969, 7, 20), "x", {}, {}});
    const QString path = write({t});

    const QString null;
    const std::vector<QVariantList> expected{
        strings({"1", "255", "-32768", "2147483647", "1234.5678", "1.5", "3.141592653589793",
                 "1987-05-01 13:45:30", "Die Ärzte", kWestern, "Motörhead – “Ace of Spades”"}),
        strings({"0", "0", "32767", "-2147483648", "-0.0001", "-2.25e+10", "1e-300",
                 "1899-12-30 00:00:00", "ñ", "O'Neil\nzweite Zeile", kWestern}),
        strings({"0", null, null, null, null, null, null, null, null, null, null}),
        strings({"0", "1", null, "2", null, null, null, "1969-07-20 00:00:00", "x", null, null})};
    EXPECT_EQ(mdbtools::rows(path, "Alle Typen"), expected);
}

// Jet 3 rows keep offsets in single bytes; rows past 256, 512, 768... bytes need the jump
// table, and memos longer than about 2000 bytes a chain of long-value pages. Rows here grow
// a byte at a time across those boundaries.
TEST_F(Jet3Writer, LongRowsAndMemosReadWhole) {
    jet4::Table t = table("Notes", {{"ID", Type::Long},
                                    {"A", Type::Text},
                                    {"Note", Type::Memo},
                                    {"B", Type::Text},
                                    {"C", Type::Text, 200}});
    std::vector<QVariantList> expected;
    auto add = [&](const QVariantList& row) {
        t.addRow(row);
        QVariantList shown;
        for (const QVariant& v : row)
            shown << (v.toString().isEmpty() ? QVariant() : QVariant(v.toString()));
        expected.push_back(shown);
    };
    int id = 0;
    for (int a = 0; a <= 255; ++a) {
        add({id++, numberedText(a), {}, "b", numberedText(a % 7)});
        add({id++, numberedText(a), numberedText(480), numberedText(255 - a), numberedText(200)});
    }
    for (int note : {510, 2030, 2040, 9000})
        add({id++, "a", numberedText(note), numberedText(255), {}});
    EXPECT_EQ(mdbtools::rows(write({t}), "Notes"), expected);
}

TEST_F(Jet3Writer, ManyRowsSpanManyPages) {
    // Enough pages that the usage map needs bitmap pages of its own.
    constexpr int kRows = 60000;
    jet4::Table t =
        table("Track", {{"TrackID", Type::Long}, {"Title", Type::Text}, {"Live", Type::Boolean}});
    for (int i = 0; i < kRows; ++i)
        t.addRow({i, QStringLiteral("Titel Nummer %1 – Überlänge").arg(i), i % 3 == 0});
    const QString path = write({t});
    EXPECT_GT(QFile(path).size(), 1100 * 2048);

    const auto rows = mdbtools::rows(path, "Track");
    ASSERT_EQ(rows.size(), size_t(kRows));
    for (int i = 0; i < kRows; ++i) {
        ASSERT_EQ(rows[i][0].toInt(), i);
        ASSERT_EQ(rows[i][1].toString(), QStringLiteral("Titel Nummer %1 – Überlänge").arg(i));
        ASSERT_EQ(rows[i][2].toString(), i % 3 == 0 ? "1" : "0");
    }
}

TEST_F(Jet3Writer, AnAutoNumberColumnIsMarkedAndItsCounterContinuesAfterTheHighest) {
    jet4::Table t = table("Compilation", {{"Name", Type::Text}, {"ID", Type::Long, 0, true}});
    for (int id : {2, 11, 5})
        t.addRow({QStringLiteral("Nr. %1 – Café").arg(id), id});
    const QString path = write({t});
    const QString schema =
        mdbtools::run("mdb-schema", {"-T", "Compilation", "--no-relations", path, "postgres"});
    EXPECT_TRUE(schema.contains(
        QRegularExpression(R"("ID"\s+SERIAL)", QRegularExpression::CaseInsensitiveOption)))
        << schema.toStdString();
    EXPECT_EQ(mdbtools::rows(path, "Compilation")[1], strings({"Nr. 11 – Café", "11"}));
    // The counter follows the row count in the definition on page 3.
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly) && file.seek(3 * 2048 + 0x10));
    EXPECT_EQ(file.read(4), QByteArray("\x0c\0\0\0", 4));
}

TEST_F(Jet3Writer, RefusesWhatCodePage1252CannotHold) {
    jet4::Table t = table("T", {{"Name", Type::Text}, {"Note", Type::Memo}});
    EXPECT_THROW(t.addRow({"日本", {}}), std::runtime_error);
    EXPECT_THROW(t.addRow({"Ωmega", {}}), std::runtime_error);
    EXPECT_THROW(t.addRow({"a", "🎵"}), std::runtime_error);
    EXPECT_THROW(t.addRow({QString(QChar(0x81)), {}}), std::runtime_error);
    EXPECT_EQ(t.rowCount(), 0);
    EXPECT_THROW(table("Ω", {{"A", Type::Long}}), std::runtime_error);
    EXPECT_THROW(table("T", {{"Ω", Type::Long}}), std::runtime_error);
    jet4::Table unicode{"U", {{"A", Type::Long}}};
    EXPECT_THROW(write({unicode}), std::runtime_error);
}

}  // namespace

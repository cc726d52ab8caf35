// Files of the Jet writer (tools/jet4) read back through mdbtools, the independent reader every
// written file has to satisfy, in both formats.
#include <gtest/gtest.h>
#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

#include "support/temp_dir.h"
#include "tools/jet_samples.h"
#include "tools/mdb_tools.h"

namespace {

using jet4::Format;
using jet4::Type;
using jetsample::numberedText;

QVariantList strings(std::initializer_list<QString> cells) {
    QVariantList out;
    for (const QString& c : cells)
        out << (c.isNull() ? QVariant() : QVariant(c));
    return out;
}

class JetWriter : public ::testing::TestWithParam<jetsample::FormatCase> {
  protected:
    jet4::Table table(const QString& name, std::vector<jet4::Column> columns) const {
        return jet4::Table(name, std::move(columns), GetParam().format);
    }
    QString write(const std::vector<jet4::Table>& tables) {
        const QString path = dir_.file(QStringLiteral("db%1.mdb").arg(++files_));
        jet4::writeDatabase(path, tables, GetParam().format);
        return path;
    }

    testsupport::TempDir dir_;
    int files_ = 0;
};

TEST_P(JetWriter, WritesItsTablesWithTheirColumns) {
    jet4::Table album = table("Album", {{"AlbumID", Type::Long}});
    album.addRow({1});
    const QString path =
        write({album, jetsample::allTypes(GetParam()), table("Leer", {{"Name", Type::Text, 20}})});

    EXPECT_EQ(mdbtools::run("mdb-ver", {path}).trimmed(), QString(GetParam().name).toUpper());
    EXPECT_EQ(QFile(path).size() % GetParam().pageSize, 0);
    EXPECT_EQ(mdbtools::tables(path), QStringList({"Album", "Künstler", "Leer"}));
    EXPECT_TRUE(mdbtools::tables(path, true).contains("MSysObjects"));
    const std::vector<std::pair<QString, QString>> expected{
        {"Flag", "Boolean NOT NULL"}, {"Small", "Byte"},
        {"Int", "Integer"},           {"Big", "Long Integer"},
        {"Money", "Currency"},        {"Float", "Single"},
        {"Real", "Double"},           {"When", "DateTime"},
        {"Name", "Text (50)"},        {"Notiz", "Memo/Hyperlink (255)"},
        {"Blob", "OLE (255)"},        {"Größe", "Text (255)"}};
    EXPECT_EQ(mdbtools::columns(path, "Künstler"), expected);
    EXPECT_EQ(mdbtools::header(path, "Leer"), QStringList({"Name"}));
    EXPECT_TRUE(mdbtools::rows(path, "Leer").empty());
}

TEST_P(JetWriter, EveryValueReadsBack) {
    const QString path = write({jetsample::allTypes(GetParam())});
    // mdbtools reads Jet 4 text as UCS-2: a character beyond the basic plane shows as "??".
    const QString wide = QString(GetParam().wideText).replace(QStringLiteral("🎵"), "??");
    const QString null;
    const std::vector<QVariantList> expected{
        strings({"1", "255", "-32768", "2147483647", "1234.5678", "1.1", "3.141592653589793",
                 "1987-05-01 13:45:30", "Die Ärzte", wide, "0001FF", "O'Neil\nzweite Zeile"}),
        strings({"0", "0", "32767", "-2147483648", "-0.0001", "-2.25e+10", "1e-300",
                 "1899-12-30 00:00:00", wide.left(8), numberedText(5000),
                 QStringLiteral("6F").repeated(9000), numberedText(255)}),
        strings({"0", null, null, null, null, null, null, null, null, null, null, null}),
        strings({"1", "1", "0", "0", "0.0000", "0", "0", "1969-07-20 20:17:40", null, null, null,
                 numberedText(254)})};
    EXPECT_EQ(mdbtools::rows(path, "Künstler"), expected);
}

// Jet 3 rows keep offsets in single bytes: rows past 256, 512, 768... bytes need the jump table.
// Memos longer than a row holds go to long-value pages, past about 2000 bytes to a chain of them.
// Rows here grow a character at a time across those boundaries.
TEST_P(JetWriter, LongRowsAndMemosReadWhole) {
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
    for (int note : {510, 1500, 2030, 2040, 2041, 9000, 30000})
        add({id++, "a", numberedText(note), numberedText(255), {}});
    EXPECT_EQ(mdbtools::rows(write({t}), "Notes"), expected);
}

TEST_P(JetWriter, ManyRowsSpanManyPages) {
    // Enough pages that the usage map needs bitmap pages of its own.
    const int rowCount = GetParam().format == Format::Jet3 ? 60000 : 100000;
    jet4::Table t =
        table("Track", {{"TrackID", Type::Long}, {"Title", Type::Text}, {"Live", Type::Boolean}});
    for (int i = 0; i < rowCount; ++i)
        t.addRow({i, QStringLiteral("Titel Nummer %1 – Überlänge").arg(i), i % 3 == 0});
    jet4::Table small = table("Small", {{"ID", Type::Long}});
    for (int i = 0; i < 1000; ++i)
        small.addRow({i});
    const QString path = write({small, t});
    EXPECT_GT(QFile(path).size(), 2'000'000);

    const auto rows = mdbtools::rows(path, "Track");
    ASSERT_EQ(rows.size(), size_t(rowCount));
    for (int i = 0; i < rowCount; ++i) {
        ASSERT_EQ(rows[i],
                  strings({QString::number(i), QStringLiteral("Titel Nummer %1 – Überlänge").arg(i),
                           i % 3 == 0 ? "1" : "0"}));
    }
    EXPECT_EQ(mdbtools::rows(path, "Small").size(), 1000u);
}

TEST_P(JetWriter, AnAutoNumberColumnIsMarkedAndItsCounterContinuesAfterTheHighest) {
    jet4::Table t = table("Compilation", {{"Name", Type::Text}, {"ID", Type::Long, 0, true}});
    for (int id : {2, 11, 5})
        t.addRow({QStringLiteral("Nr. %1 – Café").arg(id), id});
    jet4::Table plain = table("Plain", {{"ID", Type::Long}});
    plain.addRow({40});
    const QString path = write({t, plain});

    // mdbtools calls an AutoNumber a serial column; the plain Long stays an integer.
    const auto schema = [&](const QString& name) {
        return mdbtools::run("mdb-schema", {"-T", name, "--no-relations", path, "postgres"});
    };
    const QRegularExpression serial(R"("ID"\s+SERIAL)", QRegularExpression::CaseInsensitiveOption);
    EXPECT_TRUE(schema("Compilation").contains(serial)) << schema("Compilation").toStdString();
    EXPECT_FALSE(schema("Plain").contains(serial));
    EXPECT_EQ(mdbtools::rows(path, "Compilation")[1], strings({"Nr. 11 – Café", "11"}));
    // Access numbers the next row from the counter after the row count in the table
    // definition: pages 3 and 4 hold the two definitions.
    const int counter = GetParam().format == Format::Jet3 ? 0x10 : 0x14;
    const QByteArray bytes = testsupport::fileBytes(path);
    EXPECT_EQ(bytes.mid(3 * GetParam().pageSize + counter, 4), QByteArray("\x0c\0\0\0", 4));
    EXPECT_EQ(bytes.mid(4 * GetParam().pageSize + counter, 4), QByteArray(4, '\0'));
}

TEST_P(JetWriter, SameTablesGiveTheSameBytes) {
    const QString first = write({jetsample::allTypes(GetParam())});
    const QString second = write({jetsample::allTypes(GetParam())});
    EXPECT_EQ(testsupport::fileBytes(first), testsupport::fileBytes(second));
}

INSTANTIATE_TEST_SUITE_P(Formats, JetWriter, ::testing::ValuesIn(jetsample::kFormats),
                         jetsample::formatName);

// Each refusal is a std::runtime_error, and a refused row is not added.
TEST(JetWriterRefuses, ValuesNamesAndFilesItCannotKeep) {
    testsupport::TempDir dir;
    jet4::Table t{"T", {{"Small", Type::Byte}, {"Int", Type::Integer}, {"Name", Type::Text, 5}}};
    jet4::Table counted{"C", {{"ID", Type::Long, 0, true}, {"Name", Type::Text}}};
    jet4::Table jet3{"T3", {{"Name", Type::Text}, {"Note", Type::Memo}}, Format::Jet3};
    std::vector<jet4::Column> nine;
    for (char name = 'A'; name <= 'I'; ++name)
        nine.push_back({QString(QChar(name)), Type::Text});
    jet4::Table wide{"Wide", nine};
    const jet4::Table plain{"P", {{"A", Type::Long}}};
    const auto table = [](std::vector<jet4::Column> columns, Format format = Format::Jet4) {
        return [=] { (void)jet4::Table("T", columns, format); };
    };
    const std::vector<std::pair<const char*, std::function<void()>>> refusals{
        {"too few values",
         [&] {
             t.addRow({1, 2});
         }},
        {"a byte of 256",
         [&] {
             t.addRow({256, 2, "a"});
         }},
        {"an integer of 40000",
         [&] {
             t.addRow({1, 40000, "a"});
         }},
        {"a fraction",
         [&] {
             t.addRow({1, 2.5, "a"});
         }},
        {"text for a number",
         [&] {
             t.addRow({"x", 2, "a"});
         }},
        {"text too long",
         [&] {
             t.addRow({1, 2, "toolong"});
         }},
        {"a row longer than a page", [&] { wide.addRow(QVariantList(9, QString(255, u'Ω'))); }},
        {"names the same but for case", table({{"A", Type::Long}, {"a", Type::Text}})},
        {"an AutoNumber of text", table({{"ID", Type::Text, 0, true}})},
        {"two AutoNumbers", table({{"A", Type::Long, 0, true}, {"B", Type::Long, 0, true}})},
        {"a Null AutoNumber",
         [&] {
             counted.addRow({{}, "no id"});
         }},
        {"an AutoNumber of text",
         [&] {
             counted.addRow({"x", "not a number"});
         }},
        {"Jet 3 text outside cp1252",
         [&] {
             jet3.addRow({"日本", {}});
         }},
        {"Jet 3 Greek",
         [&] {
             jet3.addRow({"Ωmega", {}});
         }},
        {"a Jet 3 memo outside cp1252",
         [&] {
             jet3.addRow({"a", "🎵"});
         }},
        {"a character cp1252 leaves out",
         [&] {
             jet3.addRow({QString(QChar(0x81)), {}});
         }},
        {"a Jet 3 column name outside cp1252", table({{"Ω", Type::Long}}, Format::Jet3)},
        {"a Jet 3 table name outside cp1252",
         [] {
             (void)jet4::Table("Ω", {{"A", Type::Long}}, Format::Jet3);
         }},
        {"a file in a missing folder",
         [&] { jet4::writeDatabase(dir.file("missing/x.mdb"), {plain}); }},
        {"a table twice",
         [&] {
             jet4::writeDatabase(dir.file("twice.mdb"), {plain, plain});
         }},
        {"a system table's name",
         [&] {
             jet4::writeDatabase(dir.file("r.mdb"),
                                 {jet4::Table{"MSysObjects", {{"A", Type::Long}}}});
         }},
        {"a Jet 4 table in a Jet 3 file",
         [&] { jet4::writeDatabase(dir.file("m.mdb"), {plain}, Format::Jet3); }},
    };
    for (const auto& [what, action] : refusals)
        EXPECT_THROW(action(), std::runtime_error) << what;
    EXPECT_EQ(t.rowCount() + wide.rowCount() + counted.rowCount() + jet3.rowCount(), 0);
    EXPECT_EQ(counted.nextAutoNumber(), 1u);
}

}  // namespace

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
using mdbtools::kNullText;

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

TEST_P(JetWriter, WritesItsTablesColumnsAndValues) {
    jet4::Table album = table("Album", {{"AlbumID", Type::Long}});
    album.addRow({1});
    const std::vector<jet4::Table> tables{album, jetsample::allTypes(GetParam()),
                                          table("Leer", {{"Name", Type::Text, 20}})};
    const QString path = write(tables);
    EXPECT_EQ(testsupport::fileBytes(path), testsupport::fileBytes(write(tables)));
    EXPECT_EQ(mdbtools::run("mdb-ver", {path}).trimmed(), QString(GetParam().name).toUpper());
    EXPECT_EQ(QFile(path).size() % GetParam().pageSize, 0);
    EXPECT_EQ(mdbtools::tables(path), QStringList({"Album", "Künstler", "Leer"}));
    EXPECT_TRUE(mdbtools::tables(path, true).contains("MSysObjects"));
    EXPECT_TRUE(mdbtools::rows(path, "Leer").empty());
    std::vector<std::pair<QString, QString>> columns{{"Name", "Text (20)"}};
    EXPECT_EQ(mdbtools::columns(path, "Leer"), columns);
    columns = {{"Flag", "Boolean NOT NULL"}, {"Small", "Byte"},
               {"Int", "Integer"},           {"Big", "Long Integer"},
               {"Money", "Currency"},        {"Float", "Single"},
               {"Real", "Double"},           {"When", "DateTime"},
               {"Name", "Text (50)"},        {"Notiz", "Memo/Hyperlink (255)"},
               {"Blob", "OLE (255)"},        {"Größe", "Text (255)"}};
    EXPECT_EQ(mdbtools::columns(path, "Künstler"), columns);

    // mdbtools reads Jet 4 text as UCS-2: a character beyond the basic plane shows as "??".
    const QString wide = QString(GetParam().wideText).replace(QStringLiteral("🎵"), "??");
    const QString null = kNullText;
    const std::vector<QStringList> rows{
        {"1", "255", "-32768", "2147483647", "1234.5678", "1.1", "3.141592653589793",
         "1987-05-01 13:45:30", "Die Ärzte", wide, "0001FF", "O'Neil\nzweite Zeile"},
        {"0", "0", "32767", "-2147483648", "-0.0001", "-2.25e+10", "1e-300", "1899-12-30 00:00:00",
         wide.left(8), numberedText(5000), QStringLiteral("6F").repeated(9000), numberedText(255)},
        {"0", null, null, null, null, null, null, null, null, null, null, null},
        {"1", "1", "0", "0", "0.0000", "0", "0", "1969-07-20 20:17:40", null, null, null,
         numberedText(254)}};
    EXPECT_EQ(mdbtools::rows(path, "Künstler"), rows);
}

// Rows grow a character at a time past 256, 512, 768... bytes, where Jet 3 rows need a jump table
// for their one-byte offsets, and memos past a row, then past a page (chains of long values).
TEST_P(JetWriter, LongRowsAndMemosReadWhole) {
    const std::vector<jet4::Column> columns{{"ID", Type::Long},
                                            {"A", Type::Text},
                                            {"Note", Type::Memo},
                                            {"B", Type::Text},
                                            {"C", Type::Text, 200}};
    jet4::Table t = table("Notes", columns);
    std::vector<QStringList> expected;
    auto add = [&](const QVariantList& row) {
        t.addRow(row);
        expected.emplace_back();
        for (const QVariant& v : row)
            expected.back() << (v.toString().isEmpty() ? kNullText : v.toString());
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
    const QString path = write({t});
    EXPECT_GT(QFile(path).size(), 2'000'000);

    const auto rows = mdbtools::rows(path, "Track");
    ASSERT_EQ(rows.size(), size_t(rowCount));
    for (int i = 0; i < rowCount; ++i) {
        ASSERT_EQ(rows[i], QStringList({QString::number(i),
                                        QStringLiteral("Titel Nummer %1 – Überlänge").arg(i),
                                        i % 3 == 0 ? "1" : "0"}));
    }
}

TEST_P(JetWriter, AnAutoNumberColumnIsMarkedAndItsCounterContinuesAfterTheHighest) {
    jet4::Table t = table("Compilation", {{"Name", Type::Text}, {"ID", Type::Long, 0, true}});
    for (int id : {2, 11, 5})
        t.addRow({QStringLiteral("Nr. %1 – Café").arg(id), id});
    jet4::Table plain = table("Plain", {{"ID", Type::Long}});
    plain.addRow({40});
    const QString path = write({t, plain});

    // mdbtools calls an AutoNumber a serial column.
    const QString schema =
        mdbtools::run("mdb-schema", {"-T", "Compilation", "--no-relations", path, "postgres"});
    EXPECT_TRUE(schema.contains(QRegularExpression(R"re((?i)"ID"\s+serial)re")))
        << schema.toStdString();
    EXPECT_EQ(mdbtools::rows(path, "Compilation")[1], QStringList({"Nr. 11 – Café", "11"}));
    // Access numbers the next row from the counter after the row count in the table
    // definition: pages 3 and 4 hold the two definitions.
    const int counter = GetParam().format == Format::Jet3 ? 0x10 : 0x14;
    const QByteArray bytes = testsupport::fileBytes(path);
    EXPECT_EQ(bytes.mid(3 * GetParam().pageSize + counter, 4), QByteArray("\x0c\0\0\0", 4));
    EXPECT_EQ(bytes.mid(4 * GetParam().pageSize + counter, 4), QByteArray(4, '\0'));
}

INSTANTIATE_TEST_SUITE_P(Formats, JetWriter, ::testing::ValuesIn(jetsample::kFormats),
                         jetsample::formatName);

// Each refusal is a std::runtime_error, and a refused row is not added.
TEST(JetWriterRefuses, ValuesNamesAndFilesItCannotKeep) {
    jet4::Table t{"T", {{"Small", Type::Byte}, {"Int", Type::Integer}, {"Name", Type::Text, 5}}};
    jet4::Table counted{"C", {{"ID", Type::Long, 0, true}, {"Name", Type::Text}}};
    jet4::Table jet3{"T3", {{"Name", Type::Text}, {"Note", Type::Memo}}, Format::Jet3};
    std::vector<jet4::Column> nine;
    for (char name = 'A'; name <= 'I'; ++name)
        nine.push_back({QString(QChar(name)), Type::Text});
    jet4::Table wide{"Wide", nine};  // nine full columns do not fit a page
    // The last is a byte cp1252 leaves unused.
    const std::pair<jet4::Table*, std::vector<QVariantList>> rows[] = {
        {&t,
         {{1, 2}, {256, 2, "a"}, {1, 40000, "a"}, {1, 2.5, "a"}, {"x", 2, "a"}, {1, 2, "sixsix"}}},
        {&counted, {{QVariant(), "a"}, {"x", "a"}}},
        {&wide, {QVariantList(9, QString(255, u'Ω'))}},
        {&jet3, {{"日本", "a"}, {"Ωmega", "a"}, {"a", "🎵"}, {QString(QChar(0x81)), "a"}}},
    };
    for (const auto& [table, refused] : rows) {
        for (const QVariantList& values : refused) {
            EXPECT_THROW(table->addRow(values), std::runtime_error)
                << table->name().toStdString() << ": " << values.value(0).toString().toStdString();
        }
    }
    EXPECT_EQ(t.rowCount() + wide.rowCount() + counted.rowCount() + jet3.rowCount(), 0);
    EXPECT_EQ(counted.nextAutoNumber(), 1u);

    const std::tuple<QString, std::vector<jet4::Column>, Format> definitions[] = {
        {"Case", {{"A", Type::Long}, {"a", Type::Text}}, Format::Jet4},
        {"TextCounter", {{"ID", Type::Text, 0, true}}, Format::Jet4},
        {"TwoCounters", {{"A", Type::Long, 0, true}, {"B", Type::Long, 0, true}}, Format::Jet4},
        {"Greek column", {{"Ω", Type::Long}}, Format::Jet3},
        {"Ω", {{"A", Type::Long}}, Format::Jet3},
    };
    for (const auto& [name, columns, format] : definitions)
        EXPECT_THROW((void)jet4::Table(name, columns, format), std::runtime_error)
            << name.toStdString();

    testsupport::TempDir dir;
    const jet4::Table plain{"P", {{"A", Type::Long}}};
    const std::pair<QString, std::vector<jet4::Table>> files[] = {
        {"missing/folder.mdb", {plain}},
        {"twice.mdb", {plain, plain}},
        {"reserved.mdb", {jet4::Table{"MSysObjects", {{"A", Type::Long}}}}},
    };
    for (const auto& [name, tables] : files)
        EXPECT_THROW(jet4::writeDatabase(dir.file(name), tables), std::runtime_error)
            << name.toStdString();
    EXPECT_THROW(jet4::writeDatabase(dir.file("jet3.mdb"), {plain}, Format::Jet3),
                 std::runtime_error);
}

}  // namespace

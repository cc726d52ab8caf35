// Access files of both formats, written with the Jet writer of tools/jet4, read back through the
// reading program.
#include <gtest/gtest.h>
#include <QFile>
#include <QRandomGenerator>
#include <QScopeGuard>

#include "access/access_reader.h"
#include "engine/jet_error.h"
#include "support/jet_errors.h"
#include "support/paths.h"
#include "support/sqlite_rows.h"
#include "support/temp_dir.h"
#include "tools/jet_samples.h"

using namespace accessfile;
using jet4::Type;
using jetsample::numberedText;
using testsupport::errorNumber;
using testsupport::fileBytes;

namespace {

const QString kProgram = testsupport::programPath("mixorama-mdbread");

class CopiedTables : public ::testing::TestWithParam<jetsample::FormatCase> {
  protected:
    jet4::Table table(const QString& name, std::vector<jet4::Column> columns) const {
        return jet4::Table(name, std::move(columns), GetParam().format);
    }
    void write(const QString& path, const std::vector<jet4::Table>& tables) const {
        jet4::writeDatabase(path, tables, GetParam().format);
    }
    QList<QVariantList> copy(const std::vector<jet4::Table>& tables, const QString& query) {
        write(album, tables);
        QStringList names;
        for (const jet4::Table& t : tables)
            names << t.name();
        reader.copyTables(album, names, out);
        return sqliteRows(out, query);
    }

    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album.mdb"));
    const QString out = dir.file(QStringLiteral("out.sqlite"));
    AccessTableReader reader{kProgram};
};

}  // namespace

TEST_P(CopiedTables, KeepEveryValueAndLeaveTheAccessFileUntouched) {
    write(album, {jetsample::allTypes(GetParam())});
    const QByteArray before = fileBytes(album);
    reader.copyTables(album, {"Künstler"}, out);
    EXPECT_EQ(fileBytes(album), before);
    const QString wide = GetParam().wideText;
    EXPECT_EQ(
        sqliteRows(out, "SELECT * FROM Künstler"),
        (QList<QVariantList>{
            {-1, 255, -32768, 2147483647, 1234.5678, 1.1, 3.141592653589793, "1987-05-01 13:45:30",
             "Die Ärzte", wide, jetsample::kBlob, "O'Neil\nzweite Zeile"},
            {0, 0, 32767, -2147483647LL - 1, -0.0001, -2.25e10, 1e-300, "1899-12-30", wide.left(8),
             numberedText(5000), QByteArray(9000, 'o'), numberedText(255)},
            {0, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}},
            {-1, 1, 0, 0, 0.0, 0.0, 0.0, "1969-07-20 20:17:40", "", "", {}, numberedText(254)}}));
}

// Names are quoted whatever they hold; only text compares without regard to case. Each table's
// own whole-number key is indexed, no reference to another table's.
TEST_P(CopiedTables, DeclareTheEnginesTypesWithCaseBlindTextAndIndexTheirKeys) {
    jet4::Table odd =
        table("Track \"Rating\"", {{"Index", Type::Integer}, {"Say \"hi\"", Type::Text}});
    odd.addRow({1, QStringLiteral("Hi")});
    jet4::Table tracks = table(
        "Track", {{"AlbumID", Type::Long}, {"TrackID", Type::Long}, {"Title", Type::Text, 50}});
    jet4::Table albums = table("Album", {{"AlbumID", Type::Long}, {"LocationID", Type::Long}});
    // A text column named like the key is no whole-number key.
    jet4::Table notes = table("Note", {{"NoteID", Type::Text, 10}});
    copy({jetsample::allTypes(GetParam()), odd, tracks, albums, notes}, {});
    EXPECT_EQ(sqliteRows(out,
                         "SELECT group_concat(name || ' ' || type, ', ') "
                         "FROM pragma_table_info('Künstler')"),
              (QList<QVariantList>{{"Flag YESNO, Small TINYINT, Int SMALLINT, Big INTEGER, "
                                    "Money CURRENCY, Float REAL, Real DOUBLE, When DATETIME, "
                                    "Name TEXT(50), Notiz LONGTEXT, Blob LONGBINARY, "
                                    "Größe TEXT(255)"}}));
    EXPECT_EQ(sqliteRows(out,
                         "SELECT count(*) FROM Künstler WHERE Name = 'DIE ÄRZTE' "
                         "OR Notiz = 'o''neil' || char(10) || 'ZWEITE ZEILE'"),
              (QList<QVariantList>{{1}}));
    EXPECT_EQ(sqliteRows(out,
                         "SELECT \"Say \"\"hi\"\"\" = 'HI', typeof(\"Index\") "
                         "FROM \"Track \"\"Rating\"\"\""),
              (QList<QVariantList>{{1, "integer"}}));
    EXPECT_EQ(sqliteRows(out,
                         "SELECT m.tbl_name, i.name FROM sqlite_master AS m, pragma_index_info("
                         "m.name) AS i WHERE m.type = 'index' ORDER BY m.tbl_name"),
              (QList<QVariantList>{{"Album", "AlbumID"}, {"Track", "TrackID"}}));
}

TEST_P(CopiedTables, CopyManyTablesAndManyPagesOfRows) {
    jet4::Table tracks = table(
        "Track", {{"TrackID", Type::Long}, {"Title", Type::Text, 100}, {"Live", Type::Boolean}});
    for (int id = 1; id <= 20000; ++id)
        tracks.addRow({id, QStringLiteral("Titel Nummer %1 – Überlänge €").arg(id), id % 3 == 0});
    jet4::Table ratings =
        table("TrackRating", {{"TrackRatingID", Type::Long}, {"TrackRating", Type::Text, 50}});
    ratings.addRow({1, QStringLiteral("*****")});
    EXPECT_EQ(
        copy({tracks, ratings},
             "SELECT count(*), sum(TrackID), max(Title), sum(Live), (SELECT Title FROM "
             "Track WHERE TrackID = 12345), (SELECT TrackRating FROM TrackRating) FROM Track"),
        (QList<QVariantList>{{20000, 20000 * 20001 / 2, "Titel Nummer 9999 – Überlänge €", -6666,
                              "Titel Nummer 12345 – Überlänge €", "*****"}}));
}

// Tables are found without regard to case and stored under the requested name; a table of that
// name is replaced, the others stay.
TEST_P(CopiedTables, ReplaceTheRequestedTableAndKeepOthers) {
    jet4::Table first = table("Album", {{"Title", Type::Text, 50}});
    first.addRow({QStringLiteral("First")});
    copy({first}, {});
    jet4::Table location = table("Location", {{"Location", Type::Text, 50}});
    location.addRow({QStringLiteral("Shelf")});
    jet4::Table second = table("Album", {{"AlbumID", Type::Long}});
    second.addRow({7});
    write(album, {second, location});
    reader.copyTables(album, {QStringLiteral("LOCATION")}, out);
    reader.copyTables(album, {QStringLiteral("Album")}, out);
    EXPECT_EQ(sqliteRows(out, "SELECT * FROM Album"), (QList<QVariantList>{{7}}));
    EXPECT_EQ(sqliteRows(out, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY 1"),
              (QList<QVariantList>{{"Album"}, {"LOCATION"}}));
}

TEST_P(CopiedTables, ListTheUserTablesAndNameAMissingOneWithoutWritingAnything) {
    write(album,
          {table("Album", {{"Title", Type::Text}}), table("Künstler", {{"Name", Type::Text}})});
    EXPECT_EQ(reader.tableNames(album), (QStringList{"Album", "Künstler"}));
    const auto copyBoth = [&] { reader.copyTables(album, {"Album", "TrackRating"}, out); };
    QString description;
    EXPECT_EQ(errorNumber(copyBoth, &description), engine::jet::kObjectNotFound);
    EXPECT_TRUE(description.contains("'TrackRating'")) << description.toStdString();
    EXPECT_FALSE(QFile::exists(out));
}

// A file cut short is damaged. Overwritten pages may still read (libmdb keeps no checksums) or
// fail, but only ever as an unrecognized format or a table not found, and this process survives
// them. The file stays as it was.
TEST_P(CopiedTables, DamagedFilesFailOnlyAsAnUnrecognizedFormat) {
    write(album, {jetsample::allTypes(GetParam())});
    const QByteArray good = fileBytes(album);
    QFile(album).resize(good.size() - 1000);
    EXPECT_EQ(errorNumber([&] { reader.copyTables(album, {"Künstler"}, out); }),
              engine::jet::kNotADatabase);
    EXPECT_EQ(fileBytes(album), good.left(good.size() - 1000));
    const int pageSize = GetParam().pageSize;
    for (quint32 seed = 1; seed <= 12; ++seed) {
        QRandomGenerator random(seed);
        QByteArray bad = good;
        for (int i = 0; i < 300; ++i)
            bad[pageSize + random.bounded(int(good.size()) - pageSize)] = char(random.bounded(256));
        QFile file(album);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bad) == bad.size());
        file.close();
        QFile::remove(out);
        const int error = errorNumber([&] { reader.copyTables(album, {"Künstler"}, out); });
        EXPECT_TRUE(error == 0 || error == engine::jet::kNotADatabase ||
                    error == engine::jet::kObjectNotFound)
            << "seed " << seed << ": " << error;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, CopiedTables, ::testing::ValuesIn(jetsample::kFormats),
                         jetsample::formatName);

TEST(Jet3Copy, ReadsTheCodePageTheUserNames) {
    testsupport::TempDir dir;
    jet4::Table names(QStringLiteral("Artist"), {{"Name", Type::Text}}, jet4::Format::Jet3);
    names.addRow({QStringLiteral("Ìóìèé Òðîëëü")});  // the bytes of Cyrillic text in code page 1251
    jet4::writeDatabase(dir.file("album.mdb"), {names}, jet4::Format::Jet3);
    qputenv("MDB_JET3_CHARSET", "CP1251");
    const auto restore = qScopeGuard([] { qunsetenv("MDB_JET3_CHARSET"); });
    AccessTableReader(kProgram).copyTables(dir.file("album.mdb"), {"Artist"}, dir.file("o.sqlite"));
    EXPECT_EQ(sqliteRows(dir.file("o.sqlite"), "SELECT Name FROM Artist"),
              (QList<QVariantList>{{QStringLiteral("Мумий Тролль")}}));
}

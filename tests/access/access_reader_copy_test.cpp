// Access files written with the Jet 4 writer of tools/jet4, read back through the program.
#if __has_include("jet4/jet4.h")

#include <gtest/gtest.h>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QRandomGenerator>

#include "access/access_reader.h"
#include "engine/jet_error.h"
#include "jet4/jet4.h"
#include "support/paths.h"
#include "support/sqlite_rows.h"
#include "support/temp_dir.h"

using namespace accessfile;
using jet4::Type;

namespace {

const QString kProgram = testsupport::programPath("mixorama-mdbread");

QByteArray digest(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

jet4::Table allTypes() {
    jet4::Table table(QStringLiteral("AllTypes"), {{QStringLiteral("Flag"), Type::Boolean},
                                                   {QStringLiteral("Small"), Type::Byte},
                                                   {QStringLiteral("Int"), Type::Integer},
                                                   {QStringLiteral("Big"), Type::Long},
                                                   {QStringLiteral("Money"), Type::Currency},
                                                   {QStringLiteral("Float"), Type::Single},
                                                   {QStringLiteral("Real"), Type::Double},
                                                   {QStringLiteral("When"), Type::DateTime},
                                                   {QStringLiteral("Name"), Type::Text, 50},
                                                   {QStringLiteral("Note"), Type::Memo},
                                                   {QStringLiteral("Blob"), Type::Ole}});
    table.addRow({true, 255, -32768, 2147483647, 1234.5678, 1.1, 3.141592653589793,
                  QDateTime(QDate(1987, 5, 1), QTime(13, 45, 30)), QStringLiteral("Die Ärzte"),
                  QStringLiteral("Motörhead – “Ace”"), QByteArray("\x00\x01\xff", 3)});
    table.addRow({false, 0, 32767, -2147483647 - 1, -0.0001, -2.25e10, 1e-300, QDate(1899, 12, 30),
                  QStringLiteral("日本 🎵"), QString(5000, QChar(u'ß')), QByteArray(9000, 'o')});
    table.addRow({{}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}});
    table.addRow({true,
                  1,
                  0,
                  0,
                  0,
                  0,
                  0,
                  QDateTime(QDate(1800, 1, 1), QTime(6, 0)),
                  QString(""),
                  QString(""),
                  {}});
    return table;
}

class CopiedTables : public ::testing::Test {
  protected:
    QList<QVariantList> copy(const std::vector<jet4::Table>& tables, const QStringList& names,
                             const QString& query) {
        jet4::writeDatabase(album, tables);
        reader.copyTables(album, names, out);
        return sqliteRows(out, query);
    }

    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album.mdb"));
    const QString out = dir.file(QStringLiteral("out.sqlite"));
    AccessTableReader reader{kProgram};
};

}  // namespace

TEST_F(CopiedTables, KeepEveryValueOfEveryType) {
    const QList<QVariantList> rows =
        copy({allTypes()}, {QStringLiteral("AllTypes")}, QStringLiteral("SELECT * FROM AllTypes"));
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0],
              (QVariantList{-1, 255, -32768, 2147483647, 1234.5678, 1.1, 3.141592653589793,
                            QStringLiteral("1987-05-01 13:45:30"), QStringLiteral("Die Ärzte"),
                            QStringLiteral("Motörhead – “Ace”"), QByteArray("\x00\x01\xff", 3)}));
    EXPECT_EQ(rows[1], (QVariantList{0, 0, 32767, -2147483647LL - 1, -0.0001, -2.25e10, 1e-300,
                                     QStringLiteral("1899-12-30"), QStringLiteral("日本 🎵"),
                                     QString(5000, QChar(u'ß')), QByteArray(9000, 'o')}));
    EXPECT_EQ(rows[2], (QVariantList{0, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}}));
    EXPECT_EQ(rows[3], (QVariantList{-1,
                                     1,
                                     0,
                                     0,
                                     0.0,
                                     0.0,
                                     0.0,
                                     QStringLiteral("1800-01-01 06:00:00"),
                                     QString(""),
                                     QString(""),
                                     {}}));
}

TEST_F(CopiedTables, DeclareTheEnginesTypesWithCaseBlindText) {
    copy({allTypes()}, {QStringLiteral("AllTypes")}, {});
    const QList<QVariantList> columns = sqliteRows(
        out, QStringLiteral("SELECT name, type FROM pragma_table_info('AllTypes') ORDER BY cid"));
    const QList<QVariantList> expected{{QStringLiteral("Flag"), QStringLiteral("YESNO")},
                                       {QStringLiteral("Small"), QStringLiteral("TINYINT")},
                                       {QStringLiteral("Int"), QStringLiteral("SMALLINT")},
                                       {QStringLiteral("Big"), QStringLiteral("INTEGER")},
                                       {QStringLiteral("Money"), QStringLiteral("CURRENCY")},
                                       {QStringLiteral("Float"), QStringLiteral("REAL")},
                                       {QStringLiteral("Real"), QStringLiteral("DOUBLE")},
                                       {QStringLiteral("When"), QStringLiteral("DATETIME")},
                                       {QStringLiteral("Name"), QStringLiteral("TEXT(50)")},
                                       {QStringLiteral("Note"), QStringLiteral("LONGTEXT")},
                                       {QStringLiteral("Blob"), QStringLiteral("LONGBINARY")}};
    EXPECT_EQ(columns, expected);
    // Text compares by the engine's collation, without regard to case.
    const QList<QVariantList> matches = sqliteRows(
        out, QStringLiteral("SELECT (SELECT count(*) FROM AllTypes WHERE Name = 'DIE ÄRZTE'), "
                            "(SELECT count(*) FROM AllTypes WHERE Note = 'motörhead – “ace”')"));
    EXPECT_EQ(matches, (QList<QVariantList>{{1, 1}}));
}

TEST_F(CopiedTables, CopiesManyTablesAndManyPagesOfRows) {
    jet4::Table tracks(QStringLiteral("Track"), {{QStringLiteral("TrackID"), Type::Long},
                                                 {QStringLiteral("Title"), Type::Text, 100}});
    for (int id = 1; id <= 5000; ++id)
        tracks.addRow({id, QStringLiteral("Titel Nummer %1 – Überlänge").arg(id)});
    jet4::Table ratings(QStringLiteral("TrackRating"),
                        {{QStringLiteral("TrackRatingID"), Type::Long},
                         {QStringLiteral("TrackRating"), Type::Text, 50}});
    ratings.addRow({1, QStringLiteral("*****")});
    const QList<QVariantList> summary =
        copy({tracks, ratings}, {QStringLiteral("Track"), QStringLiteral("TrackRating")},
             QStringLiteral("SELECT count(*), sum(TrackID), max(Title), "
                            "(SELECT TrackRating FROM TrackRating) FROM Track"));
    EXPECT_EQ(summary, (QList<QVariantList>{{5000, 5000 * 5001 / 2,
                                             QStringLiteral("Titel Nummer 999 – Überlänge"),
                                             QStringLiteral("*****")}}));
}

TEST_F(CopiedTables, IndexEachTablesOwnKeyAndNoReferences) {
    jet4::Table tracks(QStringLiteral("Track"), {{QStringLiteral("AlbumID"), Type::Long},
                                                 {QStringLiteral("TrackID"), Type::Long},
                                                 {QStringLiteral("Title"), Type::Text, 50}});
    tracks.addRow({7, 1, QStringLiteral("One")});
    jet4::Table albums(QStringLiteral("Album"), {{QStringLiteral("AlbumID"), Type::Long},
                                                 {QStringLiteral("LocationID"), Type::Long}});
    albums.addRow({7, 3});
    // A text column named like the key is no whole-number key.
    jet4::Table notes(QStringLiteral("Note"), {{QStringLiteral("NoteID"), Type::Text, 10}});
    notes.addRow({QStringLiteral("n1")});
    const QList<QVariantList> indexes =
        copy({tracks, albums, notes},
             {QStringLiteral("Track"), QStringLiteral("Album"), QStringLiteral("Note")},
             QStringLiteral("SELECT m.tbl_name, i.name FROM sqlite_master AS m, "
                            "pragma_index_info(m.name) AS i WHERE m.type = 'index' "
                            "ORDER BY m.tbl_name"));
    EXPECT_EQ(indexes, (QList<QVariantList>{{QStringLiteral("Album"), QStringLiteral("AlbumID")},
                                            {QStringLiteral("Track"), QStringLiteral("TrackID")}}));
}

TEST_F(CopiedTables, ReplaceATableOfTheSameNameAndKeepOthers) {
    jet4::Table album1(QStringLiteral("Album"), {{QStringLiteral("Title"), Type::Text, 50}});
    album1.addRow({QStringLiteral("First")});
    copy({album1}, {QStringLiteral("Album")}, {});
    jet4::Table other(QStringLiteral("Location"), {{QStringLiteral("Location"), Type::Text, 50}});
    other.addRow({QStringLiteral("Shelf")});
    jet4::Table album2(QStringLiteral("Album"), {{QStringLiteral("AlbumID"), Type::Long}});
    album2.addRow({7});
    const QString second = dir.file(QStringLiteral("second.mdb"));
    jet4::writeDatabase(second, {album2, other});
    reader.copyTables(second, {QStringLiteral("Location")}, out);
    reader.copyTables(second, {QStringLiteral("Album")}, out);
    EXPECT_EQ(sqliteRows(out, QStringLiteral("SELECT * FROM Album")), (QList<QVariantList>{{7}}));
    EXPECT_EQ(sqliteRows(out, QStringLiteral("SELECT * FROM Location")),
              (QList<QVariantList>{{QStringLiteral("Shelf")}}));
}

TEST_F(CopiedTables, FindTablesWithoutRegardToCaseUnderTheRequestedName) {
    jet4::Table artists(QStringLiteral("Artist"), {{QStringLiteral("Name"), Type::Text, 50}});
    artists.addRow({QStringLiteral("Björk")});
    EXPECT_EQ(
        copy({artists}, {QStringLiteral("ARTIST")}, QStringLiteral("SELECT Name FROM ARTIST")),
        (QList<QVariantList>{{QStringLiteral("Björk")}}));
}

TEST_F(CopiedTables, AMissingTableIsNamedAndNothingIsWritten) {
    jet4::Table album1(QStringLiteral("Album"), {{QStringLiteral("Title"), Type::Text, 50}});
    album1.addRow({QStringLiteral("First")});
    jet4::writeDatabase(album, {album1});
    try {
        reader.copyTables(album, {QStringLiteral("Album"), QStringLiteral("TrackRating")}, out);
        FAIL() << "no error";
    } catch (const engine::JetError& error) {
        EXPECT_EQ(error.number(), engine::jet::kObjectNotFound);
        EXPECT_TRUE(error.description().contains(QStringLiteral("'TrackRating'")));
    }
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(CopiedTables, LeaveTheAccessFileUntouched) {
    jet4::writeDatabase(album, {allTypes()});
    const QByteArray before = digest(album);
    reader.copyTables(album, {QStringLiteral("AllTypes")}, out);
    reader.tableNames(album);
    EXPECT_EQ(digest(album), before);
}

TEST_F(CopiedTables, AFileCutShortIsDamaged) {
    jet4::writeDatabase(album, {allTypes()});
    QFile file(album);
    file.resize(file.size() - 1000);
    const QByteArray before = digest(album);
    try {
        reader.copyTables(album, {QStringLiteral("AllTypes")}, out);
        FAIL() << "no error";
    } catch (const engine::JetError& error) {
        EXPECT_EQ(error.number(), engine::jet::kNotADatabase);
    }
    EXPECT_EQ(digest(album), before);
}

// Overwritten pages may still read (libmdb keeps no checksums) or fail, but only ever as an
// unrecognized format, and this process survives them.
TEST_F(CopiedTables, OverwrittenPagesFailOnlyAsAnUnrecognizedFormat) {
    jet4::writeDatabase(album, {allTypes()});
    QFile file(album);
    file.open(QIODevice::ReadOnly);
    const QByteArray good = file.readAll();
    file.close();
    for (quint32 seed = 1; seed <= 12; ++seed) {
        QRandomGenerator random(seed);
        QByteArray bad = good;
        for (int i = 0; i < 300; ++i)
            bad[4096 + random.bounded(int(good.size()) - 4096)] = char(random.bounded(256));
        file.open(QIODevice::WriteOnly);
        file.write(bad);
        file.close();
        QFile::remove(out);
        try {
            reader.copyTables(album, {QStringLiteral("AllTypes")}, out);
        } catch (const engine::JetError& error) {
            EXPECT_TRUE(error.number() == engine::jet::kNotADatabase ||
                        error.number() == engine::jet::kObjectNotFound)
                << "seed " << seed << ": " << error.number() << " "
                << error.description().toStdString();
        }
    }
}

TEST(ListedTables, AreTheUserTablesOfTheFile) {
    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album.mdb"));
    jet4::Table first(QStringLiteral("Album"), {{QStringLiteral("Title"), Type::Text, 50}});
    jet4::Table second(QStringLiteral("Künstler"), {{QStringLiteral("Name"), Type::Text, 50}});
    jet4::writeDatabase(album, {first, second});
    AccessTableReader reader(kProgram);
    EXPECT_TRUE(reader.canRead(album));
    EXPECT_EQ(reader.tableNames(album),
              (QStringList{QStringLiteral("Album"), QStringLiteral("Künstler")}));
}

#endif

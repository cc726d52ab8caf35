#include <QDir>
#include <QProcess>

#include "album/album_fixture.h"
#include "assembly/performer_tree.h"
#include "assembly/track_picker.h"
#include "engine/jet_error.h"
#include "support/jet_errors.h"
#include "support/paths.h"

namespace albumtest {
namespace {

// A generated collection of a few hundred tracks, with and without the rating table.
class GeneratedCollection : public AlbumFileTest, public ::testing::WithParamInterface<bool> {};

TEST_P(GeneratedCollection, SourceHoldsTheJoinedRowsAndTheAlbumFileStaysAsItWas) {
    const albumgen::Options options{30, 20240611, GetParam()};
    const QString albums = dir.file("generated.mdb");
    albumgen::writeAlbumDatabase(albums, options);
    const QByteArray before = testsupport::fileBytes(albums);
    connectAndBuild(albums);
    ASSERT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
    EXPECT_TRUE(editor.getTracksEnabled);
    EXPECT_EQ(state.albumHasRating, GetParam());

    // Without ratings RatingTrack is appended, after MyRecorded.
    QStringList columns = kSourceColumns;
    if (!GetParam())
        columns.move(columns.indexOf("RatingTrack"), columns.size() - 1);
    EXPECT_EQ(query("SELECT group_concat(name) FROM pragma_table_info('TempSource')"),
              columns.join(','));
    const QStringList expected = expectedSourceRows(albumgen::generate(options));
    ASSERT_GT(expected.size(), 300);
    EXPECT_EQ(state.passedCount, expected.size());
    QStringList rows = sourceRows();
    rows.sort();
    for (qsizetype i = 0; i < std::max(rows.size(), expected.size()); ++i)
        ASSERT_EQ(rows.value(i), expected.value(i)) << "sorted row " << i;

    store::dropAlbumLinks(database);
    EXPECT_EQ(testsupport::fileBytes(albums), before);
    // Nothing beside it either: no lock or journal file is left in the album's folder.
    EXPECT_EQ(QDir(dir.path()).entryList({"generated*"}, QDir::Files),
              QStringList{"generated.mdb"});
}

INSTANTIATE_TEST_SUITE_P(Rating, GeneratedCollection, ::testing::Bool(), [](const auto& info) {
    return info.param ? "WithTrackRating" : "WithoutTrackRating";
});

// A few albums chosen for the cases the source table must get right: performers on both sides,
// missing links and locations, odd dates, empty versions, accents and apostrophes.
albumgen::Collection handPicked(bool withRating) {
    albumgen::Collection c;
    c.withRating = withRating;
    c.artists = {{1, "Paul Simon", "Simon, Paul"},
                 {2, "Art Garfunkel", "Garfunkel, Art"},
                 {3, "Die Ärzte", "Ärzte, Die"},
                 {4, "The Beatles", "beatles, the"},
                 {5, "Sinéad O'Connor", "O'Connor, Sinéad"},
                 {6, "ABBA", "abba"}};
    c.locations = {{1, "Shelf A"}, {2, "Dad's box – Küche"}};
    if (withRating)
        c.ratings = {{1, "*"}, {2, "***"}, {3, "*****"}};
    const QDate day(2001, 2, 3);
    c.albums = {
        {1, "Bookends", "Simon & Garfunkel", 1, 2000, {}, {}, 1, day, {}},
        {2, "Die Bestie in Menschengestalt", "Ärzte, Die", 2, 2000, {}, {}, 1, day, {}},
        {3, "Help!", "beatles, the", {}, 2000, {}, {}, 1, day, {}},
        // A location the file does not hold, and no album performer.
        {4, "I Do Not Want What I Haven't Got", "O'Connor, Sinéad", 99, 2000, {}, {}, 1, day, {}},
        {5, "Arrival", "abba", 1, 2000, {}, {}, 1, day, {}}};
    c.artistAlbumLinks = {{1, 1}, {2, 1}, {3, 2}, {4, 3}, {5, 4}};
    const auto track = [&](qint32 albumId, const char* title, const char* sort, qint16 index,
                           const char* version, const char* recorded,
                           std::optional<qint32> rating) {
        const qint32 id = qint32(c.tracks.size() + 1);
        c.tracks.push_back({id, albumId, sort, title, 1, index, 180 + id, version,
                            QString(version) == "Live", recorded, rating, QString(), QString(),
                            QString(), std::nullopt, QDateTime(day, QTime(12, 0))});
    };
    track(1, "Mrs. Robinson", "Simon & Garfunkel", 2, "", " 1987-05-01", 3);
    track(1, "Old Friends", "Simon & Garfunkel", 1, "Remix", "", std::nullopt);
    track(1, "Orphan", "Simon & Garfunkel", 3, "", "1968", 3);  // no track performer
    track(2, "Schrei nach Liebe", "Ärzte, Die", 1, "Live", "1993", 2);
    track(3, "Help!", "beatles, the", 1, "", " 1965 ", 0);  // a rating not held
    track(4, "The Emperor's New Clothes", "O'Connor, Sinéad", 4, "", "1990-01-01", 1);
    track(5, "Dancing Queen", "abba", 1, "", "1976", 1);
    c.artistTrackLinks = {{1, 1}, {2, 1}, {1, 2}, {3, 4}, {4, 5}, {5, 6}, {6, 7}};
    return c;
}

// The rows in source order: by track performer sort without regard to case, then album, then
// position; the rows of one track (every track performer with every album performer) in any
// order, here by performers. Orphan and Dancing Queen lack a performer on one side: no rows.
const QStringList kHandPickedRows{
    "Schrei nach Liebe|Die Ärzte|Die Ärzte|3|Live|yes|1993|Dad's box – Küche|***",
    "Help!|The Beatles|The Beatles|4|<null>|no|1965|<null>|<null>",
    "The Emperor's New Clothes|Sinéad O'Connor|Sinéad O'Connor|5|<null>|no|1990|<null>|*",
    "Old Friends|Paul Simon|Art Garfunkel|1|Remix|no|<null>|Shelf A|<null>",
    "Old Friends|Paul Simon|Paul Simon|1|Remix|no|<null>|Shelf A|<null>",
    "Mrs. Robinson|Art Garfunkel|Art Garfunkel|2|<null>|no|1987|Shelf A|*****",
    "Mrs. Robinson|Art Garfunkel|Paul Simon|2|<null>|no|1987|Shelf A|*****",
    "Mrs. Robinson|Paul Simon|Art Garfunkel|1|<null>|no|1987|Shelf A|*****",
    "Mrs. Robinson|Paul Simon|Paul Simon|1|<null>|no|1987|Shelf A|*****",
};

class HandPickedAlbums : public AlbumFileTest, public ::testing::WithParamInterface<bool> {};

TEST_P(HandPickedAlbums, SourceHoldsTheJoinedRowsInOrder) {
    const QString path = dir.file("albums.mdb");
    albumgen::writeCollection(path, handPicked(GetParam()));
    connectAndBuild(path);
    EXPECT_EQ(state.albumHasRating, GetParam());
    EXPECT_EQ(state.passedCount, kHandPickedRows.size());
    QStringList expected = kHandPickedRows;
    if (!GetParam()) {  // no rating table: no ratings
        for (QString& row : expected)
            row = row.section('|', 0, -2) + "|" + kNull;
    }
    EXPECT_EQ(sourceRows({"TitleTrack", "PerformerTrack", "PerformerAlbum", "ArtistID", "Version",
                          "Live", "MyRecorded", "Location", "RatingTrack"},
                         "(SELECT min(rowid) FROM TempSource WHERE TrackTrackID = s.TrackTrackID), "
                         "PerformerTrack, PerformerAlbum"),
              expected);

    // The year is a number; the fixed-up Version and RatingTrack (appended when the album file has
    // no ratings) are text that compares without regard to case.
    EXPECT_EQ(query("SELECT (SELECT group_concat(name || ':' || type, ' ') FROM (SELECT * FROM "
                    "pragma_table_info('TempSource') WHERE name IN ('MyRecorded', 'RatingTrack') "
                    "OR type = '' ORDER BY name)) || ' ' || (SELECT group_concat(DISTINCT "
                    "typeof(MyRecorded)) FROM TempSource WHERE MyRecorded IS NOT NULL) || ' ' || "
                    "(SELECT count(*) FROM TempSource WHERE Version = 'REMIX')"),
              "MyRecorded:SMALLINT RatingTrack:TEXT(50) integer 2");
}

INSTANTIATE_TEST_SUITE_P(Rating, HandPickedAlbums, ::testing::Bool(), [](const auto& info) {
    return info.param ? "WithTrackRating" : "WithoutTrackRating";
});

// Two programs on one compilation file, each with an album database of its own. While this one
// shows the tracks of album file X (the picker's record set keeps TempSource's row ids),
// add-tracks connects album file Y and adds its tracks. The track this one adds next is X's, and
// the file never holds a TempSource.
TEST_F(AlbumFileTest, AnotherProgramsSourceNeverReplacesThisOne) {
    const QString x = dir.file("x.mdb");
    const QString y = dir.file("y.mdb");
    albumgen::writeAlbumDatabase(x, {5, 3});
    albumgen::writeAlbumDatabase(y, {5, 4});
    const QString tempSourceInFile = "SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'";
    connectAndBuild(x);
    const QStringList rowsOfX = sourceRows();
    ASSERT_GT(rowsOfX.size(), 3);
    // The picker's grid stands on the third row, not yet read, when the other program starts.
    engine::Recordset source = database.openRecordset(assembly::kPlainSource);
    source.move(2);
    EXPECT_EQ(testsupport::queryRaw(compilationPath, tempSourceInFile), "0");

    QProcess other;
    other.start(testsupport::programPath("mixorama-cli"),
                {"add-tracks", compilationPath, "Road Trip", y, "--first", "3"});
    ASSERT_TRUE(other.waitForFinished(60000));
    EXPECT_EQ(other.exitCode(), 0) << other.readAllStandardError().toStdString();
    EXPECT_TRUE(other.readAllStandardOutput().contains("3 track(s) added"));

    const qint64 compilation =
        testsupport::queryRaw(compilationPath, "SELECT CompilationID_P FROM Compilation")
            .toLongLong();
    ASSERT_EQ(
        assembly::addTrack(database, compilation, assembly::sourceTrackAt(source), {}).trackNo, 4);
    const auto chosen = [&](const char* column) {
        return rowsOfX[2].split('|')[kSourceColumns.indexOf(column)];
    };
    EXPECT_EQ(
        testsupport::queryRaw(compilationPath,
                              "SELECT Track_Artist_Name || ' / ' || Track_Title || ' / ' || "
                              "Album_Title FROM CompilationTrack WHERE TrackNo = 4"),
        chosen("PerformerTrack") + " / " + chosen("TitleTrack") + " / " + chosen("TitleAlbum"));
    EXPECT_EQ(database.openRecordset("SELECT Count(*) AS N FROM TempSource").value(0).toLongLong(),
              rowsOfX.size());
    EXPECT_EQ(testsupport::queryRaw(compilationPath, tempSourceInFile), "0");
}

// Connect links the album's tables; a cancelled connect or an unsaved editor leaves Get Tracks
// off. A build replaces the last; dropping the links drops TempSource, and none is built then.
TEST_F(AlbumFileTest, ConnectLinksTheTablesAndDropRemovesThemWithTempSource) {
    const QString albums = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(albums, {3, 1});
    connect(albums);
    EXPECT_TRUE(editor.albumConnected && editor.getTracksEnabled && state.albumHasRating);
    EXPECT_EQ(dialogs.fileRequests()[0].title, "Connect to Album Database");
    EXPECT_EQ(dialogs.fileRequests()[0].filter, "MS Access Files (*.mdb)|*.mdb");
    EXPECT_EQ(database.linkConnect("Track"), ";DATABASE=" + albums);
    connect(std::nullopt);  // cancelled: nothing shown, Get Tracks off
    EXPECT_FALSE(editor.getTracksEnabled);
    EXPECT_EQ(dialogs.fileRequests()[1].initialFolder, dir.path() + "/");

    editor.isSaved = false;
    connect(albums);
    EXPECT_TRUE(editor.albumConnected && !editor.getTracksEnabled);

    store::buildTempSource(database, state);
    store::buildTempSource(database, state);
    EXPECT_EQ(query("SELECT count(*) FROM TempSource").toLongLong(), state.passedCount);
    EXPECT_EQ(state.passedCount, expectedSourceRows(albumgen::generate({3, 1})).size());
    store::dropAlbumLinks(database);
    EXPECT_EQ(database.tableNames(), QStringList({"Compilation", "CompilationTrack",
                                                  "LstManufacturer", "LstFormat", "LstLength"}));
    store::buildTempSource(database, state);
    EXPECT_EQ(state.passedCount, 0);
    EXPECT_FALSE(database.hasTable("TempSource"));
}

// Earlier versions kept TempSource in the file, where a killed run left another album's rows.
// Dropped at open where the file may be written, kept where it may not, it is read by no
// statement of the connection, before its own TempSource is built or by the build.
enum class FileAccess { Free, LockedByAnotherWriter, ReadOnly };

class LeftoverTempSource : public AlbumFileTest,
                           public ::testing::WithParamInterface<FileAccess> {};

TEST_P(LeftoverTempSource, IsNeverRead) {
    database.close();
    testsupport::execRaw(compilationPath,
                         "CREATE TABLE TempSource (TitleTrack TEXT, RatingTrack TEXT);"
                         "INSERT INTO TempSource VALUES ('Stale', '*****')");
    std::optional<testsupport::WriteLock> otherWriter;
    if (GetParam() == FileAccess::LockedByAnotherWriter)
        otherWriter.emplace(compilationPath);
    database = engine::Workspace::defaultWorkspace().openDatabase(
        compilationPath, GetParam() == FileAccess::ReadOnly);
    EXPECT_EQ(testsupport::errorNumber([&] { database.openRecordset("TempSource"); }),
              engine::jet::kCannotFindInputTable);
    EXPECT_EQ(
        testsupport::errorNumber([&] { database.execute("INSERT INTO TempSource VALUES (1)"); }),
        engine::jet::kCannotFindInputTable);
    const QString albums = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(albums, {3, 1});
    connectAndBuild(albums);
    QStringList rows = sourceRows();
    rows.sort();
    EXPECT_EQ(rows, expectedSourceRows(albumgen::generate({3, 1})));  // the album's rows alone
    EXPECT_EQ(testsupport::queryRaw(compilationPath,
                                    "SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'"),
              GetParam() == FileAccess::Free ? "0" : "1")
        << "dropped where the file may be written";
}

INSTANTIATE_TEST_SUITE_P(Opened, LeftoverTempSource,
                         ::testing::Values(FileAccess::Free, FileAccess::LockedByAnotherWriter,
                                           FileAccess::ReadOnly));

}  // namespace
}  // namespace albumtest

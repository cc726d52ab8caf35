// Adding and removing tracks: numbering, the stored sums, the lookup of recorded tracks, what a
// failed step leaves; the source built while another program writes the file.
#include <random>

#include "assembly/picker_fixture.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/album_schema.h"
#include "support/sqlite_rows.h"

namespace {

using assembly::addTrack;
using assembly::removeTrack;

// The sums follow the tracks, not the sums stored before; a Null length counts nothing.
TEST_F(PickerTest, AddingAndRemovingNumberTheTracksAndStoreTheirSums) {
    testsupport::execRaw(path, "UPDATE Compilation SET SumTrack = 7, SumTime = 9999");
    for (const char* title : {"A", "B", "C", "D", "E"}) {
        add(1, title, 100 + title[0]);
    }
    const assembly::AddResult sixth = add(1, "F", QVariant());
    EXPECT_TRUE(sixth.added);
    EXPECT_EQ(sixth.trackNo, 6);
    EXPECT_EQ(sixth.sums.trackCount, 6);
    EXPECT_EQ(sixth.sums.totalTime, 835);
    EXPECT_EQ(storedSums(1), "6/835");
    EXPECT_EQ(storedSums(2), "7/9999");
    const assembly::TrackSums sums = removeTrack(open(), 1, 3);
    EXPECT_EQ(sums.trackCount, 5);
    EXPECT_EQ(sums.totalTime, 668);
    removeTrack(database, 1, 1);
    removeTrack(database, 1, 4);
    for (const auto& [compilation, trackNo] : {std::pair{1, 4}, {1, 0}, {3, 1}, {99, 1}}) {
        EXPECT_EQ(testsupport::errorNumber([&] { removeTrack(database, compilation, trackNo); }),
                  engine::jet::kNoCurrentRecord)
            << compilation << "/" << trackNo;
    }
    EXPECT_EQ(testsupport::errorNumber([&] { add(42, "A"); }), engine::jet::kNoCurrentRecord);
    EXPECT_EQ(tracksOf(1), "1:B 2:D 3:E");
    EXPECT_EQ(storedSums(1), "3/503");
}

TEST_F(PickerTest, EveryFieldOfTheSourceRowLandsInItsColumn) {
    testsupport::execOnConnection(
        open(),
        "CREATE TEMP TABLE TempSource (ArtistSort, PerformerTrack, TitleTrack, Item, \"Index\", "
        "Length, Version, Live, TitleAlbum, PerformerAlbum, AlbumArtistSort, TrackTrackID, "
        "TrackAlbumID, RatingTrack, Location, MyRecorded);"
        "INSERT INTO TempSource VALUES ('Dylan, Bob', 'Bob Dylan', 'Hurricane', 2, 5, 513, "
        "'Single', -1, 'Desire', 'Various', 'Various Artists', 4711, 815, '*****', 'Shelf 3', "
        "1975)");
    engine::Recordset source = database.openRecordset("TempSource");
    addTrack(database, 2, assembly::sourceTrackAt(source), {});
    EXPECT_EQ(sqliteRows(path,
                         "SELECT CompilationID_F1, Track_Artist_Name, Track_Title, Length, "
                         "RecordedStart, Album_Title, TrackNo, Live, Version, "
                         "Album_Artist_Name, Item, \"Index\", Track_Rating, ArtistSort, "
                         "AlbumArtistSort, AlbumLocation, AlbumoryTrackID, AlbumoryAlbumID "
                         "FROM CompilationTrack"),
              (QList<QVariantList>{{2, "Bob Dylan", "Hurricane", 513, 1975, "Desire", 1, -1,
                                    "Single", "Various", 2, 5, "*****", "Dylan, Bob",
                                    "Various Artists", "Shelf 3", 4711, 815}}));
    source.moveNext();
    EXPECT_EQ(testsupport::errorNumber([&] { assembly::sourceTrackAt(source); }),
              engine::jet::kNoCurrentRecord);
}

// The lookup compares without regard to case, finds apostrophes and lists by name, then track.
// It only reads: without its index it writes none.
TEST_F(PickerTest, ARecordedTrackIsAddedOnlyWhenTheUserConfirms) {
    testsupport::execRaw(path, "DROP INDEX CompilationTrack_Lookup");
    const std::pair<int, QString> recorded[] = {
        {3, "Sinéad O'Connor"}, {2, "Sinéad O'Connor"}, {2, "Sinead O'Connor"}};
    for (const auto& [compilation, performer] : recorded) {
        addTrack(open(), compilation, track(performer, "Nothing Compares 2 U"), {});
    }
    QStringList shown;
    const auto answer = [&shown](bool addAnyway) {
        return [&shown, addAnyway](engine::Recordset& lookup) {
            for (lookup.moveFirst(); !lookup.eof(); lookup.moveNext()) {
                shown << lookup.value("Name").toString() + " " + lookup.value("TrackNo").toString();
            }
            return addAnyway;
        };
    };
    const auto shouted = track("SINÉAD O'CONNOR", "nothing compares 2 u", 280);
    EXPECT_FALSE(addTrack(database, 1, shouted, answer(false)).added);
    EXPECT_EQ(shown, QStringList({"Beat Club 1", "Old Friends 1"}));
    EXPECT_EQ(storedSums(1), "0/0");
    EXPECT_TRUE(addTrack(database, 1, shouted, answer(true)).added);
    EXPECT_TRUE(addTrack(database, 1, track("Sinéad O'Connor", "Other"), answer(false)).added);
    EXPECT_EQ(storedSums(1), "2/340");
    database.close();
    EXPECT_EQ(
        testsupport::queryRaw(
            path, "SELECT count(*) FROM sqlite_master WHERE name = 'CompilationTrack_Lookup'"),
        "0");
}

TEST_F(PickerTest, AFailingWriteInTheMiddleOfAStepLeavesNothingHalfDone) {
    add(1, "A");
    add(1, "B");
    failWrites("Compilation", "SumTime");  // the track row is written first, the sums last
    EXPECT_NE(testsupport::errorNumber([&] { add(1, "C"); }), 0);
    EXPECT_NE(testsupport::errorNumber([&] { removeTrack(database, 1, 1); }), 0);
    database.close();
    EXPECT_EQ(tracksOf(1), "1:A 2:B");
    EXPECT_EQ(storedSums(1), "2/120");
}

TEST_F(PickerTest, ManyAddsAndRemovesKeepEveryCompilationWhole) {
    std::mt19937 random(4711);
    const auto pick = [&](int count) {
        return std::uniform_int_distribution<>(0, count - 1)(random);
    };
    int counts[4] = {0, 0, 0, 0};
    for (int step = 0; step < 150; ++step) {
        const int compilation = 1 + pick(3);
        if (counts[compilation] > 0 && pick(3) == 0) {
            removeTrack(open(), compilation, 1 + pick(counts[compilation]--));
        } else {
            add(compilation, "T", pick(10) == 0 ? QVariant() : QVariant(60 + pick(300)));
            ++counts[compilation];
        }
    }
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT sum(SumTrack) FROM Compilation"),
              QString::number(counts[1] + counts[2] + counts[3]));
}

// Another program in the middle of writing the file holds it past the engine's wait. The source
// is the connection's own: its build needs no write of the file and either ends whole or says the
// file is locked, with no rows to show; a step that writes the file says it is locked. The
// program's change stays whole, and once it is done the picker works again.
TEST_F(PickerTest, ASourceBuiltWhileAnotherProgramWritesTheFileWritesNothingHalf) {
    add(1, "A");
    const QString albums = dir.file("albums.mdb");
    testsupport::writeAlbumFile(albums, {{"Simon", "Kodachrome", 212}});
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());  // the album folder is kept there
    platform::ScriptedDialogs dialogs;
    dialogs.answerFile(albums);
    store::AlbumSourceState state;
    store::EditorConnection editor;
    store::connectAlbumDatabase(open(), dialogs, state, editor);
    ASSERT_TRUE(editor.albumConnected) << dialogs.lastMessageText().toStdString();
    auto writer =
        std::make_unique<testsupport::SqliteFile>(path, testsupport::SqliteOptions{.plain = true});
    writer->exec(
        "BEGIN EXCLUSIVE; DELETE FROM CompilationTrack; "
        "UPDATE Compilation SET SumTrack = 0, SumTime = 0");
    const int built = testsupport::errorNumber([&] { store::buildTempSource(database, state); });
    EXPECT_EQ(state.passedCount, built == 0 ? 1 : 0) << built;
    EXPECT_TRUE(built == 0 || built == engine::jet::kLocked) << built;
    QString message;
    EXPECT_EQ(testsupport::errorNumber([&] { add(2, "B"); }, &message), engine::jet::kLocked);
    EXPECT_TRUE(message.contains("locked")) << message.toStdString();
    writer->exec("COMMIT");
    writer.reset();
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
    EXPECT_EQ(tracksOf(1) + tracksOf(2) + storedSums(1) + storedSums(2), "0/00/0");
    EXPECT_EQ(testsupport::queryRaw(path,
                                    "SELECT count(*) FROM sqlite_master WHERE name = "
                                    "'TempSource'"),
              "0");
    store::buildTempSource(database, state);
    EXPECT_EQ(state.passedCount, 1);
    engine::Recordset source = database.openRecordset("TempSource");
    EXPECT_EQ(addTrack(database, 2, assembly::sourceTrackAt(source), {}).trackNo, 1);
}

}  // namespace

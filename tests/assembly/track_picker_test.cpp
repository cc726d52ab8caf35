// Adding and removing tracks: numbering, the stored sums, the lookup of recorded tracks, what a
// failed step leaves, and what the picker shows about the time.
#include <random>

#include "assembly/picker_fixture.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
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

// A medium of 74 minutes holds 4440 seconds, less 3 between each two tracks.
TEST(PickerDisplay, TheTimeTurnsRedOnlyPastWhatTheMediumHolds) {
    const std::tuple<int, int, quint32> cases[] = {{4383, 20, assembly::kTimeFitsColour},
                                                   {4384, 20, assembly::kTimeExceedsColour},
                                                   {4440, 1, assembly::kTimeFitsColour},
                                                   {4441, 1, assembly::kTimeExceedsColour}};
    for (const auto& [time, tracks, colour] : cases) {
        EXPECT_EQ(assembly::timeColour(time, 74, tracks), colour) << time;
    }
}

}  // namespace

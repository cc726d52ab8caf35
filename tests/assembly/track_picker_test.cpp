// Adding and removing tracks: numbering, the stored sums, the lookup of recorded tracks, and
// what a failed step leaves.
#include <QFile>
#include <random>

#include "assembly/picker_fixture.h"
#include "assembly/track_picker.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "support/compilation_invariants.h"
#include "support/jet_errors.h"
#include "support/sqlite_rows.h"

namespace {

using assembly::addTrack;
using assembly::removeTrack;

TEST_F(PickerTest, AddingToAnEmptyCompilationGivesTrackOneAndItsLength) {
    const assembly::AddResult result = add(1, "Beatles, The", "Help!", 139);
    EXPECT_TRUE(result.added);
    EXPECT_EQ(result.trackNo, 1);
    EXPECT_EQ(result.sums.trackCount, 1);
    EXPECT_EQ(result.sums.totalTime, 139);
    EXPECT_EQ(tracksOf(1), "1:Help!");
    EXPECT_EQ(storedSums(1), "1/139");
    EXPECT_EQ(storedSums(2), "0/0");
}

TEST_F(PickerTest, TracksAppendInOrderAndANullLengthCountsNothing) {
    add(2, "Kinks, The", "Lola", 241);
    add(2, "Who, The", "My Generation", QVariant());
    const assembly::AddResult third = add(2, "Zombies, The", "She's Not There", 145);
    EXPECT_EQ(third.trackNo, 3);
    EXPECT_EQ(third.sums.trackCount, 3);
    EXPECT_EQ(third.sums.totalTime, 241 + 145);
    EXPECT_EQ(tracksOf(2), "1:Lola 2:My Generation 3:She's Not There");
    EXPECT_EQ(storedSums(2), "3/386");
    EXPECT_EQ(testsupport::queryRaw(path,
                                    "SELECT count(*) FROM CompilationTrack WHERE "
                                    "Track_Title = 'My Generation' AND Length IS NULL"),
              "1");
}

TEST_F(PickerTest, SumsFollowTheTracksEvenWhenTheStoredOnesWereWrong) {
    testsupport::execRaw(path,
                         "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, "
                         "Length) VALUES (3, 1, 'One', 100), (3, 2, 'Two', 200);"
                         "UPDATE Compilation SET SumTrack = 7, SumTime = 9999 WHERE "
                         "CompilationID_P = 3");
    const assembly::AddResult result = add(3, "Anyone", "Three", 300);
    EXPECT_EQ(result.trackNo, 3);
    EXPECT_EQ(storedSums(3), "3/600");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(PickerTest, EveryFieldOfTheSourceRowLandsInItsColumn) {
    testsupport::execOnConnection(
        open(),
        "CREATE TEMP TABLE TempSource (ArtistSort TEXT, PerformerTrack TEXT, TitleTrack TEXT, Item "
        "SMALLINT, \"Index\" SMALLINT, Length INTEGER, Version TEXT, Live YESNO, RecordedStart "
        "TEXT, TitleAlbum TEXT, PerformerAlbum TEXT, AlbumArtistSort TEXT, TrackTrackID INTEGER, "
        "TrackAlbumID INTEGER, RatingTrack TEXT, Location TEXT, ArtistID INTEGER, TrackID "
        "INTEGER, MyRecorded SMALLINT);"
        "INSERT INTO TempSource VALUES ('Dylan, Bob', 'Bob Dylan', 'Hurricane', 2, 5, 513, "
        "'Single', -1, ' 1975-11-01', 'Desire', 'Various', 'Various Artists', 4711, 815, "
        "'*****', 'Shelf 3', 12, 4711, 1975)");
    engine::Recordset source = database.openRecordset("TempSource");
    addTrack(database, 2, assembly::sourceTrackAt(source), {});
    const QList<QVariantList> rows = sqliteRows(
        path,
        "SELECT CompilationID_F1, Track_Artist_Name, Track_Title, Length, RecordedStart, "
        "Album_Title, TrackNo, Live, Version, Album_Artist_Name, Item, \"Index\", Track_Rating, "
        "ArtistSort, AlbumArtistSort, AlbumLocation, AlbumoryTrackID, AlbumoryAlbumID FROM "
        "CompilationTrack");
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0], (QVariantList{qint64(2), "Bob Dylan", "Hurricane", qint64(513), qint64(1975),
                                     "Desire", qint64(1), qint64(-1), "Single", "Various",
                                     qint64(2), qint64(5), "*****", "Dylan, Bob", "Various Artists",
                                     "Shelf 3", qint64(4711), qint64(815)}));
}

TEST_F(PickerTest, ReadingASourceRowNeedsACurrentRow) {
    testsupport::execOnConnection(open(),
                                  "CREATE TEMP TABLE TempSource (PerformerTrack TEXT, TitleTrack "
                                  "TEXT, Length INTEGER)");
    engine::Recordset empty = database.openRecordset("TempSource");
    EXPECT_EQ(testsupport::errorNumber([&] { assembly::sourceTrackAt(empty); }),
              engine::jet::kNoCurrentRecord);
}

TEST_F(PickerTest, RemovingTrackThreeOfFiveKeepsTheOrderWithoutAGap) {
    for (const char* title : {"A", "B", "C", "D", "E"}) {
        add(1, "Performer", title, 100 + title[0]);
    }
    const assembly::TrackSums sums = removeTrack(open(), 1, 3);
    EXPECT_EQ(sums.trackCount, 4);
    EXPECT_EQ(sums.totalTime, 400 + 'A' + 'B' + 'D' + 'E');
    EXPECT_EQ(tracksOf(1), "1:A 2:B 3:D 4:E");
    EXPECT_EQ(storedSums(1), QStringLiteral("4/%1").arg(sums.totalTime));
}

TEST_F(PickerTest, RemovingTheFirstAndTheLastTrack) {
    for (const char* title : {"A", "B", "C"}) {
        add(1, "Performer", title, 60);
    }
    removeTrack(open(), 1, 1);
    EXPECT_EQ(tracksOf(1), "1:B 2:C");
    removeTrack(database, 1, 2);
    EXPECT_EQ(tracksOf(1), "1:B");
    const assembly::TrackSums none = removeTrack(database, 1, 1);
    EXPECT_EQ(none.trackCount, 0);
    EXPECT_EQ(none.totalTime, 0);
    EXPECT_EQ(storedSums(1), "0/0");
}

TEST_F(PickerTest, RemovingATrackThatIsNotThereChangesNothing) {
    add(1, "Performer", "A", 60);
    add(2, "Performer", "B", 70);
    for (const auto& [compilation, trackNo] : {std::pair{1, 2}, {1, 0}, {3, 1}, {99, 1}}) {
        EXPECT_EQ(testsupport::errorNumber([&] { removeTrack(database, compilation, trackNo); }),
                  engine::jet::kNoCurrentRecord)
            << compilation << "/" << trackNo;
    }
    EXPECT_EQ(tracksOf(1), "1:A");
    EXPECT_EQ(tracksOf(2), "1:B");
    EXPECT_EQ(storedSums(1), "1/60");
}

TEST_F(PickerTest, RemovingRenumbersAFileWhoseNumbersHadGaps) {
    testsupport::execRaw(
        path,
        "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, "
        "Length) VALUES (3, 2, 'Two', 20), (3, 5, 'Five', 50), (3, 9, 'Nine', 90)");
    removeTrack(open(), 3, 5);
    EXPECT_EQ(tracksOf(3), "1:Two 2:Nine");
    EXPECT_EQ(storedSums(3), "2/110");
}

TEST_F(PickerTest, AddingToACompilationThatIsNotThereAsksNothingAndChangesNothing) {
    add(1, "Performer", "A", 60);
    bool asked = false;
    const int error = testsupport::errorNumber([&] {
        addTrack(open(), 42, track("Performer", "A", 60), [&](engine::Recordset&) {
            asked = true;
            return true;
        });
    });
    EXPECT_EQ(error, engine::jet::kNoCurrentRecord);
    EXPECT_FALSE(asked);
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "1");
}

TEST_F(PickerTest, ARecordedTrackIsAddedOnlyWhenTheUserConfirms) {
    add(2, "Beatles, The", "Help!", 139);
    add(3, "Beatles, The", "Help!", 140);
    QStringList shown;
    const auto answer = [&](bool addAnyway) {
        return [&shown, addAnyway](engine::Recordset& lookup) {
            for (lookup.moveFirst(); !lookup.eof(); lookup.moveNext()) {
                shown << lookup.value("Name").toString() + " " + lookup.value("TrackNo").toString();
            }
            return addAnyway;
        };
    };
    const assembly::AddResult cancelled =
        addTrack(open(), 1, track("BEATLES, the", "help!", 139), answer(false));
    EXPECT_FALSE(cancelled.added);
    EXPECT_EQ(cancelled.sums.trackCount, 0);
    EXPECT_EQ(shown, QStringList({"Beat Club 1", "Old Friends 1"}));
    EXPECT_EQ(tracksOf(1), "");
    EXPECT_EQ(storedSums(1), "0/0");

    const assembly::AddResult confirmed =
        addTrack(database, 1, track("Beatles, The", "Help!", 139), answer(true));
    EXPECT_TRUE(confirmed.added);
    EXPECT_EQ(storedSums(1), "1/139");
}

TEST_F(PickerTest, ATrackNotYetRecordedIsAddedWithoutAsking) {
    add(2, "Beatles, The", "Help!", 139);
    bool asked = false;
    const auto ask = [&](engine::Recordset&) {
        asked = true;
        return false;
    };
    // Same performer, other title; other performer, same title.
    EXPECT_TRUE(addTrack(open(), 1, track("Beatles, The", "Yesterday", 125), ask).added);
    EXPECT_TRUE(addTrack(database, 1, track("Beach Boys, The", "Help!", 150), ask).added);
    EXPECT_FALSE(asked);
}

TEST_F(PickerTest, TheLookupFindsApostrophesIgnoresCaseAndListsByNameThenTrack) {
    add(3, "Sinéad O'Connor", "Nothing Compares 2 U", 280);
    add(1, "Sinéad O'Connor", "Nothing Compares 2 U", 280);
    add(1, "Sinéad O'Connor", "Nothing Compares 2 U", 280);
    add(2, "Sinead O'Connor", "Nothing Compares 2 U", 280);  // no accent: another performer
    engine::Recordset found =
        assembly::findTrackOnCompilations(open(), "SINÉAD O'CONNOR", "nothing compares 2 u");
    QStringList rows;
    for (; !found.eof(); found.moveNext()) {
        rows << found.value("Name").toString() + " " + found.value("TrackNo").toString();
    }
    EXPECT_EQ(rows, QStringList({"Old Friends 1", "Road Trip 1", "Road Trip 2"}));
    EXPECT_EQ(assembly::findTrackOnCompilations(database, "O'", "Nothing").recordCount(), 0);
}

TEST_F(PickerTest, AFailingWriteInTheMiddleOfAStepLeavesNothingHalfDone) {
    add(1, "Performer", "A", 60);
    add(1, "Performer", "B", 70);
    add(1, "Performer", "C", 80);
    closeDatabase();
    // The track row is written first, the sums last: the sums' write fails.
    testsupport::execRaw(path,
                         "CREATE TRIGGER sums_fail BEFORE UPDATE OF SumTime ON Compilation "
                         "BEGIN SELECT RAISE(ABORT, 'the disk is full'); END");
    EXPECT_NE(testsupport::errorNumber([&] { add(1, "Performer", "D", 90); }), 0);
    EXPECT_NE(testsupport::errorNumber([&] { removeTrack(database, 1, 1); }), 0);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:A 2:B 3:C");
    EXPECT_EQ(storedSums(1), "3/210");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
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
            removeTrack(open(), compilation, 1 + pick(counts[compilation]));
            --counts[compilation];
        } else {
            const QVariant length = pick(10) == 0 ? QVariant() : QVariant(60 + pick(300));
            add(compilation, "P" + QString::number(pick(5)), "T" + QString::number(step), length);
            ++counts[compilation];
        }
    }
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT sum(SumTrack) FROM Compilation"),
              QString::number(counts[1] + counts[2] + counts[3]));
}

TEST_F(PickerTest, TheLookupOnlyReadsWithOrWithoutItsIndex) {
    const QString indexCount = QStringLiteral(
        "SELECT count(*) FROM sqlite_master WHERE type = 'index' AND name = "
        "'CompilationTrack_Lookup'");
    EXPECT_EQ(testsupport::queryRaw(path, indexCount), "1") << "new files have it";
    testsupport::execRaw(path, "DROP INDEX CompilationTrack_Lookup");
    add(1, "Performer", "A", 60);
    EXPECT_EQ(assembly::findTrackOnCompilations(open(), "performer", "a").recordCount(), 1);
    closeDatabase();
    EXPECT_EQ(testsupport::queryRaw(path, indexCount), "0") << "the lookups wrote nothing";
}

}  // namespace

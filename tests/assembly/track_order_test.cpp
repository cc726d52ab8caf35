#include <QStringList>
#include <algorithm>
#include <random>

#include "assembly/track_order.h"
#include "engine/jet_error.h"
#include "picker_fixture.h"
#include "query/sort_clause.h"
#include "support/compilation_invariants.h"
#include "support/jet_errors.h"

using assembly::DropGrid;

namespace {

class TrackOrderTest : public PickerTest {
  protected:
    // Compilation 1 holds the titles in this order, each lasting the given seconds.
    void fill(const QStringList& titles, const QList<int>& seconds) {
        for (int i = 0; i < titles.size(); ++i) {
            add(1, "Performer", titles[i], seconds.value(i, 60));
        }
    }
    void failWhenTrackNoBecomes(int trackNo) {
        closeDatabase();
        testsupport::execRaw(
            path, QStringLiteral("CREATE TRIGGER write_fails BEFORE UPDATE OF TrackNo ON "
                                 "CompilationTrack WHEN NEW.TrackNo = %1 "
                                 "BEGIN SELECT RAISE(ABORT, 'the disk is full'); END")
                      .arg(trackNo));
    }
    int renumber(const QString& orderText) {
        return assembly::renumberBySort(open(), 1, orderText);
    }
    void move(int from, int to) { assembly::moveTrack(open(), 1, from, to); }
};

QString timeDescending() {
    query::SortLevels levels;
    levels[0] = *query::sortLevelFromCaptions(query::SortCaller::Compilation, "Time", "Descending");
    return query::composeSortClause(levels, query::SortCaller::Compilation);
}

}  // namespace

TEST_F(TrackOrderTest, RenumberingByTimeDescendingNumbersTheLongestFirst) {
    fill({"A", "B", "C", "D"}, {200, 300, 100, 250});
    add(2, "Other", "X", 500);
    EXPECT_EQ(renumber(timeDescending()), 4);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:B 2:D 3:A 4:C");
    EXPECT_EQ(storedSums(1), "4/850");
    EXPECT_EQ(tracksOf(2), "1:X");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(TrackOrderTest, TracksEqualInTheOrderKeepTheirRunningOrder) {
    fill({"A", "B", "C", "D"}, {100, 200, 100, 200});
    move(4, 1);  // running order D A B C, unlike the order the rows were written in
    renumber(timeDescending());
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:D 2:B 3:A 4:C");
}

TEST_F(TrackOrderTest, RenumberingWithoutKeyUsesTheDefaultOrder) {
    const auto source = [](const QString& title, const QString& artistSort, const QString& album,
                           int item, int index) {
        assembly::SourceTrack track = PickerTest::track("Performer", title, 100);
        track.artistSort = artistSort;
        track.albumArtistSort = artistSort;
        track.titleAlbum = album;
        track.item = item;
        track.index = index;
        return track;
    };
    for (const assembly::SourceTrack& track :
         {source("A", "Zappa, Frank", "Hot Rats", 1, 1), source("B", "beatles, the", "Help!", 1, 2),
          source("C", "Beatles, The", "Abbey Road", 2, 1),
          source("D", "Beatles, The", "Help!", 1, 1), source("E", "Beatles, The", "Help!", 0, 9)}) {
        assembly::addTrack(open(), 1, track, {});
    }
    renumber(query::composeSortClause({}, query::SortCaller::Compilation));
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:C 2:E 3:D 4:B 5:A");
}

TEST_F(TrackOrderTest, EveryCompilationKeyRenumbers) {
    fill({"A", "B", "C"}, {30, 10, 20});
    for (const query::SortKey& key : query::sortKeys(query::SortCaller::Compilation)) {
        EXPECT_EQ(testsupport::errorNumber([&] { renumber(key.field + " DESC"); }), 0)
            << key.field.toStdString();
    }
    closeDatabase();
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(TrackOrderTest, AFailedRenumberingLeavesTheOldNumbers) {
    fill({"A", "B", "C", "D"}, {200, 300, 100, 250});
    EXPECT_NE(testsupport::errorNumber([&] { renumber("NoSuchField DESC"); }), 0);
    // B becomes 1 and D 2 before A's write to 3 fails.
    failWhenTrackNoBecomes(3);
    EXPECT_NE(testsupport::errorNumber([&] { renumber(timeDescending()); }), 0);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:A 2:B 3:C 4:D");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(TrackOrderTest, RenumberingAnEmptyCompilationDoesNothing) {
    EXPECT_EQ(renumber(timeDescending()), 0);
}

TEST_F(TrackOrderTest, DroppingATrackFurtherDownMovesTheOnesBetweenUp) {
    fill({"A", "B", "C", "D", "E"}, {});
    move(2, 4);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:A 2:C 3:D 4:B 5:E");
    EXPECT_EQ(storedSums(1), "5/300");
}

TEST_F(TrackOrderTest, DroppingTheLastTrackOnTheFirstRowMovesAllOthersDown) {
    fill({"A", "B", "C", "D", "E"}, {});
    move(5, 1);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:E 2:A 3:B 4:C 5:D");
}

TEST_F(TrackOrderTest, DroppingATrackOnItselfOrOutsideTheTracksChangesNothing) {
    fill({"A", "B", "C"}, {});
    move(2, 2);
    for (const auto& [from, to] : {std::pair{0, 2}, {4, 1}, {1, 4}, {2, 0}}) {
        EXPECT_EQ(testsupport::errorNumber([&] { move(from, to); }), engine::jet::kNoCurrentRecord)
            << from << "->" << to;
    }
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:A 2:B 3:C");
}

// The refusal names the number that was asked for, whichever of the two it is.
TEST_F(TrackOrderTest, AMoveOutOfTheTracksSaysWhichNumberIsNotThere) {
    fill({"A", "B", "C"}, {});
    const struct {
        int from;
        int to;
        QString message;  // empty: the move is made
    } cases[] = {
        {0, 2, "There is no track 0 on this compilation."},
        {2, 4, "There is no track 4 on this compilation."},
        {4, 1, "There is no track 4 on this compilation."},
        {1, 0, "There is no track 0 on this compilation."},
        {3, 1, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(QString("%1 -> %2").arg(c.from).arg(c.to).toStdString());
        QString message;
        try {
            move(c.from, c.to);
        } catch (const engine::JetError& error) {
            EXPECT_EQ(error.number(), engine::jet::kNoCurrentRecord);
            message = error.description();
        }
        EXPECT_EQ(message, c.message);
    }
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:C 2:A 3:B");
}

// An earlier version's file: tracks 2, 3, 5, 7, no track 1. The move numbers them 1 to 4 in
// their running order and moves the tracks that carried the numbers given.
TEST_F(TrackOrderTest, DroppingOnNumbersWithGapsNumbersTheTracksFirst) {
    fill({"A", "B", "C", "D"}, {});
    closeDatabase();
    testsupport::execRaw(path,
                         "UPDATE CompilationTrack SET TrackNo = TrackNo * 2 - 1 + "
                         "(TrackNo = 1) WHERE CompilationID_F1 = 1");
    ASSERT_EQ(tracksOf(1), "2:A 3:B 5:C 7:D");
    for (int missing : {1, 4, 8}) {
        EXPECT_EQ(testsupport::errorNumber([&] { move(missing, 2); }),
                  engine::jet::kNoCurrentRecord);
    }
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "2:A 3:B 5:C 7:D");  // a refused move leaves the numbers alone
    move(7, 3);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:A 2:D 3:B 4:C");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(TrackOrderTest, AFailedDropLeavesTheOldNumbers) {
    fill({"A", "B", "C", "D", "E"}, {});
    failWhenTrackNoBecomes(3);  // 1 to 4 writes 4, 1 and 2, then fails on 3
    EXPECT_NE(testsupport::errorNumber([&] { move(1, 4); }), 0);
    EXPECT_NE(testsupport::errorNumber([&] { move(4, 1); }), 0);
    closeDatabase();
    EXPECT_EQ(tracksOf(1), "1:A 2:B 3:C 4:D 5:E");
}

TEST_F(TrackOrderTest, ManyDropsFollowTheListTheyModel) {
    QStringList titles;
    for (int i = 0; i < 12; ++i) {
        titles << QString(QChar('A' + i));
    }
    fill(titles, {});
    std::mt19937 random(1234);
    std::uniform_int_distribution<> number(1, 12);
    for (int step = 0; step < 40; ++step) {
        const int from = number(random);
        const int to = number(random);
        move(from, to);
        titles.move(from - 1, to - 1);
    }
    closeDatabase();
    QStringList expected;
    for (int i = 0; i < titles.size(); ++i) {
        expected << QString::number(i + 1) + ":" + titles[i];
    }
    EXPECT_EQ(tracksOf(1), expected.join(" "));
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST(DropTarget, AllTracksVisibleTargetTheRowNumber) {
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{3, 10, 1, 5}), 4);
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{0, 10, 1, 5}), 1);
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{9, 10, 1, 10}), 10);
}

TEST(DropTarget, AScrolledListCountsFromTheTopRow) {
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{2, 10, 11, 30}), 13);
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{0, 10, 2, 11}), 2);
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{9, 10, 21, 30}), 30);
}

TEST(DropTarget, ARowBelowTheLastTrackTargetsTheLastTrack) {
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{7, 10, 1, 5}), 5);
    EXPECT_EQ(assembly::dropTargetNo(DropGrid{9, 10, 25, 30}), 30);
}

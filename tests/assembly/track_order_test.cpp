#include <random>

#include "assembly/track_order.h"
#include "engine/jet_error.h"
#include "picker_fixture.h"
#include "query/sort_clause.h"

namespace {

// Compilation 1 holds the titles A, B, ... in this order, lasting the given seconds.
class TrackOrderTest : public PickerTest {
  protected:
    void fill(const QList<int>& seconds) {
        for (int i = 0; i < seconds.size(); ++i) {
            add(1, QString(QChar('A' + i)), seconds[i]);
        }
    }
    int renumber(const QString& orderText) {
        return assembly::renumberBySort(open(), 1, orderText);
    }
    void move(int from, int to) { assembly::moveTrack(open(), 1, from, to); }
    const QString timeDescending = query::composeSortClause(
        {*query::sortLevelFromCaptions(query::SortCaller::Compilation, "Time", "Descending")},
        query::SortCaller::Compilation);
};

// Tracks equal in the order keep their running order, here unlike the order of their rows.
TEST_F(TrackOrderTest, RenumberingByTimeNumbersTheLongestFirstAndKeepsTiesInRunningOrder) {
    fill({200, 300, 100, 200, 300});
    add(2, "X", 500);
    move(5, 1);  // running order E A B C D
    EXPECT_EQ(renumber(timeDescending), 5);
    EXPECT_EQ(tracksOf(1), "1:E 2:B 3:A 4:D 5:C");
    EXPECT_EQ(storedSums(1), "5/1100");
    EXPECT_EQ(tracksOf(2), "1:X");
    EXPECT_EQ(assembly::renumberBySort(database, 3, timeDescending), 0);
}

// B becomes 1 and D 2 before A's write to 3 fails; a drop of 1 to 4 writes 4, 1 and 2 first.
TEST_F(TrackOrderTest, AFailedRenumberingOrDropLeavesTheOldNumbers) {
    fill({200, 300, 100, 250});
    EXPECT_NE(testsupport::errorNumber([&] { renumber("NoSuchField DESC"); }), 0);
    failWrites("CompilationTrack", "TrackNo", "NEW.TrackNo = 3");
    EXPECT_NE(testsupport::errorNumber([&] { renumber(timeDescending); }), 0);
    EXPECT_NE(testsupport::errorNumber([&] { move(1, 4); }), 0);
    EXPECT_NE(testsupport::errorNumber([&] { move(4, 1); }), 0);
    EXPECT_EQ(tracksOf(1), "1:A 2:B 3:C 4:D");
}

// The refusal names the number that was asked for, whichever of the two it is.
TEST_F(TrackOrderTest, AMoveOutOfTheTracksSaysWhichNumberIsNotThere) {
    fill({60, 60, 60});
    const std::tuple<int, int, QString> cases[] = {
        {0, 2, "There is no track 0 on this compilation."},
        {2, 4, "There is no track 4 on this compilation."},
        {2, 2, ""},
        {3, 1, ""}};
    for (const auto& [from, to, expected] : cases) {
        QString message;
        EXPECT_EQ(testsupport::errorNumber([&] { move(from, to); }, &message),
                  expected.isEmpty() ? 0 : engine::jet::kNoCurrentRecord);
        EXPECT_EQ(message, expected) << from << " -> " << to;
    }
    EXPECT_EQ(tracksOf(1), "1:C 2:A 3:B");
}

// An earlier version's file: tracks 2, 3, 5, 7, no track 1. The move numbers them 1 to 4 in
// their running order and moves the tracks that carried the numbers given.
TEST_F(TrackOrderTest, DroppingOnNumbersWithGapsNumbersTheTracksFirst) {
    fill({60, 60, 60, 60});
    database.close();
    testsupport::execRaw(path,
                         "UPDATE CompilationTrack SET TrackNo = TrackNo * 2 - 1 + "
                         "(TrackNo = 1) WHERE CompilationID_F1 = 1");
    ASSERT_EQ(tracksOf(1), "2:A 3:B 5:C 7:D");
    for (int missing : {1, 4, 8}) {
        EXPECT_EQ(testsupport::errorNumber([&] { move(missing, 2); }),
                  engine::jet::kNoCurrentRecord);
    }
    EXPECT_EQ(tracksOf(1), "2:A 3:B 5:C 7:D");  // a refused move leaves the numbers alone
    move(7, 3);
    EXPECT_EQ(tracksOf(1), "1:A 2:D 3:B 4:C");
}

// Drops up and down, on the first and the last track, follow a list that models them.
TEST_F(TrackOrderTest, ManyDropsFollowTheListTheyModel) {
    fill(QList<int>(12, 60));
    QStringList titles;
    for (int i = 0; i < 12; ++i) {
        titles << QString(QChar('A' + i));
    }
    std::mt19937 random(1234);
    std::uniform_int_distribution<> number(1, 12);
    for (int step = 0; step < 40; ++step) {
        const int from = number(random);
        const int to = number(random);
        move(from, to);
        titles.move(from - 1, to - 1);
    }
    for (int i = 0; i < titles.size(); ++i) {
        titles[i] = QString::number(i + 1) + ":" + titles[i];
    }
    EXPECT_EQ(tracksOf(1), titles.join(" "));
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

}  // namespace

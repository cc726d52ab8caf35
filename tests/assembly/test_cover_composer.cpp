#include <gtest/gtest.h>

#include "assembly/cover_composer.h"
#include "engine/workspace.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

using assembly::BoldRange;
using assembly::ComposedCover;
using assembly::CoverMode;
using assembly::CoverRow;

namespace {

// Adams, Morning, 165 s and Baker, Night Train, 391 s, both from the album Gold.
std::vector<CoverRow> twoSongs() {
    return {{"Adams", "Morning", 165, "1"}, {"Baker", "Night Train", 391, "2"}};
}

std::vector<CoverRow> twoAlbums() {
    return {{"Adams", "Gold", 165, ""}, {"Baker", "Gold", 391, ""}};
}

TEST(CoverText, SongsOnAnMdFitOneLine) {
    const ComposedCover cover = composeCoverText(CoverMode::PerformerSong, twoSongs(), "MD", false);
    EXPECT_EQ(cover.text, "1. Adams: Morning  2. Baker: Night Train\n");
    EXPECT_EQ(cover.bold, (QVector<BoldRange>{{3, 7}, {22, 7}}));
    EXPECT_TRUE(cover.setsParagraphs);
    EXPECT_EQ(cover.hangingIndentTwips, 0);
}

TEST(CoverText, SongsOnACdRomTakeALineEachWithTheirTimes) {
    const ComposedCover cover =
        composeCoverText(CoverMode::PerformerSong, twoSongs(), "cd-ROM", false);
    EXPECT_EQ(cover.text,
              "1.\tAdams   Morning  [2:45]\r\n"
              "2.\tBaker   Night Train  [6:31]\n");
    EXPECT_EQ(cover.bold, (QVector<BoldRange>{{3, 7}, {31, 7}}));
    EXPECT_EQ(cover.hangingIndentTwips, 400);
}

TEST(CoverText, PerformerAlbumAndPerformerListsOnAnMd) {
    const ComposedCover albums =
        composeCoverText(CoverMode::PerformerAlbum, twoAlbums(), "MD", false);
    EXPECT_EQ(albums.text, "Adams: Gold / Baker: Gold \n");
    EXPECT_EQ(albums.bold, (QVector<BoldRange>{{0, 7}, {14, 7}}));
    EXPECT_FALSE(albums.setsParagraphs);

    const ComposedCover performers =
        composeCoverText(CoverMode::Performer, twoAlbums(), "MD", false);
    EXPECT_EQ(performers.text, "Adams / Baker \n");
    EXPECT_TRUE(performers.bold.isEmpty());
}

TEST(CoverText, TimeOrderPutsTheLongestFirstButNeverReordersSongs) {
    EXPECT_EQ(composeCoverText(CoverMode::Performer, twoAlbums(), "MD", true).text,
              "Baker / Adams \n");
    EXPECT_EQ(composeCoverText(CoverMode::PerformerAlbum, twoAlbums(), "MD", true).bold,
              (QVector<BoldRange>{{0, 7}, {14, 7}}));
    EXPECT_EQ(composeCoverText(CoverMode::PerformerSong, twoSongs(), "MD", true).text,
              "1. Adams: Morning  2. Baker: Night Train\n");
}

// Performers of equal time come in the reverse of the statement's order.
TEST(CoverText, TimeOrderPutsEqualTimesInTheReverseOfTheStatementsOrder) {
    const std::vector<CoverRow> rows = {{"Adams", "", 100, ""},
                                        {"Baker", "", 200, ""},
                                        {"Carter", "", 100, ""},
                                        {"Dale", "", 100, ""}};
    EXPECT_EQ(composeCoverText(CoverMode::Performer, rows, "MD", true).text,
              "Baker / Dale / Carter / Adams \n");
}

TEST(CoverText, TimesLeaveOutTheHours) {
    EXPECT_EQ(assembly::coverTimeText(205), "3:25");
    EXPECT_EQ(assembly::coverTimeText(3725), "2:05");
    EXPECT_EQ(assembly::coverTimeText(0), "0:00");
    const ComposedCover cover =
        composeCoverText(CoverMode::PerformerSong, {{"Long", "Suite", 3725, "1"}}, "CD-ROM", false);
    EXPECT_EQ(cover.text, "1.\tLong   Suite  [2:05]\n");
}

TEST(CoverText, BoldStartsFollowTheTrackNumbersLength) {
    const ComposedCover cover = composeCoverText(
        CoverMode::PerformerSong, {{"Ann", "A", 1, "9"}, {"Bo", "B", 1, "10"}}, "MD", false);
    EXPECT_EQ(cover.text, "9. Ann: A  10. Bo: B\n");
    EXPECT_EQ(cover.bold, (QVector<BoldRange>{{3, 5}, {15, 4}}));
    EXPECT_EQ(cover.text.mid(15, 4), "Bo: ");
}

TEST(CoverText, AfterThreeHundredEntriesTheTextGoesOnWithoutBold) {
    std::vector<CoverRow> rows;
    for (int i = 1; i <= 302; ++i) {
        rows.push_back({QString("P%1").arg(i), "T", 60, QString::number(i)});
    }
    const ComposedCover cover = composeCoverText(CoverMode::PerformerSong, rows, "MD", false);
    ASSERT_EQ(cover.bold.size(), 300);
    EXPECT_EQ(cover.text.mid(cover.bold.last().start, cover.bold.last().length), "P300: ");
    EXPECT_TRUE(cover.text.endsWith("  302. P302: T\n"));
}

class CoverData : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("c.mdb");
        testsupport::createCompilationDatabase(path);
        // Performers sort by their sort names: "Zed" (sort "Abel") before "Adams".
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length,
                                     CoverMemo)
            VALUES (7, 'Mix', 4, 956, 'MD', 74, 'typed by hand'), (8, 'Empty', 0, 0, 'MD', 74, NULL);
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, ArtistSort,
                                          Track_Title, Album_Title, Length)
            VALUES (7, 3, 'Adams', 'Adams', 'Evening', 'Gold', 100),
                   (7, 1, 'Adams', 'Adams', 'Morning', 'Gold', 165),
                   (7, 2, 'Zed', 'Abel', 'Night', 'Silver', 300),
                   (7, 4, NULL, NULL, NULL, 'Silver', NULL);
        )sql");
        database = engine::Workspace::defaultWorkspace().openDatabase(path);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    testsupport::TempDir dir;
    QString path;
    engine::Database database;
};

TEST_F(CoverData, TheStatementsAreTheEditorsOwn) {
    EXPECT_EQ(assembly::coverStatement(CoverMode::Performer, 7),
              "SELECT DISTINCTROW CompilationTrack.CompilationID_F1, CompilationTrack.ArtistSort, "
              "                   CompilationTrack.Track_Artist_Name,                    "
              "SUM(CompilationTrack.Length) as LengthSum               FROM Compilation LEFT "
              "JOIN CompilationTrack ON                    Compilation.CompilationID_P = "
              "CompilationTrack.CompilationID_F1              WHERE "
              "CompilationTrack.CompilationID_F1 = 7          GROUP BY "
              "CompilationTrack.CompilationID_F1,                    CompilationTrack.ArtistSort, "
              "CompilationTrack.Track_Artist_Name ");
    EXPECT_TRUE(assembly::coverStatement(CoverMode::PerformerAlbum, 12)
                    .endsWith("CompilationTrack.Track_Artist_Name,                    "
                              "CompilationTrack.Album_Title "));
    EXPECT_TRUE(assembly::coverStatement(CoverMode::PerformerSong, 12)
                    .contains(" CompilationTrack.TrackNo, CompilationTrack.Track_Artist_Name, "
                              "                   CompilationTrack.Track_Title, "
                              "CompilationTrack.Length "));
}

TEST_F(CoverData, GroupsFollowSortNamesAndNullsReadAsEmpty) {
    const ComposedCover performers =
        retrieveCoverData(database, 7, CoverMode::Performer, "MD", false);
    EXPECT_EQ(performers.text, " / Zed / Adams \n");
    const ComposedCover byTime = retrieveCoverData(database, 7, CoverMode::Performer, "MD", true);
    EXPECT_EQ(byTime.text, "Zed / Adams /  \n");
    const ComposedCover songs =
        retrieveCoverData(database, 7, CoverMode::PerformerSong, "MD", true);
    EXPECT_EQ(songs.text, "1. Adams: Morning  2. Zed: Night  3. Adams: Evening  4. : \n");
    EXPECT_EQ(songs.bold.last(), (BoldRange{56, 2}));
}

TEST_F(CoverData, ComposingStoresThePlainTextAndReplacesTheLastOne) {
    retrieveCoverData(database, 7, CoverMode::PerformerAlbum, "MD", false);
    retrieveCoverData(database, 7, CoverMode::PerformerAlbum, "MD", false);
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT CoverMemo FROM Compilation WHERE Name='Mix'"),
              ": Silver / Zed: Silver / Adams: Gold \n");
    EXPECT_EQ(retrieveCoverData(database, 8, CoverMode::Performer, "MD", false).text, " \n");
    EXPECT_EQ(testsupport::errorNumber(
                  [&] { retrieveCoverData(database, 99, CoverMode::Performer, "MD", false); }),
              3021);
}

}  // namespace

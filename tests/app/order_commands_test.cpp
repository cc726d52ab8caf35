// mixorama-cli's filter and sort options of add-tracks, move-track and renumber as a user
// scripts them.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/album_cli_fixture.h"
#include "support/compilation_invariants.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

using testsupport::cli;
using testsupport::ProgramRun;

// A row of TempSource as `tempsource --print` shows it.
struct SourceRow {
    QString artistSort;
    QString title;
    int length = 0;
};

class OrderCommands : public AlbumCliTest {
  protected:
    void SetUp() override {
        makeDatabase(
            "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('Road Trip', 'MD', 74)");
    }
    ProgramRun addTracks(const QStringList& options) {
        return cli(QStringList{"add-tracks", path, "Road Trip", albumPath()} + options);
    }
    QStringList trackColumn(const QString& column) {
        return sql("SELECT " + column + " FROM CompilationTrack ORDER BY TrackNo");
    }
    // The source rows, read from a database of their own so that the one under test is untouched.
    std::vector<SourceRow> sourceRows() {
        const QString other = dir.file("source.mdb");
        EXPECT_EQ(cli({"new", other}).exitCode, 0);
        const ProgramRun printed = cli({"tempsource", other, albumPath(), "--print"});
        EXPECT_EQ(printed.exitCode, 0) << printed.err.toStdString();
        QStringList lines = printed.out.split('\n', Qt::SkipEmptyParts);
        while (!lines.isEmpty() && !lines.first().startsWith("ArtistSort\t")) {
            lines.removeFirst();
        }
        EXPECT_FALSE(lines.isEmpty());
        const QStringList header = lines.isEmpty() ? QStringList() : lines.takeFirst().split('\t');
        std::vector<SourceRow> rows;
        for (const QString& line : lines) {
            const QStringList cells = line.split('\t');
            rows.push_back({cells.value(int(header.indexOf("ArtistSort"))),
                            cells.value(int(header.indexOf("TitleTrack"))),
                            cells.value(int(header.indexOf("Length"))).toInt()});
        }
        return rows;
    }
};

QStringList sortedDescending(std::vector<int> lengths) {
    std::sort(lengths.begin(), lengths.end(), std::greater<>());
    QStringList texts;
    for (int length : lengths) {
        texts << QString::number(length);
    }
    return texts;
}

TEST_F(OrderCommands, FilterOfTwoConditionsAddsThePassingRowsInTheSortOrder) {
    std::vector<int> lengths;
    QStringList titles;
    const std::vector<SourceRow> all = sourceRows();
    for (const SourceRow& row : all) {
        if (row.artistSort.startsWith('a', Qt::CaseInsensitive) && row.length >= 180) {
            lengths.push_back(row.length);
            titles << row.title;
        }
    }
    ASSERT_GT(lengths.size(), 2u);
    ASSERT_LT(lengths.size(), all.size());

    const ProgramRun added = addTracks({"--filter", "Track Performer", "starts", "a", "and", "Time",
                                        ">=", "000300", "--sort", "time", "DESCENDING"});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    EXPECT_TRUE(added.out.contains(QString::number(lengths.size()) + " track(s) added\n"));
    EXPECT_EQ(trackColumn("Length"), sortedDescending(lengths));
    QStringList stored = trackColumn("Track_Title");
    stored.sort();
    titles.sort();
    EXPECT_EQ(stored, titles);
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(OrderCommands, SortLevelsOrderInTurnAndWithoutThemTheDefaultOrderHolds) {
    ASSERT_EQ(addTracks({"--sort", "Album Title", "Descending", "--sort", "Index", "Descending",
                         "--first", "4"})
                  .exitCode,
              0);
    const QStringList albumsSorted =
        sql("SELECT Album_Title FROM CompilationTrack ORDER BY Album_Title DESC");
    EXPECT_EQ(trackColumn("Album_Title"), albumsSorted);
    const QStringList indexes = trackColumn("[Index]");
    ASSERT_EQ(indexes.size(), 4);
    EXPECT_GT(indexes[0].toInt(), indexes[1].toInt()) << "the second level orders one album";

    sql("DELETE FROM CompilationTrack");
    ASSERT_EQ(addTracks({"--first", "3"}).exitCode, 0);
    EXPECT_EQ(trackColumn("[Index]"), QStringList({"1", "2", "3"}));
}

TEST_F(OrderCommands, FailingFilterPrintsTheDialogsMessageAndAddsNothing) {
    const ProgramRun badTime =
        addTracks({"--filter", "Track Title", "Contains", "x", "Or", "Time", "<", "3 min"});
    EXPECT_EQ(badTime.exitCode, 1);
    EXPECT_EQ(badTime.err, "Second filter text must be a valid time (e.g. 00:49:07).\n");
    // A word other than And and Or, an empty one too, is the dialog's concatenation failure.
    for (const char* word : {"Xor", ""}) {
        const ProgramRun joined =
            addTracks({"--filter", "Track Title", "Contains", "x", word, "Live", "=", "yes"});
        EXPECT_EQ(joined.exitCode, 1);
        EXPECT_EQ(joined.err,
                  "First and second filter definitions are not properly concatenated.\n");
    }
    const ProgramRun unknown = addTracks({"--filter", "Colour", "=", "red"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.err, "First filter definition is incomplete.\n");
    const ProgramRun badSort = addTracks({"--sort", "Time", "Upwards"});
    EXPECT_EQ(badSort.exitCode, 1);
    EXPECT_TRUE(
        badSort.err.startsWith("\"Time Upwards\" is no sort order: the variables are "
                               "Track Performer, Track Title, "))
        << badSort.err.toStdString();
    EXPECT_TRUE(trackColumn("TrackNo").isEmpty());
}

TEST_F(OrderCommands, ShowClausePrintsTheComposedClausesAndAddsNothing) {
    const ProgramRun shown =
        addTracks({"--filter", "Time", ">=", "014907", "Or", "Live", "=", "Nein", "--show-clause"});
    ASSERT_EQ(shown.exitCode, 0) << shown.err.toStdString();
    EXPECT_EQ(shown.out,
              "WHERE Length >= 6547 Or Live = False\n"
              "ORDER BY ArtistSort, AlbumArtistSort, TitleAlbum, Item, Index\n");
    const ProgramRun sorted = addTracks({"--sort", "Rating", "Ascending", "--sort",
                                         "Track Performer", "Descending", "--show-clause"});
    EXPECT_EQ(sorted.out, "\nORDER BY RatingTrack ASC, ArtistSort DESC\n");
    EXPECT_TRUE(trackColumn("TrackNo").isEmpty());
}

TEST_F(OrderCommands, FilterAndSortOptionsAreCheckedBeforeAnythingChanges) {
    const QList<QStringList> malformed{
        {"--filter", "Time", ">="},
        {"--filter", "Time", ">=", "1", "And", "Live", "="},
        {"--sort", "Time"},
        {"--sort", "Time", "Ascending", "--sort", "Index", "Ascending", "--sort", "Item",
         "Ascending", "--sort", "Live", "Ascending"},
    };
    for (const QStringList& options : malformed) {
        EXPECT_EQ(addTracks(options).exitCode, 2) << options.join(' ').toStdString();
    }
    const ProgramRun both = addTracks({"--filter", "Time", ">", "1", "--where", "WHERE Live"});
    EXPECT_EQ(both.exitCode, 2);
    EXPECT_TRUE(both.err.startsWith("--filter and --where cannot be combined"));
    const ProgramRun sortAndOrder =
        addTracks({"--order", "ORDER BY Item", "--sort", "Item", "Ascending"});
    EXPECT_EQ(sortAndOrder.exitCode, 2);
    EXPECT_TRUE(sortAndOrder.err.startsWith("--sort and --order cannot be combined"));
    EXPECT_TRUE(trackColumn("TrackNo").isEmpty());
}

TEST_F(OrderCommands, MoveTrackShiftsTheTracksBetweenAndRefusesNumbersThatAreNotThere) {
    ASSERT_EQ(addTracks({"--first", "5"}).exitCode, 0);
    const QStringList t = trackColumn("Track_Title");
    const ProgramRun down = cli({"move-track", path, "Road Trip", "1", "4"});
    ASSERT_EQ(down.exitCode, 0) << down.err.toStdString();
    EXPECT_EQ(down.out, "Track 1 is now track 4\n");
    EXPECT_EQ(trackColumn("Track_Title"), QStringList({t[1], t[2], t[3], t[0], t[4]}));
    ASSERT_EQ(cli({"move-track", path, "Road Trip", "5", "2"}).exitCode, 0);
    EXPECT_EQ(trackColumn("Track_Title"), QStringList({t[1], t[4], t[2], t[3], t[0]}));

    const QStringList before = trackColumn("Track_Title");
    for (const QStringList& numbers : QList<QStringList>{{"0", "2"}, {"2", "6"}, {"x", "1"}}) {
        const ProgramRun refused = cli(QStringList{"move-track", path, "Road Trip"} + numbers);
        EXPECT_EQ(refused.exitCode, 1);
        const QString bad = numbers[0] == "2" ? numbers[1] : numbers[0];
        EXPECT_EQ(refused.err,
                  "\"" + bad + "\" is no track number of \"Road Trip\": its tracks are 1 to 5.\n");
    }
    EXPECT_EQ(trackColumn("Track_Title"), before);

    // An earlier version's numbers 2 to 6: the numbers given are those shown, the tracks end
    // up numbered 1 to 5.
    testsupport::execRaw(path, "UPDATE CompilationTrack SET TrackNo = TrackNo + 1");
    EXPECT_EQ(cli({"move-track", path, "Road Trip", "1", "2"}).err,
              "\"1\" is no track number of \"Road Trip\": its 5 tracks are numbered 2 to 6, "
              "not 1 to 5.\n");
    ASSERT_EQ(cli({"move-track", path, "Road Trip", "6", "2"}).exitCode, 0);
    EXPECT_EQ(trackColumn("Track_Title"),
              QStringList({before[4], before[0], before[1], before[2], before[3]}));
    EXPECT_EQ(trackColumn("TrackNo"), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(cli({"move-track", path, "Road Trip", "1"}).exitCode, 2);
    EXPECT_EQ(cli({"move-track", path, "Nowhere", "1", "2"}).err,
              "There is no compilation named \"Nowhere\".\n");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(OrderCommands, RenumberByTimeDescendingAndBackToTheDefaultOrder) {
    ASSERT_EQ(addTracks({"--first", "6"}).exitCode, 0);
    const QStringList added = trackColumn("Track_Title");
    std::vector<int> lengths;
    for (const QString& length : trackColumn("Length")) {
        lengths.push_back(length.toInt());
    }
    const ProgramRun renumbered =
        cli({"renumber", path, "Road Trip", "--sort", "Time", "Descending"});
    ASSERT_EQ(renumbered.exitCode, 0) << renumbered.err.toStdString();
    EXPECT_EQ(renumbered.out, "6 track(s) renumbered\n");
    EXPECT_EQ(trackColumn("Length"), sortedDescending(lengths));
    EXPECT_EQ(trackColumn("TrackNo"), QStringList({"1", "2", "3", "4", "5", "6"}));

    ASSERT_EQ(cli({"renumber", path, "Road Trip"}).exitCode, 0);
    EXPECT_EQ(trackColumn("Track_Title"), added) << "the tracks were added in the default order";
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(OrderCommands, RenumberRefusesKeysTheCompilationLacksAndMalformedArguments) {
    ASSERT_EQ(addTracks({"--first", "3"}).exitCode, 0);
    const QStringList before = trackColumn("Track_Title");
    const ProgramRun rating = cli({"renumber", path, "Road Trip", "--sort", "Rating", "Ascending"});
    EXPECT_EQ(rating.exitCode, 1);
    EXPECT_TRUE(rating.err.startsWith("\"Rating Ascending\" is no sort order"));
    EXPECT_FALSE(rating.err.contains("Rating,")) << "the compilation's list has no rating";
    EXPECT_EQ(cli({"renumber", path, "Road Trip", "--sort", "Time"}).exitCode, 2);
    EXPECT_EQ(cli({"renumber", path, "Road Trip", "Time", "Ascending"}).exitCode, 2);
    EXPECT_EQ(cli({"renumber", path}).exitCode, 2);
    const ProgramRun unknown = cli({"renumber", path, "Nowhere"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.err, "There is no compilation named \"Nowhere\".\n");
    EXPECT_EQ(trackColumn("Track_Title"), before);
}

}  // namespace

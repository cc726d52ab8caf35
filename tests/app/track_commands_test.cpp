// mixorama-cli add-tracks, remove-track and tracks as a user scripts them.
#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include "app/album_cli_fixture.h"
#include "support/compilation_invariants.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

using testsupport::cli;
using testsupport::ProgramRun;

const QString kTempSourceCount =
    QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'");

class TrackCommands : public AlbumCliTest {
  protected:
    void SetUp() override {
        makeDatabase(
            "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('Road Trip', 'MD', 74), "
            "('Short One', 'MD', 1)");
    }
    ProgramRun addTracks(const QString& name, const QStringList& options) {
        return cli(QStringList{"add-tracks", path, name, albumPath()} + options);
    }
    QStringList titles(const QString& name) {
        return sql(
            "SELECT Track_Title FROM CompilationTrack INNER JOIN Compilation ON "
            "CompilationID_P = CompilationID_F1 WHERE Name = '" +
            name + "' ORDER BY TrackNo");
    }
};

TEST_F(TrackCommands, AddsTheFirstRowsOfTheChosenOrderAndTellsTheTime) {
    const ProgramRun added = addTracks(
        "road trip",
        {"--order", "ORDER BY TitleTrack DESC", "--where", "WHERE Live = False", "--first", "4"});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    const QStringList stored = titles("Road Trip");
    ASSERT_EQ(stored.size(), 4);
    const QStringList expected =
        sql("SELECT Track_Title FROM CompilationTrack ORDER BY Track_Title DESC, TrackNo");
    EXPECT_EQ(stored, expected) << "the tracks keep the order of the source rows";
    EXPECT_EQ(sql("SELECT count(*) FROM CompilationTrack WHERE Live <> 0"), QStringList({"0"}));
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
    const QString total = sql("SELECT SumTime FROM Compilation WHERE Name = 'Road Trip'").value(0);
    const int seconds = total.toInt();
    const QString time = QStringLiteral("%1:%2:%3")
                             .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
                             .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                             .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    ASSERT_LE(seconds, 74 * 60 - 3 * 3);
    EXPECT_TRUE(added.out.endsWith("4 track(s) added\nTotal time " + time + " (4 tracks): fits\n"))
        << added.out.toStdString();
    EXPECT_FALSE(added.out.contains("Already recorded"));
    EXPECT_EQ(testsupport::queryRaw(path, kTempSourceCount), "0")
        << "TempSource is the connection's, never the file's";
}

TEST_F(TrackCommands, RecordedTracksAreListedAndSkippedOnRequest) {
    ASSERT_EQ(addTracks("Road Trip", {"--first", "2"}).exitCode, 0);
    const QStringList first = titles("Road Trip");

    const ProgramRun skipped = addTracks("Short One", {"--first", "2", "--skip-recorded"});
    ASSERT_EQ(skipped.exitCode, 0) << skipped.err.toStdString();
    EXPECT_TRUE(skipped.out.contains("Already recorded: "));
    EXPECT_TRUE(skipped.out.contains("\n  Road Trip, track 1\n  not added\n"))
        << skipped.out.toStdString();
    EXPECT_TRUE(skipped.out.contains("\n  Road Trip, track 2\n  not added\n"));
    EXPECT_TRUE(skipped.out.contains("0 track(s) added\nTotal time 00:00:00 (0 tracks): fits"));
    EXPECT_TRUE(titles("Short One").isEmpty());

    const ProgramRun again = addTracks("Short One", {"--first", "2"});
    ASSERT_EQ(again.exitCode, 0);
    EXPECT_TRUE(again.out.contains("\n  Road Trip, track 2\n"));
    EXPECT_FALSE(again.out.contains("not added"));
    EXPECT_EQ(titles("Short One"), first);
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

// Earlier versions left TempSource in the file when killed, rows of another album database. No
// command reads it: while another writer holds the file it cannot be dropped, and tempsource
// lists the album's rows; add-tracks adds none of the old rows and drops them once it may.
TEST_F(TrackCommands, ATempSourceLeftInTheFileIsNeverRead) {
    testsupport::execRaw(path, R"sql(
        CREATE TABLE TempSource (ArtistSort TEXT, PerformerTrack TEXT, TitleTrack TEXT,
            Item INTEGER, "Index" INTEGER, Length INTEGER, Version TEXT, Live INTEGER,
            RecordedStart TEXT, TitleAlbum TEXT, PerformerAlbum TEXT, AlbumArtistSort TEXT,
            TrackTrackID INTEGER, TrackAlbumID INTEGER, RatingTrack TEXT, Location TEXT,
            ArtistID INTEGER, TrackID INTEGER, MyRecorded INTEGER);
        INSERT INTO TempSource (ArtistSort, PerformerTrack, TitleTrack, Length, TrackTrackID)
            VALUES ('Old', 'Old', 'Stale 1', 60, 901), ('Old', 'Old', 'Stale 2', 60, 902),
                   ('Old', 'Old', 'Stale 3', 60, 903);
    )sql");
    {
        const testsupport::WriteLock otherWriter(path);
        const ProgramRun listed = cli({"tempsource", path, albumPath(), "--print"});
        ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
        EXPECT_FALSE(listed.out.contains("Stale")) << listed.out.toStdString();
        EXPECT_GT(listed.out.count('\n'), 3);
        const ProgramRun refused = addTracks("Road Trip", {});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_TRUE(refused.err.contains("currently locked")) << refused.err.toStdString();
    }
    EXPECT_EQ(testsupport::queryRaw(path, kTempSourceCount), "1");
    EXPECT_TRUE(titles("Road Trip").isEmpty());

    const ProgramRun added = addTracks("Road Trip", {"--first", "3"});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    const QStringList stored = titles("Road Trip");
    EXPECT_EQ(stored.size(), 3);
    EXPECT_TRUE(stored.filter("Stale").isEmpty()) << stored.join(", ").toStdString();
    EXPECT_EQ(testsupport::queryRaw(path, kTempSourceCount), "0");
}

TEST_F(TrackCommands, TellsByHowMuchTheTracksExceedTheMedium) {
    const ProgramRun added = addTracks("Short One", {"--first", "3"});
    ASSERT_EQ(added.exitCode, 0);
    // One minute holds 60 seconds less 3 for each of the two gaps.
    const int over =
        sql("SELECT SumTime FROM Compilation WHERE Name = 'Short One'")[0].toInt() - (60 - 2 * 3);
    ASSERT_GT(over, 60);
    const QString expected = QStringLiteral("exceeds the medium by %1:%2")
                                 .arg(over / 60)
                                 .arg(over % 60, 2, 10, QLatin1Char('0'));
    EXPECT_TRUE(added.out.contains("(3 tracks): " + expected + "\n")) << added.out.toStdString();
    const ProgramRun listed = cli({"tracks", path, "Short One"});
    EXPECT_TRUE(listed.out.contains("\nTracks: 3\n"));
    EXPECT_TRUE(listed.out.contains("\nCapacity: 00:00:54\n" + expected + "\n"))
        << listed.out.toStdString();
}

TEST_F(TrackCommands, TracksListsThePickersColumns) {
    sql("INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, "
        "Track_Title, Length, RecordedStart, Album_Title, Live, Album_Artist_Name, Item, "
        "[Index]) VALUES (1, 2, 'Who, The', 'Baba O''Riley', 308, 1971, 'Who''s Next', True, "
        "'The Who', 1, 1), (1, 1, 'Kinks, The', 'Lola', 241, Null, 'Lola', False, 'The Kinks', "
        "1, 7)");
    sql("UPDATE Compilation SET SumTrack = 2, SumTime = 549 WHERE CompilationID_P = 1");
    const ProgramRun listed = cli({"tracks", path, "Road Trip"});
    ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
    EXPECT_EQ(listed.out.split('\n'),
              QStringList({"Track\tTrack Performer\tTrack Title\tTime\tRecorded\tAlbum "
                           "Title\tLive\tVersion\tAlbum Performer\tItem\tIndex",
                           "1\tKinks, The\tLola\t00:04:01\t\tLola\tNo\t\tThe Kinks\t1\t7",
                           "2\tWho, The\tBaba O'Riley\t00:05:08\t1971\tWho's "
                           "Next\tYes\t\tThe Who\t1\t1",
                           "Tracks: 2", "Total time: 00:09:09", "Capacity: 01:13:57", "fits", ""}));
}

TEST_F(TrackCommands, RemoveTrackRenumbersAndRefusesNumbersThatAreNotThere) {
    ASSERT_EQ(addTracks("Road Trip", {"--first", "3"}).exitCode, 0);
    const QStringList before = titles("Road Trip");
    for (const QString bad : {"0", "4", "two", "-1"}) {
        const ProgramRun refused = cli({"remove-track", path, "Road Trip", bad});
        EXPECT_EQ(refused.exitCode, 1) << bad.toStdString();
        EXPECT_EQ(refused.err, "\"" + bad +
                                   "\" is no track number of \"Road Trip\": its tracks "
                                   "are 1 to 3.\n");
    }
    const ProgramRun empty = cli({"remove-track", path, "Short One", "1"});
    EXPECT_EQ(empty.err, "\"1\" is no track number of \"Short One\": it has no tracks.\n");
    EXPECT_EQ(titles("Road Trip"), before);

    const ProgramRun removed = cli({"remove-track", path, "Road Trip", "2"});
    ASSERT_EQ(removed.exitCode, 0) << removed.err.toStdString();
    EXPECT_TRUE(removed.out.startsWith("Track 2 removed; total time "));
    EXPECT_EQ(titles("Road Trip"), QStringList({before[0], before[2]}));
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(TrackCommands, UnknownCompilationsAndBadArgumentsAreRefusedBeforeAnythingChanges) {
    const QString unknown = "There is no compilation named \"Nowhere\".\n";
    EXPECT_EQ(addTracks("Nowhere", {}).err, unknown);
    EXPECT_EQ(cli({"remove-track", path, "Nowhere", "1"}).err, unknown);
    const ProgramRun listed = cli({"tracks", path, "Nowhere"});
    EXPECT_EQ(listed.exitCode, 1);
    EXPECT_EQ(listed.err, unknown);
    for (const QStringList& options :
         {QStringList{"--first"}, {"--first", "x"}, {"--first", "-2"}, {"--color"}}) {
        EXPECT_EQ(addTracks("Road Trip", options).exitCode, 2) << options.join(' ').toStdString();
    }
    EXPECT_EQ(cli({"remove-track", path, "Road Trip"}).exitCode, 2);

    const ProgramRun badWhere = addTracks("Road Trip", {"--where", "WHERE Bogus = 1"});
    EXPECT_EQ(badWhere.exitCode, 1);
    EXPECT_TRUE(badWhere.err.startsWith("Error 3061: ")) << badWhere.err.toStdString();
    EXPECT_EQ(testsupport::queryRaw(path, kTempSourceCount), "0");
    EXPECT_EQ(sql("SELECT count(*) FROM CompilationTrack"), QStringList({"0"}));
}

}  // namespace

namespace {

// The sqlite3 program, as a user would run it on the file.
testsupport::ProgramRun sqlite3Shell(const QString& file, const QString& sql) {
    QProcess process;
    process.start(QStringLiteral("sqlite3"), {file, sql});
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST_F(TrackCommands, TheSqliteShellReadsButCannotWriteTextAndCheckFindsWhatItBreaks) {
    ASSERT_EQ(addTracks("Road Trip", {"--first", "3"}).exitCode, 0);
    const ProgramRun check = cli({"check", path});
    EXPECT_EQ(check.exitCode, 0) << check.out.toStdString();
    EXPECT_EQ(check.out, "ok\n");

    EXPECT_EQ(sqlite3Shell(path, "SELECT count(*) FROM CompilationTrack").out, "3\n");
    const ProgramRun written =
        sqlite3Shell(path,
                     "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title) "
                     "VALUES (1, 4, 'Sneaked in')");
    EXPECT_NE(written.exitCode, 0);
    EXPECT_TRUE(written.err.contains("no such collation sequence: MIXORAMA_TEXT"))
        << written.err.toStdString();
    EXPECT_EQ(sqlite3Shell(path, "SELECT count(*) FROM CompilationTrack").out, "3\n");

    // A number column it can write: the check names what that broke, compact mends it.
    ASSERT_EQ(
        sqlite3Shell(path, "UPDATE Compilation SET SumTime = 1 WHERE CompilationID_P = 1").exitCode,
        0);
    const ProgramRun broken = cli({"check", path});
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_TRUE(
        broken.out.startsWith("Compilation 'Road Trip': SumTime is 1, but its tracks last "))
        << broken.out.toStdString();
    const ProgramRun compacted = cli({"compact", path});
    EXPECT_TRUE(compacted.out.contains("\nCompilation 'Road Trip': SumTime set from 1 to "))
        << compacted.out.toStdString();
    EXPECT_EQ(cli({"check", path}).out, "ok\n");
}

}  // namespace

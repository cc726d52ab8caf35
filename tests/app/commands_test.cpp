// Each command of mixorama-cli reaches the logic and prints its answer with its exit status (the
// rules are the logic's tests').
#include <QFileInfo>
#include <QImage>
#include <cerrno>
#include <cstring>

#include "app/program_run.h"
#include "assembly/compilation_editor.h"
#include "assembly/cover_composer.h"
#include "query/filter_clause.h"
#include "query/sort_clause.h"
#include "query/time_text.h"
#include "reports/cover_source.h"
#include "reports/list_reports.h"
#include "shell/database_upgrade.h"
#include "shell/medium_choices.h"
#include "support/old_compilations.h"

namespace {

using testsupport::cli;
using testsupport::ProgramRun;
using testsupport::queryRaw;

// A call and what it prints: its exit status, out and err holding these texts.
struct Call {
    QStringList args;
    int exitCode = 0;
    QString out;
    QString err;
};

// "Road Trip" (1) with three tracks, "Short" (2, one minute) with none, and an album database.
class CommandLine : public ::testing::Test {
  protected:
    static Call prints(const QStringList& args, const QString& out) { return {args, 0, out, {}}; }
    static Call refuses(const QStringList& args, const QString& err) { return {args, 1, {}, err}; }
    static QString errorNumber(int number) { return QStringLiteral("Error %1: ").arg(number); }
    static void SetUpTestSuite() {
        ASSERT_EQ(cli({"make-albums", album(), "--albums", "20", "--seed", "3"}).exitCode, 0);
    }
    static QString album() {
        static const testsupport::TempDir folder;
        return folder.file("albums.mdb");
    }
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::addSample(path, {.name = "Road Trip",
                                      .tracks = {{.title = "Morning", .seconds = 180},
                                                 {.title = "Noon", .seconds = 391},
                                                 {.title = "Night", .seconds = 200}}});
        testsupport::addSample(path, {.name = "Short", .minutes = 1});
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    void expectCalls(const std::vector<Call>& calls) {
        for (const Call& call : calls) {
            const ProgramRun run = cli(call.args);
            SCOPED_TRACE(call.args.join(' ').toStdString() + ": " +
                         (run.out + run.err).toStdString());
            EXPECT_EQ(run.exitCode, call.exitCode);
            EXPECT_TRUE(run.out.contains(call.out));
            EXPECT_TRUE(run.err.contains(call.err));
        }
    }
    QStringList addTracks(const QString& name, const QStringList& options) {
        return QStringList{"add-tracks", path, name, album()} + options;
    }
    // A field of a compilation's tracks in their running order (or another), joined by '|'.
    QString tracks(const QString& field, int id = 1, const QString& order = "TrackNo") {
        return queryRaw(path,
                        QStringLiteral("SELECT group_concat(%1, '|') FROM (SELECT %1 FROM "
                                       "CompilationTrack WHERE CompilationID_F1 = %2 ORDER BY %3)")
                            .arg(field)
                            .arg(id)
                            .arg(order));
    }

    testsupport::TempDir dir;
    const QString path = dir.file("c.mdb");
    const QString pdf = dir.file("out.pdf");
};

TEST_F(CommandLine, EveryCommandPrintsTheLogicsAnswerWithItsExitStatus) {
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    const assembly::CoverMode p = assembly::CoverMode::Performer;
    const QString cover =
        assembly::composeCoverText(p, assembly::readCoverRows(database, p, 1), "MD", true).text;
    database.close();
    const QString tooLong(assembly::kNameLength + 1, 'x');  // one more than the field holds
    testsupport::execRaw(path, "UPDATE Compilation SET SumTime = 1");  // for check to find
    ASSERT_TRUE(shell::storeMdMode(path, 1, medium::MdMode::Lp4));     // as the picker keeps it
    expectCalls({
        {{"frobnicate"}, 2, {}, {}},  // arguments a command does not take
        {addTracks("Road Trip", {"--first", "-1"}), 2, {}, {}},
        {{"check", path}, 1, shell::checkDatabaseFile(path).join('\n') + '\n', {}},
        prints({"compact", path}, "Database successfully repaired and compacted.\n"),
        prints({"check", path}, "ok\n"),
        prints({"sql", path, "SELECT Name FROM Compilation ORDER BY Name"},
               "Name\nRoad Trip\nShort\n"),
        refuses({"new", path}, errorNumber(engine::jet::kDatabaseExists)),
        prints({"add-compilation", path, "New", "--format", "MD", "--length", "80",
                "--manufacturer", "Acme"},
               "Compilation 3 stored.\n"),
        refuses({"add-compilation", path, tooLong, "--format", "MD", "--length", "74"},
                assembly::updateFailureMessage(assembly::UpdateResult::NameTooLong) + '\n'),
        prints({"cover-text", path, "Road Trip", "p", "--by-time"}, cover),
        refuses({"cover-text", path, "Short", "p"}, reports::kNoTracksOnCompilation + '\n'),
        prints({"cover", path, "Road Trip", pdf}, ""),
        prints(
            {"cover", path, "Road Trip", pdf, "--scale-y", "99", "--offset-x", "-1.5", "--outline"},
            ""),
        {{"cover", path, "Road Trip", pdf, "--scale-x", "5"}, 2, {}, "takes a percentage from 50"},
        prints({"calibration-page", pdf}, ""),
        prints({"report", path, "tracks-all", pdf, "--paper", "letter"},
               reports::listReportCaption(reports::ListReport::TracksAll) +
                   ": 1 page(s) written to " + pdf),
        prints({"tracks", path, "Road Trip"}, "\n1\tPerformer\tMorning\t"),
        prints({"tracks", path, "Road Trip"}, "\nMD SP: 01:01:08 left\n"),  // 180, 392, 200 s
        prints({"tracks", path, "Road Trip"}, "\nRecorded in LP4: 04:43:04 left\n"),  // 8 s blocks
        prints({"tracks", path, "Short"}, "\nMD SP: 00:01:00 left\n"),  // no tracks at all
        refuses({"remove-track", path, "Road Trip", "4"}, ""),
        prints({"remove-track", path, "Road Trip", "1"},
               "Track 1 removed; total time " + query::formatTime(591) + " (2 tracks): fits\n"),
        prints({"renumber", path, "Road Trip", "--sort", "Time", "Ascending"},
               "2 track(s) renumbered\n"),
        {{"export", path, "Road Trip", dir.file("trip.m3u8")}, 0, {}, "None of the tracks has"},
        {{"export", path, "Road Trip", dir.file("trip.txt")}, 2, {}, {}},
    });
    EXPECT_EQ(tracks("Track_Title"), "Night|Noon");
    EXPECT_EQ(queryRaw(path, "SELECT CoverMemo FROM Compilation WHERE CompilationID_P = 1"), cover);
    EXPECT_EQ(queryRaw(path, "SELECT count(*) FROM LstManufacturer WHERE Manufacturer_P = 'Acme'"),
              "1");
}

// The captions of the filter and sort dialogs give their clauses, or the dialog's refusal.
TEST_F(CommandLine, AddTracksAddsTheFirstRowsOfTheChosenOrderAndTellsTheTime) {
    const QStringList chosen{"--where", "WHERE Live = False", "--order",
                             "ORDER BY TitleTrack DESC"};
    const ProgramRun added = cli(addTracks("short", chosen + QStringList{"--first", "3"}));
    EXPECT_EQ(tracks("Live", 2), "0|0|0");
    EXPECT_EQ(tracks("Track_Title", 2), tracks("Track_Title", 2, "Track_Title DESC, TrackNo"));
    const QString time = query::formatTime(
        queryRaw(path, "SELECT SumTime FROM Compilation WHERE CompilationID_P = 2").toInt());
    EXPECT_TRUE(added.out.contains("3 track(s) added\nTotal time " + time + " (3 tracks)"))
        << (added.out + added.err).toStdString();
    using query::buildFilterClause;
    const QString filter =
        buildFilterClause({{{"Time", ">=", "000300"}, {"Live", "=", "Nein"}}}, "Or").clause;
    const query::SortLevels levels{
        *query::sortLevelFromCaptions(query::SortCaller::Source, "Time", "Descending")};
    const QString order =
        query::sourceSortClause(query::composeSortClause(levels, query::SortCaller::Source));
    // A joining word other than And and Or is the filter's to refuse, not taken for a file name.
    const QString notJoined =
        buildFilterClause({{{"Track Title", "Contains", "x"}, {"Live", "=", "yes"}}}, "Xor")
            .message;
    expectCalls({
        prints(addTracks("Road Trip", chosen + QStringList{"--first", "1", "--skip-recorded"}),
               "Already recorded: "),
        prints({"tempsource", path, album(), "--print"}, ""),
        prints(addTracks("Road Trip", {"--filter", "Time", ">=", "000300", "Or", "Live", "=",
                                       "Nein", "--sort", "Time", "Descending", "--show-clause"}),
               filter + '\n' + order.trimmed() + '\n'),
        refuses(addTracks("Road Trip",
                          {"--filter", "Track Title", "Contains", "x", "Xor", "Live", "=", "yes"}),
                notJoined + '\n'),
    });
    EXPECT_EQ(tracks("TrackNo"), "1|2|3");
}

// Numbers an earlier version left (2 to 4): the numbers given are those shown; the tracks end
// up numbered 1 to 3. A number no track has is refused.
TEST_F(CommandLine, MoveTrackShiftsTheTracksBetweenAndRefusesNumbersThatAreNotThere) {
    testsupport::execRaw(path, "UPDATE CompilationTrack SET TrackNo = TrackNo + 1");
    expectCalls({prints({"move-track", path, "Road Trip", "4", "2"}, "Track 4 is now track 2\n"),
                 refuses({"move-track", path, "Road Trip", "1", "4"}, "")});
    EXPECT_EQ(tracks("Track_Title") + " " + tracks("TrackNo"), "Night|Morning|Noon 1|2|3");
}

// A file that reads without an error but not whole: refused unless a partial copy is asked for.
TEST_F(CommandLine, ConvertRefusesADamagedFileUnlessAPartialCopyIsAskedFor) {
    const QString old = dir.file("old.mdb");
    const QString copy = dir.file("new.mdb");
    const testsupport::OldCompilationRows rows =
        testsupport::sampleOldCompilations(jet4::Format::Jet4);
    testsupport::writeOldCompilationDatabase(old, rows);
    testsupport::zeroADataPageOfTheLargestTable(old, jet4::Format::Jet4);
    expectCalls({refuses({"convert", old, copy}, errorNumber(engine::jet::kDatabaseCorrupt)),
                 prints({"convert", old, copy, "--keep-partial"}, "Copied ")});
    EXPECT_LT(queryRaw(copy, "SELECT count(*) FROM CompilationTrack").toULongLong(),
              rows.tracks.size());
}

// /dev/full stands for a full disk; a device is written to, never replaced by a file.
TEST_F(CommandLine, AFullDiskIsNamedAsTheCause) {
    const ProgramRun run = cli({"cover", path, "Road Trip", "/dev/full"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.endsWith(QString::fromLocal8Bit(std::strerror(ENOSPC)) + '\n'))
        << run.err.toStdString();
    EXPECT_FALSE(QFileInfo("/dev/full").isFile());
}

// The one test that starts the window program: its screenshot mode pictures the windows.
TEST(Screenshots, EveryWindowIsPictured) {
    testsupport::TempDir dir;
    ASSERT_EQ(testsupport::run("mixorama", {"--screenshots", dir.path()}).exitCode, 0);
    for (const char* name : {"overview-no-database", "overview-database-open", "help"})
        EXPECT_GT(QImage(dir.file(QString::fromLatin1(name) + ".png")).width(), 200) << name;
}

// renumber --balance evens a cassette's sides in one step; a compilation of no cassette has none.
TEST_F(CommandLine, RenumberBalanceEvensACassettesSides) {
    testsupport::addSample(path, {.name = "Tape",
                                  .format = "Cassette",
                                  .minutes = 60,
                                  .tracks = {{.title = "A", .seconds = 900},
                                             {.title = "B", .seconds = 900},
                                             {.title = "C", .seconds = 300},
                                             {.title = "D", .seconds = 300}}});
    expectCalls({prints({"renumber", path, "Tape", "--balance"}, "turn the tape after track 2\n"),
                 refuses({"renumber", path, "Road Trip", "--balance"}, "Only a cassette")});
    EXPECT_EQ(tracks("Track_Title", 3), "A|C|B|D");
}

// A music folder's scan shows its progress on one line of a terminal, and nothing but its
// summary when the output goes elsewhere.
TEST_F(CommandLine, AMusicFolderScanShowsItsProgressOnlyOnATerminal) {
    QDir().mkpath(dir.file("music/Performer/Album"));
    QFile::copy(testsupport::sourcePath("tests/data/audio/sample.mp3"),
                dir.file("music/Performer/Album/01 - Song.mp3"));
    const QStringList scan{"tempsource", path, dir.file("music")};
    QProcess terminal;  // script gives the program a terminal of its own
    terminal.start(
        "script",
        {"-qc", testsupport::programPath("mixorama-cli") + ' ' + scan.join(' '), "/dev/null"});
    ASSERT_TRUE(terminal.waitForFinished(60000));
    EXPECT_TRUE(terminal.readAll().contains("\rReading the music folder: 1 music files found"));
    const ProgramRun piped = cli(scan + QStringList{"--music-cache", dir.file("scans")});
    EXPECT_EQ(piped.exitCode, 0);
    EXPECT_EQ(piped.err, "1 track in 1 album\n");
    EXPECT_EQ(QDir(dir.file("scans")).entryList(QDir::Files).size(), 1);  // the cache named
}

}  // namespace

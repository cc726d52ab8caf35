// The two programs as a user scripts them: mixorama-cli and mixorama --screenshots.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>

#include "app/program_run.h"
#include "support/databases.h"
#include "support/old_compilations.h"
#include "support/temp_dir.h"

namespace {

using testsupport::cli;
using testsupport::ProgramRun;
using testsupport::run;

class CommandLine : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("x.mdb");
        ASSERT_EQ(cli({"new", path}).exitCode, 0);
        ProgramRun insert =
            cli({"sql", path,
                 "INSERT INTO Compilation (Name, Format, C_Length, RecDate, SumTime) "
                 "VALUES ('Beat Club', 'MD', 74, #1/21/97#, 600)"});
        ASSERT_EQ(insert.exitCode, 0) << insert.err.toStdString();
        cli({"sql", path,
             "INSERT INTO Compilation (Name, Format, C_Length, RecDate) "
             "VALUES ('beatles ''66', 'CD-R', 80, #1/1/00#)"});
        cli({"sql", path,
             "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, "
             "Live, Length) VALUES (1, 1, 'Live [1966]', True, 170)"});
    }
    QStringList lines(const QString& statement) {
        const ProgramRun result = cli({"sql", path, statement});
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        return result.out.split('\n', Qt::SkipEmptyParts);
    }

    testsupport::TempDir dir;
    QString path;
};

TEST_F(CommandLine, NewRefusesAnExistingFileWithTheEnginesMessage) {
    const ProgramRun again = cli({"new", path});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_TRUE(again.err.contains("3204")) << again.err.toStdString();
    EXPECT_TRUE(again.err.contains("Database already exists."));
}

TEST_F(CommandLine, TheStandardStatementsRun) {
    const QStringList compilations = lines(
        "SELECT   Compilation.Name AS C_Name, Compilation.SumTrack AS C_SumTrack, "
        "         Compilation.SumTime AS C_SumTime, Compilation.Manufacturer AS Manufacturer, "
        "         Compilation.C_Length, Compilation.Format AS C_Format, Compilation.Box AS C_Box, "
        "Compilation.CompilationID_P, Compilation.CoverMemo as CoverMemo, Compilation.RecDate AS "
        "RecDate, Compilation.Notes AS C_Notes FROM     Compilation ORDER BY Compilation.Name");
    ASSERT_EQ(compilations.size(), 3);
    EXPECT_TRUE(compilations[0].startsWith("C_Name\tC_SumTrack\tC_SumTime"));
    EXPECT_TRUE(compilations[1].startsWith("Beat Club\t0\t600\t\t74\tMD\t\t1\t\t1997-01-21\t"));
    EXPECT_EQ(
        lines("SELECT Compilation.*, CompilationTrack.* FROM   Compilation LEFT JOIN "
              "CompilationTrack ON Compilation.CompilationID_P = "
              "CompilationTrack.CompilationID_F1 WHERE  CompilationTrack.CompilationID_F1 = 1 "
              "ORDER BY Compilation.Name, CompilationTrack.TrackNo ")
            .size(),
        2);
    EXPECT_EQ(lines("SELECT Compilation.CompilationID_P, Compilation.Name, "
                    "CompilationTrack.Album_Title FROM Compilation INNER JOIN CompilationTrack ON "
                    "Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 GROUP BY "
                    "Compilation.CompilationID_P, Compilation.Name, CompilationTrack.Album_Title "
                    "HAVING Compilation.CompilationID_P = 1")
                  .size(),
              2);
    EXPECT_EQ(lines("SELECT CompilationTrack.Track_Title, Compilation.Name FROM Compilation RIGHT "
                    "JOIN CompilationTrack ON Compilation.CompilationID_P = "
                    "CompilationTrack.CompilationID_F1 ORDER BY CompilationTrack.ArtistSort")
                  .value(1),
              "Live [1966]\tBeat Club");
}

TEST_F(CommandLine, JetPatternsDatesAndTruthGiveJetsRows) {
    EXPECT_EQ(lines("SELECT Name FROM Compilation WHERE Name LIKE 'BEAT*' ORDER BY Name"),
              QStringList({"Name", "Beat Club", "beatles '66"}));
    EXPECT_EQ(lines("SELECT Name FROM Compilation WHERE Name LIKE 'Beat?' ORDER BY Name"),
              QStringList({"Name"}));
    EXPECT_EQ(lines("SELECT Name FROM Compilation WHERE RecDate =#1/21/97#"),
              QStringList({"Name", "Beat Club"}));
    EXPECT_EQ(lines("SELECT Name FROM Compilation WHERE RecDate >#12/31/99#"),
              QStringList({"Name", "beatles '66"}));
    EXPECT_EQ(lines("SELECT Track_Title, Live FROM CompilationTrack WHERE Live =True AND "
                    "Track_Title LIKE '*[[]1966]*'"),
              QStringList({"Track_Title\tLive", "Live [1966]\tTrue"}));
}

TEST_F(CommandLine, ErrorsPrintTheJetNumberAndExitOne) {
    const ProgramRun bad = cli({"sql", path, "SELECT * FROM Nowhere"});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(bad.err.startsWith("Error 3078: ")) << bad.err.toStdString();
    const ProgramRun duplicate =
        cli({"sql", path,
             "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('BEAT CLUB', 'MD', 74)"});
    EXPECT_TRUE(duplicate.err.startsWith("Error 3022: ")) << duplicate.err.toStdString();
    EXPECT_EQ(cli({"frobnicate"}).exitCode, 2);
}

TEST_F(CommandLine, OneCallRunsOneStatement) {
    const ProgramRun twice = cli({"sql", path, "SELECT 1; DROP TABLE Compilation"});
    EXPECT_EQ(twice.exitCode, 1);
    EXPECT_EQ(twice.out, "");
    EXPECT_EQ(twice.err.trimmed(), "Error 3142: Characters found after end of SQL statement.");
    const ProgramRun update =
        cli({"sql", path, "UPDATE Compilation SET Box = 'x';DELETE FROM CompilationTrack"});
    EXPECT_EQ(update.exitCode, 1);
    EXPECT_TRUE(update.err.startsWith("Error 3142: ")) << update.err.toStdString();
    EXPECT_EQ(lines("SELECT Count(*) AS N, Count(Box) AS B FROM Compilation;"),
              QStringList({"N\tB", "2\t0"}));
    EXPECT_EQ(lines("SELECT Count(*) AS N FROM CompilationTrack ; ").value(1), "1");
}

TEST_F(CommandLine, DeepNestingIsAnErrorNotACrash) {
    const ProgramRun deep = cli({"sql", path, "SELECT " + QString("(").repeated(30000)});
    EXPECT_EQ(deep.exitCode, 1);
    EXPECT_EQ(deep.err.trimmed(), "Error 3360: Query is too complex.");
}

TEST_F(CommandLine, CompactGoesThroughTheTemporaryFile) {
    QFile stale(dir.file("x.$$$"));
    stale.open(QIODevice::WriteOnly);
    stale.write("stale");
    stale.close();
    const ProgramRun compacted = cli({"compact", path});
    EXPECT_EQ(compacted.exitCode, 0) << compacted.err.toStdString();
    // The sample's sums disagree with its tracks: compact says so after its own line.
    EXPECT_EQ(compacted.out.split('\n').value(0), "Database successfully repaired and compacted.");
    EXPECT_FALSE(QFile::exists(dir.file("x.$$$")));
    EXPECT_EQ(lines("SELECT Count(*) AS N FROM Compilation").value(1), "2");
}

TEST(ConvertCommand, CopiesAnOldAccessDatabaseAndRefusesToOverwrite) {
    testsupport::TempDir dir;
    const QString old = dir.file("old.mdb");
    const QString copy = dir.file("new.mdb");
    testsupport::writeOldCompilationDatabase(
        old, testsupport::sampleOldCompilations(jet4::Format::Jet3, 40), jet4::Format::Jet3);
    const QByteArray before = testsupport::fileDigest(old);

    const ProgramRun converted = cli({"convert", old, copy});
    EXPECT_EQ(converted.exitCode, 0) << converted.err.toStdString();
    EXPECT_EQ(converted.out.trimmed(),
              "Copied 6 compilation(s) and 40 track(s) into " + copy + ".");
    EXPECT_EQ(cli({"sql", copy, "SELECT Name FROM Compilation WHERE CompilationID_P = 2"}).out,
              "Name\nStraße der Lieder\n");

    const ProgramRun again = cli({"convert", old, copy});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(again.err.trimmed(), "Error 3204: Database already exists.");
    EXPECT_EQ(testsupport::fileDigest(old), before);

    QFile(old).resize(QFile(old).size() - 10);
    const ProgramRun damaged = cli({"convert", old, dir.file("other.mdb")});
    EXPECT_EQ(damaged.exitCode, 1);
    EXPECT_TRUE(damaged.err.startsWith("Error 3343: ")) << damaged.err.toStdString();
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList({"new.mdb", "old.mdb"}));
    EXPECT_EQ(cli({"convert", old}).exitCode, 2);
}

// A file that reads without an error but not whole: refused unless a partial copy is asked for.
TEST(ConvertCommand, RefusesADamagedFileUnlessAPartialCopyIsAskedFor) {
    testsupport::TempDir dir;
    const QString old = dir.file("old.mdb");
    const QString copy = dir.file("new.mdb");
    testsupport::writeOldCompilationDatabase(
        old, testsupport::sampleOldCompilations(jet4::Format::Jet4));
    testsupport::zeroADataPageOfTheLargestTable(old, jet4::Format::Jet4);

    const ProgramRun refused = cli({"convert", old, copy});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.out.isEmpty()) << refused.out.toStdString();
    const QRegularExpression lost(
        "^Error 3049: '.*old.mdb' is damaged: not every row could be "
        "read.\r?\nCompilationTrack: 300 rows expected, (\\d+) read\n");
    const QRegularExpressionMatch match = lost.match(refused.err);
    ASSERT_TRUE(match.hasMatch()) << refused.err.toStdString();
    EXPECT_TRUE(refused.err.contains("--keep-partial"));
    EXPECT_FALSE(QFile::exists(copy));

    const ProgramRun kept = cli({"convert", old, copy, "--keep-partial"});
    EXPECT_EQ(kept.exitCode, 0) << kept.err.toStdString();
    EXPECT_TRUE(
        kept.out.contains("Not every row of the damaged file could be read:\n"
                          "CompilationTrack: 300 rows expected, " +
                          match.captured(1) + " read\n"))
        << kept.out.toStdString();
}

TEST(Screenshots, EveryWindowIsPictured) {
    testsupport::TempDir dir;
    const ProgramRun shots = run(QStringLiteral("mixorama"), {"--screenshots", dir.path()});
    ASSERT_EQ(shots.exitCode, 0) << shots.err.toStdString();
    for (const char* name : {"overview-no-database", "overview-database-open",
                             "overview-find-storage", "help", "message-box"}) {
        const QImage image(dir.file(QString::fromLatin1(name) + ".png"));
        EXPECT_FALSE(image.isNull()) << name;
        EXPECT_GT(image.width(), 200) << name;
    }
    // The list page is not the intro page: the pictures differ.
    EXPECT_NE(QImage(dir.file("overview-no-database.png")),
              QImage(dir.file("overview-database-open.png")));
}

}  // namespace

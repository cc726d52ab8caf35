// mixorama-cli add-tracks killed (SIGKILL) at random moments of its connect, its TempSource
// build and its adds: whenever it dies, the file opens as Open opens it, whole, and every
// compilation's sums and numbers agree with its tracks.
#include <gtest/gtest.h>

#include <algorithm>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <iostream>
#include <random>

#include "app/program_run.h"
#include "engine/jet_error.h"
#include "engine/scratch_files.h"
#include "engine/workspace.h"
#include "support/compilation_invariants.h"
#include "support/databases.h"
#include "support/old_compilations.h"
#include "support/paths.h"

namespace {

using testsupport::cli;
using testsupport::ProgramRun;

class AddTracksKill : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(cli({"make-albums", album, "--albums", "12", "--seed", "8"}).exitCode, 0);
        testsupport::createCompilationDatabase(path);
        // Two compilations already filled, one of them with a track of unknown length.
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (Name, Format, C_Length, SumTrack, SumTime)
                VALUES ('Target', 'MD', 74, 0, 0), ('Full', 'CD-R', 80, 3, 500),
                       ('Other', 'MD', 60, 2, 100);
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, Length)
                VALUES (2, 1, 'a', 100), (2, 2, 'b', 400), (2, 3, 'c', NULL),
                       (3, 1, 'd', 40), (3, 2, 'e', 60);
        )sql");
        // Connect and build in a few tenths of a second, then the adds.
        process.setProgram(testsupport::programPath("mixorama-cli"));
        process.setArguments(
            {"add-tracks", path, "Target", album, "--first", QString::number(kAdds)});
        // The album tables' scratch copies that a kill leaves go with the test's folder.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", dir.path());
        process.setProcessEnvironment(environment);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    // Opens the file as Open does (a change left by the kill is rolled back) and checks it.
    int tracksAfterOpen() {
        try {
            engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
            database.close();
        } catch (const engine::JetError& error) {
            ADD_FAILURE() << error.number() << ": " << error.description().toStdString();
        }
        EXPECT_EQ(testsupport::integrityCheck(path), "ok");
        EXPECT_EQ(testsupport::brokenCompilations(path), 0);
        return testsupport::queryRaw(path,
                                     "SELECT SumTrack FROM Compilation WHERE Name = "
                                     "'Target'")
            .toInt();
    }

    qint64 runToTheEnd() {
        QElapsedTimer clock;
        clock.start();
        process.start();
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return clock.elapsed();
    }

    // Temporary files in the test's folder (its TMPDIR) and beside the databases.
    QStringList temporaryFiles() const {
        return QDir(dir.path()).entryList({"mixorama-*", "*.converting*"}, QDir::Files);
    }

    void killAfter(qint64 ms) {
        process.start();
        ASSERT_TRUE(process.waitForStarted());
        QThread::msleep(static_cast<unsigned long>(ms));
        process.kill();
        process.waitForFinished();
    }

    static constexpr int kAdds = 8;
    // On the disk, not in memory: there each commit waits for its syncs, as it does for a
    // user, and a kill lands inside a commit as often as between two.
    QTemporaryDir dir;
    const QString path = dir.filePath("compilations.mdb");
    const QString album = dir.filePath("albums.mdb");
    QProcess process;
};

TEST_F(AddTracksKill, EveryCompilationStaysWholeWhenKilledAtAnyMoment) {
    const qint64 whole = runToTheEnd();
    ASSERT_EQ(tracksAfterOpen(), kAdds);
    std::cout << "one add-tracks of " << kAdds << " tracks: " << whole << " ms" << std::endl;

    std::mt19937 random(1998);
    std::uniform_int_distribution<qint64> moment(0, whole);
    int before = kAdds;
    int killedWhileAdding = 0;
    // The moments that ended before the first add and after the last, for the search below.
    qint64 tooEarly = 0;
    qint64 tooLate = whole;
    int killsLeavingFiles = 0;
    auto killAt = [&](qint64 ms) {
        killAfter(ms);
        killsLeavingFiles += temporaryFiles().isEmpty() ? 0 : 1;
        const int after = tracksAfterOpen();
        EXPECT_GE(after, before) << "killed after " << ms << " ms";
        EXPECT_LE(after, before + kAdds);
        if (after == before) {
            tooEarly = std::max(tooEarly, ms);
        } else if (after == before + kAdds) {
            tooLate = std::min(tooLate, ms);
        } else {
            ++killedWhileAdding;
        }
        before = after;
    };
    for (int kill = 0; kill < 20; ++kill) {
        killAt(moment(random));
    }
    // On a loaded machine the adds may take a much shorter or longer part of the run than the
    // first one did; halving the span between a kill too early and one too late still finds
    // the moments between two adds.
    for (int kill = 0; kill < 20 && killedWhileAdding == 0 && tooEarly < tooLate; ++kill) {
        killAt((tooEarly + tooLate) / 2);
    }
    std::cout << killedWhileAdding << " kills in the middle of the adds" << std::endl;
    EXPECT_GT(killedWhileAdding, 0) << "no kill landed between two adds";

    // What a killed run leaves goes with the next start.
    EXPECT_GT(killsLeavingFiles, 0);
    runToTheEnd();
    EXPECT_EQ(temporaryFiles(), QStringList());
}

// Two processes: a start removes only what runs that ended left; the files of a live process
// (this test) stay, journal included, however they are named.
TEST_F(AddTracksKill, AStartLeavesTheFilesOfALiveProcessAlone) {
    const QByteArray savedTmp = qgetenv("TMPDIR");
    qputenv("TMPDIR", dir.path().toUtf8());
    const QString mine = engine::newScratchPath(dir.path(), "mixorama-links-", ".sqlite");
    for (const QString& name : {mine, mine + "-journal"}) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("in use");
    }
    process.setArguments({"tracks", path, "Target"});
    runToTheEnd();
    EXPECT_TRUE(QFile::exists(mine));
    EXPECT_TRUE(QFile::exists(mine + "-journal"));
    engine::removeScratchFile(mine);
    EXPECT_EQ(temporaryFiles(), QStringList()) << "the owner file goes with the last file";
    qputenv("TMPDIR", savedTmp);
}

// convert killed at random moments: the next start removes the scratch copy of the old tables
// and the half-built database with its journal; a destination is there only when complete.
TEST_F(AddTracksKill, AKilledConversionLeavesNothingAfterTheNextStart) {
    const QString old = dir.filePath("old.mdb");
    const QString copy = dir.filePath("new.mdb");
    testsupport::writeOldCompilationDatabase(
        old, testsupport::sampleOldCompilations(jet4::Format::Jet4, 3000));
    process.setArguments({"convert", old, copy});
    const qint64 whole = runToTheEnd();
    ASSERT_TRUE(QFile::remove(copy));
    std::mt19937 random(1997);
    std::uniform_int_distribution<qint64> moment(0, whole);
    int killsLeavingFiles = 0;
    for (int kill = 0; kill < 8; ++kill) {
        killAfter(moment(random));
        killsLeavingFiles += temporaryFiles().isEmpty() ? 0 : 1;
        if (QFile::exists(copy)) {
            EXPECT_EQ(testsupport::queryRaw(copy, "SELECT count(*) FROM CompilationTrack"), "3000");
            QFile::remove(copy);
        }
    }
    EXPECT_GT(killsLeavingFiles, 0);
    process.setArguments({"tracks", path, "Target"});
    runToTheEnd();
    EXPECT_EQ(temporaryFiles(), QStringList());
}

// Renumbering by a sort, killed at random moments: the tracks keep either their old numbers or
// the new ones, never a mixture, and stay numbered 1 to n.
TEST_F(AddTracksKill, RenumberingKilledAtAnyMomentLeavesOneWholeOrder) {
    runToTheEnd();
    const QString order = QStringLiteral(
        "SELECT group_concat(Track_Title, '|') FROM (SELECT Track_Title FROM CompilationTrack "
        "WHERE CompilationID_F1 = 1 ORDER BY TrackNo)");
    const QString added = testsupport::queryRaw(path, order);
    const QStringList byTime{"renumber", path, "Target", "--sort", "Time", "Descending"};
    ASSERT_EQ(cli(byTime).exitCode, 0);
    const QString sorted = testsupport::queryRaw(path, order);
    ASSERT_NE(sorted, added);
    const QStringList byDefault{"renumber", path, "Target"};
    ASSERT_EQ(cli(byDefault).exitCode, 0);
    const QString byDefaultOrder = testsupport::queryRaw(path, order);

    process.setArguments(byTime);
    const qint64 whole = runToTheEnd();
    std::mt19937 random(2004);
    std::uniform_int_distribution<qint64> moment(0, whole);
    for (int kill = 0; kill < 12; ++kill) {
        ASSERT_EQ(cli(byDefault).exitCode, 0);
        killAfter(moment(random));
        EXPECT_EQ(tracksAfterOpen(), kAdds);
        const QString now = testsupport::queryRaw(path, order);
        EXPECT_TRUE(now == sorted || now == byDefaultOrder) << now.toStdString();
    }
}

}  // namespace

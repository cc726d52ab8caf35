// mixorama-cli killed (SIGKILL) at moments spread over its work: whenever it dies, the file
// opens as Open opens it, whole, and what the killed run left goes with the next start.
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <functional>
#include <random>

#include "app/program_run.h"
#include "engine/scratch_files.h"
#include "shell/database_files.h"
#include "support/old_compilations.h"

namespace {

using testsupport::queryRaw;
using Sign = std::function<bool()>;  // what a running command shows from outside

class Kill : public ::testing::Test {
  protected:
    void SetUp() override {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", dir.path());  // the scratch copies a kill leaves stay here
        process.setProcessEnvironment(environment);
        testsupport::createCompilationDatabase(path);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    // Starts the command and waits until it ends or the sign shows: false when it ended first.
    bool run(const QStringList& args, const Sign& until = nullptr) {
        process.start(testsupport::programPath("mixorama-cli"), args);
        EXPECT_TRUE(process.waitForStarted());
        clock.start();
        while (!until || !until()) {
            if (process.waitForFinished(0) || process.state() == QProcess::NotRunning) {
                return false;
            }
            QThread::usleep(100);
        }
        return true;
    }
    qint64 runToTheEnd(const QStringList& args) {
        run(args);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return clock.elapsed();
    }
    // Kills the command delayMs after its start, or after the sign shows (a sign the last kill
    // left must go first).
    void killAfter(const QStringList& args, qint64 delayMs, const Sign& sign = nullptr) {
        bool gone = !sign || !sign();
        if (run(args, [&] { return !sign || ((gone = gone || !sign()) && sign()); })) {
            QThread::msleep(static_cast<unsigned long>(delayMs));
            process.kill();
            process.waitForFinished();
        }
        killsLeavingFiles += temporaryFiles().isEmpty() ? 0 : 1;
    }
    qint64 moment(qint64 upTo) { return std::uniform_int_distribution<qint64>(0, upTo)(random); }
    // Opens the file as Open does (a change left by the kill is rolled back) and checks it.
    QStringList rowsAfterOpen() {
        try {
            EXPECT_TRUE(shell::hasCompilationStructure(path));
            engine::Workspace::defaultWorkspace().openDatabase(path).close();
        } catch (const engine::JetError& error) {
            ADD_FAILURE() << error.number() << ": " << error.description().toStdString();
        }
        EXPECT_EQ(testsupport::integrityCheck(path), "ok");
        EXPECT_EQ(testsupport::brokenCompilations(path), 0);
        return testsupport::rowCounts(path);
    }
    QStringList temporaryFiles() const {
        return QDir(dir.path()).entryList({"mixorama-*", "*.converting*"}, QDir::Files);
    }
    // The next start removes what the killed runs left.
    void expectTheNextStartToCleanUp(const QStringList& args) {
        runToTheEnd(args);
        EXPECT_EQ(temporaryFiles(), QStringList());
    }

    // On the disk, not in memory: there each commit waits for its syncs, as it does for a user,
    // and a kill lands inside a commit as often as between two.
    QTemporaryDir dir;
    QString path = dir.filePath("compilations.mdb");
    QProcess process;
    QElapsedTimer clock;
    std::mt19937 random{1998};
    int killsLeavingFiles = 0;
};

class AddTracksKill : public Kill {
  protected:
    void SetUp() override {
        Kill::SetUp();
        ASSERT_EQ(
            testsupport::cli({"make-albums", album, "--albums", "12", "--seed", "8"}).exitCode, 0);
        testsupport::addSample(path, {.name = "Target"});
        testsupport::addSample(path, {.name = "Full", .tracks = {{}, {}}});
    }
    int targetTracksAfterOpen() {
        rowsAfterOpen();
        return queryRaw(path, "SELECT SumTrack FROM Compilation WHERE Name = 'Target'").toInt();
    }

    static constexpr int kAdds = 8;
    const QString album = dir.filePath("albums.mdb");
    const QStringList adds{"add-tracks", path, "Target", album, "--first", QString::number(kAdds)};
};

TEST_F(AddTracksKill, EveryCompilationStaysWholeWhenKilledAtAnyMoment) {
    const qint64 whole = runToTheEnd(adds);
    ASSERT_EQ(targetTracksAfterOpen(), kAdds);
    int before = kAdds;
    int killedWhileAdding = 0;
    qint64 tooEarly = 0;  // the latest kill before the first add, the earliest after the last
    qint64 tooLate = whole;
    const auto killAndCheck = [&](qint64 ms, const Sign& sign = nullptr) {
        killAfter(adds, ms, sign);
        const int after = targetTracksAfterOpen();
        EXPECT_TRUE(after >= before && after <= before + kAdds) << "killed after " << ms << " ms";
        tooEarly = after == before ? std::max(tooEarly, ms) : tooEarly;
        tooLate = after == before + kAdds ? std::min(tooLate, ms) : tooLate;
        killedWhileAdding += after > before && after < before + kAdds ? 1 : 0;
        before = after;
    };
    for (int kill = 0; kill < 20; ++kill) {
        killAndCheck(moment(whole));
    }
    // On a loaded machine the adds may take another part of the run than the first time:
    // halving the span between a kill too early and one too late finds them, and so does a
    // kill as soon as a commit has taken its journal away.
    for (int kill = 0; kill < 20 && killedWhileAdding == 0 && tooEarly < tooLate; ++kill) {
        killAndCheck((tooEarly + tooLate) / 2);
    }
    const QString journal = path + "-journal";
    for (int kill = 0; kill < 3 && killedWhileAdding == 0; ++kill) {
        killAndCheck(0, [&, seen = false]() mutable {
            const bool there = QFile::exists(journal);
            return (seen = seen || there) && !there;
        });
    }
    EXPECT_GT(killedWhileAdding, 0) << "no kill landed between two adds";
    EXPECT_GT(killsLeavingFiles, 0);
    expectTheNextStartToCleanUp(adds);
}

// A start removes only what runs that ended left; the files of a live process (this test) stay,
// journal included.
TEST_F(AddTracksKill, AStartLeavesTheFilesOfALiveProcessAlone) {
    const QByteArray savedTmp = qgetenv("TMPDIR");
    qputenv("TMPDIR", dir.path().toUtf8());
    const QString mine = engine::newScratchPath(dir.path(), "mixorama-links-", ".sqlite");
    for (const QString& name : {mine, mine + "-journal"}) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    runToTheEnd({"tracks", path, "Target"});
    EXPECT_TRUE(QFile::exists(mine) && QFile::exists(mine + "-journal"));
    engine::removeScratchFile(mine);
    EXPECT_EQ(temporaryFiles(), QStringList()) << "the owner file goes with the last file";
    qputenv("TMPDIR", savedTmp);
}

// The next start removes the scratch copy of the old tables and the half-built database; a
// destination is there only when complete.
TEST_F(AddTracksKill, AKilledConversionLeavesNothingAfterTheNextStart) {
    const QString old = dir.filePath("old.mdb");
    const QString copy = dir.filePath("new.mdb");
    testsupport::writeOldCompilationDatabase(
        old, testsupport::sampleOldCompilations(jet4::Format::Jet4, 3000));
    const qint64 whole = runToTheEnd({"convert", old, copy});
    for (int kill = 0; kill < 8; ++kill) {
        QFile::remove(copy);
        killAfter({"convert", old, copy}, moment(whole));
        EXPECT_TRUE(!QFile::exists(copy) ||
                    queryRaw(copy, "SELECT count(*) FROM CompilationTrack") == "3000");
    }
    EXPECT_GT(killsLeavingFiles, 0);
    expectTheNextStartToCleanUp({"tracks", path, "Target"});
}

// compact killed in its repair, its copy and its rename (a file in memory).
class CompactKill : public Kill {
  protected:
    void SetUp() override {
        path = memory.file("big.mdb");
        Kill::SetUp();
        // Compilations enough that the repair's new index of their names outgrows the page
        // cache, so that it writes the file well before its end.
        testsupport::execRaw(path, R"sql(
            WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000)
            INSERT INTO Compilation (Name, Format, C_Length)
            SELECT printf('Compilation %05d %.80c', i, 'x'), 'CD-R', 80 FROM n;
        )sql");
        testsupport::addSample(path,
                               {.name = "Long", .tracks = QList<testsupport::SampleTrack>(300)});
    }
    testsupport::TempDir memory;
};

TEST_F(CompactKill, EveryRowSurvivesAKillAtAnyMoment) {
    const QStringList expected = rowsAfterOpen();
    const QString journal = path + "-journal";
    const QString temp = memory.file("big.$$$");
    // The repair changes pages with its journal beside the file; once the journal's header is
    // written (not zero) it writes the file itself, and a kill leaves a change for the next open
    // to roll back. The copy goes into the temporary file, which the rename takes away.
    const Sign writing = [&] {
        QFile file(journal);
        const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(4) : QByteArray();
        return head.size() == 4 && head != QByteArray(4, '\0');
    };
    const Sign copying = [&] { return QFile::exists(temp); };
    const std::vector<Sign> phases{[&] { return QFile::exists(journal); }, writing, copying};
    std::vector<qint64> first(phases.size(), -1);
    std::vector<qint64> last(phases.size(), -1);
    run({"compact", path}, [&] {
        for (std::size_t i = 0; i < phases.size(); ++i) {
            last[i] = phases[i]() ? clock.elapsed() : last[i];
            first[i] = first[i] < 0 ? last[i] : first[i];
        }
        return false;
    });
    const qint64 whole = clock.elapsed();
    ASSERT_EQ(std::count(first.begin(), first.end(), -1), 0) << "a phase was not seen";
    // Each phase is hit as soon as it shows, then at random moments inside it and a little past
    // its end (the end of the copy is the rename); the rest at random moments of the run.
    int leftHotJournal = 0;
    int leftTemp = 0;
    for (std::size_t kill = 0; kill < 12; ++kill) {
        const std::size_t phase = kill % 4;
        const qint64 span = phase < phases.size() ? last[phase] - first[phase] : whole;
        killAfter({"compact", path}, kill < 3 ? 0 : moment(span * 13 / 10),
                  phase < phases.size() ? phases[phase] : nullptr);
        leftHotJournal += writing() ? 1 : 0;
        leftTemp += copying() ? 1 : 0;
        EXPECT_EQ(rowsAfterOpen(), expected) << "kill " << kill;
    }
    EXPECT_GT(leftHotJournal, 0) << "no kill landed while the repair wrote the file";
    EXPECT_GT(leftTemp, 0) << "no kill landed in the copy";
    runToTheEnd({"compact", path});
    EXPECT_FALSE(QFile::exists(temp) || QFile::exists(temp + "-journal") || QFile::exists(journal));
    EXPECT_EQ(rowsAfterOpen(), expected);
}

}  // namespace

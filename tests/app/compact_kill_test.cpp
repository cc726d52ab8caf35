// mixorama-cli compact killed (SIGKILL) at moments spread over its repair, its copy and its
// rename: whenever it dies, the file opens as Open opens it, with every row there.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <algorithm>
#include <iostream>
#include <map>
#include <random>
#include <vector>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "shell/database_files.h"
#include "support/databases.h"
#include "support/paths.h"
#include "support/temp_dir.h"

namespace {

// What a running compact shows from outside. The repair changes pages in memory with its journal
// beside the file; once the journal's header is written (not zero) it writes the file itself, and
// the journal is hot: a kill then leaves a change for the next open to roll back. The copy goes
// into the temporary file, which the rename takes away.
enum class Phase { Start, Repair, RepairWriting, Copy };

struct Span {
    qint64 first = -1;  // ms after the start
    qint64 last = -1;
    qint64 length() const { return std::max<qint64>(1, last - first); }
};

class CompactKill : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::exists(kCli)) << "build mixorama-cli first";
        testsupport::createCompilationDatabase(path);
        // A few thousand tracks, and compilations enough that the repair's new index of their
        // names outgrows the page cache, so that it writes the file well before its end.
        testsupport::execRaw(path, R"sql(
            WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000)
            INSERT INTO Compilation (Name, Format, C_Length)
            SELECT printf('Compilation %05d %.80c', i, 'x'), 'CD-R', 80 FROM n;
            WITH RECURSIVE t(no) AS (SELECT 1 UNION ALL SELECT no + 1 FROM t WHERE no < 15)
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title,
                Track_Artist_Name, ArtistSort, Album_Title, Length)
            SELECT CompilationID_P, no, 'Title ' || no, 'Artist ' || (no * 7 % 50),
                'Artist ' || (no * 7 % 50), 'Album ' || CompilationID_P, 180 + no
            FROM Compilation, t WHERE CompilationID_P <= 300;
        )sql");
        expected = rowsAsOpenSeesThem();
        ASSERT_EQ(expected.value(1), "CompilationTrack=4500");
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    // The structure check of Open, then the file opened read-write and every table counted.
    QStringList rowsAsOpenSeesThem() {
        QStringList counts;
        try {
            EXPECT_TRUE(shell::hasCompilationStructure(path));
            engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
            for (const QString& table : database.tableNames()) {
                engine::Recordset rows =
                    database.openRecordset("SELECT Count(*) AS N FROM [" + table + "]");
                counts << table + "=" + rows.value("N").toString();
            }
            database.close();
        } catch (const engine::JetError& error) {
            ADD_FAILURE() << error.number() << ": " << error.description().toStdString();
        }
        return counts;
    }

    bool journalIsHot() const {
        QFile file(journal);
        const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(4) : QByteArray();
        return head.size() == 4 && head != QByteArray(4, '\0');
    }
    bool showing(Phase phase) const {
        switch (phase) {
            case Phase::Start:
                return true;
            case Phase::Repair:
                return QFile::exists(journal);
            case Phase::RepairWriting:
                return journalIsHot();
            case Phase::Copy:
                return QFile::exists(temp);
        }
        return false;
    }
    static bool running(QProcess& process) {
        return !process.waitForFinished(0) && process.state() != QProcess::NotRunning;
    }
    void startCompact(QProcess& process) {
        process.start(kCli, {"compact", path});
        ASSERT_TRUE(process.waitForStarted());
        clock.start();
    }
    // Waits until the phase shows (or stops showing); false when the compact ends first.
    bool waitUntil(Phase phase, bool shown, QProcess& process) {
        while (showing(phase) != shown) {
            if (!running(process)) {
                return false;
            }
            QThread::usleep(100);
        }
        return true;
    }

    // One whole compact, watched: when each phase shows.
    std::map<Phase, Span> measure() {
        std::map<Phase, Span> spans;
        QProcess process;
        startCompact(process);
        while (running(process)) {
            for (Phase phase : {Phase::Repair, Phase::RepairWriting, Phase::Copy}) {
                if (showing(phase)) {
                    Span& span = spans[phase];
                    span.first = span.first < 0 ? clock.elapsed() : span.first;
                    span.last = clock.elapsed();
                }
            }
            QThread::usleep(100);
        }
        spans[Phase::Start] = {0, clock.elapsed()};
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return spans;
    }

    // Starts a compact, waits for the phase, sleeps and kills it.
    void killDuring(Phase phase, qint64 delayMs) {
        QProcess process;
        startCompact(process);
        // A temporary file left by the last kill goes first; the moment counts from the new one.
        if (showing(phase) && phase == Phase::Copy && !waitUntil(phase, false, process)) {
            return;
        }
        if (!waitUntil(phase, true, process)) {
            return;  // it ended before the moment came
        }
        QThread::msleep(static_cast<unsigned long>(delayMs));
        process.kill();
        process.waitForFinished();
        leftHotJournal += journalIsHot() ? 1 : 0;
        leftTemp += phase == Phase::Copy && QFile::exists(temp) ? 1 : 0;
    }

    const QString kCli = testsupport::programPath("mixorama-cli");
    testsupport::TempDir dir;
    const QString path = dir.file("big.mdb");
    const QString journal = path + "-journal";
    const QString temp = dir.file("big.$$$");
    QStringList expected;
    QElapsedTimer clock;
    int leftHotJournal = 0;
    int leftTemp = 0;
};

TEST_F(CompactKill, EveryRowSurvivesAKillAtAnyMoment) {
    std::map<Phase, Span> spans = measure();
    ASSERT_EQ(spans.size(), 4u) << "a phase of the compact was not seen";
    std::cout << "one compact: " << spans[Phase::Start].last << " ms; repair "
              << spans[Phase::Repair].first << "-" << spans[Phase::Repair].last
              << " ms, writing the file from " << spans[Phase::RepairWriting].first << " ms; copy "
              << spans[Phase::Copy].first << "-" << spans[Phase::Copy].last << " ms" << std::endl;

    // The first kill of each phase comes as soon as the phase shows, so that each is hit for
    // sure; the others at random moments inside it, or around the end of the copy: the rename.
    std::mt19937 random(1997);
    const auto within = [&](Phase phase, double from, double to) {
        const double share = std::uniform_real_distribution<double>(from, to)(random);
        return std::pair{phase, static_cast<qint64>(spans[phase].length() * share)};
    };
    std::vector<std::pair<Phase, qint64>> moments = {
        {Phase::RepairWriting, 0}, {Phase::Repair, 0}, {Phase::Copy, 0}};
    for (int i = 0; i < 2; ++i) {
        moments.push_back(within(Phase::Repair, 0.0, 1.0));
        moments.push_back(within(Phase::RepairWriting, 0.0, 1.0));
        moments.push_back(within(Phase::Copy, 0.0, 0.7));
        moments.push_back(within(Phase::Copy, 0.7, 1.3));
        moments.push_back(within(Phase::Start, 0.0, 1.0));
    }

    for (const auto& [phase, delay] : moments) {
        killDuring(phase, delay);
        EXPECT_EQ(rowsAsOpenSeesThem(), expected)
            << "killed " << delay << " ms into phase " << static_cast<int>(phase);
        EXPECT_EQ(testsupport::integrityCheck(path), "ok");
    }
    std::cout << moments.size() << " kills; " << leftHotJournal << " left a hot journal, "
              << leftTemp << " a temporary file" << std::endl;
    EXPECT_GT(leftHotJournal, 0) << "no kill landed while the repair wrote the file";
    EXPECT_GT(leftTemp, 0) << "no kill landed in the copy";

    // What a kill left behind goes with the next compact.
    QProcess last;
    startCompact(last);
    ASSERT_TRUE(last.waitForFinished(60000));
    EXPECT_EQ(last.exitCode(), 0) << last.readAllStandardError().toStdString();
    EXPECT_FALSE(QFile::exists(temp));
    EXPECT_FALSE(QFile::exists(temp + "-journal"));
    EXPECT_FALSE(QFile::exists(journal));
    EXPECT_EQ(rowsAsOpenSeesThem(), expected);
}

}  // namespace

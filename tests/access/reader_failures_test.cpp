// The reading program's ends and failures as the engine sees them: foreign files, and programs
// that fail, crash, hang or outlive a killed parent.
#include "access/access_reader.h"
#include "access/reader_process.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <QFile>
#include <QRandomGenerator>

#include "engine/jet_error.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/paths.h"
#include "support/temp_dir.h"

using namespace accessfile;
using namespace std::chrono_literals;
using End = ProcessOutcome::End;
using testsupport::errorNumber;
using testsupport::fileBytes;

namespace {

const QString kProgram = testsupport::programPath("mixorama-mdbread");
const ProcessLimits kShortLimits{500ms, 5s};

QByteArray randomBytes(qsizetype size, quint32 seed) {
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

// The first page of an Access file: its format's name, then the engine version (0 Jet 3, 1 Jet 4).
QByteArray jetStart(char version, qsizetype pageSize, const QByteArray& name = "Standard Jet DB") {
    QByteArray page = QByteArray("\x00\x01\x00\x00", 4) + name + '\0';
    page.append(version);
    return page.append(pageSize - page.size(), '\0');
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
}

// A shell script standing in for the reading program, to drive the ways a program can end.
QString writeFakeProgram(const QString& path, const QByteArray& body) {
    writeFile(path, "#!/bin/sh\n" + body + "\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

}  // namespace

// Whatever the file holds, reading it ends in "unrecognized format", never in a crash or hang of
// this process, and the file is left exactly as it was. Only the header, Jet's or ACE's name at
// the start, decides whether the reader takes a file on; a missing file is not found.
TEST(AccessReader, RejectsForeignFilesAndLeavesThemUntouched) {
    testsupport::TempDir dir;
    const QString sqlite = dir.file(QStringLiteral("album.sqlite"));
    testsupport::execRaw(sqlite, "CREATE TABLE Album (AlbumID INTEGER)");
    const std::tuple<const char*, QByteArray, bool> files[] = {
        {"empty", QByteArray(), false},
        {"text", "Album;Title\n1;Abbey Road\n", false},
        {"SQLite", fileBytes(sqlite), false},
        {"random bytes", randomBytes(64 * 1024, 7), false},
        {"a Jet 4 header only", jetStart(1, 4096), true},
        {"a Jet 3 header, then garbage", jetStart(0, 2048) + randomBytes(40 * 2048, 11), true},
        {"a Jet 4 header, then garbage", jetStart(1, 4096) + randomBytes(40 * 4096, 13), true},
        {"a Jet 4 header, then zeros", jetStart(1, 4096) + QByteArray(8 * 4096, '\0'), true},
        {"an ACE header only", jetStart(2, 4096, "Standard ACE DB"), true},
        {"a longer format name", jetStart(1, 4096, "Standard Jet DBX"), false},
        {"a shorter format name", jetStart(1, 4096, "Standard Jet"), false},
        {"a Jet 4 header without its first byte", jetStart(1, 4096).mid(1), false},
        {"a Jet 4 header cut short", jetStart(1, 4096).left(12), false},
    };
    AccessTableReader reader(kProgram, {20s, 60s});
    const QString path = dir.file(QStringLiteral("album.mdb"));
    for (const auto& [kind, bytes, jet] : files) {
        SCOPED_TRACE(kind);
        writeFile(path, bytes);
        EXPECT_EQ(reader.canRead(path), jet);
        EXPECT_EQ(errorNumber([&] { reader.tableNames(path); }), engine::jet::kNotADatabase);
        EXPECT_EQ(errorNumber([&] { reader.copyTables(path, {"Album"}, dir.file("o.sqlite")); }),
                  engine::jet::kNotADatabase);
        EXPECT_EQ(fileBytes(path), bytes);
    }

    const QString missing = dir.file(QStringLiteral("missing.mdb"));
    EXPECT_FALSE(reader.canRead(missing));
    QString description;
    EXPECT_EQ(errorNumber([&] { reader.tableNames(missing); }, &description),
              engine::jet::kFileNotFound);
    EXPECT_TRUE(description.contains(missing)) << description.toStdString();
}

// The program's ways of ending: how the runner tells them apart, and the engine's error the
// reader makes of each.
TEST(AccessReader, TurnsEachEndOfTheProgramIntoTheEnginesError) {
    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album.mdb"));
    writeFile(album, jetStart(1, 4096));
    const QString unrecognized = QStringLiteral("Unrecognized database format '%1'.").arg(album);
    const struct {
        QByteArray script;
        ProcessLimits limits;
        End end;
        int number;
        QString description;  // a part of it
    } cases[] = {
        {"echo 'mixorama-mdbread: table not found: TrackRating' >&2; exit 3", kShortLimits,
         End::Exited, engine::jet::kObjectNotFound, "could not find the object 'TrackRating'."},
        {"kill -SEGV $$", kShortLimits, End::Crashed, engine::jet::kNotADatabase, unrecognized},
        // Silent past the quiet limit, busy past the total one, its output closed.
        {"exec sleep 60", kShortLimits, End::Stopped, engine::jet::kNotADatabase, unrecognized},
        {"while true; do echo progress; sleep 0.05; done",
         {1s, 1500ms},
         End::Stopped,
         engine::jet::kNotADatabase,
         unrecognized},
        {"exec >&- ; exec sleep 60", kShortLimits, End::Stopped, engine::jet::kNotADatabase,
         unrecognized},
        {"exit 2", kShortLimits, End::Exited, engine::jet::kNotADatabase, unrecognized},
        {"exit 77", kShortLimits, End::Exited, engine::jet::kNotADatabase, unrecognized},
        {"echo 'SQLite: disk I/O error' >&2; exit 4", kShortLimits, End::Exited,
         engine::jet::kGeneral, "SQLite: disk I/O error"},
    };
    int run = 0;
    for (const auto& [script, limits, end, number, part] : cases) {
        SCOPED_TRACE(script.constData());
        const QString program = writeFakeProgram(dir.file(QString::number(++run)), script);
        EXPECT_EQ(runWithLimits(program, {}, limits).end, end);
        AccessTableReader reader(program, limits);
        const auto copy = [&] { reader.copyTables(album, {"Album"}, dir.file("o")); };
        QString description;
        EXPECT_EQ(errorNumber(copy, &description), number);
        EXPECT_TRUE(description.contains(part)) << description.toStdString();
    }
    const QString none = dir.file(QStringLiteral("no-such-program"));
    const ProcessOutcome missing = runWithLimits(none, {}, kShortLimits);
    EXPECT_EQ(missing.end, End::NotStarted);
    EXPECT_FALSE(missing.errors.isEmpty());
    EXPECT_EQ(errorNumber([&] { AccessTableReader(none, kShortLimits).tableNames(album); }),
              engine::jet::kGeneral);
}

TEST(AccessReader, RunsTheProgramTheEnvironmentNamesElseTheOneBesideIt) {
    qputenv("MIXORAMA_MDBREAD", "/somewhere/reader");
    EXPECT_EQ(readerProgramPath(), QStringLiteral("/somewhere/reader"));
    qunsetenv("MIXORAMA_MDBREAD");
    EXPECT_TRUE(readerProgramPath().endsWith(QStringLiteral("/mixorama-mdbread")));
}

// A reader outliving a killed program would go on writing a scratch copy that the next start
// has already cleaned away.
TEST(ReaderProcess, TheReaderEndsWithAKilledProgram) {
    testsupport::TempDir dir;
    const QString pidFile = dir.file("reader.pid");
    const QString program =
        writeFakeProgram(dir.file("p"), "echo $$ > '" + pidFile.toUtf8() + "'; exec sleep 60");
    const pid_t starter = fork();
    ASSERT_GE(starter, 0);
    if (starter == 0) {  // the program, which starts the reader and is killed while it runs
        runWithLimits(program, {}, {60s, 60s});
        _exit(0);
    }
    QFile pid(pidFile);
    for (int i = 0; i < 200 && pid.size() == 0; ++i) {
        usleep(20000);
    }
    ASSERT_TRUE(pid.open(QIODevice::ReadOnly)) << "the reader did not start";
    const pid_t reader = pid.readAll().trimmed().toInt();
    ASSERT_GT(reader, 0);
    kill(starter, SIGKILL);
    waitpid(starter, nullptr, 0);
    bool ended = false;
    for (int i = 0; i < 250 && !ended; ++i) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(reader));
        ended = !stat.open(QIODevice::ReadOnly) || stat.readAll().contains(") Z ");  // or a zombie
        usleep(20000);
    }
    if (!ended) {
        kill(reader, SIGKILL);
    }
    EXPECT_TRUE(ended) << "the reader outlived the program that started it";
}

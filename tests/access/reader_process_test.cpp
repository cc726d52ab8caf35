#include "access/reader_process.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "access/fake_program.h"
#include "support/temp_dir.h"

using namespace accessfile;
using namespace std::chrono_literals;
using End = ProcessOutcome::End;

namespace {
const ProcessLimits kShortLimits{300ms, 3s};
}

TEST(ReaderProcess, CollectsArgumentsOutputErrorsAndExitCode) {
    testsupport::TempDir dir;
    const QString program = writeFakeProgram(
        dir.file("p"), "for a in \"$@\"; do echo \"[$a]\"; done; echo 'bad thing' >&2; exit 3");
    const ProcessOutcome outcome =
        runWithLimits(program, {QStringLiteral("a b"), QStringLiteral("Künstler")}, kShortLimits);
    EXPECT_EQ(outcome.end, End::Exited);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(QString::fromUtf8(outcome.output), QStringLiteral("[a b]\n[Künstler]\n"));
    EXPECT_EQ(outcome.errors, QByteArray("bad thing\n"));
}

TEST(ReaderProcess, TellsCrashesAndStopsFromExits) {
    testsupport::TempDir dir;
    const struct {
        const char* script;
        ProcessLimits limits;
        End end;
    } cases[] = {
        {"kill -SEGV $$", kShortLimits, End::Crashed},
        {"exec sleep 60", kShortLimits, End::Stopped},  // silent past the quiet limit
        {"while true; do echo progress; sleep 0.05; done", {1s, 1500ms}, End::Stopped},  // total
        {"exec >&- ; exec sleep 60", kShortLimits, End::Stopped},  // its output closed
    };
    int run = 0;
    for (const auto& [script, limits, end] : cases) {
        const QString program = writeFakeProgram(dir.file(QString::number(++run)), script);
        EXPECT_EQ(runWithLimits(program, {}, limits).end, end) << script;
    }
    const ProcessOutcome missing = runWithLimits(dir.file("none"), {}, kShortLimits);
    EXPECT_EQ(missing.end, End::NotStarted);
    EXPECT_FALSE(missing.errors.isEmpty());
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

#include "access/reader_process.h"

#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QProcess>
#include <algorithm>
#include <climits>

namespace accessfile {

namespace {

constexpr int kStartLimitMs = 30000;
constexpr int kKillWaitMs = 10000;
constexpr qint64 kPollMs = 50;

// Waits for output until the program ends; false when a limit ran out first.
bool waitWhileWorking(QProcess& process, const ProcessLimits& limits, QByteArray& output) {
    QElapsedTimer running;
    running.start();
    QElapsedTimer silent;
    silent.start();
    while (process.state() != QProcess::NotRunning) {
        const qint64 left = std::min(limits.total.count() - running.elapsed(),
                                     limits.silence.count() - silent.elapsed());
        if (left <= 0)
            return false;
        if (process.waitForReadyRead(int(std::min<qint64>(left, INT_MAX)))) {
            output += process.readAllStandardOutput();
            silent.restart();
        } else {
            // A program that closed its output returns at once here; do not spin.
            process.waitForFinished(int(std::min<qint64>(left, kPollMs)));
        }
    }
    return true;
}

}  // namespace

ProcessOutcome runWithLimits(const QString& program, const QStringList& arguments,
                             const ProcessLimits& limits) {
    ProcessOutcome outcome;
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    // The reader ends with this process, even a killed one: an orphan would go on writing its
    // scratch copy after the next start has removed the files of this run.
    const pid_t parent = getpid();
    process.setChildProcessModifier([parent] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) {
            _exit(1);
        }
    });
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(kStartLimitMs)) {
        outcome.errors = process.errorString().toUtf8();
        return outcome;
    }
    const bool ended = waitWhileWorking(process, limits, outcome.output);
    if (!ended)
        process.kill();
    process.waitForFinished(kKillWaitMs);
    outcome.output += process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    if (!ended)
        outcome.end = ProcessOutcome::End::Stopped;
    else if (process.exitStatus() == QProcess::CrashExit)
        outcome.end = ProcessOutcome::End::Crashed;
    else
        outcome.end = ProcessOutcome::End::Exited;
    outcome.exitCode = process.exitCode();
    return outcome;
}

}  // namespace accessfile

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include "support/paths.h"

namespace testsupport {

struct ProgramRun {
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs one of the programs of the program folder and waits for it (at most two minutes, or the
// time given); one that has not ended by then is killed and gets the exit code -1.
inline ProgramRun run(const QString& program, const QStringList& arguments,
                      int timeoutMs = 120000) {
    QProcess process;
    process.setProgram(testsupport::programPath(program));
    process.setArguments(arguments);
    process.start();
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline ProgramRun cli(const QStringList& arguments, int timeoutMs = 120000) {
    return run(QStringLiteral("mixorama-cli"), arguments, timeoutMs);
}

}  // namespace testsupport

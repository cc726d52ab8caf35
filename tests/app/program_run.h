#pragma once

// What the tests of the two programs share: running a program of the build as a user does.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "support/databases.h"
#include "support/paths.h"
#include "support/samples.h"
#include "support/temp_dir.h"

namespace testsupport {

struct ProgramRun {
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs a program of the program folder and waits for it; one that has not ended after the
// timeout is killed and gets the exit code -1.
inline ProgramRun run(const QString& program, const QStringList& arguments,
                      int timeoutMs = 120000) {
    QProcess process;
    process.start(programPath(program), arguments);
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

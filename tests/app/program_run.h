#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace testsupport {

struct ProgramRun {
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs one of the programs of the program folder and waits for it (at most two minutes).
inline ProgramRun run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(QStringLiteral(MIXORAMA_PROGRAM_DIR "/") + program);
    process.setArguments(arguments);
    process.start();
    process.waitForFinished(120000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline ProgramRun cli(const QStringList& arguments) {
    return run(QStringLiteral("mixorama-cli"), arguments);
}

}  // namespace testsupport

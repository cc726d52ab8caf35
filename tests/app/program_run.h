#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// Runs one of the programs of the program folder to its end.
struct ProgramRun {
    int exitCode = -1;  // -1 when the program crashed or did not end
    QString out;
    QString err;
};

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

#include "access/access_reader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <memory>

#include "access/jet_header.h"
#include "access/reader_protocol.h"
#include "engine/jet_error.h"

namespace accessfile {

namespace {

using engine::JetError;
namespace jet = engine::jet;
namespace protocol = accessfile::protocol;

JetError notADatabase(const QString& file) {
    return JetError(jet::kNotADatabase,
                    QStringLiteral("Unrecognized database format '%1'.").arg(file));
}

JetError objectNotFound(const QString& name) {
    return JetError(jet::kObjectNotFound,
                    QStringLiteral("The Microsoft Jet database engine could not find the object "
                                   "'%1'. Make sure the object exists and that you spell its name "
                                   "and the path name correctly.")
                        .arg(name));
}

JetError cannotOpen(const QString& file) {
    return JetError(jet::kCannotOpenFile,
                    QStringLiteral("The Microsoft Jet database engine cannot open the file '%1'. "
                                   "It is already opened exclusively by another user, or you need "
                                   "permission to view its data.")
                        .arg(file));
}

// The table the program reported missing; the first one asked for if it named none.
QString missingTable(const QByteArray& errors, const QStringList& tables) {
    const QByteArray prefix(protocol::kMissingTablePrefix);
    for (const QByteArray& line : errors.split('\n')) {
        const qsizetype at = line.indexOf(prefix);
        if (at >= 0)
            return QString::fromUtf8(line.mid(at + prefix.size()));
    }
    return tables.value(0);
}

QString errorText(const QByteArray& errors) {
    return QString::fromUtf8(errors).trimmed();
}

// The tables the program reported it could not read whole.
std::vector<engine::IncompleteTable> incompleteTables(const QByteArray& output) {
    const QByteArray prefix(protocol::kIncompletePrefix);
    std::vector<engine::IncompleteTable> tables;
    for (const QByteArray& line : output.split('\n')) {
        if (!line.startsWith(prefix))
            continue;
        const QByteArray rest = line.mid(prefix.size());
        const qsizetype afterExpected = rest.indexOf(' ');
        const qsizetype afterCopied = rest.indexOf(' ', afterExpected + 1);
        if (afterExpected < 0 || afterCopied < 0)
            continue;
        tables.push_back(
            {QString::fromUtf8(rest.mid(afterCopied + 1)), rest.left(afterExpected).toLongLong(),
             rest.mid(afterExpected + 1, afterCopied - afterExpected - 1).toLongLong()});
    }
    return tables;
}

QString executableFolder() {
    if (QCoreApplication::instance() != nullptr)
        return QCoreApplication::applicationDirPath();
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
}

}  // namespace

QString readerProgramPath() {
    const QString name = QString::fromLatin1(protocol::kProgramName);
    const QString configured = qEnvironmentVariable("MIXORAMA_MDBREAD");
    if (!configured.isEmpty())
        return configured;
    const QString beside = QDir(executableFolder()).filePath(name);
    if (QFileInfo::exists(beside))
        return beside;
    const QString home = qEnvironmentVariable("MIXORAMA_HOME");
    if (!home.isEmpty() && QFileInfo::exists(QDir(home).filePath(name)))
        return QDir(home).filePath(name);
    // Installed, the programs are in bin/ and the reader, which no user runs, in libexec/.
    const QString installed =
        QDir(executableFolder()).filePath(QStringLiteral("../libexec/mixorama/") + name);
    if (QFileInfo::exists(installed))
        return QDir::cleanPath(installed);
    return beside;
}

AccessTableReader::AccessTableReader(QString program, ProcessLimits limits)
    : program_(std::move(program)), limits_(limits) {}

bool AccessTableReader::canRead(const QString& file) const {
    return fileHasJetHeader(file);
}

QStringList AccessTableReader::tableNames(const QString& file) {
    const QByteArray output = run(file, {QString::fromLatin1(protocol::kListCommand), file}, {});
    QStringList names;
    for (const QByteArray& line : output.split('\n')) {
        if (!line.isEmpty())
            names << QString::fromUtf8(line);
    }
    return names;
}

std::vector<engine::IncompleteTable> AccessTableReader::copyTables(const QString& file,
                                                                   const QStringList& tables,
                                                                   const QString& sqliteOut) {
    if (tables.isEmpty())
        return {};
    return incompleteTables(run(
        file, QStringList{QString::fromLatin1(protocol::kCopyCommand), file, sqliteOut} + tables,
        tables));
}

// Checks the file before starting the program, so that foreign files never reach libmdb, then
// turns every way the program can end other than success into the engine's error.
QByteArray AccessTableReader::run(const QString& file, const QStringList& arguments,
                                  const QStringList& tables) const {
    if (!QFileInfo::exists(file))
        throw JetError(jet::kFileNotFound, QStringLiteral("Could not find file '%1'.").arg(file));
    if (!fileHasJetHeader(file)) {
        if (!QFileInfo(file).isReadable())
            throw cannotOpen(file);
        throw notADatabase(file);
    }
    const QString program = program_.isEmpty() ? readerProgramPath() : program_;
    const ProcessOutcome outcome = runWithLimits(program, arguments, limits_);
    switch (outcome.end) {
        case ProcessOutcome::End::NotStarted:
            throw JetError(jet::kGeneral,
                           QStringLiteral("The program '%1' could not be started: %2")
                               .arg(program, errorText(outcome.errors)));
        case ProcessOutcome::End::Crashed:
        case ProcessOutcome::End::Stopped:
            throw notADatabase(file);
        case ProcessOutcome::End::Exited:
            break;
    }
    switch (outcome.exitCode) {
        case protocol::kOk:
            return outcome.output;
        case protocol::kTableMissing:
            throw objectNotFound(missingTable(outcome.errors, tables));
        case protocol::kCannotOpen:
            throw cannotOpen(file);
        case protocol::kUsage:
        case protocol::kOutputFailed:
            throw JetError(jet::kGeneral, errorText(outcome.errors));
        default:
            throw notADatabase(file);
    }
}

void installAccessReader() {
    engine::setForeignTableReader(std::make_shared<AccessTableReader>());
}

}  // namespace accessfile

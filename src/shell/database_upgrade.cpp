#include "shell/database_upgrade.h"

#include <QFile>
#include <QFileInfo>

#include "engine/connection.h"
#include "engine/jet_collation.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "engine/text_collation_layout.h"
#include "engine/workspace.h"
#include "shell/database_commands.h"
#include "shell/database_conversion.h"
#include "shell/database_files.h"
#include "store/compilation_invariants.h"
#include "store/compilation_queries.h"

namespace shell {

namespace {

const QString kLayoutConverted = QStringLiteral(
    "Text columns converted to the text order of this version, which other SQLite programs "
    "cannot write.");
const QString kOldLayout = QStringLiteral(
    "The text columns have the order of an earlier version, which other SQLite programs write "
    "out of order: compact the file to convert it.");

QStringList integrityProblems(engine::Database& database) {
    engine::Statement check(database.connection()->db(), QStringLiteral("PRAGMA integrity_check"));
    QStringList lines;
    while (check.step()) {
        if (check.text(0) != QLatin1String("ok")) {
            lines << QStringLiteral("Integrity check: ") + check.text(0);
        }
    }
    return lines;
}

}  // namespace

namespace {

QStringList upgrade(const QString& path) {
    if (!hasCompilationStructure(path)) {
        return {};  // another kind of database: compacted as it is
    }
    QStringList changes;
    if (engine::hasNocaseLayout(path)) {
        engine::convertNocaseLayout(path);
        changes << kLayoutConverted;
    }
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    store::ensureTrackLookupIndex(database);
    database.close();
    return changes << repairCompilationInvariants(path);
}

}  // namespace

QStringList repairCompilationInvariants(const QString& path) {
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    const QStringList changes =
        store::checkCompilationInvariants(database, store::InvariantAction::Repair);
    database.close();
    return changes;
}

QStringList upgradeCompactedCopy(const QString& path) {
    try {
        return upgrade(path);
    } catch (...) {
        // A copy that could not be brought up to this version never replaces anything.
        engine::Workspace::defaultWorkspace().close();
        QFile::remove(path);
        QFile::remove(path + QStringLiteral("-journal"));
        throw;
    }
}

bool needsLayoutConversion(const QString& path) {
    try {
        return hasCompilationStructure(path) && engine::hasNocaseLayout(path);
    } catch (const engine::JetError&) {
        return false;
    }
}

QString layoutConversionQuestion(const QString& path) {
    return QStringLiteral(
               "'%1' was written by an earlier version of Mixorama. Its text columns must be "
               "converted to the text order of this version before it can be opened; as it is, "
               "other SQLite programs would damage its indexes.\r\n"
               "The file is repaired, compacted and converted in place: the converted copy "
               "replaces it only once it is complete.\r\n\r\n"
               "Convert it now?")
        .arg(QFileInfo(path).fileName());
}

std::optional<QString> convertLayoutOnRequest(const QString& path, platform::Dialogs& dialogs,
                                              CommandFeedback& feedback) {
    if (!dialogs.askYesNo(layoutConversionQuestion(path), platform::MessageAnswer::Yes)) {
        return std::nullopt;
    }
    QStringList changes;
    try {
        BusyScope busy(feedback, kConvertingText);
        changes = repairAndCompact(path);
    } catch (const engine::JetError& error) {
        dialogs.exclamation(
            QStringLiteral("'%1' could not be converted; the file is as it was.\r\n%2")
                .arg(QFileInfo(path).fileName(), error.description()));
        return std::nullopt;
    }
    changes.removeAll(kLayoutConverted);
    if (!changes.isEmpty()) {
        dialogs.information(QStringLiteral("Repaired while converting:\r\n") +
                            changes.join(QStringLiteral("\r\n")));
    }
    return path;
}

QStringList checkDatabaseFile(const QString& path) {
    if (!hasCompilationStructure(path)) {
        return {QStringLiteral("Not a compilation database: it lacks the five tables.")};
    }
    const bool oldLayout = engine::hasNocaseLayout(path);
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path, true);
    if (oldLayout) {
        // Checked in the order it was written in; other programs see it out of order until
        // it is converted, which the line below says.
        engine::registerEarlierTextOrder(database.connection()->db());
    }
    QStringList problems = integrityProblems(database);
    if (oldLayout) {
        problems << kOldLayout;
    }
    problems << store::checkCompilationInvariants(database, store::InvariantAction::Report);
    database.close();
    return problems;
}

}  // namespace shell

#include "shell/database_commands.h"

#include <QFileInfo>

#include "engine/database_file.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/program_folder.h"
#include "shell/app_state.h"
#include "shell/database_conversion.h"
#include "shell/database_files.h"
#include "shell/database_upgrade.h"
#include "store/compilation_queries.h"

namespace shell {

namespace {

// A damaged or foreign file is bad input the user should hear about; other failures of the
// commands end them quietly.
void reportUnreadableFile(const engine::JetError& error, platform::Dialogs& dialogs) {
    switch (error.number()) {
        case engine::jet::kNotADatabase:
        case engine::jet::kFileNotFound:
        case engine::jet::kCannotOpenFile:
        case engine::jet::kDiskError:
        case engine::jet::kFileInUse:
        case engine::jet::kLocked:
            dialogs.exclamation(error.description());
            break;
        default:
            break;
    }
}

}  // namespace

platform::FileRequest databaseFileRequest(const QString& title, bool mayNotExist) {
    platform::FileRequest request;
    request.title = title;
    request.filter = kMdbFilter;
    request.filterIndex = 1;
    request.initialFolder = platform::dataFolder();
    request.mayNotExist = mayNotExist;
    return request;
}

std::optional<QString> newDatabase(platform::Dialogs& dialogs, CommandFeedback& feedback) {
    const std::optional<QString> chosen =
        dialogs.openFile(databaseFileRequest(QStringLiteral("New Database"), true));
    if (!chosen) {
        return std::nullopt;
    }
    {
        BusyScope busy(feedback, QStringLiteral("Creating new database ..."));
        try {
            createFromTemplate(*chosen);
        } catch (const engine::JetError& error) {
            if (error.number() == engine::jet::kDatabaseExists) {
                dialogs.exclamation(error.description());
            } else {
                reportUnreadableFile(error, dialogs);  // a missing template, a full disk
            }
            return std::nullopt;
        }
        feedback.processPendingEvents();
    }
    return chosen;
}

std::optional<QString> chooseDatabase(platform::Dialogs& dialogs) {
    return dialogs.openFile(databaseFileRequest(QStringLiteral("Open Database")));
}

QString conversionQuestion(const QString& accessPath) {
    return QStringLiteral(
               "'%1' is a compilation database of an earlier version of Mixorama and cannot be "
               "opened as it is.\r\n"
               "Its compilations can be copied into a new database, which is then opened. The "
               "file itself is left unchanged.\r\n\r\n"
               "Convert it now?")
        .arg(QFileInfo(accessPath).fileName());
}

namespace {

// Where the copy goes: the save dialog proposes BASE-converted.mdb beside the old file.
std::optional<QString> chooseConvertedCopy(const QString& accessPath, platform::Dialogs& dialogs) {
    platform::FileRequest request =
        databaseFileRequest(QStringLiteral("Save Converted Database"), true);
    request.initialFolder = QFileInfo(accessPath).absolutePath();
    request.fileName = QFileInfo(convertedCopyPath(accessPath)).fileName();
    return dialogs.saveFile(request);
}

QString conversionFailure(const QString& accessPath, const engine::JetError& error) {
    if (error.number() == engine::jet::kDatabaseExists) {
        return error.description();
    }
    return QStringLiteral("'%1' could not be converted; no new database was written.\r\n%2")
        .arg(QFileInfo(accessPath).fileName(), error.description());
}

void reportLeftOutTracks(const ConversionCounts& counts, platform::Dialogs& dialogs) {
    QStringList lines;
    if (counts.tracksLeftOut > 0) {
        lines << QStringLiteral(
                     "%1 track(s) of the old file belong to no compilation and were "
                     "not copied.")
                     .arg(counts.tracksLeftOut);
    }
    if (!counts.corrections.isEmpty()) {
        lines << QStringLiteral("Corrected in the copy:") << counts.corrections;
    }
    if (!lines.isEmpty()) {
        dialogs.information(lines.join(QStringLiteral("\r\n")));
    }
}

std::optional<QString> convertOnRequest(const QString& accessPath, platform::Dialogs& dialogs,
                                        CommandFeedback& feedback) {
    if (!dialogs.askYesNo(conversionQuestion(accessPath), platform::MessageAnswer::Yes)) {
        return std::nullopt;
    }
    const std::optional<QString> destination = chooseConvertedCopy(accessPath, dialogs);
    if (!destination) {
        return std::nullopt;
    }
    BusyScope busy(feedback, kConvertingText);
    try {
        const ConversionCounts counts = convertAccessDatabase(
            accessPath, *destination, [&](const QString& text) { feedback.setStatusText(text); });
        reportLeftOutTracks(counts, dialogs);
        if (!counts.notes.isEmpty()) {
            dialogs.information(counts.notes.join(QStringLiteral("\r\n")));
        }
    } catch (const engine::JetError& error) {
        dialogs.exclamation(conversionFailure(accessPath, error));
        return std::nullopt;
    }
    return destination;
}

}  // namespace

std::optional<QString> databaseToOpen(const QString& path, platform::Dialogs& dialogs,
                                      CommandFeedback& feedback) {
    try {
        engine::requireRegularFile(path);  // before any reader looks into it
        if (!isAccessCompilationDatabase(path)) {
            return needsLayoutConversion(path) ? convertLayoutOnRequest(path, dialogs, feedback)
                                               : path;
        }
    } catch (const engine::JetError& error) {
        reportUnreadableFile(error, dialogs);
        return std::nullopt;
    }
    return convertOnRequest(path, dialogs, feedback);
}

OpenOutcome openCompilationDatabase(const QString& path, AppState& state,
                                    platform::Dialogs& dialogs) {
    try {
        if (!hasCompilationStructure(path)) {
            dialogs.exclamation(kNotACompilationDatabase);
            return OpenOutcome::WrongStructure;
        }
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
        state.databasePath = QFileInfo(path).absoluteFilePath();  // the full path, as typed or not
        state.database = database;
        state.inputHint = kInputHint;
        store::ensureTrackLookupIndex(state.database);
    } catch (const engine::JetError& error) {
        abandonCompilationDatabase(state);
        reportUnreadableFile(error, dialogs);
        return OpenOutcome::Failed;
    }
    return OpenOutcome::Opened;
}

void closeCompilationDatabase(AppState& state) {
    if (state.database.isOpen()) {
        state.database.close();  // TempSource and the album links end with the connection
    }
    state.database = engine::Database();
}

void abandonCompilationDatabase(AppState& state) {
    if (state.database.isOpen()) {
        state.database.close();
    }
    state.database = engine::Database();
    state.databasePath.clear();
    engine::Workspace::defaultWorkspace().close();
}

bool compactDatabase(platform::Dialogs& dialogs, CommandFeedback& feedback) {
    const std::optional<QString> chosen =
        dialogs.openFile(databaseFileRequest(QStringLiteral("Compact Database")));
    if (!chosen) {
        return false;
    }
    BusyScope busy(feedback, QStringLiteral("Repairing and compacting database ..."));
    QStringList changes;
    try {
        changes = repairAndCompact(*chosen);
    } catch (const engine::JetError& error) {
        // Refusals that leave the file as it was name it and say why.
        if (error.number() == engine::jet::kDatabaseExists ||
            error.number() == engine::jet::kReadOnly || error.number() == engine::jet::kFileInUse) {
            dialogs.exclamation(error.description());
        } else {
            reportUnreadableFile(error, dialogs);
        }
        return false;
    }
    changes.prepend(QStringLiteral("Database successfully repaired and compacted."));
    dialogs.information(changes.join(QStringLiteral("\r\n")));
    return true;
}

}  // namespace shell

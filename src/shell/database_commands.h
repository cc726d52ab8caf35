#pragma once

#include <QString>
#include <optional>

#include "platform/dialogs.h"

namespace shell {

struct AppState;

// How a command shows that it works: the hourglass and the status bar's simple text.
class CommandFeedback {
  public:
    virtual ~CommandFeedback() = default;
    virtual void setBusy(bool busy) = 0;
    virtual void setStatusText(const QString& text) = 0;
    virtual void processPendingEvents() = 0;
};

inline const QString kStatusHint =
    QStringLiteral("Choose 'New' to create or 'Open' to open a database");

// Shows a command's progress text with the hourglass, and restores the status bar and the
// pointer whatever way the command ends.
class BusyScope {
  public:
    explicit BusyScope(CommandFeedback& feedback, const QString& progress) : feedback_(feedback) {
        feedback_.setBusy(true);
        feedback_.setStatusText(progress);
    }
    ~BusyScope() {
        feedback_.setStatusText(kStatusHint);
        feedback_.setBusy(false);
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

  private:
    CommandFeedback& feedback_;
};
inline const QString kMdbFilter = QStringLiteral("MS Access Files (*.mdb)|*.mdb");

// The file dialog of the database commands: the filter, the data folder, the given title.
platform::FileRequest databaseFileRequest(const QString& title, bool mayNotExist = false);

// New: asks for a file name and creates the database from the template. Returns the new file to
// load, or nothing (cancelled, or refused with the engine's message: the file exists).
std::optional<QString> newDatabase(platform::Dialogs& dialogs, CommandFeedback& feedback);

// Open: asks for the file to load.
std::optional<QString> chooseDatabase(platform::Dialogs& dialogs);

// Open's first step: an Access compilation database of the program's earlier versions is not
// opened in place. The user is asked whether to convert it, then where to save the copy, which
// is then opened instead. An SQLite one of the earlier text order is converted in place after
// asking (database_upgrade.h). Returns the file to open: path itself when it needs no conversion,
// else the converted copy; nothing when the user declined or cancelled, or the conversion failed
// (the failure has been reported).
std::optional<QString> databaseToOpen(const QString& path, platform::Dialogs& dialogs,
                                      CommandFeedback& feedback);

// The question before a conversion.
QString conversionQuestion(const QString& accessPath);

enum class OpenOutcome { Opened, WrongStructure, Failed };

// The structure check and the opening of a compilation database as the shared database. A file
// without the five tables shows the structure message; a damaged or foreign file the engine's
// description of it. On success a writable file gets the lookup's index if it lacks it
// (store::ensureTrackLookupIndex).
OpenOutcome openCompilationDatabase(const QString& path, AppState& state,
                                    platform::Dialogs& dialogs);

// Close: closes the shared database; its album links and TempSource end with its connection.
void closeCompilationDatabase(AppState& state);

// After a failed load: closes the shared database without touching its file again and forgets
// it, so that no database of the workspace stays open.
void abandonCompilationDatabase(AppState& state);

// Compact: asks for a file, repairs and compacts it and reports success. A damaged, foreign or
// read-only file, or one named like its temporary file, is named in a message; cancel and other
// failures end quietly. The file is then as it was.
bool compactDatabase(platform::Dialogs& dialogs, CommandFeedback& feedback);

}  // namespace shell

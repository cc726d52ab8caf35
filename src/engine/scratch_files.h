#pragma once

#include <QString>

// Temporary files of a running program: scratch copies of foreign tables, databases being built.
//
// Each process names its temporary files in an owner file in the temporary folder
// ("mixorama-owner-*.lock") and holds that file locked (flock) while it runs. A process killed
// before it removed its files leaves its owner file unlocked; the next start of a program finds
// it and removes the files it names. A file of a live process is never removed: its owner file
// stays locked.
namespace engine {

// A path that does not exist yet in folder: prefix, random letters, suffix. It is named in this
// process's owner file before it is returned, so a file made there is removed after a kill.
QString newScratchPath(const QString& folder, const QString& prefix, const QString& suffix);

// Removes the file with SQLite's journal files beside it, and its name from the owner file.
void removeScratchFile(const QString& path);

// The file is no longer temporary (renamed into place): its name leaves the owner file.
void keepScratchFile(const QString& path);

// Removes the files named by owner files in the temporary folder whose process has ended, and
// those owner files. Returns how many files it removed.
int removeScratchFilesOfEndedRuns();

}  // namespace engine

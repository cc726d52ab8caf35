#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/dialogs.h"

// Compilation databases written by an earlier version of this program are SQLite files whose
// text columns are declared with SQLite's NOCASE (engine/text_collation_layout.h). The engine
// does not write them as they are: they are converted in place by compaction, whose compacted
// copy is converted and checked before it replaces the file, so that a stop at any moment leaves
// either the old file or the converted one, whole.
namespace shell {

class CommandFeedback;

// Brings a compacted copy that no one else has open up to this version, if it is a compilation
// database: the engine's text collation, the lookup index, and the compilation invariants
// (store/compilation_invariants.h) repaired. Returns one line for each thing it changed. Throws
// JetError, after removing the copy.
QStringList upgradeCompactedCopy(const QString& path);

// Repairs the compilation invariants (store/compilation_invariants.h) of a compilation database
// no one else has open, in one transaction. Returns one line per correction. Throws JetError.
QStringList repairCompilationInvariants(const QString& path);

// True when the file is a compilation database that declares the text order of earlier
// versions. False for any file that is no readable compilation database: opening it says why.
bool needsLayoutConversion(const QString& path);

// The question before converting such a file on open.
QString layoutConversionQuestion(const QString& path);

// Open's step for a file of the earlier layout: asks, then converts it in place (repair and
// compact). Returns the file to open, or nothing when the user declined or the conversion
// failed (the failure has been reported, and the file is as it was). What the conversion
// repaired is shown.
std::optional<QString> convertLayoutOnRequest(const QString& path, platform::Dialogs& dialogs,
                                              CommandFeedback& feedback);

// The check command: SQLite's integrity check under the engine's text order, whether the file
// still has the earlier layout, and the compilation invariants. Returns one line per problem,
// none when the file is sound. The file is only read. Throws JetError when it cannot be read.
QStringList checkDatabaseFile(const QString& path);

}  // namespace shell

#pragma once

#include <QString>
#include <QStringList>

namespace shell {

// The template every new compilation database is copied from.
QString templatePath();

// Creates a compilation database at path as a copy of the template. Throws JetError 3204 when
// the file exists; an existing file is never touched.
void createFromTemplate(const QString& path);

// True when the file holds the five tables of a compilation database (names compared without
// regard to case). Throws JetError when the engine cannot open the file at all.
bool hasCompilationStructure(const QString& path);

extern const QString kNotACompilationDatabase;  // the three-line structure message

// The temporary file of compaction: the database's folder and base name + ".$$$".
QString compactionTempPath(const QString& path);

// Repairs the file in place and compacts it through the temporary file, which then replaces it
// with the file's permissions and owner. A symbolic link stays: the file it points to is
// compacted. The default workspace is closed first, and the file is this process's alone from
// the repair to the replacement. Throws JetError, each before anything is changed: 3343 for no
// regular file, 3204 for a file whose own name is that of its temporary file (ends in ".$$$"),
// 3027 for a read-only file or folder, 3045 naming the file when another program has it open.
// On any failure the original file is left as it was.
// The compacted copy of a compilation database is brought up to this version before it
// replaces the file (upgradeCompactedCopy); returns the lines of what that changed.
QStringList repairAndCompact(const QString& path);

}  // namespace shell

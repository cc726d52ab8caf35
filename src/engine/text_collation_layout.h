#pragma once

#include <QString>

struct sqlite3;

// Files of earlier versions declare their text columns COLLATE NOCASE, the name under which the
// engine then installed its own text order. Any other SQLite program reads that name as its own
// ASCII-only order: to it the indexes of such a file are out of order, and what it writes puts
// them out of order for the engine. Those files are converted to the engine's own collation
// name (kTextCollation) before the engine writes them.
namespace engine {

// The schema text with every collation named NOCASE (in any case, quoted or not) renamed to
// kTextCollation. Strings, quoted names and comments that merely hold the words are untouched.
QString renameNocaseCollation(const QString& schemaSql);

// True when the main schema of the connection (tables, indexes, views, triggers) names NOCASE.
bool declaresNocase(sqlite3* db);

// True when the SQLite file at path declares NOCASE. Throws JetError when it cannot be read.
bool hasNocaseLayout(const QString& path);

// Converts the file at path to kTextCollation: renames the collation in every schema text,
// then rebuilds every index under the engine's order and checks the file. Meant for a file no
// one else has open, such as the compacted copy that replaces a file only once it is whole:
// between the two steps its indexes are out of order. Throws JetError: the engine's error
// (3022 when two rows of a unique column differ only in what the engine's order ignores)
// naming the file, or 3343 when the converted file is not whole.
void convertNocaseLayout(const QString& path);

}  // namespace engine

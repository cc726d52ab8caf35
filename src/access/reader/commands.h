#pragma once

#include <QStringList>

namespace mdbread {

// Prints the user table names of the Access file, one a line.
void listTables(const char* accessFile);

// Copies the named tables into the SQLite file in one transaction. Throws Failure; a missing
// table fails before the SQLite file is touched.
void copyTables(const char* accessFile, const char* sqliteFile, const QStringList& tables);

}  // namespace mdbread

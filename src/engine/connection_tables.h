#pragma once

#include <QString>

struct sqlite3;

namespace engine {

// Tables that each connection keeps for itself: "TempSource", the track picker's source. Made
// in the connection's temporary schema, such a table is seen by no other connection or process,
// cannot be replaced or damaged by them, does not grow the file and ends with its connection,
// even a killed one. Statements name it without a schema, as any table.
bool isConnectionTable(const QString& name);
// The schema a table of that name is made in, altered in and dropped from: "temp" or "main".
QString schemaOfTable(const QString& name);
// The name qualified by its schema and quoted, for the engine's own statements.
QString qualifiedTable(const QString& name);

// Whether an SQLite statement names a connection table (a literal of that text counts too).
bool readsConnectionTable(const QString& sql);

// Earlier versions kept these tables in the file. A database opened for writing drops such a
// leftover where it can; any connection is then kept from creating one, reading a value or row id
// of it or writing it, so that it can never show rows it did not build itself (not even while its
// own table is being replaced): such statements fail with 3078 as for a missing table.
void dropLeftoverConnectionTables(sqlite3* db);
void guardConnectionTables(sqlite3* db);
// The name of the leftover that the guard kept the last refused statement of this thread from.
QString refusedConnectionTable();

}  // namespace engine

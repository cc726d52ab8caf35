#pragma once

#include <QString>

struct sqlite3;

namespace music {

// Runs a script of several statements (engine::execSqlite runs one); throws the engine's
// JetError for SQLite's failure.
void execScript(sqlite3* db, const QString& sql);

}  // namespace music

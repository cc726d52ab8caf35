#include "music/sqlite_script.h"

#include <sqlite3.h>

#include "engine/sqlite_statement.h"

namespace music {

void execScript(sqlite3* db, const QString& sql) {
    const int rc = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK)
        engine::throwSqliteError(db, rc, QString::fromUtf8(sqlite3_db_filename(db, "main")));
}

}  // namespace music

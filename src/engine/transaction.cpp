#include "engine/transaction.h"

#include <sqlite3.h>

#include "engine/connection.h"
#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"

namespace engine {

namespace {
int& savepointCounter() {
    static int counter = 0;
    return counter;
}
}  // namespace

ScopedTransaction::ScopedTransaction(sqlite3* db)
    : db_(db), name_(QStringLiteral("mx_step%1").arg(++savepointCounter())) {
    execSqlite(db_, QStringLiteral("SAVEPOINT ") + name_);
}

ScopedTransaction::ScopedTransaction(const Database& database)
    : ScopedTransaction(database.connection()->db()) {}

ScopedTransaction::~ScopedTransaction() {
    if (done_) {
        return;
    }
    try {
        execSqlite(db_, QStringLiteral("ROLLBACK TO ") + name_);
        execSqlite(db_, QStringLiteral("RELEASE ") + name_);
    } catch (const JetError&) {
        // A destructor cannot report it; the connection is failing or closing, and SQLite rolls
        // back what was not released when it closes.
    }
}

void ScopedTransaction::commit() {
    execSqlite(db_, QStringLiteral("RELEASE ") + name_);
    done_ = true;
}

}  // namespace engine

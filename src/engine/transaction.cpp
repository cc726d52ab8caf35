#include "engine/transaction.h"

#include <sqlite3.h>

#include "engine/connection.h"
#include "engine/database.h"
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
    if (!done_) {
        const QByteArray undo = QStringLiteral("ROLLBACK TO %1; RELEASE %1").arg(name_).toUtf8();
        sqlite3_exec(db_, undo.constData(), nullptr, nullptr, nullptr);
    }
}

void ScopedTransaction::commit() {
    execSqlite(db_, QStringLiteral("RELEASE ") + name_);
    done_ = true;
}

}  // namespace engine

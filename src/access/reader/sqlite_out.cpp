#include "access/reader/sqlite_out.h"

#include <algorithm>
#include <cstring>

#include "access/reader/failure.h"
#include "engine/field_type.h"

namespace mdbread {

using accessfile::protocol::ExitCode;

namespace {

// The copied tables declare their text columns with the engine's collation, which the engine
// installs when it reads them. This program only writes rows into tables without a text index,
// so it never compares texts; the name must merely be known for the tables to be created.
int byteOrder(void*, int lengthA, const void* a, int lengthB, const void* b) {
    const int common = std::memcmp(a, b, size_t(std::min(lengthA, lengthB)));
    return common != 0 ? common : lengthA - lengthB;
}

}  // namespace

SqliteOut::SqliteOut(const char* path) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    if (sqlite3_open_v2(path, &db_, flags, nullptr) != SQLITE_OK)
        fail(QStringLiteral("cannot open %1").arg(QString::fromUtf8(path)));
    sqlite3_busy_timeout(db_, 5000);
    sqlite3_create_collation_v2(db_, engine::kTextCollation, SQLITE_UTF8, nullptr, byteOrder,
                                nullptr);
    // The copy is a scratch file that lives as long as the links: no waiting for the disk, and
    // the journal stays in memory, where it can still undo a copy that fails half-way.
    sqlite3_exec(db_, "PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF", nullptr, nullptr,
                 nullptr);
}

SqliteOut::~SqliteOut() {
    sqlite3_close_v2(db_);
}

void SqliteOut::execute(const QString& sql) {
    if (sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(sql);
}

StatementPtr SqliteOut::prepare(const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
        fail(sql);
    return StatementPtr(statement);
}

void SqliteOut::insertRow(sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE)
        fail(QStringLiteral("inserting a row"));
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
}

void SqliteOut::fail(const QString& what) {
    const QString reason =
        db_ != nullptr ? QString::fromUtf8(sqlite3_errmsg(db_)) : QStringLiteral("out of memory");
    throw Failure(ExitCode::kOutputFailed,
                  QStringLiteral("SQLite: %1 (%2)").arg(reason, what).toStdString());
}

}  // namespace mdbread

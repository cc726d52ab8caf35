#pragma once

#include <sqlite3.h>

#include <QString>
#include <memory>

namespace mdbread {

struct StatementFinalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPtr = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

// The SQLite file the tables are copied into. Every failure throws Failure(kOutputFailed);
// a transaction not committed is rolled back when the file is closed.
class SqliteOut {
  public:
    explicit SqliteOut(const char* path);
    ~SqliteOut();
    SqliteOut(const SqliteOut&) = delete;
    SqliteOut& operator=(const SqliteOut&) = delete;

    void execute(const QString& sql);
    StatementPtr prepare(const QString& sql);
    // Runs a prepared INSERT once and makes it ready for the next row.
    void insertRow(sqlite3_stmt* statement);

  private:
    [[noreturn]] void fail(const QString& what);

    sqlite3* db_ = nullptr;
};

}  // namespace mdbread

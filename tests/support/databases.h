#pragma once

#include <QString>
#include <QStringList>

struct sqlite3;
namespace engine {
class Database;
}

namespace testsupport {

// Creates a compilation database at path from the template's schema file.
void createCompilationDatabase(const QString& path);
// A compilation database with room for compaction to reclaim: `count` compilations named
// prefix + number with notes of `notesLength` characters, then every `gap`-th one deleted.
void createReclaimableDatabase(const QString& path, int count, int notesLength, int gap);
// Runs SQLite statements on a file directly, past the engine (to prepare data or inspect it),
// with the engine's text order and functions installed.
void execRaw(const QString& path, const QString& sql);
// The first column of the first row of a query run directly on the file.
QString queryRaw(const QString& path, const QString& sql);
// The same on the connection of a database open in the engine, which alone sees its TempSource:
// to give it one, or to look at it.
void execOnConnection(const engine::Database& database, const QString& sql);
QString queryOnConnection(const engine::Database& database, const QString& sql);
// SQLite's own integrity check of a file: "ok" when it is whole.
QString integrityCheck(const QString& path);
// Leaves the file as a writer killed in the middle of running sql would: part of the change
// written into the file, the old pages in its "-journal" beside it.
void leaveInterruptedChange(const QString& path, const QString& sql);
// Turns a compilation database into one of the earlier layout: its text columns declared with
// SQLite's NOCASE, under which name earlier versions installed the engine's order, so that its
// indexes stay in that order, as those versions left them.
void makeOldLayout(const QString& path);
// SQLite's integrity check of a file under the order earlier versions installed as NOCASE.
QString oldOrderIntegrityCheck(const QString& path);
// The outcome of running sql on the file with plain SQLite, as any other program would: SQLite's
// message when it fails, else the first value of the first row, or "ok" without rows.
QString plainSqlite(const QString& path, const QString& sql);
// The number of rows of every table of the file, as "name=count" lines in the file's order.
QStringList rowCounts(const QString& path);

// Another writer of the file: while it lives it holds the write lock (BEGIN IMMEDIATE), as a
// second program in the middle of a change would.
class WriteLock {
  public:
    explicit WriteLock(const QString& path);
    ~WriteLock();
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

  private:
    sqlite3* db_ = nullptr;
};

}  // namespace testsupport

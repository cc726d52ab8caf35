#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

struct sqlite3;
namespace engine {
class Database;
}

namespace testsupport {

struct SqliteOptions {
    bool plain = false;     // without the engine's text order and functions, as other programs
    bool readOnly = false;  // opened read-only
};

// A connection to an SQLite file past the engine (":memory:" for none), to prepare data, inspect
// it or stand in for another program. Failures throw std::runtime_error with SQLite's message.
class SqliteFile {
  public:
    explicit SqliteFile(const QString& path, SqliteOptions options = {});
    ~SqliteFile();
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;

    sqlite3* db() const { return db_; }
    void exec(const QString& sql) const;
    // The first column of the first row; empty without rows.
    QString value(const QString& sql) const;
    // Whole numbers as qint64, reals as double, text as QString, blobs as QByteArray, Null as
    // an invalid QVariant.
    QList<QVariantList> rows(const QString& sql) const;
    // The rows as text, columns joined by "|", Null as "<null>".
    QStringList lines(const QString& sql) const;

  private:
    sqlite3* db_ = nullptr;
};

// Creates a compilation database at path from the template's schema file.
void createCompilationDatabase(const QString& path);
// A compilation database with room for compaction to reclaim: `count` compilations named
// prefix + number with notes of `notesLength` characters, then every `gap`-th one deleted.
void createReclaimableDatabase(const QString& path, int count, int notesLength, int gap);
// SqliteFile's exec and value on a file, for one statement.
void execRaw(const QString& path, const QString& sql);
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
    SqliteFile file_;
};

}  // namespace testsupport

#pragma once

#include <QString>
#include <QVariant>

#include "engine/field_type.h"

struct sqlite3;
struct sqlite3_stmt;

namespace engine {

// Throws the JetError that matches SQLite's result code and message on db.
[[noreturn]] void throwSqliteError(sqlite3* db, int rc, const QString& context = QString());
// Runs one SQLite statement to its end, ignoring any rows; throws JetError (3142 when the
// text holds a second statement, which then does not run).
void execSqlite(sqlite3* db, const QString& sql);
// Rebuilds every index of the main file in the collations installed now and checks the file;
// returns "ok" or the check's first complaint.
QString reindexAndCheck(sqlite3* db);
// Quotes a name for SQLite: "name", with inner quotes doubled.
QString quoteName(const QString& name);

// A prepared SQLite statement, finalized with the object. Text after the statement other than
// blanks and ";" is refused with JetError 3142, so no caller can run a second statement.
class Statement {
  public:
    Statement(sqlite3* db, const QString& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(int index, const QVariant& value);  // 1-based, as SQLite counts
    bool step();                                  // true while a row is there
    void reset();
    void exec();  // steps to the end

    int columnCount() const;
    QString columnName(int column) const;
    QString columnDeclaredType(int column) const;
    QString columnOriginTable(int column) const;
    QString columnOriginName(int column) const;
    QString columnDatabase(int column) const;
    bool isNull(int column) const;
    qint64 int64(int column) const;
    QString text(int column) const;
    // The value read as the field type says (yes/no as bool, dates as QDate/QDateTime, ...).
    QVariant value(int column, FieldType type) const;
    // The value as SQLite holds it, for columns of unknown type.
    QVariant rawValue(int column) const;
    sqlite3_stmt* handle() const { return stmt_; }

  private:
    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
};

// Converts a value for storage in a column of the given type; throws JetError 3421 when it
// cannot be converted (a word in a number column, say).
QVariant coerceForField(const QVariant& value, FieldType type);

}  // namespace engine

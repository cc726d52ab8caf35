#include "support/databases.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <functional>
#include <stdexcept>

#include "engine/connection.h"
#include "engine/database.h"
#include "engine/jet_collation.h"
#include "engine/jet_dialect.h"
#include "support/paths.h"

namespace testsupport {

namespace {

void execOn(sqlite3* db, const QString& sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const std::string message = error ? error : sqlite3_errmsg(db);
        sqlite3_free(error);
        throw std::runtime_error(message);
    }
}

QVariant columnValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
            return QVariant(qint64(sqlite3_column_int64(statement, column)));
        case SQLITE_FLOAT:
            return QVariant(sqlite3_column_double(statement, column));
        case SQLITE_TEXT:
            return QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                sqlite3_column_bytes(statement, column));
        case SQLITE_BLOB:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(statement, column)),
                              sqlite3_column_bytes(statement, column));
        default:
            return QVariant();
    }
}

// Runs sql and hands each row's statement to takeRow.
void eachRow(sqlite3* db, const QString& sql, const std::function<void(sqlite3_stmt*)>& takeRow) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(db));
    }
    int rc = SQLITE_ROW;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW)
        takeRow(statement);
    sqlite3_finalize(statement);
    if (rc != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(db));
    }
}

// The first column of the first row as SQLite writes it as text.
QString queryOn(sqlite3* db, const QString& sql) {
    QString first;
    bool read = false;
    eachRow(db, sql, [&](sqlite3_stmt* statement) {
        if (!read) {
            first =
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
            read = true;
        }
    });
    return first;
}

int engineOrder(void*, int lengthA, const void* a, int lengthB, const void* b) {
    return engine::compareJetText({static_cast<const char*>(a), size_t(lengthA)},
                                  {static_cast<const char*>(b), size_t(lengthB)});
}

// A connection as earlier versions had it: the engine's order installed as NOCASE.
class OldVersionConnection : public SqliteFile {
  public:
    explicit OldVersionConnection(const QString& path) : SqliteFile(path) {
        sqlite3_create_collation_v2(db(), "NOCASE", SQLITE_UTF8, nullptr, engineOrder, nullptr);
    }
};

}  // namespace

SqliteFile::SqliteFile(const QString& path, SqliteOptions options) {
    const int flags =
        options.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db_, flags, nullptr) != SQLITE_OK) {
        const std::string message = sqlite3_errmsg(db_);
        sqlite3_close(db_);
        throw std::runtime_error("cannot open " + path.toStdString() + ": " + message);
    }
    if (!options.plain) {
        // The engine's text order, so indexes built here agree with the engine's.
        engine::registerJetFunctions(db_);
    }
}

SqliteFile::~SqliteFile() {
    sqlite3_close(db_);
}

void SqliteFile::exec(const QString& sql) const {
    execOn(db_, sql);
}

QString SqliteFile::value(const QString& sql) const {
    return queryOn(db_, sql);
}

QList<QVariantList> SqliteFile::rows(const QString& sql) const {
    QList<QVariantList> rows;
    eachRow(db_, sql, [&](sqlite3_stmt* statement) {
        QVariantList row;
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            row << columnValue(statement, i);
        rows << row;
    });
    return rows;
}

QStringList SqliteFile::lines(const QString& sql) const {
    QStringList lines;
    eachRow(db_, sql, [&](sqlite3_stmt* statement) {
        QStringList columns;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
            columns << (text != nullptr ? QString::fromUtf8(text) : QStringLiteral("<null>"));
        }
        lines << columns.join(u'|');
    });
    return lines;
}

void makeOldLayout(const QString& path) {
    OldVersionConnection connection(path);
    connection.exec(
        "BEGIN; PRAGMA writable_schema = ON; "
        "UPDATE sqlite_master SET sql = replace(sql, 'COLLATE MIXORAMA_TEXT', 'COLLATE NOCASE'); "
        "PRAGMA writable_schema = OFF; COMMIT;");
    // A schema changed behind SQLite's back counts as changed once its version moves on.
    const qint64 next = connection.value("PRAGMA schema_version").toLongLong() + 1;
    connection.exec(QStringLiteral("PRAGMA schema_version = %1").arg(next));
}

QString oldOrderIntegrityCheck(const QString& path) {
    try {
        return OldVersionConnection(path).value("PRAGMA integrity_check");
    } catch (const std::runtime_error& error) {
        return QString::fromUtf8(error.what());
    }
}

QString plainSqlite(const QString& path, const QString& sql) {
    try {
        const QStringList rows = SqliteFile(path, {.plain = true}).lines(sql);
        return rows.isEmpty() ? QStringLiteral("ok") : rows[0].section(u'|', 0, 0);
    } catch (const std::runtime_error& error) {
        return QString::fromUtf8(error.what());
    }
}

void createCompilationDatabase(const QString& path) {
    QFile schema(testsupport::sourcePath("resources/template.sql"));
    if (!schema.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("template.sql not found");
    }
    execRaw(path, QString::fromUtf8(schema.readAll()));
}

void createReclaimableDatabase(const QString& path, int count, int notesLength, int gap) {
    createCompilationDatabase(path);
    execRaw(path, QStringLiteral(R"sql(
        WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1)
        INSERT INTO Compilation (Name, Format, C_Length, Notes)
        SELECT 'Compilation ' || i, 'MD', 74, printf('%.%2c', 'n') FROM n;
        DELETE FROM Compilation WHERE CompilationID_P % %3 = 0;
    )sql")
                      .arg(count)
                      .arg(notesLength)
                      .arg(gap));
}

void execRaw(const QString& path, const QString& sql) {
    SqliteFile(path).exec(sql);
}

QString queryRaw(const QString& path, const QString& sql) {
    return SqliteFile(path).value(sql);
}

void execOnConnection(const engine::Database& database, const QString& sql) {
    execOn(database.connection()->db(), sql);
}

QString queryOnConnection(const engine::Database& database, const QString& sql) {
    return queryOn(database.connection()->db(), sql);
}

WriteLock::WriteLock(const QString& path) : file_(path, {.plain = true}) {
    file_.exec(QStringLiteral("BEGIN IMMEDIATE"));
}

WriteLock::~WriteLock() {
    sqlite3_exec(file_.db(), "ROLLBACK", nullptr, nullptr, nullptr);
}

QString integrityCheck(const QString& path) {
    return queryRaw(path, "PRAGMA integrity_check");
}

// The change runs on a copy with a cache too small to hold it, so that its pages reach the copy's
// file and journal while it is still open; taking both files at that moment is what a kill leaves.
void leaveInterruptedChange(const QString& path, const QString& sql) {
    const QString writer = path + QStringLiteral(".writer");
    const QString writerJournal = writer + QStringLiteral("-journal");
    QFile::remove(writer);
    if (!QFile::copy(path, writer)) {
        throw std::runtime_error("cannot copy " + path.toStdString());
    }
    {
        SqliteFile connection(writer);
        connection.exec("PRAGMA cache_size = 1; BEGIN; " + sql);
        QFile::remove(path);
        if (!QFile::exists(writerJournal) || !QFile::copy(writer, path) ||
            !QFile::copy(writerJournal, path + QStringLiteral("-journal"))) {
            throw std::runtime_error("no journal to leave behind for " + path.toStdString());
        }
        connection.exec("ROLLBACK");
    }
    QFile::remove(writer);
}

QStringList rowCounts(const QString& path) {
    const SqliteFile file(path);
    QStringList counts;
    for (const QString& table : file.lines("SELECT name FROM sqlite_master WHERE type = 'table' "
                                           "AND name NOT LIKE 'sqlite_%' ORDER BY rowid")) {
        counts << table + "=" + file.value("SELECT count(*) FROM \"" + table + "\"");
    }
    return counts;
}

}  // namespace testsupport

QList<QVariantList> sqliteRows(const QString& file, const QString& sql) {
    try {
        return testsupport::SqliteFile(file, {.readOnly = true}).rows(sql);
    } catch (const std::runtime_error&) {
        return {};
    }
}

#include "support/databases.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <stdexcept>

#include "engine/connection.h"
#include "engine/database.h"
#include "engine/jet_collation.h"
#include "engine/jet_dialect.h"
#include "support/paths.h"

namespace testsupport {

namespace {

class RawConnection {
  public:
    explicit RawConnection(const QString& path) {
        if (sqlite3_open(path.toUtf8().constData(), &db_) != SQLITE_OK) {
            throw std::runtime_error("cannot open " + path.toStdString());
        }
        // The engine's text order, so indexes built here agree with the engine's.
        engine::registerJetFunctions(db_);
    }
    ~RawConnection() { sqlite3_close(db_); }
    sqlite3* db() const { return db_; }

  private:
    sqlite3* db_ = nullptr;
};

void execOn(sqlite3* db, const QString& sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const std::string message = error ? error : "unknown error";
        sqlite3_free(error);
        throw std::runtime_error(message);
    }
}

QString queryOn(sqlite3* db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(db));
    }
    QString result;
    if (sqlite3_step(statement) == SQLITE_ROW) {
        result =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    }
    sqlite3_finalize(statement);
    return result;
}

int engineOrder(void*, int lengthA, const void* a, int lengthB, const void* b) {
    return engine::compareJetText({static_cast<const char*>(a), size_t(lengthA)},
                                  {static_cast<const char*>(b), size_t(lengthB)});
}

// A connection as earlier versions had it: the engine's order installed as NOCASE.
class OldVersionConnection : public RawConnection {
  public:
    explicit OldVersionConnection(const QString& path) : RawConnection(path) {
        sqlite3_create_collation_v2(db(), "NOCASE", SQLITE_UTF8, nullptr, engineOrder, nullptr);
    }
};

}  // namespace

void makeOldLayout(const QString& path) {
    OldVersionConnection connection(path);
    execOn(connection.db(),
           "BEGIN; PRAGMA writable_schema = ON; "
           "UPDATE sqlite_master SET sql = replace(sql, 'COLLATE MIXORAMA_TEXT', "
           "'COLLATE NOCASE'); "
           "PRAGMA writable_schema = OFF; COMMIT;");
    // A schema changed behind SQLite's back counts as changed once its version moves on.
    sqlite3_stmt* version = nullptr;
    sqlite3_prepare_v2(connection.db(), "PRAGMA schema_version", -1, &version, nullptr);
    sqlite3_step(version);
    const qint64 next = sqlite3_column_int64(version, 0) + 1;
    sqlite3_finalize(version);
    execOn(connection.db(), QStringLiteral("PRAGMA schema_version = %1").arg(next));
}

QString oldOrderIntegrityCheck(const QString& path) {
    OldVersionConnection connection(path);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(connection.db(), "PRAGMA integrity_check", -1, &statement, nullptr);
    const QString result =
        sqlite3_step(statement) == SQLITE_ROW
            ? QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)))
            : QString::fromUtf8(sqlite3_errmsg(connection.db()));
    sqlite3_finalize(statement);
    return result;
}

QString plainSqlite(const QString& path, const QString& sql) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    char* error = nullptr;
    QString firstValue;
    const auto keepFirst = [](void* kept, int, char** values, char**) {
        auto* text = static_cast<QString*>(kept);
        if (text->isNull()) {
            *text = QString::fromUtf8(values[0] != nullptr ? values[0] : "");
        }
        return 0;
    };
    const int rc = sqlite3_exec(db, sql.toUtf8().constData(), keepFirst, &firstValue, &error);
    const QString outcome = rc != SQLITE_OK       ? QString::fromUtf8(error)
                            : firstValue.isNull() ? QStringLiteral("ok")
                                                  : firstValue;
    sqlite3_free(error);
    sqlite3_close(db);
    return outcome;
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
    RawConnection connection(path);
    execOn(connection.db(), sql);
}

QString queryRaw(const QString& path, const QString& sql) {
    RawConnection connection(path);
    return queryOn(connection.db(), sql);
}

void execOnConnection(const engine::Database& database, const QString& sql) {
    execOn(database.connection()->db(), sql);
}

QString queryOnConnection(const engine::Database& database, const QString& sql) {
    return queryOn(database.connection()->db(), sql);
}

WriteLock::WriteLock(const QString& path) {
    if (sqlite3_open(path.toUtf8().constData(), &db_) != SQLITE_OK) {
        throw std::runtime_error("cannot open " + path.toStdString());
    }
    execOn(db_, QStringLiteral("BEGIN IMMEDIATE"));
}

WriteLock::~WriteLock() {
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(db_);
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
        RawConnection connection(writer);
        execOn(connection.db(), "PRAGMA cache_size = 1; BEGIN; " + sql);
        QFile::remove(path);
        if (!QFile::exists(writerJournal) || !QFile::copy(writer, path) ||
            !QFile::copy(writerJournal, path + QStringLiteral("-journal"))) {
            throw std::runtime_error("no journal to leave behind for " + path.toStdString());
        }
        execOn(connection.db(), "ROLLBACK");
    }
    QFile::remove(writer);
}

QStringList rowCounts(const QString& path) {
    QStringList tables;
    {
        RawConnection connection(path);
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(connection.db(),
                           "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT "
                           "LIKE 'sqlite_%' ORDER BY rowid",
                           -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            tables << QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        }
        sqlite3_finalize(statement);
    }
    QStringList counts;
    for (const QString& table : tables) {
        counts << table + "=" + queryRaw(path, "SELECT count(*) FROM \"" + table + "\"");
    }
    return counts;
}

}  // namespace testsupport

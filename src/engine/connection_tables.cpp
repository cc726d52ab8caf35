#include "engine/connection_tables.h"

#include <sqlite3.h>

#include <QRegularExpression>
#include <QStringList>

#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"

namespace engine {

namespace {

const char* const kConnectionTables[] = {"TempSource"};

bool isConnectionTable(const char* name) {
    if (name == nullptr) {
        return false;
    }
    for (const char* table : kConnectionTables) {
        if (sqlite3_stricmp(name, table) == 0) {
            return true;
        }
    }
    return false;
}

// The table the guard refused last on this thread, for the error of the statement it refused.
thread_local QString refusedTable;

// A table of the file under a connection table's name is a leftover: no statement may create one,
// read a value or row id of it, or write it. (SQLite names no schema when a statement reads no
// column of a table, as Count(*) does; such a statement learns at most how many rows there are.)
int guard(void*, int action, const char* table, const char*, const char* schema, const char*) {
    switch (action) {
        case SQLITE_CREATE_TABLE:
        case SQLITE_READ:
        case SQLITE_INSERT:
        case SQLITE_UPDATE:
        case SQLITE_DELETE:
            break;
        default:
            return SQLITE_OK;
    }
    if (schema == nullptr || sqlite3_stricmp(schema, "main") != 0 || !isConnectionTable(table)) {
        return SQLITE_OK;
    }
    refusedTable = QString::fromUtf8(table);
    return SQLITE_DENY;
}

}  // namespace

bool isConnectionTable(const QString& name) {
    return isConnectionTable(name.toUtf8().constData());
}

QString schemaOfTable(const QString& name) {
    return isConnectionTable(name) ? QStringLiteral("temp") : QStringLiteral("main");
}

QString qualifiedTable(const QString& name) {
    return schemaOfTable(name) + QLatin1Char('.') + quoteName(name);
}

bool readsConnectionTable(const QString& sql) {
    static const QRegularExpression name(QStringLiteral("\"((?:[^\"]|\"\")+)\"|\\b\\w+\\b"));
    for (auto it = name.globalMatch(sql); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString word =
            match.capturedStart(1) >= 0
                ? match.captured(1).replace(QStringLiteral("\"\""), QStringLiteral("\""))
                : match.captured(0);
        if (isConnectionTable(word)) {
            return true;
        }
    }
    return false;
}

namespace {

bool fileHasTable(sqlite3* db, const char* table) {
    Statement query(db, QStringLiteral("SELECT 1 FROM main.sqlite_master WHERE type = 'table' AND "
                                       "lower(name) = lower(?)"));
    query.bind(1, QString::fromUtf8(table));
    return query.step();
}

}  // namespace

void dropLeftoverConnectionTables(sqlite3* db) {
    for (const char* table : kConnectionTables) {
        if (!fileHasTable(db, table)) {
            continue;
        }
        try {
            execSqlite(db, QStringLiteral("DROP TABLE main.%1").arg(quoteName(table)));
        } catch (const JetError&) {
            // Another writer holds the file, or it cannot be written: the leftover stays, and
            // the guard keeps every statement away from it.
        }
    }
}

void guardConnectionTables(sqlite3* db) {
    sqlite3_set_authorizer(db, guard, nullptr);
}

QString refusedConnectionTable() {
    return refusedTable;
}

}  // namespace engine

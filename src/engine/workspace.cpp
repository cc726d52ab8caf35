#include "engine/workspace.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>

#include "engine/connection.h"
#include "engine/foreign_tables.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"

namespace engine {

Workspace& Workspace::defaultWorkspace() {
    static Workspace workspace;
    return workspace;
}

Database Workspace::openDatabase(const QString& path, bool readOnly) {
    if (!QFileInfo::exists(path)) {
        throw JetError(jet::kFileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    }
    ForeignTableReader* reader = foreignTableReader();
    if (reader != nullptr && reader->canRead(path)) {
        Database database(Connection::openForeign(path, reader->tableNames(path)));
        opened_.push_back(database);
        return database;
    }
    Database database(Connection::open(path, readOnly));
    opened_.push_back(database);
    return database;
}

void Workspace::close() {
    for (Database& database : opened_) {
        database.close();
    }
    opened_.clear();
}

void Workspace::compactDatabase(const QString& source, const QString& destination) {
    if (QFileInfo::exists(destination)) {
        throw JetError(jet::kDatabaseExists, QStringLiteral("Database already exists."));
    }
    std::shared_ptr<Connection> connection = Connection::open(source, true);
    Statement vacuum(connection->db(), QStringLiteral("VACUUM INTO ?"));
    vacuum.bind(1, destination);
    try {
        vacuum.exec();
    } catch (const JetError&) {
        QFile::remove(destination);  // it did not exist before: a partial copy is ours to remove
        throw;
    }
}

void Workspace::repairDatabase(const QString& path) {
    std::shared_ptr<Connection> connection = Connection::open(path, false);
    // Indexes are rebuilt in any case: one written by another program may order text by other
    // rules than the engine's.
    execSqlite(connection->db(), QStringLiteral("REINDEX"));
    Statement check(connection->db(), QStringLiteral("PRAGMA integrity_check"));
    if (!check.step() || check.text(0) != QLatin1String("ok")) {
        throw JetError(
            jet::kNotADatabase,
            QStringLiteral("The database '%1' is damaged and cannot be repaired.").arg(path));
    }
}

}  // namespace engine

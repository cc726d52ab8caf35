#include "engine/workspace.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>

#include "engine/connection.h"
#include "engine/connection_tables.h"
#include "engine/database_file.h"
#include "engine/foreign_tables.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "engine/text_collation_layout.h"

namespace engine {

Workspace& Workspace::defaultWorkspace() {
    static Workspace workspace;
    return workspace;
}

Database Workspace::openDatabase(const QString& path, bool readOnly) {
    requireRegularFile(path);  // before any reader looks into it
    ForeignTableReader* reader = foreignTableReader();
    if (reader != nullptr && reader->canRead(path)) {
        Database database(Connection::openForeign(path, reader->tableNames(path)));
        opened_.push_back(database);
        return database;
    }
    std::shared_ptr<Connection> connection = Connection::open(path, readOnly);
    if (!readOnly && declaresNocase(connection->db())) {
        throw JetError(jet::kCannotOpenFile,
                       QStringLiteral("The database '%1' was written by an earlier version and "
                                      "keeps its text in an order that this version must "
                                      "convert before it writes the file. Compact the database "
                                      "to convert it.")
                           .arg(path));
    }
    if (!readOnly) {
        dropLeftoverConnectionTables(connection->db());
    }
    guardConnectionTables(connection->db());
    Database database(connection);
    opened_.push_back(database);
    return database;
}

void Workspace::close() {
    for (Database& database : opened_) {
        database.close();
    }
    opened_.clear();
}

namespace {

// The failure of a copy named by its destination: the source was read, the copy not written.
JetError copyFailure(const JetError& error, const QString& destination) {
    if (error.number() == jet::kFileNotFound) {
        return JetError(jet::kCannotOpenFile,
                        QStringLiteral("Cannot create the file '%1'. Make sure its folder exists "
                                       "and may be written to.")
                            .arg(destination));
    }
    return JetError(error.number(), QStringLiteral("%1 The file '%2' could not be written.")
                                        .arg(error.description(), destination));
}

// Repairing and compacting write the file and its folder.
void refuseReadOnly(const QString& path) {
    if (QFileInfo::exists(path) && isWriteProtected(path)) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("The database '%1' or its folder is read-only: it cannot be "
                                      "repaired or compacted in place.")
                           .arg(path));
    }
}

}  // namespace

void Workspace::compactDatabase(const QString& source, const QString& destination) {
    requireNewFile(destination);
    std::shared_ptr<Connection> connection = Connection::open(source, true);
    Statement vacuum(connection->db(), QStringLiteral("VACUUM INTO ?"));
    vacuum.bind(1, destination);
    try {
        vacuum.exec();
    } catch (const JetError& error) {
        // It did not exist before: a partial copy and its journal are ours to remove.
        QFile::remove(destination);
        QFile::remove(destination + QStringLiteral("-journal"));
        throw copyFailure(error, destination);
    }
}

std::shared_ptr<FileUse> Workspace::useExclusively(const QString& path) {
    refuseReadOnly(path);
    return FileUse::takeExclusive(path);
}

void Workspace::repairDatabase(const QString& path) {
    refuseReadOnly(path);
    std::shared_ptr<Connection> connection = Connection::open(path, false);
    // Indexes are rebuilt in any case: one written by another program may order text by other
    // rules than the engine's.
    if (reindexAndCheck(connection->db()) != QLatin1String("ok")) {
        throw JetError(
            jet::kNotADatabase,
            QStringLiteral("The database '%1' is damaged and cannot be repaired.").arg(path));
    }
}

}  // namespace engine

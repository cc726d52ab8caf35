#include "engine/connection.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "engine/connection_tables.h"
#include "engine/database_file.h"
#include "engine/foreign_tables.h"
#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "engine/scratch_files.h"
#include "engine/sqlite_statement.h"

namespace engine {

namespace {

bool isSqliteFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    return file.read(16) == QByteArray("SQLite format 3\0", 16);
}

QString fileUri(const QString& path, bool readOnly) {
    QString uri = QStringLiteral("file:") + QString::fromUtf8(QUrl::toPercentEncoding(
                                                QFileInfo(path).absoluteFilePath(), "/"));
    if (readOnly) {
        uri += QStringLiteral("?mode=ro");
    }
    return uri;
}

JetError objectNotFound(const QString& table) {
    return JetError(jet::kObjectNotFound,
                    QStringLiteral("The Microsoft Jet database engine could not find the object "
                                   "'%1'. Make sure the object exists and that you spell its name "
                                   "and the path name correctly.")
                        .arg(table));
}

bool mayWrite(const QFileInfo& info) {
    constexpr QFile::Permissions kAnyWrite =
        QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return info.isWritable() && (info.permissions() & kAnyWrite);
}

JetError interruptedChangeInReadOnlyFile(const QString& path) {
    return JetError(jet::kCannotOpenFile,
                    QStringLiteral("The database '%1' holds an interrupted change that must be "
                                   "rolled back before the file can be opened, but the file or "
                                   "its folder is read-only. Make both writable and try again.")
                        .arg(path));
}

// The first read tells a database from other files, but also meets a file that is busy or cannot
// be read: each is named for what it is.
JetError firstReadFailure(sqlite3* db, int rc, const QString& path) {
    const QString cause = QString::fromUtf8(sqlite3_errmsg(db));
    switch (rc & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return JetError(jet::kLocked,
                            QStringLiteral("Could not read '%1'; currently locked: another "
                                           "program is writing to it. Try again when it has "
                                           "finished.")
                                .arg(path));
        case SQLITE_READONLY:
            return JetError(jet::kReadOnly,
                            QStringLiteral("The database '%1' must be written to before it can "
                                           "be read (%2), but it or its folder is read-only.")
                                .arg(path, cause));
        case SQLITE_IOERR:
        case SQLITE_FULL:
        case SQLITE_NOMEM:
            return JetError(
                jet::kDiskError,
                QStringLiteral("Disk or network error while reading '%1' (%2).").arg(path, cause));
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return JetError(
                jet::kCannotOpenFile,
                QStringLiteral("The file '%1' cannot be opened (%2).").arg(path, cause));
        default:  // not a database, a damaged one, or a format this engine does not know
            return JetError(jet::kNotADatabase,
                            QStringLiteral("Unrecognized database format '%1'.").arg(path));
    }
}

}  // namespace

bool isWriteProtected(const QString& path) {
    const QFileInfo file(QFileInfo(path).canonicalFilePath());
    return !mayWrite(file) || !mayWrite(QFileInfo(file.absolutePath()));
}

Connection::Connection(sqlite3* db, QString path, bool readOnly, std::shared_ptr<FileUse> use)
    : db_(db), use_(std::move(use)), path_(std::move(path)), readOnly_(readOnly) {}

std::shared_ptr<Connection> Connection::open(const QString& path, bool readOnly) {
    // Taken before SQLite opens the file, so that it opens the file the use is of.
    const std::shared_ptr<FileUse> use = FileUse::share(path);
    std::shared_ptr<Connection> connection = openFile(path, readOnly, use);
    if (connection == nullptr) {
        // A writer stopped in the middle of a change (killed, power lost) left its journal beside
        // the file. Only a read-write connection can put the old pages back; until then a
        // read-only one cannot read the file at all.
        if (isWriteProtected(path)) {
            throw interruptedChangeInReadOnlyFile(path);
        }
        openFile(path, false, use);  // its first read rolls the change back
        connection = openFile(path, true, use);
        if (connection == nullptr) {
            throw interruptedChangeInReadOnlyFile(path);
        }
    }
    registerJetFunctions(connection->db_);
    execSqlite(connection->db_, QStringLiteral("PRAGMA foreign_keys = ON"));
    return connection;
}

// Opens the file and reads its schema, which tells a database from any other file. Returns
// nothing when a read-only connection finds an interrupted change it cannot roll back.
std::shared_ptr<Connection> Connection::openFile(const QString& path, bool readOnly,
                                                 const std::shared_ptr<FileUse>& use) {
    sqlite3* db = nullptr;
    const int flags = (readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_URI;
    const QByteArray uri = fileUri(path, false).toUtf8();
    int rc = sqlite3_open_v2(uri.constData(), &db, flags, nullptr);
    std::shared_ptr<Connection> connection(new Connection(db, path, readOnly, use));
    if (rc != SQLITE_OK) {
        throwSqliteError(db, rc, path);
    }
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_timeout(db, 2000);
    rc = sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
    if (rc == SQLITE_READONLY_ROLLBACK) {
        if (!readOnly) {
            throw interruptedChangeInReadOnlyFile(path);  // SQLite fell back to reading only
        }
        return nullptr;
    }
    if (rc != SQLITE_OK) {
        throw firstReadFailure(db, rc, path);
    }
    return connection;
}

std::shared_ptr<Connection> Connection::openForeign(const QString& path,
                                                    const QStringList& tables) {
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(":memory:", &db, SQLITE_OPEN_READWRITE, nullptr);
    std::shared_ptr<Connection> connection(new Connection(db, path, true));
    if (rc != SQLITE_OK) {
        throwSqliteError(db, rc, path);
    }
    connection->foreign_ = true;
    connection->foreignTables_ = tables;
    return connection;
}

Connection::~Connection() {
    close();
}

sqlite3* Connection::db() const {
    if (db_ == nullptr) {
        throw JetError(jet::kInvalidOperation, QStringLiteral("Object invalid or no longer set."));
    }
    return db_;
}

void Connection::close() {
    if (db_ == nullptr) {
        return;
    }
    // The links' views and attachments end with the connection; what must not outlive it are
    // the scratch copies of foreign files.
    for (const QString& copy : copiedFiles_) {
        removeScratchFile(copy);
    }
    links_.clear();
    attachedFiles_.clear();
    copiedFiles_.clear();
    incompleteCopies_.clear();
    linkedFileTables_.clear();
    sqlite3_close_v2(db_);
    db_ = nullptr;
    use_.reset();
}

QStringList Connection::tableNames() {
    QStringList names = foreignTables_;
    if (!foreign_) {
        // The file's tables, then this connection's own; a leftover of earlier versions under
        // a connection table's name is no table of the database.
        Statement query(db(),
                        QStringLiteral("SELECT name, 0, rowid FROM main.sqlite_master WHERE type = "
                                       "'table' AND substr(name, 1, 7) <> 'sqlite_' UNION ALL "
                                       "SELECT name, 1, rowid FROM temp.sqlite_master WHERE "
                                       "type = 'table' ORDER BY 2, 3"));
        while (query.step()) {
            const QString name = query.text(0);
            if (isConnectionTable(name) == (query.int64(1) == 1)) {
                names << name;
            }
        }
    }
    for (const LinkedTable& link : links_) {
        names << link.name;
    }
    return names;
}

bool Connection::hasLocalTable(const QString& name) {
    if (foreign_) {
        return foreignTables_.contains(name, Qt::CaseInsensitive);
    }
    Statement query(db(), QStringLiteral("SELECT 1 FROM %1.sqlite_master WHERE type = 'table' AND "
                                         "lower(name) = lower(?)")
                              .arg(schemaOfTable(name)));
    query.bind(1, name);
    return query.step();
}

bool Connection::hasView(const QString& name) {
    return hasFileView(name) || hasConnectionView(name);
}

bool Connection::hasFileView(const QString& name) {
    Statement query(db(), QStringLiteral("SELECT 1 FROM main.sqlite_master WHERE type = 'view' AND "
                                         "lower(name) = lower(?)"));
    query.bind(1, name);
    return query.step();
}

bool Connection::hasConnectionView(const QString& name) {
    return connectionViewNames().contains(name, Qt::CaseInsensitive);
}

QStringList Connection::connectionViewNames() {
    QStringList names;
    if (foreign_) {
        return names;
    }
    // The temporary schema's views are the links' and the connection's queries.
    Statement query(db(), QStringLiteral("SELECT name FROM temp.sqlite_master WHERE type = 'view' "
                                         "ORDER BY name"));
    while (query.step()) {
        const QString name = query.text(0);
        if (!links_.contains(name.toLower())) {
            names << name;
        }
    }
    return names;
}

void Connection::attach(const QString& file, const QString& schema) {
    Statement statement(db(), QStringLiteral("ATTACH DATABASE ? AS %1").arg(quoteName(schema)));
    statement.bind(1, fileUri(file, true));
    statement.exec();
}

bool Connection::schemaHasTable(const QString& schema, const QString& table) {
    Statement exists(db(), QStringLiteral("SELECT 1 FROM %1.sqlite_master WHERE type IN "
                                          "('table','view') AND lower(name) = lower(?)")
                               .arg(quoteName(schema)));
    exists.bind(1, table);
    return exists.step();
}

ForeignTableReader& Connection::readerFor(const QString& file) {
    ForeignTableReader* reader = foreignTableReader();
    if (!QFileInfo::exists(file)) {
        throw JetError(jet::kFileNotFound, QStringLiteral("Could not find file '%1'.").arg(file));
    }
    if (reader == nullptr || !reader->canRead(file)) {
        throw JetError(jet::kNotADatabase,
                       QStringLiteral("Unrecognized database format '%1'.").arg(file));
    }
    return *reader;
}

// Named in this process's owner file before the reader writes it, so that a copy left by a
// killed run goes at the next start.
QString Connection::newScratchFile() {
    return newScratchPath(QDir::tempPath(), QStringLiteral("mixorama-links-"),
                          QStringLiteral(".sqlite"));
}

// Copies tables of a foreign file into its scratch copy, which is attached before and after.
QString Connection::copyForeignTables(const QString& file, const QStringList& tables) {
    ForeignTableReader& reader = readerFor(file);
    const QString key = QFileInfo(file).absoluteFilePath();
    QString schema = attachedFiles_.value(key);
    const bool fresh = schema.isEmpty();
    const QString copy = fresh ? newScratchFile() : copiedFiles_.value(schema);
    if (!fresh) {
        execSqlite(db(), QStringLiteral("DETACH DATABASE %1").arg(quoteName(schema)));
    }
    std::vector<IncompleteTable> incomplete;
    try {
        incomplete = reader.copyTables(file, tables, copy);
    } catch (...) {
        if (fresh) {
            removeScratchFile(copy);
        } else {
            attach(copy, schema);
        }
        throw;
    }
    if (fresh) {
        schema = QStringLiteral("link%1").arg(++attachCounter_);
        attachedFiles_.insert(key, schema);
        copiedFiles_.insert(schema, copy);
    }
    std::vector<IncompleteTable>& known = incompleteCopies_[schema];
    for (const QString& table : tables) {  // copied afresh: what an earlier copy lacked is gone
        std::erase_if(known, [&](const IncompleteTable& t) {
            return t.table.compare(table, Qt::CaseInsensitive) == 0;
        });
    }
    known.insert(known.end(), incomplete.begin(), incomplete.end());
    attach(copy, schema);
    return schema;
}

std::vector<IncompleteTable> Connection::incompleteLinks() const {
    std::vector<IncompleteTable> found;
    for (const LinkedTable& link : links_) {
        for (const IncompleteTable& table : incompleteCopies_.value(link.schema)) {
            if (table.table.compare(link.sourceTableName, Qt::CaseInsensitive) == 0) {
                found.push_back(table);
            }
        }
    }
    return found;
}

void Connection::prefetchLinkedTables(const QString& file, const QStringList& tables) {
    requireRegularFile(file);  // reading a FIFO would wait for ever
    if (isSqliteFile(file)) {
        return;  // attached as it is, nothing to copy
    }
    const QStringList present = readerFor(file).tableNames(file);
    QStringList wanted;
    for (const QString& table : tables) {
        if (present.contains(table, Qt::CaseInsensitive)) {
            wanted << table;
        }
    }
    linkedFileTables_.insert(QFileInfo(file).absoluteFilePath(), present);
    if (!wanted.isEmpty()) {
        copyForeignTables(file, wanted);
    }
}

QString Connection::attachLinkedFile(const QString& file, const QString& sourceTable) {
    requireRegularFile(file);
    const QString key = QFileInfo(file).absoluteFilePath();
    QString schema = attachedFiles_.value(key);
    if (isSqliteFile(file)) {
        if (schema.isEmpty()) {
            schema = QStringLiteral("link%1").arg(++attachCounter_);
            attach(key, schema);
            attachedFiles_.insert(key, schema);
        }
        return schema;
    }
    if (!schema.isEmpty() && schemaHasTable(schema, sourceTable)) {
        return schema;  // copied with the others
    }
    const auto known = linkedFileTables_.constFind(key);
    if (known != linkedFileTables_.constEnd() &&
        !known->contains(sourceTable, Qt::CaseInsensitive)) {
        throw objectNotFound(sourceTable);
    }
    return copyForeignTables(file, {sourceTable});
}

void Connection::addLink(const QString& name, const QString& file, const QString& sourceTable) {
    if (links_.contains(name.toLower()) || hasLocalTable(name)) {
        throw JetError(jet::kTableExists, QStringLiteral("Table '%1' already exists.").arg(name));
    }
    const QString schema = attachLinkedFile(file, sourceTable);
    Statement exists(db(), QStringLiteral("SELECT name FROM %1.sqlite_master WHERE type IN "
                                          "('table','view') AND lower(name) = lower(?)")
                               .arg(quoteName(schema)));
    exists.bind(1, sourceTable);
    if (!exists.step()) {
        detachIfUnused(schema);
        throw objectNotFound(sourceTable);
    }
    const QString realSource = exists.text(0);
    execSqlite(db(), QStringLiteral("CREATE TEMP VIEW %1 AS SELECT * FROM %2.%3")
                         .arg(quoteName(name), quoteName(schema), quoteName(realSource)));
    links_.insert(name.toLower(), LinkedTable{name, file, sourceTable, schema});
}

bool Connection::removeLink(const QString& name) {
    const auto it = links_.find(name.toLower());
    if (it == links_.end()) {
        return false;
    }
    const LinkedTable link = it.value();
    links_.erase(it);
    execSqlite(db(), QStringLiteral("DROP VIEW IF EXISTS temp.%1").arg(quoteName(link.name)));
    detachIfUnused(link.schema);
    return true;
}

void Connection::detachIfUnused(const QString& schema) {
    for (const LinkedTable& link : links_) {
        if (link.schema == schema) {
            return;
        }
    }
    execSqlite(db(), QStringLiteral("DETACH DATABASE %1").arg(quoteName(schema)));
    for (auto it = attachedFiles_.begin(); it != attachedFiles_.end(); ++it) {
        if (it.value() == schema) {
            attachedFiles_.erase(it);
            break;
        }
    }
    incompleteCopies_.remove(schema);
    const QString copy = copiedFiles_.take(schema);
    if (!copy.isEmpty()) {
        removeScratchFile(copy);
    }
}

}  // namespace engine

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>

#include <vector>

#include "engine/field_type.h"
#include "engine/foreign_tables.h"

namespace engine {
class FileUse;
}  // namespace engine

struct sqlite3;

namespace engine {

// A linked table: a local name for a table of another database file.
struct LinkedTable {
    QString name;             // local name
    QString file;             // the linked database file
    QString sourceTableName;  // the table's name in that file
    QString schema;           // the attached SQLite schema that holds its rows
};

// True when the file or its folder may not be written: this process lacks the right, or the file
// has no write permission at all (a file marked read-only stays so even for an administrator).
// A symbolic link is judged by the file it points to.
bool isWriteProtected(const QString& path);

// One open database file: the SQLite connection and the linked tables made in it.
// Shared by the Database handle and every record set opened on it.
class Connection {
  public:
    // Opens an SQLite database file; throws JetError (3024 missing, 3343 no regular file or
    // not a database, 3218 locked by a writer, 3045 compacted by another process all the while
    // it waited). The connection shares the use of the file (FileUse) until it closes. A change
    // left unfinished in the file by a writer that was stopped is rolled back first, even when
    // the file is opened read-only; 3051 when the file or its folder is write-protected, which
    // leaves the change in place.
    static std::shared_ptr<Connection> open(const QString& path, bool readOnly);
    // A read-only view of a file the engine cannot open itself (an Access file): it lists the
    // file's tables but holds no rows.
    static std::shared_ptr<Connection> openForeign(const QString& path, const QStringList& tables);
    ~Connection();

    sqlite3* db() const;  // throws JetError when closed
    const QString& path() const { return path_; }
    bool readOnly() const { return readOnly_; }
    bool isForeign() const { return foreign_; }
    bool isOpen() const { return db_ != nullptr; }
    void close();

    // Table names of the file (without system tables), then the linked tables.
    QStringList tableNames();
    const QStringList& foreignTables() const { return foreignTables_; }
    bool hasLocalTable(const QString& name);
    // A query of the file or of this connection (one over a connection table).
    bool hasView(const QString& name);
    bool hasFileView(const QString& name);
    bool hasConnectionView(const QString& name);
    QStringList connectionViewNames();

    const QHash<QString, LinkedTable>& links() const { return links_; }
    void addLink(const QString& name, const QString& file, const QString& sourceTable);
    // Copies, in one reading of the file, those of the tables that a foreign file holds, so that
    // linking them one by one afterwards reads nothing more.
    void prefetchLinkedTables(const QString& file, const QStringList& tables);
    bool removeLink(const QString& name);
    // The linked tables whose foreign file could not be read whole.
    std::vector<IncompleteTable> incompleteLinks() const;

    int nextSnapshotNumber() { return ++snapshotCounter_; }

  private:
    Connection(sqlite3* db, QString path, bool readOnly, std::shared_ptr<FileUse> use = nullptr);
    static std::shared_ptr<Connection> openFile(const QString& path, bool readOnly,
                                                const std::shared_ptr<FileUse>& use);
    QString attachLinkedFile(const QString& file, const QString& sourceTable);
    QString copyForeignTables(const QString& file, const QStringList& tables);
    void attach(const QString& file, const QString& schema);
    bool schemaHasTable(const QString& schema, const QString& table);
    static ForeignTableReader& readerFor(const QString& file);
    static QString newScratchFile();
    void detachIfUnused(const QString& schema);

    sqlite3* db_ = nullptr;
    std::shared_ptr<FileUse> use_;  // released when the connection closes
    QString path_;
    bool readOnly_ = false;
    bool foreign_ = false;
    QStringList foreignTables_;
    QHash<QString, LinkedTable> links_;             // by lower-cased local name
    QHash<QString, QString> attachedFiles_;         // linked file -> schema
    QHash<QString, QString> copiedFiles_;           // schema -> temporary copy to delete
    QHash<QString, QStringList> linkedFileTables_;  // foreign file -> the tables it holds
    QHash<QString, std::vector<IncompleteTable>> incompleteCopies_;  // by schema
    int attachCounter_ = 0;
    int snapshotCounter_ = 0;
};

}  // namespace engine

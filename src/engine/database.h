#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "engine/field_type.h"
#include "engine/foreign_tables.h"
#include "engine/recordset.h"

namespace engine {

class Connection;

struct FieldDef {
    QString name;
    FieldType type = FieldType::Text;
    int size = 0;  // text length
};

// A table definition to append: a local table with fields, or a linked table whose Connect is
// ";DATABASE=" followed by the file and whose SourceTableName names the table in that file.
// DATABASE= is the last item of Connect: the file name runs to its end, ";" included.
struct TableDef {
    QString name;
    QString connect;
    QString sourceTableName;
    std::vector<FieldDef> fields;
};

// An open database of the default workspace. A light handle: copies share the connection.
class Database {
  public:
    Database() = default;
    explicit Database(std::shared_ptr<Connection> connection);

    bool isOpen() const;
    QString name() const;  // the file path
    bool readOnly() const;
    void close();
    std::shared_ptr<Connection> connection() const;  // throws JetError when closed

    // Runs an action statement in the Jet dialect (INSERT, UPDATE, DELETE, SELECT ... INTO,
    // CREATE/DROP); returns the number of rows it touched.
    int execute(const QString& jetSql);
    // source: a table or query name, or a SELECT in the Jet dialect.
    Recordset openRecordset(const QString& source, RecordsetType type = RecordsetType::Dynaset);

    // Table definitions. A connection table (connection_tables.h) is made, altered and dropped
    // in this connection's temporary schema, whichever way it is made.
    QStringList tableNames() const;  // the file's tables, the connection's, then linked tables
    bool hasTable(const QString& name) const;
    void appendTable(const TableDef& definition);  // linked: throws 3011 for a missing table
    // Appends in order, as appendTable one by one would, reading each linked file only once.
    void appendTables(const std::vector<TableDef>& definitions);
    void deleteTable(const QString& name);  // throws 3265 when there is none
    void appendField(const QString& table, const FieldDef& field);
    QString linkConnect(const QString& table) const;  // ";DATABASE=file" of a linked table, else ""
    // Linked tables of which not every row could be read from their damaged file.
    std::vector<IncompleteTable> incompleteLinks() const;
    void refreshTableDefs() {}  // names are always read afresh; kept for the callers' rhythm

    // Query definitions: a named one is kept as a view, of this connection alone when it reads a
    // connection table (connection_tables.h); an unnamed one runs at once.
    void createQueryDef(const QString& name, const QString& jetSql);
    void deleteQueryDef(const QString& name);
    QStringList queryDefNames() const;

  private:
    std::shared_ptr<Connection> connection_;
};

}  // namespace engine

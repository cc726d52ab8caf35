#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>
#include <QVector>
#include <memory>

#include "engine/recordset.h"

namespace engine {

class Connection;
class Statement;

// The order in which a record set and its clones see the snapshot's rows.
struct RowOrder {
    QVector<qint64> ids;
    int positionOf(qint64 id) const { return static_cast<int>(ids.indexOf(id)); }
};

// The rows of one statement, kept in a temporary table of the connection (one table per
// snapshot, dropped with it). Besides the statement's columns, the table keeps the row ids of
// the base tables the columns come from, so changes can be written back. An updatable record set
// on a whole table of the file copies nothing: its rows are the table's, read by row id.
class Snapshot {
  public:
    Snapshot(std::shared_ptr<Connection> connection, const QString& select, bool updatable);
    ~Snapshot();

    const QVector<FieldInfo>& fields() const { return fields_; }
    int fieldIndex(const QString& name) const;
    const QString& select() const { return select_; }
    bool updatable() const { return updatable_; }
    Connection& connection() const { return *connection_; }
    std::shared_ptr<Connection> sharedConnection() const { return connection_; }

    // Row ids of the snapshot in its own order, or in the order of a Jet ORDER BY list.
    QVector<qint64> ids(const QString& jetOrderBy = QString()) const;
    QSet<qint64> matching(const QString& jetCriterion) const;
    QVector<QVariant> row(qint64 id) const;
    // The values of the rows with these ids, in the ids' order and one row after the other (a
    // row's fields in field order), read by one statement.
    QVector<QVariant> rows(const QVector<qint64>& ids) const;

    // Writes changed fields of a row to the base tables and the snapshot.
    void updateRow(qint64 id, const QVector<QVariant>& values, const QVector<bool>& changed);
    // Inserts a new row into the base tables; returns the snapshot id of the new row.
    qint64 insertRow(const QVector<QVariant>& values, const QVector<bool>& changed);
    void deleteRow(qint64 id);

  private:
    void readFields(const QString& select);
    QString injectRowIds(const QString& select, const QStringList& tables) const;
    void createTable(const QString& select);
    QString rowsTable() const;
    QString idColumn() const;
    QString fromClause() const;
    qint64 baseRowId(qint64 id, int ridColumn) const;
    void refreshFromBase(qint64 id, const QString& table, qint64 rid);
    QStringList baseTables() const;

    std::shared_ptr<Connection> connection_;
    QString select_;
    QString table_;  // the temporary table
    QVector<FieldInfo> fields_;
    QStringList columns_;  // column names in the temporary table, by field
    QStringList ridTables_;
    QHash<QString, int> byName_;
    bool updatable_ = false;
    bool direct_ = false;  // rows read from the base table itself
    mutable QHash<qint64, QVector<QVariant>> cache_;
};

}  // namespace engine

#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include "engine/database.h"
#include "engine/recordset.h"

namespace store {

// What a reread did to the rows, for the controls bound to them. When oneRow is set, only the row
// at before (in the old rows) and after (in the new rows) changed: -1 on one side means it was
// added or deleted. Otherwise any row may have changed, and only the counts are known.
struct RowChange {
    int before = -1;
    int after = -1;
    int oldCount = 0;
    int newCount = 0;
    bool oneRow = false;
};

// Holds a database, a record source and the record set opened from them; grids and boxes bound
// to it follow its current row. Windows refresh it after changing the record source.
class DataControl : public QObject {
    Q_OBJECT
  public:
    explicit DataControl(QObject* parent = nullptr) : QObject(parent) {}

    void setDatabase(const engine::Database& database) { database_ = database; }
    const engine::Database& database() const { return database_; }
    void setDatabaseName(const QString& name) { databaseName_ = name; }
    const QString& databaseName() const { return databaseName_; }
    void setRecordSource(const QString& source) { recordSource_ = source; }
    const QString& recordSource() const { return recordSource_; }
    void setRecordsetType(engine::RecordsetType type) { type_ = type; }

    // The field that identifies a row (a table's key); rereads keep the current row on it.
    void setKeyField(const QString& field) { keyField_ = field; }
    const QString& keyField() const { return keyField_; }

    // Opens the record source afresh; throws JetError when it is invalid (the old rows stay).
    // The bound controls start over: a new record source resets them.
    void refresh();
    // The same record source read again after the row with this key was added, changed or
    // deleted elsewhere. The current row stays on its key (a deleted one gives way to the row
    // that took its place). Needs a key field; throws JetError as refresh() does.
    void rereadRow(qint64 key);
    // The same record source read again after any of its rows changed; the current row stays on
    // its key, or on its position without a key field.
    void rereadRows();
    // Drops the record set (the database closed).
    void clear();
    bool hasRecordset() const { return recordset_.has_value() && recordset_->isOpen(); }
    engine::Recordset& recordset();  // throws JetError when there is none

    // Tell the bound controls that the current row or the rows changed.
    void notifyCurrentChanged() { emit currentChanged(); }
    void notifyRowsChanged() { emit refreshed(); }

  signals:
    void refreshed();
    void currentChanged();
    // Around a reread: the record set is replaced between the two.
    void rowsAboutToBeReread(const store::RowChange& change);
    void rowsReread(const store::RowChange& change);

  private:
    int positionOf(const engine::Recordset& rows, qint64 key) const;
    std::optional<qint64> currentKey() const;
    void replaceRows(engine::Recordset fresh, RowChange change);

    engine::Database database_;
    QString databaseName_;
    QString recordSource_;
    QString keyField_;
    engine::RecordsetType type_ = engine::RecordsetType::Dynaset;
    std::optional<engine::Recordset> recordset_;
};

}  // namespace store

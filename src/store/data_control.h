#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include "engine/database.h"
#include "engine/recordset.h"

namespace store {

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

    // Opens the record source afresh; throws JetError when it is invalid (the old rows stay).
    void refresh();
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

  private:
    engine::Database database_;
    QString databaseName_;
    QString recordSource_;
    engine::RecordsetType type_ = engine::RecordsetType::Dynaset;
    std::optional<engine::Recordset> recordset_;
};

}  // namespace store

#pragma once

#include <QHash>
#include <QVector>

#include "engine/recordset.h"
#include "report_engine/rows.h"

namespace reports {

// A record set's rows as report rows. A report reads every row, most of them several times, so
// the rows are read once, in one pass, and kept one after the other.
class RecordsetRows : public report_engine::RowSource {
  public:
    explicit RecordsetRows(engine::Recordset recordset);

    int rowCount() const override { return count_; }
    int fieldIndex(const QString& name) const override;
    QVariant value(int row, int field) const override;

  private:
    engine::Recordset recordset_;  // answers for its fields' names
    int count_;
    int width_;
    QVector<QVariant> values_;
    // Format steps ask for the same few names on every row, spelled as they were asked.
    mutable QHash<QString, int> asked_;
};

}  // namespace reports

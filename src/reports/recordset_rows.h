#pragma once

#include <QVector>

#include "engine/recordset.h"
#include "report/rows.h"

namespace reports {

// A record set's rows as report rows. The record set is read in order as the report prints it;
// the row last read is kept, so a row's fields cost one read.
class RecordsetRows : public report::RowSource {
  public:
    explicit RecordsetRows(engine::Recordset recordset);

    int rowCount() const override { return count_; }
    int fieldIndex(const QString& name) const override;
    QVariant value(int row, int field) const override;

  private:
    engine::Recordset recordset_;
    int count_;
    mutable int cachedRow_ = -1;
    mutable QVector<QVariant> cached_;
};

}  // namespace reports

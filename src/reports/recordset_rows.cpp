#include "reports/recordset_rows.h"

namespace reports {

RecordsetRows::RecordsetRows(engine::Recordset recordset)
    : recordset_(std::move(recordset)),
      count_(recordset_.isOpen() ? recordset_.recordCount() : 0) {}

int RecordsetRows::fieldIndex(const QString& name) const {
    return recordset_.isOpen() ? recordset_.fieldIndex(name) : -1;
}

QVariant RecordsetRows::value(int row, int field) const {
    if (row != cachedRow_) {
        cached_ = recordset_.rowAt(row);
        cachedRow_ = row;
    }
    return cached_.value(field);
}

}  // namespace reports

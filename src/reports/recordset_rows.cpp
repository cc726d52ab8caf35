#include "reports/recordset_rows.h"

namespace reports {

RecordsetRows::RecordsetRows(engine::Recordset recordset)
    : recordset_(std::move(recordset)),
      count_(recordset_.isOpen() ? recordset_.recordCount() : 0),
      width_(recordset_.isOpen() ? recordset_.fieldCount() : 0),
      values_(recordset_.isOpen() ? recordset_.allRows() : QVector<QVariant>()) {}

int RecordsetRows::fieldIndex(const QString& name) const {
    const auto known = asked_.constFind(name);
    if (known != asked_.constEnd()) {
        return known.value();
    }
    const int index = recordset_.isOpen() ? recordset_.fieldIndex(name) : -1;
    asked_.insert(name, index);
    return index;
}

QVariant RecordsetRows::value(int row, int field) const {
    if (row < 0 || row >= count_ || field < 0 || field >= width_) {
        return QVariant();
    }
    return values_.at(qsizetype(row) * width_ + field);
}

}  // namespace reports

#include "report_engine/rows.h"

#include "report_engine/report_error.h"

namespace report_engine {

RowTable::RowTable(QStringList fields) : fields_(std::move(fields)) {}

RowTable RowTable::fromMaps(const QVector<QVariantMap>& maps) {
    QStringList fields;
    for (const QVariantMap& map : maps) {
        for (auto it = map.cbegin(); it != map.cend(); ++it) {
            if (!fields.contains(it.key(), Qt::CaseInsensitive)) {
                fields.append(it.key());
            }
        }
    }
    RowTable table(fields);
    for (const QVariantMap& map : maps) {
        QVector<QVariant> values;
        values.reserve(fields.size());
        for (const QString& field : fields) {
            values.append(map.value(field));
        }
        table.append(std::move(values));
    }
    return table;
}

void RowTable::append(QVector<QVariant> values) {
    values.resize(fields_.size());
    rows_.append(std::move(values));
}

int RowTable::fieldIndex(const QString& name) const {
    for (int i = 0; i < fields_.size(); ++i) {
        if (fields_[i].compare(name, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    return -1;
}

QVariant RowTable::value(int row, int field) const {
    return rows_.at(row).at(field);
}

bool RowView::hasRow() const {
    return source_ != nullptr && row_ >= 0 && row_ < source_->rowCount();
}

QVariant RowView::value(const QString& field) const {
    const int index = source_ ? source_->fieldIndex(field) : -1;
    if (index < 0) {
        throw ReportError(QStringLiteral("The report's rows have no field \"%1\".").arg(field));
    }
    return hasRow() ? source_->value(row_, index) : QVariant();
}

}  // namespace report_engine

#include "store/data_control.h"

#include <algorithm>

#include "engine/jet_error.h"

namespace store {

void DataControl::refresh() {
    engine::Recordset fresh = database_.openRecordset(recordSource_, type_);
    recordset_.emplace(std::move(fresh));
    emit refreshed();
    emit currentChanged();
}

void DataControl::rereadRow(qint64 key) {
    if (keyField_.isEmpty()) {
        rereadRows();
        return;
    }
    if (!hasRecordset()) {
        return;  // nothing shown, nothing to follow
    }
    engine::Recordset fresh = database_.openRecordset(recordSource_, type_);
    RowChange change;
    change.before = positionOf(*recordset_, key);
    change.after = positionOf(fresh, key);
    change.oldCount = recordset_->recordCount();
    change.newCount = fresh.recordCount();
    // Counts that moved by more than this row mean that other rows changed as well.
    change.oneRow =
        change.newCount - change.oldCount == int(change.after >= 0) - int(change.before >= 0);
    replaceRows(std::move(fresh), change);
}

void DataControl::rereadRows() {
    if (!hasRecordset()) {
        return;
    }
    engine::Recordset fresh = database_.openRecordset(recordSource_, type_);
    RowChange change;
    change.oldCount = recordset_->recordCount();
    change.newCount = fresh.recordCount();
    replaceRows(std::move(fresh), change);
}

int DataControl::positionOf(const engine::Recordset& rows, qint64 key) const {
    if (rows.recordCount() == 0) {
        return -1;
    }
    engine::Recordset cursor = rows.clone();
    cursor.findFirst(QStringLiteral("[%1] = %2").arg(keyField_).arg(key));
    return cursor.noMatch() ? -1 : cursor.absolutePosition();
}

std::optional<qint64> DataControl::currentKey() const {
    const int position = recordset_->absolutePosition();
    const int field = keyField_.isEmpty() ? -1 : recordset_->fieldIndex(keyField_);
    if (position < 0 || field < 0) {
        return std::nullopt;
    }
    return recordset_->rowAt(position).at(field).toLongLong();
}

// The fresh rows take the old ones' place; the current row is found again by its key, else the
// row now at its position (the last one when the rows got fewer).
void DataControl::replaceRows(engine::Recordset fresh, RowChange change) {
    const std::optional<qint64> key = currentKey();
    int position = key ? positionOf(fresh, *key) : -1;
    const int oldPosition = recordset_->absolutePosition();
    if (position < 0 && oldPosition >= 0) {
        position = std::min(oldPosition, fresh.recordCount() - 1);
    }
    if (position >= 0) {
        fresh.setAbsolutePosition(position);
    }
    emit rowsAboutToBeReread(change);
    recordset_.emplace(std::move(fresh));
    emit rowsReread(change);
    emit currentChanged();
}

void DataControl::clear() {
    recordset_.reset();
    emit refreshed();
}

engine::Recordset& DataControl::recordset() {
    if (!hasRecordset()) {
        throw engine::JetError(engine::jet::kInvalidOperation,
                               QStringLiteral("Object invalid or no longer set."));
    }
    return *recordset_;
}

}  // namespace store

#include "ui/controls/recordset_model.h"

#include <utility>

#include "engine/jet_error.h"
#include "query/columns.h"
#include "store/data_control.h"

namespace ui {

namespace {

bool isNumber(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::Double:
            return true;
        default:
            return false;
    }
}

Qt::Alignment qtAlignment(store::ColumnAlignment alignment, const QVariant& value) {
    switch (alignment) {
        case store::ColumnAlignment::Left:
            return Qt::AlignLeft | Qt::AlignVCenter;
        case store::ColumnAlignment::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case store::ColumnAlignment::Centre:
            return Qt::AlignCenter;
        case store::ColumnAlignment::Default:
            break;
    }
    // The grid's own alignment: numbers to the right, everything else to the left.
    return (isNumber(value) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

}  // namespace

RecordsetModel::RecordsetModel(QObject* parent) : QAbstractTableModel(parent) {}

void RecordsetModel::setDataControl(store::DataControl* control) {
    if (control_ == control) {
        return;
    }
    if (control_) {
        disconnect(control_, nullptr, this, nullptr);
    }
    control_ = control;
    if (control_) {
        connect(control_, &store::DataControl::refreshed, this, &RecordsetModel::reload);
        connect(control_, &QObject::destroyed, this, &RecordsetModel::reload);
        connect(control_, &store::DataControl::rowsAboutToBeReread, this,
                &RecordsetModel::beginReread);
        connect(control_, &store::DataControl::rowsReread, this, &RecordsetModel::endReread);
    }
    reload();
}

void RecordsetModel::setColumns(const std::vector<store::GridColumnSpec>& columns) {
    beginResetModel();
    columns_ = columns;
    foregrounds_.assign(columns_.size(), QColor());
    bindFields();
    endResetModel();
}

void RecordsetModel::setColumnAlignment(int column, store::ColumnAlignment alignment) {
    if (column < 0 || column >= columnCount()) {
        return;
    }
    columns_[column].alignment = alignment;
    if (rows_ > 0) {
        emit dataChanged(index(0, column), index(rows_ - 1, column), {Qt::TextAlignmentRole});
    }
}

void RecordsetModel::setColumnForeground(int column, const QColor& colour) {
    if (column < 0 || column >= columnCount()) {
        return;
    }
    foregrounds_[column] = colour;
    if (rows_ > 0) {
        emit dataChanged(index(0, column), index(rows_ - 1, column), {Qt::ForegroundRole});
    }
}

void RecordsetModel::setRowColours(const QColor& base, const QColor& alternate) {
    base_ = base;
    alternate_ = alternate;
    if (rows_ > 0 && !columns_.empty()) {
        emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1), {Qt::BackgroundRole});
    }
}

void RecordsetModel::forgetCachedRow() const {
    cachedRow_ = -1;
    cachedValues_.clear();
}

void RecordsetModel::reload() {
    beginResetModel();
    forgetCachedRow();
    rows_ = (control_ && control_->hasRecordset()) ? control_->recordset().recordCount() : 0;
    bindFields();
    endResetModel();
}

void RecordsetModel::beginReread(const store::RowChange& change) {
    rereading_ = true;
    pending_ = Pending::None;
    const int before = change.before;
    const int after = change.after;
    changedRow_ = after;
    allRowsChanged_ = !(change.oneRow && change.oldCount == rows_);
    if (allRowsChanged_) {
        // Any row may have changed: rows go from the end now, while the old ones are still
        // there to be read, or come at the end afterwards; then every cell is read again.
        if (change.newCount < rows_) {
            beginRemoveRows({}, change.newCount, rows_ - 1);
            rows_ = change.newCount;
            forgetCachedRow();
            endRemoveRows();
        }
    } else if (before < 0 && after >= 0) {
        pending_ = Pending::Insert;
        beginInsertRows({}, after, after);
    } else if (before >= 0 && after < 0) {
        pending_ = Pending::Remove;
        beginRemoveRows({}, before, before);
    } else if (before >= 0 && before != after) {
        // A move down names the row the moved one goes before.
        pending_ = Pending::Move;
        beginMoveRows({}, before, before, {}, after > before ? after + 1 : after);
    }
}

void RecordsetModel::endReread() {
    forgetCachedRow();
    const int count =
        (control_ && control_->hasRecordset()) ? control_->recordset().recordCount() : 0;
    bindFields();
    if (allRowsChanged_ && count > rows_) {
        beginInsertRows({}, rows_, count - 1);
        pending_ = Pending::Insert;
    }
    rows_ = count;
    switch (std::exchange(pending_, Pending::None)) {
        case Pending::Insert:
            endInsertRows();
            break;
        case Pending::Remove:
            endRemoveRows();
            break;
        case Pending::Move:
            endMoveRows();
            break;
        case Pending::None:
            break;
    }
    rereading_ = false;
    if (rows_ == 0 || columns_.empty()) {
        return;
    }
    if (allRowsChanged_) {
        emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
    } else if (changedRow_ >= 0 && changedRow_ < rows_) {
        emit dataChanged(index(changedRow_, 0), index(changedRow_, columnCount() - 1));
    }
}

void RecordsetModel::bindFields() {
    fieldIndexes_.assign(columns_.size(), -1);
    if (!control_ || !control_->hasRecordset()) {
        return;
    }
    const engine::Recordset& rows = control_->recordset();
    for (size_t i = 0; i < columns_.size(); ++i) {
        fieldIndexes_[i] = rows.fieldIndex(columns_[i].dataField);
    }
}

int RecordsetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int RecordsetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(columns_.size());
}

const QVector<QVariant>* RecordsetModel::rowValues(int row) const {
    if (row == cachedRow_) {
        return &cachedValues_;
    }
    // Rows changed behind the model's back (not yet notified) are read as empty.
    if (!control_ || !control_->hasRecordset() || row >= control_->recordset().recordCount()) {
        return nullptr;
    }
    try {
        cachedValues_ = control_->recordset().rowAt(row);
    } catch (const engine::JetError&) {
        // The database went away under the view (or the row with it): the cells show empty
        // until the data control reports what happened.
        forgetCachedRow();
        return nullptr;
    }
    cachedRow_ = row;
    ++rowsRead_;
    return &cachedValues_;
}

QVariant RecordsetModel::cellValue(const QModelIndex& index) const {
    const int field = fieldIndexes_[index.column()];
    if (field < 0) {
        return {};
    }
    const QVector<QVariant>* values = rowValues(index.row());
    return (values && field < values->size()) ? values->at(field) : QVariant();
}

QString RecordsetModel::displayText(int column, const QVariant& value) const {
    return query::valueText(columns_[column].kind, value).value_or(QString());
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole:
            return displayText(column, cellValue(index));
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(qtAlignment(columns_[column].alignment, cellValue(index)));
        case Qt::ForegroundRole:
            return foregrounds_[column].isValid() ? QVariant(foregrounds_[column]) : QVariant();
        case Qt::BackgroundRole: {
            const QColor& colour = index.row() % 2 == 0 ? base_ : alternate_;
            return colour.isValid() ? QVariant(colour) : QVariant();
        }
        default:
            return {};
    }
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return section + 1;
    }
    return (section >= 0 && section < columnCount()) ? QVariant(columns_[section].caption)
                                                     : QVariant();
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

}  // namespace ui

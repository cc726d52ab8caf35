#include "engine/recordset.h"

#include "engine/connection.h"
#include "engine/jet_error.h"
#include "engine/snapshot.h"

namespace engine {

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

Recordset::Recordset(std::shared_ptr<Connection> connection, const QString& sqliteSelect,
                     RecordsetType type)
    : type_(type) {
    snapshot_ = std::make_shared<Snapshot>(std::move(connection), sqliteSelect,
                                           type != RecordsetType::Snapshot);
    order_ = std::make_shared<RowOrder>();
    order_->ids = snapshot_->ids();
    position_ = order_->ids.isEmpty() ? -1 : 0;
}

void Recordset::close() {
    snapshot_.reset();
    order_.reset();
    position_ = -1;
    editMode_ = EditMode::None;
}

void Recordset::requireOpen() const {
    if (!snapshot_) {
        throw JetError(jet::kInvalidOperation, QStringLiteral("Object invalid or no longer set."));
    }
}

bool Recordset::bof() const {
    return !order_ || order_->ids.isEmpty() || position_ < 0;
}

bool Recordset::eof() const {
    return !order_ || order_->ids.isEmpty() || position_ >= order_->ids.size();
}

int Recordset::recordCount() const {
    return order_ ? static_cast<int>(order_->ids.size()) : 0;
}

int Recordset::absolutePosition() const {
    return (bof() || eof()) ? -1 : position_;
}

void Recordset::moveTo(int position) {
    position_ = position;
    currentDeleted_ = false;
    editMode_ = EditMode::None;
}

void Recordset::setAbsolutePosition(int position) {
    requireOpen();
    if (position < 0 || position >= recordCount()) {
        throw noCurrentRecordError();
    }
    moveTo(position);
}

void Recordset::moveFirst() {
    requireOpen();
    if (recordCount() == 0) {
        throw noCurrentRecordError();
    }
    moveTo(0);
}

void Recordset::moveLast() {
    requireOpen();
    if (recordCount() == 0) {
        throw noCurrentRecordError();
    }
    moveTo(recordCount() - 1);
}

void Recordset::moveNext() {
    requireOpen();
    if (eof()) {
        throw noCurrentRecordError();
    }
    // After a delete the position already holds the row that followed the deleted one.
    moveTo(currentDeleted_ ? position_ : position_ + 1);
}

void Recordset::movePrevious() {
    requireOpen();
    if (bof()) {
        throw noCurrentRecordError();
    }
    moveTo(position_ - 1);
}

void Recordset::move(int rows) {
    requireOpen();
    const int target = position_ + rows;
    moveTo(std::clamp(target, -1, recordCount()));
}

int Recordset::findIn(int from, int step, const QString& criterion) const {
    const QSet<qint64> matches = snapshot_->matching(criterion);
    for (int i = from; i >= 0 && i < recordCount(); i += step) {
        if (matches.contains(order_->ids[i])) {
            return i;
        }
    }
    return -1;
}

void Recordset::findFirst(const QString& criterion) {
    requireOpen();
    const int found = findIn(0, 1, criterion);
    noMatch_ = found < 0;
    if (!noMatch_)
        moveTo(found);
}

void Recordset::findLast(const QString& criterion) {
    requireOpen();
    const int found = findIn(recordCount() - 1, -1, criterion);
    noMatch_ = found < 0;
    if (!noMatch_)
        moveTo(found);
}

void Recordset::findNext(const QString& criterion) {
    requireOpen();
    const int start = currentDeleted_ ? position_ : position_ + 1;
    const int found = findIn(std::max(start, 0), 1, criterion);
    noMatch_ = found < 0;
    if (!noMatch_)
        moveTo(found);
}

void Recordset::findPrevious(const QString& criterion) {
    requireOpen();
    const int start = std::min(position_ - 1, recordCount() - 1);
    const int found = start < 0 ? -1 : findIn(start, -1, criterion);
    noMatch_ = found < 0;
    if (!noMatch_)
        moveTo(found);
}

int Recordset::fieldCount() const {
    return snapshot_ ? static_cast<int>(snapshot_->fields().size()) : 0;
}

const FieldInfo& Recordset::field(int index) const {
    requireOpen();
    if (index < 0 || index >= fieldCount()) {
        throw JetError(jet::kItemNotFound, QStringLiteral("Item not found in this collection."));
    }
    return snapshot_->fields()[index];
}

int Recordset::fieldIndex(const QString& name) const {
    return snapshot_ ? snapshot_->fieldIndex(name) : -1;
}

static int requireField(const Recordset& rs, const QString& name) {
    const int index = rs.fieldIndex(name);
    if (index < 0) {
        throw JetError(jet::kItemNotFound,
                       QStringLiteral("Item '%1' not found in this collection.").arg(name));
    }
    return index;
}

QVariant Recordset::value(const QString& name) const {
    return value(requireField(*this, name));
}

void Recordset::requireCurrentRow() const {
    requireOpen();
    if (currentDeleted_) {
        throw JetError(jet::kRecordDeleted, QStringLiteral("Record is deleted."));
    }
    if (bof() || eof()) {
        throw noCurrentRecordError();
    }
}

QVariant Recordset::value(int index) const {
    field(index);
    if (editMode_ != EditMode::None) {
        return buffer_[index];
    }
    requireCurrentRow();
    const QVector<QVariant> row = snapshot_->row(order_->ids[position_]);
    return index < row.size() ? row[index] : QVariant();
}

QVector<QVariant> Recordset::rowAt(int position) const {
    requireOpen();
    if (position < 0 || position >= recordCount()) {
        throw noCurrentRecordError();
    }
    return snapshot_->row(order_->ids[position]);
}

QVector<QVariant> Recordset::allRows() const {
    requireOpen();
    return snapshot_->rows(order_->ids);
}

void Recordset::setValue(const QString& name, const QVariant& value) {
    setValue(requireField(*this, name), value);
}

void Recordset::setValue(int index, const QVariant& value) {
    field(index);
    if (editMode_ == EditMode::None) {
        throw JetError(jet::kUpdateWithoutEdit,
                       QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    }
    buffer_[index] = value;
    changed_[index] = true;
}

void Recordset::addNew() {
    requireOpen();
    if (!snapshot_->updatable()) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("Cannot update. Database or object is read-only."));
    }
    buffer_ = QVector<QVariant>(fieldCount());
    changed_ = QVector<bool>(fieldCount(), false);
    editMode_ = EditMode::Add;
}

void Recordset::edit() {
    requireCurrentRow();
    if (!snapshot_->updatable()) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("Cannot update. Database or object is read-only."));
    }
    buffer_ = snapshot_->row(order_->ids[position_]);
    changed_ = QVector<bool>(fieldCount(), false);
    editMode_ = EditMode::Edit;
}

void Recordset::update() {
    requireOpen();
    if (editMode_ == EditMode::None) {
        throw JetError(jet::kUpdateWithoutEdit,
                       QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    }
    if (editMode_ == EditMode::Add) {
        const qint64 id = snapshot_->insertRow(buffer_, changed_);
        order_->ids.append(id);
        if (position_ < 0) {
            position_ = 0;  // an empty set had no current row; the new one is it now
        }
        lastModified_ = id;
    } else {
        const qint64 id = order_->ids[position_];
        snapshot_->updateRow(id, buffer_, changed_);
        lastModified_ = id;
    }
    editMode_ = EditMode::None;
}

void Recordset::cancelUpdate() {
    requireOpen();
    if (editMode_ == EditMode::None) {
        throw JetError(jet::kUpdateWithoutEdit,
                       QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    }
    editMode_ = EditMode::None;
}

void Recordset::remove() {
    requireCurrentRow();
    if (!snapshot_->updatable()) {
        throw JetError(jet::kReadOnly,
                       QStringLiteral("Cannot update. Database or object is read-only."));
    }
    snapshot_->deleteRow(order_->ids[position_]);
    order_->ids.removeAt(position_);
    currentDeleted_ = true;
}

Bookmark Recordset::bookmark() const {
    requireCurrentRow();
    return order_->ids[position_];
}

void Recordset::setBookmark(Bookmark bookmark) {
    requireOpen();
    const int position = order_->positionOf(bookmark);
    if (position < 0) {
        throw JetError(jet::kInvalidOperation, QStringLiteral("Not a valid bookmark."));
    }
    moveTo(position);
}

Bookmark Recordset::lastModified() const {
    requireOpen();
    if (lastModified_ < 0) {
        throw noCurrentRecordError();
    }
    return lastModified_;
}

Recordset Recordset::clone() const {
    requireOpen();
    Recordset copy;
    copy.snapshot_ = snapshot_;
    copy.order_ = order_;
    copy.type_ = type_;
    copy.position_ = order_->ids.isEmpty() ? -1 : 0;
    return copy;
}

Recordset Recordset::openRecordset() const {
    requireOpen();
    Recordset copy;
    copy.snapshot_ = snapshot_;
    copy.order_ = std::make_shared<RowOrder>();
    copy.order_->ids = snapshot_->ids(sort_);
    copy.type_ = type_;
    copy.position_ = copy.order_->ids.isEmpty() ? -1 : 0;
    return copy;
}

void Recordset::requery() {
    requireOpen();
    const QString select = snapshot_->select();
    std::shared_ptr<Connection> connection = snapshot_->sharedConnection();
    snapshot_.reset();
    snapshot_ =
        std::make_shared<Snapshot>(std::move(connection), select, type_ != RecordsetType::Snapshot);
    order_ = std::make_shared<RowOrder>();
    order_->ids = snapshot_->ids();
    moveTo(order_->ids.isEmpty() ? -1 : 0);
    lastModified_ = -1;
}

}  // namespace engine

#include "access/reader/bound_row.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace mdbread {

namespace {

constexpr int kRowOffsetMask = 0x1fff;  // row offsets on a data page carry flags above this
constexpr quint32 kLongValueLengthMask = 0x3fffffff;

void bindBytes(sqlite3_stmt* statement, int index, const QByteArray& bytes) {
    sqlite3_bind_blob(statement, index, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

void bindUtf8(sqlite3_stmt* statement, int index, const char* text, int length) {
    sqlite3_bind_text(statement, index, text, length, SQLITE_TRANSIENT);
}

// Columns whose value libmdb must convert: text in the file's encoding and the kinds only its
// printed form describes. Memo and OLE values are read on demand (longValue).
bool needsBinding(ValueKind kind) {
    return kind == ValueKind::Text || kind == ValueKind::Printed;
}

bool isTextKind(ValueKind kind) {
    return kind == ValueKind::Text || kind == ValueKind::Printed || kind == ValueKind::Memo;
}

}  // namespace

BoundRow::BoundRow(MdbTableDef* table) : table_(table), mdb_(table->entry->mdb) {
    columns_.reserve(table->num_cols);
    for (guint i = 0; i < table->num_cols; ++i) {
        auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
        columns_.push_back(
            {column, planColumn(mdb_, column), std::make_unique<char[]>(mdb_->bind_size), 0});
    }
    for (size_t i = 0; i < columns_.size(); ++i) {
        Column& column = columns_[i];
        column.bound = needsBinding(column.plan.kind);
        if (column.bound)
            mdb_bind_column(table, int(i) + 1, column.buffer.get(), &column.length);
    }
    mdb_rewind_table(table);
}

QList<accessfile::ColumnSpec> BoundRow::columnSpecs() const {
    QList<accessfile::ColumnSpec> definitions;
    for (const Column& column : columns_)
        definitions << column.plan.definition;
    return definitions;
}

bool BoundRow::fetch() {
    if (!mdb_fetch_row(table_))
        return false;
    // A null text and a zero-length one both come without bytes; only then is the row's null
    // mask needed to tell them apart.
    if (hasEmptyText())
        readNullFlags();
    return true;
}

bool BoundRow::hasEmptyText() const {
    return std::any_of(columns_.begin(), columns_.end(), [](const Column& column) {
        return isTextKind(column.plan.kind) && column.column->cur_value_len == 0;
    });
}

void BoundRow::readNullFlags() {
    nulls_.assign(columns_.size(), true);
    int start = 0;
    size_t size = 0;
    if (mdb_find_row(mdb_, int(table_->cur_row) - 1, &start, &size) != 0 || size == 0)
        return;
    std::vector<MdbField> fields(table_->num_cols);
    const int count = mdb_crack_row(table_, start & kRowOffsetMask, size, fields.data());
    for (int i = 0; i < count && i < int(fields.size()); ++i) {
        if (fields[i].colnum >= 0 && fields[i].colnum < int(nulls_.size()))
            nulls_[fields[i].colnum] = fields[i].is_null;
    }
}

void BoundRow::bindInto(sqlite3_stmt* statement) const {
    for (size_t i = 0; i < columns_.size(); ++i)
        bindColumn(statement, int(i) + 1, columns_[i]);
}

bool BoundRow::isTextNull(int index) const {
    return columns_[index - 1].column->cur_value_len == 0 && nulls_[index - 1];
}

void BoundRow::bindColumn(sqlite3_stmt* statement, int index, const Column& column) const {
    switch (column.plan.kind) {
        case ValueKind::YesNo:
            // A yes/no value lives in the row's null mask: a set bit (no "null") means yes.
            sqlite3_bind_int(statement, index, column.column->cur_value_len == 0 ? -1 : 0);
            return;
        case ValueKind::Text:
        case ValueKind::Printed:
            if (!isTextNull(index))
                bindUtf8(statement, index, column.buffer.get(), column.length);
            return;
        case ValueKind::Memo:
            if (!isTextNull(index)) {
                const QByteArray text = memoText(column);
                bindUtf8(statement, index, text.constData(), int(text.size()));
            }
            return;
        case ValueKind::Ole:
            if (column.column->cur_value_len > 0)
                bindBytes(statement, index, longValue(column));
            return;
        default:
            if (column.column->cur_value_len > 0)
                bindFixed(statement, index, column);
            return;
    }
}

void BoundRow::bindFixed(sqlite3_stmt* statement, int index, const Column& column) const {
    unsigned char* value = mdb_->pg_buf + column.column->cur_value_start;
    switch (column.plan.kind) {
        case ValueKind::Byte:
            sqlite3_bind_int(statement, index, value[0]);
            return;
        case ValueKind::Integer:
            sqlite3_bind_int(statement, index, qFromLittleEndian<qint16>(value));
            return;
        case ValueKind::Long:
            sqlite3_bind_int(statement, index, qFromLittleEndian<qint32>(value));
            return;
        case ValueKind::Currency:
            sqlite3_bind_double(statement, index,
                                accessfile::currencyAsDouble(qFromLittleEndian<qint64>(value)));
            return;
        case ValueKind::Single:
            sqlite3_bind_double(statement, index,
                                accessfile::singleAsDouble(mdb_get_single(value, 0)));
            return;
        case ValueKind::Double:
            sqlite3_bind_double(statement, index, mdb_get_double(value, 0));
            return;
        case ValueKind::Date: {
            const double serial = mdb_get_double(value, 0);
            if (const auto text = accessfile::jetDateUtf8(serial)) {
                bindUtf8(statement, index, text->constData(), int(text->size()));
            } else {
                sqlite3_bind_double(statement, index, serial);  // outside Access's calendar
            }
            return;
        }
        case ValueKind::Binary:
            bindBytes(
                statement, index,
                QByteArray(reinterpret_cast<const char*>(value), column.column->cur_value_len));
            return;
        default:
            return;
    }
}

// A memo or OLE value lives in the row when short, else in long-value pages that libmdb reads
// chunk by chunk into the column's buffer. The header's length ends the chain even when a
// damaged file links its pages in a circle.
QByteArray BoundRow::longValue(const Column& column) const {
    MdbColumn* mdbColumn = column.column;
    if (mdbColumn->cur_value_len < MDB_MEMO_OVERHEAD)
        return {};
    unsigned char header[MDB_MEMO_OVERHEAD];
    std::memcpy(header, mdb_->pg_buf + mdbColumn->cur_value_start, MDB_MEMO_OVERHEAD);
    const qsizetype declared = qFromLittleEndian<quint32>(header) & kLongValueLengthMask;
    QByteArray value;
    // libmdb copies the chunks into the column's bound buffer; bind it for this read only, so
    // that fetching rows does not read every long value a first time.
    mdbColumn->bind_ptr = column.buffer.get();
    size_t chunk = mdb_ole_read(mdb_, mdbColumn, header, mdb_->bind_size);
    while (chunk > 0 && value.size() < declared) {
        value.append(column.buffer.get(), qsizetype(chunk));
        chunk = mdb_ole_read_next(mdb_, mdbColumn, header);
    }
    mdbColumn->bind_ptr = nullptr;
    value.truncate(declared);
    return value;
}

QByteArray BoundRow::memoText(const Column& column) const {
    const QByteArray stored = longValue(column);
    // A stored byte or UTF-16 unit becomes at most three bytes of UTF-8.
    QByteArray text(stored.size() * 3 + 4, Qt::Uninitialized);
    const int length = mdb_unicode2ascii(mdb_, stored.constData(), size_t(stored.size()),
                                         text.data(), size_t(text.size()));
    text.truncate(length);
    return text;
}

}  // namespace mdbread

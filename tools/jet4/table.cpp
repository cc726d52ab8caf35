#include "jet4/cp1252.h"
#include "jet4/format.h"
#include "jet4/jet4.h"
#include "jet4/row_layout.h"
#include "jet4/value_encoding.h"

#include <QSet>
#include <algorithm>
#include <stdexcept>

namespace jet4 {
namespace {

constexpr std::uint32_t kInlineFlag = 0x80000000u;

// Jet 3 keeps names in the code page, so each must have a place there.
void checkNamesFitCp1252(const QString& table, const std::vector<Column>& columns) {
    toCp1252(table);
    for (const Column& c : columns)
        toCp1252(c.name);
}

void checkColumns(const QString& table, const std::vector<Column>& columns) {
    if (table.isEmpty() || table.size() > 64)
        throw std::runtime_error("table name must have 1 to 64 characters");
    if (columns.empty() || columns.size() > 255)
        throw std::runtime_error("table " + table.toStdString() + " needs 1 to 255 columns");
    QSet<QString> seen;
    for (const Column& c : columns) {
        if (c.name.isEmpty() || c.name.size() > 64 || seen.contains(c.name.toLower()))
            throw std::runtime_error("table " + table.toStdString() + ": bad or repeated column '" +
                                     c.name.toStdString() + "'");
        if (c.type == Type::Text && (c.size < 0 || c.size > 255))
            throw std::runtime_error("column " + c.name.toStdString() + ": text size 1..255");
        if (c.autoNumber && c.type != Type::Long)
            throw std::runtime_error("column " + c.name.toStdString() +
                                     ": only a Long column can be an AutoNumber");
        seen.insert(c.name.toLower());
    }
    if (std::count_if(columns.begin(), columns.end(),
                      [](const Column& c) { return c.autoNumber; }) > 1)
        throw std::runtime_error("table " + table.toStdString() + " has two AutoNumber columns");
}

void setNullMaskBit(QByteArray& row, int maskStart, int column) {
    row[maskStart + column / 8] = char(row[maskStart + column / 8] | (1 << (column % 8)));
}

}  // namespace

Table::Table(QString name, std::vector<Column> columns, Format format)
    : name_(std::move(name)), columns_(std::move(columns)), format_(format) {
    checkColumns(name_, columns_);
    if (format_ == Format::Jet3)
        checkNamesFitCp1252(name_, columns_);
    for (const Column& c : columns_) {
        if (c.autoNumber)
            autoNumberColumn_ = int(places_.size());
        ColumnPlace place;
        if (encoding::isFixed(c.type)) {
            place.fixedOffset = fixedSize_;
            fixedSize_ += encoding::fixedSize(c.type);
        } else {
            place.varIndex = varCount_++;
        }
        places_.push_back(place);
    }
}

void Table::addRow(const QVariantList& values) {
    if (values.size() != qsizetype(columns_.size()))
        throw std::runtime_error("table " + name_.toStdString() + ": row has " +
                                 std::to_string(values.size()) + " values for " +
                                 std::to_string(columns_.size()) + " columns");
    const format::Layout& layout = format::layoutOf(format_);
    const int columnCount = int(columns_.size());
    RowParts parts{columnCount,
                   QByteArray(fixedSize_, '\0'),
                   {},
                   std::vector<int>(varCount_ + 1),
                   QByteArray((columnCount + 7) / 8, '\0')};
    QByteArray& varData = parts.varData;
    std::vector<LongValue> pending;
    const int varBase = columnCountSize(format_) + fixedSize_;
    const qint64 autoNumber = checkedAutoNumber(values);

    for (int i = 0; i < columnCount; ++i) {
        const Column& column = columns_[i];
        const QVariant& value = values[i];
        const bool present =
            column.type == Type::Boolean ? value.toBool() : value.isValid() && !value.isNull();
        if (present)
            setNullMaskBit(parts.nullMask, 0, i);
        if (places_[i].varIndex < 0) {
            if (present)
                encoding::encodeFixed(column, value, parts.fixed.data() + places_[i].fixedOffset);
            continue;
        }
        parts.varStarts[places_[i].varIndex] = varBase + int(varData.size());
        if (!present)
            continue;
        if (column.type == Type::Text) {
            varData += encoding::encodeText(column, value, format_);
            continue;
        }
        const QByteArray bytes = encoding::encodeLongValue(column, value, format_);
        QByteArray ref(format::kLongValueRefSize, '\0');
        if (bytes.size() <= layout.inlineLongValueMax) {
            format::put32(ref, 0, std::uint32_t(bytes.size()) | kInlineFlag);
            varData += ref + bytes;
        } else {
            // The writer fills in the reference once the value has its place on a page.
            pending.push_back({rowCount(), varBase + int(varData.size()), bytes});
            varData += ref;
        }
    }
    parts.varStarts[varCount_] = varBase + int(varData.size());

    const QByteArray row = layOutRow(parts, format_);
    if (row.size() > layout.maxRowSize())
        throw std::runtime_error("table " + name_.toStdString() + ": row of " +
                                 std::to_string(row.size()) + " bytes does not fit a page");
    rows_ += row;
    rowEnds_.push_back(std::uint32_t(rows_.size()));
    for (LongValue& lv : pending)
        longValues_.push_back(std::move(lv));
    highestAutoNumber_ = std::max(highestAutoNumber_, autoNumber);
}

// Access numbers new rows from the table definition's counter, so it must lie past every value
// given; a row without one would have none.
qint64 Table::checkedAutoNumber(const QVariantList& values) const {
    if (autoNumberColumn_ < 0)
        return 0;
    const QVariant& value = values[autoNumberColumn_];
    if (!value.isValid() || value.isNull())
        throw std::runtime_error("table " + name_.toStdString() + ": AutoNumber column " +
                                 columns_[autoNumberColumn_].name.toStdString() + " needs a value");
    return value.toLongLong();
}

std::uint32_t Table::nextAutoNumber() const {
    return autoNumberColumn_ < 0 ? 0 : std::uint32_t(highestAutoNumber_ + 1);
}

QByteArray Table::row(qsizetype index) const {
    const std::uint32_t start = index == 0 ? 0 : rowEnds_[index - 1];
    return rows_.mid(start, rowEnds_[index] - start);
}

}  // namespace jet4

#include "jet4/cp1252.h"
#include "jet4/format.h"
#include "jet4/table_definition.h"
#include "jet4/value_encoding.h"

#include <stdexcept>

namespace jet4 {

using namespace format;

namespace {

constexpr int kPageSize = kJet3Layout.pageSize;
constexpr int kColumnsStart = 0x2b;
constexpr int kColumnEntrySize = 18;
constexpr std::uint8_t kUserTable = 0x4e;
constexpr std::uint8_t kSystemTable = 0x53;
constexpr std::uint8_t kFixedLength = 0x01;
constexpr std::uint8_t kNullable = 0x02;
constexpr std::uint8_t kAutoNumber = 0x04;
constexpr std::uint16_t kGeneralSortOrder = 0x0409;
constexpr std::uint16_t kWesternCodePage = 1252;

QByteArray columnEntry(const Column& column, int number, const Table::ColumnPlace& place) {
    QByteArray e(kColumnEntrySize, '\0');
    const bool fixed = encoding::isFixed(column.type);
    e[0] = char(encoding::typeCode(column.type));
    put16(e, 1, std::uint16_t(number));
    put16(e, 3, std::uint16_t(fixed ? 0 : place.varIndex));
    put16(e, 5, std::uint16_t(number));
    if (column.type == Type::Text || column.type == Type::Memo) {
        put16(e, 7, kGeneralSortOrder);
        put16(e, 9, kWesternCodePage);
    }
    std::uint8_t flags = fixed ? kFixedLength | kNullable : kNullable;
    if (column.autoNumber)
        flags |= kAutoNumber;
    e[13] = char(flags);
    put16(e, 14, std::uint16_t(fixed ? place.fixedOffset : 0));
    put16(e, 16, std::uint16_t(encoding::definedLength(column, Format::Jet3)));
    return e;
}

void appendName(QByteArray& out, const QString& name) {
    const QByteArray bytes = toCp1252(name);
    append8(out, std::uint8_t(bytes.size()));
    out += bytes;
}

}  // namespace

QByteArray jet3TableDefinitionPage(const Table& table, const TableDefinitionInfo& info) {
    const auto& columns = table.columns();
    const auto columnCount = std::uint16_t(columns.size());
    QByteArray page(kColumnsStart, '\0');
    page[0] = char(kTableDefPage);
    page[1] = 0x01;
    page[2] = 'V';
    page[3] = 'C';
    put32(page, 0x0c, std::uint32_t(table.rowCount()));
    put32(page, 0x10, table.nextAutoNumber());
    page[0x14] = char(info.system ? kSystemTable : kUserTable);
    put16(page, 0x15, columnCount);
    put16(page, 0x17, std::uint16_t(table.varCount()));
    put16(page, 0x19, columnCount);
    put32(page, 0x23, info.usedPagesMap);
    put32(page, 0x27, info.freePagesMap);
    for (int i = 0; i < columnCount; ++i)
        page += columnEntry(columns[i], i, table.places()[i]);
    for (const Column& c : columns)
        appendName(page, c.name);
    append16(page, 0xffff);  // no per-column usage maps follow

    if (page.size() > kPageSize)
        throw std::runtime_error("definition of table " + table.name().toStdString() +
                                 " does not fit a page");
    put32(page, 0x08, std::uint32_t(page.size()));
    page.resize(kPageSize, '\0');
    return page;
}

}  // namespace jet4

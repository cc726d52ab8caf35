#include "jet4/table_definition.h"

#include "jet4/format.h"
#include "jet4/value_encoding.h"

#include <cstring>
#include <stdexcept>

namespace jet4 {

using namespace format;

namespace {

constexpr int kPageSize = format::kJet4Layout.pageSize;
constexpr int kColumnsStart = 0x3f;
constexpr int kColumnEntrySize = 25;
constexpr std::uint8_t kUserTable = 0x4e;
constexpr std::uint8_t kSystemTable = 0x53;
constexpr std::uint8_t kFixedLength = 0x01;
constexpr std::uint8_t kNullable = 0x02;
constexpr std::uint8_t kAutoNumber = 0x04;
constexpr std::uint8_t kCompressedUnicode = 0x01;
constexpr std::uint16_t kGeneralSortOrder = 0x0409;

QByteArray columnEntry(const Column& column, int number, const Table::ColumnPlace& place) {
    QByteArray e(kColumnEntrySize, '\0');
    const bool fixed = encoding::isFixed(column.type);
    e[0] = char(encoding::typeCode(column.type));
    put16(e, 5, std::uint16_t(number));
    put16(e, 7, std::uint16_t(fixed ? 0 : place.varIndex));
    put16(e, 9, std::uint16_t(number));
    if (column.type == Type::Text || column.type == Type::Memo)
        put16(e, 11, kGeneralSortOrder);
    std::uint8_t flags = fixed ? kFixedLength | kNullable : kNullable;
    if (column.autoNumber)
        flags |= kAutoNumber;
    e[15] = char(flags);
    e[16] = char(column.type == Type::Text ? kCompressedUnicode : 0);
    put16(e, 21, std::uint16_t(fixed ? place.fixedOffset : 0));
    put16(e, 23, std::uint16_t(encoding::definedLength(column, Format::Jet4)));
    return e;
}

void appendName(QByteArray& out, const QString& name) {
    append16(out, std::uint16_t(name.size() * 2));
    for (QChar c : name)
        append16(out, c.unicode());
}

}  // namespace

QByteArray tableDefinitionPage(const Table& table, const TableDefinitionInfo& info) {
    return table.format() == Format::Jet3 ? jet3TableDefinitionPage(table, info)
                                          : jet4TableDefinitionPage(table, info);
}

QByteArray jet4TableDefinitionPage(const Table& table, const TableDefinitionInfo& info) {
    const auto& columns = table.columns();
    const auto columnCount = std::uint16_t(columns.size());
    QByteArray page(kColumnsStart, '\0');
    page[0] = char(kTableDefPage);
    page[1] = 0x01;
    put32(page, 0x10, std::uint32_t(table.rowCount()));
    if (const std::uint32_t next = table.nextAutoNumber()) {
        put32(page, 0x14, next);
        page[0x18] = 0x01;  // the counter is in use
    }
    page[0x28] = char(info.system ? kSystemTable : kUserTable);
    put16(page, 0x29, columnCount);
    put16(page, 0x2b, std::uint16_t(table.varCount()));
    put16(page, 0x2d, columnCount);
    put32(page, 0x37, info.usedPagesMap);
    put32(page, 0x3b, info.freePagesMap);
    for (int i = 0; i < columnCount; ++i)
        page += columnEntry(columns[i], i, table.places()[i]);
    for (const Column& c : columns)
        appendName(page, c.name);
    append16(page, 0xffff);  // no per-column usage maps follow

    const auto used = int(page.size());
    if (used > kPageSize)
        throw std::runtime_error("definition of table " + table.name().toStdString() +
                                 " does not fit a page");
    put32(page, 0x08, std::uint32_t(used));
    put16(page, 2, std::uint16_t(kPageSize - used - 8));
    page.resize(kPageSize, '\0');
    return page;
}

}  // namespace jet4

#include "jet4/catalog.h"
#include "jet4/data_page.h"
#include "jet4/format.h"
#include "jet4/header_page.h"
#include "jet4/jet4.h"
#include "jet4/long_values.h"
#include "jet4/page_file.h"
#include "jet4/table_definition.h"
#include "jet4/usage_map.h"
#include "jet4/value_encoding.h"

#include <QSet>
#include <cstring>
#include <optional>
#include <stdexcept>

namespace jet4 {

namespace {

constexpr std::uint32_t kMapRecordsPage = 1;

// A fixed creation time keeps the output identical for identical input.
QDateTime creationTime() {
    return QDateTime(QDate(2000, 1, 1), QTime(0, 0));
}

// Writes a table's rows to data pages (and its long values to long-value pages);
// returns the data pages, which form the table's usage map.
std::vector<std::uint32_t> writeRows(PageFile& file, const Table& table, std::uint32_t definition) {
    const format::Layout& layout = format::layoutOf(table.format());
    std::vector<std::uint32_t> pages;
    std::optional<DataPage> page;
    LongValueWriter longValues(file, layout);
    auto nextLong = table.longValues().begin();
    for (qsizetype r = 0; r < table.rowCount(); ++r) {
        QByteArray row = table.row(r);
        for (; nextLong != table.longValues().end() && nextLong->row == r; ++nextLong) {
            const QByteArray ref = longValues.store(nextLong->bytes);
            std::memcpy(row.data() + nextLong->offset, ref.constData(), size_t(ref.size()));
        }
        if (page && !page->fits(int(row.size()))) {
            file.write(pages.back(), page->bytes());
            page.reset();
        }
        if (!page) {
            page.emplace(layout, definition);
            pages.push_back(file.allocate());
        }
        page->add(row);
    }
    if (page)
        file.write(pages.back(), page->bytes());
    longValues.finish();
    return pages;
}

void checkTables(const std::vector<Table>& tables, Format format) {
    QSet<QString> seen{"msysobjects"};
    for (const Table& t : tables) {
        if (t.format() != format)
            throw std::runtime_error("table " + t.name().toStdString() +
                                     " was made for the other Jet format");
        if (seen.contains(t.name().toLower()))
            throw std::runtime_error("repeated or reserved table name " + t.name().toStdString());
        seen.insert(t.name().toLower());
    }
}

}  // namespace

void writeDatabase(const QString& path, const std::vector<Table>& tables, Format format) {
    checkTables(tables, format);
    const format::Layout& layout = format::layoutOf(format);
    PageFile file(path, layout.pageSize);
    file.allocate();  // header
    file.allocate();  // usage-map records
    file.allocate();  // catalog definition
    std::vector<std::uint32_t> definitions;
    for (size_t i = 0; i < tables.size(); ++i)
        definitions.push_back(file.allocate());

    std::vector<std::vector<std::uint32_t>> dataPages;
    for (size_t i = 0; i < tables.size(); ++i)
        dataPages.push_back(writeRows(file, tables[i], definitions[i]));
    const Table catalog = catalogTable(tables, definitions, creationTime(), format);
    const auto catalogPages = writeRows(file, catalog, kCatalogDefinitionPage);

    MapRecords maps(file, kMapRecordsPage, layout);
    // Nothing is left to insert into, so every table shares one empty free-space map.
    const std::uint32_t noFreePages = maps.add(usageMapRecord({}, file, layout));
    auto writeDefinition = [&](const Table& table, std::uint32_t page,
                               const std::vector<std::uint32_t>& used, bool system) {
        const TableDefinitionInfo info{system, maps.add(usageMapRecord(used, file, layout)),
                                       noFreePages};
        file.write(page, tableDefinitionPage(table, info));
    };
    writeDefinition(catalog, kCatalogDefinitionPage, catalogPages, true);
    for (size_t i = 0; i < tables.size(); ++i)
        writeDefinition(tables[i], definitions[i], dataPages[i], false);
    maps.finish();
    file.write(0, headerPage(format, encoding::toJetDate(creationTime())));
    file.finish();
}

}  // namespace jet4

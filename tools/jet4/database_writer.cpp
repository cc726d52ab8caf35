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
    std::vector<std::uint32_t> pages;
    std::optional<DataPage> page;
    LongValueWriter longValues(file);
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
            page.emplace(definition);
            pages.push_back(file.allocate());
        }
        page->add(row);
    }
    if (page)
        file.write(pages.back(), page->bytes());
    longValues.finish();
    return pages;
}

void checkTableNames(const std::vector<Table>& tables) {
    QSet<QString> seen{"msysobjects"};
    for (const Table& t : tables) {
        if (seen.contains(t.name().toLower()))
            throw std::runtime_error("repeated or reserved table name " + t.name().toStdString());
        seen.insert(t.name().toLower());
    }
}

}  // namespace

void writeDatabase(const QString& path, const std::vector<Table>& tables) {
    checkTableNames(tables);
    PageFile file(path);
    file.allocate();  // header
    file.allocate();  // usage-map records
    file.allocate();  // catalog definition
    std::vector<std::uint32_t> definitions;
    for (size_t i = 0; i < tables.size(); ++i)
        definitions.push_back(file.allocate());

    std::vector<std::vector<std::uint32_t>> dataPages;
    for (size_t i = 0; i < tables.size(); ++i)
        dataPages.push_back(writeRows(file, tables[i], definitions[i]));
    const Table catalog = catalogTable(tables, definitions, creationTime());
    const auto catalogPages = writeRows(file, catalog, kCatalogDefinitionPage);

    MapRecords maps(file, kMapRecordsPage);
    // Nothing is left to insert into, so every table shares one empty free-space map.
    const std::uint32_t noFreePages = maps.add(usageMapRecord({}, file));
    auto writeDefinition = [&](const Table& table, std::uint32_t page,
                               const std::vector<std::uint32_t>& used, bool system) {
        const TableDefinitionInfo info{system, maps.add(usageMapRecord(used, file)), noFreePages};
        file.write(page, tableDefinitionPage(table, info));
    };
    writeDefinition(catalog, kCatalogDefinitionPage, catalogPages, true);
    for (size_t i = 0; i < tables.size(); ++i)
        writeDefinition(tables[i], definitions[i], dataPages[i], false);
    maps.finish();
    file.write(0, headerPage(encoding::toJetDate(creationTime())));
    file.finish();
}

}  // namespace jet4

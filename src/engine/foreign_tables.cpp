#include "engine/foreign_tables.h"

namespace engine {

namespace {
std::shared_ptr<ForeignTableReader>& installedReader() {
    static std::shared_ptr<ForeignTableReader> reader;
    return reader;
}
}  // namespace

void setForeignTableReader(std::shared_ptr<ForeignTableReader> reader) {
    installedReader() = std::move(reader);
}

ForeignTableReader* foreignTableReader() {
    return installedReader().get();
}

QStringList describeIncompleteTables(const std::vector<IncompleteTable>& tables) {
    QStringList lines;
    for (const IncompleteTable& table : tables) {
        lines << QStringLiteral("%1: %2 rows expected, %3 read")
                     .arg(table.table)
                     .arg(table.expected)
                     .arg(table.copied);
    }
    return lines;
}

}  // namespace engine

#pragma once

#include "jet4/jet4.h"

#include <QByteArray>
#include <cstdint>

namespace jet4 {

struct TableDefinitionInfo {
    bool system = false;
    std::uint32_t usedPagesMap = 0;  // row pointers to usage-map records
    std::uint32_t freePagesMap = 0;
};

// The table definition page: row count, columns with their types and places in a row,
// column names. Throws std::runtime_error when the definition does not fit one page.
QByteArray tableDefinitionPage(const Table& table, const TableDefinitionInfo& info);

// The same for each format; tableDefinitionPage picks the table's.
QByteArray jet3TableDefinitionPage(const Table& table, const TableDefinitionInfo& info);
QByteArray jet4TableDefinitionPage(const Table& table, const TableDefinitionInfo& info);

}  // namespace jet4

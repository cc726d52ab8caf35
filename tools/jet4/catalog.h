#pragma once

#include "jet4/jet4.h"

#include <QDateTime>
#include <cstdint>
#include <vector>

namespace jet4 {

constexpr std::uint32_t kCatalogDefinitionPage = 2;

// The system catalog MSysObjects: one row for itself, the tables container and one per
// user table, whose id is the page of the table's definition.
Table catalogTable(const std::vector<Table>& tables,
                   const std::vector<std::uint32_t>& definitionPages, const QDateTime& created,
                   Format format);

}  // namespace jet4

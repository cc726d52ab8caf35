#include "jet4/catalog.h"

namespace jet4 {

namespace {

constexpr qint32 kTablesContainerId = 0x0f000001;
constexpr qint32 kDatabasesContainerId = 0x0f000000;
constexpr int kTableObject = 1;
constexpr int kContainerObject = 3;
constexpr qint32 kSystemObjectFlags = qint32(0x80000002u);

std::vector<Column> catalogColumns() {
    return {{"Id", Type::Long},
            {"ParentId", Type::Long},
            {"Name", Type::Text, 128},
            {"Type", Type::Integer},
            {"DateCreate", Type::DateTime},
            {"DateUpdate", Type::DateTime},
            {"Flags", Type::Long},
            {"Database", Type::Memo},
            {"Connect", Type::Memo},
            {"ForeignName", Type::Text, 128},
            {"LvProp", Type::Ole}};
}

QVariantList catalogRow(qint32 id, qint32 parent, const QString& name, int type, qint32 flags,
                        const QDateTime& created) {
    return {id, parent, name, type, created, created, flags, {}, {}, {}, {}};
}

}  // namespace

Table catalogTable(const std::vector<Table>& tables,
                   const std::vector<std::uint32_t>& definitionPages, const QDateTime& created,
                   Format format) {
    Table catalog("MSysObjects", catalogColumns(), format);
    catalog.addRow(catalogRow(kTablesContainerId, kDatabasesContainerId, "Tables", kContainerObject,
                              0, created));
    catalog.addRow(catalogRow(qint32(kCatalogDefinitionPage), kTablesContainerId, "MSysObjects",
                              kTableObject, kSystemObjectFlags, created));
    for (size_t i = 0; i < tables.size(); ++i)
        catalog.addRow(catalogRow(qint32(definitionPages[i]), kTablesContainerId, tables[i].name(),
                                  kTableObject, 0, created));
    return catalog;
}

}  // namespace jet4

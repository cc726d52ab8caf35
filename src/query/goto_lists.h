#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "query/columns.h"

namespace engine {
class Database;
class Recordset;
}  // namespace engine

namespace query {

// The goto field that a grid column searches: its key field in the column catalogue. The
// performer columns show display names, so they list and search the sort names instead
// ("PerformerTrack" -> "ArtistSort", in any case). Every other column searches itself.
QString gotoFieldForColumn(const QString& dataField);

// The statement that lists the distinct values of a goto field, the field of its record set
// that holds them and the field's kind.
struct GotoQuery {
    QString text;
    QString resultField;
    ValueKind kind;
};

// The source list over TempSource, restricted by the filter in force (empty or "WHERE ...").
// Nothing for a field the source lists do not offer. The field is compared case-blind.
std::optional<GotoQuery> sourceGotoQuery(const QString& gotoField, const QString& filterClause);
// The compilation list over the Compilation table. Nothing for an unknown field.
std::optional<GotoQuery> compilationGotoQuery(const QString& gotoField);

// What the comparison combo box and the goto combo box show.
struct GotoLists {
    QStringList comparisons;
    QString comparisonPreset;
    QStringList entries;
    QString tooltip;  // of the goto combo box
    int count = 0;    // entries put into the goto list
};

// The comparisons a kind offers, in the order of the combo box, with the preset.
GotoLists comparisonsFor(ValueKind kind);

// One entry per row of rows, in their order, read from resultField and shown as valueText
// shows its kind; Nulls give no entry. The date and time lists carry inputHint as tooltip.
// Reads rows from the first to the last row.
GotoLists fillGotoList(const QString& resultField, ValueKind kind, engine::Recordset& rows,
                       const QString& inputHint);

// Runs the goto query of a field as a snapshot and fills the lists from it; a field without a
// goto query gives empty lists. Engine errors propagate as engine::JetError.
GotoLists fillSourceGotoList(engine::Database& database, const QString& gotoField,
                             const QString& filterClause, const QString& inputHint);
// The caller keeps the count of the compilation list (gGotoCountCompilation) for the list
// count shown beside the main window's grid.
GotoLists fillCompilationGotoList(engine::Database& database, const QString& gotoField,
                                  const QString& inputHint);

}  // namespace query

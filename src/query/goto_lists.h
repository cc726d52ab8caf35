#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace engine {
class Database;
class Recordset;
}  // namespace engine

namespace query {

// The goto field that a grid column searches: the performer columns show display names, so
// they list and search the sort names instead ("PerformerTrack" -> "ArtistSort",
// "PerformerAlbum" -> "AlbumArtistSort", in any case). Every other column searches itself.
QString gotoFieldForColumn(const QString& dataField);

// The statement that lists the distinct values of a goto field, the field of its record set
// that holds them and the field's type letter ("c", "n", "d", "b").
struct GotoQuery {
    QString text;
    QString resultField;
    QString typeLetter;
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

// The comparisons a type letter offers, in the order of the combo box, with the preset.
// An unknown letter offers none.
GotoLists comparisonsFor(const QString& typeLetter);

// One entry per row of rows, in their order, read from resultField: dates in short form,
// currency amounts in currency form, play times (result fields C_SumTime and Length) as
// hh:mm:ss, everything else as text; Nulls give no entry. The date and time lists carry
// inputHint as tooltip. Reads rows from the first to the last row.
GotoLists fillGotoList(const QString& resultField, const QString& typeLetter,
                       engine::Recordset& rows, const QString& inputHint);

// Runs the goto query of a field as a snapshot and fills the lists from it; a field without a
// goto query gives empty lists. Engine errors propagate as engine::JetError.
GotoLists fillSourceGotoList(engine::Database& database, const QString& gotoField,
                             const QString& filterClause, const QString& inputHint);
// The caller keeps the count of the compilation list (gGotoCountCompilation) for the list
// count shown beside the main window's grid.
GotoLists fillCompilationGotoList(engine::Database& database, const QString& gotoField,
                                  const QString& inputHint);

}  // namespace query

#pragma once

#include <QString>
#include <QVector>
#include <array>
#include <optional>

// The orders of the sort dialog: its key and order lists, the order text it composes from up to
// three levels, and the clause that orders the track picker's source.
namespace query {

// Who opened the sort dialog: the track picker orders its source; the rearrange window renumbers
// the compilation's tracks.
enum class SortCaller { Source, Compilation };

// The dialog's caption for its caller.
QString sortDialogCaption(SortCaller caller);

// One row of a variable list: the caption shown and the field ordered by.
struct SortKey {
    QString caption;
    QString field;
};
// The variable lists: the sortable columns of the caller's rows in the column catalogue. The
// performer keys order by the sort names, not by the names shown.
const QVector<SortKey>& sortKeys(SortCaller caller);

enum class SortDirection { Ascending, Descending };

// One row of the order list.
struct SortDirectionChoice {
    QString caption;
    SortDirection value;
};
const QVector<SortDirectionChoice>& sortDirections();

// The order used when no key is chosen: the order the rows were built in, with a trailing blank.
QString defaultSortOrder(SortCaller caller);

// One level of the dialog. An empty field: the level is not chosen. No direction (key chosen,
// order not): the engine's ascending.
struct SortLevel {
    QString field;
    std::optional<SortDirection> direction;
};
using SortLevels = std::array<SortLevel, 3>;

// The order text (without "ORDER BY"): the chosen levels' "field ASC" or "field DESC" terms in
// level order, joined by ", "; the caller's default order when no level is chosen.
QString composeSortClause(const SortLevels& levels, SortCaller caller);

// The clause that orders the source: "ORDER BY " and the order text.
QString sourceSortClause(const QString& orderText);

// A level from the captions of the two lists, compared without regard to case (for callers that
// name keys by caption, such as the command line). Nothing when either caption is unknown.
std::optional<SortLevel> sortLevelFromCaptions(SortCaller caller, const QString& keyCaption,
                                               const QString& directionCaption);

}  // namespace query

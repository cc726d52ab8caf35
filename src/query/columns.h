#pragma once

#include <QString>
#include <QVariant>
#include <optional>
#include <span>

// The column catalogue: every column a grid shows, the filter offers, the sort orders by or a goto
// list searches, with the kind of value it holds. The kind decides how a typed value is checked,
// which comparisons are offered and how a stored value is shown.
namespace query {

enum class ValueKind { Text, Number, Time, Date, YesNo, Currency };

// The record sources whose columns the windows name.
enum class ColumnSet {
    Source,             // TempSource, the track picker's source
    CompilationTracks,  // a compilation's tracks
    Compilations,       // the main window's compilation list, by the aliases of its statement
    TrackLookup,        // the compilations a track was recorded on
};

struct Column {
    QString field;    // the record source's column
    QString caption;  // the grid's header and the sort list's entry
    ValueKind kind = ValueKind::Text;
    bool sortable = false;
    bool filterable = false;
    // The column sorted, filtered and searched instead: the performers by their sort names.
    QString orderField;
    QString filterCaption;  // when the filter's list names the column otherwise

    const QString& keyField() const { return orderField.isEmpty() ? field : orderField; }
};

// The columns of a set in the order of its sort and filter lists.
std::span<const Column> columns(ColumnSet set);
// The column of a set by its field (any case); nullptr for a field the set lacks.
const Column* findColumn(ColumnSet set, const QString& field);
// The kind of a field or key field of any set (any case); text for a field no set has.
ValueKind kindOfField(const QString& field);

// A stored value as the grids and lists show it: play times as hh:mm:ss, yes/no as "Yes" and
// "No", dates in short form, amounts in currency form, everything else as its text. Nothing for
// Null or a value that is not of its kind.
std::optional<QString> valueText(ValueKind kind, const QVariant& value);

}  // namespace query

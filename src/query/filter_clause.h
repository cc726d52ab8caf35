#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <array>
#include <span>

#include "query/columns.h"

namespace engine {
class Database;
}

namespace query {

// A column of TempSource that the filter dialog offers.
struct FilterVariable {
    QString caption;  // what the variable list shows
    QString field;    // the TempSource column
    ValueKind kind;
};

// The filterable columns of the source, in the order of the variable lists.
std::span<const FilterVariable> variableTable();
// The variable with this caption, compared case-blind; nullptr for any other text.
const FilterVariable* findVariable(const QString& caption);

enum class ComparisonClass { Ordering, Pattern, NullTest, Equality };

struct FilterComparison {
    QString caption;
    ComparisonClass comparisonClass;
};

// The 12 comparisons in the order of the comparison lists.
std::span<const FilterComparison> comparisonTable();

// What a row's comparison list offers for a variable of a kind: text variables the patterns and
// null tests, numbers and times no patterns, yes/no only "=", any other kind all 12. Times get
// the input hint as the tooltip of the row's text box.
struct ComparisonChoice {
    QStringList comparisons;
    QString textTooltip;
};
ComparisonChoice fillComparison(ValueKind kind, const QString& inputHint);

// One row of the filter dialog as the user left it.
struct FilterRow {
    QString variable;    // a caption of variableTable, or anything else for none
    QString comparison;  // a caption of comparisonTable
    QString text;
};

// The outcome of composing the filter: the clause ("" for no filter, else "WHERE ...") or the
// first validation message, and the rows' texts in normal form to write back into the dialog
// (a text that failed its type check comes back empty).
struct FilterOutcome {
    QString clause;
    QString message;
    std::array<QString, 2> texts;
    bool failed() const { return !message.isEmpty(); }
};

// Validates the two rows in order and joins their conditions with the concatenation ("And",
// "Or"). A comparison that the row's variable does not offer counts as no comparison.
FilterOutcome buildFilterClause(const std::array<FilterRow, 2>& rows, const QString& concatenation);

inline const QString kNoTrackMeetsCriteria = QStringLiteral("No track meets the criteria");

// The record source of the track picker's source grid under a filter and a sort; with neither
// "SELECT * FROM tempsource " and one more blank.
QString sourceRecordSource(const QString& filterClause, const QString& sortClause);

// The number of TempSource rows that pass a filter clause (empty: all rows). Engine errors
// propagate as engine::JetError.
qint64 countPassingTracks(engine::Database& database, const QString& filterClause);

// Apply: composes the clause from the rows; on success stores it in filterClause and the number
// of passing tracks in passedCount. A validation failure changes neither. When no track passes,
// the clause stays in force and the outcome carries kNoTrackMeetsCriteria. Engine errors
// propagate as engine::JetError, after filterClause has been stored.
FilterOutcome applyFilter(engine::Database& database, const std::array<FilterRow, 2>& rows,
                          const QString& concatenation, QString& filterClause, qint64& passedCount);

}  // namespace query

#include "query/filter_clause.h"

#include <optional>
#include <vector>

#include "engine/database.h"
#include "engine/recordset.h"
#include "query/field_values.h"
#include "query/time_text.h"

namespace query {

namespace {

std::vector<FilterVariable> filterVariables() {
    std::vector<FilterVariable> variables;
    for (const Column& column : columns(ColumnSet::Source)) {
        if (column.filterable) {
            const QString& caption =
                column.filterCaption.isEmpty() ? column.caption : column.filterCaption;
            variables.push_back({caption, column.keyField(), column.kind});
        }
    }
    return variables;
}

using C = ComparisonClass;

const std::array<FilterComparison, 12> kComparisons{{
    {QStringLiteral("Starts"), C::Pattern},
    {QStringLiteral("Contains"), C::Pattern},
    {QStringLiteral("Like"), C::Pattern},
    {QStringLiteral("Not Like"), C::Pattern},
    {QStringLiteral("Is Null"), C::NullTest},
    {QStringLiteral("Is Not Null"), C::NullTest},
    {QStringLiteral("="), C::Equality},
    {QStringLiteral("<>"), C::Ordering},
    {QStringLiteral(">"), C::Ordering},
    {QStringLiteral(">="), C::Ordering},
    {QStringLiteral("<"), C::Ordering},
    {QStringLiteral("<="), C::Ordering},
}};

bool offeredFor(ValueKind kind, ComparisonClass comparisonClass) {
    switch (kind) {
        case ValueKind::Text:
            return comparisonClass != C::Ordering && comparisonClass != C::Equality;
        case ValueKind::Number:
        case ValueKind::Time:
            return comparisonClass != C::Pattern;
        case ValueKind::YesNo:
            return comparisonClass == C::Equality;
        default:
            return true;
    }
}

// The table's caption of a comparison the variable offers, typed in any case.
std::optional<QString> offeredComparison(const FilterVariable& variable, const QString& typed) {
    for (const FilterComparison& comparison : kComparisons) {
        if (comparison.caption.compare(typed, Qt::CaseInsensitive) == 0 &&
            offeredFor(variable.kind, comparison.comparisonClass))
            return comparison.caption;
    }
    return std::nullopt;
}

// "And" or "Or" in the list's spelling; empty for anything else.
QString normalConcatenation(const QString& typed) {
    for (const QString& word : {QStringLiteral("And"), QStringLiteral("Or")}) {
        if (word.compare(typed, Qt::CaseInsensitive) == 0)
            return word;
    }
    return QString();
}

bool isBlank(const FilterRow& row) {
    return row.variable.isEmpty() && row.comparison.isEmpty() && row.text.isEmpty();
}

QString ordinal(int index) {
    return index == 0 ? QStringLiteral("First") : QStringLiteral("Second");
}

QString typeMessage(int index, ValueKind kind) {
    QString demand = QStringLiteral("a valid time (e.g. 00:49:07)");
    if (kind == ValueKind::Number)
        demand = QStringLiteral("a number (integer)");
    else if (kind == ValueKind::YesNo)
        demand = QStringLiteral("'Yes' or 'No'");
    return ordinal(index) + QStringLiteral(" filter text must be ") + demand + QLatin1Char('.');
}

bool isNullTest(const QString& comparison) {
    return comparison.toUpper().contains(QLatin1String(" NULL"));
}

QString condition(const FilterVariable& variable, const QString& comparison, const QString& text) {
    if (isNullTest(comparison))
        return comparison;
    if (variable.kind == ValueKind::Text)
        return textCondition(comparison, text);
    if (variable.kind == ValueKind::Time)
        return comparison + QLatin1Char(' ') + QString::number(qRound64(parseTime(text)));
    return comparison + QLatin1Char(' ') + text;
}

// One filled row: its part of the clause, or the row's message. A checked text is written
// back into text in normal form.
struct RowPart {
    QString part;
    QString message;
};

RowPart composeRow(int index, const FilterRow& row, const QString& concatenation, QString& text) {
    const FilterVariable* variable = findVariable(row.variable);
    const std::optional<QString> comparison =
        variable ? offeredComparison(*variable, row.comparison) : std::nullopt;
    const bool nullTest = comparison && isNullTest(*comparison);
    if (!comparison || (!nullTest && row.text.isEmpty()))
        return {{}, ordinal(index) + QStringLiteral(" filter definition is incomplete.")};
    if (index == 1 && concatenation.isEmpty())
        return {{},
                QStringLiteral("First and second filter definitions ") +
                    QStringLiteral("are not properly concatenated.")};
    if (!nullTest && variable->kind != ValueKind::Text) {
        text = checkValue(row.text, variable->kind).toText();
        if (text.isEmpty())
            return {{}, typeMessage(index, variable->kind)};
    }
    return {variable->field + QLatin1Char(' ') + condition(*variable, *comparison, text), {}};
}

}  // namespace

std::span<const FilterVariable> variableTable() {
    static const std::vector<FilterVariable> variables = filterVariables();
    return variables;
}

const FilterVariable* findVariable(const QString& caption) {
    for (const FilterVariable& variable : variableTable()) {
        if (variable.caption.compare(caption, Qt::CaseInsensitive) == 0)
            return &variable;
    }
    return nullptr;
}

std::span<const FilterComparison> comparisonTable() {
    return kComparisons;
}

ComparisonChoice fillComparison(ValueKind kind, const QString& inputHint) {
    ComparisonChoice choice;
    for (const FilterComparison& comparison : kComparisons) {
        if (offeredFor(kind, comparison.comparisonClass))
            choice.comparisons << comparison.caption;
    }
    if (kind == ValueKind::Time)
        choice.textTooltip = inputHint;
    return choice;
}

FilterOutcome buildFilterClause(const std::array<FilterRow, 2>& rows,
                                const QString& concatenation) {
    FilterOutcome outcome;
    outcome.texts = {rows[0].text, rows[1].text};
    if (isBlank(rows[0])) {
        if (!isBlank(rows[1]))
            outcome.message = QStringLiteral("First filter definition is empty.");
        return outcome;
    }
    const QString joint = normalConcatenation(concatenation);
    std::array<QString, 2> parts;
    for (int index = 0; index < 2; ++index) {
        if (isBlank(rows[index]))
            continue;
        RowPart row = composeRow(index, rows[index], joint, outcome.texts[index]);
        if (!row.message.isEmpty()) {
            outcome.message = row.message;
            return outcome;
        }
        parts[index] = row.part;
    }
    outcome.clause = QStringLiteral("WHERE ") + parts[0];
    if (!parts[1].isEmpty())
        outcome.clause += QLatin1Char(' ') + joint + QLatin1Char(' ') + parts[1];
    return outcome;
}

QString sourceRecordSource(const QString& filterClause, const QString& sortClause) {
    return QStringLiteral("SELECT * FROM tempsource ") + filterClause + QLatin1Char(' ') +
           sortClause;
}

qint64 countPassingTracks(engine::Database& database, const QString& filterClause) {
    engine::Recordset count = database.openRecordset(
        QStringLiteral("SELECT Count(*) AS N FROM tempsource ") + filterClause,
        engine::RecordsetType::Snapshot);
    return count.value(0).toLongLong();
}

FilterOutcome applyFilter(engine::Database& database, const std::array<FilterRow, 2>& rows,
                          const QString& concatenation, QString& filterClause,
                          qint64& passedCount) {
    FilterOutcome outcome = buildFilterClause(rows, concatenation);
    if (outcome.failed())
        return outcome;
    filterClause = outcome.clause;
    passedCount = countPassingTracks(database, filterClause);
    if (passedCount == 0)
        outcome.message = kNoTrackMeetsCriteria;
    return outcome;
}

}  // namespace query

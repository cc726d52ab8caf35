#include "query/goto_find.h"

#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "platform/dialogs.h"
#include "query/field_values.h"

namespace query {

namespace {

// Checks the typed value by a kind and writes the normal form back into it; nothing when the
// check failed (checkValue has shown its message then).
std::optional<FieldValue> checkedValue(QString& gotoText, ValueKind kind,
                                       platform::Dialogs& dialogs) {
    const FieldValue value = checkValue(gotoText, kind, false, dialogs);
    gotoText = value.toText();
    if (gotoText.isEmpty())
        return std::nullopt;
    return value;
}

std::optional<QString> timeCondition(const QString& comparison, QString& gotoText,
                                     const QString& gotoField, platform::Dialogs& dialogs) {
    if (!checkedValue(gotoText, ValueKind::Time, dialogs))
        return std::nullopt;
    QString condition = comparison + QString::number(qRound64(parseTime(gotoText)));
    // Rows without a time hold 0; a search for short times must not land on them.
    if (comparison == QLatin1String("<=") || comparison == QLatin1String("<"))
        condition += QStringLiteral(" And ") + gotoField + QStringLiteral(" > 0");
    return condition;
}

std::optional<QString> dateCondition(const QString& comparison, QString& gotoText,
                                     platform::Dialogs& dialogs) {
    const auto value = checkedValue(gotoText, ValueKind::Date, dialogs);
    if (!value)
        return std::nullopt;
    return comparison + sqlDateLiteral(value->date());
}

std::optional<QString> plainCondition(const QString& comparison, QString& gotoText, ValueKind kind,
                                      platform::Dialogs& dialogs) {
    if (!checkedValue(gotoText, kind, dialogs))
        return std::nullopt;
    return comparison + gotoText;
}

// Starts and Contains embed the text in a pattern with its wildcards escaped; Like and Not Like
// take the typed pattern with its wildcards working.
std::optional<QString> textCondition(const QString& comparison, const QString& gotoText,
                                     platform::Dialogs& dialogs) {
    if (gotoText.isEmpty()) {
        dialogs.exclamation(QStringLiteral("Value must be a string."));
        return std::nullopt;
    }
    return query::textCondition(comparison, gotoText);
}

std::optional<QString> condition(const QString& comparison, QString& gotoText,
                                 const QString& gotoField, platform::Dialogs& dialogs) {
    if (comparison.toUpper().contains(QLatin1String(" NULL")))
        return comparison;
    const ValueKind kind = kindOfField(gotoField);
    switch (kind) {
        case ValueKind::Time:
            return timeCondition(comparison, gotoText, gotoField, dialogs);
        case ValueKind::Date:
            return dateCondition(comparison, gotoText, dialogs);
        case ValueKind::Text:
            return textCondition(comparison, gotoText, dialogs);
        default:
            return plainCondition(comparison, gotoText, kind, dialogs);
    }
}

bool runFind(int mode, engine::Recordset& rows, const QString& criterion) {
    switch (mode) {
        case int(FindMode::First):
            rows.findFirst(criterion);
            return true;
        case int(FindMode::Previous):
            rows.findPrevious(criterion);
            return true;
        case int(FindMode::Next):
            rows.findNext(criterion);
            return true;
        case int(FindMode::Last):
            rows.findLast(criterion);
            return true;
        default:
            return false;
    }
}

}  // namespace

std::optional<QString> gotoCriterion(const QString& comparison, QString& gotoText,
                                     const QString& gotoField, platform::Dialogs& dialogs) {
    const auto found = condition(comparison, gotoText, gotoField, dialogs);
    if (!found)
        return std::nullopt;
    return gotoField + QLatin1Char(' ') + *found;
}

std::optional<QString> findInGotoList(int mode, const QString& comparison, QString& gotoText,
                                      engine::Recordset& rows, const QString& gotoField,
                                      platform::Dialogs& dialogs) {
    const auto criterion = gotoCriterion(comparison, gotoText, gotoField, dialogs);
    if (!criterion)
        return std::nullopt;
    try {
        if (!runFind(mode, rows, *criterion))
            return std::nullopt;
    } catch (const engine::JetError& error) {
        // The finds refuse a criterion before they move, so the position is still the old one.
        dialogs.exclamation(error.description());
        return std::nullopt;
    }
    return criterion;
}

}  // namespace query

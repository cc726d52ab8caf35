#include "query/goto_find.h"

#include <QStringList>

#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "platform/dialogs.h"
#include "query/field_values.h"

namespace query {

namespace {

// Checks the typed value with a type letter and writes the normal form back into it; nothing
// when the check failed (checkValue has shown its message then).
std::optional<FieldValue> checkedValue(QString& gotoText, const QString& letter,
                                       platform::Dialogs& dialogs) {
    const FieldValue value = checkValue(gotoText, letter, false, dialogs);
    gotoText = value.toText();
    if (gotoText.isEmpty())
        return std::nullopt;
    return value;
}

std::optional<QString> timeCondition(const QString& comparison, QString& gotoText,
                                     const QString& gotoField, platform::Dialogs& dialogs) {
    if (!checkedValue(gotoText, QStringLiteral("T"), dialogs))
        return std::nullopt;
    QString condition = comparison + QString::number(qRound64(parseTime(gotoText)));
    // Rows without a time hold 0; a search for short times must not land on them.
    if (comparison == QLatin1String("<=") || comparison == QLatin1String("<"))
        condition += QStringLiteral(" And ") + gotoField + QStringLiteral(" > 0");
    return condition;
}

std::optional<QString> dateCondition(const QString& comparison, QString& gotoText,
                                     platform::Dialogs& dialogs) {
    const auto value = checkedValue(gotoText, QStringLiteral("D"), dialogs);
    if (!value)
        return std::nullopt;
    return comparison + sqlDateLiteral(value->date());
}

std::optional<QString> plainCondition(const QString& comparison, QString& gotoText,
                                      const QString& letter, platform::Dialogs& dialogs) {
    if (!checkedValue(gotoText, letter, dialogs))
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
    switch (gotoFieldKind(gotoField)) {
        case GotoFieldKind::Time:
            return timeCondition(comparison, gotoText, gotoField, dialogs);
        case GotoFieldKind::Date:
            return dateCondition(comparison, gotoText, dialogs);
        case GotoFieldKind::Number:
            return plainCondition(comparison, gotoText, QStringLiteral("N"), dialogs);
        case GotoFieldKind::YesNo:
            return plainCondition(comparison, gotoText, QStringLiteral("B"), dialogs);
        case GotoFieldKind::Text:
            return textCondition(comparison, gotoText, dialogs);
    }
    return std::nullopt;
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

GotoFieldKind gotoFieldKind(const QString& gotoField) {
    static const QStringList kTimeFields{QStringLiteral("c_sumtime"), QStringLiteral("length")};
    static const QStringList kNumberFields{
        QStringLiteral("myrecorded"), QStringLiteral("item"),     QStringLiteral("index"),
        QStringLiteral("c_sumtrack"), QStringLiteral("c_length"), QStringLiteral("sumitempart"),
        QStringLiteral("trackno")};
    const QString field = gotoField.toLower();
    if (kTimeFields.contains(field))
        return GotoFieldKind::Time;
    if (field == QLatin1String("recdate"))
        return GotoFieldKind::Date;
    if (kNumberFields.contains(field))
        return GotoFieldKind::Number;
    if (field == QLatin1String("live"))
        return GotoFieldKind::YesNo;
    return GotoFieldKind::Text;
}

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

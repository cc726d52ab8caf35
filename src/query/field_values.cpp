#include "query/field_values.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "query/number_text.h"

namespace query {

namespace {

using Check = std::optional<FieldValue> (*)(const QVariant&);

bool holdsFloatingPoint(const QVariant& value) {
    const int type = value.typeId();
    return type == QMetaType::Double || type == QMetaType::Float;
}

// A yes/no value used as a number counts as -1 or 0.
qint64 yesNoNumber(const QVariant& value) {
    return value.toBool() ? -1 : 0;
}

std::optional<FieldValue> checkInteger(const QVariant& value) {
    constexpr qint64 low = std::numeric_limits<qint16>::min();
    constexpr qint64 high = std::numeric_limits<qint16>::max();
    std::optional<qint64> number;
    if (value.typeId() == QMetaType::Bool) {
        number = yesNoNumber(value);
    } else if (holdsFloatingPoint(value)) {
        // nearbyint rounds halves to even in the default rounding mode.
        const double rounded = std::nearbyint(value.toDouble());
        if (std::isfinite(rounded) && rounded >= low && rounded <= high)
            number = static_cast<qint64>(rounded);
    } else {
        number = readWholeNumber(value.toString(), low, high);
    }
    if (!number)
        return std::nullopt;
    return FieldValue::fromInteger(static_cast<qint16>(*number));
}

std::optional<FieldValue> checkCurrency(const QVariant& value) {
    std::optional<Currency> amount;
    if (value.typeId() == QMetaType::Bool)
        amount = Currency::fromUnits(yesNoNumber(value) * Currency::kScale);
    else if (holdsFloatingPoint(value))
        amount = Currency::fromDouble(value.toDouble());
    else
        amount = Currency::fromText(value.toString());
    if (!amount)
        return std::nullopt;
    return FieldValue::fromCurrency(*amount);
}

std::optional<FieldValue> checkDate(const QVariant& value) {
    std::optional<QDate> date;
    if (value.typeId() == QMetaType::QDate)
        date = value.toDate();
    else if (value.typeId() == QMetaType::QDateTime)
        date = value.toDateTime().date();
    else
        date = readDate(value.toString());
    if (!date || !date->isValid())
        return std::nullopt;
    return FieldValue::fromDate(*date);
}

std::optional<FieldValue> checkTime(const QVariant& value) {
    const std::optional<QString> time = checkTimeText(value.toString());
    if (!time)
        return std::nullopt;
    return FieldValue::fromText(*time);
}

std::optional<FieldValue> checkYesNo(const QVariant& value) {
    // Tried in this order; the German words are understood as well.
    static const std::array<const char*, 7> yesWords{"y", "yes", "true", "on", "-1", "j", "ja"};
    static const std::array<const char*, 6> noWords{"n", "no", "false", "off", "0", "nein"};
    const QString word = value.toString().toLower();
    for (const char* yes : yesWords) {
        if (word == QLatin1String(yes))
            return FieldValue::fromYesNo(true);
    }
    for (const char* no : noWords) {
        if (word == QLatin1String(no))
            return FieldValue::fromYesNo(false);
    }
    return std::nullopt;
}

struct KindRule {
    ValueKind kind;
    const char* message;
    Check check;
};

constexpr std::array<KindRule, 5> kRules{{
    {ValueKind::Number, "Value must be a number (integer).", checkInteger},
    {ValueKind::Currency, "Value must be a currency.", checkCurrency},
    {ValueKind::Date, "Value must be a valid date (e.g. 21.01.97).", checkDate},
    {ValueKind::Time, "Value must be a valid time (e.g. 00:49:07).", checkTime},
    {ValueKind::YesNo, "Value must be 'Yes' or 'No'.", checkYesNo},
}};

const KindRule* ruleFor(ValueKind kind) {
    for (const KindRule& rule : kRules) {
        if (rule.kind == kind)
            return &rule;
    }
    return nullptr;
}

QString replaceEach(QString text, QChar special, const QString& replacement) {
    // QString::replace goes on after each inserted replacement, never scanning it again.
    return text.replace(special, replacement);
}

}  // namespace

QString FieldValue::toText() const {
    switch (kind()) {
        case Kind::Empty:
            return QString();
        case Kind::Integer:
            return QString::number(integer());
        case Kind::Currency:
            return currency().toText();
        case Kind::Date:
            return shortDateText(date());
        case Kind::Text:
            return text();
        case Kind::YesNo:
            return yesNo() ? QStringLiteral("True") : QStringLiteral("False");
    }
    return QString();
}

FieldValue checkValue(const QVariant& value, ValueKind kind, bool quiet,
                      platform::Dialogs& dialogs) {
    const FieldValue checked = checkValue(value, kind);
    if (!quiet && !checked.isEmpty() && checked.toText().isEmpty())
        dialogs.exclamation(QString::fromLatin1(ruleFor(kind)->message));
    return checked;
}

FieldValue checkValue(const QVariant& value, ValueKind kind) {
    const KindRule* rule = ruleFor(kind);
    if (!rule)
        return FieldValue();
    if (std::optional<FieldValue> checked = rule->check(value))
        return *checked;
    return FieldValue::fromText(QString());
}

QString escapeSql(EscapeFor use, const QString& text) {
    QString escaped = replaceEach(text, u'\'', QStringLiteral("''"));
    if (use == EscapeFor::Literal)
        return escaped;
    escaped = replaceEach(escaped, u'[', QStringLiteral("[[]"));
    if (use == EscapeFor::TypedPattern)
        return escaped;
    escaped = replaceEach(escaped, u'?', QStringLiteral("[?]"));
    escaped = replaceEach(escaped, u'*', QStringLiteral("[*]"));
    return replaceEach(escaped, u'#', QStringLiteral("[#]"));
}

QString textCondition(const QString& comparison, const QString& text) {
    const QString lower = comparison.toLower();
    const QString embedded = escapeSql(EscapeFor::TextInPattern, text);
    if (lower == QLatin1String("starts"))
        return QStringLiteral("LIKE '") + embedded + QStringLiteral("**'");
    if (lower == QLatin1String("contains"))
        return QStringLiteral("LIKE '*") + embedded + QStringLiteral("*'");
    return comparison + QStringLiteral(" '") + escapeSql(EscapeFor::TypedPattern, text) +
           QStringLiteral("'");
}

void upcaseKey(qint16& keyCode) {
    if (keyCode >= 97 && keyCode <= 122)
        keyCode = static_cast<qint16>(keyCode - 32);
}

}  // namespace query

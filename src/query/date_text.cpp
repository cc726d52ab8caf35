#include "query/date_text.h"

#include <QRegularExpression>

namespace query {

namespace {

int fullYear(const QString& typedYear) {
    const int year = typedYear.toInt();
    if (typedYear.size() != 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

int twoDigitYear(const QDate& date) {
    return ((date.year() % 100) + 100) % 100;
}

std::optional<QDate> validDate(int year, int month, int day) {
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

}  // namespace

std::optional<QDate> readDate(const QString& typed) {
    static const QRegularExpression iso(
        QStringLiteral(R"(^([0-9]{4})-([0-9]{1,2})-([0-9]{1,2})$)"));
    static const QRegularExpression dayFirst(
        QStringLiteral(R"(^([0-9]{1,2})([./-])([0-9]{1,2})\2([0-9]{2}|[0-9]{4})$)"));

    const QString text = typed.trimmed();
    if (const QRegularExpressionMatch m = iso.match(text); m.hasMatch())
        return validDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    if (const QRegularExpressionMatch m = dayFirst.match(text); m.hasMatch())
        return validDate(fullYear(m.captured(4)), m.captured(3).toInt(), m.captured(1).toInt());
    return std::nullopt;
}

QString shortDateText(const QDate& date) {
    return QStringLiteral("%1.%2.%3")
        .arg(date.day(), 2, 10, QLatin1Char('0'))
        .arg(date.month(), 2, 10, QLatin1Char('0'))
        .arg(twoDigitYear(date), 2, 10, QLatin1Char('0'));
}

QString sqlDateLiteral(const QDate& date) {
    return QStringLiteral("#%1/%2/%3#")
        .arg(date.month())
        .arg(date.day())
        .arg(twoDigitYear(date), 2, 10, QLatin1Char('0'));
}

}  // namespace query

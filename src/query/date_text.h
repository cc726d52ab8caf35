#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace query {

// Dates are typed in the day.month.year order of the input hint "DD.MM.YY", whatever the
// desktop's locale: "21.01.97", "21/1/1997" and "21-01-97" (one separator kind per date),
// and also in ISO form "1997-01-21". Two-digit years 00-29 mean 2000-2029 and 30-99 mean
// 1930-1999, as in the database's date literals. Impossible dates ("31.02.97") are refused.
std::optional<QDate> readDate(const QString& text);

// The short date form the program shows: "21.01.97". Read back by readDate for the years
// 1930-2029.
QString shortDateText(const QDate& date);

// A date as written into a database criterion, independent of the locale: "#1/21/97#".
QString sqlDateLiteral(const QDate& date);

}  // namespace query

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtGlobal>
#include <optional>

// Conversions of values as Access stores them into the forms the compilation database keeps.
namespace accessfile {

// A date/time value is a count of days since 1899-12-30; the fraction is the time of day (its
// magnitude, also for days before 1899-12-30). Gives 'YYYY-MM-DD', with ' HH:MM:SS' only when
// there is a time of day; nothing for values outside the years 100 to 9999 that Access allows.
std::optional<QString> jetDateText(double serial);
// The same text as ASCII bytes, for writers that bind UTF-8.
std::optional<QByteArray> jetDateUtf8(double serial);

// A single-precision value as the double that prints the same, so 0.1f reads back as 0.1.
double singleAsDouble(float value);

// Currency is a 64-bit count of ten-thousandths.
double currencyAsDouble(qint64 tenThousandths);

// An SQL identifier in double quotes, inner quotes doubled.
QString quotedIdentifier(const QString& name);

// One column of a copied table: its name, declared SQLite type, and whether it holds text
// (text is compared without regard to case in the compilation database).
struct ColumnSpec {
    QString name;
    QString declaredType;
    bool isText = false;
};

QString createTableSql(const QString& table, const QList<ColumnSpec>& columns);
QString insertSql(const QString& table, const QList<ColumnSpec>& columns);

}  // namespace accessfile

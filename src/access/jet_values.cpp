#include "access/jet_values.h"

#include <QDate>
#include <QStringList>
#include <charconv>
#include <cmath>

namespace accessfile {

namespace {
constexpr qint64 kSecondsPerDay = 86400;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
}  // namespace

std::optional<QString> jetDateText(double serial) {
    if (!std::isfinite(serial) || std::fabs(serial) > 3.0e6)
        return std::nullopt;
    const double wholeDays = std::trunc(serial);
    qint64 seconds = std::llround(std::fabs(serial - wholeDays) * kSecondsPerDay);
    QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(wholeDays));
    if (seconds >= kSecondsPerDay) {  // rounding reached midnight of the next day
        seconds -= kSecondsPerDay;
        date = date.addDays(1);
    }
    if (!date.isValid() || date.year() < kFirstYear || date.year() > kLastYear)
        return std::nullopt;
    QString text = QStringLiteral("%1-%2-%3")
                       .arg(date.year(), 4, 10, QLatin1Char('0'))
                       .arg(date.month(), 2, 10, QLatin1Char('0'))
                       .arg(date.day(), 2, 10, QLatin1Char('0'));
    if (seconds > 0) {
        text += QStringLiteral(" %1:%2:%3")
                    .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
                    .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                    .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    }
    return text;
}

double singleAsDouble(float value) {
    if (!std::isfinite(value))
        return value;
    char digits[32];
    const auto printed = std::to_chars(std::begin(digits), std::end(digits), value);
    double result = value;
    std::from_chars(std::begin(digits), printed.ptr, result);
    return result;
}

double currencyAsDouble(qint64 tenThousandths) {
    return static_cast<double>(tenThousandths) / 10000.0;
}

QString quotedIdentifier(const QString& name) {
    QString inner = name;
    inner.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

QString createTableSql(const QString& table, const QList<ColumnSpec>& columns) {
    QStringList definitions;
    for (const ColumnSpec& column : columns) {
        QString definition = quotedIdentifier(column.name) + QLatin1Char(' ') + column.declaredType;
        if (column.isText)
            definition += QLatin1String(" COLLATE NOCASE");
        definitions << definition;
    }
    return QStringLiteral("CREATE TABLE %1 (%2)")
        .arg(quotedIdentifier(table), definitions.join(QLatin1String(", ")));
}

QString insertSql(const QString& table, const QList<ColumnSpec>& columns) {
    QStringList names;
    QStringList marks;
    for (const ColumnSpec& column : columns) {
        names << quotedIdentifier(column.name);
        marks << QStringLiteral("?");
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(quotedIdentifier(table), names.join(QLatin1String(", ")),
             marks.join(QLatin1String(", ")));
}

}  // namespace accessfile

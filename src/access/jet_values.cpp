#include "access/jet_values.h"

#include <QDate>
#include <QStringList>
#include <charconv>
#include <cmath>

#include "engine/field_type.h"

namespace accessfile {

namespace {
constexpr qint64 kSecondsPerDay = 86400;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
}  // namespace

namespace {

// Writes a number of exactly `width` digits (leading zeros) and returns the end.
char* putDigits(char* out, qint64 value, int width) {
    for (int i = width - 1; i >= 0; --i, value /= 10)
        out[i] = char('0' + value % 10);
    return out + width;
}

}  // namespace

std::optional<QByteArray> jetDateUtf8(double serial) {
    if (!std::isfinite(serial) || std::fabs(serial) > 3.0e6)
        return std::nullopt;
    const double wholeDays = std::trunc(serial);
    qint64 seconds = std::llround(std::fabs(serial - wholeDays) * kSecondsPerDay);
    QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(wholeDays));
    if (seconds >= kSecondsPerDay) {  // rounding reached midnight of the next day
        seconds -= kSecondsPerDay;
        date = date.addDays(1);
    }
    int year = 0, month = 0, day = 0;
    date.getDate(&year, &month, &day);
    if (!date.isValid() || year < kFirstYear || year > kLastYear)
        return std::nullopt;
    // Many thousands of dates are copied per table: formatted by hand, not through QString.
    char text[sizeof "YYYY-MM-DD HH:MM:SS"];
    char* end = putDigits(text, year, 4);
    *end++ = '-';
    end = putDigits(end, month, 2);
    *end++ = '-';
    end = putDigits(end, day, 2);
    if (seconds > 0) {
        *end++ = ' ';
        end = putDigits(end, seconds / 3600, 2);
        *end++ = ':';
        end = putDigits(end, seconds / 60 % 60, 2);
        *end++ = ':';
        end = putDigits(end, seconds % 60, 2);
    }
    return QByteArray(text, end - text);
}

std::optional<QString> jetDateText(double serial) {
    const std::optional<QByteArray> text = jetDateUtf8(serial);
    return text ? std::optional<QString>(QString::fromLatin1(*text)) : std::nullopt;
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
            definition += engine::textCollationClause();
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

#include "query/time_text.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "query/number_text.h"

namespace query {

namespace {

constexpr qint64 kInt16Min = std::numeric_limits<qint16>::min();
constexpr qint64 kInt16Max = std::numeric_limits<qint16>::max();
constexpr qint64 kInt32Min = std::numeric_limits<qint32>::min();
constexpr qint64 kInt32Max = std::numeric_limits<qint32>::max();

// At least two digits, the sign in front: 7 -> "07", -1 -> "-01", 100 -> "100".
QString twoDigits(qint64 value) {
    const QString digits = QString::number(value < 0 ? -value : value).rightJustified(2, u'0');
    return value < 0 ? u'-' + digits : digits;
}

qint64 floorDiv(qint64 dividend, qint64 divisor) {
    const qint64 quotient = dividend / divisor;
    return (dividend % divisor != 0 && (dividend < 0) != (divisor < 0)) ? quotient - 1 : quotient;
}

qint64 partOrThrow(QStringView part, qint64 low, qint64 high) {
    const std::optional<qint64> number = readWholeNumber(part.toString(), low, high);
    if (!number)
        throw std::invalid_argument("time part is not a number in range: " +
                                    part.toString().toStdString());
    return *number;
}

bool inClockRange(const QString& hours, const QString& minutes, const QString& seconds) {
    return readWholeNumber(hours, 0, 99) && readWholeNumber(minutes, 0, 59) &&
           readWholeNumber(seconds, 0, 59);
}

}  // namespace

QString formatTime(double seconds) {
    // Non-finite or absurd values never come from the database; show them as zero rather
    // than converting them to an integer, which would be undefined.
    if (!std::isfinite(seconds) || std::fabs(seconds) > 1e15)
        seconds = 0;
    const qint64 hours = static_cast<qint64>(std::floor(seconds / 3600));
    // nearbyint rounds halves to even; the remainders keep the sign of the dividend.
    const qint64 rest = static_cast<qint64>(std::nearbyint(seconds)) % 3600;
    const qint64 minutes = floorDiv(rest, 60);
    return twoDigits(hours) + u':' + twoDigits(minutes) + u':' + twoDigits(rest % 60);
}

double parseTime(const QString& text) {
    const qsizetype first = text.indexOf(u':');
    const qsizetype second = first < 0 ? -1 : text.indexOf(u':', first + 1);
    if (second < 0)
        throw std::invalid_argument("time text needs two ':' separators: " + text.toStdString());
    const QStringView view(text);
    const qint64 hours = partOrThrow(view.left(first), kInt32Min, kInt32Max);
    const qint64 minutes =
        partOrThrow(view.mid(first + 1, second - first - 1), kInt16Min, kInt16Max);
    const qint64 seconds = partOrThrow(view.mid(second + 1), kInt16Min, kInt16Max);
    const qint64 minuteSeconds = minutes * 60;
    if (minuteSeconds < kInt16Min || minuteSeconds > kInt16Max)
        throw std::invalid_argument("minutes overflow in time text: " + text.toStdString());
    return double(minuteSeconds + hours * 3600 + seconds);
}

std::optional<QString> checkTimeText(const QString& text) {
    if (text.size() == 8) {
        if (text[2] != u':' || text[5] != u':' ||
            !inClockRange(text.mid(0, 2), text.mid(3, 2), text.mid(6, 2)))
            return std::nullopt;
        return text;
    }
    if (text.size() == 6) {
        const QString hours = text.mid(0, 2), minutes = text.mid(2, 2), seconds = text.mid(4, 2);
        if (!inClockRange(hours, minutes, seconds))
            return std::nullopt;
        return hours + u':' + minutes + u':' + seconds;
    }
    return std::nullopt;
}

}  // namespace query

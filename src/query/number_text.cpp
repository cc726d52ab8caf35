#include "query/number_text.h"

#include <algorithm>
#include <limits>

namespace query {

namespace {

struct DecimalDigits {
    bool negative = false;
    QString whole;
    QString fraction;
};

std::optional<DecimalDigits> splitDecimal(const QString& typed) {
    const QString text = typed.trimmed();
    DecimalDigits digits;
    qsizetype pos = 0;
    if (pos < text.size() && (text[pos] == u'+' || text[pos] == u'-')) {
        digits.negative = text[pos] == u'-';
        ++pos;
    }
    bool inFraction = false;
    for (; pos < text.size(); ++pos) {
        const QChar ch = text[pos];
        if (ch == u'.' || ch == u',') {
            if (inFraction)
                return std::nullopt;
            inFraction = true;
        } else if (ch >= u'0' && ch <= u'9') {
            (inFraction ? digits.fraction : digits.whole).append(ch);
        } else {
            return std::nullopt;
        }
    }
    if (digits.whole.isEmpty() && digits.fraction.isEmpty())
        return std::nullopt;
    return digits;
}

// Whether the dropped digits are more than half, exactly half or less than half a unit.
int comparedToHalf(QStringView dropped) {
    if (dropped.isEmpty() || dropped[0] < u'5')
        return -1;
    if (dropped[0] > u'5')
        return 1;
    for (qsizetype i = 1; i < dropped.size(); ++i) {
        if (dropped[i] != u'0')
            return 1;
    }
    return 0;
}

}  // namespace

std::optional<qint64> readScaledNumber(const QString& text, int decimals) {
    const std::optional<DecimalDigits> digits = splitDecimal(text);
    if (!digits)
        return std::nullopt;
    const QString kept =
        digits->whole + digits->fraction.left(decimals).leftJustified(decimals, u'0');
    const QStringView dropped =
        QStringView(digits->fraction).mid(qMin<qsizetype>(decimals, digits->fraction.size()));

    // The magnitude is collected unsigned so that the most negative 64-bit value still fits.
    const quint64 limit = quint64(std::numeric_limits<qint64>::max()) + (digits->negative ? 1 : 0);
    quint64 magnitude = 0;
    for (const QChar ch : kept) {
        const quint64 digit = ch.unicode() - u'0';
        if (magnitude > (limit - digit) / 10)
            return std::nullopt;
        magnitude = magnitude * 10 + digit;
    }
    const int half = comparedToHalf(dropped);
    if (half > 0 || (half == 0 && magnitude % 2 == 1)) {
        if (magnitude == limit)
            return std::nullopt;
        ++magnitude;
    }
    if (digits->negative)
        return magnitude == 0 ? 0 : -qint64(magnitude - 1) - 1;
    return qint64(magnitude);
}

std::optional<qint64> readWholeNumber(const QString& text, qint64 low, qint64 high) {
    const std::optional<qint64> number = readScaledNumber(text, 0);
    if (!number || *number < low || *number > high)
        return std::nullopt;
    return number;
}

bool hasFraction(const QString& text) {
    const std::optional<DecimalDigits> digits = splitDecimal(text);
    return digits && std::any_of(digits->fraction.begin(), digits->fraction.end(),
                                 [](QChar digit) { return digit != u'0'; });
}

}  // namespace query

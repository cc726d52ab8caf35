#include "query/currency.h"

#include <cmath>

#include "query/number_text.h"

namespace query {

std::optional<Currency> Currency::fromText(const QString& text) {
    const std::optional<qint64> units = readScaledNumber(text, kDecimals);
    if (!units)
        return std::nullopt;
    return Currency(*units);
}

std::optional<Currency> Currency::fromDouble(double value) {
    // nearbyint rounds halves to even in the default rounding mode.
    const double units = std::nearbyint(value * kScale);
    // 2^63 is exactly representable; anything at or above it does not fit.
    constexpr double kBound = 9223372036854775808.0;
    if (!std::isfinite(units) || units >= kBound || units < -kBound)
        return std::nullopt;
    return Currency(static_cast<qint64>(units));
}

QString Currency::toText() const {
    const bool negative = units_ < 0;
    // Unsigned so that the most negative amount has a magnitude too.
    const quint64 magnitude = negative ? quint64(0) - quint64(units_) : quint64(units_);
    QString text = QString::number(magnitude / kScale);
    QString fraction = QString::number(magnitude % kScale).rightJustified(kDecimals, u'0');
    while (fraction.endsWith(u'0'))
        fraction.chop(1);
    if (!fraction.isEmpty())
        text += u'.' + fraction;
    return negative ? u'-' + text : text;
}

}  // namespace query

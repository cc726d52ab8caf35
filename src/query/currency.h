#pragma once

#include <QString>
#include <QtGlobal>
#include <compare>
#include <optional>

namespace query {

// A money amount: a 64-bit whole number of ten-thousandths, as the database's currency
// columns hold it. The range is -922337203685477.5808 to 922337203685477.5807.
class Currency {
  public:
    static constexpr qint64 kScale = 10000;
    static constexpr int kDecimals = 4;

    constexpr Currency() = default;
    static constexpr Currency fromUnits(qint64 units) { return Currency(units); }

    // Text as typed (see readScaledNumber): more than four decimals round halves to even.
    static std::optional<Currency> fromText(const QString& text);
    // Nothing for a value that is not finite or lies outside the range.
    static std::optional<Currency> fromDouble(double value);

    constexpr qint64 units() const { return units_; }
    double toDouble() const { return double(units_) / kScale; }
    // Shortest exact form with "." as the decimal point: "12.5", "-0.0001", "3".
    QString toText() const;

    friend constexpr auto operator<=>(const Currency&, const Currency&) = default;

  private:
    constexpr explicit Currency(qint64 units) : units_(units) {}
    qint64 units_ = 0;
};

}  // namespace query

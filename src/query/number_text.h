#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

namespace query {

// Reading numbers that the user typed. The program does not follow the desktop's locale here:
// the hints and examples it shows are fixed ("21.01.97", "00:49:07"), so typed numbers are read
// the same way everywhere. A number is an optional sign, digits and at most one decimal point,
// written either "." or ","; there are no thousands separators and no exponent. Blanks around
// the number are allowed. At least one digit must be present.
//
// Returns the number times 10^decimals, rounded to a whole number with halves going to the even
// neighbour ("2.5" reads as 2, "3.5" as 4 with decimals = 0), or nothing when the text is not a
// number or the scaled value does not fit into 64 bits.
std::optional<qint64> readScaledNumber(const QString& text, int decimals);

// A whole number read as above (fractions rounded), or nothing outside [low, high].
std::optional<qint64> readWholeNumber(const QString& text, qint64 low, qint64 high);

// Whether a number read as above has a fraction that rounding drops: a digit other than 0 after
// its decimal point ("74.5" has, "74.0" and "74" have not). False for text that is no number.
bool hasFraction(const QString& text);

}  // namespace query

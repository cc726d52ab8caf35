#pragma once

#include <QString>
#include <optional>

namespace query {

// Play times are whole seconds; they are shown and typed as "hh:mm:ss", each part with at
// least two digits. Hours have no upper bound here: 360000 seconds read "100:00:00".
QString formatTime(double seconds);

// Seconds of a time text "h:m:s" with exactly two ":" separators. Each part is read as a typed
// whole number; the minutes are multiplied by 60 in 16-bit arithmetic, so at most 546 minutes
// fit. Callers pass texts that checkTimeText accepted; anything else is a caller's error and
// throws std::invalid_argument.
double parseTime(const QString& text);

// A typed time in normal form: "01:49:07" stays as it is and "014907" becomes "01:49:07".
// Hours 00-99, minutes and seconds 00-59. Nothing for any other text.
std::optional<QString> checkTimeText(const QString& text);

}  // namespace query

#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <optional>

namespace engine {

// Jet's Format(value, pattern) for a value that is not Null. Named formats: "Yes/No",
// "True/False", "On/Off", "Currency", "Fixed", "Standard", "Percent", "General Number" and the
// date forms "Short Date", "Long Date", "General Date", "Short Time", "Long Time". Other patterns
// are date patterns (d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss AM/PM; "m" after "h" is
// the minute) or number patterns (0 # . , %). A value the pattern does not apply to comes back
// as its plain text. Numbers and named date forms follow the default QLocale.
QString formatJetValue(const QVariant& value, const QString& pattern);

// A stored date ("YYYY-MM-DD", "YYYY-MM-DD HH:MM:SS" or a time "HH:MM:SS") as a point in time.
std::optional<QDateTime> dateFromStoredText(const QString& text);

}  // namespace engine

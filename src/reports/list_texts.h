#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

// The computed texts of the track lists and the recording protocol. A null value (a field the
// album database left empty) gives an empty text, never "0".
namespace reports {

// A track's play time in seconds as "m:ss" (205 gives "3:25", 59 gives "0:59").
QString trackTime(const QVariant& seconds);
// A compilation's total time in seconds as "h:mm:ss" (4475 gives "1:14:35").
QString totalTime(const QVariant& seconds);

// The compilation's name, five blanks and its total time.
QString compilationTitle(const QVariant& name, const QVariant& sumTime);
// The format, then ", " and the manufacturer only when there is one.
QString formatAndManufacturer(const QVariant& format, const QVariant& manufacturer);

// Title, three blanks, time, three blanks and the recording year: the blanks stay when the year
// is empty, so that the compilation's list keeps its columns.
QString titleTimeAndYear(const QVariant& title, const QVariant& length, const QVariant& year);
// Title, three blanks and time, then three blanks and the year only when there is one.
QString titleTimeMaybeYear(const QVariant& title, const QVariant& length, const QVariant& year);

QString itemAndIndex(const QVariant& item, const QVariant& index);  // "2 - 5"
QString liveText(const QVariant& live);                             // "Recorded Live" or ""

// A date field (RecDate) in the program's short form, whether the engine gives a date or the
// stored text.
QString dateText(const QVariant& value);

// A stored value as the lists print it: whole numbers without a decimal part, dates in the
// program's short form.
QString valueText(const QVariant& value);

}  // namespace reports

#include "reports/list_texts.h"

#include <QDateTime>
#include <cmath>

#include "engine/jet_format.h"
#include "query/date_text.h"
#include "query/time_text.h"

namespace reports {

namespace {

const QString kThreeBlanks = QStringLiteral("   ");
const QString kFiveBlanks = QStringLiteral("     ");

// formatTime's text read again as a time of day, as the time patterns read it: minutes (and
// hours) without a leading zero. A text of a day or more is no time of day and stays as it is.
// Done by hand: the general Format costs a quarter of a millisecond a call, seconds on a long list.
QString timeWithPattern(const QVariant& seconds, bool withHours) {
    if (seconds.isNull()) {
        return QString();
    }
    const QString text = query::formatTime(seconds.toDouble());
    const qsizetype first = text.indexOf(QLatin1Char(':'));
    const qsizetype second = first < 0 ? -1 : text.indexOf(QLatin1Char(':'), first + 1);
    const QStringView view(text);
    const int hours = view.left(first).toInt();
    if (second < 0 || text.indexOf(QLatin1Char(':'), second + 1) >= 0 || hours >= 24) {
        return text;
    }
    QString shown = withHours ? QString::number(hours)
                              : QString::number(view.mid(first + 1, second - first - 1).toInt());
    shown += view.mid(withHours ? first : second);
    return shown;
}

}  // namespace

QString trackTime(const QVariant& seconds) {
    return timeWithPattern(seconds, false);
}

QString totalTime(const QVariant& seconds) {
    return timeWithPattern(seconds, true);
}

QString compilationTitle(const QVariant& name, const QVariant& sumTime) {
    return valueText(name) + kFiveBlanks + totalTime(sumTime);
}

QString formatAndManufacturer(const QVariant& format, const QVariant& manufacturer) {
    QString text = valueText(format);
    if (!manufacturer.isNull()) {
        text += QStringLiteral(", ") + valueText(manufacturer);
    }
    return text;
}

QString titleTimeAndYear(const QVariant& title, const QVariant& length, const QVariant& year) {
    return valueText(title) + kThreeBlanks + trackTime(length) + kThreeBlanks + valueText(year);
}

QString titleTimeMaybeYear(const QVariant& title, const QVariant& length, const QVariant& year) {
    QString text = valueText(title) + kThreeBlanks + trackTime(length);
    if (!year.isNull()) {
        text += kThreeBlanks + valueText(year);
    }
    return text;
}

QString itemAndIndex(const QVariant& item, const QVariant& index) {
    return valueText(item) + QStringLiteral(" - ") + valueText(index);
}

QString liveText(const QVariant& live) {
    return !live.isNull() && live.toBool() ? QStringLiteral("Recorded Live") : QString();
}

QString dateText(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
        const std::optional<QDateTime> stored = engine::dateFromStoredText(value.toString());
        return stored ? query::shortDateText(stored->date()) : value.toString();
    }
    return valueText(value);
}

QString valueText(const QVariant& value) {
    if (value.isNull()) {
        return QString();
    }
    switch (value.typeId()) {
        case QMetaType::Double: {
            const double number = value.toDouble();
            return number == std::floor(number) ? QString::number(qint64(number))
                                                : QString::number(number);
        }
        case QMetaType::QDate:
            return query::shortDateText(value.toDate());
        case QMetaType::QDateTime:
            return query::shortDateText(value.toDateTime().date());
        default:
            return value.toString();
    }
}

}  // namespace reports

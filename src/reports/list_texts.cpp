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

// The time text of the seconds, formatted again by a time pattern, as the stored play times
// have always been shown.
QString timeWithPattern(const QVariant& seconds, const QString& pattern) {
    if (seconds.isNull()) {
        return QString();
    }
    return engine::formatJetValue(query::formatTime(seconds.toDouble()), pattern);
}

}  // namespace

QString trackTime(const QVariant& seconds) {
    return timeWithPattern(seconds, QStringLiteral("N:Ss"));
}

QString totalTime(const QVariant& seconds) {
    return timeWithPattern(seconds, QStringLiteral("H:Nn:Ss"));
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

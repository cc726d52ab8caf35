#include "engine/jet_format.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <cmath>

namespace engine {

namespace {

const QDate kJetEpoch(1899, 12, 30);  // day 0 of Jet's date serial numbers

std::optional<double> numberOf(const QVariant& value) {
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double) {
        return value.toDouble();
    }
    bool ok = false;
    const double d = value.toString().trimmed().toDouble(&ok);
    return ok ? std::optional<double>(d) : std::nullopt;
}

std::optional<QDateTime> dateOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QString)
        return dateFromStoredText(value.toString());
    const auto serial = numberOf(value);
    if (!serial)
        return std::nullopt;
    const double days = std::floor(*serial);
    const auto msecs = qint64(std::llround((*serial - days) * 86400000.0));
    return QDateTime(kJetEpoch.addDays(qint64(days)), QTime(0, 0)).addMSecs(msecs);
}

std::optional<QString> formatBoolean(const QVariant& value, const QString& name) {
    static const char* const kWords[][3] = {
        {"yes/no", "Yes", "No"}, {"true/false", "True", "False"}, {"on/off", "On", "Off"}};
    for (const auto& words : kWords) {
        if (name != QLatin1String(words[0]))
            continue;
        const auto n = numberOf(value);
        if (!n)
            return value.toString();
        return QString::fromLatin1(*n != 0 ? words[1] : words[2]);
    }
    return std::nullopt;
}

std::optional<QString> formatNamedNumber(const QVariant& value, const QString& name) {
    const QLocale locale;
    const auto n = numberOf(value);
    if (!n)
        return std::nullopt;
    if (name == QLatin1String("currency"))
        return locale.toCurrencyString(*n, QString(), 2);
    if (name == QLatin1String("standard"))
        return locale.toString(*n, 'f', 2);
    if (name == QLatin1String("fixed")) {
        QLocale plain = locale;
        plain.setNumberOptions(QLocale::OmitGroupSeparator);
        return plain.toString(*n, 'f', 2);
    }
    if (name == QLatin1String("percent"))
        return locale.toString(*n * 100, 'f', 2) + u'%';
    if (name == QLatin1String("general number"))
        return QString::number(*n, 'g', 15);
    return std::nullopt;
}

std::optional<QString> formatNamedDate(const QVariant& value, const QString& name) {
    static const QStringList kNames{QStringLiteral("short date"), QStringLiteral("long date"),
                                    QStringLiteral("general date"), QStringLiteral("short time"),
                                    QStringLiteral("long time")};
    if (!kNames.contains(name))
        return std::nullopt;
    const auto date = dateOf(value);
    if (!date)
        return value.toString();
    const QLocale locale;
    if (name == kNames[0])
        return locale.toString(date->date(), QLocale::ShortFormat);
    if (name == kNames[1])
        return locale.toString(date->date(), QLocale::LongFormat);
    if (name == kNames[3])
        return locale.toString(date->time(), QLocale::ShortFormat);
    if (name == kNames[4])
        return locale.toString(date->time(), QLocale::LongFormat);
    return date->time() == QTime(0, 0) ? locale.toString(date->date(), QLocale::ShortFormat)
                                       : locale.toString(*date, QLocale::ShortFormat);
}

// ---- date patterns ----

bool isDateLetter(QChar c) {
    return QStringLiteral("dmyhnsqw").contains(c.toLower());
}

QString twoDigits(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

QString dayPart(const QDateTime& dt, int count) {
    const QLocale locale;
    const QDate d = dt.date();
    switch (count) {
        case 1:
            return QString::number(d.day());
        case 2:
            return twoDigits(d.day());
        case 3:
            return locale.dayName(d.dayOfWeek(), QLocale::ShortFormat);
        case 4:
            return locale.dayName(d.dayOfWeek(), QLocale::LongFormat);
        case 5:
            return locale.toString(d, QLocale::ShortFormat);
        default:
            return locale.toString(d, QLocale::LongFormat);
    }
}

QString monthPart(const QDateTime& dt, int count) {
    const QLocale locale;
    const int m = dt.date().month();
    if (count == 1)
        return QString::number(m);
    if (count == 2)
        return twoDigits(m);
    return locale.monthName(m, count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
}

QString yearPart(const QDateTime& dt, int count) {
    const QDate d = dt.date();
    if (count == 1)
        return QString::number(d.dayOfYear());
    if (count == 2)
        return twoDigits(d.year() % 100);
    return QString::number(d.year());
}

QString timePart(QChar letter, int count, const QDateTime& dt, bool twelveHour) {
    const QTime t = dt.time();
    int n = letter == u'n' ? t.minute() : letter == u's' ? t.second() : t.hour();
    if (letter == u'h' && twelveHour)
        n = (n % 12 == 0) ? 12 : n % 12;
    return count >= 2 ? twoDigits(n) : QString::number(n);
}

// The letter of the next date token after `from`, or a null character.
QChar nextDateLetter(const QString& pattern, qsizetype from) {
    for (qsizetype i = from; i < pattern.size(); ++i) {
        if (pattern[i] == u'\\' || pattern[i] == u'"')
            return {};
        if (isDateLetter(pattern[i]))
            return pattern[i].toLower();
    }
    return {};
}

// Reads an AM/PM marker at `i`; returns its length, 0 when there is none.
qsizetype halfDayMarker(const QString& pattern, qsizetype i, const QDateTime& dt, QString& out) {
    const bool pm = dt.time().hour() >= 12;
    for (const char* marker : {"am/pm", "a/p"}) {
        const QString m = QString::fromLatin1(marker);
        const QString here = pattern.mid(i, m.size());
        if (here.compare(m, Qt::CaseInsensitive) != 0)
            continue;
        const QString word = pm ? here.mid(here.indexOf(u'/') + 1) : here.left(here.indexOf(u'/'));
        out += word;
        return m.size();
    }
    return 0;
}

QString formatDatePattern(const QDateTime& dt, const QString& pattern) {
    const bool twelveHour = pattern.contains(QLatin1String("am/pm"), Qt::CaseInsensitive) ||
                            pattern.contains(QLatin1String("a/p"), Qt::CaseInsensitive);
    QString out;
    QChar previous;  // letter of the previous date token
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar c = pattern[i];
        if (const qsizetype marker = halfDayMarker(pattern, i, dt, out)) {
            i += marker;
        } else if (c == u'\\' && i + 1 < pattern.size()) {
            out += pattern[i + 1];
            i += 2;
        } else if (c == u'"') {
            const qsizetype close = pattern.indexOf(u'"', i + 1);
            const qsizetype end = close < 0 ? pattern.size() : close;
            out += pattern.mid(i + 1, end - i - 1);
            i = end + 1;
        } else if (isDateLetter(c)) {
            const QChar letter = c.toLower();
            qsizetype run = i;
            while (run < pattern.size() && pattern[run].toLower() == letter)
                ++run;
            const int count = int(run - i);
            const bool minute = letter == u'm' && count <= 2 &&
                                (previous == u'h' || nextDateLetter(pattern, run) == u's');
            if (letter == u'd')
                out += dayPart(dt, count);
            if (letter == u'm')
                out += minute ? timePart(u'n', count, dt, false) : monthPart(dt, count);
            if (letter == u'y')
                out += yearPart(dt, count);
            if (letter == u'h' || letter == u'n' || letter == u's')
                out += timePart(letter, count, dt, twelveHour);
            if (letter == u'q')
                out += QString::number((dt.date().month() + 2) / 3);
            if (letter == u'w')
                out += QString::number(dt.date().dayOfWeek() % 7 + 1);
            previous = letter;
            i = run;
        } else {
            out += c;
            ++i;
        }
    }
    return out;
}

// ---- number patterns ----

bool isNumberPattern(const QString& pattern) {
    return pattern.contains(u'0') || pattern.contains(u'#');
}

QString formatNumberSection(double value, const QString& section) {
    const qsizetype first = section.indexOf(QRegularExpression(QStringLiteral("[0#]")));
    const qsizetype last = section.lastIndexOf(QRegularExpression(QStringLiteral("[0#]")));
    if (first < 0)
        return section;
    const QString digits = section.mid(first, last - first + 1);
    const qsizetype point = digits.indexOf(u'.');
    const QString integerPart = point < 0 ? digits : digits.left(point);
    const QString fraction = point < 0 ? QString() : digits.mid(point + 1);
    const int minFraction = int(fraction.count(u'0'));
    const int maxFraction = int(fraction.count(u'0') + fraction.count(u'#'));
    const int minInteger = int(integerPart.count(u'0'));
    if (section.contains(u'%'))
        value *= 100;

    QLocale locale;
    if (!integerPart.contains(u','))
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QString text = locale.toString(std::abs(value), 'f', maxFraction);
    if (maxFraction > minFraction) {
        const QChar decimal = locale.decimalPoint().at(0);
        while (text.endsWith(u'0') && text.size() - text.indexOf(decimal) - 1 > minFraction)
            text.chop(1);
        if (text.endsWith(decimal))
            text.chop(1);
    }
    const qsizetype pointAt = text.indexOf(locale.decimalPoint());
    const qsizetype integerDigits = pointAt < 0 ? text.size() : pointAt;
    if (integerDigits == 1 && text.startsWith(u'0') && minInteger == 0)
        text.remove(0, 1);
    for (qsizetype n = integerDigits; n < minInteger; ++n)
        text.prepend(u'0');
    return section.left(first) + text + section.mid(last + 1);
}

QString formatNumberPattern(double value, const QString& pattern) {
    const QStringList sections = pattern.split(u';');
    if (value < 0 && sections.size() > 1)
        return formatNumberSection(value, sections[1]);
    if (value == 0 && sections.size() > 2)
        return formatNumberSection(value, sections[2]);
    const QString text = formatNumberSection(value, sections[0]);
    return value < 0 ? u'-' + text : text;
}

}  // namespace

std::optional<QDateTime> dateFromStoredText(const QString& text) {
    const QString t = text.trimmed();
    for (const char* form : {"yyyy-MM-dd HH:mm:ss", "yyyy-MM-ddTHH:mm:ss", "yyyy-MM-dd HH:mm"}) {
        const QDateTime dt = QDateTime::fromString(t, QString::fromLatin1(form));
        if (dt.isValid())
            return dt;
    }
    const QDate date = QDate::fromString(t, QStringLiteral("yyyy-MM-dd"));
    if (date.isValid())
        return QDateTime(date, QTime(0, 0));
    for (const char* form : {"H:mm:ss", "H:mm"}) {
        const QTime time = QTime::fromString(t, QString::fromLatin1(form));
        if (time.isValid())
            return QDateTime(kJetEpoch, time);
    }
    return std::nullopt;
}

QString formatJetValue(const QVariant& value, const QString& pattern) {
    const QString name = pattern.trimmed().toLower();
    if (name.isEmpty())
        return value.toString();
    if (auto text = formatBoolean(value, name))
        return *text;
    if (auto text = formatNamedNumber(value, name))
        return *text;
    if (auto text = formatNamedDate(value, name))
        return *text;
    if (name == QLatin1String(">"))
        return value.toString().toUpper();
    if (name == QLatin1String("<"))
        return value.toString().toLower();
    const auto n = numberOf(value);
    if (n && isNumberPattern(pattern))
        return formatNumberPattern(*n, pattern);
    if (auto date = dateOf(value))
        return formatDatePattern(*date, pattern);
    return value.toString();
}

}  // namespace engine

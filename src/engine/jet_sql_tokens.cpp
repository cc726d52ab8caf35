#include "engine/jet_sql_tokens.h"

#include <QDateTime>
#include <QRegularExpression>
#include <optional>

#include "engine/jet_error.h"

namespace engine {

namespace {

using Kind = JetToken::Kind;

[[noreturn]] void throwSyntax(const QString& what, const QString& sql) {
    throw JetError(jet::kSyntaxError,
                   QStringLiteral("Syntax error in %1 in query expression '%2'.").arg(what, sql));
}

bool isWordStart(QChar c) {
    return c.isLetter() || c == u'_';
}
bool isWordChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

// Reads a literal delimited by `quote`, where a doubled quote stands for one. Returns the
// value and moves `pos` past the closing quote; nullopt when the literal never closes.
std::optional<QString> readQuoted(const QString& sql, qsizetype& pos, QChar quote) {
    QString value;
    for (qsizetype i = pos + 1; i < sql.size(); ++i) {
        if (sql[i] != quote) {
            value += sql[i];
        } else if (i + 1 < sql.size() && sql[i + 1] == quote) {
            value += quote;
            ++i;
        } else {
            pos = i + 1;
            return value;
        }
    }
    return std::nullopt;
}

qsizetype numberEnd(const QString& sql, qsizetype pos) {
    auto digitsFrom = [&](qsizetype i) {
        while (i < sql.size() && sql[i].isDigit() && sql[i].unicode() < 128)
            ++i;
        return i;
    };
    qsizetype i = digitsFrom(pos);
    if (i < sql.size() && sql[i] == u'.')
        i = digitsFrom(i + 1);
    if (i < sql.size() && (sql[i] == u'e' || sql[i] == u'E')) {
        qsizetype j = i + 1;
        if (j < sql.size() && (sql[j] == u'+' || sql[j] == u'-'))
            ++j;
        if (j < sql.size() && sql[j].isDigit())
            i = digitsFrom(j);
    }
    return i;
}

const char* const kTwoCharOperators[] = {"<=", ">=", "<>", "!=", "==", "||"};

JetToken readOperator(const QString& sql, qsizetype& pos) {
    const QString two = sql.mid(pos, 2);
    for (const char* op : kTwoCharOperators) {
        if (two == QLatin1String(op)) {
            pos += 2;
            return {Kind::Operator, two};
        }
    }
    const QChar c = sql[pos++];
    switch (c.unicode()) {
        case '(':
            return {Kind::Open, QString(c)};
        case ')':
            return {Kind::Close, QString(c)};
        case ',':
            return {Kind::Comma, QString(c)};
        case '.':
            return {Kind::Dot, QString(c)};
        case ';':
            return {Kind::Semicolon, QString(c)};
        default:
            return {Kind::Operator, QString(c)};
    }
}

int expandTwoDigitYear(int year) {
    return year < 30 ? 2000 + year : 1900 + year;
}

// "1/21/97", "1/21/1997", "1-21-97" (month first) or "1997-01-21" (year first).
std::optional<QDate> parseJetDate(const QString& text) {
    static const QRegularExpression form(
        QStringLiteral(R"(^(\d{1,4})[/-](\d{1,2})[/-](\d{1,4})$)"));
    const auto m = form.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    int year, month, day;
    if (m.capturedLength(1) == 4) {
        year = m.captured(1).toInt();
        month = m.captured(2).toInt();
        day = m.captured(3).toInt();
    } else {
        if (m.capturedLength(3) == 3 || m.capturedLength(1) > 2)
            return std::nullopt;
        month = m.captured(1).toInt();
        day = m.captured(2).toInt();
        year = m.captured(3).toInt();
        if (m.capturedLength(3) <= 2)
            year = expandTwoDigitYear(year);
    }
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

// "10:30", "10:30:15", optionally followed by AM or PM.
std::optional<QTime> parseJetTime(const QString& text) {
    static const QRegularExpression form(
        QStringLiteral(R"(^(\d{1,2}):(\d{1,2})(?::(\d{1,2}))?\s*([AaPp][Mm])?$)"));
    const auto m = form.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    int hour = m.captured(1).toInt();
    const QString half = m.captured(4).toUpper();
    if (!half.isEmpty()) {
        if (hour < 1 || hour > 12)
            return std::nullopt;
        hour = hour % 12 + (half == QLatin1String("PM") ? 12 : 0);
    }
    const QTime time(hour, m.captured(2).toInt(), m.captured(3).toInt());
    if (!time.isValid())
        return std::nullopt;
    return time;
}

}  // namespace

bool JetToken::isWord(const char* upperWord) const {
    return kind == Kind::Word && text.compare(QLatin1String(upperWord), Qt::CaseInsensitive) == 0;
}

QString isoFromJetDateLiteral(const QString& literal) {
    const QString text = literal.trimmed();
    const qsizetype blank = text.indexOf(u' ');
    const auto date = parseJetDate(blank < 0 ? text : text.left(blank));
    if (!date)
        return {};
    if (blank < 0)
        return date->toString(QStringLiteral("yyyy-MM-dd"));
    const auto time = parseJetTime(text.mid(blank + 1).trimmed());
    if (!time)
        return {};
    const QDateTime value(*date, *time);
    return value.time() == QTime(0, 0) ? date->toString(QStringLiteral("yyyy-MM-dd"))
                                       : value.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

JetTokens tokenizeJetSql(const QString& sql) {
    JetTokens tokens;
    qsizetype pos = 0;
    while (pos < sql.size()) {
        const QChar c = sql[pos];
        const qsizetype start = pos;
        if (c.isSpace()) {
            while (pos < sql.size() && sql[pos].isSpace())
                ++pos;
            tokens.push_back({Kind::Space, sql.mid(start, pos - start)});
        } else if (c == u'\'' || c == u'"') {
            const auto value = readQuoted(sql, pos, c);
            if (!value)
                throwSyntax(QStringLiteral("string"), sql);
            tokens.push_back({Kind::String, *value});
        } else if (c == u'[') {
            const qsizetype close = sql.indexOf(u']', pos + 1);
            if (close < 0)
                throwSyntax(QStringLiteral("name"), sql);
            tokens.push_back({Kind::QuotedName, sql.mid(pos + 1, close - pos - 1)});
            pos = close + 1;
        } else if (c == u'#') {
            const qsizetype close = sql.indexOf(u'#', pos + 1);
            const QString iso =
                close < 0 ? QString() : isoFromJetDateLiteral(sql.mid(pos + 1, close - pos - 1));
            if (iso.isEmpty())
                throwSyntax(QStringLiteral("date"), sql);
            tokens.push_back({Kind::Date, iso});
            pos = close + 1;
        } else if ((c.isDigit() && c.unicode() < 128) ||
                   (c == u'.' && pos + 1 < sql.size() && sql[pos + 1].isDigit())) {
            pos = numberEnd(sql, pos);
            tokens.push_back({Kind::Number, sql.mid(start, pos - start)});
        } else if (isWordStart(c)) {
            while (pos < sql.size() && isWordChar(sql[pos]))
                ++pos;
            tokens.push_back({Kind::Word, sql.mid(start, pos - start)});
        } else {
            tokens.push_back(readOperator(sql, pos));
        }
    }
    return tokens;
}

QString renderSqliteSql(const JetTokens& tokens) {
    QString out;
    for (const JetToken& t : tokens) {
        switch (t.kind) {
            case Kind::String:
            case Kind::Date:
                out += u'\'' + QString(t.text).replace(u'\'', QLatin1String("''")) + u'\'';
                break;
            case Kind::QuotedName:
                out += u'"' + QString(t.text).replace(u'"', QLatin1String("\"\"")) + u'"';
                break;
            default:
                out += t.text;
        }
    }
    return out;
}

}  // namespace engine

#pragma once

#include <QDate>
#include <QString>

struct sqlite3;

namespace engine {

// A Jet-dialect statement rewritten for SQLite.
struct TranslatedSql {
    QString sql;        // the SQLite statement; for SELECT ... INTO, the SELECT without its INTO
    QString intoTable;  // the target of SELECT ... INTO, else empty
    bool returnsRows = false;  // a SELECT without INTO
};

// Translates one statement of the Access (Jet) SQL dialect:
//  - reserved words used as names (Index, ...) are quoted; [bracketed] names become "quoted" names
//  - SELECT ... INTO t FROM ...  ->  intoTable = t, sql = SELECT ... FROM ...
//  - DISTINCTROW is dropped; True/False/Yes/No become -1/0
//  - date literals #m/d/yy# (#m/d/yyyy#, with an optional time) become '1997-01-21' text literals;
//    two-digit years 00-29 are 20xx, 30-99 are 19xx
//  - "double-quoted" string literals become 'single-quoted'; & concatenation becomes ||
//  - every GROUP BY and ORDER BY term compares text case-blind; a GROUP BY without ORDER BY is
//    followed by an ORDER BY on the group keys, so grouped rows come back in key order
//  - a trailing ";" is removed
// Text inside string literals is never changed. Throws JetError(kSyntaxError) on an unterminated
// literal or a malformed date literal, JetError(kCharactersAfterEnd) when anything but blanks
// follows a ";" outside parentheses, and JetError(kQueryTooComplex) when parentheses nest deeper
// than kMaxJetNesting. Takes time linear in the length of the statement.
TranslatedSql translateJetSql(const QString& jet);

// Translates a criterion (a WHERE expression without the keyword) the same way; a ";" anywhere
// outside a literal is JetError(kCharactersAfterEnd).
QString translateJetExpression(const QString& jet);

// The deepest nesting of parentheses a statement or criterion may have. SQLite's parser (3.40)
// stops between 85 and 93 levels of plain parentheses, depending on the statement around them,
// and far earlier for nested calls and subqueries; those limits are reported as the same error.
inline constexpr int kMaxJetNesting = 64;

// The stored form of a date (ISO 8601 "YYYY-MM-DD", with " HH:MM:SS" when there is a time).
QString isoDateText(const QDateTime& value);
QString isoDateText(const QDate& value);

// Installs on a connection what Jet SQL needs:
//  - like(pattern, text) with Jet's wildcards * ? # [abc] [!abc] [a-z], case-blind, NULL-safe
//  - the collation kTextCollation (field_type.h), Unicode and case-blind, that every text
//    column is declared with
//  - the functions format(x, fmt), Mid, Left, Right, Len, UCase, LCase, Trim, LTrim, RTrim,
//    InStr, Val, IIf, Nz, Year, Month, Day, CStr, CInt, CLng, Int, Now, Date
void registerJetFunctions(sqlite3* db);

}  // namespace engine

#pragma once

#include <QString>
#include <vector>

namespace engine {

// One lexical piece of a Jet SQL text. Blanks are kept as tokens so that a rewritten statement
// keeps the layout of the original.
struct JetToken {
    enum class Kind {
        Space,       // a run of blanks, tabs and line breaks
        Word,        // keyword or plain name
        QuotedName,  // [bracketed] or already "quoted" name; text is the bare name
        String,      // 'text' or "text"; text is the value without quotes
        Number,
        Date,  // #m/d/yy#; text is the ISO form
        Operator,
        Open,
        Close,
        Comma,
        Dot,
        Semicolon,
    };
    Kind kind;
    QString text;

    bool isWord(const char* upperWord) const;
    bool isSignificant() const { return kind != Kind::Space; }
};

using JetTokens = std::vector<JetToken>;

// Splits a Jet SQL text into tokens. Throws JetError(kSyntaxError) on an unterminated string,
// name or date literal and on a date literal that is no valid date.
JetTokens tokenizeJetSql(const QString& sql);

// Writes tokens back as SQLite text: strings single-quoted, names double-quoted, dates as
// quoted ISO text.
QString renderSqliteSql(const JetTokens& tokens);

// The ISO text ("YYYY-MM-DD", with " HH:MM:SS" when there is a time) of the inside of a Jet
// date literal such as "1/21/97" or "1/21/1997 10:30"; empty when it is no valid date.
QString isoFromJetDateLiteral(const QString& literal);

}  // namespace engine

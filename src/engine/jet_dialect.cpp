#include "engine/jet_dialect.h"

#include <sqlite3.h>

#include <QDateTime>
#include <algorithm>

#include "engine/field_type.h"
#include "engine/jet_clauses.h"
#include "engine/jet_error.h"
#include "engine/jet_sql_tokens.h"

namespace engine {

namespace {

using Kind = JetToken::Kind;

// Index of the nearest significant token before (step -1) or after (step 1) `i`, or -1.
qsizetype neighbour(const JetTokens& tokens, qsizetype i, int step) {
    for (qsizetype j = i + step; j >= 0 && j < qsizetype(tokens.size()); j += step) {
        if (tokens[j].isSignificant())
            return j;
    }
    return -1;
}

bool isSqliteKeyword(const QString& word) {
    const QByteArray utf8 = word.toUtf8();
    return sqlite3_keyword_check(utf8.constData(), int(utf8.size())) != 0;
}

// Index is a column of the track tables; it stays a keyword only in index statements.
bool indexIsKeyword(const JetTokens& tokens, qsizetype before) {
    return before >= 0 && (tokens[before].isWord("CREATE") || tokens[before].isWord("UNIQUE") ||
                           tokens[before].isWord("DROP"));
}

// Rewrites one word in place; returns false when the word is to be dropped.
bool rewriteWord(JetTokens& tokens, qsizetype i) {
    JetToken& token = tokens[i];
    const qsizetype before = neighbour(tokens, i, -1);
    const qsizetype after = neighbour(tokens, i, 1);
    const bool qualified = (before >= 0 && tokens[before].kind == Kind::Dot) ||
                           (after >= 0 && tokens[after].kind == Kind::Dot);
    if (qualified) {
        if (isSqliteKeyword(token.text))
            token.kind = Kind::QuotedName;
        return true;
    }
    if (token.isWord("DISTINCTROW"))
        return false;
    if (token.isWord("TRUE") || token.isWord("YES")) {
        token = {Kind::Number, QStringLiteral("-1")};
    } else if (token.isWord("FALSE") || token.isWord("NO")) {
        token = {Kind::Number, QStringLiteral("0")};
    } else if (token.isWord("INDEX") && !indexIsKeyword(tokens, before)) {
        token.kind = Kind::QuotedName;
    } else if ((token.isWord("LEFT") || token.isWord("RIGHT")) && after >= 0 &&
               tokens[after].kind == Kind::Open) {
        token.kind = Kind::QuotedName;  // the functions Left() and Right(), not a join
    }
    return true;
}

bool followedByCollate(const JetTokens& tokens, qsizetype i) {
    const qsizetype after = neighbour(tokens, i, 1);
    return after >= 0 && tokens[after].isWord("COLLATE");
}

bool isAliasName(const JetTokens& tokens, qsizetype i) {
    const qsizetype before = neighbour(tokens, i, -1);
    return before >= 0 && tokens[before].isWord("AS");
}

// Token-level rewriting shared by statements and criteria. With `caseBlindLiterals` every text
// literal compares case-blind, as all text does in Jet, also against computed values that
// carry no column collation.
JetTokens rewriteTokens(JetTokens tokens, bool caseBlindLiterals) {
    JetTokens out;
    out.reserve(tokens.size());
    for (qsizetype i = 0; i < qsizetype(tokens.size()); ++i) {
        JetToken& token = tokens[i];
        if (token.kind == Kind::Word && !rewriteWord(tokens, i)) {
            if (i + 1 < qsizetype(tokens.size()) && tokens[i + 1].kind == Kind::Space)
                ++i;
            continue;
        }
        if (token.kind == Kind::Operator && token.text == QLatin1String("&")) {
            token.text = QStringLiteral("||");
        }
        // "x - -1" must not become the comment "x --1"
        if (token.kind == Kind::Number && token.text.startsWith(u'-') && !out.empty() &&
            out.back().text.endsWith(u'-')) {
            out.push_back({Kind::Space, QStringLiteral(" ")});
        }
        out.push_back(token);
        if (caseBlindLiterals && token.kind == Kind::String && !followedByCollate(tokens, i) &&
            !isAliasName(tokens, i)) {
            out.push_back({Kind::Space, QStringLiteral(" ")});
            out.push_back({Kind::Word, QStringLiteral("COLLATE")});
            out.push_back({Kind::Space, QStringLiteral(" ")});
            out.push_back({Kind::Word, QLatin1String(kTextCollation)});
        }
    }
    return out;
}

// The depth after `token`; an unmatched ")" stays at the outer level, as the clauses pass has it.
int depthAfter(int depth, const JetToken& token) {
    if (token.kind == Kind::Open)
        return depth + 1;
    if (token.kind == Kind::Close)
        return std::max(depth - 1, 0);
    return depth;
}

void refuseDeepNesting(const JetTokens& tokens) {
    int depth = 0;
    for (const JetToken& token : tokens) {
        depth = depthAfter(depth, token);
        if (depth > kMaxJetNesting)
            throw queryTooComplexError();
    }
}

// A statement ends at its first ";" outside parentheses; only blanks may follow it.
void refuseTextAfterTheEnd(const JetTokens& tokens) {
    int depth = 0;
    const auto end = std::find_if(tokens.begin(), tokens.end(), [&](const JetToken& token) {
        depth = depthAfter(depth, token);
        return depth == 0 && token.kind == Kind::Semicolon;
    });
    if (end != tokens.end() && std::any_of(end + 1, tokens.end(), [](const JetToken& token) {
            return token.isSignificant();
        })) {
        throw charactersAfterEndError();
    }
}

void dropTrailingSemicolons(JetTokens& tokens) {
    while (!tokens.empty() &&
           (tokens.back().kind == Kind::Semicolon || tokens.back().kind == Kind::Space)) {
        tokens.pop_back();
    }
}

bool startsWithSelect(const JetTokens& tokens) {
    const qsizetype first = neighbour(tokens, -1, 1);
    return first >= 0 && tokens[first].isWord("SELECT");
}

bool createsView(const JetTokens& tokens, qsizetype first) {
    qsizetype next = neighbour(tokens, first, 1);
    if (next >= 0 && (tokens[next].isWord("TEMP") || tokens[next].isWord("TEMPORARY"))) {
        next = neighbour(tokens, next, 1);
    }
    return next >= 0 && tokens[next].isWord("VIEW");
}

// Statements whose text literals are all values; in other data definitions a literal may be a
// default or a file name, where a collation would change the meaning.
bool manipulatesData(const JetTokens& tokens) {
    const qsizetype first = neighbour(tokens, -1, 1);
    if (first < 0)
        return false;
    const JetToken& t = tokens[first];
    return t.isWord("SELECT") || t.isWord("INSERT") || t.isWord("UPDATE") || t.isWord("DELETE") ||
           t.kind == Kind::Open || (t.isWord("CREATE") && createsView(tokens, first));
}

// Removes "INTO name" from the outer level of a SELECT and returns the name.
QString extractIntoTable(JetTokens& tokens) {
    if (!startsWithSelect(tokens))
        return {};
    int depth = 0;
    for (qsizetype i = 0; i < qsizetype(tokens.size()); ++i) {
        if (tokens[i].kind == Kind::Open)
            ++depth;
        if (tokens[i].kind == Kind::Close)
            --depth;
        if (depth != 0 || !tokens[i].isWord("INTO"))
            continue;
        const qsizetype name = neighbour(tokens, i, 1);
        if (name < 0 ||
            (tokens[name].kind != Kind::Word && tokens[name].kind != Kind::QuotedName)) {
            return {};
        }
        const QString table = tokens[name].text;
        qsizetype end = name + 1;
        if (end < qsizetype(tokens.size()) && tokens[end].kind == Kind::Space)
            ++end;
        tokens.erase(tokens.begin() + i, tokens.begin() + end);
        return table;
    }
    return {};
}

}  // namespace

TranslatedSql translateJetSql(const QString& jet) {
    JetTokens tokens = tokenizeJetSql(jet);
    refuseDeepNesting(tokens);
    refuseTextAfterTheEnd(tokens);
    const bool caseBlindLiterals = manipulatesData(tokens);
    tokens = rewriteTokens(std::move(tokens), caseBlindLiterals);
    dropTrailingSemicolons(tokens);
    TranslatedSql result;
    result.intoTable = extractIntoTable(tokens);
    result.returnsRows = result.intoTable.isEmpty() && startsWithSelect(tokens);
    result.sql = renderSqliteSql(arrangeGroupingAndOrder(tokens));
    return result;
}

QString translateJetExpression(const QString& jet) {
    JetTokens tokens = tokenizeJetSql(jet);
    refuseDeepNesting(tokens);
    // A criterion is spliced into a statement of the engine's; a ";" would end that statement.
    if (std::any_of(tokens.begin(), tokens.end(),
                    [](const JetToken& token) { return token.kind == Kind::Semicolon; })) {
        throw charactersAfterEndError();
    }
    return renderSqliteSql(rewriteTokens(std::move(tokens), true));
}

QString isoDateText(const QDateTime& value) {
    if (!value.isValid())
        return {};
    if (value.time() == QTime(0, 0))
        return isoDateText(value.date());
    return value.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString isoDateText(const QDate& value) {
    return value.isValid() ? value.toString(QStringLiteral("yyyy-MM-dd")) : QString();
}

}  // namespace engine

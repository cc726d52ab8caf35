#include "engine/jet_clauses.h"

namespace engine {

namespace {

using Kind = JetToken::Kind;

void append(JetTokens& to, const JetTokens& from) {
    to.insert(to.end(), from.begin(), from.end());
}

JetTokens collateNocase() {
    return {{Kind::Space, QStringLiteral(" ")},
            {Kind::Word, QStringLiteral("COLLATE")},
            {Kind::Space, QStringLiteral(" ")},
            {Kind::Word, QStringLiteral("NOCASE")}};
}

// Splits trailing blanks off `tokens` and returns them.
JetTokens takeTrailingSpace(JetTokens& tokens) {
    JetTokens spaces;
    while (!tokens.empty() && tokens.back().kind == Kind::Space) {
        spaces.insert(spaces.begin(), tokens.back());
        tokens.pop_back();
    }
    return spaces;
}

bool isDirection(const JetToken& t) {
    return t.isWord("ASC") || t.isWord("DESC");
}

bool isClauseEnd(const JetToken& t) {
    return t.isWord("HAVING") || t.isWord("LIMIT") || t.isWord("WINDOW") || t.isWord("UNION") ||
           t.isWord("EXCEPT") || t.isWord("INTERSECT");
}

// A term already collated, or a column number, is left as it stands.
bool wantsCollation(const JetTokens& term) {
    int depth = 0;
    int significant = 0;
    for (const JetToken& t : term) {
        if (t.kind == Kind::Open)
            ++depth;
        if (t.kind == Kind::Close)
            --depth;
        if (depth == 0 && t.isWord("COLLATE"))
            return false;
        if (t.isSignificant())
            ++significant;
    }
    return !(significant == 1 && term.back().kind == Kind::Number);
}

// The clauses of one nesting level, rebuilt token by token.
class LevelArranger {
  public:
    void add(const JetTokens& piece) { append(clause_ == Clause::Other ? out_ : term_, piece); }

    // Starts a GROUP BY or ORDER BY clause with its two keywords (and the blanks between).
    void startSortClause(bool grouping, const JetTokens& keywords) {
        flushTerm();
        append(out_, keywords);
        clause_ = grouping ? Clause::GroupBy : Clause::OrderBy;
        (grouping ? grouped_ : ordered_) = true;
    }

    void endSortClause(const JetToken& keyword) {
        flushTerm();
        clause_ = Clause::Other;
        if (keyword.isWord("LIMIT") && limitAt_ < 0)
            limitAt_ = qsizetype(out_.size());
        if (!keyword.isWord("LIMIT") && !keyword.isWord("HAVING"))
            compound_ = true;
    }

    bool inSortClause() const { return clause_ != Clause::Other; }
    void addSeparator(const JetToken& comma) {
        flushTerm();
        out_.push_back(comma);
    }

    JetTokens finish() {
        flushTerm();
        if (grouped_ && !ordered_ && !compound_ && !groupKeys_.empty())
            insertOrderByGroupKeys();
        return out_;
    }

  private:
    enum class Clause { Other, GroupBy, OrderBy };

    void flushTerm() {
        JetTokens trailing = takeTrailingSpace(term_);
        if (term_.empty()) {
            append(out_, trailing);
            return;
        }
        JetTokens direction;
        if (clause_ == Clause::OrderBy && isDirection(term_.back())) {
            direction.push_back(term_.back());
            term_.pop_back();
            direction.insert(direction.begin(), {Kind::Space, QStringLiteral(" ")});
            takeTrailingSpace(term_);
        }
        if (clause_ == Clause::GroupBy) {
            JetTokens key = term_;
            while (!key.empty() && key.front().kind == Kind::Space)
                key.erase(key.begin());
            groupKeys_.push_back(key);
        }
        if (!term_.empty() && wantsCollation(term_))
            append(term_, collateNocase());
        append(out_, term_);
        append(out_, direction);
        append(out_, trailing);
        term_.clear();
    }

    void insertOrderByGroupKeys() {
        JetTokens orderBy{{Kind::Word, QStringLiteral("ORDER")},
                          {Kind::Space, QStringLiteral(" ")},
                          {Kind::Word, QStringLiteral("BY")},
                          {Kind::Space, QStringLiteral(" ")}};
        for (size_t k = 0; k < groupKeys_.size(); ++k) {
            if (k > 0) {
                orderBy.push_back({Kind::Comma, QStringLiteral(",")});
                orderBy.push_back({Kind::Space, QStringLiteral(" ")});
            }
            append(orderBy, groupKeys_[k]);
            if (wantsCollation(groupKeys_[k]))
                append(orderBy, collateNocase());
        }
        if (limitAt_ >= 0) {
            orderBy.push_back({Kind::Space, QStringLiteral(" ")});
            out_.insert(out_.begin() + limitAt_, orderBy.begin(), orderBy.end());
            return;
        }
        JetTokens trailing = takeTrailingSpace(out_);
        out_.push_back({Kind::Space, QStringLiteral(" ")});
        append(out_, orderBy);
        append(out_, trailing);
    }

    Clause clause_ = Clause::Other;
    JetTokens out_;
    JetTokens term_;
    std::vector<JetTokens> groupKeys_;
    bool grouped_ = false;
    bool ordered_ = false;
    bool compound_ = false;
    qsizetype limitAt_ = -1;
};

qsizetype nextSignificant(const JetTokens& tokens, qsizetype i) {
    for (++i; i < qsizetype(tokens.size()); ++i) {
        if (tokens[i].isSignificant())
            return i;
    }
    return -1;
}

// Arranges the level that starts at `i` and ends before its closing parenthesis (or at the end);
// leaves `i` on that parenthesis.
JetTokens arrangeLevel(const JetTokens& tokens, qsizetype& i) {
    LevelArranger level;
    while (i < qsizetype(tokens.size()) && tokens[i].kind != Kind::Close) {
        const JetToken& t = tokens[i];
        if (t.kind == Kind::Open) {
            ++i;
            JetTokens group{t};
            append(group, arrangeLevel(tokens, i));
            if (i < qsizetype(tokens.size()))
                group.push_back(tokens[i++]);
            level.add(group);
            continue;
        }
        const qsizetype by = nextSignificant(tokens, i);
        if ((t.isWord("GROUP") || t.isWord("ORDER")) && by >= 0 && tokens[by].isWord("BY")) {
            level.startSortClause(t.isWord("GROUP"),
                                  JetTokens(tokens.begin() + i, tokens.begin() + by + 1));
            i = by + 1;
            continue;
        }
        if (isClauseEnd(t)) {
            level.endSortClause(t);
        } else if (t.kind == Kind::Comma && level.inSortClause()) {
            level.addSeparator(t);
            ++i;
            continue;
        }
        level.add({t});
        ++i;
    }
    return level.finish();
}

}  // namespace

JetTokens arrangeGroupingAndOrder(const JetTokens& tokens) {
    JetTokens out;
    qsizetype i = 0;
    while (i < qsizetype(tokens.size())) {
        append(out, arrangeLevel(tokens, i));
        if (i < qsizetype(tokens.size()))
            out.push_back(tokens[i++]);  // an unmatched ")"
    }
    return out;
}

}  // namespace engine

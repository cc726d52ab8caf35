#include "engine/jet_clauses.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "engine/field_type.h"
#include "engine/jet_error.h"

namespace engine {

namespace {

using Kind = JetToken::Kind;

// Copies of group keys may make the statement at most this many times as long (plus a margin):
// grouped subqueries inside group keys would otherwise double it with every level.
constexpr size_t kMaxGrowth = 16;
constexpr size_t kGrowthMargin = 4096;

const JetToken& blank() {
    static const JetToken token{Kind::Space, QStringLiteral(" ")};
    return token;
}

void appendTextCollation(JetTokens& out) {
    out.push_back(blank());
    out.push_back({Kind::Word, QStringLiteral("COLLATE")});
    out.push_back(blank());
    out.push_back({Kind::Word, QLatin1String(kTextCollation)});
}

// Removes the blanks at the end of `out` (not before `floor`) and returns them in order.
JetTokens takeTrailingSpace(JetTokens& out, size_t floor) {
    size_t from = out.size();
    while (from > floor && out[from - 1].kind == Kind::Space)
        --from;
    JetTokens spaces(out.begin() + qsizetype(from), out.end());
    out.resize(from);
    return spaces;
}

bool isDirection(const JetToken& t) {
    return t.isWord("ASC") || t.isWord("DESC");
}

bool isClauseEnd(const JetToken& t) {
    return t.isWord("HAVING") || t.isWord("LIMIT") || t.isWord("WINDOW") || t.isWord("UNION") ||
           t.isWord("EXCEPT") || t.isWord("INTERSECT");
}

// What one nesting level has seen. Its tokens go straight into the shared output; a term of a
// GROUP BY or ORDER BY clause is the stretch of output since the term began.
struct Level {
    enum class Clause { Other, GroupBy, OrderBy };
    struct Range {
        size_t begin;
        size_t end;
    };

    Clause clause = Clause::Other;
    size_t termStart = 0;
    size_t termFirst = SIZE_MAX;  // the term's first significant token of this level
    bool termCollated = false;    // the term names its collation at this level
    std::vector<Range> groupKeys;
    bool grouped = false;
    bool ordered = false;
    bool compound = false;
    bool limitSeen = false;
    bool keysOrdered = false;  // an ORDER BY on the group keys has been written

    bool wantsKeyOrder() const {
        return grouped && !ordered && !compound && !keysOrdered && !groupKeys.empty();
    }
};

// Rewrites the clauses of every nesting level in one pass, with an explicit stack of levels.
class Arranger {
  public:
    explicit Arranger(const JetTokens& in)
        : in_(in), maxOutput_(kMaxGrowth * in.size() + kGrowthMargin) {
        out_.reserve(in.size() + in.size() / 4);
        levels_.emplace_back();
    }

    JetTokens run() {
        for (size_t i = 0; i < in_.size(); ++i) {
            i = step(i);
        }
        while (!levels_.empty()) {
            finishLevel();
            levels_.pop_back();
        }
        return std::move(out_);
    }

  private:
    // Handles the token at `i`; returns the index of the last token it used.
    size_t step(size_t i) {
        const JetToken& t = in_[i];
        if (t.kind == Kind::Open) {
            add(t);
            levels_.emplace_back();
        } else if (t.kind == Kind::Close) {
            finishLevel();
            if (levels_.size() > 1)
                levels_.pop_back();
            else
                levels_.back() = Level();  // an unmatched ")": a new outer level follows it
            add(t);
        } else if (t.isWord("GROUP") || t.isWord("ORDER")) {
            const size_t by = nextSignificant(i);
            if (by < in_.size() && in_[by].isWord("BY")) {
                startSortClause(t.isWord("GROUP"), i, by);
                return by;
            }
            add(t);
        } else if (isClauseEnd(t)) {
            endSortClause(t);
            add(t);
        } else if (t.kind == Kind::Comma && level().clause != Level::Clause::Other) {
            flushTerm();
            out_.push_back(t);
            startTerm();
        } else {
            add(t);
        }
        return i;
    }

    Level& level() { return levels_.back(); }

    size_t nextSignificant(size_t i) const {
        for (++i; i < in_.size() && !in_[i].isSignificant(); ++i) {
        }
        return i;
    }

    void add(const JetToken& t) {
        Level& l = level();
        if (l.clause != Level::Clause::Other && t.isSignificant()) {
            if (l.termFirst == SIZE_MAX)
                l.termFirst = out_.size();
            if (t.isWord("COLLATE"))
                l.termCollated = true;
        }
        out_.push_back(t);
    }

    void startTerm() {
        Level& l = level();
        l.termStart = out_.size();
        l.termFirst = SIZE_MAX;
        l.termCollated = false;
    }

    // Starts a GROUP BY or ORDER BY clause with its two keywords (and the blanks between).
    void startSortClause(bool grouping, size_t from, size_t by) {
        flushTerm();
        out_.insert(out_.end(), in_.begin() + qsizetype(from), in_.begin() + qsizetype(by) + 1);
        Level& l = level();
        l.clause = grouping ? Level::Clause::GroupBy : Level::Clause::OrderBy;
        (grouping ? l.grouped : l.ordered) = true;
        startTerm();
    }

    // Groups come back in key order: the ORDER BY goes before a LIMIT, as SQL wants it.
    void endSortClause(const JetToken& keyword) {
        flushTerm();
        Level& l = level();
        l.clause = Level::Clause::Other;
        if (keyword.isWord("LIMIT") && !l.limitSeen) {
            l.limitSeen = true;
            if (l.wantsKeyOrder()) {
                appendOrderByGroupKeys();
                out_.push_back(blank());
            }
        }
        if (!keyword.isWord("LIMIT") && !keyword.isWord("HAVING"))
            l.compound = true;
    }

    // A term already collated, or a column number, is left as it stands.
    bool termWantsCollation() const {
        const Level& l = levels_.back();
        const bool columnNumber =
            l.termFirst == out_.size() - 1 && out_.back().kind == Kind::Number;
        return !l.termCollated && !columnNumber;
    }

    // Gives the finished term its collation (before ASC/DESC) and notes a group key.
    void flushTerm() {
        Level& l = level();
        if (l.clause == Level::Clause::Other)
            return;
        const JetTokens trailing = takeTrailingSpace(out_, l.termStart);
        std::optional<JetToken> direction;
        if (l.clause == Level::Clause::OrderBy && out_.size() > l.termStart &&
            isDirection(out_.back())) {
            direction = out_.back();
            out_.pop_back();
            takeTrailingSpace(out_, l.termStart);
        }
        if (out_.size() > l.termStart) {
            if (termWantsCollation())
                appendTextCollation(out_);
            if (l.clause == Level::Clause::GroupBy) {
                size_t begin = l.termStart;
                while (out_[begin].kind == Kind::Space)
                    ++begin;
                l.groupKeys.push_back({begin, out_.size()});
            }
        }
        if (direction) {
            out_.push_back(blank());
            out_.push_back(*direction);
        }
        out_.insert(out_.end(), trailing.begin(), trailing.end());
        startTerm();
    }

    void finishLevel() {
        flushTerm();
        if (!level().wantsKeyOrder())
            return;
        const JetTokens trailing = takeTrailingSpace(out_, 0);
        out_.push_back(blank());
        appendOrderByGroupKeys();
        out_.insert(out_.end(), trailing.begin(), trailing.end());
    }

    // "ORDER BY" and a copy of each group key as the output holds it, collation included.
    void appendOrderByGroupKeys() {
        Level& l = level();
        size_t copied = 0;
        for (const Level::Range& key : l.groupKeys)
            copied += key.end - key.begin + 2;
        if (out_.size() + copied > maxOutput_)
            throw queryTooComplexError();
        // The copies below read the output while they extend it: it must not move meanwhile.
        // Growing by doubling keeps the appends linear over all the levels.
        const size_t needed = out_.size() + copied + 4;
        if (out_.capacity() < needed)
            out_.reserve(std::max(needed, 2 * out_.capacity()));
        out_.push_back({Kind::Word, QStringLiteral("ORDER")});
        out_.push_back(blank());
        out_.push_back({Kind::Word, QStringLiteral("BY")});
        out_.push_back(blank());
        for (size_t k = 0; k < l.groupKeys.size(); ++k) {
            if (k > 0) {
                out_.push_back({Kind::Comma, QStringLiteral(",")});
                out_.push_back(blank());
            }
            for (size_t at = l.groupKeys[k].begin; at < l.groupKeys[k].end; ++at)
                out_.push_back(out_[at]);
        }
        l.keysOrdered = true;
    }

    const JetTokens& in_;
    const size_t maxOutput_;
    JetTokens out_;
    std::vector<Level> levels_;
};

}  // namespace

JetTokens arrangeGroupingAndOrder(const JetTokens& tokens) {
    return Arranger(tokens).run();
}

}  // namespace engine

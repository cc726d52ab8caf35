#include "engine/jet_like.h"

#include <sqlite3.h>

#include "engine/jet_text_fold.h"

namespace engine {

namespace {

using Element = JetLikePattern::Element;

// Reads the set that starts after "[" at `pos` of the folded pattern; returns false when it
// never closes.
bool readSet(const std::u32string& p, size_t& pos, JetLikePattern::Element& set) {
    set.kind = Element::Kind::Set;
    if (pos < p.size() && p[pos] == U'!') {
        set.negated = true;
        ++pos;
    }
    while (pos < p.size() && p[pos] != U']') {
        char32_t low = p[pos];
        char32_t high = low;
        if (pos + 2 < p.size() && p[pos + 1] == U'-' && p[pos + 2] != U']') {
            high = p[pos + 2];
            pos += 2;
        }
        set.ranges.emplace_back(low, high);
        ++pos;
    }
    if (pos >= p.size())
        return false;
    ++pos;  // the closing "]"
    return true;
}

}  // namespace

bool JetLikePattern::Element::matches(char32_t c) const {
    switch (kind) {
        case Kind::AnyChar:
            return true;
        case Kind::Digit:
            return c >= U'0' && c <= U'9';
        case Kind::Literal:
            return c == literal;
        case Kind::Set: {
            bool inSet = false;
            for (const auto& [low, high] : ranges)
                inSet = inSet || (c >= low && c <= high);
            return inSet != negated;
        }
        case Kind::AnyRun:
            return false;
    }
    return false;
}

std::optional<JetLikePattern> JetLikePattern::compile(const QString& pattern) {
    const std::u32string p = foldedCodePoints(pattern);
    JetLikePattern compiled;
    size_t pos = 0;
    while (pos < p.size()) {
        Element e{Element::Kind::Literal, p[pos], {}, false};
        const char32_t c = p[pos++];
        if (c == U'*') {
            e.kind = Element::Kind::AnyRun;
            if (!compiled.elements_.empty() &&
                compiled.elements_.back().kind == Element::Kind::AnyRun) {
                continue;  // "**" is one run
            }
        } else if (c == U'?') {
            e.kind = Element::Kind::AnyChar;
        } else if (c == U'#') {
            e.kind = Element::Kind::Digit;
        } else if (c == U'[' && !readSet(p, pos, e)) {
            return std::nullopt;
        }
        compiled.elements_.push_back(std::move(e));
    }
    return compiled;
}

bool JetLikePattern::matches(const QString& text) const {
    return matchesFolded(foldedCodePoints(text));
}

// Greedy matching that remembers only the last "*": every other element takes exactly one
// character, so retrying from the last star is enough and no state is visited twice per star.
bool JetLikePattern::matchesFolded(const std::u32string& text) const {
    constexpr size_t kNone = size_t(-1);
    size_t p = 0, t = 0, starP = kNone, starT = 0;
    while (t < text.size()) {
        if (p < elements_.size() && elements_[p].kind == Element::Kind::AnyRun) {
            starP = p++;
            starT = t;
        } else if (p < elements_.size() && elements_[p].matches(text[t])) {
            ++p;
            ++t;
        } else if (starP != kNone) {
            p = starP + 1;
            t = ++starT;
        } else {
            return false;
        }
    }
    while (p < elements_.size() && elements_[p].kind == Element::Kind::AnyRun)
        ++p;
    return p == elements_.size();
}

namespace {

void deletePattern(void* pattern) {
    delete static_cast<JetLikePattern*>(pattern);
}

// like(pattern, text): SQLite calls it for "text LIKE pattern".
void likeFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    auto* pattern = static_cast<JetLikePattern*>(sqlite3_get_auxdata(ctx, 0));
    if (!pattern) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
        auto compiled =
            JetLikePattern::compile(QString::fromUtf8(text, sqlite3_value_bytes(argv[0])));
        if (!compiled) {
            sqlite3_result_error(ctx, "Invalid pattern string", -1);
            return;
        }
        pattern = new JetLikePattern(std::move(*compiled));
        sqlite3_set_auxdata(ctx, 0, pattern, deletePattern);
        pattern = static_cast<JetLikePattern*>(sqlite3_get_auxdata(ctx, 0));
        if (!pattern) {
            sqlite3_result_error_nomem(ctx);
            return;
        }
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(argv[1]));
    const bool match = pattern->matchesFolded(
        foldedCodePoints(std::string_view(text, size_t(sqlite3_value_bytes(argv[1])))));
    sqlite3_result_int(ctx, match ? 1 : 0);
}

void likeWithEscape(sqlite3_context* ctx, int, sqlite3_value**) {
    sqlite3_result_error(ctx, "LIKE with ESCAPE is not part of the Jet dialect", -1);
}

}  // namespace

void registerJetLike(sqlite3* db) {
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "like", 2, flags, nullptr, likeFunction, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(db, "like", 3, flags, nullptr, likeWithEscape, nullptr, nullptr,
                               nullptr);
}

}  // namespace engine

#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;

namespace engine {

// A compiled Jet LIKE pattern: * any run, ? one character, # one digit, [abc], [!abc], [a-z];
// [[] and [*] match the bracket and the star themselves. Pattern and text are compared in their
// folded forms (jet_text_fold.h), the same as "=" compares them, so case does not count and "?"
// matches "é" written as one character or as two. Matching takes time proportional to pattern
// length times text length at worst.
class JetLikePattern {
  public:
    // nullopt when a "[" set is never closed.
    static std::optional<JetLikePattern> compile(const QString& pattern);

    bool matches(const QString& text) const;
    bool matchesFolded(const std::u32string& foldedText) const;

    struct Element {
        enum class Kind { AnyRun, AnyChar, Digit, Literal, Set } kind;
        char32_t literal = 0;
        std::vector<std::pair<char32_t, char32_t>> ranges;  // for Set; folded bounds
        bool negated = false;

        bool matches(char32_t c) const;
    };

  private:
    std::vector<Element> elements_;
};

// Installs like(pattern, text) on the connection; the form with an escape character is refused.
void registerJetLike(sqlite3* db);

}  // namespace engine

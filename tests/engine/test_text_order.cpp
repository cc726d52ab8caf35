#include <gtest/gtest.h>

#include <QHash>
#include <list>
#include <random>
#include <string>
#include <vector>

#include "engine/jet_collation.h"
#include "text_samples.h"

namespace {

using engine::compareJetText;

int sign(int value) {
    return (value > 0) - (value < 0);
}

// Case does not count, accents do. The property test below judges equality over an alphabet of
// accents, scripts and ignored characters; these are plain examples and what it cannot spell.
TEST(TextOrder, EqualExactlyWhenFoldedAlike) {
    const struct {
        const char* a;
        const char* b;
        bool equal;
    } pairs[] = {
        {"ärzte", "ÄRZTE", true},
        {"Ärzte", "Arzte", false},
        {"a\x01"
         "b",
         "ab", false},       // a control character the collator ignores
        {"ß", "ss", false},  // simple folding keeps ß one letter
    };
    for (const auto& [a, b, equal] : pairs)
        EXPECT_EQ(compareJetText(a, b) == 0, equal) << a << " / " << b;
}

// The shortcut reads long texts eight bytes at a time and must see a byte outside printable
// ASCII anywhere. The collator ignores DEL and U+001F, so a text with one sorts beside the text
// without it, after it by code points; invalid UTF-8 reads as U+FFFD, after every letter.
TEST(TextOrder, ShortcutChecksEveryByteOfLongTexts) {
    const std::string plain = "abcdefghijklmnopq";
    const auto with = [&](size_t at, const char* inserted) {
        return std::string(plain).insert(at, inserted);
    };
    for (size_t at = 0; at <= plain.size(); ++at) {
        EXPECT_LT(compareJetText(plain, with(at, "\x7F")), 0) << at;
        if (at < plain.size()) {  // a space before a letter sorts first, at the end last
            EXPECT_GT(compareJetText(with(at, "\x1F"), with(at, " ")), 0) << at;
        }
        EXPECT_GT(compareJetText(with(at, "\xFF"), plain), 0) << at;
        EXPECT_GT(compareJetText(with(at, "ÿ"), plain), 0) << at;
    }
}

// Longer than the buffers on the stack and than the texts whose keys are kept.
TEST(TextOrder, LongTextsCompareToTheirEnd) {
    const std::string lower(300, 'x'), upper(300, 'X');
    EXPECT_EQ(compareJetText(lower + "é", upper + "É"), 0);
    EXPECT_LT(compareJetText(lower + "éa", upper + "Éb"), 0);
    EXPECT_GT(compareJetText(lower + "é", upper + "e"), 0);
    EXPECT_GT(compareJetText(lower + "b", upper + "Á"), 0);  // not the order of code points
    EXPECT_GT(compareJetText(lower + "さくら", upper + "さくや"), 0);  // や before ら
}

TEST(TextOrder, SortsAccentsBesideTheirLetters) {
    const std::vector<std::string> expected{
        "abba",  "Arzte", "Ärzte",    "ARZTEN", "Beatles", "Émile", "Emile!", "Mix",
        "Mix 😀", "Ohr",   "Ökologie", "Öl",     "Ozean",   "Zoë",   "さくや", "サクラ"};
    std::vector<std::string> words(expected.rbegin(), expected.rend());
    std::stable_sort(words.begin(), words.end(),
                     [](const auto& a, const auto& b) { return compareJetText(a, b) < 0; });
    EXPECT_EQ(words, expected);
}

// Sorts by merging, which stays within bounds even when the order is broken.
std::vector<std::string> sortedByEngine(const std::vector<std::string>& texts) {
    std::list<std::string> sorted(texts.begin(), texts.end());
    sorted.sort([](const auto& a, const auto& b) { return compareJetText(a, b) < 0; });
    return {sorted.begin(), sorted.end()};
}

// For random texts over a mixed alphabet: the order is antisymmetric and transitive (a sorted
// list is in order for every pair looked at) and two texts are equal exactly when their
// folded forms, computed by Qt, are equal.
TEST(TextOrderProperty, TotalOrderWithFoldedEquality) {
    const std::vector<std::string> sorted = sortedByEngine(textsamples::randomTexts(3000, 1123));
    std::vector<QString> folded;
    for (const auto& text : sorted)
        folded.push_back(textsamples::qtFolded(text));

    const auto checkPair = [&](size_t i, size_t j) {  // i before j in the sorted list
        const int forward = compareJetText(sorted[i], sorted[j]);
        ASSERT_LE(forward, 0) << sorted[i] << " / " << sorted[j];
        ASSERT_EQ(sign(forward), -sign(compareJetText(sorted[j], sorted[i])))
            << sorted[i] << " / " << sorted[j];
        ASSERT_EQ(forward == 0, folded[i] == folded[j]) << sorted[i] << " / " << sorted[j];
    };
    for (size_t i = 0; i + 1 < sorted.size(); ++i) {
        for (size_t j = i + 1; j < std::min(sorted.size(), i + 8); ++j)
            checkPair(i, j);
    }
    std::mt19937 random(7);
    for (int n = 0; n < 20000; ++n) {
        size_t i = random() % sorted.size(), j = random() % sorted.size();
        checkPair(std::min(i, j), std::max(i, j));
    }
    // texts folded alike stand together and equal, wherever they are in the list
    QHash<QString, size_t> firstByFolded;
    for (size_t i = 0; i < sorted.size(); ++i) {
        const size_t first = firstByFolded.value(folded[i], i);
        firstByFolded.insert(folded[i], first);
        ASSERT_TRUE(first == i || folded[i - 1] == folded[i]) << sorted[i];
        ASSERT_EQ(compareJetText(sorted[first], sorted[i]), 0)
            << sorted[first] << " / " << sorted[i];
    }
    EXPECT_GT(sorted.size(), size_t(firstByFolded.size()) + 500);  // many texts folded alike
}

}  // namespace

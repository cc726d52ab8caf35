#include "engine/jet_ascii_ranks.h"

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "engine/icu_check.h"

namespace engine {

namespace {

struct CloseElements {
    void operator()(UCollationElements* elements) const { ucol_closeElements(elements); }
};

struct CloseSet {
    void operator()(USet* set) const { uset_close(set); }
};

bool isFoldedPrintable(int c) {
    return c >= 0x20 && c <= 0x7E && !(c >= 'A' && c <= 'Z');
}

// The collation elements of one character; nothing when it has more than one or an ignorable one.
std::optional<int32_t> singleElement(const UCollator* collator, char16_t c) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCollationElements, CloseElements> elements(
        ucol_openElements(collator, &c, 1, &status));
    checkIcu(status, "reading collation elements");
    const int32_t first = ucol_next(elements.get(), &status);
    const int32_t second = ucol_next(elements.get(), &status);
    checkIcu(status, "reading collation elements");
    if (first == UCOL_NULLORDER || second != UCOL_NULLORDER || ucol_primaryOrder(first) == 0)
        return std::nullopt;
    return first;
}

// True when a contraction or context of the collator is spelled with table characters only;
// such characters would not compare one by one. Anything unreadable counts as such a case.
bool hasContractionWithin(const UCollator* collator, const AsciiRanks& ranks) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<USet, CloseSet> contractions(uset_openEmpty());
    ucol_getContractionsAndExpansions(collator, contractions.get(), nullptr, true, &status);
    checkIcu(status, "reading contractions");
    const auto ranked = [&](UChar32 c) { return c < 0x80 && ranks[size_t(c)] != 0; };
    for (int32_t i = 0; i < uset_getItemCount(contractions.get()); ++i) {
        UChar32 start = 0, end = 0;
        std::array<char16_t, 64> text{};
        const int32_t length = uset_getItem(contractions.get(), i, &start, &end, text.data(),
                                            int32_t(text.size()), &status);
        if (U_FAILURE(status))
            return true;
        if (length == 0 && start < 0x80)  // single characters rather than a string
            return true;
        if (length > 0 && std::all_of(text.data(), text.data() + length, ranked))
            return true;
    }
    return false;
}

bool allRanked(const AsciiRanks& ranks, std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [&](char c) { return ranks[static_cast<unsigned char>(c)] != 0; });
}

}  // namespace

// Ranks from the collator itself. They agree with it on whole texts when every character has
// exactly one collation element, the primary weights are distinct and not ignorable, the
// secondary and tertiary weights are all the same, and no contraction joins table characters:
// the collator then compares two such texts by their primary weights one by one, the shorter
// first when one is the start of the other. When that does not hold, no byte gets a rank and
// every comparison takes the full path.
AsciiRanks buildAsciiRanks(const UCollator* collator) {
    std::vector<std::pair<int32_t, int>> elements;  // (collation element, character)
    for (int c = 0; c < 0x80; ++c) {
        if (!isFoldedPrintable(c))
            continue;
        const std::optional<int32_t> element = singleElement(collator, char16_t(c));
        if (!element)
            return {};
        elements.emplace_back(*element, c);
    }
    std::sort(elements.begin(), elements.end(), [](const auto& x, const auto& y) {
        return ucol_primaryOrder(x.first) < ucol_primaryOrder(y.first);
    });
    AsciiRanks ranks{};
    for (size_t i = 0; i < elements.size(); ++i) {
        const int32_t element = elements[i].first;
        const bool sameLowerLevels = (element & 0xFFFF) == (elements[0].first & 0xFFFF);
        const bool distinct =
            i == 0 || ucol_primaryOrder(elements[i - 1].first) != ucol_primaryOrder(element);
        if (!sameLowerLevels || !distinct)
            return {};
        ranks[size_t(elements[i].second)] = static_cast<unsigned char>(i + 1);
    }
    for (int c = 'A'; c <= 'Z'; ++c)
        ranks[size_t(c)] = ranks[size_t(c - 'A' + 'a')];
    return hasContractionWithin(collator, ranks) ? AsciiRanks{} : ranks;
}

// The order of two texts made only of ranked bytes; nothing when either holds another byte.
std::optional<int> compareByRanks(const AsciiRanks& ranks, std::string_view a, std::string_view b) {
    const size_t common = std::min(a.size(), b.size());
    int order = 0;
    for (size_t i = 0; i < common; ++i) {
        const int rankA = ranks[static_cast<unsigned char>(a[i])];
        const int rankB = ranks[static_cast<unsigned char>(b[i])];
        if (rankA == 0 || rankB == 0)
            return std::nullopt;
        if (order == 0)
            order = rankA == rankB ? 0 : (rankA < rankB ? -1 : 1);
    }
    if (!allRanked(ranks, a.substr(common)) || !allRanked(ranks, b.substr(common)))
        return std::nullopt;
    if (order != 0 || a.size() == b.size())
        return order;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace engine

#include "engine/jet_ascii_ranks.h"

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
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

constexpr unsigned kFirstPrintable = 0x20;  // space
constexpr unsigned kLastPrintable = 0x7E;   // tilde

bool isPrintable(unsigned c) {
    return c >= kFirstPrintable && c <= kLastPrintable;
}

bool isFoldedPrintable(unsigned c) {
    return isPrintable(c) && !(c >= 'A' && c <= 'Z');
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
    const auto ranked = [&](UChar32 c) { return c < 0x80 && ranks.rank[size_t(c)] != 0; };
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

// Eight bytes at a time: with no high bit set, a byte b is at least 0x20 when b + 0x60 sets its
// high bit and at most 0x7E when b + 1 does not, and neither sum carries into the next byte.
bool allPrintable(std::string_view text) {
    constexpr uint64_t kHigh = 0x8080808080808080;
    size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        uint64_t word;
        std::memcpy(&word, text.data() + i, 8);
        if ((word & kHigh) != 0 || ((word + 0x6060606060606060) & kHigh) != kHigh ||
            ((word + 0x0101010101010101) & kHigh) != 0) {
            return false;
        }
    }
    for (; i < text.size(); ++i) {
        if (!isPrintable(static_cast<unsigned char>(text[i])))
            return false;
    }
    return true;
}

}  // namespace

// Ranks from the collator itself. They agree with it on whole texts when every character has
// exactly one collation element, the primary weights are distinct and not ignorable, the
// secondary and tertiary weights are all the same, and no contraction joins table characters:
// the collator then compares two such texts by their primary weights one by one, the shorter
// first when one is the start of the other. When that does not hold, the ranks are not used and
// every comparison takes the full path.
AsciiRanks buildAsciiRanks(const UCollator* collator) {
    std::vector<std::pair<int32_t, int>> elements;  // (collation element, character)
    for (unsigned c = 0; c < 0x80; ++c) {
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
        ranks.rank[size_t(elements[i].second)] = static_cast<unsigned char>(i + 1);
    }
    for (int c = 'A'; c <= 'Z'; ++c)
        ranks.rank[size_t(c)] = ranks.rank[size_t(c - 'A' + 'a')];
    ranks.usable = !hasContractionWithin(collator, ranks);
    return ranks;
}

std::optional<int> compareByRanks(const AsciiRanks& ranks, std::string_view a, std::string_view b) {
    if (!ranks.usable || !allPrintable(a) || !allPrintable(b))
        return std::nullopt;
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        const int rankA = ranks.rank[static_cast<unsigned char>(a[i])];
        const int rankB = ranks.rank[static_cast<unsigned char>(b[i])];
        if (rankA != rankB)
            return rankA < rankB ? -1 : 1;
    }
    if (a.size() == b.size())
        return 0;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace engine

#include "engine/jet_collation.h"

#include <sqlite3.h>
#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "engine/jet_error.h"
#include "engine/jet_text_fold.h"
#include "engine/small_buffer.h"

namespace engine {

namespace {

struct CloseCollator {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CloseCollator>;

struct CloseElements {
    void operator()(UCollationElements* elements) const { ucol_closeElements(elements); }
};

struct CloseSet {
    void operator()(USet* set) const { uset_close(set); }
};

void check(UErrorCode status, const char* what) {
    if (U_FAILURE(status)) {
        throw JetError(jet::kGeneral,
                       QStringLiteral("The text order is not available: %1 (%2).")
                           .arg(QLatin1String(what), QLatin1String(u_errorName(status))));
    }
}

// The root order at tertiary strength: after case folding, every difference the collator sees
// counts (accents, kana kind, width). Normalization makes canonical equivalents order alike.
Collator openCollator() {
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open("", &status));
    check(status, "opening the collator");
    ucol_setStrength(collator.get(), UCOL_TERTIARY);
    ucol_setAttribute(collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    check(status, "setting normalization");
    return collator;
}

// Rank of each printable ASCII byte (space to tilde) in the collator's order, upper-case letters
// sharing the rank of their lower case; 0 for every other byte. Two texts made only of ranked
// bytes then compare as their rank sequences do, without folding or ICU.
using AsciiRanks = std::array<unsigned char, 256>;

bool isFoldedPrintable(int c) {
    return c >= 0x20 && c <= 0x7E && !(c >= 'A' && c <= 'Z');
}

// The collation elements of one character; nothing when it has more than one or an ignorable one.
std::optional<int32_t> singleElement(const UCollator* collator, char16_t c) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCollationElements, CloseElements> elements(
        ucol_openElements(collator, &c, 1, &status));
    check(status, "reading collation elements");
    const int32_t first = ucol_next(elements.get(), &status);
    const int32_t second = ucol_next(elements.get(), &status);
    check(status, "reading collation elements");
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
    check(status, "reading contractions");
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

struct TextOrder {
    Collator collator = openCollator();
    AsciiRanks ranks = buildAsciiRanks(collator.get());
};

// One collator for all threads: comparing only reads it.
const TextOrder& textOrder() {
    static const TextOrder order;
    return order;
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

bool allRanked(const AsciiRanks& ranks, std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [&](char c) { return ranks[static_cast<unsigned char>(c)] != 0; });
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
            order = sign(rankA - rankB);
    }
    if (!allRanked(ranks, a.substr(common)) || !allRanked(ranks, b.substr(common)))
        return std::nullopt;
    return order != 0 ? order : sign(int(a.size() > b.size()) - int(a.size() < b.size()));
}

// The collator's sort key of a text's folded form. Keys compare byte by byte as the collator
// compares the texts; they end in their only zero byte.
using SortKey = SmallBuffer<char, 256>;

// Sort keys of texts compared lately on this thread; a slot holds its text, so a hit is exact.
// A sort compares one text with many others in a row, and the texts that take the collator are
// few (4,348 distinct ones in a build of 100,000 tracks), so a small table answers nearly all.
class SortKeyCache {
  public:
    bool find(std::string_view text, SortKey& key) const {
        const Slot& slot = slots_[slotOf(text)];
        if (slot.textLength != text.size() ||
            !std::equal(text.begin(), text.end(), slot.text.begin())) {
            return false;
        }
        key.reserve(slot.keyLength);
        std::copy_n(slot.key.begin(), slot.keyLength, key.data());
        key.setLength(slot.keyLength);
        return true;
    }
    void keep(std::string_view text, const SortKey& key) {
        if (text.size() > kTextBytes || size_t(key.length()) > kKeyBytes)
            return;
        Slot& slot = slots_[slotOf(text)];
        slot.textLength = text.size();
        std::copy(text.begin(), text.end(), slot.text.begin());
        slot.keyLength = key.length();
        std::copy_n(key.data(), key.length(), slot.key.begin());
    }

  private:
    static constexpr size_t kSlots = 256;
    static constexpr size_t kTextBytes = 96;
    static constexpr size_t kKeyBytes = 160;
    struct Slot {
        size_t textLength = kTextBytes + 1;  // longer than any text kept: empty
        int keyLength = 0;
        std::array<char, kTextBytes> text;
        std::array<char, kKeyBytes> key;
    };
    static size_t slotOf(std::string_view text) {
        return std::hash<std::string_view>{}(text) % kSlots;
    }

    std::array<Slot, kSlots> slots_;
};

void makeSortKey(const UCollator* collator, std::string_view text, SortKey& key) {
    Utf16Text folded;
    foldTextUncomposed(text, folded);
    const auto write = [&] {
        return ucol_getSortKey(collator, folded.data(), folded.length(),
                               reinterpret_cast<uint8_t*>(key.data()), key.capacity());
    };
    int32_t length = write();
    if (length > key.capacity()) {
        key.reserve(length);
        length = write();
    }
    if (length <= 0)
        throw JetError(jet::kGeneral, QStringLiteral("The text order has no key for a text."));
    key.setLength(length);
}

void sortKeyOf(const UCollator* collator, std::string_view text, SortKey& key) {
    thread_local std::unique_ptr<SortKeyCache> cache = std::make_unique<SortKeyCache>();
    if (cache->find(text, key))
        return;
    makeSortKey(collator, text, key);
    cache->keep(text, key);
}

// The collator orders the folded forms; only texts it finds equal pay for composing them, to
// tell them apart by code points.
int compareFolded(const UCollator* collator, std::string_view a, std::string_view b) {
    SortKey keyA, keyB;
    sortKeyOf(collator, a, keyA);
    sortKeyOf(collator, b, keyB);
    // A key's zero byte differs from the other key's byte there unless both end together.
    const size_t common = size_t(std::min(keyA.length(), keyB.length()));
    if (const int order = std::memcmp(keyA.data(), keyB.data(), common))
        return sign(order);
    Utf16Text foldedA, foldedB;
    foldText(a, foldedA);
    foldText(b, foldedB);
    return sign(
        u_strCompare(foldedA.data(), foldedA.length(), foldedB.data(), foldedB.length(), true));
}

// SQLite cannot take an error from a collation; ICU fails here only when memory runs out.
int collate(void*, int lengthA, const void* dataA, int lengthB, const void* dataB) noexcept {
    return compareJetText({static_cast<const char*>(dataA), size_t(lengthA)},
                          {static_cast<const char*>(dataB), size_t(lengthB)});
}

}  // namespace

int compareJetText(std::string_view a, std::string_view b) {
    if (a == b)
        return 0;
    const TextOrder& order = textOrder();
    if (const std::optional<int> byRanks = compareByRanks(order.ranks, a, b))
        return *byRanks;
    return compareFolded(order.collator.get(), a, b);
}

void registerJetCollation(sqlite3* db) {
    textOrder();  // an ICU failure surfaces here, not inside a comparison
    sqlite3_create_collation_v2(db, "NOCASE", SQLITE_UTF8, nullptr, collate, nullptr);
}

}  // namespace engine

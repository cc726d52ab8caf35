#include "engine/jet_collation.h"

#include <sqlite3.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>

#include "engine/field_type.h"
#include "engine/icu_check.h"
#include "engine/jet_ascii_ranks.h"
#include "engine/jet_error.h"
#include "engine/jet_text_fold.h"
#include "engine/small_buffer.h"

namespace engine {

namespace {

struct CloseCollator {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CloseCollator>;

// The root order at tertiary strength: after case folding, every difference the collator sees
// counts (accents, kana kind, width). Normalization makes canonical equivalents order alike.
Collator openCollator() {
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open("", &status));
    checkIcu(status, "opening the collator");
    ucol_setStrength(collator.get(), UCOL_TERTIARY);
    ucol_setAttribute(collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    checkIcu(status, "setting normalization");
    return collator;
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

// The collator's sort key of a text's folded form. Keys compare byte by byte as the collator
// compares the texts; they end in their only zero byte.
using SortKey = SmallBuffer<char, 256>;

// Sort keys of texts compared lately on this thread; a slot holds its text, so a hit is exact.
// A sort compares one text with many others in a row, and the texts that take the collator are
// few (a few thousand distinct ones in a build of 100,000 tracks), so a small table answers
// nearly all lookups.
class SortKeyCache {
  public:
    // The kept key of text; empty when it is not kept.
    std::string_view find(std::string_view text) const {
        const Slot& slot = slots_[slotOf(text)];
        if (slot.textLength != text.size() ||
            !std::equal(text.begin(), text.end(), slot.text.begin())) {
            return {};
        }
        return {slot.key.data(), slot.keyLength};
    }
    // Overwrites the slot of text, so any key found before may change.
    void keep(std::string_view text, std::string_view key) {
        if (text.size() > kTextBytes || key.size() > kKeyBytes)
            return;
        Slot& slot = slots_[slotOf(text)];
        slot.textLength = text.size();
        std::copy(text.begin(), text.end(), slot.text.begin());
        slot.keyLength = key.size();
        std::copy(key.begin(), key.end(), slot.key.begin());
    }

  private:
    static constexpr size_t kSlots = 256;
    static constexpr size_t kTextBytes = 96;
    static constexpr size_t kKeyBytes = 160;
    struct Slot {
        size_t textLength = kTextBytes + 1;  // longer than any text kept: empty
        size_t keyLength = 0;
        std::array<char, kTextBytes> text;
        std::array<char, kKeyBytes> key;
    };
    static size_t slotOf(std::string_view text) {
        return std::hash<std::string_view>{}(text) % kSlots;
    }

    std::array<Slot, kSlots> slots_;
};

SortKeyCache& threadCache() {
    thread_local std::unique_ptr<SortKeyCache> cache = std::make_unique<SortKeyCache>();
    return *cache;
}

std::string_view makeSortKey(const UCollator* collator, std::string_view text, SortKey& key) {
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
    return key.view();
}

// The collator orders the folded forms; only texts it finds equal pay for composing them, to
// tell them apart by code points.
int compareFolded(const UCollator* collator, std::string_view a, std::string_view b) {
    SortKeyCache& cache = threadCache();
    std::string_view keyA = cache.find(a), keyB = cache.find(b);
    SortKey madeA, madeB;
    if (keyA.empty())
        keyA = makeSortKey(collator, a, madeA);
    if (keyB.empty())
        keyB = makeSortKey(collator, b, madeB);
    // A key's zero byte differs from the other key's byte there unless both end together.
    const int order = std::memcmp(keyA.data(), keyB.data(), std::min(keyA.size(), keyB.size()));
    if (madeA.length() > 0)
        cache.keep(a, madeA.view());
    if (madeB.length() > 0)
        cache.keep(b, madeB.view());
    if (order != 0)
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
    sqlite3_create_collation_v2(db, kTextCollation, SQLITE_UTF8, nullptr, collate, nullptr);
}

void registerEarlierTextOrder(sqlite3* db) {
    registerJetCollation(db);
    sqlite3_create_collation_v2(db, "NOCASE", SQLITE_UTF8, nullptr, collate, nullptr);
}

}  // namespace engine

#pragma once

#include <array>
#include <optional>
#include <string_view>

struct UCollator;

namespace engine {

// Rank of each printable ASCII character (space to tilde) in a collator's order, upper-case
// letters sharing the rank of their lower case. Two texts made only of these characters then
// compare as their rank sequences do, without folding or ICU.
struct AsciiRanks {
    std::array<unsigned char, 128> rank{};  // by character; 0 outside the printable ones
    bool usable = false;  // false when the collator's weights would not agree with the ranks
};

// Ranks read from the collator.
AsciiRanks buildAsciiRanks(const UCollator* collator);

// The order of two texts made only of printable ASCII; nothing when either holds another byte
// or the ranks are not usable.
std::optional<int> compareByRanks(const AsciiRanks& ranks, std::string_view a, std::string_view b);

}  // namespace engine

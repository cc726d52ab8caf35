#pragma once

#include <array>
#include <optional>
#include <string_view>

struct UCollator;

namespace engine {

// Rank of each printable ASCII byte (space to tilde) in a collator's order, upper-case letters
// sharing the rank of their lower case; 0 for every other byte. Two texts made only of ranked
// bytes then compare as their rank sequences do, without folding or ICU.
using AsciiRanks = std::array<unsigned char, 256>;

// Ranks read from the collator; all 0 when its weights for these bytes would not agree.
AsciiRanks buildAsciiRanks(const UCollator* collator);

// The order of two texts made only of ranked bytes; nothing when either holds another byte.
std::optional<int> compareByRanks(const AsciiRanks& ranks, std::string_view a, std::string_view b);

}  // namespace engine

#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "engine/small_buffer.h"

namespace engine {

using Utf16Text = SmallBuffer<char16_t, 256>;

// The form in which the engine compares text: canonical decomposition, simple case folding,
// canonical composition (NFC of the simply case-folded NFD). Two texts are equal for the engine
// exactly when their folded forms are equal. Simple folding maps every character to one
// character ("ß" stays "ß", "Σ" and "ς" become "σ"), so LIKE's "?" still matches one character of
// the folded text as it did in the original; decomposing first makes canonical equivalents
// ("İ" and "I" + U+0307, "é" and "e" + U+0301) fold alike. Invalid UTF-8 reads as U+FFFD.
void foldText(std::string_view utf8, Utf16Text& folded);
void foldText(std::u16string_view utf16, Utf16Text& folded);

// The folded form before its composition, or another text canonically equivalent to it: a
// collator that normalizes orders it as the folded form, and it is cheaper to make.
void foldTextUncomposed(std::string_view utf8, Utf16Text& folded);

// The folded form as code points, for matching LIKE patterns character by character.
std::u32string foldedCodePoints(std::string_view utf8);
std::u32string foldedCodePoints(const QString& text);

}  // namespace engine

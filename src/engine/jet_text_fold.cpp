#include "engine/jet_text_fold.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <bitset>

#include "engine/icu_check.h"

namespace engine {

namespace {

// Runs an ICU function that writes into `out`, once more with a larger buffer when it reports
// the length it needs.
template <typename Write>
void writeInto(Utf16Text& out, Write write) {
    UErrorCode status = U_ZERO_ERROR;
    int length = write(out.data(), out.capacity(), status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        out.reserve(length);
        status = U_ZERO_ERROR;
        length = write(out.data(), out.capacity(), status);
    }
    checkIcu(status, "normalizing");
    out.setLength(length);
}

const UNormalizer2* normalizer(const UNormalizer2* (*instance)(UErrorCode*)) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* found = instance(&status);
    checkIcu(status, "loading normalization");
    return found;
}

void normalize(const UNormalizer2* form, std::u16string_view in, Utf16Text& out) {
    writeInto(out, [&](char16_t* dest, int capacity, UErrorCode& status) {
        return unorm2_normalize(form, in.data(), int32_t(in.size()), dest, capacity, &status);
    });
}

void decompose(std::u16string_view in, Utf16Text& out) {
    static const UNormalizer2* const nfd = normalizer(unorm2_getNFDInstance);
    normalize(nfd, in, out);
}

void compose(std::u16string_view in, Utf16Text& out) {
    static const UNormalizer2* const nfc = normalizer(unorm2_getNFCInstance);
    normalize(nfc, in, out);
}

void fromUtf8(std::string_view utf8, Utf16Text& out) {
    writeInto(out, [&](char16_t* dest, int capacity, UErrorCode& status) {
        int32_t length = 0;
        u_strFromUTF8WithSub(dest, capacity, &length, utf8.data(), int32_t(utf8.size()), 0xFFFD,
                             nullptr, &status);
        return length;
    });
}

UChar32 foldCharacter(UChar32 c) {
    if (c < 0x80)
        return (c >= 'A' && c <= 'Z') ? c + ('a' - 'A') : c;
    return u_foldCase(c, U_FOLD_CASE_DEFAULT);
}

// Simple case folding, character by character.
void simpleFold(std::u16string_view in, Utf16Text& out) {
    const int32_t length = int32_t(in.size());
    out.reserve(2 * length);  // room for a character whose folding needs a surrogate pair
    char16_t* dest = out.data();
    int32_t written = 0;
    for (int32_t i = 0; i < length;) {
        UChar32 c;
        U16_NEXT(in.data(), i, length, c);
        U16_APPEND_UNSAFE(dest, written, foldCharacter(c));
    }
    out.setLength(written);
}

// ASCII needs no tables: folding is lower case, and normalization leaves it as it is.
bool foldAscii(std::string_view utf8, Utf16Text& out) {
    for (char c : utf8) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    }
    out.reserve(int(utf8.size()));
    char16_t* dest = out.data();
    for (char c : utf8)
        *dest++ = char16_t(foldCharacter(static_cast<unsigned char>(c)));
    out.setLength(int(utf8.size()));
    return true;
}

// Characters below U+0300 (Latin letters, no combining marks) whose folding gives the same as
// folding their decomposition, decomposed: all but a few such as "İ", as ICU's tables say.
constexpr UChar32 kLatinEnd = 0x300;

std::bitset<kLatinEnd> foldingCommutesWithDecomposition() {
    std::bitset<kLatinEnd> commutes;
    Utf16Text decomposed, folded, foldedFirst, foldedThenDecomposed;
    for (UChar32 c = 0; c < kLatinEnd; ++c) {
        const char16_t text[] = {char16_t(c)};
        decompose({text, 1}, decomposed);
        simpleFold(decomposed.view(), folded);
        simpleFold({text, 1}, foldedFirst);
        decompose(foldedFirst.view(), foldedThenDecomposed);
        commutes[size_t(c)] = folded.view() == foldedThenDecomposed.view();
    }
    return commutes;
}

// Folds a text made only of such characters without decomposing it: each of them decomposes to
// a letter and marks that fold to themselves, so nothing reorders between characters and the
// result is canonically equivalent to the folded decomposition. False for any other text.
bool foldLatin(std::string_view utf8, Utf16Text& out) {
    static const std::bitset<kLatinEnd> commutes = foldingCommutesWithDecomposition();
    const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
    const int32_t length = int32_t(utf8.size());
    out.reserve(length);  // one code unit for each character, which takes at least one byte
    char16_t* dest = out.data();
    int32_t written = 0;
    for (int32_t i = 0; i < length;) {
        UChar32 c;
        U8_NEXT(bytes, i, length, c);
        if (c < 0 || c >= kLatinEnd || !commutes[size_t(c)])
            return false;
        const UChar32 folded = foldCharacter(c);
        if (folded > 0xFFFF)
            return false;
        dest[written++] = char16_t(folded);
    }
    out.setLength(written);
    return true;
}

}  // namespace

void foldText(std::u16string_view utf16, Utf16Text& folded) {
    Utf16Text scratch;
    decompose(utf16, folded);
    simpleFold(folded.view(), scratch);
    compose(scratch.view(), folded);
}

void foldText(std::string_view utf8, Utf16Text& folded) {
    if (foldAscii(utf8, folded))
        return;
    Utf16Text scratch;
    if (foldLatin(utf8, scratch)) {
        compose(scratch.view(), folded);
        return;
    }
    fromUtf8(utf8, scratch);
    foldText(scratch.view(), folded);
}

void foldTextUncomposed(std::string_view utf8, Utf16Text& folded) {
    if (foldAscii(utf8, folded) || foldLatin(utf8, folded))
        return;
    Utf16Text scratch;
    fromUtf8(utf8, folded);
    decompose(folded.view(), scratch);
    simpleFold(scratch.view(), folded);
}

namespace {

std::u32string codePoints(const Utf16Text& text) {
    std::u32string out;
    out.reserve(size_t(text.length()));
    for (int32_t i = 0; i < text.length();) {
        UChar32 c;
        U16_NEXT(text.data(), i, text.length(), c);
        out.push_back(char32_t(c));
    }
    return out;
}

}  // namespace

std::u32string foldedCodePoints(std::string_view utf8) {
    std::u32string out;
    out.reserve(utf8.size());
    for (char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) {  // beyond ASCII: through ICU
            Utf16Text folded;
            foldText(utf8, folded);
            return codePoints(folded);
        }
        out.push_back(char32_t(foldCharacter(byte)));
    }
    return out;
}

std::u32string foldedCodePoints(const QString& text) {
    Utf16Text folded;
    foldText(std::u16string_view(QStringView(text).utf16(), size_t(text.size())), folded);
    return codePoints(folded);
}

}  // namespace engine

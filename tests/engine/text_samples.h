#pragma once

#include <QString>
#include <random>
#include <string>
#include <vector>

// Texts for checking the engine's text order, and the folded form it must respect, computed
// with Qt's own Unicode tables rather than the engine's ICU.
namespace textsamples {

// NFC of the simply case-folded NFD (QString::toCaseFolded folds simply: "ß" stays "ß").
inline QString qtFolded(const std::string& utf8) {
    return QString::fromStdString(utf8)
        .normalized(QString::NormalizationForm_D)
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

// Pieces that fold alike share a group, so random texts often fold alike without being equal.
// The groups are separated by "," below, their pieces by "|". The first groups are printable
// ASCII, which the engine compares by a shortcut; then a tab and DEL (which the collator
// ignores), ASCII control characters it folds without ICU but compares with it; then a
// zero-width joiner (ignored too), accents precomposed and decomposed, U+0345 (folds to ι), kana
// of both kinds and widths, emoji, combining marks on their own and a full-width letter.
inline const std::vector<std::vector<std::string>>& pieceGroups() {
    static const std::vector<std::vector<std::string>> groups = [] {
        const std::string spelled =
            "a|A,b|B,e|E,i|I,s|S,z|Z,m|M,1,9, ,-,_,.,',!,~,&,(,"  // kPrintableGroups
            "\t,\x7F,"                                            // kAsciiGroups
            "\xE2\x80\x8D,é|É|e\xCC\x81|E\xCC\x81,ä|Ä|a\xCC\x88|A\xCC\x88,è,ñ|n\xCC\x83|Ñ,ø|Ø,ß|ẞ,"
            "İ|I\xCC\x87|i\xCC\x87,ı,σ|Σ|ς,ά|Ά|α\xCC\x81,ι|Ι|\xCD\x85,さ,サ,ｻ,く,ク,ら,や,漢,字,"
            "😀,🎵,👍,🏽,\xCC\x81,\xCC\x88,\xCC\xA7,Ａ|ａ";
        std::vector<std::vector<std::string>> split{{}};
        for (const char c : spelled) {
            if (c == ',') {
                split.emplace_back();
            } else if (c == '|' || split.back().empty()) {
                split.back().emplace_back(c == '|' ? "" : std::string(1, c));
            } else {
                split.back().back() += c;
            }
        }
        return split;
    }();
    return groups;
}
inline constexpr size_t kPrintableGroups = 18;
inline constexpr size_t kAsciiGroups = 20;

// `count` texts of one to five pieces, reproducible from the seed. About a third spell again
// an earlier text's groups with other pieces; the others draw from printable ASCII, from all
// of ASCII or from every group, in the proportions 2 : 1 : 2.
inline std::vector<std::string> randomTexts(int count, unsigned seed) {
    const auto& groups = pieceGroups();
    std::mt19937 random(seed);
    const auto below = [&](size_t n) { return size_t(random() % n); };
    std::vector<std::vector<size_t>> spellings;
    std::vector<std::string> texts;
    for (int n = 0; n < count; ++n) {
        std::vector<size_t> spelling;
        if (!spellings.empty() && below(3) == 0) {
            spelling = spellings[below(spellings.size())];
        } else {
            const size_t alphabets[] = {kPrintableGroups, kPrintableGroups, kAsciiGroups,
                                        groups.size(), groups.size()};
            const size_t alphabet = alphabets[below(5)];
            for (size_t length = 1 + below(5); length > 0; --length)
                spelling.push_back(below(alphabet));
            spellings.push_back(spelling);
        }
        std::string text;
        for (size_t group : spelling)
            text += groups[group][below(groups[group].size())];
        texts.push_back(text);
    }
    return texts;
}

}  // namespace textsamples

#include "engine/jet_collation.h"

#include <sqlite3.h>

#include <QString>

namespace engine {

namespace {

unsigned char asciiLower(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? c + 32 : c;
}
bool isAscii(unsigned char c) {
    return c < 128;
}

// Case folded, decomposed, without combining marks: "Ärzte" gives "arzte".
QString baseLetters(const QString& folded) {
    const QString decomposed = folded.normalized(QString::NormalizationForm_D);
    QString out;
    out.reserve(decomposed.size());
    for (QChar c : decomposed) {
        if (!c.isMark())
            out += c;
    }
    return out.toCaseFolded();
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

int compareUnicode(std::string_view a, std::string_view b) {
    const QString foldedA = QString::fromUtf8(a.data(), qsizetype(a.size()))
                                .toCaseFolded()
                                .normalized(QString::NormalizationForm_C);
    const QString foldedB = QString::fromUtf8(b.data(), qsizetype(b.size()))
                                .toCaseFolded()
                                .normalized(QString::NormalizationForm_C);
    const int byBase = baseLetters(foldedA).compare(baseLetters(foldedB));
    return sign(byBase != 0 ? byBase : foldedA.compare(foldedB));
}

bool allAscii(std::string_view s) {
    for (char c : s) {
        if (!isAscii(static_cast<unsigned char>(c)))
            return false;
    }
    return true;
}

// Both keys of the order are built character by character and leave ASCII letters where they
// stand, so an ASCII difference decides at once. The Unicode path starts one character early
// because a combining mark joins the character before it.
int compareFrom(std::string_view a, std::string_view b, size_t at) {
    const size_t from = at > 0 ? at - 1 : 0;
    return compareUnicode(a.substr(from), b.substr(from));
}

int collate(void*, int lengthA, const void* dataA, int lengthB, const void* dataB) {
    return compareJetText({static_cast<const char*>(dataA), size_t(lengthA)},
                          {static_cast<const char*>(dataB), size_t(lengthB)});
}

}  // namespace

int compareJetText(std::string_view a, std::string_view b) {
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        const auto ca = static_cast<unsigned char>(a[i]);
        const auto cb = static_cast<unsigned char>(b[i]);
        // Identical bytes decide nothing, accented or not: most names that meet in a sort share
        // their first letters, and only the first difference needs the Unicode rules.
        if (ca == cb)
            continue;
        if (!isAscii(ca) || !isAscii(cb))
            return compareFrom(a, b, i);
        if (asciiLower(ca) != asciiLower(cb))
            return asciiLower(ca) < asciiLower(cb) ? -1 : 1;
    }
    if (a.size() == b.size())
        return 0;
    if (a.size() < b.size())
        return allAscii(b.substr(common)) ? -1 : compareFrom(a, b, common);
    return allAscii(a.substr(common)) ? 1 : compareFrom(a, b, common);
}

void registerJetCollation(sqlite3* db) {
    sqlite3_create_collation_v2(db, "NOCASE", SQLITE_UTF8, nullptr, collate, nullptr);
}

}  // namespace engine

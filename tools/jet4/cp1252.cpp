#include "jet4/cp1252.h"

#include <array>
#include <stdexcept>

namespace jet4 {
namespace {

// Bytes 0x80..0x9f; everything else in the code page is Latin-1. Zero marks the five bytes
// the code page leaves undefined.
constexpr std::array<char16_t, 32> kBytes80To9F{
    0x20ac, 0,      0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017d, 0,      0,      0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0,      0x017e, 0x0178};

int byteFor(char16_t c) {
    if (c < 0x80 || (c >= 0xa0 && c <= 0xff))
        return c;
    for (size_t i = 0; i < kBytes80To9F.size(); ++i) {
        if (kBytes80To9F[i] == c)
            return int(0x80 + i);
    }
    return -1;
}

}  // namespace

QByteArray toCp1252(const QString& text) {
    QByteArray out;
    out.reserve(text.size());
    for (QChar c : text) {
        const int byte = byteFor(c.unicode());
        if (byte < 0)
            throw std::runtime_error(QStringLiteral("'%1' has characters outside code page 1252")
                                         .arg(text)
                                         .toStdString());
        out.append(char(byte));
    }
    return out;
}

}  // namespace jet4

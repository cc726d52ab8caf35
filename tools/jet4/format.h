#pragma once

#include <QByteArray>
#include <cstdint>
#include <cstring>

#include "jet4/jet4.h"

// Layout constants and little-endian helpers shared by the page builders.
namespace jet4::format {

// What differs between the two formats in the pages they share.
struct Layout {
    Format format;
    int pageSize;
    int dataHeaderSize;  // type, flag, free space, owner, (Jet 4: unknown), row count
    int rowCountOffset;
    int usageBitmapBytes;    // of a usage map kept inline in its record
    int inlineLongValueMax;  // longer memo and OLE values go to long-value pages
    // A row with its 2-byte offset in the page header fills the rest of the page.
    int maxRowSize() const { return pageSize - dataHeaderSize - 2; }
};

constexpr Layout kJet3Layout{Format::Jet3, 2048, 10, 8, 128, 500};
constexpr Layout kJet4Layout{Format::Jet4, 4096, 14, 12, 64, 1000};

inline const Layout& layoutOf(Format f) {
    return f == Format::Jet3 ? kJet3Layout : kJet4Layout;
}

constexpr int kMaxRowsPerPage = 255;  // a row pointer keeps the row number in one byte
constexpr int kLongValueRefSize = 12;

enum PageType : std::uint8_t {
    kHeaderPage = 0x00,
    kDataPage = 0x01,
    kTableDefPage = 0x02,
    kMapPage = 0x05
};

// A row pointer names a row by page number and row number on that page.
inline std::uint32_t rowPointer(std::uint32_t page, int row) {
    return (page << 8) | std::uint32_t(row);
}

inline void put16(QByteArray& b, int at, std::uint16_t v) {
    b[at] = char(v & 0xff);
    b[at + 1] = char(v >> 8);
}
inline void put32(QByteArray& b, int at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i)
        b[at + i] = char((v >> (8 * i)) & 0xff);
}
inline void put64(QByteArray& b, int at, std::uint64_t v) {
    for (int i = 0; i < 8; ++i)
        b[at + i] = char((v >> (8 * i)) & 0xff);
}
inline void putDouble(QByteArray& b, int at, double v) {
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    put64(b, at, bits);
}

inline void append8(QByteArray& b, std::uint8_t v) {
    b.append(char(v));
}
inline void append16(QByteArray& b, std::uint16_t v) {
    b.append(char(v & 0xff));
    b.append(char(v >> 8));
}
inline void append32(QByteArray& b, std::uint32_t v) {
    for (int i = 0; i < 4; ++i)
        b.append(char((v >> (8 * i)) & 0xff));
}

}  // namespace jet4::format

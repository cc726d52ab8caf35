#include "jet4/row_layout.h"

#include "jet4/format.h"

namespace jet4 {

using namespace format;

namespace {

constexpr int kSegment = 256;
constexpr std::uint8_t kNoColumn = 0xff;

// Jet 3 keeps offsets in single bytes. For every 256-byte segment the row reaches, a jump
// table entry names the first offset at or beyond the segment's start; an offset counts
// 256 more for each entry at or below its index.
int jumpCount(int rowSize) {
    return (rowSize - 1) / kSegment;
}

QByteArray jumpTable(const std::vector<int>& offsets, int count) {
    QByteArray table;
    for (int k = count; k >= 1; --k) {
        std::uint8_t first = kNoColumn;
        for (size_t i = 0; i < offsets.size(); ++i) {
            if (offsets[i] >= k * kSegment) {
                first = std::uint8_t(i);
                break;
            }
        }
        append8(table, first);
    }
    return table;
}

QByteArray jet3Row(const RowParts& parts) {
    QByteArray row;
    append8(row, std::uint8_t(parts.columnCount));
    row += parts.fixed;
    row += parts.varData;
    const int varCount = int(parts.varStarts.size()) - 1;
    if (varCount > 0) {
        for (int v = varCount; v >= 0; --v)
            append8(row, std::uint8_t(parts.varStarts[v] % kSegment));
        const int withoutJumps = int(row.size() + 1 + parts.nullMask.size());
        int jumps = 0;
        while (jumpCount(withoutJumps + jumps) > jumps)
            jumps = jumpCount(withoutJumps + jumps);
        row += jumpTable(parts.varStarts, jumps);
        append8(row, std::uint8_t(varCount));
    }
    return row + parts.nullMask;
}

QByteArray jet4Row(const RowParts& parts) {
    QByteArray row;
    append16(row, std::uint16_t(parts.columnCount));
    row += parts.fixed;
    row += parts.varData;
    const int varCount = int(parts.varStarts.size()) - 1;
    if (varCount > 0) {
        for (int v = varCount; v >= 0; --v)
            append16(row, std::uint16_t(parts.varStarts[v]));
        append16(row, std::uint16_t(varCount));
    }
    return row + parts.nullMask;
}

}  // namespace

int columnCountSize(Format format) {
    return format == Format::Jet3 ? 1 : 2;
}

QByteArray layOutRow(const RowParts& parts, Format format) {
    return format == Format::Jet3 ? jet3Row(parts) : jet4Row(parts);
}

}  // namespace jet4

#pragma once

#include <QByteArray>
#include <vector>

#include "jet4/jet4.h"

namespace jet4 {

// A row's parts before they are laid out as the format wants them.
struct RowParts {
    int columnCount = 0;
    QByteArray fixed;
    QByteArray varData;
    std::vector<int> varStarts;  // where each variable column starts in the row, then the end
    QByteArray nullMask;
};

// Bytes of the column count that opens a row, before the fixed part.
int columnCountSize(Format format);

// Column count, fixed part, variable data, then (read backwards from the end) the null mask,
// the variable column count and the offsets of the variable columns and of the end of data.
QByteArray layOutRow(const RowParts& parts, Format format);

}  // namespace jet4

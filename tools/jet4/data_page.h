#pragma once

#include <QByteArray>
#include <cstdint>

#include "jet4/format.h"

namespace jet4 {

// Fills one data page: rows are stored from the end of the page towards its header, and
// the header keeps their offsets in the order they were added.
class DataPage {
  public:
    // owner: the table definition page, or the 'LVAL' mark for long-value pages.
    DataPage(const format::Layout& layout, std::uint32_t owner);

    bool fits(int rowSize) const;
    // Adds a row and returns its number on the page. The row must fit.
    int add(const QByteArray& row);
    int rowCount() const { return rowCount_; }
    bool empty() const { return rowCount_ == 0; }
    const QByteArray& bytes() const { return page_; }

  private:
    int freeSpace() const;

    const format::Layout* layout_;
    QByteArray page_;
    int rowCount_ = 0;
    int rowsStart_;
};

constexpr std::uint32_t kLongValueOwner = 0x4c41564c;  // "LVAL" as stored

}  // namespace jet4

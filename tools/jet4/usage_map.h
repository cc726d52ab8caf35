#pragma once

#include "jet4/data_page.h"
#include "jet4/page_file.h"

#include <QByteArray>
#include <cstdint>
#include <vector>

namespace jet4 {

// The record telling which pages belong to a table. Pages close to the first one fit an
// inline bitmap; otherwise the record points to bitmap pages, written here.
QByteArray usageMapRecord(const std::vector<std::uint32_t>& pages, PageFile& file,
                          const format::Layout& layout);

// Keeps usage-map records as rows of data pages, starting with a page reserved up front.
class MapRecords {
  public:
    MapRecords(PageFile& file, std::uint32_t firstPage, const format::Layout& layout)
        : file_(file), layout_(layout), page_(layout, 0), number_(firstPage) {}

    // Returns the row pointer a table definition keeps for the record.
    std::uint32_t add(const QByteArray& record);
    void finish();

  private:
    PageFile& file_;
    const format::Layout& layout_;
    DataPage page_;
    std::uint32_t number_;
};

}  // namespace jet4

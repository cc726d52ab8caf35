#pragma once

#include "jet4/data_page.h"
#include "jet4/page_file.h"

#include <QByteArray>
#include <cstdint>
#include <optional>

namespace jet4 {

// Stores long values (memo, OLE) that do not stay in their row on long-value pages and
// returns the 12-byte reference the row keeps. A value that fits one row shares a page
// with others; a longer one is split over a chain of whole pages.
class LongValueWriter {
  public:
    LongValueWriter(PageFile& file, const format::Layout& layout) : file_(file), layout_(layout) {}

    QByteArray store(const QByteArray& value);
    // Writes the partly filled shared page.
    void finish();

  private:
    std::uint32_t storeSingle(const QByteArray& value);
    std::uint32_t storeChain(const QByteArray& value);

    PageFile& file_;
    const format::Layout& layout_;
    std::optional<DataPage> shared_;
    std::uint32_t sharedNumber_ = 0;
};

}  // namespace jet4

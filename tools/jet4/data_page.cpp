#include "jet4/data_page.h"

#include "jet4/format.h"

#include <cstring>
#include <stdexcept>

namespace jet4 {

using namespace format;

DataPage::DataPage(const Layout& layout, std::uint32_t owner)
    : layout_(&layout), page_(layout.pageSize, '\0'), rowsStart_(layout.pageSize) {
    page_[0] = char(kDataPage);
    page_[1] = 0x01;
    put32(page_, 4, owner);
    put16(page_, 2, std::uint16_t(freeSpace()));
}

int DataPage::freeSpace() const {
    return rowsStart_ - layout_->dataHeaderSize - 2 * rowCount_;
}

bool DataPage::fits(int rowSize) const {
    return rowCount_ < kMaxRowsPerPage && rowSize + 2 <= freeSpace();
}

int DataPage::add(const QByteArray& row) {
    if (!fits(int(row.size())))
        throw std::logic_error("row added to a full page");
    rowsStart_ -= int(row.size());
    std::memcpy(page_.data() + rowsStart_, row.constData(), size_t(row.size()));
    put16(page_, layout_->dataHeaderSize + 2 * rowCount_, std::uint16_t(rowsStart_));
    ++rowCount_;
    put16(page_, layout_->rowCountOffset, std::uint16_t(rowCount_));
    put16(page_, 2, std::uint16_t(freeSpace()));
    return rowCount_ - 1;
}

}  // namespace jet4

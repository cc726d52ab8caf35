#include "jet4/usage_map.h"

#include "jet4/format.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace jet4 {

using namespace format;

namespace {

constexpr int kBitmapPageHeader = 4;

// The record of bitmap pages reuses the inline map's start page field for one more pointer.
int bitmapPagePointers(const Layout& layout) {
    return layout.usageBitmapBytes / 4 + 1;
}

void setBit(QByteArray& bytes, int at, std::uint32_t bit) {
    bytes[at + int(bit / 8)] = char(bytes[at + int(bit / 8)] | (1 << (bit % 8)));
}

QByteArray inlineMap(const std::vector<std::uint32_t>& pages, const Layout& layout) {
    const std::uint32_t start = pages.empty() ? 0 : pages.front();
    QByteArray record(5 + layout.usageBitmapBytes, '\0');
    record[0] = 0x00;
    put32(record, 1, start);
    for (std::uint32_t page : pages)
        setBit(record, 5, page - start);
    return record;
}

QByteArray pagedMap(const std::vector<std::uint32_t>& pages, PageFile& file, const Layout& layout) {
    const auto span = std::uint32_t(layout.pageSize - kBitmapPageHeader) * 8;
    std::map<std::uint32_t, QByteArray> bitmaps;  // by slot: which span of pages it covers
    for (std::uint32_t page : pages) {
        const std::uint32_t slot = page / span;
        if (slot >= std::uint32_t(bitmapPagePointers(layout)))
            throw std::runtime_error("database too large for its page usage map");
        auto [it, added] = bitmaps.try_emplace(slot, layout.pageSize, '\0');
        if (added) {
            it->second[0] = char(kMapPage);
            it->second[1] = 0x01;
        }
        setBit(it->second, kBitmapPageHeader, page % span);
    }
    QByteArray record(1 + 4 * bitmapPagePointers(layout), '\0');
    record[0] = 0x01;
    for (const auto& [slot, bitmap] : bitmaps) {
        const std::uint32_t number = file.allocate();
        file.write(number, bitmap);
        put32(record, 1 + 4 * int(slot), number);
    }
    return record;
}

}  // namespace

QByteArray usageMapRecord(const std::vector<std::uint32_t>& pages, PageFile& file,
                          const Layout& layout) {
    std::vector<std::uint32_t> sorted = pages;
    std::sort(sorted.begin(), sorted.end());
    const auto inlineSpan = std::uint32_t(layout.usageBitmapBytes) * 8;
    if (sorted.empty() || sorted.back() - sorted.front() < inlineSpan)
        return inlineMap(sorted, layout);
    return pagedMap(sorted, file, layout);
}

std::uint32_t MapRecords::add(const QByteArray& record) {
    if (!page_.fits(int(record.size()))) {
        finish();
        page_ = DataPage(layout_, 0);
        number_ = file_.allocate();
    }
    return rowPointer(number_, page_.add(record));
}

void MapRecords::finish() {
    file_.write(number_, page_.bytes());
}

}  // namespace jet4

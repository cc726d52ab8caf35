#include "jet4/usage_map.h"

#include "jet4/format.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace jet4 {

using namespace format;

namespace {

constexpr int kInlineBitmapBytes = 64;
constexpr std::uint32_t kInlineSpan = kInlineBitmapBytes * 8;
constexpr int kBitmapPagePointers = 17;
constexpr std::uint32_t kBitmapPageSpan = (kPageSize - 4) * 8;

void setBit(QByteArray& bytes, int at, std::uint32_t bit) {
    bytes[at + int(bit / 8)] = char(bytes[at + int(bit / 8)] | (1 << (bit % 8)));
}

QByteArray inlineMap(const std::vector<std::uint32_t>& pages) {
    const std::uint32_t start = pages.empty() ? 0 : pages.front();
    QByteArray record(5 + kInlineBitmapBytes, '\0');
    record[0] = 0x00;
    put32(record, 1, start);
    for (std::uint32_t page : pages)
        setBit(record, 5, page - start);
    return record;
}

QByteArray pagedMap(const std::vector<std::uint32_t>& pages, PageFile& file) {
    std::map<std::uint32_t, QByteArray> bitmaps;  // by slot: which span of pages it covers
    for (std::uint32_t page : pages) {
        const std::uint32_t slot = page / kBitmapPageSpan;
        if (slot >= kBitmapPagePointers)
            throw std::runtime_error("database too large for its page usage map");
        auto [it, added] = bitmaps.try_emplace(slot, kPageSize, '\0');
        if (added) {
            it->second[0] = char(kMapPage);
            it->second[1] = 0x01;
        }
        setBit(it->second, 4, page % kBitmapPageSpan);
    }
    QByteArray record(1 + 4 * kBitmapPagePointers, '\0');
    record[0] = 0x01;
    for (const auto& [slot, bitmap] : bitmaps) {
        const std::uint32_t number = file.allocate();
        file.write(number, bitmap);
        put32(record, 1 + 4 * int(slot), number);
    }
    return record;
}

}  // namespace

QByteArray usageMapRecord(const std::vector<std::uint32_t>& pages, PageFile& file) {
    std::vector<std::uint32_t> sorted = pages;
    std::sort(sorted.begin(), sorted.end());
    if (sorted.empty() || sorted.back() - sorted.front() < kInlineSpan)
        return inlineMap(sorted);
    return pagedMap(sorted, file);
}

std::uint32_t MapRecords::add(const QByteArray& record) {
    if (!page_.fits(int(record.size()))) {
        finish();
        page_ = DataPage(0);
        number_ = file_.allocate();
    }
    return rowPointer(number_, page_.add(record));
}

void MapRecords::finish() {
    file_.write(number_, page_.bytes());
}

}  // namespace jet4

#include "jet4/long_values.h"

#include "jet4/format.h"

namespace jet4 {

using namespace format;

namespace {

constexpr std::uint32_t kSingleRowFlag = 0x40000000u;
constexpr int kChainLinkSize = 4;

}  // namespace

QByteArray LongValueWriter::store(const QByteArray& value) {
    QByteArray ref(kLongValueRefSize, '\0');
    const auto length = std::uint32_t(value.size());
    if (value.size() <= layout_.maxRowSize()) {
        put32(ref, 0, length | kSingleRowFlag);
        put32(ref, 4, storeSingle(value));
    } else {
        put32(ref, 0, length);
        put32(ref, 4, storeChain(value));
    }
    return ref;
}

std::uint32_t LongValueWriter::storeSingle(const QByteArray& value) {
    if (shared_ && !shared_->fits(int(value.size())))
        finish();
    if (!shared_) {
        shared_.emplace(layout_, kLongValueOwner);
        sharedNumber_ = file_.allocate();
    }
    return rowPointer(sharedNumber_, shared_->add(value));
}

// Each page of the chain holds one row: the pointer to the next part, then the part.
std::uint32_t LongValueWriter::storeChain(const QByteArray& value) {
    const int chunk = layout_.maxRowSize() - kChainLinkSize;
    const qsizetype parts = (value.size() + chunk - 1) / chunk;
    const std::uint32_t first = file_.pageCount();
    for (qsizetype i = 0; i < parts; ++i) {
        const std::uint32_t page = file_.allocate();
        QByteArray row;
        append32(row, i + 1 < parts ? rowPointer(page + 1, 0) : 0);
        row += value.mid(i * chunk, chunk);
        DataPage part(layout_, kLongValueOwner);
        part.add(row);
        file_.write(page, part.bytes());
    }
    return rowPointer(first, 0);
}

void LongValueWriter::finish() {
    if (shared_)
        file_.write(sharedNumber_, shared_->bytes());
    shared_.reset();
}

}  // namespace jet4

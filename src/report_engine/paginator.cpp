#include "report_engine/paginator.h"

namespace report_engine {

Paginator::Paginator(const QRect& printable, int headerHeight, int footerHeight)
    : printable_(printable),
      top_(printable.top() + headerHeight),
      bottom_(printable.top() + printable.height() - footerHeight) {}

void Paginator::add(Block block) {
    const bool keep = block.keepWithNext;
    chain_.append(std::move(block));
    if (!keep) {
        placeChain();
    }
}

QVector<Page> Paginator::finish() {
    placeChain();
    if (pages_.isEmpty()) {
        startPage(nullptr);
    }
    return std::move(pages_);
}

void Paginator::placeChain() {
    if (chain_.isEmpty()) {
        return;
    }
    int chainHeight = 0;
    for (const Block& block : chain_) {
        chainHeight += block.height;
    }
    bool first = true;
    for (Block& block : chain_) {
        const bool breakHere =
            pages_.isEmpty() ||
            (pageHasBody_ && (!fits(block.height) || (first && !fits(chainHeight))));
        if (breakHere) {
            startPage(block.repeatHeaders);
        }
        put(std::move(block));
        first = false;
    }
    chain_.clear();
}

void Paginator::startPage(const std::shared_ptr<const QVector<Block>>& repeatHeaders) {
    pages_.append(Page{});
    rows_.append(RowsOnPage{});
    y_ = top_;
    pageHasBody_ = false;
    if (repeatHeaders) {
        for (const Block& header : *repeatHeaders) {
            put(header);
        }
    }
    pageHasBody_ = false;
}

void Paginator::put(Block block) {
    Page& page = pages_.last();
    for (PageItem& item : block.items) {
        translate(item, printable_.left(), y_);
        page.items.append(std::move(item));
    }
    page.items += block.pageItems;
    y_ += block.height;
    pageHasBody_ = true;
    if (block.row >= 0) {
        RowsOnPage& rows = rows_.last();
        rows.first = rows.first < 0 ? block.row : rows.first;
        rows.last = block.row;
    }
}

}  // namespace report_engine

#pragma once

#include <QVector>

#include "report_engine/block.h"

namespace report_engine {

// Fills pages with blocks from top to bottom between the page header's and the page footer's
// space. A block that does not fit starts a new page (unless it is the first on its page: then
// it is cut off at the page's end); a run of blocks that keep with the next starts a new page as
// a whole when it does not fit in what is left.
class Paginator {
  public:
    struct RowsOnPage {
        int first = -1;
        int last = -1;
    };

    Paginator(const QRect& printable, int headerHeight, int footerHeight);

    void add(Block block);
    // Places what is still held back and returns the pages (at least one).
    QVector<Page> finish();
    const QVector<RowsOnPage>& rowsOnPages() const { return rows_; }
    int pageNumber() const { return qMax(1, int(pages_.size())); }

  private:
    void placeChain();
    void startPage(const std::shared_ptr<const QVector<Block>>& repeatHeaders);
    void put(Block block);
    bool fits(int height) const { return y_ + height <= bottom_; }

    QRect printable_;
    int top_;
    int bottom_;
    int y_ = 0;
    bool pageHasBody_ = false;
    QVector<Block> chain_;
    QVector<Page> pages_;
    QVector<RowsOnPage> rows_;
};

}  // namespace report_engine

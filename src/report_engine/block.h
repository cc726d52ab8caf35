#pragma once

#include <QVector>
#include <memory>

#include "report_engine/page_model.h"

namespace report_engine {

// A piece of a report that goes onto one page whole: a formatted section, or one part of a
// section that a sub-report splits. The pages are filled with blocks from top to bottom.
struct Block {
    int height = 0;
    QVector<PageItem> items;      // x from the left margin, y from the block's top
    QVector<PageItem> pageItems;  // drawn on the page it lands on, from the paper's corner
    bool keepWithNext = false;    // goes to a new page rather than end a page without the next
    int row = -1;  // the row it prints for; page headers and footers read the page's rows
    // Group headers that print again at the top of a page this block starts.
    std::shared_ptr<const QVector<Block>> repeatHeaders;
};

// Moves items by an offset in twips.
void translate(QVector<PageItem>& items, int dx, int dy);
void translate(PageItem& item, int dx, int dy);

}  // namespace report_engine

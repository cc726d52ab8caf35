#include "report_engine/page_model.h"

namespace report_engine {

PageSetup PageSetup::a4() {
    return PageSetup{};  // 210 by 297 mm
}

PageSetup PageSetup::letter() {
    PageSetup setup;
    setup.paper = QSize(12240, 15840);  // 8.5 by 11 inches
    return setup;
}

QSize PageSetup::size() const {
    return orientation == QPageLayout::Landscape ? paper.transposed() : paper;
}

QRect PageSetup::printable() const {
    const QSize oriented = size();
    return QRect(leftMargin, topMargin, oriented.width() - leftMargin - rightMargin,
                 oriented.height() - topMargin - bottomMargin);
}

}  // namespace report_engine

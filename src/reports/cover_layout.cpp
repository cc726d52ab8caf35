#include "reports/cover_layout.h"

#include "report/text_measure.h"

namespace reports {

namespace {

constexpr double kSmallestPoints = 6;
// Frame and fold lines: thin enough to cut along, dark enough to see.
constexpr int kCutLineTwips = 10;

}  // namespace

report::PageSetup coverPage(int leftMargin, int topMargin) {
    report::PageSetup page = report::PageSetup::a4();
    page.leftMargin = leftMargin;
    page.topMargin = topMargin;
    page.rightMargin = 400;
    page.bottomMargin = 400;
    return page;
}

int evaluateHeight(const report::Control& control) {
    return report::textHeight(control.font, control.text, control.rect.width(), control.wordWrap);
}

report::ReportFont derivedFont(const report::ReportFont& body, double pointsMore, bool bold) {
    report::ReportFont font;
    font.family = body.family;
    font.pointSize = qMax(kSmallestPoints, body.pointSize + pointsMore);
    font.bold = bold;
    return font;
}

report::PageItem pageLine(const QLine& line) {
    report::PageItem item;
    item.kind = report::ItemKind::Line;
    item.line = line;
    item.penWidth = kCutLineTwips;
    return item;
}

report::PageItem pageRectangle(const QRect& rect) {
    report::PageItem item;
    item.kind = report::ItemKind::Rectangle;
    item.rect = rect;
    item.penWidth = kCutLineTwips;
    return item;
}

}  // namespace reports

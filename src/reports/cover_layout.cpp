#include "reports/cover_layout.h"

#include "report_engine/text_measure.h"

namespace reports {

namespace {

constexpr double kSmallestPoints = 6;
// Frame and fold lines: thin enough to cut along, dark enough to see.
constexpr int kCutLineTwips = 10;

}  // namespace

report_engine::PageSetup coverPage(int leftMargin, int topMargin) {
    report_engine::PageSetup page = report_engine::PageSetup::a4();
    page.leftMargin = leftMargin;
    page.topMargin = topMargin;
    page.rightMargin = 400;
    page.bottomMargin = 400;
    return page;
}

int evaluateHeight(const report_engine::Control& control) {
    return report_engine::textHeight(control.font, control.text, control.rect.width(),
                                     control.wordWrap);
}

report_engine::ReportFont derivedFont(const report_engine::ReportFont& body, double pointsMore,
                                      bool bold) {
    report_engine::ReportFont font;
    font.family = body.family;
    font.pointSize = qMax(kSmallestPoints, body.pointSize + pointsMore);
    font.bold = bold;
    return font;
}

report_engine::PageItem pageLine(const QLine& line) {
    report_engine::PageItem item;
    item.kind = report_engine::ItemKind::Line;
    item.line = line;
    item.penWidth = kCutLineTwips;
    return item;
}

report_engine::PageItem pageRectangle(const QRect& rect) {
    report_engine::PageItem item;
    item.kind = report_engine::ItemKind::Rectangle;
    item.rect = rect;
    item.penWidth = kCutLineTwips;
    return item;
}

}  // namespace reports

#include "reports/calibration_page.h"

#include <QtMath>

#include "report_engine/calibration.h"
#include "reports/cover_layout.h"

namespace reports {

namespace {

using report_engine::PageItem;

constexpr double kTwipsPerMm = report_engine::kTwipsPerInch / 25.4;

int twips(double mm) {
    return qRound(mm * kTwipsPerMm);
}

const QString kInstructions = QStringLiteral(
    "Print this page at 100 %, without fitting it to the paper, on the printer to calibrate. "
    "Then measure with a ruler, to half a millimetre:\n"
    "1. from the paper's left edge to the frame's left line (here %1 mm),\n"
    "2. from the paper's top edge to the frame's top line (here %2 mm),\n"
    "3. the frame's width, from its left line to its right line (here %3 mm),\n"
    "4. the frame's height, from its top line to its bottom line (here %4 mm).\n"
    "Enter what you measured under Printer Calibration: covers sent to this printer are then "
    "moved and scaled to come out true. The ticks along the frame are millimetres, numbered with "
    "their distance from the paper's edge as a true printer prints them.");

PageItem text(const QRect& rect, const QString& content, double points, bool bold = false) {
    PageItem item;
    item.rect = rect;
    item.text = content;
    item.font.pointSize = points;
    item.font.bold = bold;
    return item;
}

// Ticks every millimetre from the frame's corner along one of its lines, inwards: 2 mm long,
// 3.5 mm at every fifth and 5 mm at every tenth, which carries its distance from the edge.
void addScale(QVector<PageItem>& items, double startMm, double lengthMm, double lineMm,
              Qt::Orientation along) {
    for (int mm = 1; mm < qFloor(lengthMm); ++mm) {
        const double at = startMm + mm;
        const double reach = mm % 10 == 0 ? 5 : mm % 5 == 0 ? 3.5 : 2;
        const QLine tick = along == Qt::Horizontal
                               ? QLine(twips(at), twips(lineMm), twips(at), twips(lineMm + reach))
                               : QLine(twips(lineMm), twips(at), twips(lineMm + reach), twips(at));
        PageItem line = pageLine(tick);
        line.penWidth = 6;
        items << line;
        if (mm % 10 == 0) {
            const QPoint end = tick.p2();
            const QRect label = along == Qt::Horizontal
                                    ? QRect(end.x() - 300, end.y() + 20, 600, 200)
                                    : QRect(end.x() + 40, end.y() - 100, 600, 200);
            PageItem number = text(label, QString::number(qRound(at)), 6);
            number.alignment = along == Qt::Horizontal ? Qt::AlignHCenter | Qt::AlignTop
                                                       : Qt::AlignLeft | Qt::AlignVCenter;
            items << number;
        }
    }
}

}  // namespace

report_engine::PageModel calibrationTestPage() {
    const report_engine::FrameMeasurement frame = report_engine::nominalTestFrame();
    report_engine::Page page;
    page.items << pageRectangle(QRect(twips(frame.leftMm), twips(frame.topMm), twips(frame.widthMm),
                                      twips(frame.heightMm)));
    addScale(page.items, frame.leftMm, frame.widthMm, frame.topMm, Qt::Horizontal);
    addScale(page.items, frame.topMm, frame.heightMm, frame.leftMm, Qt::Vertical);
    const int inside = twips(frame.leftMm + 20);
    const int width = twips(frame.widthMm - 40);
    page.items << text(QRect(inside, twips(frame.topMm + 40), width, 500),
                       QStringLiteral("Mixorama printer calibration"), 16, true);
    page.items << text(
        QRect(inside, twips(frame.topMm + 55), width, 4500),
        kInstructions.arg(frame.leftMm).arg(frame.topMm).arg(frame.widthMm).arg(frame.heightMm),
        10);
    report_engine::PageModel model;
    model.setup = report_engine::PageSetup::a4();
    model.pages << page;
    return model;
}

}  // namespace reports

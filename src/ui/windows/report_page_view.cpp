#include "ui/windows/report_page_view.h"

#include <QPaintEvent>
#include <QPainter>

#include "report/painter.h"

namespace ui {

ReportPageView::ReportPageView(const report::PageModel& model, QWidget* parent)
    : QWidget(parent), model_(model) {
    setObjectName(QStringLiteral("pageView"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize ReportPageView::pixelSize(double zoom) const {
    const QSize paper = model_.setup.size();
    return QSize(qRound(paper.width() * zoom * logicalDpiX() / report::kTwipsPerInch),
                 qRound(paper.height() * zoom * logicalDpiY() / report::kTwipsPerInch));
}

void ReportPageView::showPage(int index, double zoom) {
    index_ = index;
    zoom_ = zoom;
    resize(pixelSize(zoom));
    update();
}

void ReportPageView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::white);
    if (index_ >= 0 && index_ < model_.pages.size()) {
        report::drawPage(painter, model_.pages[index_], zoom_);
    }
}

}  // namespace ui

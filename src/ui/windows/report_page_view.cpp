#include "ui/windows/report_page_view.h"

#include <QPaintEvent>
#include <QPainter>

#include "report_engine/painter.h"

namespace ui {

ReportPageView::ReportPageView(const report_engine::PageModel& model, QWidget* parent)
    : QWidget(parent), model_(model) {
    setObjectName(QStringLiteral("pageView"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize ReportPageView::pixelSize(double zoom) const {
    const QSize paper = model_.setup.size();
    return QSize(qRound(paper.width() * zoom * logicalDpiX() / report_engine::kTwipsPerInch),
                 qRound(paper.height() * zoom * logicalDpiY() / report_engine::kTwipsPerInch));
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
        report_engine::drawPage(painter, model_.pages[index_], zoom_);
    }
}

}  // namespace ui

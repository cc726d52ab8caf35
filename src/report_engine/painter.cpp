#include "report_engine/painter.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintDevice>
#include <QPainter>
#include <QTextDocument>

#include "report_engine/text_measure.h"
#include "rtf/rtf.h"

namespace report_engine {

namespace {

QPen penOf(const PageItem& item) {
    QPen pen(item.color, item.penWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

void drawText(QPainter& painter, const PageItem& item) {
    QRectF box = item.rect;
    if (item.fill.isValid()) {
        painter.fillRect(box, item.fill);
    }
    if (item.angle != 0) {
        // The box frames the turned text: a quarter turn lays its width along the box's height.
        painter.translate(box.center());
        painter.rotate(-item.angle / 10.0);
        const bool quarterTurn = qAbs(item.angle) % 1800 == 900;
        const QSizeF size = quarterTurn ? box.size().transposed() : box.size();
        box = QRectF(QPointF(-size.width() / 2, -size.height() / 2), size);
    }
    if (item.clip) {
        painter.setClipRect(box, Qt::IntersectClip);
    }
    painter.setFont(twipsFont(item.font));
    painter.setPen(item.color);
    painter.drawText(box, textFlags(item.alignment, item.wordWrap), item.text);
}

void drawRichText(QPainter& painter, const PageItem& item) {
    painter.translate(item.rect.topLeft());
    painter.scale(rtf::kTwipsPerUnit, rtf::kTwipsPerUnit);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(0, 0, item.rect.width() / rtf::kTwipsPerUnit,
                          item.rect.height() / rtf::kTwipsPerUnit);
    context.palette.setColor(QPalette::Text, item.color);
    painter.setClipRect(context.clip, Qt::IntersectClip);
    item.document->documentLayout()->draw(&painter, context);
}

void drawItem(QPainter& painter, const PageItem& item) {
    painter.save();
    switch (item.kind) {
        case ItemKind::Text:
            drawText(painter, item);
            break;
        case ItemKind::RichText:
            if (item.document) {
                drawRichText(painter, item);
            }
            break;
        case ItemKind::Line:
            if (item.penWidth > 0) {
                painter.setPen(penOf(item));
                painter.drawLine(item.line);
            }
            break;
        case ItemKind::Rectangle:
            painter.setPen(item.penWidth > 0 ? penOf(item) : QPen(Qt::NoPen));
            painter.setBrush(item.fill.isValid() ? QBrush(item.fill) : QBrush(Qt::NoBrush));
            painter.drawRect(QRectF(item.rect));
            break;
    }
    painter.restore();
}

}  // namespace

QTransform twipsToDevice(const QPaintDevice& device, double zoom) {
    return QTransform::fromScale(device.logicalDpiX() * zoom / kTwipsPerInch,
                                 device.logicalDpiY() * zoom / kTwipsPerInch);
}

void drawPage(QPainter& painter, const Page& page, double zoom, const Calibration& calibration) {
    painter.save();
    painter.setTransform(calibrationTransform(calibration) * twipsToDevice(*painter.device(), zoom),
                         true);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const PageItem& item : page.items) {
        drawItem(painter, item);
    }
    painter.restore();
}

}  // namespace report_engine

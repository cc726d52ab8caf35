#include "report_engine/text_measure.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QTextDocument>
#include <cmath>

#include "rtf/rtf.h"

namespace report_engine {

namespace {

// Large reports measure the same few fonts thousands of times.
const QFontMetricsF& metricsOf(const ReportFont& wanted) {
    static QHash<QString, QFontMetricsF> cache;
    const QString key = QStringLiteral("%1|%2|%3%4%5")
                            .arg(wanted.family)
                            .arg(wanted.pointSize)
                            .arg(wanted.bold)
                            .arg(wanted.italic)
                            .arg(wanted.underline);
    auto it = cache.find(key);
    if (it == cache.end()) {
        it = cache.insert(key, QFontMetricsF(twipsFont(wanted)));
    }
    return *it;
}

// Documents lay out for this device, whatever screen the program runs on.
QPaintDevice* documentDevice() {
    static QImage device = [] {
        QImage image(1, 1, QImage::Format_RGB32);
        const double dotsPerMeter = kTwipsPerInch / rtf::kTwipsPerUnit / 0.0254;
        image.setDotsPerMeterX(qRound(dotsPerMeter));
        image.setDotsPerMeterY(qRound(dotsPerMeter));
        return image;
    }();
    return &device;
}

}  // namespace

QFont twipsFont(const ReportFont& wanted) {
    QFont font(wanted.family);
    font.setPixelSize(qMax(1, qRound(wanted.pointSize * kTwipsPerPoint)));
    font.setBold(wanted.bold);
    font.setItalic(wanted.italic);
    font.setUnderline(wanted.underline);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int textFlags(Qt::Alignment alignment, bool wordWrap) {
    return int(alignment) | (wordWrap ? Qt::TextWordWrap : 0);
}

int textHeight(const ReportFont& font, const QString& text, int width, bool wordWrap) {
    if (text.isEmpty()) {
        return 0;
    }
    const QRectF box(0, 0, qMax(1, width), 1e9);
    const QRectF used = metricsOf(font).boundingRect(box, textFlags(Qt::AlignLeft, wordWrap), text);
    return int(std::ceil(used.height()));
}

int textWidth(const ReportFont& font, const QString& text) {
    return int(std::ceil(metricsOf(font).horizontalAdvance(text)));
}

std::shared_ptr<QTextDocument> richDocument(const QString& stored, int width) {
    auto document = std::make_shared<QTextDocument>();
    document->documentLayout()->setPaintDevice(documentDevice());
    document->setDocumentMargin(0);
    rtf::readInto(stored, *document);
    document->setTextWidth(width / rtf::kTwipsPerUnit);
    return document;
}

int documentHeight(const QTextDocument& document) {
    return int(std::ceil(document.size().height() * rtf::kTwipsPerUnit));
}

}  // namespace report_engine

// make-intro OUT.bmp: paints Mixorama's intro picture (media on a dark desk lamp light).
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace {

constexpr int kWidth = 390;  // 5850 x 5200 twips at 15 twips to the pixel
constexpr int kHeight = 347;

void paintBackground(QPainter& painter) {
    QLinearGradient sky(0, 0, 0, kHeight);
    sky.setColorAt(0, QColor(24, 40, 72));
    sky.setColorAt(1, QColor(8, 12, 24));
    painter.fillRect(0, 0, kWidth, kHeight, sky);
    QRadialGradient glow(QPointF(kWidth * 0.35, kHeight * 0.4), kWidth * 0.6);
    glow.setColorAt(0, QColor(90, 130, 200, 90));
    glow.setColorAt(1, QColor(90, 130, 200, 0));
    painter.fillRect(0, 0, kWidth, kHeight, glow);
}

void paintDisc(QPainter& painter, QPointF centre, double radius) {
    QRadialGradient shine(centre - QPointF(radius / 3, radius / 3), radius * 1.4);
    shine.setColorAt(0, QColor(250, 250, 255));
    shine.setColorAt(0.45, QColor(180, 200, 230));
    shine.setColorAt(0.7, QColor(230, 190, 240));
    shine.setColorAt(1, QColor(140, 160, 200));
    painter.setPen(QPen(QColor(60, 70, 90), 1.5));
    painter.setBrush(shine);
    painter.drawEllipse(centre, radius, radius);
    painter.setBrush(QColor(20, 30, 50));
    painter.drawEllipse(centre, radius * 0.16, radius * 0.16);
    painter.setPen(QPen(QColor(255, 255, 255, 60), 1));
    painter.setBrush(Qt::NoBrush);
    for (double r = radius * 0.3; r < radius * 0.95; r += radius * 0.12) {
        painter.drawEllipse(centre, r, r);
    }
}

void paintMiniDisc(QPainter& painter, QRectF box) {
    QPainterPath shell;
    shell.addRoundedRect(box, 8, 8);
    painter.setPen(QPen(QColor(20, 20, 30), 2));
    painter.setBrush(QColor(200, 40, 60));
    painter.drawPath(shell);
    const QRectF shutter(box.left() + box.width() * 0.3, box.top(), box.width() * 0.4,
                         box.height() * 0.55);
    painter.setBrush(QColor(190, 195, 205));
    painter.drawRect(shutter);
    painter.setBrush(QColor(250, 245, 230));
    painter.drawRect(QRectF(box.left() + 10, box.bottom() - box.height() * 0.32, box.width() - 20,
                            box.height() * 0.24));
    painter.setPen(QColor(60, 60, 80));
    QFont font(QStringLiteral("DejaVu Sans"), 7, QFont::Bold);
    painter.setFont(font);
    painter.drawText(QRectF(box.left() + 10, box.bottom() - box.height() * 0.32, box.width() - 20,
                            box.height() * 0.24),
                     Qt::AlignCenter, QStringLiteral("Summer Mix '98"));
}

void paintCassette(QPainter& painter, QRectF box) {
    painter.setPen(QPen(QColor(15, 15, 20), 2));
    painter.setBrush(QColor(40, 42, 48));
    painter.drawRoundedRect(box, 6, 6);
    painter.setBrush(QColor(235, 200, 90));
    const QRectF label = box.adjusted(12, 10, -12, -box.height() * 0.35);
    painter.drawRect(label);
    painter.setBrush(QColor(30, 30, 35));
    const double y = label.center().y() + 4;
    for (double x : {label.left() + label.width() * 0.28, label.left() + label.width() * 0.72}) {
        painter.drawEllipse(QPointF(x, y), 12, 12);
    }
}

void paintTitle(QPainter& painter) {
    QFont font(QStringLiteral("DejaVu Sans"), 30, QFont::Bold);
    painter.setFont(font);
    painter.setPen(QColor(0, 0, 0, 140));
    painter.drawText(QRectF(2, kHeight - 74, kWidth, 50), Qt::AlignCenter,
                     QStringLiteral("Mixorama"));
    painter.setPen(QColor(245, 240, 225));
    painter.drawText(QRectF(0, kHeight - 76, kWidth, 50), Qt::AlignCenter,
                     QStringLiteral("Mixorama"));
    QFont small(QStringLiteral("DejaVu Sans"), 9);
    painter.setFont(small);
    painter.setPen(QColor(170, 185, 215));
    painter.drawText(QRectF(0, kHeight - 28, kWidth, 20), Qt::AlignCenter,
                     QStringLiteral("compilations for MiniDisc, cassette and CD"));
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        return 2;
    }
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackground(painter);
    paintDisc(painter, QPointF(kWidth * 0.66, kHeight * 0.36), 92);
    paintCassette(painter, QRectF(28, 120, 170, 105));
    paintMiniDisc(painter, QRectF(80, 40, 120, 110));
    paintTitle(painter);
    painter.end();
    return image.save(QString::fromLocal8Bit(argv[1]), "BMP") ? 0 : 1;
}

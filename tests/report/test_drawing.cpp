// Drawing a page model true to size, and writing it as PDF.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include <QDir>
#include <QFile>
#include <QPainter>

#include "report_engine/calibration.h"
#include "report_engine/painter.h"
#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "report_engine/text_measure.h"
#include "support/temp_dir.h"

using namespace report_engine;

namespace {

// A page drawn on a white image of the given resolution, three inches square.
QImage drawn(int dpi, const QVector<PageItem>& items) {
    QImage image(3 * dpi, 3 * dpi, QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(dpi / 0.0254));
    image.setDotsPerMeterY(qRound(dpi / 0.0254));
    image.fill(Qt::white);
    QPainter painter(&image);
    drawPage(painter, Page{items});
    return image;
}

// The box around the dark pixels, and their count.
std::pair<QRect, int> inkOf(const QImage& image) {
    QRect ink;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 64) {
                ink |= QRect(x, y, 1, 1);
                ++count;
            }
        }
    }
    return {ink, count};
}

// An inch-wide square one inch from the corner covers exactly the pixels [dpi, 2 dpi).
TEST(Drawing, TwipsLandOnTheDevicesPixelsTrueToSize) {
    for (int dpi : {300, 600, 1200}) {
        PageItem square;
        square.kind = ItemKind::Rectangle;
        square.rect = QRect(1440, 1440, 1440, 1440);
        square.fill = Qt::black;
        square.penWidth = 0;
        EXPECT_EQ(inkOf(drawn(dpi, {square})).first, QRect(dpi, dpi, dpi, dpi)) << dpi;
    }
}

// A printer that prints a page point x at shift + scale × x (on each axis) prints the test
// frame measurably off; the calibration taken from that measurement draws every point so that
// the printer puts it back where it belongs, and gives the measurement back.
TEST(Calibration, TheMeasuredFrameGivesTheCorrectionThatUndoesThePrinter) {
    constexpr double kTwipsPerMm = kTwipsPerInch / 25.4;
    const FrameMeasurement nominal = nominalTestFrame();
    const struct {
        QPointF shift;
        QPointF scale;
    } printers[] = {{{0, 0}, {1, 1}}, {{1.5, -2}, {0.99, 1.01}}, {{-3, 0.5}, {1.02, 0.98}}};
    for (const auto& printer : printers) {
        const auto printed = [&](QPointF mm) {
            return QPointF(printer.shift.x() + printer.scale.x() * mm.x(),
                           printer.shift.y() + printer.scale.y() * mm.y());
        };
        const QPointF corner = printed({nominal.leftMm, nominal.topMm});
        const FrameMeasurement measured{corner.x(), corner.y(), printer.scale.x() * nominal.widthMm,
                                        printer.scale.y() * nominal.heightMm};
        const Calibration calibration = calibrationFromMeasurement(measured);
        for (const QPointF mm : {QPointF(0, 0), QPointF(105, 148.5), QPointF(210, 297)}) {
            const QPointF drawn =
                calibrationTransform(calibration).map(mm * kTwipsPerMm) / kTwipsPerMm;
            EXPECT_NEAR(printed(drawn).x(), mm.x(), 1e-9);
            EXPECT_NEAR(printed(drawn).y(), mm.y(), 1e-9);
        }
        const FrameMeasurement back = measurementOfCalibration(calibration);
        EXPECT_NEAR(back.leftMm, measured.leftMm, 1e-9);
        EXPECT_NEAR(back.heightMm, measured.heightMm, 1e-9);
    }
    EXPECT_TRUE(calibrationFromMeasurement(nominal).isIdentity());
    const Calibration plausible[] = {{50, -50, 50, 200}, {0, 0, 99.5, 100.5}};
    const Calibration typos[] = {
        {50.5, 0, 100, 100}, {0, 0, 49, 100}, {0, 0, 100, 201}, {0, qQNaN(), 100, 100}};
    for (const Calibration& calibration : plausible) {
        EXPECT_TRUE(isPlausible(calibration)) << calibration.offsetXMm;
    }
    for (const Calibration& calibration : typos) {
        EXPECT_FALSE(isPlausible(calibration)) << calibration.scaleYPercent;
    }
}

// Spine labels whose heavy letters come first, in boxes a quarter inch wide and two inches
// tall (75 by 600 pixels from y 150): 900 reads upwards from the bottom, -900 downwards from the
// top. A line a tenth of an inch wide keeps its width.
TEST(Drawing, TurnedLabelsRunAlongTheirBoxAndLinesKeepTheirWidth) {
    QVector<PageItem> items(3);
    for (int i = 0; i < 2; ++i) {
        items[i].rect = QRect(1440 + 720 * i, 720, 360, 2880);
        items[i].text = "WWWW" + QString(".").repeated(12);
        items[i].font.pointSize = 14;
        items[i].angle = i == 0 ? 900 : -900;
    }
    items[2].kind = ItemKind::Line;
    items[2].line = QLine(2880, 720, 2880, 1440);
    items[2].penWidth = 144;
    const QImage image = drawn(300, items);
    const QImage up = image.copy(0, 0, 400, 900);
    const QImage down = image.copy(400, 0, 160, 900);
    EXPECT_TRUE(QRect(300, 150, 75, 600).contains(inkOf(up).first));
    EXPECT_TRUE(QRect(50, 150, 75, 600).contains(inkOf(down).first));
    EXPECT_GT(inkOf(up).first.height(), 4 * inkOf(up).first.width()) << "text runs along the box";
    EXPECT_GT(inkOf(up.copy(0, 450, 400, 300)).second, 3 * inkOf(up.copy(0, 150, 400, 300)).second);
    EXPECT_GT(inkOf(down.copy(0, 150, 160, 300)).second,
              3 * inkOf(down.copy(0, 450, 160, 300)).second);
    EXPECT_EQ(inkOf(image.copy(560, 0, 340, 900)).first, QRect(600 - 15 - 560, 150, 30, 150));
}

// Two A4 pages of text: more than the 4096 bytes a failing write lets through below.
PageModel twoPages() {
    PageItem text;
    text.rect = QRect(1440, 1440, 6000, 300);
    text.text = "Dancing Queen   3:52";
    return {PageSetup::a4(), {Page{{text}}, Page{{text}}}};
}

// A read-only file or folder, a missing one, or the end of the PDF failing to be written (a disk
// that fills up, here a file size limit): the export fails with the file's name and the cause,
// and a PDF written before stays as it was, never a cut-off one in its place.
TEST(PdfExport, AFailedWriteIsAnErrorAndLosesNothing) {
    const testsupport::TempDir dir;
    const QString path = dir.file("TracksByPerformer.PDF");
    QFile old(path);
    old.open(QIODevice::WriteOnly);
    old.write("earlier export");
    old.close();
    const auto failure = [](const QString& target) {
        try {
            exportPdf(twoPages(), target);
        } catch (const WriteError& error) {
            EXPECT_TRUE(error.description().contains(target)) << error.what();
            return error.reason();
        }
        return QString("written");
    };
    QFile::setPermissions(path, QFile::ReadOwner);
    EXPECT_NE(failure(path), "written");
    EXPECT_NE(failure(dir.file("missing/new.pdf")), "written");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    rlimit small = saved;
    small.rlim_cur = 4096;
    const sighandler_t handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const QString reason = failure(path);
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(reason, "File too large");
    EXPECT_EQ(testsupport::fileBytes(path), "earlier export");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList({"TracksByPerformer.PDF"}));
}

// Advance widths in font units of a 2048-unit em, as Arial (or its metric-compatible
// replacement) has them; DejaVu would measure differently. Texts
// measure in twips by the point size: 10 points are 200 twips, a line is 1.15 em.
TEST(Fonts, TheLayoutsFontsHaveTheirDesignedWidths) {
    const auto advance = [](const QString& family, const QString& text) {
        QFont font(family);
        font.setPixelSize(2048);
        font.setHintingPreference(QFont::PreferNoHinting);
        return QFontMetricsF(font).horizontalAdvance(text);
    };
    EXPECT_NEAR(advance("Arial", "ArW"), 1366 + 682 + 1933, 2);
    EXPECT_NE(advance("DejaVu Sans", "Total Playtime"), advance("Arial", "Total Playtime"));
    const QString text = "Compilations: The Songs Sorted By Performer";
    EXPECT_NEAR(textWidth({"Arial", 10}, text), advance("Arial", text) * 200 / 2048, 1);
    const int oneLine = textHeight({"Arial", 10}, text, 100000);
    EXPECT_NEAR(oneLine, 230, 10);
    EXPECT_NEAR(textHeight({"Arial", 10}, text, 2000), 3 * oneLine, 20) << "three lines in 2000";
    EXPECT_EQ(textHeight({"Arial", 10}, text, 2000, false), oneLine);
}

}  // namespace

// Drawing a page model true to size, and writing it as PDF.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

#include "report/layout.h"
#include "report/painter.h"
#include "report/pdf_export.h"
#include "report/report_error.h"
#include "report_samples.h"
#include "support/temp_dir.h"

using namespace report;
using namespace reporttest;

namespace {

QImage imageAt(int dpi, const QSize& twips) {
    QImage image(twips.width() * dpi / kTwipsPerInch, twips.height() * dpi / kTwipsPerInch,
                 QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(dpi / 0.0254));
    image.setDotsPerMeterY(qRound(dpi / 0.0254));
    image.fill(Qt::white);
    return image;
}

bool isDark(const QImage& image, int x, int y) {
    return qGray(image.pixel(x, y)) < 64;
}

// The box around the dark pixels.
QRect inkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isDark(image, x, y)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

PageItem block(const QRect& rect) {
    PageItem item;
    item.kind = ItemKind::Rectangle;
    item.rect = rect;
    item.fill = Qt::black;
    item.penWidth = 0;
    return item;
}

class Drawing : public ::testing::TestWithParam<int> {};

TEST_P(Drawing, TwipsLandOnTheDevicesPixelsTrueToSize) {
    const int dpi = GetParam();
    QImage image = imageAt(dpi, QSize(4320, 4320));  // three inches square
    EXPECT_EQ(twipsToDevice(image).map(QPointF(1440, 2880)), QPointF(dpi, 2 * dpi));
    EXPECT_DOUBLE_EQ(twipsToDevice(image, 0.5).map(QPointF(11906, 0)).x(), 11906.0 * dpi / 2880);

    // An inch-wide square one inch from the corner covers exactly the pixels [dpi, 2 dpi).
    Page page;
    page.items = {block(QRect(1440, 1440, 1440, 1440))};
    QPainter painter(&image);
    drawPage(painter, page);
    painter.end();
    EXPECT_EQ(inkOf(image), QRect(dpi, dpi, dpi, dpi));
}

INSTANTIATE_TEST_SUITE_P(Resolutions, Drawing, ::testing::Values(300, 600, 1200));

int darkPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += isDark(image, x, y);
        }
    }
    return count;
}

// A spine label whose heavy letters come first, in a box a quarter inch wide and two inches tall.
PageItem spine(int left, int angle) {
    PageItem item;
    item.kind = ItemKind::Text;
    item.rect = QRect(left, 720, 360, 2880);
    item.text = "WWWW" + QString(".").repeated(12);
    item.font.pointSize = 14;
    item.angle = angle;
    return item;
}

TEST(DrawingItems, TurnedLabelsRunAlongTheirBoxAndLinesKeepTheirWidth) {
    QImage image = imageAt(300, QSize(4320, 4320));
    PageItem rule;
    rule.kind = ItemKind::Line;
    rule.line = QLine(2880, 720, 2880, 1440);
    rule.penWidth = 144;  // a tenth of an inch
    Page page;
    page.items = {spine(1440, 900), spine(2160, -900), rule};
    QPainter painter(&image);
    drawPage(painter, page);
    painter.end();

    // The boxes are 75 pixels wide and 600 tall, from y 150 to 750.
    const QImage up = image.copy(0, 0, 400, image.height());
    const QImage down = image.copy(400, 0, 160, image.height());
    for (const QImage& label : {up, down}) {
        const QRect text = inkOf(label);
        ASSERT_TRUE(text.isValid());
        EXPECT_GT(text.height(), 4 * text.width()) << "text runs along the box";
        EXPECT_GE(text.top(), 150);
        EXPECT_LE(text.bottom(), 750);
    }
    EXPECT_TRUE(QRect(300, 150, 75, 600).contains(inkOf(up)));
    EXPECT_TRUE(QRect(50, 150, 75, 600).contains(inkOf(down)));
    // 900 reads upwards: the text starts at the bottom; -900 reads downwards from the top.
    EXPECT_GT(darkPixels(up.copy(0, 450, 400, 300)), 3 * darkPixels(up.copy(0, 150, 400, 300)));
    EXPECT_GT(darkPixels(down.copy(0, 150, 160, 300)), 3 * darkPixels(down.copy(0, 450, 160, 300)));

    const QRect line = inkOf(image.copy(560, 0, image.width() - 560, image.height()));
    EXPECT_EQ(line, QRect(600 - 15 - 560, 150, 30, 150));
}

PageModel twoPageList(const PageSetup& setup) {
    ReportDefinition definition;
    definition.page = setup;
    definition.pageHeader =
        section("PageHeader", 600, {label("lblTitle", QRect(0, 0, 6000, 400), "All Tracks")});
    definition.detail =
        section("Detail", 5000, {textBox("fldTitle", QRect(0, 0, 6000, 300), "Title")});
    definition.pageFooter = pageNumberFooter(400);
    return layoutReport(
        definition,
        table({"Title"}, {{"Dancing Queen   3:52"}, {"Waterloo   2:42"}, {"Yesterday   2:05"}}));
}

TEST(PdfExport, PagesHaveThePaperSizeAndTheirTextCanBeFound) {
    const testsupport::TempDir dir;
    // The PDF gives sizes in whole points.
    const struct {
        PageSetup setup;
        QSizeF points;
        QString name;
    } papers[] = {{PageSetup::a4(), {595, 842}, "A4"}, {PageSetup::letter(), {612, 792}, "letter"}};
    for (const auto& paper : papers) {
        const QString path = dir.file("list.pdf");
        const PageModel model = twoPageList(paper.setup);
        ASSERT_EQ(model.pages.size(), 2);
        exportPdf(model, path, "All Tracks");
        const auto [size, name] = pdfPageSize(path);
        EXPECT_EQ(size, paper.points);
        EXPECT_EQ(name, paper.name);
        const QString text = runProgram("pdftotext", {path, "-"});
        for (const char* expected :
             {"All Tracks", "Dancing Queen", "3:52", "Yesterday", "Page 1 of", "Page 2 of"}) {
            EXPECT_TRUE(text.contains(expected)) << expected << " in\n" << text.toStdString();
        }
        EXPECT_EQ(text.count("All Tracks"), 2);
    }
}

TEST(PdfExport, LandscapePaperTurnsThePage) {
    const testsupport::TempDir dir;
    PageSetup setup = PageSetup::a4();
    setup.orientation = QPageLayout::Landscape;
    exportPdf(twoPageList(setup), dir.file("wide.pdf"));
    EXPECT_EQ(pdfPageSize(dir.file("wide.pdf")).first, QSizeF(842, 595));
}

// A PDF written before, which a failed export must leave as it was.
QString earlierExport(const testsupport::TempDir& dir) {
    const QString path = dir.file("TracksByPerformer.PDF");
    QFile old(path);
    old.open(QIODevice::WriteOnly);
    old.write("earlier export");
    old.close();
    EXPECT_EQ(testsupport::fileBytes(path), "earlier export");
    return path;
}

TEST(PdfExport, AReadOnlyFileOrFolderIsAnErrorAndLosesNothing) {
    const testsupport::TempDir dir;
    const PageModel model = twoPageList(PageSetup::a4());
    const QString path = earlierExport(dir);
    const auto expectRefused = [&](const QString& target) {
        try {
            exportPdf(model, target);
            ADD_FAILURE() << "written: " << target.toStdString();
        } catch (const WriteError& error) {
            EXPECT_TRUE(error.description().contains(target)) << error.what();
        }
    };
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup);
    expectRefused(path);
    EXPECT_EQ(testsupport::fileBytes(path), "earlier export");

    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    expectRefused(path);
    expectRefused(dir.file("new.pdf"));
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(testsupport::fileBytes(path), "earlier export");
    EXPECT_FALSE(QFile::exists(dir.file("new.pdf")));
    expectRefused(dir.file("missing/new.pdf"));

    exportPdf(model, path);  // writable again
    EXPECT_TRUE(testsupport::fileBytes(path).startsWith("%PDF"));
}

// The end of a PDF fails to be written (a disk that fills up, here a file size limit): the
// export fails with the cause, and the earlier file stays, never a cut-off one in its place.
TEST(PdfExport, AWriteThatFailsAtTheEndIsAnErrorAndLosesNothing) {
    const testsupport::TempDir dir;
    const PageModel model = twoPageList(PageSetup::a4());
    const QString path = earlierExport(dir);
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    rlimit small = saved;
    small.rlim_cur = 4096;
    const sighandler_t handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    QString reason;
    try {
        exportPdf(model, path);
    } catch (const WriteError& error) {
        reason = error.reason();
    }
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(reason, "File too large");
    EXPECT_EQ(testsupport::fileBytes(path), "earlier export");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList({"TracksByPerformer.PDF"}));
}

}  // namespace

// The covers on the page model and as PDF: the CD-ROM inlay (frame, spines, the text centred
// between them) and the MD strip with its track list and the cover text beside it.
#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include "engine/workspace.h"
#include "report_engine/calibration.h"
#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "report_samples.h"
#include "reports/calibration_page.h"
#include "reports/cover_body.h"
#include "reports/cover_report.h"
#include "reports/cover_source.h"
#include "rtf/rtf.h"
#include "support/databases.h"
#include "support/pdf_pages.h"
#include "support/samples.h"
#include "support/temp_dir.h"

using namespace reporttest;
using report_engine::PageItem;
using report_engine::PageModel;
using testsupport::SampleTrack;

namespace {

const QString kBody = "RichEditCoverShort";

// Compilations "Road Songs", "Road Songs 2", ... of a format, a cover text and tracks (their
// times make SumTime), and their covers.
class CoverDatabase {
  public:
    CoverDatabase() {
        testsupport::createCompilationDatabase(path_);
        database = engine::Workspace::defaultWorkspace().openDatabase(path_);
    }
    PageModel cover(const QString& format, const QString& memo,
                    const QList<SampleTrack>& tracks = {}) {
        const QString name = count_++ ? QString("Road Songs %1").arg(count_) : "Road Songs";
        return reports::buildCover(
            database,
            testsupport::addSample(
                path_, {.name = name, .format = format, .coverMemo = memo, .tracks = tracks}));
    }
    testsupport::TempDir dir;
    engine::Database database;

  private:
    const QString path_ = dir.file("covers.mdb");
    int count_ = 0;
};

// A cover text as the editor stores it: RTF, lines in the font, each line's first word (its
// performer) bold, and the line break after the last line that composed texts end with.
QString composedRtf(const QStringList& lines, const QString& family = "Arial", int points = 10) {
    QString text = QString("{\\rtf1{\\fonttbl{\\f0 %1;}}\\f0\\fs%2 ").arg(family).arg(2 * points);
    for (const QString& line : lines) {
        const QString performer = line.section(' ', 0, 0);
        text += "{\\b " + performer + "}" + line.mid(performer.size()) + "\\par ";
    }
    return text.replace("\t", "\\tab ") + "\\par}";
}

// "Performer1   Song number 1", ...
QStringList numberedLines(int count) {
    QStringList lines;
    for (int i = 1; i <= count; ++i) {
        lines << QString("Performer%1   Song number %1").arg(i);
    }
    return lines;
}

// The one item of a control on the only page (fails the test otherwise).
PageItem onlyNamed(const PageModel& model, const QString& name) {
    EXPECT_EQ(model.pages.size(), 1);
    EXPECT_EQ(itemsNamed(model.pages.value(0), name).size(), 1) << name.toStdString();
    return itemsNamed(model.pages.value(0), name).value(0);
}

// What a cover drew on the page itself (frame, folds, rules), in drawing order.
QVector<PageItem> drawings(const PageModel& model) {
    QVector<PageItem> found = model.pages.value(0).items;
    found.removeIf([](const PageItem& item) { return !item.name.isEmpty(); });
    return found;
}

// The middle of the four written lines, not of all five, sits on the inlay's middle; the title
// is above and the time below the text, in its width. A text too long for them drops both. The
// spines carry the name turned, in the body's font bold at 10 points; the title is 14, the time
// 10 points but never under 6, the title never under 9. The frame of 150 by 118 mm (1440 twips
// to 25.4 mm) stands where it is wherever the text is.
TEST(CdromCover, TheFrameStaysAndTheTextIsCentredBetweenTitleTimeAndSpines) {
    CoverDatabase db;
    const PageModel cover =
        db.cover("CD-ROM", composedRtf(numberedLines(4), "Courier New", 12), {{.seconds = 4445}});
    const PageItem body = onlyNamed(cover, kBody);
    const int lineHeight = body.rect.height() / 5;
    EXPECT_GT(lineHeight, 150);
    EXPECT_NEAR(body.rect.top() + (body.rect.height() - lineHeight) / 2.0, 1240 + 6690 / 2, 1);
    const PageItem title = onlyNamed(cover, "fldTitle");
    const PageItem time = onlyNamed(cover, "fldTime");
    EXPECT_EQ(QStringList({title.text, time.text}),
              QStringList({"Road Songs", "Total Playtime 1:14:05"}));
    EXPECT_EQ(title.rect.bottom() + 1 + 200, body.rect.top());
    EXPECT_EQ(time.rect.top(), body.rect.bottom() + 1 - time.rect.height() + 200);
    EXPECT_EQ(QList({title.rect.left(), title.rect.width(), time.rect.left()}),
              QList({body.rect.left(), body.rect.width(), body.rect.left()}));
    EXPECT_EQ(
        QList({title.font, time.font}),
        QList<report_engine::ReportFont>({{"Courier New", 14, true}, {"Courier New", 10, false}}));
    const PageItem left = onlyNamed(cover, "lblSplineL");
    const PageItem right = onlyNamed(cover, "lblSplineR");
    EXPECT_EQ(QStringList({left.text, right.text}), QStringList({"Road Songs", "Road Songs"}));
    EXPECT_EQ(QList({left.angle, right.angle}), QList({900, -900}));
    EXPECT_EQ(QList({left.font, right.font}),
              QList<report_engine::ReportFont>(2, {"Courier New", 10, true}));
    EXPECT_EQ(QList({left.rect, right.rect}),
              QList({QRect(1530, 1325, 300, 6520), QRect(9676, 1325, 300, 6520)}));
    const PageModel small = db.cover("CD-ROM", composedRtf(numberedLines(3), "Arial", 7));
    EXPECT_EQ(onlyNamed(small, "fldTime").font.pointSize, 6);
    EXPECT_EQ(onlyNamed(small, "fldTitle").font.pointSize, 9);
    const PageModel full = db.cover("CD-ROM", composedRtf(numberedLines(44)));
    EXPECT_EQ(
        textsNamed(full.pages.value(0), "fldTitle") + textsNamed(full.pages.value(0), "fldTime"),
        QStringList());
    onlyNamed(full, kBody);
    for (const PageModel& each : {cover, small, full, db.cover("CD-ROM", QString())}) {
        EXPECT_EQ(drawings(each).value(0).rect, QRect(1500, 1240, 8505, 6690));
    }
}

// The body fits its widest line and keeps its centre; a wider line, or a track list with its
// tab stop, takes the body's designed width.
TEST(CdromCover, TheBodyFitsItsWidestLineUnlessItHasTabs) {
    CoverDatabase db;
    const QString memo = composedRtf({"Adams / Baker / Carter"});
    const PageItem body = onlyNamed(db.cover("CD-ROM", memo), kBody);
    EXPECT_EQ(body.rect.width(), reports::bodyFacts(memo).widestLine + 300);
    EXPECT_NEAR(body.rect.left() + body.rect.width() / 2.0, (1840 + 9665) / 2, 1);
    EXPECT_EQ(body.document->begin().layout()->lineCount(), 1);
    for (const QString& line :
         {QString("Adams / Baker ").repeated(20), QString("1.\tAdams   Morning")}) {
        EXPECT_EQ(onlyNamed(db.cover("CD-ROM", composedRtf({line})), kBody).rect.width(), 7400);
    }
}

// The composer stores plain text: it prints in the body's design font, a track list with the
// hanging indent and tab stop the editor gives it.
TEST(CdromCover, APlainCoverTextPrintsInTheBodysDesignFont) {
    CoverDatabase db;
    const PageModel cover = db.cover("CD-ROM", "1.\tAdams   Morning  [2:45]\r\n2.\tBaker\n");
    EXPECT_EQ(onlyNamed(cover, "lblSplineL").font.family, "Times New Roman");
    const QTextBlockFormat list = onlyNamed(cover, kBody).document->begin().blockFormat();
    EXPECT_EQ(
        QList({list.leftMargin(), list.textIndent(), list.tabPositions().value(0).position}),
        QList({400 / rtf::kTwipsPerUnit, -400 / rtf::kTwipsPerUnit, 400 / rtf::kTwipsPerUnit}));
}

// Of each run of tracks by one performer only the last row names it, a row without performer
// taking one line; the list starts under the title and its rule. The strip has fold marks at its
// folds; beside it the cover text stands centred in its band under the name, in a label of its
// own, and the disc's edge label below.
TEST(MdCover, TheStripItsTrackListAndTheLabelsBesideIt) {
    CoverDatabase db;
    const PageModel cover = db.cover("Md", composedRtf({"Adams / Baker"}, "Arial", 9),
                                     {{.performer = "Adams", .title = "Song 1"},
                                      {.performer = "Adams", .title = "Song 2"},
                                      {.performer = "Adams", .title = "Song 3"},
                                      {.performer = "Baker", .title = "Song 4"}});
    const report_engine::Page page = cover.pages.value(0);
    EXPECT_EQ(textsNamed(page, "fldTrack"), QStringList({"Song 1", "Song 2", "Song 3", "Song 4"}));
    EXPECT_EQ(textsNamed(page, "fldtrackno"), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(textsNamed(page, "fldArtist"), QStringList({"Adams", "Baker"}));
    const QVector<PageItem> titles = itemsNamed(page, "fldTrack");
    const QVector<PageItem> performers = itemsNamed(page, "fldArtist");
    EXPECT_GE(performers[0].rect.top(), titles[2].rect.bottom());
    EXPECT_LE(performers[0].rect.bottom(), titles[3].rect.top());
    EXPECT_EQ(titles[1].rect.top() - titles[0].rect.top(), titles[0].rect.height());
    const QVector<PageItem> drawn = drawings(cover);
    ASSERT_EQ(drawn.size(), 1 + 6 + 1 + 2);
    EXPECT_EQ(drawn[0].rect, QRect(1200, 800, 2552, 14402));
    for (int i = 1; i <= 6; ++i) {
        const int y = QList({4486, 8115, 11687})[(i - 1) / 2];
        EXPECT_EQ(drawn[i].line, i % 2 ? QLine(1150, y, 1250, y) : QLine(3700, y, 3800, y));
    }
    const QRect title = onlyNamed(cover, "fldTitle").rect;
    EXPECT_EQ(title.top(), 700 + 185);
    EXPECT_EQ(drawn[7].line, QLine(1200, title.bottom() + 86, 3752, title.bottom() + 86));
    EXPECT_EQ(titles[0].rect.top(), title.bottom() + 1 + 200);
    const PageItem body = onlyNamed(cover, kBody);
    EXPECT_NEAR(body.rect.top() + body.rect.height() / 2.0, 700 + 185 + 2700 / 2, 1);
    const PageItem name = onlyNamed(cover, "fldTitle2");
    EXPECT_EQ(name.font, (report_engine::ReportFont{"Arial", 11, true}));
    EXPECT_EQ(name.rect.bottom() + 1 + 50, body.rect.top());
    const QRect label = drawn[8].rect;
    EXPECT_EQ(label, QRect(body.rect.left() - 120, 700 + 185, 2552 + 240, 2700));
    EXPECT_EQ(drawn[9].rect, onlyNamed(cover, "lblTitle").rect);
    EXPECT_EQ(drawn[9].rect, QRect(label.left(), label.bottom() + 1 + 400, label.width(), 340));
}

// Measured on the rendered page: the inlay across above the text (frame, fold, fold, frame) and
// down beside it; the strip across under its text and down by its left edge (top, rule, bottom).
// True to size, and through a printer's calibration: each line moved by the offset and every
// distance scaled, frame by frame.
TEST(CoverPdf, TheCoversMeasureTheirMillimetres) {
    CoverDatabase db;
    const PageModel inlay = db.cover("CD-ROM", composedRtf(numberedLines(4)));
    const PageModel strip = db.cover("MD", composedRtf({"Adams / Baker"}),
                                     {{.performer = "Adams"}, {.performer = "Baker"}});
    for (const report_engine::Calibration& calibration :
         {report_engine::Calibration{}, report_engine::Calibration{1.5, -1, 99, 101}}) {
        SCOPED_TRACE(calibration.offsetXMm);
        const double sx = calibration.scaleXPercent / 100;
        const double sy = calibration.scaleYPercent / 100;
        // The row (or column) where a page position lands on the paper, measured across it.
        const auto runs = [&](const PageModel& cover, int twips, Qt::Orientation along) {
            report_engine::exportPdf(cover, db.dir.file("cover.pdf"), {}, calibration);
            const bool row = along == Qt::Horizontal;
            const double landsAt = row ? calibration.offsetYMm * 1440 / 25.4 + sy * twips
                                       : calibration.offsetXMm * 1440 / 25.4 + sx * twips;
            QVector<double> mm =
                testsupport::darkRuns(testsupport::renderedPdfPage(db.dir.file("cover.pdf")),
                                      testsupport::renderedPixelOf(qRound(landsAt)), along);
            for (double& at : mm) {
                at = std::round(at * testsupport::kMmPerRenderedPixel * 5) / 5;  // to 0.2 mm
            }
            return mm;
        };
        const QVector<double> across = runs(inlay, 1240 + 200, Qt::Horizontal);
        ASSERT_EQ(across.size(), 4);
        EXPECT_NEAR(across[0], calibration.offsetXMm + sx * 1500 * 25.4 / 1440, 0.2);
        EXPECT_NEAR(across[3] - across[0], 150.0 * sx, 0.3);
        EXPECT_NEAR(across[1] - across[0], 6.0 * sx, 0.3);
        EXPECT_NEAR(across[3] - across[2], 6.0 * sx, 0.3);
        const QVector<double> down = runs(inlay, 1840 + 100, Qt::Vertical);
        ASSERT_EQ(down.size(), 2);
        EXPECT_NEAR(down[0], calibration.offsetYMm + sy * 1240 * 25.4 / 1440, 0.2);
        EXPECT_NEAR(down[1] - down[0], 118.0 * sy, 0.3);
        const QVector<double> stripAcross = runs(strip, 6000, Qt::Horizontal);
        ASSERT_EQ(stripAcross.size(), 2);
        EXPECT_NEAR(stripAcross[1] - stripAcross[0], 45.0 * sx, 0.3);
        const QVector<double> stripDown = runs(strip, 1200 + 80, Qt::Vertical);
        ASSERT_EQ(stripDown.size(), 3);
        EXPECT_NEAR(stripDown[2] - stripDown[0], 254.0 * sy, 0.3);
    }
}

// The outline keeps the frames and fold lines where they are and drops every text.
TEST(CoverPdf, TheOutlineIsTheFramesAlone) {
    CoverDatabase db;
    const PageModel strip = db.cover("MD", composedRtf({"Adams"}), {{.performer = "Adams"}});
    const QVector<PageItem> kept = reports::coverOutline(strip).pages.value(0).items;
    const QVector<PageItem> frames = drawings(strip);
    ASSERT_EQ(kept.size(), frames.size());
    for (qsizetype i = 0; i < kept.size(); ++i) {
        EXPECT_EQ(std::pair(kept[i].rect, kept[i].line), std::pair(frames[i].rect, frames[i].line));
    }
}

// The test page's frame is where the calibration takes it to be: across a row below the text
// and down a column right of it, between the millimetre ticks.
TEST(CalibrationPage, TheFrameMeasuresAsTheCalibrationExpects) {
    testsupport::TempDir dir;
    report_engine::exportPdf(reports::calibrationTestPage(), dir.file("test-page.pdf"));
    const QImage page = testsupport::renderedPdfPage(dir.file("test-page.pdf"));
    const auto linesAt = [&](double mm, Qt::Orientation along) {
        QVector<double> found =
            testsupport::darkRuns(page, qRound(mm / testsupport::kMmPerRenderedPixel), along);
        for (double& at : found) {
            at = std::round(at * testsupport::kMmPerRenderedPixel * 5) / 5;
        }
        return found;
    };
    const report_engine::FrameMeasurement frame = report_engine::nominalTestFrame();
    const QVector<double> across = linesAt(195.5, Qt::Horizontal);
    ASSERT_EQ(across.size(), 2);
    EXPECT_NEAR(across[0], frame.leftMm, 0.2);
    EXPECT_NEAR(across[1] - across[0], frame.widthMm, 0.2);
    const QVector<double> down = linesAt(frame.leftMm + frame.widthMm - 4.5, Qt::Vertical);
    ASSERT_EQ(down.size(), 2);
    EXPECT_NEAR(down[0], frame.topMm, 0.2);
    EXPECT_NEAR(down[1] - down[0], frame.heightMm, 0.2);
}

// Formats in any letter case; the format is checked before the tracks.
TEST(CoverChoice, OnlyMdAndCdRomHaveACover) {
    EXPECT_EQ(reports::coverRefusal("CD", 12), reports::noCoverMessage("CD"));
    EXPECT_EQ(reports::coverRefusal("md", 0), reports::kNoTracksOnCompilation);
    EXPECT_EQ(reports::coverRefusal("cd-Rom", 1), std::nullopt);
    CoverDatabase db;
    EXPECT_THROW(db.cover("Cassette", "Adams"), report_engine::ReportError);
    EXPECT_THROW(reports::buildCover(db.database, 99), report_engine::ReportError);
    EXPECT_EQ(reports::playtimeText(360000), "100:00:00");
}

}  // namespace

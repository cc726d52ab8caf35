// The covers on the page model and as PDF: the CD-ROM inlay (frame, spines, the text centred
// between them) and the MD strip with its track list and the cover text beside it.
#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "report_engine/text_measure.h"
#include "report_samples.h"
#include "reports/cover_body.h"
#include "reports/cover_source.h"
#include "rtf/rtf.h"
#include "support/pdf_pages.h"

using namespace reporttest;
using report_engine::PageItem;

namespace {

const QString kBody = "RichEditCoverShort";

// The middle of the four written lines, not of all five, sits on the inlay's middle; the title
// is above and the time below the text, in its width. A text too long for them drops both. The
// spines carry the name turned, in the body's font bold at 10 points; the title is 14, the time
// 10 points but never under 6, the title never under 9.
TEST(CdromCover, TheTextIsCentredBetweenTitleAndTimeAndSpinesInTheBodysFont) {
    CoverDatabase db;
    const report_engine::PageModel cover =
        db.coverOf("CD-ROM", composedRtf(numberedLines(4), "Courier New", 12), 4445);
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
    EXPECT_EQ(title.rect.height(),
              report_engine::textHeight(title.font, title.text, title.rect.width()));
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
    const report_engine::PageModel small =
        db.coverOf("CD-ROM", composedRtf(numberedLines(3), "Arial", 7));
    EXPECT_EQ(onlyNamed(small, "fldTime").font.pointSize, 6);
    EXPECT_EQ(onlyNamed(small, "fldTitle").font.pointSize, 9);
    const report_engine::PageModel full = db.coverOf("CD-ROM", composedRtf(numberedLines(44)));
    EXPECT_EQ(
        textsNamed(full.pages.value(0), "fldTitle") + textsNamed(full.pages.value(0), "fldTime"),
        QStringList());
    onlyNamed(full, kBody);
}

// 150 by 118 mm with 6 mm spines (1440 twips to 25.4 mm), wherever the text is.
TEST(CdromCover, TheFrameAndFoldsStandWhereverTheTextIs) {
    CoverDatabase db;
    for (const QString& memo :
         {composedRtf({"Adams"}), composedRtf(numberedLines(40), "Courier New", 14), QString()}) {
        const QVector<PageItem> frame = drawings(db.coverOf("CD-ROM", memo));
        ASSERT_EQ(frame.size(), 3);
        EXPECT_EQ(frame[0].rect, QRect(1500, 1240, 8505, 6690));
        EXPECT_EQ(frame[1].line, QLine(1840, 1240, 1840, 7930));
        EXPECT_EQ(frame[2].line, QLine(9665, 1240, 9665, 7930));
    }
}

// The body fits its widest line and keeps its centre; a wider line, or a track list with its
// tab stop, takes the body's designed width.
TEST(CdromCover, TheBodyFitsItsWidestLineUnlessItHasTabs) {
    CoverDatabase db;
    const QString memo = composedRtf({"Adams / Baker / Carter"});
    const PageItem body = onlyNamed(db.coverOf("CD-ROM", memo), kBody);
    EXPECT_EQ(body.rect.width(), reports::bodyFacts(memo).widestLine + 300);
    EXPECT_NEAR(body.rect.left() + body.rect.width() / 2.0, (1840 + 9665) / 2, 1);
    EXPECT_EQ(body.document->begin().layout()->lineCount(), 1);
    for (const QString& line :
         {QString("Adams / Baker ").repeated(20), QString("1.\tAdams   Morning")}) {
        EXPECT_EQ(onlyNamed(db.coverOf("CD-ROM", composedRtf({line})), kBody).rect.width(), 7400);
    }
}

// The composer stores plain text: it prints in the body's design font, a track list with the
// hanging indent and tab stop the editor gives it.
TEST(CdromCover, APlainCoverTextPrintsInTheBodysDesignFont) {
    CoverDatabase db;
    const QString plain = "1.\tAdams   Morning  [2:45]\r\n2.\tBaker   Night Train\n";
    const report_engine::PageModel cover = db.coverOf("CD-ROM", plain);
    EXPECT_EQ(onlyNamed(cover, "lblSplineL").font.family, "Times New Roman");
    const auto document = onlyNamed(cover, kBody).document;
    EXPECT_EQ(document->toPlainText(), "1.\tAdams   Morning  [2:45]\n2.\tBaker   Night Train\n");
    const QTextBlockFormat list = document->begin().blockFormat();
    EXPECT_EQ(
        QList({list.leftMargin(), list.textIndent(), list.tabPositions().value(0).position}),
        QList({400 / rtf::kTwipsPerUnit, -400 / rtf::kTwipsPerUnit, 400 / rtf::kTwipsPerUnit}));
}

// Of each run of tracks by one performer only the last row names it; a row without performer
// takes one line.
TEST(MdCover, ARunOfTracksByOnePerformerNamesItOnItsLastRowOnly) {
    CoverDatabase db;
    const report_engine::Page page =
        db.cover(db.addCompilation("Md", composedRtf({"Adams"}), 600,
                                   {"Adams", "Adams", "Adams", "Baker"}))
            .pages.value(0);
    EXPECT_EQ(textsNamed(page, "fldTrack"), QStringList({"Song 1", "Song 2", "Song 3", "Song 4"}));
    EXPECT_EQ(textsNamed(page, "fldtrackno"), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(textsNamed(page, "fldArtist"), QStringList({"Adams", "Baker"}));
    const QVector<PageItem> titles = itemsNamed(page, "fldTrack");
    const QVector<PageItem> performers = itemsNamed(page, "fldArtist");
    EXPECT_GE(performers[0].rect.top(), titles[2].rect.bottom());
    EXPECT_LE(performers[0].rect.bottom(), titles[3].rect.top());
    EXPECT_EQ(titles[1].rect.top() - titles[0].rect.top(), titles[0].rect.height());
    EXPECT_EQ(reports::runLastPerformers({{1, "A"}, {2, "A"}, {3, "B"}, {4, "a"}}).mid(0, 6),
              QVector<QString>({"", "", "A", "B", "a", ""}));
}

// The strip, its fold marks, the title and the rule under it; beside it the cover text centred
// in its band under the name, in a label of its own, and the disc's edge label below.
TEST(MdCover, TheStripAndTheLabelsStandInTheirPlaces) {
    CoverDatabase db;
    const report_engine::PageModel cover = db.cover(
        db.addCompilation("MD", composedRtf({"Adams / Baker"}, "Arial", 9), 600, {"Adams"}));
    const QVector<PageItem> drawn = drawings(cover);
    ASSERT_EQ(drawn.size(), 1 + 6 + 1 + 2);
    EXPECT_EQ(drawn[0].rect, QRect(1200, 800, 2552, 14402));
    for (int i = 1; i <= 6; ++i) {
        const int y = QList({4486, 8115, 11687})[(i - 1) / 2];
        EXPECT_EQ(drawn[i].line, i % 2 ? QLine(1150, y, 1250, y) : QLine(3700, y, 3800, y));
    }
    const PageItem title = onlyNamed(cover, "fldTitle");
    EXPECT_EQ(title.rect.top(), 700 + 185);
    EXPECT_EQ(drawn[7].line,
              QLine(1200, title.rect.height() + 970, 3752, title.rect.height() + 970));
    EXPECT_EQ(topsOf(cover.pages[0], "fldTrack")[0], title.rect.bottom() + 1 + 200);
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
TEST(CoverPdf, TheCoversMeasureTheirMillimetres) {
    CoverDatabase db;
    const auto runs = [&](qint64 id, int twips, Qt::Orientation along) {
        report_engine::exportPdf(db.cover(id), db.dir.file("cover.pdf"));
        QVector<double> mm =
            testsupport::darkRuns(testsupport::renderedPdfPage(db.dir.file("cover.pdf")),
                                  testsupport::renderedPixelOf(twips), along);
        for (double& at : mm) {
            at = std::round(at * testsupport::kMmPerRenderedPixel * 5) / 5;  // to 0.2 mm
        }
        return mm;
    };
    const qint64 inlay = db.addCompilation("CD-ROM", composedRtf(numberedLines(4)));
    const QVector<double> across = runs(inlay, 1240 + 200, Qt::Horizontal);
    ASSERT_EQ(across.size(), 4);
    EXPECT_NEAR(across[0], 1500 * 25.4 / 1440, 0.2);
    EXPECT_NEAR(across[3] - across[0], 150.0, 0.3);
    EXPECT_NEAR(across[1] - across[0], 6.0, 0.3);
    EXPECT_NEAR(across[3] - across[2], 6.0, 0.3);
    const QVector<double> down = runs(inlay, 1840 + 100, Qt::Vertical);
    ASSERT_EQ(down.size(), 2);
    EXPECT_NEAR(down[1] - down[0], 118.0, 0.3);
    const qint64 strip =
        db.addCompilation("MD", composedRtf({"Adams / Baker"}), 600, {"Adams", "Baker"});
    const QVector<double> stripAcross = runs(strip, 6000, Qt::Horizontal);
    ASSERT_EQ(stripAcross.size(), 2);
    EXPECT_NEAR(stripAcross[1] - stripAcross[0], 45.0, 0.3);
    const QVector<double> stripDown = runs(strip, 1200 + 80, Qt::Vertical);
    ASSERT_EQ(stripDown.size(), 3);
    EXPECT_NEAR(stripDown[2] - stripDown[0], 254.0, 0.3);
}

// Formats in any letter case; the format is checked before the tracks.
TEST(CoverChoice, OnlyMdAndCdRomHaveACover) {
    EXPECT_EQ(reports::coverRefusal("CD", 12), reports::noCoverMessage("CD"));
    EXPECT_EQ(reports::coverRefusal("md", 0), reports::kNoTracksOnCompilation);
    EXPECT_EQ(reports::coverRefusal("cd-Rom", 1), std::nullopt);
    CoverDatabase db;
    EXPECT_THROW(db.coverOf("Cassette", "Adams"), report_engine::ReportError);
    EXPECT_THROW(db.cover(99), report_engine::ReportError);
    EXPECT_EQ(reports::playtimeText(360000), "100:00:00");
}

}  // namespace

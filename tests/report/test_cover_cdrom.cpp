// The CD-ROM inlay on the page model: the frame, the spines and the text centred between them.
#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include "cover_fixture.h"
#include "report/report_error.h"
#include "report/text_measure.h"
#include "reports/cover_body.h"
#include "reports/cover_cdrom.h"
#include "rtf/rtf.h"

using namespace covertest;
using report::ItemKind;
using report::PageItem;

namespace {

// The inlay's middle on the paper: the frame's vertical centre.
constexpr int kInlayMiddle = 1240 + 6690 / 2;
constexpr int kInlayCentreX = (1840 + 9665) / 2;

class CdromCover : public ::testing::Test {
  protected:
    // Names are unique: the second cover of a test is "Road Songs 2".
    report::PageModel coverOf(const QString& coverMemo, qint64 sumTime = 600) {
        const QString name = QStringLiteral("Road Songs") +
                             (++covers > 1 ? QStringLiteral(" %1").arg(covers) : QString());
        return db.cover(db.addCompilation(name, QStringLiteral("CD-ROM"), coverMemo, sumTime));
    }
    CoverDatabase db;
    int covers = 0;
};

TEST_F(CdromCover, FiveComposedLinesAreCentredByTheirFourVisibleLines) {
    const QString memo = composedRtf(numberedLines(4));
    EXPECT_EQ(reports::bodyFacts(memo).lineCount, 5);
    const PageItem body = onlyNamed(coverOf(memo), QStringLiteral("RichEditCoverShort"));
    ASSERT_EQ(body.kind, ItemKind::RichText);
    const int lineHeight = body.rect.height() / 5;
    EXPECT_GT(lineHeight, 150);
    // The middle of the four written lines, not of all five, sits on the inlay's middle.
    EXPECT_NEAR(body.rect.top() + (body.rect.height() - lineHeight) / 2.0, kInlayMiddle, 1);
    EXPECT_EQ(body.document->toPlainText().trimmed().count(u'\n'), 3);
}

TEST_F(CdromCover, TitleAboveAndTimeBelowTheText) {
    const report::PageModel cover = coverOf(composedRtf(numberedLines(4)), 4445);
    const PageItem body = onlyNamed(cover, QStringLiteral("RichEditCoverShort"));
    const PageItem title = onlyNamed(cover, QStringLiteral("fldTitle"));
    const PageItem time = onlyNamed(cover, QStringLiteral("fldTime"));
    EXPECT_EQ(title.text, "Road Songs");
    EXPECT_EQ(time.text, "Total Playtime 1:14:05");
    EXPECT_EQ(title.rect.top() + title.rect.height() + 200, body.rect.top());
    EXPECT_EQ(time.rect.top(), body.rect.top() + body.rect.height() - time.rect.height() + 200);
    EXPECT_EQ(title.rect.height(), report::textHeight(title.font, title.text, title.rect.width()));
    // Title and time share the body's width and centre.
    EXPECT_EQ(title.rect.left(), body.rect.left());
    EXPECT_EQ(title.rect.width(), body.rect.width());
    EXPECT_EQ(time.rect.left(), body.rect.left());
}

TEST_F(CdromCover, ALongTextPrintsWithoutTitleAndTime) {
    // The longest text that keeps its title; one line more drops title and time.
    int kept = 0;
    int titleTop = 0;
    for (int lines = 10; lines < 45; ++lines) {
        const report::PageModel cover = coverOf(composedRtf(numberedLines(lines)));
        if (!hasNamed(cover, QStringLiteral("fldTitle"))) {
            EXPECT_FALSE(hasNamed(cover, QStringLiteral("fldTime")));
            EXPECT_TRUE(hasNamed(cover, QStringLiteral("RichEditCoverShort")));
            break;
        }
        EXPECT_TRUE(hasNamed(cover, QStringLiteral("fldTime")));
        kept = lines;
        titleTop = onlyNamed(cover, QStringLiteral("fldTitle")).rect.top();
    }
    ASSERT_GT(kept, 10);
    ASSERT_LT(kept, 44);
    // Section tops count from the top margin (1040 twips).
    EXPECT_GE(titleTop - 1040, 300);
    const int lineHeight =
        onlyNamed(coverOf(composedRtf(numberedLines(kept))), QStringLiteral("RichEditCoverShort"))
            .rect.height() /
        (kept + 1);
    // A line more moves the text up by half a line, and the title's top under 300 twips.
    EXPECT_LT(titleTop - 1040 - (lineHeight + 1) / 2, 300);
}

TEST_F(CdromCover, TheFrameAndFoldsStandWhereverTheTextIs) {
    const QVector<PageItem> frames[] = {
        drawings(coverOf(composedRtf({QStringLiteral("Adams")}))),
        drawings(coverOf(composedRtf(numberedLines(40), QStringLiteral("Courier New"), 14))),
        drawings(coverOf(QString()))};
    for (const QVector<PageItem>& frame : frames) {
        ASSERT_EQ(frame.size(), 3);
        EXPECT_EQ(frame[0].kind, ItemKind::Rectangle);
        EXPECT_EQ(frame[0].rect, QRect(1500, 1240, 8505, 6690));
        EXPECT_EQ(frame[1].line, QLine(1840, 1240, 1840, 7930));
        EXPECT_EQ(frame[2].line, QLine(9665, 1240, 9665, 7930));
    }
    // 150 by 118 mm with 6 mm spines.
    EXPECT_NEAR(reports::kInlayFrame.width() * 25.4 / 1440, 150.0, 0.05);
    EXPECT_NEAR(reports::kInlayFrame.height() * 25.4 / 1440, 118.0, 0.05);
    EXPECT_NEAR((1840 - 1500) * 25.4 / 1440, 6.0, 0.05);
}

TEST_F(CdromCover, BothSpinesCarryTheNameTurnedInTheBodysFontBold) {
    const report::PageModel cover = coverOf(composedRtf(numberedLines(3), "Courier New", 12));
    const PageItem left = onlyNamed(cover, QStringLiteral("lblSplineL"));
    const PageItem right = onlyNamed(cover, QStringLiteral("lblSplineR"));
    EXPECT_EQ(left.text, "Road Songs");
    EXPECT_EQ(right.text, "Road Songs");
    EXPECT_EQ(left.angle, 900);
    EXPECT_EQ(right.angle, -900);
    EXPECT_EQ(left.font, (report::ReportFont{"Courier New", 10, true}));
    EXPECT_EQ(right.font, left.font);
    EXPECT_EQ(left.rect, QRect(1040 + 490, 1040 + 285, 300, 6520));
    EXPECT_EQ(right.rect, QRect(1040 + 8636, 1040 + 285, 300, 6520));
    // Each lies in its spine, between the frame and the fold.
    EXPECT_TRUE(QRect(1500, 1240, 340, 6690).contains(left.rect));
    EXPECT_TRUE(QRect(9665, 1240, 340, 6690).contains(right.rect));

    EXPECT_EQ(onlyNamed(cover, QStringLiteral("fldTitle")).font,
              (report::ReportFont{"Courier New", 14, true}));
    EXPECT_EQ(onlyNamed(cover, QStringLiteral("fldTime")).font,
              (report::ReportFont{"Courier New", 10, false}));
}

TEST_F(CdromCover, TheTimeIsNeverSmallerThanSixPoints) {
    const report::PageModel cover = coverOf(composedRtf(numberedLines(3), "Arial", 7));
    EXPECT_EQ(onlyNamed(cover, QStringLiteral("fldTime")).font.pointSize, 6);
    EXPECT_EQ(onlyNamed(cover, QStringLiteral("fldTitle")).font.pointSize, 9);
}

TEST_F(CdromCover, TheBodyFitsItsWidestLineAndKeepsItsCentre) {
    const QString memo = composedRtf({QStringLiteral("Adams / Baker / Carter")});
    const PageItem body = onlyNamed(coverOf(memo), QStringLiteral("RichEditCoverShort"));
    EXPECT_EQ(body.rect.width(), reports::bodyFacts(memo).widestLine + 300);
    EXPECT_NEAR(body.rect.left() + body.rect.width() / 2.0, kInlayCentreX, 1);
    // The line still fits on one line.
    EXPECT_EQ(body.document->begin().layout()->lineCount(), 1);
    // A line wider than the inlay keeps to the body's designed width and wraps.
    const PageItem wide = onlyNamed(coverOf(composedRtf({QString("Adams / Baker ").repeated(20)})),
                                    QStringLiteral("RichEditCoverShort"));
    EXPECT_EQ(wide.rect.width(), 7400);
    EXPECT_GT(wide.document->begin().layout()->lineCount(), 1);
}

TEST_F(CdromCover, ATrackListWithItsTabStopKeepsItsWidth) {
    const QStringList tracks = {QStringLiteral("1.\tAdams   Morning  [2:45]"),
                                QStringLiteral("2.\tBaker   Night Train  [6:31]")};
    const PageItem list =
        onlyNamed(coverOf(composedRtf(tracks)), QStringLiteral("RichEditCoverShort"));
    const PageItem plain = onlyNamed(coverOf(composedRtf({QStringLiteral("Adams   Morning")})),
                                     QStringLiteral("RichEditCoverShort"));
    EXPECT_EQ(list.rect.width(), 7400);
    EXPECT_LT(plain.rect.width(), 4000);
    EXPECT_NEAR(list.rect.left() + list.rect.width() / 2.0, kInlayCentreX, 1);
}

TEST_F(CdromCover, APlainCoverTextPrintsInTheBodysDesignFont) {
    // The composer stores plain text; the editor stores RTF.
    const QString plain =
        QStringLiteral("1.\tAdams   Morning  [2:45]\r\n2.\tBaker   Night Train\n");
    const reports::BodyFacts facts =
        reports::bodyFacts(reports::coverBodyRtf(plain, Qt::AlignLeft));
    EXPECT_EQ(facts.font, reports::kBodyDesignFont);
    EXPECT_EQ(facts.lineCount, 3);
    EXPECT_TRUE(facts.hasTab);
    const report::PageModel cover = coverOf(plain);
    EXPECT_EQ(onlyNamed(cover, QStringLiteral("lblSplineL")).font.family, "Times New Roman");
    const auto document = onlyNamed(cover, QStringLiteral("RichEditCoverShort")).document;
    EXPECT_EQ(document->toPlainText(), "1.\tAdams   Morning  [2:45]\n2.\tBaker   Night Train\n");
    // The track list's paragraphs, as the editor sets them: a hanging indent to the tab stop.
    const QTextBlockFormat paragraph = document->begin().blockFormat();
    EXPECT_DOUBLE_EQ(paragraph.leftMargin() * rtf::kTwipsPerUnit, 400);
    EXPECT_DOUBLE_EQ(paragraph.textIndent() * rtf::kTwipsPerUnit, -400);
    ASSERT_EQ(paragraph.tabPositions().size(), 1);
    EXPECT_DOUBLE_EQ(paragraph.tabPositions()[0].position * rtf::kTwipsPerUnit, 400);
}

// A line of many tabs prints whole, its tabs on the default stops, while the track list's lines
// keep their tab stop.
TEST_F(CdromCover, ALineOfManyTabsPrintsWholeBesideTheTrackList) {
    QString many = QStringLiteral("x");
    for (int i = 0; i < 2000; ++i) {
        many += QStringLiteral("\tx");
    }
    const QString plain = QStringLiteral("1.\tAdams   Morning\r\n") + many + QStringLiteral("\n");
    const auto document = onlyNamed(coverOf(plain), QStringLiteral("RichEditCoverShort")).document;
    EXPECT_EQ(document->toPlainText(), QStringLiteral("1.\tAdams   Morning\n") + many + "\n");
    const QTextBlock list = document->begin();
    ASSERT_EQ(list.blockFormat().tabPositions().size(), 1);
    const QTextBlock tabs = list.next();
    EXPECT_DOUBLE_EQ(tabs.blockFormat().leftMargin() * rtf::kTwipsPerUnit, 400);
    EXPECT_TRUE(tabs.blockFormat().tabPositions().isEmpty());
    // Every tab takes room: the line is far wider than its 2001 letters.
    QTextLayout* layout = tabs.layout();
    qreal width = 0;
    for (int line = 0; line < layout->lineCount(); ++line) {
        width += layout->lineAt(line).naturalTextWidth();
    }
    EXPECT_GT(width * rtf::kTwipsPerUnit, 2000 * 100);
}

}  // namespace

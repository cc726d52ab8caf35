// One section's printing: growing texts, format and before-print steps, sub-reports.
#include <gtest/gtest.h>

#include <QTextDocument>

#include "report/layout.h"
#include "report/report_error.h"
#include "report/text_measure.h"
#include "report_samples.h"

using namespace report;
using namespace reporttest;

namespace {

const QString kLongTitle =
    "A title long enough to need several lines in a narrow box, and then some more words";

ReportDefinition detailOnly(Section detail) {
    ReportDefinition definition;
    definition.page = smallPaper();
    definition.detail = std::move(detail);
    return definition;
}

Section growingDetail() {
    Control title = textBox("fldTitle", QRect(0, 0, 1500, 250), "Title");
    title.canGrow = true;
    return section("Detail", 600,
                   {title, textBox("fldBelow", QRect(0, 400, 1500, 200), "Below"),
                    textBox("fldBeside", QRect(2000, 100, 1500, 200), "Below")});
}

TEST(Sections, AGrowingTextPushesWhatIsBelowItDown) {
    const RowTable rows = table({"Title", "Below"}, {{kLongTitle, "b1"}, {"Short", "b2"}});
    const PageModel model = layoutReport(detailOnly(growingDetail()), rows);
    const Page& page = model.pages[0];
    const int needed = textHeight(ReportFont{}, kLongTitle, 1500);
    ASSERT_GT(needed, 3 * 250);
    const QVector<PageItem> titles = itemsNamed(page, "fldTitle");
    EXPECT_EQ(titles[0].rect.height(), needed);
    EXPECT_EQ(titles[1].rect.height(), 250);  // a short text keeps the designed box
    const int growth = needed - 250;
    const QVector<PageItem> below = itemsNamed(page, "fldBelow");
    EXPECT_EQ(below[0].rect.top(), 1000 + 400 + growth);
    // Beside the title (starting above its bottom edge): stays where it was.
    EXPECT_EQ(itemsNamed(page, "fldBeside")[0].rect.top(), 1000 + 100);
    // The next row starts after the grown section.
    EXPECT_EQ(titles[1].rect.top(), 1000 + 600 + growth);
    EXPECT_EQ(below[1].rect.top(), 1000 + 600 + growth + 400);
}

TEST(Sections, EmptyTextsShrinkAwayWhenAllowed) {
    Section detail = growingDetail();
    detail.controls[0].canShrink = true;
    detail.controls[2].canShrink = true;
    detail.controls[2].field = "Title";
    detail.canShrink = true;
    const RowTable rows = table({"Title", "Below"}, {{"", "b1"}, {"", "b2"}});
    const PageModel model = layoutReport(detailOnly(detail), rows);
    const QVector<PageItem> below = itemsNamed(model.pages[0], "fldBelow");
    // Both empty texts above take no room; the one ending lower (at 300, now 100) keeps its gap
    // of 100 to the text below, and the rows lose those 200 twips.
    EXPECT_EQ(below[0].rect.top(), 1000 + 200);
    EXPECT_EQ(below[1].rect.top(), 1000 + 400 + 200);

    detail.canShrink = false;
    EXPECT_EQ(itemsNamed(layoutReport(detailOnly(detail), rows).pages[0], "fldBelow")[1].rect.top(),
              1000 + 600 + 200);
}

TEST(Sections, TheFormatStepHidesControlsChangesTextsAndCancelsRows) {
    Section detail = section("Detail", 500,
                             {textBox("fldTitle", QRect(0, 0, 3000, 300), "Title"),
                              label("fldLive", QRect(3000, 0, 2000, 300), "Recorded Live")});
    detail.onFormat = [](SectionFormat& format) {
        format.control("fldLive").visible = format.value("Live").toBool();
        if (format.value("Title").toString() == "skip") {
            format.cancel();
        }
        format.control("fldTitle").text += QStringLiteral(" (%1)").arg(format.row().index() + 1);
    };
    const RowTable rows =
        table({"Title", "Live"}, {{"Studio", false}, {"skip", true}, {"Stage", true}});
    const PageModel model = layoutReport(detailOnly(detail), rows);
    EXPECT_EQ(textsOf(model.pages[0]), (QStringList{"Studio (1)", "Stage (3)", "Recorded Live"}));
    // The cancelled row takes no room.
    EXPECT_EQ(itemsNamed(model.pages[0], "fldTitle")[1].rect.top(), 1500);
    EXPECT_EQ(itemsNamed(model.pages[0], "fldLive")[0].rect.top(), 1500);
}

TEST(Sections, BeforePrintSeesTheMeasuredBoxesAndDecidesWhatPrints) {
    Section detail = growingDetail();
    detail.controls.removeLast();
    int seenHeight = 0;
    detail.onBeforePrint = [&](SectionFormat& format) {
        EXPECT_EQ(format.step(), SectionFormat::Step::BeforePrint);
        const QRect title = format.control("fldTitle").rect;
        seenHeight = title.height();
        // Put the second text under the title with a gap, and end the section there.
        format.control("fldBelow").rect.moveTop(title.bottom() + 1 + 100);
        format.setHeight(format.control("fldBelow").rect.bottom() + 1);
        PageItem mark;
        mark.kind = ItemKind::Line;
        mark.line = QLine(100, 200, 300, 200);
        format.drawOnPage(mark);
    };
    const RowTable rows = table({"Title", "Below"}, {{kLongTitle, "b1"}, {"Short", "b2"}});
    const PageModel model = layoutReport(detailOnly(detail), rows);
    const int needed = textHeight(ReportFont{}, kLongTitle, 1500);
    EXPECT_EQ(seenHeight, 250);  // the last row's, which did not grow
    const QVector<PageItem> below = itemsNamed(model.pages[0], "fldBelow");
    EXPECT_EQ(below[0].rect.top(), 1000 + needed + 100);
    EXPECT_EQ(below[1].rect.top(), 1000 + needed + 100 + 200 + 250 + 100);
    int marks = 0;
    for (const PageItem& item : model.pages[0].items) {
        marks += item.kind == ItemKind::Line && item.line == QLine(100, 200, 300, 200);
    }
    EXPECT_EQ(marks, 2);  // drawn where the page is, not moved with the section
}

TEST(Sections, UnknownNamesAreErrorsThatSayWhichName) {
    Section detail = section("Detail", 500, {textBox("fldTitle", QRect(0, 0, 3000, 300), "Titel")});
    const RowTable rows = table({"Title"}, {{"x"}});
    try {
        layoutReport(detailOnly(detail), rows);
        FAIL() << "no error";
    } catch (const ReportError& error) {
        EXPECT_TRUE(error.description().contains("\"Titel\""));
    }
    detail.controls[0].field = "title";  // names are matched without regard to case
    detail.onFormat = [](SectionFormat& format) { format.control("fldNone").visible = false; };
    try {
        layoutReport(detailOnly(detail), rows);
        FAIL() << "no error";
    } catch (const ReportError& error) {
        EXPECT_TRUE(error.description().contains("\"fldNone\""));
    }
}

// Albums and, under each, the tracks a callback finds for it.
ReportDefinition albumsWithTracks(int trackHeight) {
    auto tracks = std::make_shared<ReportDefinition>();
    tracks->name = "Tracks";
    tracks->detail =
        section("TrackDetail", trackHeight, {textBox("fldTrack", QRect(0, 0, 3000, 300), "Track")});
    ReportDefinition albums =
        detailOnly(section("Detail", 1000,
                           {textBox("fldAlbum", QRect(0, 0, 3000, 300), "Album"),
                            subReport("subTracks", QRect(1000, 400, 5000, 100), tracks,
                                      [](const RowView& album) {
                                          auto rows =
                                              std::make_shared<RowTable>(QStringList{"Track"});
                                          const QString name = album.value("Album").toString();
                                          for (int i = 1; i <= album.value("Count").toInt(); ++i) {
                                              rows->append({name + "-" + QString::number(i)});
                                          }
                                          return rows;
                                      }),
                            textBox("fldNote", QRect(0, 600, 3000, 300), "Note")}));
    return albums;
}

TEST(Sections, ASubReportPrintsItsRowsUnderTheParentRow) {
    const RowTable rows = table({"Album", "Count", "Note"},
                                {{"A", 2, "end A"}, {"B", 0, "end B"}, {"C", 1, "end C"}});
    const PageModel model = layoutReport(albumsWithTracks(300), rows);
    ASSERT_EQ(model.pages.size(), 1);
    EXPECT_EQ(textsOf(model.pages[0]),
              (QStringList{"A", "A-1", "A-2", "end A", "B", "end B", "C", "C-1", "end C"}));
    // The sub-report starts at its control and grows from 100 to its rows' 600, pushing the
    // note down by 500; without rows it shrinks to nothing.
    const QVector<PageItem> tracks = itemsNamed(model.pages[0], "fldTrack");
    EXPECT_EQ(tracks[0].rect.topLeft(), QPoint(1000 + 1000, 1000 + 400));
    EXPECT_EQ(tracks[1].rect.top(), 1000 + 700);
    const QVector<PageItem> notes = itemsNamed(model.pages[0], "fldNote");
    EXPECT_EQ(notes[0].rect.top(), 1000 + 600 + 500);
    // B's empty sub-report does not pull the note up: the album's title above it stays.
    EXPECT_EQ(notes[1].rect.top(), 1000 + 1500 + 600);
}

TEST(Sections, ALongSubReportContinuesOnTheNextPages) {
    // 30 tracks of 500 under one album: 15000 twips, on three pages of 8000.
    const RowTable rows =
        table({"Album", "Count", "Note"}, {{"A", 30, "end A"}, {"B", 1, "end B"}});
    const PageModel model = layoutReport(albumsWithTracks(500), rows);
    ASSERT_EQ(model.pages.size(), 3);
    int printed = 0;
    for (const Page& page : model.pages) {
        for (const PageItem& item : itemsNamed(page, "fldTrack")) {
            if (item.text.startsWith("B")) {
                continue;
            }
            EXPECT_LE(item.rect.top() + 500, 9000) << item.text.toStdString();
            EXPECT_EQ(item.text, QStringLiteral("A-%1").arg(++printed)) << "in order";
        }
    }
    EXPECT_EQ(printed, 30);
    EXPECT_EQ(pageOf(model, "A-16"), 1);
    EXPECT_EQ(itemsNamed(model.pages[1], "fldTrack")[0].rect.top(), 1000);
    EXPECT_EQ(pageOf(model, "end A"), 1);
    EXPECT_EQ(pageOf(model, "B"), 2);
}

TEST(Sections, RichTextAndTurnedLabelsKeepTheirContent) {
    Control body = richText("rtfBody", QRect(0, 0, 3000, 100), "Cover");
    body.canGrow = true;
    Control spine =
        label("lblSpine", QRect(4000, 0, 300, 3000), "Spine", ReportFont{"Arial", 10, true});
    spine.angle = 900;
    const RowTable rows =
        table({"Cover"}, {{"{\\rtf1\\ansi {\\fonttbl{\\f0 Times New Roman;}}\\f0\\fs20 "
                           "One\\par Two\\par Three}"}});
    const PageModel model = layoutReport(detailOnly(section("Detail", 500, {body, spine})), rows);
    const PageItem text = itemsNamed(model.pages[0], "rtfBody").value(0);
    ASSERT_EQ(text.kind, ItemKind::RichText);
    ASSERT_TRUE(text.document);
    EXPECT_EQ(text.document->toPlainText(), "One\nTwo\nThree");
    // Three lines of 10 points need more than the designed 100 twips.
    EXPECT_EQ(text.rect.height(), documentHeight(*text.document));
    EXPECT_GT(text.rect.height(), 3 * 200);
    const PageItem turned = itemsNamed(model.pages[0], "lblSpine").value(0);
    EXPECT_EQ(turned.angle, 900);
    EXPECT_EQ(turned.rect, QRect(5000, 1000, 300, 3000));
    EXPECT_TRUE(turned.font.bold);
}

}  // namespace

namespace {

TEST(Sections, ASubReportInThePageHeaderPrintsOnEveryPage) {
    auto legend = std::make_shared<ReportDefinition>();
    legend->detail =
        section("LegendDetail", 300, {textBox("fldKey", QRect(0, 0, 2000, 300), "Key")});
    ReportDefinition definition = detailOnly(section("Detail", 3000));
    definition.pageHeader = section(
        "PageHeader", 1000,
        {subReport("subLegend", QRect(500, 100, 2000, 300), legend, [](const RowView&) {
            return std::make_shared<RowTable>(table({"Key"}, {{"A = album"}, {"L = live"}}));
        })});
    const PageModel model = layoutReport(definition, table({"x"}, {{1}, {2}, {3}}));
    ASSERT_EQ(model.pages.size(), 2);
    for (const Page& page : model.pages) {
        EXPECT_EQ(textsNamed(page, "fldKey"), (QStringList{"A = album", "L = live"}));
        EXPECT_EQ(itemsNamed(page, "fldKey")[1].rect.topLeft(), QPoint(1500, 1400));
    }
}

}  // namespace

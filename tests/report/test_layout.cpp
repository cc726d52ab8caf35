// Filling pages with sections: page headers and footers, breaks, groups, growing and shrinking
// texts, sub-reports (the lists and covers show the rest).
#include <gtest/gtest.h>

#include "report_engine/layout.h"
#include "report_engine/report_error.h"
#include "report_engine/text_measure.h"
#include "report_samples.h"

using namespace report_engine;
using namespace reporttest;

namespace {

RowTable table(const QStringList& fields, const QVector<QVector<QVariant>>& rows) {
    RowTable result(fields);
    for (const QVector<QVariant>& row : rows) {
        result.append(row);
    }
    return result;
}

// Paper of 12000 by 10000 twips with margins of 1000: a printable area 10000 wide and 8000 tall.
ReportDefinition detailOnly(const Section& detail) {
    ReportDefinition definition;
    definition.page.paper = QSize(12000, 10000);
    definition.page.leftMargin = definition.page.topMargin = definition.page.rightMargin =
        definition.page.bottomMargin = 1000;
    definition.detail = detail;
    return definition;
}

// With a page header and footer of 1000 each, 6000 remain for the body. The header shows the
// first row of its page, the footer "Page N of", the page count and the last row.
ReportDefinition listOf(int detailHeight, QVector<Group> groups = {}) {
    ReportDefinition definition = detailOnly({});
    definition.name = "List";
    definition.groups = groups;
    definition.pageHeader =
        section("PageHeader", 1000, {textBox("fldFirst", QRect(0, 0, 3000, 300), "Title")});
    definition.detail =
        section("Detail", detailHeight, {textBox("fldTitle", QRect(500, 0, 4000, 300), "Title")});
    definition.pageFooter = section(
        "PageFooter", 1000,
        {textBox("txtPageNumber", QRect(0, 0, 1500, 300),
                 [](const SectionFormat& f) { return QString("Page %1 of").arg(f.pageNumber()); }),
         textBox("txtPageCount", QRect(1500, 0, 500, 300),
                 [](const SectionFormat& f) { return QString::number(f.pageCount()); }),
         textBox("fldLast", QRect(5000, 0, 3000, 300), "Title")});
    return definition;
}

// Rows of count titles by performers A, B, ... of the given counts.
RowTable tracks(const QList<int>& counts) {
    RowTable rows({"Artist", "Title"});
    for (int performer = 0; performer < counts.size(); ++performer) {
        for (int i = 1; i <= counts[performer]; ++i) {
            rows.append({QString(QChar('A' + performer)),
                         QString(QChar('A' + performer)) + QString::number(i)});
        }
    }
    return rows;
}

Group groupOn(const QString& field, bool keepWithFirstDetail, bool repeatHeader = false) {
    Group group;
    group.field = field;
    group.keepWithFirstDetail = keepWithFirstDetail;
    group.repeatHeader = repeatHeader;
    group.header = section("Header", 1000, {textBox("fld" + field, QRect(0, 0, 4000, 300), field)});
    return group;
}

// Each page's texts, "|" between pages.
QString pagesOf(const PageModel& model) {
    QStringList pages;
    for (const Page& page : model.pages) {
        pages << textsNamed(page, QString()).join(' ');
    }
    return pages.join(" | ");
}

// The header starts at the top margin, the footer ends at the bottom margin, both 1000 from the
// paper's left edge. A section that does not fit starts the next page whole; one that fills the
// body exactly does not. A header kept with its first row starts the next page with it; a
// repeated one heads each page its group continues on.
TEST(PageFilling, SectionsFillPagesBetweenTheirHeadersAndFooters) {
    const PageModel model = layoutReport(listOf(1000), tracks({8}));
    EXPECT_EQ(pagesOf(model), "A1 A1 A2 A3 A4 A5 A6 Page 1 of 2 A6 | A7 A7 A8 Page 2 of 2 A8");
    EXPECT_EQ(itemsNamed(model.pages[1], "fldFirst")[0].rect.topLeft(), QPoint(1000, 1000));
    EXPECT_EQ(topsOf(model.pages[1], "txtPageNumber"), QList({8000}));
    EXPECT_EQ(itemsNamed(model.pages[1], "fldTitle")[0].rect.topLeft(), QPoint(1500, 2000));
    EXPECT_EQ(pagesOf(layoutReport(listOf(2500), tracks({3}))),
              "A1 A1 A2 Page 1 of 2 A2 | A3 A3 Page 2 of 2 A3");
    EXPECT_EQ(layoutReport(listOf(3000), tracks({2})).pages.size(), 1);
    const RowTable rows = tracks({4, 2});
    EXPECT_EQ(pagesOf(layoutReport(listOf(1000, {groupOn("Artist", true)}), rows)),
              "A1 A A1 A2 A3 A4 Page 1 of 2 A4 | B1 B B1 B2 Page 2 of 2 B2");
    EXPECT_EQ(textsNamed(layoutReport(listOf(1000, {groupOn("Artist", false)}), rows).pages[0],
                         "fldArtist"),
              QStringList({"A", "B"}));
    const PageModel repeated =
        layoutReport(listOf(1000, {groupOn("Artist", true, true)}), tracks({5, 7}));
    EXPECT_EQ(pagesOf(repeated).section(" | ", 2), "B6 B B6 B7 Page 3 of 3 B7");
}

// Report header and footer open and close the body; headers and footers of groups print at each
// change of their field (compared without regard to case); no rows at all.
TEST(PageFilling, ReportAndGroupHeadersAndFootersFrameTheirRows) {
    ReportDefinition definition = listOf(1000, {groupOn("Artist", false)});
    definition.groups[0].header.height = 500;
    definition.groups[0].footer = section(
        "Footer", 500, {textBox("fldEnd", QRect(0, 0, 4000, 300), [](const SectionFormat& format) {
            return "End " + format.value("Artist").toString();
        })});
    definition.reportHeader =
        section("ReportHeader", 1000, {label("lblIntro", QRect(0, 0, 4000, 300), "Intro")});
    definition.reportFooter =
        section("ReportFooter", 500, {label("lblEnd", QRect(0, 0, 4000, 300), "End")});
    RowTable rows = tracks({2, 1});
    rows.append({"b", "b2"});
    const PageModel model = layoutReport(definition, rows);
    EXPECT_EQ(pagesOf(model),
              "A1 Intro A A1 A2 End A B B1 Page 1 of 2 B1 | b2 b2 End b End Page 2 of 2 b2");
    EXPECT_EQ(topsOf(model.pages[0], "fldTitle"), QList({3500, 4500, 6500}));
    EXPECT_EQ(pagesOf(layoutReport(definition, tracks({}))), "Intro End Page 1 of 1");
}

const QString kLongTitle =
    "A title long enough to need several lines in a narrow box, and then some more words";

// A growing title pushes the text below it down, not the one beside it; empty texts that may
// shrink take no room, the one ending lower (at 300, now 100) keeping its gap of 100 to the text
// below.
TEST(Sections, GrowingTextsPushWhatIsBelowDownAndEmptyOnesShrinkAway) {
    Control title = textBox("fldTitle", QRect(0, 0, 1500, 250), "Title");
    title.canGrow = true;
    Section detail = section("Detail", 600,
                             {title, textBox("fldBelow", QRect(0, 400, 1500, 200), "Below"),
                              textBox("fldBeside", QRect(2000, 100, 1500, 200), "Below")});
    ReportDefinition definition = detailOnly(detail);
    const Page page =
        layoutReport(definition, table({"Title", "Below"}, {{kLongTitle, "b1"}, {"Short", "b2"}}))
            .pages[0];
    const int growth = textHeight(ReportFont{}, kLongTitle, 1500) - 250;
    ASSERT_GT(growth, 500);
    EXPECT_EQ(itemsNamed(page, "fldTitle")[0].rect, QRect(1000, 1000, 1500, 250 + growth));
    EXPECT_EQ(QList({topsOf(page, "fldTitle")[1], topsOf(page, "fldBelow")[0],
                     topsOf(page, "fldBeside")[0]}),
              QList({1000 + 600 + growth, 1000 + 400 + growth, 1000 + 100}));
    definition.detail.controls[0].canShrink = definition.detail.controls[2].canShrink = true;
    definition.detail.controls[2].field = "Title";
    const RowTable empty = table({"Title", "Below"}, {{"", "b1"}, {"", "b2"}});
    EXPECT_EQ(topsOf(layoutReport(definition, empty).pages[0], "fldBelow"),
              QList({1200, 1000 + 600 + 200}));
}

// Under each album, Count tracks of 500 from a callback: the sub-report starts at its control
// and grows from 100 to its rows, pushing the note down; without rows it takes no room but does
// not pull the note up. 30 tracks continue on the next pages.
TEST(Sections, ASubReportPrintsItsRowsUnderTheParentRowAndContinuesOnTheNextPages) {
    auto tracks = std::make_shared<ReportDefinition>();
    tracks->detail =
        section("TrackDetail", 500, {textBox("fldTrack", QRect(0, 0, 3000, 300), "Track")});
    const auto rowsOf = [](const RowView& album) {
        auto rows = std::make_shared<RowTable>(QStringList{"Track"});
        for (int i = 1; i <= album.value("Count").toInt(); ++i) {
            rows->append({album.value("Album").toString() + QString::number(i)});
        }
        return rows;
    };
    const ReportDefinition albums =
        detailOnly(section("Detail", 1000,
                           {textBox("fldAlbum", QRect(0, 0, 3000, 300), "Album"),
                            subReport("subTracks", QRect(1000, 400, 5000, 100), tracks, rowsOf),
                            textBox("fldNote", QRect(0, 600, 3000, 300), "Note")}));
    const PageModel model =
        layoutReport(albums, table({"Album", "Count", "Note"},
                                   {{"A", 2, "end A"}, {"B", 0, "end B"}, {"C", 1, "end C"}}));
    EXPECT_EQ(pagesOf(model), "A A1 A2 end A B end B C C1 end C");
    EXPECT_EQ(itemsNamed(model.pages[0], "fldTrack")[0].rect.topLeft(), QPoint(2000, 1400));
    EXPECT_EQ(topsOf(model.pages[0], "fldNote"),
              QList({1000 + 600 + 900, 2900 + 600, 3900 + 600 + 400}));
    const PageModel longer = layoutReport(
        albums, table({"Album", "Count", "Note"}, {{"A", 30, "end A"}, {"B", 1, "end B"}}));
    const QStringList pages = pagesOf(longer).split(" | ");
    ASSERT_EQ(pages.size(), 3);
    EXPECT_TRUE(pages[1].startsWith("A16 ") && pages[1].endsWith(" A30 end A"))
        << pages[1].toStdString();
    EXPECT_TRUE(pages[2].startsWith("B B1")) << pages[2].toStdString();
    EXPECT_EQ(topsOf(longer.pages[1], "fldTrack")[0], 1000);
    EXPECT_LE(topsOf(longer.pages[1], "fldTrack").last() + 500, 9000);
}

// Names match without regard to case; an unknown one is an error that names it and its report,
// as is a page count asked for where it is not yet known.
TEST(Sections, UnknownNamesAndAPageCountNotYetKnownAreErrors) {
    const auto error = [](const std::function<void(ReportDefinition&)>& change) {
        ReportDefinition definition = listOf(1000);
        change(definition);
        try {
            layoutReport(definition, tracks({1}));
            return QString("no error");
        } catch (const ReportError& error) {
            return error.description();
        }
    };
    const std::pair<std::function<void(ReportDefinition&)>, QString> cases[] = {
        {[](ReportDefinition& d) { d.detail.controls[0].field = "title"; }, "no error"},
        {[](ReportDefinition& d) { d.detail.controls[0].field = "Titel"; }, "\"Titel\""},
        {[](ReportDefinition& d) { d.groups = {groupOn("ArtistSort", true)}; },
         "report \"List\" groups on \"ArtistSort\""},
        {[](ReportDefinition& d) {
             d.detail.onFormat = [](SectionFormat& f) { f.control("fldNone").visible = false; };
         },
         "\"fldNone\""},
        {[](ReportDefinition& d) {
             d.detail.controls.append(textBox("fldCount", QRect(), [](const SectionFormat& f) {
                 return QString::number(f.pageCount());
             }));
         },
         "page headers and footers"}};
    for (const auto& [change, expected] : cases) {
        EXPECT_TRUE(error(change).contains(expected)) << expected.toStdString();
    }
}

}  // namespace

// Filling pages: page headers and footers, page numbers, breaks.
#include <gtest/gtest.h>

#include "report/layout.h"
#include "report/report_error.h"
#include "report_samples.h"

using namespace report;
using namespace reporttest;

namespace {

// The small paper has a printable area 8000 tall; with a page header and footer of 1000 each,
// 6000 remain for the body, six rows of 1000.
ReportDefinition listOf(int detailHeight) {
    ReportDefinition definition;
    definition.name = "List";
    definition.page = smallPaper();
    definition.pageHeader =
        section("PageHeader", 1000, {label("lblTitle", QRect(0, 0, 4000, 300), "Track list")});
    definition.detail =
        section("Detail", detailHeight, {textBox("fldTitle", QRect(500, 0, 4000, 300), "Title")});
    definition.pageFooter = pageNumberFooter(1000);
    return definition;
}

RowTable titles(int count) {
    RowTable rows({"Title"});
    for (int i = 1; i <= count; ++i) {
        rows.append({QStringLiteral("Song %1").arg(i)});
    }
    return rows;
}

TEST(PageFilling, EveryPageHasItsHeaderAndFooterWithPageNOfM) {
    const PageModel model = layoutReport(listOf(1000), titles(20));
    ASSERT_EQ(model.pages.size(), 4);
    const QVector<int> rowsOnPage{6, 6, 6, 2};
    for (int i = 0; i < 4; ++i) {
        const Page& page = model.pages[i];
        EXPECT_EQ(textsNamed(page, "txtPageNumber"), QStringList{QString("Page %1 of").arg(i + 1)});
        EXPECT_EQ(textsNamed(page, "txtPageCount"), QStringList{"4"});
        EXPECT_EQ(textsNamed(page, "lblTitle"), QStringList{"Track list"});
        EXPECT_EQ(itemsNamed(page, "fldTitle").size(), rowsOnPage[i]) << "page " << i + 1;
        // Header at the top margin, footer ending at the bottom margin, both 1000 left of the
        // paper's edge; the rows start under the header.
        EXPECT_EQ(itemsNamed(page, "lblTitle")[0].rect.topLeft(), QPoint(1000, 1000));
        EXPECT_EQ(itemsNamed(page, "txtPageNumber")[0].rect.top(), 8000);
        EXPECT_EQ(itemsNamed(page, "fldTitle")[0].rect.topLeft(), QPoint(1500, 2000));
    }
    EXPECT_EQ(textsNamed(model.pages[1], "fldTitle").first(), "Song 7");
    EXPECT_EQ(textsNamed(model.pages[3], "fldTitle"), (QStringList{"Song 19", "Song 20"}));
}

TEST(PageFilling, ASectionThatDoesNotFitStartsTheNextPageWhole) {
    // Rows of 2500: two fit in 6000, the third would end at 7500.
    const PageModel model = layoutReport(listOf(2500), titles(3));
    ASSERT_EQ(model.pages.size(), 2);
    EXPECT_EQ(textsNamed(model.pages[0], "fldTitle"), (QStringList{"Song 1", "Song 2"}));
    EXPECT_EQ(itemsNamed(model.pages[1], "fldTitle")[0].rect.top(), 2000);
    EXPECT_EQ(textsNamed(model.pages[1], "txtPageNumber"), QStringList{"Page 2 of"});

    // Exactly filling the body is no reason to break.
    EXPECT_EQ(layoutReport(listOf(3000), titles(2)).pages.size(), 1);
}

TEST(PageFilling, ReportHeaderOpensAndReportFooterClosesTheBody) {
    ReportDefinition definition = listOf(1000);
    definition.reportHeader =
        section("ReportHeader", 2000, {label("lblIntro", QRect(0, 0, 4000, 300), "Intro")});
    definition.reportFooter =
        section("ReportFooter", 500, {label("lblEnd", QRect(0, 0, 4000, 300), "End")});
    const PageModel model = layoutReport(definition, titles(10));
    // 2000 + 4 rows on page 1, 6 rows on page 2, and no room for the footer after them.
    ASSERT_EQ(model.pages.size(), 3);
    EXPECT_EQ(textsOf(model.pages[0]).mid(0, 3), (QStringList{"Track list", "Intro", "Song 1"}));
    EXPECT_EQ(itemsNamed(model.pages[0], "lblIntro")[0].rect.top(), 2000);
    EXPECT_EQ(itemsNamed(model.pages[0], "fldTitle").size(), 4);
    EXPECT_EQ(pageOf(model, "Intro"), 0);
    EXPECT_EQ(pageOf(model, "End"), 2);
    EXPECT_EQ(textsNamed(model.pages[2], "txtPageCount"), QStringList{"3"});
}

TEST(PageFilling, PageHeadersAndFootersReadTheFirstAndLastRowOfTheirPage) {
    ReportDefinition definition = listOf(1000);
    definition.pageHeader.controls.append(textBox("fldFirst", QRect(5000, 0, 3000, 300), "Title"));
    definition.pageFooter.controls.append(textBox("fldLast", QRect(5000, 0, 3000, 300), "Title"));
    const PageModel model = layoutReport(definition, titles(8));
    ASSERT_EQ(model.pages.size(), 2);
    EXPECT_EQ(textsNamed(model.pages[0], "fldFirst"), QStringList{"Song 1"});
    EXPECT_EQ(textsNamed(model.pages[0], "fldLast"), QStringList{"Song 6"});
    EXPECT_EQ(textsNamed(model.pages[1], "fldFirst"), QStringList{"Song 7"});
    EXPECT_EQ(textsNamed(model.pages[1], "fldLast"), QStringList{"Song 8"});
}

TEST(PageFilling, ForcedNewPagesAndAReportWithoutRows) {
    ReportDefinition definition = listOf(1000);
    definition.reportHeader =
        section("ReportHeader", 500, {label("lblIntro", QRect(0, 0, 4000, 300), "Intro")});
    definition.reportHeader.newPage = NewPage::After;
    PageModel model = layoutReport(definition, titles(2));
    ASSERT_EQ(model.pages.size(), 2);
    EXPECT_EQ(pageOf(model, "Song 1"), 1);

    definition.reportHeader.newPage = NewPage::None;
    definition.detail.newPage = NewPage::Before;
    model = layoutReport(definition, titles(3));
    ASSERT_EQ(model.pages.size(), 4);
    EXPECT_EQ(pageOf(model, "Intro"), 0);
    EXPECT_EQ(pageOf(model, "Song 1"), 1);
    EXPECT_EQ(pageOf(model, "Song 3"), 3);

    model = layoutReport(definition, titles(0));
    ASSERT_EQ(model.pages.size(), 1);
    EXPECT_EQ(textsOf(model.pages[0]), (QStringList{"Track list", "Intro", "Page 1 of", "1"}));
}

TEST(PageFilling, ThePageCountIsRefusedWhereItIsNotYetKnown) {
    ReportDefinition definition = listOf(1000);
    definition.detail.controls.append(
        textBox("fldCount", QRect(0, 0, 500, 300),
                [](const SectionFormat& format) { return QString::number(format.pageCount()); }));
    try {
        layoutReport(definition, titles(1));
        FAIL() << "no error";
    } catch (const ReportError& error) {
        EXPECT_TRUE(error.description().contains("page headers and footers"));
        EXPECT_TRUE(error.description().contains("Detail"));
    }
}

}  // namespace

// Group headers and footers at each change of their field.
#include <gtest/gtest.h>

#include "report/layout.h"
#include "report/report_error.h"
#include "report_samples.h"

using namespace report;
using namespace reporttest;

namespace {

Group groupOn(const QString& field, const QString& control, int height) {
    Group group;
    group.field = field;
    group.header =
        section("Header " + field, height, {textBox(control, QRect(0, 0, 4000, 300), field)});
    return group;
}

TEST(Groups, HeadersPrintAtEachChangeAndFootersAfterTheGroupsLastRow) {
    ReportDefinition definition;
    definition.page = PageSetup::a4();
    Group performer = groupOn("ArtistSort", "fldPerformer", 500);
    performer.header.controls[0].field = "Artist";
    performer.footer =
        section("PerformerFooter", 500,
                {textBox("fldEnd", QRect(0, 0, 4000, 300), [](const SectionFormat& format) {
                    return "End " + format.value("Artist").toString();
                })});
    definition.groups = {performer, groupOn("Album", "fldAlbum", 500)};
    definition.detail =
        section("Detail", 500, {textBox("fldTitle", QRect(500, 0, 4000, 300), "Title")});
    const RowTable rows = table({"ArtistSort", "Artist", "Album", "Title"},
                                {{"abba", "ABBA", "Arrival", "Dancing Queen"},
                                 {"ABBA", "ABBA", "Arrival", "Money"},  // same group, other case
                                 {"abba", "ABBA", "Gold", "Waterloo"},
                                 {"beatles", "The Beatles", "Help!", "Yesterday"},
                                 {"corrs", "The Corrs", "Help!", "Runaway"}});
    const PageModel model = layoutReport(definition, rows);
    ASSERT_EQ(model.pages.size(), 1);
    EXPECT_EQ(textsOf(model.pages[0]),
              (QStringList{"ABBA", "Arrival", "Dancing Queen", "Money", "Gold", "Waterloo",
                           "End ABBA", "The Beatles", "Help!", "Yesterday", "End The Beatles",
                           "The Corrs", "Help!", "Runaway", "End The Corrs"}));
    // Each section follows the one before it.
    const QVector<PageItem> titles = itemsNamed(model.pages[0], "fldTitle");
    EXPECT_EQ(titles[0].rect.top(), 1440 + 1000);
    EXPECT_EQ(titles[1].rect.top(), 1440 + 1500);
    EXPECT_EQ(titles[2].rect.top(), 1440 + 2500);
}

// Small paper: 6000 twips of body between a page header and footer of 1000.
ReportDefinition performerList(bool keepWithFirstDetail, bool repeatHeader) {
    ReportDefinition definition;
    definition.page = smallPaper();
    definition.pageHeader = section("PageHeader", 1000);
    definition.pageFooter = section("PageFooter", 1000);
    Group performer = groupOn("Artist", "fldPerformer", 1000);
    performer.keepWithFirstDetail = keepWithFirstDetail;
    performer.repeatHeader = repeatHeader;
    definition.groups = {performer};
    definition.detail =
        section("Detail", 1000, {textBox("fldTitle", QRect(500, 0, 4000, 300), "Title")});
    return definition;
}

RowTable tracks(const QVector<std::pair<QString, int>>& performers) {
    RowTable rows({"Artist", "Title"});
    for (const auto& [artist, count] : performers) {
        for (int i = 1; i <= count; ++i) {
            rows.append({artist, artist + QString::number(i)});
        }
    }
    return rows;
}

TEST(Groups, AHeaderDoesNotEndAPageWithoutItsFirstRow) {
    // A's header and four rows leave room for B's header alone.
    const RowTable rows = tracks({{"A", 4}, {"B", 2}});
    PageModel model = layoutReport(performerList(true, false), rows);
    ASSERT_EQ(model.pages.size(), 2);
    EXPECT_EQ(textsOf(model.pages[0]), (QStringList{"A", "A1", "A2", "A3", "A4"}));
    EXPECT_EQ(textsOf(model.pages[1]), (QStringList{"B", "B1", "B2"}));

    model = layoutReport(performerList(false, false), rows);
    EXPECT_EQ(textsOf(model.pages[0]).last(), "B");
}

TEST(Groups, ARepeatedHeaderHeadsEachPageItsGroupContinuesOn) {
    // A fills page 1 exactly; B starts page 2 by itself and continues on page 3.
    const RowTable rows = tracks({{"A", 5}, {"B", 7}});
    PageModel model = layoutReport(performerList(true, true), rows);
    ASSERT_EQ(model.pages.size(), 3);
    EXPECT_EQ(textsOf(model.pages[1]), (QStringList{"B", "B1", "B2", "B3", "B4", "B5"}));
    EXPECT_EQ(textsOf(model.pages[2]), (QStringList{"B", "B6", "B7"}));
    EXPECT_EQ(itemsNamed(model.pages[2], "fldPerformer")[0].rect.top(), 2000);
    EXPECT_EQ(itemsNamed(model.pages[2], "fldTitle")[0].rect.top(), 3000);

    model = layoutReport(performerList(true, false), rows);
    ASSERT_EQ(model.pages.size(), 3);
    EXPECT_EQ(textsOf(model.pages[2]), (QStringList{"B6", "B7"}));
}

TEST(Groups, AGroupFieldTheRowsLackIsNamed) {
    ReportDefinition definition = performerList(true, false);
    definition.name = "TracksAll";
    definition.groups[0].field = "ArtistSort";
    try {
        layoutReport(definition, tracks({{"A", 1}}));
        FAIL() << "no error";
    } catch (const ReportError& error) {
        EXPECT_TRUE(error.description().contains("\"ArtistSort\""));
        EXPECT_TRUE(error.description().contains("TracksAll"));
    }
}

}  // namespace

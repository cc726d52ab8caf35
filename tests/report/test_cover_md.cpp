// The MD cover on the page model: the strip, its track list and the cover text beside it.
#include <gtest/gtest.h>

#include "cover_fixture.h"
#include "report/text_measure.h"
#include "report_samples.h"
#include "reports/cover_md.h"
#include "reports/cover_source.h"

using namespace covertest;
using report::ItemKind;
using report::PageItem;

namespace {

class MdCover : public ::testing::Test {
  protected:
    qint64 addMix(const QString& coverMemo) {
        const qint64 id =
            db.addCompilation(QStringLiteral("Summer Mix"), QStringLiteral("Md"), coverMemo);
        const char* tracks[][2] = {{"Adams", "Morning"},
                                   {"Adams", "Noon"},
                                   {"Adams", "Evening"},
                                   {"Baker", "Night Train"}};
        for (int i = 0; i < 4; ++i) {
            db.addTrack(id, i + 1, tracks[i][0], tracks[i][1]);
        }
        return id;
    }
    CoverDatabase db;
};

TEST_F(MdCover, ARunOfTracksByOnePerformerNamesItOnItsLastRowOnly) {
    const report::PageModel cover =
        db.cover(addMix(composedRtf({QStringLiteral("Adams / Baker")})));
    ASSERT_EQ(cover.pages.size(), 1);
    const report::Page& page = cover.pages[0];
    EXPECT_EQ(reporttest::textsNamed(page, QStringLiteral("fldTrack")),
              QStringList({"Morning", "Noon", "Evening", "Night Train"}));
    EXPECT_EQ(reporttest::textsNamed(page, QStringLiteral("fldtrackno")),
              QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(reporttest::textsNamed(page, QStringLiteral("fldArtist")),
              QStringList({"Adams", "Baker"}));
    // Each performer stands in its track's row, under its title and above the next track.
    const QVector<PageItem> titles = reporttest::itemsNamed(page, QStringLiteral("fldTrack"));
    const QVector<PageItem> performers = reporttest::itemsNamed(page, QStringLiteral("fldArtist"));
    EXPECT_GE(performers[0].rect.top(), titles[2].rect.bottom());
    EXPECT_LE(performers[0].rect.bottom(), titles[3].rect.top());
    EXPECT_GE(performers[1].rect.top(), titles[3].rect.bottom());
    // A row without performer takes one line.
    EXPECT_EQ(titles[1].rect.top() - titles[0].rect.top(), titles[0].rect.height());
}

TEST(MdPerformers, OnlyTheLastTrackOfARunKeepsItsPerformer) {
    const QVector<QString> shown = reports::runLastPerformers(
        {{1, "Adams"}, {2, "Adams"}, {3, "Adams"}, {4, "Baker"}, {5, "Adams"}, {6, "adams"}});
    EXPECT_EQ(shown.size(), 1001);
    EXPECT_EQ(shown.mid(0, 8),
              QVector<QString>({"", "", "", "Adams", "Baker", "Adams", "adams", ""}));
    EXPECT_EQ(reports::runLastPerformers({}).value(0), QString());
}

TEST(MdPerformers, TracksBeyondTheThousandthGetNoPerformer) {
    QVector<std::pair<int, QString>> tracks;
    for (int trackNo = 995; trackNo <= 1003; ++trackNo) {
        tracks.append({trackNo, trackNo < 999 ? "Adams" : "Baker"});
    }
    const QVector<QString> shown = reports::runLastPerformers(tracks);
    EXPECT_EQ(shown.size(), 1001);
    EXPECT_EQ(shown[998], "Adams");
    EXPECT_EQ(shown[997], "");
    // The run that the limit cuts ends at the last slot.
    EXPECT_EQ(shown[999], "");
    EXPECT_EQ(shown[1000], "Baker");
}

TEST_F(MdCover, TheStripOutlineFoldMarksAndRuleAreTrueToSize) {
    const report::PageModel cover = db.cover(addMix(composedRtf({QStringLiteral("Adams")})));
    const QVector<PageItem> drawn = drawings(cover);
    ASSERT_EQ(drawn.size(), 1 + 6 + 1 + 2);
    EXPECT_EQ(drawn[0].kind, ItemKind::Rectangle);
    EXPECT_EQ(drawn[0].rect, QRect(1200, 800, 2552, 14402));
    EXPECT_NEAR(drawn[0].rect.width() * 25.4 / 1440, 45.0, 0.05);
    EXPECT_NEAR(drawn[0].rect.height() * 25.4 / 1440, 254.0, 0.1);
    QVector<QLine> marks;
    for (int i = 1; i <= 6; ++i) {
        marks.append(drawn[i].line);
    }
    EXPECT_EQ(marks, QVector<QLine>({{1150, 4486, 1250, 4486},
                                     {3700, 4486, 3800, 4486},
                                     {1150, 8115, 1250, 8115},
                                     {3700, 8115, 3800, 8115},
                                     {1150, 11687, 1250, 11687},
                                     {3700, 11687, 3800, 11687}}));

    // The strip's title, the rule across the strip under it, then the track list.
    const PageItem title = onlyNamed(cover, QStringLiteral("fldTitle"));
    EXPECT_EQ(title.text, "Summer Mix");
    EXPECT_EQ(title.rect.top(), 700 + 185);
    EXPECT_EQ(title.rect.height(), report::textHeight(title.font, title.text, title.rect.width()));
    const QLine rule = drawn[7].line;
    EXPECT_EQ(rule, QLine(1200, title.rect.height() + 970, 3752, title.rect.height() + 970));
    EXPECT_GT(rule.y1(), title.rect.bottom());
    const PageItem first = reporttest::itemsNamed(cover.pages[0], QStringLiteral("fldTrack"))[0];
    EXPECT_EQ(first.rect.top(), title.rect.top() + title.rect.height() + 200);
    EXPECT_GT(first.rect.top(), rule.y1());
    EXPECT_TRUE(drawn[0].rect.contains(title.rect));
    EXPECT_TRUE(drawn[0].rect.contains(first.rect));
}

TEST_F(MdCover, TheCoverTextIsCentredInItsBandUnderTheName) {
    const QString memo = composedRtf({QStringLiteral("Adams / Baker")}, "Arial", 9);
    const report::PageModel cover = db.cover(addMix(memo));
    const PageItem body = onlyNamed(cover, QStringLiteral("RichEditCoverShort"));
    EXPECT_NEAR(body.rect.top() + body.rect.height() / 2.0, 700 + 185 + 2700 / 2, 1);
    const PageItem title2 = onlyNamed(cover, QStringLiteral("fldTitle2"));
    EXPECT_EQ(title2.text, "Summer Mix");
    EXPECT_EQ(title2.font, (report::ReportFont{"Arial", 11, true}));
    EXPECT_EQ(title2.rect.top() + title2.rect.height() + 50, body.rect.top());
    EXPECT_EQ(title2.rect.left(), body.rect.left());
    EXPECT_EQ(title2.rect.width(), body.rect.width());
    // It stands beside the strip, clear of the cut, inside a label of its own: its band, with
    // room around the text.
    EXPECT_GT(body.rect.left(), 3752 + 300);
    const QVector<PageItem> drawn = drawings(cover);
    const PageItem label = drawn[drawn.size() - 2];
    EXPECT_EQ(label.kind, ItemKind::Rectangle);
    EXPECT_EQ(label.rect, QRect(body.rect.left() - 120, 700 + 185, 2552 + 240, 2700));
    EXPECT_TRUE(label.rect.contains(title2.rect));

    // Below it the disc's edge label: the name on one line, cut out on its own.
    const PageItem edge = onlyNamed(cover, QStringLiteral("lblTitle"));
    EXPECT_EQ(edge.text, "Summer Mix");
    EXPECT_EQ(edge.font.family, "Arial");
    EXPECT_EQ(drawn.back().rect, edge.rect);
    EXPECT_EQ(edge.rect,
              QRect(label.rect.left(), label.rect.bottom() + 1 + 400, label.rect.width(), 340));
    EXPECT_GE(edge.rect.height(), report::textHeight(edge.font, edge.text, edge.rect.width()));
}

TEST_F(MdCover, ACoverTextFillingItsBandLeavesNoRoomForTheName) {
    const report::PageModel cover = db.cover(addMix(composedRtf(numberedLines(12))));
    EXPECT_FALSE(hasNamed(cover, QStringLiteral("fldTitle2")));
    EXPECT_TRUE(hasNamed(cover, QStringLiteral("fldTitle")));
    // Its label grows beyond the band to hold it.
    const PageItem body = onlyNamed(cover, QStringLiteral("RichEditCoverShort"));
    const QVector<PageItem> drawn = drawings(cover);
    const QRect label = drawn[drawn.size() - 2].rect;
    EXPECT_LT(label.top(), 700 + 185);
    EXPECT_TRUE(label.contains(body.rect.adjusted(-120, -120, 120, 120)));
    // The edge label keeps below it.
    EXPECT_EQ(drawn.back().rect.top(), label.bottom() + 1 + 400);
}

}  // namespace

// The track lists and the recording protocol laid out on a compilation database.
#include <gtest/gtest.h>

#include <QRegularExpression>

#include "list_fixture.h"
#include "report_samples.h"

using namespace reports;
using namespace reporttest;
using report::PageModel;

namespace {

QStringList nonEmpty(QStringList texts) {
    texts.removeAll(QString());
    return texts;
}

using TracksCompilationReport = ListFixture;

TEST_F(TracksCompilationReport, ListsTheTracksInMediumOrderWithTheirComputedTexts) {
    const PageModel model = build(ListReport::TracksCompilation, 1);
    ASSERT_EQ(model.pages.size(), 1);
    const report::Page& page = model.pages[0];
    EXPECT_EQ(textsNamed(page, "fldCompilationTitle"), QStringList{"Road Trip     0:05:22"});
    EXPECT_EQ(textsNamed(page, "fldBox"), QStringList{"Shelf A"});
    EXPECT_EQ(textsNamed(page, "fldTargetIndex"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(textsNamed(page, "fldPerformer"),
              (QStringList{"Miles Davis", "The Beatles", "The Beatles"}));
    EXPECT_EQ(textsNamed(page, "fldAlbum"), (QStringList{"Kind of Blue", "Help!", "Help!"}));
    // The track without a year keeps the blanks after its time.
    EXPECT_EQ(textsNamed(page, "fldTrackExtended"),
              (QStringList{"So What   0:59   1959", "Help!   2:18   ", "Yesterday   2:05   1965"}));
    EXPECT_EQ(nonEmpty(textsNamed(page, "fldLive")), QStringList{"Recorded Live"});
    EXPECT_EQ(onlyItem(model, "Recorded Live").rect.top(),
              itemsNamed(page, "fldTrackExtended")[1].rect.top() + 250);
    EXPECT_EQ(textsNamed(page, "fldFormatManufact"), QStringList{"MD, Sony"});
    EXPECT_EQ(textsNamed(page, "fldDate"), QStringList{"12.05.01"});
    EXPECT_EQ(textsNamed(page, "txtPageNumber"), QStringList{"Page 1 of"});
    EXPECT_EQ(textsNamed(page, "txtPageCount"), QStringList{"1"});
}

TEST_F(TracksCompilationReport, ACompilationWithoutManufacturerShowsItsFormatAlone) {
    const PageModel model = build(ListReport::TracksCompilation, 2);
    EXPECT_EQ(textsNamed(model.pages[0], "fldFormatManufact"), QStringList{"CD-ROM"});
    EXPECT_EQ(textsNamed(model.pages[0], "fldCompilationTitle"), QStringList{"Autumn     1:00:00"});
    EXPECT_EQ(textsNamed(model.pages[0], "fldTrackExtended"),
              (QStringList{"So What   50:00   1959", "Feeling Good   10:00   "}));
}

using TracksAllReport = ListFixture;

TEST_F(TracksAllReport, GroupsEveryTrackByPerformerAndAlbum) {
    const PageModel model = build(ListReport::TracksAll);
    ASSERT_EQ(model.pages.size(), 1);
    const report::Page& page = model.pages[0];
    EXPECT_EQ(textsNamed(page, "lblPageHeader"),
              QStringList{"Compilations: The Songs Sorted By Performer"});
    EXPECT_EQ(textsNamed(page, "lblDate"), QStringList{"23.11.26"});
    EXPECT_EQ(textsNamed(page, "fldTrackPerformer"),
              (QStringList{"The Beatles", "Miles Davis", "Nina Simone"}));
    EXPECT_EQ(textsNamed(page, "fldAlbum"),
              (QStringList{"Help!", "Kind of Blue", "I Put a Spell on You"}));
    // Without a year the text ends at the time; equal titles by compilation name.
    EXPECT_EQ(textsNamed(page, "fldTrackExtended"),
              (QStringList{"Help!   2:18", "Yesterday   2:05   1965", "So What   50:00   1959",
                           "So What   0:59   1959", "Feeling Good   10:00"}));
    EXPECT_EQ(textsNamed(page, "fldCompilationName"),
              (QStringList{"Road Trip", "Road Trip", "Autumn", "Road Trip", "Autumn"}));
    EXPECT_EQ(textsNamed(page, "fldTargetIndex"), (QStringList{"2", "3", "1", "1", "2"}));
    // Each performer's header stands above its first track.
    EXPECT_LT(itemsNamed(page, "fldTrackPerformer")[1].rect.bottom(),
              itemsNamed(page, "fldTrackExtended")[2].rect.top());
    EXPECT_GT(itemsNamed(page, "fldTrackPerformer")[1].rect.top(),
              itemsNamed(page, "fldTrackExtended")[1].rect.bottom());
}

// The number of a generated track from its text "Track 00042   3:20   1990".
int trackNumber(const QString& text) {
    const QRegularExpressionMatch match = QRegularExpression("^Track (\\d+)").match(text);
    return match.hasMatch() ? match.captured(1).toInt() : 0;
}

TEST_F(TracksAllReport, APerformerAndAlbumContinuedOnANewPageGetTheirHeadersAgain) {
    testsupport::fillLongCompilation(path, 10, "Long Haul", 400, 30);
    const PageModel model = build(ListReport::TracksAll);
    ASSERT_GT(model.pages.size(), 4);
    int continued = 0;
    for (int i = 1; i < model.pages.size(); ++i) {
        const report::Page& page = model.pages[i];
        const QVector<report::PageItem> tracks = itemsNamed(page, "fldTrackExtended");
        const int first = trackNumber(tracks.value(0).text);
        if (first == 0) {
            continue;
        }
        const QString performer = QString("Performer %1").arg((first - 1) / 30, 5, 10, QChar('0'));
        const QString album = QString("Album %1").arg((first - 1) / 5, 5, 10, QChar('0'));
        const QVector<report::PageItem> performers = itemsNamed(page, "fldTrackPerformer");
        const QVector<report::PageItem> albums = itemsNamed(page, "fldAlbum");
        ASSERT_FALSE(performers.isEmpty()) << "page " << i + 1;
        ASSERT_FALSE(albums.isEmpty()) << "page " << i + 1;
        EXPECT_EQ(performers[0].text, performer) << "page " << i + 1;
        EXPECT_EQ(albums[0].text, album) << "page " << i + 1;
        EXPECT_LT(performers[0].rect.top(), albums[0].rect.top());
        EXPECT_LT(albums[0].rect.top(), tracks[0].rect.top());
        continued += (first - 1) % 30 != 0 ? 1 : 0;
    }
    EXPECT_GT(continued, 2);  // most pages start inside a performer's run
}

using RecordingProtocol = ListFixture;

TEST_F(RecordingProtocol, ListsTheAlbumsNeededByLocationThenTheTracks) {
    const PageModel model = build(ListReport::RecordingProtocol, 1);
    ASSERT_EQ(model.pages.size(), 1);
    const report::Page& page = model.pages[0];
    EXPECT_EQ(textsNamed(page, "lblRecordingProtocol"), QStringList{"Recording Protocol"});
    EXPECT_EQ(textsNamed(page, "fldCompilationTitle"), QStringList{"Road Trip     0:05:22"});
    EXPECT_EQ(textsNamed(page, "Label1"), QStringList{"Albums required for this compilation:"});
    // Help! stands in two places: two rows, each under its own location.
    EXPECT_EQ(textsNamed(page, "fldAlbumLocation"),
              (QStringList{"Attic box", "Jazz shelf", "Pop shelf"}));
    EXPECT_EQ(textsNamed(page, "fldAlbum_Title"), (QStringList{"Help!", "Kind of Blue", "Help!"}));
    EXPECT_EQ(textsNamed(page, "fldArtistSort"),
              (QStringList{"Beatles, The", "Davis, Miles", "Beatles, The"}));
    EXPECT_EQ(textsNamed(page, "fldItemIndex"), (QStringList{"1 - 1", "1 - 2", "1 - 13"}));
    EXPECT_EQ(textsNamed(page, "fldLength"), (QStringList{"0:59", "2:18", "2:05"}));
    EXPECT_EQ(textsNamed(page, "fldTrack"), (QStringList{"So What", "Help!", "Yesterday"}));
    EXPECT_EQ(textsNamed(page, "fldPerformer"),
              (QStringList{"Miles Davis", "The Beatles", "The Beatles"}));
    EXPECT_EQ(textsNamed(page, "fldFormatManufact"), QStringList{"MD, Sony"});
    // The albums come before the tracks, the closing rule between them.
    const int lastAlbum = itemsNamed(page, "fldAlbum_Title").last().rect.bottom();
    EXPECT_LT(lastAlbum, itemsNamed(page, "Line3")[0].line.y1());
    EXPECT_LT(itemsNamed(page, "Line3")[0].line.y1(),
              itemsNamed(page, "fldTargetIndex")[0].rect.top());
}

TEST_F(RecordingProtocol, TheDetailGrowsWithALongAlbumTitle) {
    testsupport::execRaw(path,
                         "UPDATE CompilationTrack SET Album_Title = 'A very long album title that "
                         "cannot possibly fit into its narrow column on one line' WHERE "
                         "CompilationID_F1 = 1 AND TrackNo = 1");
    const report::Page page = build(ListReport::RecordingProtocol, 1).pages[0];
    const QVector<report::PageItem> rows = itemsNamed(page, "fldTargetIndex");
    const QVector<report::PageItem> albums = itemsNamed(page, "fldAlbum");
    EXPECT_GT(albums[0].rect.height(), 300);
    EXPECT_GE(rows[1].rect.top(), albums[0].rect.bottom());
}

// Every list on both papers: each page says "Page N of M" with the right numbers, and nothing
// lies outside the printable area.
class ListsOnPaper : public ListFixture,
                     public ::testing::WithParamInterface<std::tuple<ListReport, QLocale>> {};

TEST_P(ListsOnPaper, PagesBreakWithTheirNumbersAndStayOnThePaper) {
    const auto [kind, locale] = GetParam();
    testsupport::fillLongCompilation(path, 10, "Long Haul", 150);
    const report::PageSetup page = listPaper(locale);
    const PageModel model = build(kind, 10, page);
    ASSERT_GT(model.pages.size(), 2);
    EXPECT_EQ(model.setup.size(), locale.territory() == QLocale::UnitedStates
                                      ? QSize(12240, 15840)
                                      : QSize(11906, 16838));
    const QRect printable = page.printable();
    const QString count = QString::number(model.pages.size());
    for (int i = 0; i < model.pages.size(); ++i) {
        const report::Page& onPage = model.pages[i];
        EXPECT_EQ(textsNamed(onPage, "txtPageNumber"),
                  QStringList{QString("Page %1 of").arg(i + 1)});
        EXPECT_EQ(textsNamed(onPage, "txtPageCount"), QStringList{count});
        EXPECT_EQ(itemsNamed(onPage, "shpPage").size(), 1);
        for (const report::PageItem& item : onPage.items) {
            const QRect box = item.kind == report::ItemKind::Line
                                  ? QRect(item.line.p1(), item.line.p2()).normalized()
                                  : item.rect;
            EXPECT_TRUE(printable.adjusted(0, 0, 1, 1).contains(box))
                << item.name.toStdString() << " on page " << i + 1;
        }
    }
    // "Page N of" ends just left of the count.
    const report::PageItem number = itemsNamed(model.pages[0], "txtPageNumber")[0];
    const report::PageItem pages = itemsNamed(model.pages[0], "txtPageCount")[0];
    EXPECT_EQ(number.rect.top(), pages.rect.top());
    EXPECT_LT(number.rect.right(), pages.rect.left());
    EXPECT_GT(number.rect.right(), pages.rect.left() - 100);
}

INSTANTIATE_TEST_SUITE_P(
    AllLists, ListsOnPaper,
    ::testing::Combine(::testing::Values(ListReport::TracksCompilation, ListReport::TracksAll,
                                         ListReport::RecordingProtocol),
                       ::testing::Values(QLocale(QLocale::German, QLocale::Germany),
                                         QLocale(QLocale::English, QLocale::UnitedStates))));

TEST(ListReportCaptions, NameTheirReports) {
    EXPECT_EQ(listReportCaption(ListReport::TracksCompilation), "Tracks on Selected Compilation");
    EXPECT_EQ(listReportCaption(ListReport::TracksAll), "All Tracks");
    EXPECT_EQ(listReportCaption(ListReport::RecordingProtocol), "Recording Protocol");
}

}  // namespace

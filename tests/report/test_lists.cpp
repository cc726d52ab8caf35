// The track lists and the recording protocol on a compilation database, as page models and PDF,
// and the record sets that feed them.
#include <gtest/gtest.h>

#include "engine/workspace.h"
#include "report_samples.h"
#include "reports/list_reports.h"
#include "reports/list_sources.h"
#include "support/databases.h"
#include "support/list_samples.h"

using namespace reports;
using namespace reporttest;
using report_engine::PageModel;

namespace {

class Lists : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::fillListSamples(path);
        database = engine::Workspace::defaultWorkspace().openDatabase(path);
    }
    PageModel build(ListReport kind, qint64 id = 1, const QLocale& locale = QLocale::c()) {
        return buildListReport(database, kind, id, listPaper(locale), QDate(2026, 11, 23));
    }
    // The PDF's text with every run of white space as one blank.
    QString pdfText(ListReport kind, qint64 id, const QLocale& locale = QLocale::c()) {
        exportListPdf(database, kind, id, pdf, listPaper(locale), QDate(2026, 11, 23));
        return runProgram("pdftotext", {"-layout", pdf, "-"});
    }
    testsupport::TempDir dir;
    const QString path = dir.file("lists.mdb");
    const QString pdf = dir.file("list.pdf");
    engine::Database database;
};

// The track without a year keeps the blanks after its time; a compilation without manufacturer
// shows its format alone.
TEST_F(Lists, TracksOnACompilationInMediumOrderWithTheirComputedTexts) {
    const report_engine::Page page = build(ListReport::TracksCompilation, 1).pages.value(0);
    EXPECT_EQ(textsNamed(page, "fldCompilationTitle"), QStringList{"Road Trip     0:05:22"});
    EXPECT_EQ(textsNamed(page, "fldTargetIndex"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(textsNamed(page, "fldPerformer"),
              (QStringList{"Miles Davis", "The Beatles", "The Beatles"}));
    EXPECT_EQ(textsNamed(page, "fldTrackExtended"),
              (QStringList{"So What   0:59   1959", "Help!   2:18   ", "Yesterday   2:05   1965"}));
    EXPECT_EQ(textsNamed(page, "fldLive"), QStringList{"Recorded Live"});
    EXPECT_EQ(topsOf(page, "fldLive"), QList({topsOf(page, "fldTrackExtended")[1] + 250}));
    EXPECT_EQ(textsNamed(page, "fldFormatManufact") + textsNamed(page, "fldDate") +
                  textsNamed(page, "fldBox"),
              (QStringList{"MD, Sony", "12.05.01", "Shelf A"}));
    const QString autumn =
        pdfText(ListReport::TracksCompilation, 2, QLocale(QLocale::English, QLocale::UnitedStates))
            .simplified();
    for (const char* expected :
         {"Autumn 1:00:00", "So What 50:00 1959", "Feeling Good 10:00", "CD-ROM Page 1 of 1"}) {
        EXPECT_TRUE(autumn.contains(expected)) << expected << "\n" << autumn.toStdString();
    }
    EXPECT_EQ(pdfPageSize(pdf).first, QSizeF(612, 792));
    EXPECT_TRUE(
        runProgram("pdfinfo", {pdf}).contains(listReportCaption(ListReport::TracksCompilation)));
}

// Without a year the text ends at the time; equal titles by compilation name; each performer's
// header stands above its first track.
TEST_F(Lists, AllTracksGroupedByPerformerAndAlbum) {
    const report_engine::Page page = build(ListReport::TracksAll).pages.value(0);
    EXPECT_EQ(textsNamed(page, "lblDate"), QStringList{"23.11.26"});
    EXPECT_EQ(textsNamed(page, "fldTrackPerformer"),
              (QStringList{"The Beatles", "Miles Davis", "Nina Simone"}));
    EXPECT_EQ(textsNamed(page, "fldAlbum"),
              (QStringList{"Help!", "Kind of Blue", "I Put a Spell on You"}));
    EXPECT_EQ(textsNamed(page, "fldTrackExtended"),
              (QStringList{"Help!   2:18", "Yesterday   2:05   1965", "So What   50:00   1959",
                           "So What   0:59   1959", "Feeling Good   10:00"}));
    EXPECT_EQ(textsNamed(page, "fldCompilationName"),
              (QStringList{"Road Trip", "Road Trip", "Autumn", "Road Trip", "Autumn"}));
    EXPECT_EQ(textsNamed(page, "fldTargetIndex"), (QStringList{"2", "3", "1", "1", "2"}));
    EXPECT_GT(topsOf(page, "fldTrackPerformer")[1],
              itemsNamed(page, "fldTrackExtended")[1].rect.bottom());
    EXPECT_LT(itemsNamed(page, "fldTrackPerformer")[1].rect.bottom(),
              topsOf(page, "fldTrackExtended")[2]);
}

// Help! stands in two places: two rows, each under its own location; the albums come before the
// tracks, the closing rule between them.
TEST_F(Lists, TheRecordingProtocolListsTheAlbumsNeededByLocationThenTheTracks) {
    const report_engine::Page page = build(ListReport::RecordingProtocol, 1).pages.value(0);
    EXPECT_EQ(textsNamed(page, "fldAlbumLocation"),
              (QStringList{"Attic box", "Jazz shelf", "Pop shelf"}));
    EXPECT_EQ(textsNamed(page, "fldAlbum_Title"), (QStringList{"Help!", "Kind of Blue", "Help!"}));
    EXPECT_EQ(textsNamed(page, "fldArtistSort"),
              (QStringList{"Beatles, The", "Davis, Miles", "Beatles, The"}));
    EXPECT_EQ(textsNamed(page, "fldItemIndex"), (QStringList{"1 - 1", "1 - 2", "1 - 13"}));
    EXPECT_EQ(textsNamed(page, "fldLength"), (QStringList{"0:59", "2:18", "2:05"}));
    EXPECT_EQ(textsNamed(page, "fldTrack"), (QStringList{"So What", "Help!", "Yesterday"}));
    const int rule = itemsNamed(page, "Line3").value(0).line.y1();
    EXPECT_LT(itemsNamed(page, "fldAlbum_Title").last().rect.bottom(), rule);
    EXPECT_LT(rule, topsOf(page, "fldTargetIndex")[0]);
}

// Every list on both papers: each page says "Page N of M" and nothing lies outside the
// printable area; performers and albums continued on a new page get their headers again.
TEST_F(Lists, LongListsBreakWithTheirNumbersAndStayOnThePaper) {
    testsupport::fillLongCompilation(path, 10, "Long Haul", 150, 30);
    for (const ListReport kind :
         {ListReport::TracksCompilation, ListReport::TracksAll, ListReport::RecordingProtocol}) {
        for (const QLocale& locale :
             {QLocale(QLocale::German), QLocale(QLocale::English, QLocale::UnitedStates)}) {
            SCOPED_TRACE(listReportCaption(kind).toStdString() + " " + locale.name().toStdString());
            const PageModel model = build(kind, 10, locale);
            ASSERT_GT(model.pages.size(), 2);
            EXPECT_EQ(model.setup.size(), locale.territory() == QLocale::UnitedStates
                                              ? QSize(12240, 15840)
                                              : QSize(11906, 16838));
            const QRect printable = listPaper(locale).printable().adjusted(0, 0, 1, 1);
            for (int i = 0; i < model.pages.size(); ++i) {
                const report_engine::Page& page = model.pages[i];
                EXPECT_EQ(textsNamed(page, "txtPageNumber") + textsNamed(page, "txtPageCount"),
                          (QStringList{QString("Page %1 of").arg(i + 1),
                                       QString::number(model.pages.size())}));
                for (const report_engine::PageItem& item : page.items) {
                    const QRect box = item.kind == report_engine::ItemKind::Line
                                          ? QRect(item.line.p1(), item.line.p2()).normalized()
                                          : item.rect;
                    EXPECT_TRUE(printable.contains(box))
                        << item.name.toStdString() << " on page " << i + 1;
                }
                if (kind == ListReport::TracksAll && i > 0) {
                    const int firstTrack = topsOf(page, "fldTrackExtended").value(0);
                    EXPECT_LT(topsOf(page, "fldTrackPerformer").value(0, firstTrack), firstTrack);
                    EXPECT_LT(topsOf(page, "fldAlbum").value(0, firstTrack), firstTrack);
                }
            }
        }
    }
    const QStringList pages =
        pdfText(ListReport::RecordingProtocol, 10).split('\f', Qt::SkipEmptyParts);
    for (int i = 0; i < pages.size(); ++i) {
        EXPECT_TRUE(pages[i].simplified().contains("Long Haul 8:20:00")) << pages[i].toStdString();
        EXPECT_TRUE(pages[i].contains(QString("Page %1 of %2").arg(i + 1).arg(pages.size())));
    }
    EXPECT_EQ(pdfPageSize(pdf).second, "A4");
}

}  // namespace

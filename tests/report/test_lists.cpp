// The track lists and the recording protocol on a compilation database, as page models and PDF,
// and the record sets that feed them.
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

#include "engine/workspace.h"
#include "report_samples.h"
#include "reports/list_reports.h"
#include "reports/list_sources.h"
#include "support/databases.h"
#include "support/list_samples.h"
#include "support/temp_dir.h"

using namespace reports;
using namespace reporttest;
using report_engine::PageModel;

namespace {

// The standard output of a program that must succeed (pdftotext, pdfinfo).
QString runProgram(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(30000) && process.exitCode() == 0)
        << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

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
    testsupport::TempDir dir;
    const QString path = dir.file("lists.mdb");
    const QString pdf = dir.file("list.pdf");
    engine::Database database;
};

// The tracks of a compilation in medium order with their computed texts: the track without a year
// keeps the blanks after its time; a compilation without manufacturer shows its format alone.
TEST_F(Lists, TracksOnACompilationAndTheRecordingProtocolOfTheirAlbums) {
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
    const report_engine::Page autumn = build(ListReport::TracksCompilation, 2).pages.value(0);
    EXPECT_EQ(textsNamed(autumn, "fldCompilationTitle") + textsNamed(autumn, "fldFormatManufact"),
              (QStringList{"Autumn     1:00:00", "CD-ROM"}));
    // The recording protocol: Help! stands in two places, two rows each under its own location;
    // the albums come before the tracks, the closing rule between them.
    const report_engine::Page protocol = build(ListReport::RecordingProtocol, 1).pages.value(0);
    EXPECT_EQ(textsNamed(protocol, "fldAlbumLocation") + textsNamed(protocol, "fldAlbum_Title") +
                  textsNamed(protocol, "fldArtistSort"),
              (QStringList{"Attic box", "Jazz shelf", "Pop shelf", "Help!", "Kind of Blue", "Help!",
                           "Beatles, The", "Davis, Miles", "Beatles, The"}));
    EXPECT_EQ(textsNamed(protocol, "fldItemIndex") + textsNamed(protocol, "fldLength") +
                  textsNamed(protocol, "fldTrack"),
              (QStringList{"1 - 1", "1 - 2", "1 - 13", "0:59", "2:18", "2:05", "So What", "Help!",
                           "Yesterday"}));
    const int rule = itemsNamed(protocol, "Line3").value(0).line.y1();
    EXPECT_LT(itemsNamed(protocol, "fldAlbum_Title").last().rect.bottom(), rule);
    EXPECT_LT(rule, topsOf(protocol, "fldTargetIndex")[0]);
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

// Every list on both papers: each page says "Page N of M" and nothing lies outside the
// printable area; performers and albums continued on a new page get their headers again. The
// PDF has the list's pages, its paper and its caption.
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
    exportListPdf(database, ListReport::RecordingProtocol, 10, pdf, listPaper(QLocale::c()),
                  QDate(2026, 11, 23));
    const QStringList pages =
        runProgram("pdftotext", {"-layout", pdf, "-"}).split('\f', Qt::SkipEmptyParts);
    for (int i = 0; i < pages.size(); ++i) {
        EXPECT_TRUE(pages[i].simplified().contains("Long Haul 8:20:00")) << pages[i].toStdString();
        EXPECT_TRUE(pages[i].contains(QString("Page %1 of %2").arg(i + 1).arg(pages.size())));
    }
    const QString info = runProgram("pdfinfo", {pdf});
    EXPECT_TRUE(info.contains(listReportCaption(ListReport::RecordingProtocol)) &&
                info.contains(QRegularExpression(R"(Page size:.*\(A4\))")))
        << info.toStdString();
}

}  // namespace

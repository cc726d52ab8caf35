// The lists written as PDF carry their texts and measure their paper.
#include <gtest/gtest.h>

#include <QFile>

#include "list_fixture.h"
#include "report/report_error.h"
#include "report_samples.h"

using namespace reports;
using reporttest::pdfPageSize;
using reporttest::runProgram;

namespace {

// A PDF's text with every run of white space as one blank: the extractor spaces words as it
// sees fit.
QString pdfWords(const QString& path) {
    return runProgram("pdftotext", {path, "-"}).simplified();
}

bool hasWords(const QString& text, const QString& expected) {
    return text.contains(expected.simplified());
}

using ListPdf = ListFixture;

TEST_F(ListPdf, TheTrackListsCarryNamesTimesAndFooters) {
    const QString all = dir.file("TracksByPerformer.PDF");
    exportListPdf(database, ListReport::TracksAll, 0, all, listPaper(QLocale::c()), today);
    const QString allText = pdfWords(all);
    for (const char* expected :
         {"Compilations: The Songs Sorted By Performer", "23.11.26", "The Beatles", "Road Trip",
          "Autumn", "So What   50:00   1959", "Feeling Good   10:00", "Page 1 of 1"}) {
        EXPECT_TRUE(hasWords(allText, expected)) << expected << "\n" << allText.toStdString();
    }
    EXPECT_EQ(pdfPageSize(all).second, "A4");

    const QString one = dir.file("TracksOnCompilation.PDF");
    exportListPdf(database, ListReport::TracksCompilation, 2, one,
                  listPaper(QLocale(QLocale::English, QLocale::UnitedStates)), today);
    const QString oneText = pdfWords(one);
    for (const char* expected : {"Autumn     1:00:00", "CD-ROM", "Nina Simone", "Page 1 of 1"}) {
        EXPECT_TRUE(hasWords(oneText, expected)) << expected << "\n" << oneText.toStdString();
    }
    EXPECT_FALSE(oneText.contains("CD-ROM,"));
    EXPECT_EQ(pdfPageSize(one).first, QSizeF(612, 792));
    EXPECT_TRUE(runProgram("pdfinfo", {one}).contains("Tracks on Selected Compilation"));
}

TEST_F(ListPdf, ALongListNumbersEveryPage) {
    testsupport::fillLongCompilation(path, 10, "Long Haul", 150);
    const QString pdf = dir.file("protocol.pdf");
    exportListPdf(database, ListReport::RecordingProtocol, 10, pdf, listPaper(QLocale::c()), today);
    const QString text = runProgram("pdftotext", {"-layout", pdf, "-"});
    const QStringList pages = text.split('\f', Qt::SkipEmptyParts);
    ASSERT_GE(pages.size(), 3);
    for (int i = 0; i < pages.size(); ++i) {
        EXPECT_TRUE(pages[i].contains(QString("Page %1 of %2").arg(i + 1).arg(pages.size())))
            << pages[i].toStdString();
        EXPECT_TRUE(pages[i].simplified().contains("Long Haul 8:20:00")) << pages[i].toStdString();
    }
}

TEST_F(ListPdf, AFileThatCannotBeWrittenIsAWriteErrorAndKeepsTheEarlierExport) {
    const QString pdf = dir.file("TracksOnCompilation.PDF");
    QFile earlier(pdf);
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.write("earlier export");
    earlier.close();
    QFile::setPermissions(pdf, QFile::ReadOwner);
    EXPECT_THROW(exportListPdf(database, ListReport::TracksCompilation, 1, pdf,
                               listPaper(QLocale::c()), today),
                 report::WriteError);
    EXPECT_EQ(testsupport::fileBytes(pdf), "earlier export");
}

}  // namespace

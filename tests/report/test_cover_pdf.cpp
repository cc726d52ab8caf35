// Covers as PDF, measured on the rendered page (their text is read back in the cover command's
// tests).
#include <gtest/gtest.h>

#include "cover_fixture.h"
#include "report/pdf_export.h"
#include "support/pdf_pages.h"

using namespace covertest;

namespace {

using testsupport::darkRuns;
using testsupport::renderedPdfPage;
using testsupport::renderedPixelOf;
constexpr double kMmPerPixel = testsupport::kMmPerRenderedPixel;

class CoverPdf : public ::testing::Test {
  protected:
    QString exported(qint64 id, const QString& name) {
        const QString path = dir.file(name);
        report::exportPdf(db.cover(id), path);
        return path;
    }
    testsupport::TempDir dir;
    CoverDatabase db;
};

TEST_F(CoverPdf, TheCdRomInlayMeasures150By118MillimetresWithSixMillimetreSpines) {
    const qint64 id = db.addCompilation("Road Songs", "CD-ROM", composedRtf(numberedLines(4)));
    const QImage page = renderedPdfPage(exported(id, "cd.pdf"));
    EXPECT_NEAR(page.width() * kMmPerPixel, 210.0, 0.2);

    // Across the inlay above the text: frame, fold, fold, frame.
    const QVector<double> across = darkRuns(page, renderedPixelOf(1240 + 200), Qt::Horizontal);
    ASSERT_EQ(across.size(), 4);
    EXPECT_NEAR((across[3] - across[0]) * kMmPerPixel, 150.0, 0.2);
    EXPECT_NEAR((across[1] - across[0]) * kMmPerPixel, 6.0, 0.2);
    EXPECT_NEAR((across[3] - across[2]) * kMmPerPixel, 6.0, 0.2);
    EXPECT_NEAR(across[0] * kMmPerPixel, 1500 * 25.4 / 1440, 0.2);

    // Down the inlay beside the text: top and bottom of the frame.
    const QVector<double> down = darkRuns(page, renderedPixelOf(1840 + 100), Qt::Vertical);
    ASSERT_EQ(down.size(), 2);
    EXPECT_NEAR((down[1] - down[0]) * kMmPerPixel, 118.0, 0.2);
}

TEST_F(CoverPdf, TheMdStripMeasures45By254Millimetres) {
    const qint64 id = db.addCompilation("Summer Mix", "MD", composedRtf({"Adams / Baker"}));
    db.addTrack(id, 1, "Adams", "Morning");
    db.addTrack(id, 2, "Baker", "Night Train");
    const QImage page = renderedPdfPage(exported(id, "md.pdf"));

    // Across the strip under its text, between the fold marks: its two edges only.
    const QVector<double> across = darkRuns(page, renderedPixelOf(6000), Qt::Horizontal);
    ASSERT_EQ(across.size(), 2);
    EXPECT_NEAR((across[1] - across[0]) * kMmPerPixel, 45.0, 0.2);
    // Down the strip by its left edge, clear of the fold marks: top, the rule under the title,
    // bottom.
    const QVector<double> down = darkRuns(page, renderedPixelOf(1200 + 80), Qt::Vertical);
    ASSERT_EQ(down.size(), 3);
    EXPECT_NEAR((down[2] - down[0]) * kMmPerPixel, 254.0, 0.2);
    EXPECT_NEAR(down[0] * kMmPerPixel, 800 * 25.4 / 1440, 0.2);
}

}  // namespace

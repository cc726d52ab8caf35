// The fonts the layouts name resolve to fonts of the same metrics, so texts measure as designed.
#include <gtest/gtest.h>

#include <QFontInfo>
#include <QFontMetricsF>

#include "report/text_measure.h"

using report::ReportFont;

namespace {

// Advance widths in font units of a 2048-unit em, as Arial, Times New Roman and Courier New
// (and their metric-compatible replacements) have them.
double advance(const QString& family, const QString& text) {
    QFont font(family);
    font.setPixelSize(2048);
    font.setHintingPreference(QFont::PreferNoHinting);
    return QFontMetricsF(font).horizontalAdvance(text);
}

TEST(Fonts, TheLayoutsFontsHaveTheirDesignedWidths) {
    EXPECT_NEAR(advance("Arial", "Arial"), 1366 + 682 + 455 + 1139 + 455, 2);
    EXPECT_NEAR(advance("Arial", "W"), 1933, 1);
    EXPECT_NEAR(advance("Times New Roman", "A"), 1479, 1);
    EXPECT_NEAR(advance("Times New Roman", "i"), 569, 1);
    EXPECT_NEAR(advance("Courier New", "iW"), 2 * 1229, 2);
}

TEST(Fonts, ArialResolvesToAFontWithArialsMetrics) {
    const QFontInfo arial{QFont("Arial")};
    EXPECT_FALSE(arial.family().contains("DejaVu")) << arial.family().toStdString();
    EXPECT_EQ(advance("Arial", "Total Playtime 1:14:05"),
              advance("Liberation Sans", "Total Playtime 1:14:05"));
    // A different design measures differently: the check above can tell fonts apart.
    EXPECT_NE(advance("DejaVu Sans", "Total Playtime 1:14:05"),
              advance("Liberation Sans", "Total Playtime 1:14:05"));
}

TEST(Fonts, MeasuresInTwipsFollowThePointSize) {
    const ReportFont ten{"Arial", 10};
    const ReportFont twenty{"Arial", 20};
    const QString text = "Compilations: The Songs Sorted By Performer";
    // 10 points are 200 twips: the width is the 2048-unit advance scaled to 200.
    EXPECT_NEAR(report::textWidth(ten, text), advance("Arial", text) * 200 / 2048, 1);
    EXPECT_NEAR(report::textWidth(twenty, text), 2 * report::textWidth(ten, text), 1);
    const int oneLine = report::textHeight(ten, text, 100000);
    EXPECT_NEAR(oneLine, 230, 10);  // Arial's line spacing is 1.15 em
    EXPECT_NEAR(report::textHeight(ten, text, 2000), 3 * oneLine, 20) << "three lines in 2000";
    EXPECT_EQ(report::textHeight(ten, "", 2000), 0);
    EXPECT_EQ(report::textHeight(ten, text, 2000, false), oneLine);
}

}  // namespace

// The computed texts of the track lists and the recording protocol.
#include <gtest/gtest.h>

#include "engine/jet_format.h"
#include "query/time_text.h"
#include "reports/list_texts.h"
#include "support/document_summary.h"

using namespace reports;

namespace {

TEST(ListTexts, TrackTimesShowMinutesWithoutALeadingZeroAndTwoDigitSeconds) {
    EXPECT_EQ(trackTime(205), "3:25");
    EXPECT_EQ(trackTime(59), "0:59");
    EXPECT_EQ(trackTime(600), "10:00");
    EXPECT_EQ(trackTime(QVariant(61.0)), "1:01");
    EXPECT_EQ(trackTime(QVariant()), "");
}

TEST(ListTexts, TotalTimesShowHoursWithoutALeadingZero) {
    EXPECT_EQ(totalTime(4475), "1:14:35");
    EXPECT_EQ(totalTime(3600), "1:00:00");
    EXPECT_EQ(totalTime(322), "0:05:22");
    EXPECT_EQ(compilationTitle("Road Trip", 3600), "Road Trip     1:00:00");
}

TEST(ListTexts, TimesReadAsTheFormatPatternsReadTheTimeText) {
    for (int seconds = 0; seconds < 100000; seconds += 197) {
        const QString text = query::formatTime(seconds);
        EXPECT_EQ(trackTime(seconds), engine::formatJetValue(text, "N:Ss")) << seconds;
        EXPECT_EQ(totalTime(seconds), engine::formatJetValue(text, "H:Nn:Ss")) << seconds;
    }
    EXPECT_EQ(totalTime(90000), "25:00:00");  // no time of day: the text as it is
}

TEST(ListTexts, TheManufacturerFollowsTheFormatOnlyWhenThereIsOne) {
    EXPECT_EQ(formatAndManufacturer("MD", "Sony"), "MD, Sony");
    EXPECT_EQ(formatAndManufacturer("CD-ROM", QVariant()), "CD-ROM");
}

TEST(ListTexts, AnEmptyYearKeepsItsBlanksOnlyInTheCompilationsList) {
    EXPECT_EQ(titleTimeAndYear("Help!", 138, 1965), "Help!   2:18   1965");
    EXPECT_EQ(titleTimeAndYear("Help!", 138, QVariant()), "Help!   2:18   ");
    EXPECT_EQ(titleTimeMaybeYear("Help!", 138, QVariant(1965.0)), "Help!   2:18   1965");
    EXPECT_EQ(titleTimeMaybeYear("Help!", 138, QVariant()), "Help!   2:18");
}

TEST(ListTexts, ItemIndexLiveAndStoredValues) {
    EXPECT_EQ(itemAndIndex(1, 13), "1 - 13");
    EXPECT_EQ(liveText(true), "Recorded Live");
    EXPECT_EQ(liveText(-1), "Recorded Live");
    EXPECT_EQ(liveText(false), "");
    EXPECT_EQ(liveText(QVariant()), "");
    EXPECT_EQ(valueText(QVariant(2.5)), "2.5");
    EXPECT_EQ(dateText(QDate(2001, 5, 12)), "12.05.01");
    EXPECT_EQ(dateText(QStringLiteral("2001-05-12 00:00:00")), "12.05.01");
    EXPECT_EQ(dateText(QVariant()), "");
}

}  // namespace

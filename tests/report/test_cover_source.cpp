// Which cover a compilation gets, the row it prints and its play time.
#include <gtest/gtest.h>

#include "cover_fixture.h"
#include "report/report_error.h"
#include "reports/cover_source.h"
#include "store/compilation_queries.h"

using namespace covertest;

namespace {

TEST(CoverChoice, MdAndCdRomInAnyLetterCaseHaveACover) {
    for (const char* md : {"MD", "Md", "md", "mD"}) {
        EXPECT_EQ(store::coverKindOf(md), store::CoverKind::Md) << md;
    }
    for (const char* cd : {"CD-ROM", "cd-rom", "Cd-Rom"}) {
        EXPECT_EQ(store::coverKindOf(cd), store::CoverKind::CdRom) << cd;
    }
    for (const char* other : {"Cassette", "CD", "CDROM", " MD", ""}) {
        EXPECT_EQ(store::coverKindOf(other), std::nullopt) << other;
    }
}

TEST(CoverChoice, TheFormatIsCheckedBeforeTheTracks) {
    EXPECT_EQ(reports::coverRefusal("Cassette", 0),
              "There is no cover available for the format: Cassette");
    EXPECT_EQ(reports::coverRefusal("DAT", 12), "There is no cover available for the format: DAT");
    EXPECT_EQ(reports::coverRefusal("md", 0), "The selected compilation contains no tracks");
    EXPECT_EQ(reports::coverRefusal("CD-ROM", 1), std::nullopt);
}

TEST(CoverSource, IsTheCompilationStatementNarrowedToOneId) {
    QString expected = store::standardStatement(QStringLiteral("compilation"));
    expected.replace(QStringLiteral("ORDER BY"),
                     QStringLiteral("WHERE    Compilation.CompilationID_P = 42 ORDER BY"));
    EXPECT_EQ(store::compilationRowStatement(42) + " ORDER BY Compilation.Name", expected);
}

TEST(CoverSource, ThePlayTimeHasHoursWithoutALeadingZero) {
    EXPECT_EQ(reports::playtimeText(4445), "1:14:05");
    EXPECT_EQ(reports::playtimeText(205), "0:03:25");
    EXPECT_EQ(reports::playtimeText(0), "0:00:00");
    EXPECT_EQ(reports::playtimeText(36000), "10:00:00");
    EXPECT_EQ(reports::playtimeText(360000), "100:00:00");
}

TEST(CoverReport, AFormatWithoutCoverOrAnUnknownIdIsAnError) {
    CoverDatabase db;
    const qint64 tape = db.addCompilation("Tape", "Cassette", "Adams");
    try {
        db.cover(tape);
        FAIL() << "a cassette has no cover";
    } catch (const report::ReportError& error) {
        EXPECT_EQ(error.description(), "There is no cover available for the format: Cassette");
    }
    EXPECT_THROW(db.cover(99), report::ReportError);
}

}  // namespace

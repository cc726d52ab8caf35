// cover as a script uses it: the print command's checks, then the PDF.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "app/program_run.h"
#include "support/databases.h"
#include "support/temp_dir.h"

using testsupport::cli;
using testsupport::ProgramRun;

namespace {

class CoverCommand : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("c.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length,
                                     CoverMemo)
            VALUES (1, 'Mix', 2, 556, 'md', 74, 'Adams / Baker'),
                   (2, 'Disc', 2, 4445, 'Cd-Rom', 80, 'Adams   Morning'),
                   (3, 'Tape', 2, 556, 'Cassette', 90, NULL),
                   (4, 'Empty', 0, 0, 'MD', 74, NULL);
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name,
                                          ArtistSort, Track_Title, Length)
            VALUES (1, 1, 'Adams', 'Adams', 'Morning', 165), (1, 2, 'Baker', 'Baker', 'Noon', 391),
                   (2, 1, 'Adams', 'Adams', 'Morning', 165), (2, 2, 'Baker', 'Baker', 'Noon', 391),
                   (3, 1, 'Adams', 'Adams', 'Morning', 165);
        )sql");
    }

    QString pdfText(const QString& pdf) {
        QProcess process;
        process.start("pdftotext", {pdf, "-"});
        process.waitForFinished(30000);
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    testsupport::TempDir dir;
    QString path;
};

TEST_F(CoverCommand, WritesTheCoverForTheFormatAsPdf) {
    const QString md = dir.file("mix.pdf");
    const ProgramRun mix = cli({"cover", path, "Mix", md});
    ASSERT_EQ(mix.exitCode, 0) << mix.err.toStdString();
    const QString mixText = pdfText(md);
    for (const char* expected : {"Mix", "Adams / Baker", "Morning", "Noon"}) {
        EXPECT_TRUE(mixText.contains(expected)) << expected << " in\n" << mixText.toStdString();
    }
    EXPECT_FALSE(mixText.contains("Total Playtime"));

    const QString cd = dir.file("disc.pdf");
    ASSERT_EQ(cli({"cover", path, "Disc", cd}).exitCode, 0);
    const QString discText = pdfText(cd);
    EXPECT_EQ(discText.count("Disc"), 3) << discText.toStdString();
    EXPECT_TRUE(discText.contains("Total Playtime 1:14:05")) << discText.toStdString();
}

TEST_F(CoverCommand, RefusesAsThePrintCommandDoesAndWritesNothing) {
    const QString pdf = dir.file("out.pdf");
    const struct {
        const char* name;
        const char* message;
    } refused[] = {{"Tape", "There is no cover available for the format: Cassette\n"},
                   {"Empty", "The selected compilation contains no tracks\n"},
                   {"Nobody", "There is no compilation named \"Nobody\".\n"}};
    for (const auto& each : refused) {
        const ProgramRun run = cli({"cover", path, each.name, pdf});
        EXPECT_EQ(run.exitCode, 1) << each.name;
        EXPECT_TRUE(run.err.endsWith(each.message)) << run.err.toStdString();
        EXPECT_FALSE(QFile::exists(pdf)) << each.name;
    }
    EXPECT_EQ(cli({"cover", path, "Mix"}).exitCode, 2);
}

TEST_F(CoverCommand, AFolderThatCannotBeWrittenIsAClearMessage) {
    const ProgramRun run = cli({"cover", path, "Mix", dir.file("missing/folder/mix.pdf")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("mix.pdf")) << run.err.toStdString();
}

// /dev/full stands for a full disk; a device is written to, never replaced by a file.
TEST_F(CoverCommand, AFullDiskIsNamedAsTheCause) {
    if (!QFileInfo::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    const ProgramRun run = cli({"cover", path, "Mix", "/dev/full"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(
        run.err.endsWith("Cannot write the PDF file \"/dev/full\": No space left on device\n"))
        << run.err.toStdString();
    EXPECT_FALSE(QFileInfo("/dev/full").isFile());
}

}  // namespace

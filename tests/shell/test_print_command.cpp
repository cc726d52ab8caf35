// The print tool's choices and the checks made before a list, cover or PDF is produced.
#include <gtest/gtest.h>

#include "engine/database.h"
#include "engine/workspace.h"
#include "shell/print_command.h"
#include "shell/toolbar_tools.h"
#include "support/databases.h"
#include "support/list_samples.h"
#include "support/temp_dir.h"

namespace {

using reports::ListReport;
using shell::CurrentCompilation;
using shell::PrintOutput;
using shell::printRefusal;

TEST(PrintChoices, EachEntryOfTheListProducesItsOutput) {
    const auto& choices = shell::printChoices();
    ASSERT_EQ(choices.size(), 6u);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(choices[size_t(i)].index, i);
        EXPECT_EQ(choices[size_t(i)].entry, shell::reportTypes()[i]);
        EXPECT_EQ(shell::printChoice(i), &choices[size_t(i)]);
    }
    EXPECT_EQ(shell::printChoice(6), nullptr);
    EXPECT_EQ(shell::printChoice(-1), nullptr);
    EXPECT_EQ(shell::printChoice(shell::kDefaultReportType)->report, ListReport::RecordingProtocol);

    const shell::PrintChoice& allPdf = *shell::printChoice(4);
    EXPECT_EQ(allPdf.output, PrintOutput::Pdf);
    EXPECT_EQ(allPdf.report, ListReport::TracksAll);
    EXPECT_TRUE(allPdf.allCompilations);
    const shell::PrintChoice& onePdf = *shell::printChoice(5);
    EXPECT_EQ(onePdf.report, ListReport::TracksCompilation);
    EXPECT_FALSE(onePdf.allCompilations);
    EXPECT_EQ(shell::printChoice(0)->report, ListReport::TracksAll);
    EXPECT_EQ(shell::printChoice(1)->report, ListReport::TracksCompilation);
    EXPECT_EQ(shell::printChoice(3)->output, PrintOutput::Cover);
}

TEST(PrintChoices, ThePdfFilesGoToTheProgramsDataFolder) {
    const testsupport::TempDir home;
    const QByteArray earlier = qgetenv("MIXORAMA_HOME");  // later tests need the real one
    qputenv("MIXORAMA_HOME", home.path().toLocal8Bit());
    EXPECT_EQ(shell::pdfPath(*shell::printChoice(4)), home.file("data/TracksByPerformer.PDF"));
    EXPECT_EQ(shell::pdfPath(*shell::printChoice(5)), home.file("data/TracksOnCompilation.PDF"));
    qputenv("MIXORAMA_HOME", earlier);
}

class PrintChecks : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path,
                             "INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length) "
                             "VALUES (7, 'Still Empty', 'DVD', 120)");
    }
    engine::Database open() { return engine::Workspace::defaultWorkspace().openDatabase(path); }
    std::optional<QString> refusal(int index, std::optional<CurrentCompilation> current) {
        engine::Database database = open();
        return printRefusal(database, *shell::printChoice(index), current);
    }

    testsupport::TempDir dir;
    QString path = dir.file("print.mdb");
};

TEST_F(PrintChecks, TheListsOfAllCompilationsNeedATrackSomewhere) {
    const CurrentCompilation withTracks{7, 3, "MD"};
    EXPECT_EQ(refusal(0, withTracks), shell::kNoTracksAnywhere);
    EXPECT_EQ(refusal(4, withTracks), shell::kNoTracksAnywhere);

    testsupport::fillListSamples(path);
    // Any track will do, whatever the current compilation holds.
    EXPECT_EQ(refusal(0, CurrentCompilation{7, 0, "DVD"}), std::nullopt);
    EXPECT_EQ(refusal(4, std::nullopt), std::nullopt);
}

TEST_F(PrintChecks, TheListsOfOneCompilationNeedItsTracks) {
    testsupport::fillListSamples(path);
    for (const int index : {1, 2, 5}) {
        EXPECT_EQ(refusal(index, CurrentCompilation{7, 0, "DVD"}), shell::kNoTracksOnCompilation)
            << index;
        EXPECT_EQ(refusal(index, std::nullopt), shell::kNoTracksOnCompilation) << index;
        EXPECT_EQ(refusal(index, CurrentCompilation{1, 3, "DVD"}), std::nullopt) << index;
    }
}

TEST_F(PrintChecks, ACoverNeedsAKnownFormatFirstThenTracks) {
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 0, "DVD"}),
              "There is no cover available for the format: DVD");
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 4, "Cassette"}),
              "There is no cover available for the format: Cassette");
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 0, "md"}), shell::kNoTracksOnCompilation);
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 2, "Md"}), std::nullopt);
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 2, "cd-ROM"}), std::nullopt);
}

}  // namespace

TEST(CoverViews, TheFormatInAnyCaseChoosesTheCaptionAndTheOpeningZoom) {
    for (const QString format : {"MD", "Md", "md"}) {
        const std::optional<shell::CoverView> view = shell::coverView(format);
        ASSERT_TRUE(view) << format.toStdString();
        EXPECT_EQ(view->caption, "MD Cover");
        EXPECT_EQ(view->zoomPercent, 110);
    }
    for (const QString format : {"CD-ROM", "cd-rom", "Cd-Rom"}) {
        const std::optional<shell::CoverView> view = shell::coverView(format);
        ASSERT_TRUE(view) << format.toStdString();
        EXPECT_EQ(view->caption, "CD-ROM Cover");
        EXPECT_EQ(view->zoomPercent, std::nullopt);  // fits the window
    }
    for (const QString format : {"CD", "DVD", "MD ", "cdrom", ""}) {
        EXPECT_FALSE(shell::coverView(format)) << format.toStdString();
    }
}

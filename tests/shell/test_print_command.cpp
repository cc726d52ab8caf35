// The print tool's choices and the checks made before a list, cover or PDF is produced.
#include "shell/print_command.h"
#include "shell_fixture.h"
#include "support/list_samples.h"

namespace {

using shell::CurrentCompilation;

class PrintChecks : public ShellTest {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path,
                             "INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length) "
                             "VALUES (7, 'Still Empty', 'DVD', 120)");
    }
    std::optional<QString> refusal(int index, std::optional<CurrentCompilation> current) {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
        return shell::printRefusal(database, *shell::printChoice(index), current);
    }

    const QString path = dir.file("print.mdb");
};

TEST_F(PrintChecks, ListsNeedTracksWhereTheyReadThem) {
    EXPECT_EQ(refusal(4, CurrentCompilation{7, 3, "MD"}), shell::kNoTracksAnywhere);
    testsupport::fillListSamples(path);
    // Any track will do for the lists of all, whatever the current compilation holds.
    EXPECT_EQ(refusal(0, std::nullopt), std::nullopt);
    for (const int index : {1, 2, 5}) {
        EXPECT_EQ(refusal(index, CurrentCompilation{7, 0, "DVD"}), shell::kNoTracksOnCompilation);
        EXPECT_EQ(refusal(index, CurrentCompilation{1, 3, "DVD"}), std::nullopt);
    }
}

TEST_F(PrintChecks, ACoverNeedsAKnownFormatInAnyCaseFirstThenTracks) {
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 4, "Cassette"}),
              "There is no cover available for the format: Cassette");
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 0, "md"}), shell::kNoTracksOnCompilation);
    EXPECT_EQ(refusal(3, CurrentCompilation{7, 2, "cd-ROM"}), std::nullopt);
    EXPECT_EQ(shell::coverView("Md")->zoomPercent, 110);
    EXPECT_EQ(shell::coverView("cd-rom")->caption, "CD-ROM Cover");
    EXPECT_EQ(shell::coverView("cd-rom")->zoomPercent, std::nullopt);  // fits the window
    for (const QString format : {"CD", "DVD", "MD ", "cdrom", ""})
        EXPECT_FALSE(shell::coverView(format)) << format.toStdString();
}

}  // namespace

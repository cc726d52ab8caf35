// add-compilation and cover-text as a script uses them.
#include <gtest/gtest.h>

#include "app/program_run.h"
#include "support/databases.h"
#include "support/temp_dir.h"

using testsupport::cli;
using testsupport::ProgramRun;

namespace {

class CompilationCommands : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("c.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length)
            VALUES (1, 'Mix', 2, 556, 'MD', 74), (2, 'Disc', 2, 556, 'CD-ROM', 80),
                   (3, 'Empty', 0, 0, 'MD', 74);
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name,
                                          ArtistSort, Track_Title, Album_Title, Length)
            VALUES (1, 1, 'Adams', 'Adams', 'Morning', 'Gold', 165),
                   (1, 2, 'Baker', 'Baker', 'Night Train', 'Gold', 391),
                   (2, 1, 'Adams', 'Adams', 'Morning', 'Gold', 165),
                   (2, 2, 'Baker', 'Baker', 'Night Train', 'Gold', 391);
        )sql");
    }
    QString stored(const QString& sql) { return testsupport::queryRaw(path, sql); }

    testsupport::TempDir dir;
    QString path;
};

TEST_F(CompilationCommands, AddStoresTheValuesAndListsANewManufacturer) {
    const ProgramRun added =
        cli({"add-compilation", path, "New One", "--format", "MD", "--length", "80",
             "--manufacturer", "Acme", "--storage", "Box 4", "--date", "21.01.97"});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    EXPECT_EQ(stored("SELECT Manufacturer || '|' || Box || '|' || RecDate || '|' || C_Length || "
                     "'|' || (Notes IS NULL) FROM Compilation WHERE Name = 'New One'"),
              "Acme|Box 4|1997-01-21|80|1");
    EXPECT_EQ(stored("SELECT Count(*) FROM LstManufacturer WHERE Manufacturer_P = 'Acme'"), "1");
}

TEST_F(CompilationCommands, AFailedCheckPrintsItsMessageAndStoresNothing) {
    const ProgramRun noLength = cli({"add-compilation", path, "X", "--format", "MD"});
    EXPECT_EQ(noLength.exitCode, 1);
    EXPECT_EQ(noLength.err, "Field 'Length': a value is requiered.\n");
    const ProgramRun duplicate =
        cli({"add-compilation", path, "MIX", "--format", "MD", "--length", "74"});
    EXPECT_EQ(duplicate.exitCode, 1);
    EXPECT_EQ(duplicate.err, "Field 'Name': value is already present.\nChoose another name.\n");
    EXPECT_EQ(cli({"add-compilation", path, "X", "--format"}).exitCode, 2);
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation"), "3");
}

// The editor's rules for values its boxes and lists cannot hold: each is refused with its own
// message and nothing is stored; the longest texts and the smallest length are taken.
TEST_F(CompilationCommands, ValuesTheEditorCannotHoldAreRefused) {
    const QString name80(80, QChar(0x00e9));
    const QString storage50(50, 's');
    struct Case {
        QString name;
        QString length;
        QString storage;
        QString message;  // empty: stored
    };
    const QString minutes = "Field 'Length': a whole number of minutes, at least 1, is required.\n";
    const Case cases[] = {
        {"Negative", "-5", "", minutes},
        {"Zero", "0", "", minutes},
        {"Half", "74.5", "", minutes},
        {"Comma", "74,25", "", minutes},
        {"Words", "long", "", "Value must be a number (integer).\n"},
        {"Huge", "40000", "", "Value must be a number (integer).\n"},
        {name80 + "x", "74", "", "Field 'Name': at most 80 characters are allowed.\n"},
        {"Box", "74", storage50 + "s", "Field 'Storage': at most 50 characters are allowed.\n"},
        {name80, "1", storage50, ""},
        {"Point Zero", "74.0", "", ""},
    };
    int expectedRows = 3;
    for (const Case& c : cases) {
        QStringList args{"add-compilation", path, c.name, "--format", "MD", "--length", c.length};
        if (!c.storage.isEmpty()) {
            args << "--storage" << c.storage;
        }
        const ProgramRun run = cli(args);
        SCOPED_TRACE(c.name.left(12).toStdString() + " " + c.length.toStdString());
        EXPECT_EQ(run.err, c.message);
        EXPECT_EQ(run.exitCode, c.message.isEmpty() ? 0 : 1);
        expectedRows += c.message.isEmpty() ? 1 : 0;
    }
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation"), QString::number(expectedRows));
    EXPECT_EQ(stored("SELECT length(Name) || '|' || length(Box) || '|' || C_Length FROM "
                     "Compilation WHERE C_Length = 1"),
              "80|50|1");
    EXPECT_EQ(stored("SELECT C_Length FROM Compilation WHERE Name = 'Point Zero'"), "74");
}

TEST_F(CompilationCommands, CoverTextPrintsTheTextThenTheBoldRangesAndStoresIt) {
    const ProgramRun songs = cli({"cover-text", path, "Mix", "ps"});
    ASSERT_EQ(songs.exitCode, 0) << songs.err.toStdString();
    EXPECT_EQ(songs.out, "1. Adams: Morning  2. Baker: Night Train\n3 7\n22 7\n");
    EXPECT_EQ(stored("SELECT CoverMemo FROM Compilation WHERE Name = 'Mix'"),
              "1. Adams: Morning  2. Baker: Night Train\n");
    EXPECT_EQ(cli({"cover-text", path, "Mix", "p", "--by-time"}).out, "Baker / Adams \n");
    EXPECT_EQ(cli({"cover-text", path, "disc", "ps"}).out,
              "1.\tAdams   Morning  [2:45]\r\n2.\tBaker   Night Train  [6:31]\n3 7\n31 7\n");
}

TEST_F(CompilationCommands, CoverTextRefusesWhatTheEditorDoesNotOffer) {
    const ProgramRun cdRom = cli({"cover-text", path, "Disc", "pa"});
    EXPECT_EQ(cdRom.exitCode, 1);
    EXPECT_TRUE(cdRom.err.contains("(ps)")) << cdRom.err.toStdString();
    const ProgramRun empty = cli({"cover-text", path, "Empty", "p"});
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_EQ(empty.err, "The selected compilation contains no tracks\n");
    EXPECT_EQ(cli({"cover-text", path, "Nowhere", "p"}).exitCode, 1);
    EXPECT_EQ(cli({"cover-text", path, "Mix", "x"}).exitCode, 2);
    EXPECT_EQ(stored("SELECT Count(CoverMemo) FROM Compilation"), "0");
}

}  // namespace

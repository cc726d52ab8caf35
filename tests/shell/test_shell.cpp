#include <gtest/gtest.h>

#include <QFile>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/program_folder.h"
#include "platform/scripted_dialogs.h"
#include "platform/split_path.h"
#include "shell/app_state.h"
#include "shell/database_commands.h"
#include "shell/database_files.h"
#include "shell/navigation.h"
#include "shell/toolbar_tools.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

TEST(SplitPath, SeparatesFolderAndBaseNameOnEitherSeparator) {
    const auto windows = platform::splitPath(R"(C:\x\coll.mdb)");
    EXPECT_EQ(windows.folder, R"(C:\x\)");
    EXPECT_EQ(windows.baseName, "coll");
    const auto unix = platform::splitPath("/home/me/music.v2/coll.backup.mdb");
    EXPECT_EQ(unix.folder, "/home/me/music.v2/");
    EXPECT_EQ(unix.baseName, "coll.backup");
    // A dot in a folder name is no extension.
    EXPECT_EQ(platform::splitPath("/data.d/coll").baseName, "coll");
    // Without any separator the whole name without extension is the folder.
    const auto bare = platform::splitPath("coll.mdb");
    EXPECT_EQ(bare.folder, "coll");
    EXPECT_TRUE(bare.baseName.isEmpty());
    EXPECT_EQ(shell::compactionTempPath(R"(C:\x\coll.mdb)"), R"(C:\x\coll.$$$)");
}

TEST(Navigation, TextsAndColours) {
    EXPECT_EQ(shell::listCountText(17, 12), "C 17    List 12");
    EXPECT_EQ(shell::listCountText(0, 0), "C 0    List 0");
    EXPECT_EQ(shell::colourCount(8), 256);
    EXPECT_EQ(shell::positionColour(shell::colourCount(8)), QColor(0, 128, 0));
    EXPECT_EQ(shell::positionColour(shell::colourCount(24)), QColor(64, 64, 64));
    // Centred across, a little above the middle down.
    EXPECT_EQ(shell::placedOver(QRect(0, 0, 100, 50), QRect(10, 20, 300, 300)),
              QRect(110, 120, 100, 50));
    EXPECT_EQ(shell::alignedWith(QRect(5, 5, 100, 50), QRect(10, 20, 300, 300)),
              QRect(10, 20, 100, 50));
}

TEST(Navigation, MoveButtonsStayInsideTheRows) {
    testsupport::TempDir dir;
    const QString path = dir.file("c.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path,
                         "INSERT INTO Compilation (Name, Format, C_Length) VALUES "
                         "('A', 'MD', 74), ('B', 'MD', 74), ('C', 'MD', 74)");
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    engine::Recordset rows = database.openRecordset("SELECT Name FROM Compilation ORDER BY Name");
    shell::moveRecord(2, rows);
    EXPECT_EQ(rows.value("Name").toString(), "A");
    EXPECT_EQ(shell::positionText(rows), "1  3");
    shell::moveRecord(4, rows);
    shell::moveRecord(3, rows);
    EXPECT_EQ(rows.value("Name").toString(), "C");
    shell::moveRecord(2, rows);
    EXPECT_EQ(shell::positionText(rows), "2  3");
    shell::moveRecord(9, rows);
    EXPECT_EQ(shell::positionText(rows), "2  3");
    shell::moveRecord(1, rows);
    EXPECT_EQ(rows.value("Name").toString(), "A");
    engine::Workspace::defaultWorkspace().close();
}

TEST(ToolbarTools, DispatchIsCaseBlindAndTheToolsKeepTheirOrder) {
    EXPECT_EQ(shell::commandForTool("ID_NewFile"), shell::ToolCommand::NewDatabase);
    EXPECT_EQ(shell::commandForTool("id_deletecompilation"), shell::ToolCommand::DeleteCompilation);
    EXPECT_EQ(shell::commandForTool("ID_PrintWhat"), shell::ToolCommand::Unknown);
    QStringList ids;
    for (const shell::ToolSpec& tool : shell::mainTools())
        ids << tool.id;
    EXPECT_EQ(ids, QStringList({"ID_NewFile", "ID_OpenFile", "ID_CloseFile", "ID_CompactDB",
                                "ID_EditCompilation", "ID_NewCompilation", "ID_DeleteCompilation",
                                "ID_Print", "ID_PrintWhat", "ID_Help", "ID_Exit"}));
    EXPECT_EQ(shell::reportTypes().at(shell::kDefaultReportType), "SEL - Recording Protocol");
}

class DatabaseCommands : public ::testing::Test, public shell::CommandFeedback {
  protected:
    void setBusy(bool busy) override { busyCalls << busy; }
    void setStatusText(const QString& text) override { statusTexts << text; }
    void processPendingEvents() override {}

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    QList<bool> busyCalls;
    QStringList statusTexts;
};

TEST_F(DatabaseCommands, NewCopiesTheTemplateAndNeverOverwrites) {
    const QString path = dir.file("new.mdb");
    dialogs.answerFile(path);
    EXPECT_EQ(shell::newDatabase(dialogs, *this), std::optional<QString>(path));
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM LstFormat") != "0", true);
    EXPECT_EQ(statusTexts.first(), "Creating new database ...");
    EXPECT_EQ(statusTexts.last(), shell::kStatusHint);
    EXPECT_EQ(busyCalls, QList<bool>({true, false}));
    const platform::FileRequest& request = dialogs.fileRequests().back();
    EXPECT_EQ(request.filter, "MS Access Files (*.mdb)|*.mdb");
    EXPECT_EQ(request.initialFolder, platform::programFolder() + "/data");
    EXPECT_TRUE(request.mayNotExist);

    dialogs.answerFile(path);
    EXPECT_FALSE(shell::newDatabase(dialogs, *this));
    EXPECT_EQ(dialogs.lastMessageText(), "Database already exists.");
    dialogs.clear();
    EXPECT_FALSE(shell::newDatabase(dialogs, *this));  // cancelled: no message
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(DatabaseCommands, OpenChecksTheStructureAndDropsATempSourceOfEarlierVersions) {
    const QString path = dir.file("c.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path, "CREATE TABLE TempSource (ArtistSort TEXT(50))");
    shell::AppState state;
    EXPECT_EQ(shell::openCompilationDatabase(path, state, dialogs), shell::OpenOutcome::Opened);
    EXPECT_EQ(state.databasePath, path);
    EXPECT_EQ(state.inputHint, "Time as: HHMMSS    Date as: DD.MM.YY");
    EXPECT_FALSE(state.database.hasTable("TempSource"));
    EXPECT_EQ(testsupport::queryRaw(path,
                                    "SELECT count(*) FROM sqlite_master"
                                    " WHERE name = 'TempSource'"),
              "0");
    shell::closeCompilationDatabase(state);
    EXPECT_FALSE(state.database.isOpen());

    const QString other = dir.file("other.mdb");
    testsupport::execRaw(other,
                         "CREATE TABLE COMPILATION (x); CREATE TABLE compilationtrack (x);"
                         "CREATE TABLE LstFormat (x); CREATE TABLE LstLength (x);");
    EXPECT_EQ(shell::openCompilationDatabase(other, state, dialogs),
              shell::OpenOutcome::WrongStructure);
    EXPECT_EQ(dialogs.lastMessageText(), shell::kNotACompilationDatabase);
    testsupport::execRaw(other, "CREATE TABLE LSTMANUFACTURER (x); CREATE TABLE Extra (x);");
    EXPECT_EQ(shell::openCompilationDatabase(other, state, dialogs), shell::OpenOutcome::Opened);
    shell::closeCompilationDatabase(state);

    QFile text(dir.file("text.mdb"));
    text.open(QIODevice::WriteOnly);
    text.write("no database");
    text.close();
    dialogs.clear();
    EXPECT_EQ(shell::openCompilationDatabase(text.fileName(), state, dialogs),
              shell::OpenOutcome::Failed);
    EXPECT_EQ(dialogs.lastMessageText(), "Unrecognized database format '" + text.fileName() + "'.");
    engine::Workspace::defaultWorkspace().close();
}

TEST_F(DatabaseCommands, CompactReplacesTheFileOnlyWhenItWorked) {
    const QString path = dir.file("coll.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path,
                         "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('A', 'MD', 74)");
    dialogs.answerFile(path);
    EXPECT_TRUE(shell::compactDatabase(dialogs, *this));
    EXPECT_EQ(statusTexts.first(), "Repairing and compacting database ...");
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT Name FROM Compilation"), "A");
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");

    QFile garbage(dir.file("junk.mdb"));
    garbage.open(QIODevice::WriteOnly);
    garbage.write(QByteArray(8192, 'x'));
    garbage.close();
    dialogs.clear();
    dialogs.answerFile(garbage.fileName());
    EXPECT_FALSE(shell::compactDatabase(dialogs, *this));
    EXPECT_EQ(dialogs.lastMessageText(),
              "Unrecognized database format '" + garbage.fileName() + "'.");
    EXPECT_EQ(QFile(garbage.fileName()).size(), 8192);
    EXPECT_FALSE(QFile::exists(dir.file("junk.$$$")));
    EXPECT_EQ(statusTexts.last(), shell::kStatusHint);
}

}  // namespace

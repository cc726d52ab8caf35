// The database commands New and Open, the move buttons and the tools' dispatch.
#include <QFile>

#include "shell/app_state.h"
#include "shell/database_conversion.h"
#include "shell/database_files.h"
#include "shell/navigation.h"
#include "shell/picker_source.h"
#include "shell/toolbar_tools.h"
#include "shell_fixture.h"
#include "store/album_source.h"
#include "support/album_schema.h"

namespace {

TEST(FileNames, TheTemporaryAndTheConvertedCopySitBesideTheFile) {
    EXPECT_EQ(shell::compactionTempPath(R"(C:\x\coll.mdb)"), R"(C:\x\coll.$$$)");
    EXPECT_EQ(shell::compactionTempPath("/home/me/music.v2/coll.backup.mdb"),
              "/home/me/music.v2/coll.backup.$$$");
    EXPECT_EQ(shell::compactionTempPath("/data.d/coll"), "/data.d/coll.$$$");  // no extension
    EXPECT_EQ(shell::convertedCopyPath("/home/me/music.v2/coll.backup.mdb"),
              "/home/me/music.v2/coll.backup-converted.mdb");
}

TEST(Navigation, MoveButtonsStayInsideTheRowsAndTheToolsDispatchInAnyCase) {
    testsupport::TempDir dir;
    const QString path = dir.file("c.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path,
                         "INSERT INTO Compilation (Name, Format, C_Length) VALUES "
                         "('A', 'MD', 74), ('B', 'MD', 74), ('C', 'MD', 74)");
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    engine::Recordset rows = database.openRecordset("SELECT Name FROM Compilation ORDER BY Name");
    const std::pair<int, QString> moves[] = {{2, "1  3"}, {4, "3  3"}, {3, "3  3"},
                                             {2, "2  3"}, {9, "2  3"}, {1, "1  3"}};
    for (const auto& [button, position] : moves) {
        shell::moveRecord(button, rows);
        EXPECT_EQ(shell::positionText(rows), position) << button;
    }
    engine::Workspace::defaultWorkspace().close();
    EXPECT_EQ(shell::commandForTool("id_deletecompilation"), shell::ToolCommand::DeleteCompilation);
    EXPECT_EQ(shell::commandForTool("ID_PrintWhat"), shell::ToolCommand::Unknown);
}

using DatabaseCommands = ShellTest;

TEST_F(DatabaseCommands, NewCopiesTheTemplateAndNeverOverwrites) {
    const QString path = dir.file("new.mdb");
    dialogs.answerFile(path);
    EXPECT_EQ(shell::newDatabase(dialogs, feedback), std::optional<QString>(path));
    EXPECT_NE(testsupport::queryRaw(path, "SELECT count(*) FROM LstFormat"), "0");
    EXPECT_EQ(feedback.busyCalls, QList<bool>({true, false}));

    dialogs.answerFile(path);
    EXPECT_FALSE(shell::newDatabase(dialogs, feedback));
    EXPECT_EQ(dialogs.lastMessageText(), "Database already exists.");
}

TEST_F(DatabaseCommands, OpenChecksTheStructureAndDropsATempSourceOfEarlierVersions) {
    const QString path = dir.file("c.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path, "CREATE TABLE TempSource (ArtistSort TEXT(50))");
    shell::AppState state;
    EXPECT_EQ(shell::openCompilationDatabase(path, state, dialogs), shell::OpenOutcome::Opened);
    EXPECT_EQ(testsupport::queryRaw(path,
                                    "SELECT count(*) FROM sqlite_master"
                                    " WHERE name = 'TempSource'"),
              "0");
    shell::closeCompilationDatabase(state);
    EXPECT_FALSE(state.database.isOpen());

    // The five tables in any case make a compilation database, whatever else it holds.
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
}

// The track picker's filter and sort apply to every new source until another album database is
// connected: they were made for the collection they were applied to.
TEST_F(DatabaseCommands, ThePickersClausesOutliveItsSourceUntilAnotherAlbumDatabase) {
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());  // the album folder is kept there
    shell::AppState state;
    testsupport::createCompilationDatabase(dir.file("c.mdb"));
    state.database = engine::Workspace::defaultWorkspace().openDatabase(dir.file("c.mdb"));
    const auto connectAlbums = [&](const QString& albums) {
        testsupport::createAlbumTables(albums, true);
        testsupport::execRaw(albums, R"sql(
            INSERT INTO Artist VALUES (1000, 'Various'), (1, 'Simon'), (2, 'Adams');
            INSERT INTO Album VALUES (1, 'Collection', 'Various', NULL);
            INSERT INTO ArtistAlbumLink VALUES (1000, 1);
            INSERT INTO Track VALUES (1, 1, 'Simon', 'Boxer', 1, 1, 300, NULL, 0, '1999', NULL),
                                     (2, 1, 'Adams', 'Morning', 1, 2, 100, NULL, 0, '1999', NULL);
            INSERT INTO ArtistTrackLink VALUES (1, 1), (2, 2);
        )sql");
        store::EditorConnection editor;
        dialogs.answerFile(albums);
        store::connectAlbumDatabase(state.database, dialogs, state.album, editor);
        ASSERT_TRUE(editor.albumConnected) << dialogs.lastMessageText().toStdString();
    };
    connectAlbums(dir.file("albums.mdb"));
    shell::buildPickerSource(state);
    state.filterClause = "WHERE ArtistSort LIKE 'S*'";
    state.sortClause = "ORDER BY Length DESC";
    shell::buildPickerSource(state);  // the picker opened again
    EXPECT_EQ(state.album.passedCount, 1);
    EXPECT_EQ(state.sortClause, "ORDER BY Length DESC");

    connectAlbums(dir.file("others.mdb"));
    shell::buildPickerSource(state);
    EXPECT_EQ(state.filterClause, "");
    EXPECT_EQ(state.sortClause, "");
    EXPECT_EQ(state.album.passedCount, 2);
}

}  // namespace

#include <gtest/gtest.h>

#include <optional>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/album_schema.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

// What TempSource holds is checked end to end in tests/album; here the connect and the life of
// the connection's own TempSource.
namespace {

class AlbumSource : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
        store::setAlbumFolderSetting(QString());
        compilationPath = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(compilationPath);
        database = engine::Workspace::defaultWorkspace().openDatabase(compilationPath);
        editor.isSaved = true;
        albums = dir.file("albums.mdb");  // one rated track
        testsupport::createAlbumTables(albums, true);
        testsupport::execRaw(albums, R"sql(
            INSERT INTO Artist VALUES (1, 'Simon');
            INSERT INTO Album VALUES (10, 'Duets', 'Simon', NULL);
            INSERT INTO ArtistAlbumLink VALUES (1, 10);
            INSERT INTO Track VALUES (100, 10, 'Simon', 'Kodachrome', 1, 1, 244, '', 0, '1973', 1);
            INSERT INTO ArtistTrackLink VALUES (1, 100);
            INSERT INTO TrackRating VALUES (1, '*****');)sql");
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    void connect(const std::optional<QString>& albumPath) {
        dialogs.answerFile(albumPath);
        store::connectAlbumDatabase(database, dialogs, state, editor);
    }
    testsupport::TempDir dir;
    QString compilationPath, albums;
    engine::Database database;
    platform::ScriptedDialogs dialogs;
    store::AlbumSourceState state;
    store::EditorConnection editor;
};

TEST_F(AlbumSource, ConnectLinksTheTablesAndDropRemovesThemWithTempSource) {
    connect(albums);
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(editor.albumConnected && editor.getTracksEnabled && state.albumHasRating);
    EXPECT_EQ(dialogs.fileRequests()[0].title, "Connect to Album Database");
    EXPECT_EQ(dialogs.fileRequests()[0].filter, "MS Access Files (*.mdb)|*.mdb");
    EXPECT_EQ(database.linkConnect("Track"), ";DATABASE=" + albums);
    connect(std::nullopt);  // cancelled: nothing shown, Get Tracks off
    EXPECT_FALSE(editor.getTracksEnabled);
    EXPECT_EQ(dialogs.fileRequests()[1].initialFolder, dir.path() + "/");

    editor.isSaved = false;  // an unsaved editor keeps Get Tracks off
    connect(albums);
    EXPECT_TRUE(editor.albumConnected && !editor.getTracksEnabled);

    store::buildTempSource(database, state);
    store::buildTempSource(database, state);  // a second build replaces the first
    EXPECT_EQ(state.passedCount, 1);
    store::dropAlbumLinks(database);
    EXPECT_EQ(database.tableNames(), QStringList({"Compilation", "CompilationTrack",
                                                  "LstManufacturer", "LstFormat", "LstLength"}));
    store::buildTempSource(database, state);  // without links none is built
    EXPECT_EQ(state.passedCount, 0);
    EXPECT_FALSE(database.hasTable("TempSource"));
}

// Earlier versions kept TempSource in the file, where a killed run left another album's rows.
// Dropped at open where the file may be written, kept where it may not, it is read by no
// statement of the connection, before its own TempSource is built or by the build.
enum class FileAccess { Free, LockedByAnotherWriter, ReadOnly };

class LeftoverTempSource : public AlbumSource, public ::testing::WithParamInterface<FileAccess> {};

TEST_P(LeftoverTempSource, IsNeverRead) {
    database.close();
    testsupport::execRaw(compilationPath,
                         "CREATE TABLE TempSource (TitleTrack TEXT, RatingTrack TEXT);"
                         "INSERT INTO TempSource VALUES ('Stale', '*****')");
    std::optional<testsupport::WriteLock> otherWriter;
    if (GetParam() == FileAccess::LockedByAnotherWriter)
        otherWriter.emplace(compilationPath);
    database = engine::Workspace::defaultWorkspace().openDatabase(
        compilationPath, GetParam() == FileAccess::ReadOnly);
    EXPECT_EQ(testsupport::errorNumber([&] { database.openRecordset("TempSource"); }),
              engine::jet::kCannotFindInputTable);
    EXPECT_EQ(
        testsupport::errorNumber([&] { database.execute("INSERT INTO TempSource VALUES (1)"); }),
        engine::jet::kCannotFindInputTable);
    connect(albums);
    store::buildTempSource(database, state);
    EXPECT_EQ(
        testsupport::queryOnConnection(database, "SELECT group_concat(TitleTrack) FROM TempSource"),
        "Kodachrome");  // the chosen album's row alone
    EXPECT_EQ(testsupport::queryRaw(compilationPath,
                                    "SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'"),
              GetParam() == FileAccess::Free ? "0" : "1")
        << "dropped where the file may be written";
}

INSTANTIATE_TEST_SUITE_P(Opened, LeftoverTempSource,
                         ::testing::Values(FileAccess::Free, FileAccess::LockedByAnotherWriter,
                                           FileAccess::ReadOnly));

}  // namespace

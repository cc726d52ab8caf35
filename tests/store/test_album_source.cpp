#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QStandardPaths>
#include <optional>

#include "album_tables.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

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
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    QString makeAlbums(bool withRating) {
        const QString path = dir.file(withRating ? "albums.mdb" : "albums-unrated.mdb");
        testsupport::createSqliteAlbumDatabase(path, withRating);
        return path;
    }

    void connect(const QString& albumPath) {
        dialogs.answerFile(albumPath);
        store::connectAlbumDatabase(database, dialogs, state, editor);
    }

    // The rows of a statement as texts of "|"-joined values.
    QStringList sourceRows(const QString& select) {
        engine::Recordset rows = database.openRecordset(select);
        QStringList result;
        for (int r = 0; r < rows.recordCount(); ++r) {
            QStringList cells;
            for (const QVariant& value : rows.rowAt(r)) {
                cells << (value.isNull() ? QStringLiteral("<null>") : value.toString());
            }
            result << cells.join('|');
        }
        return result;
    }

    testsupport::TempDir dir;
    QString compilationPath;
    engine::Database database;
    platform::ScriptedDialogs dialogs;
    store::AlbumSourceState state;
    store::EditorConnection editor;
};

TEST_F(AlbumSource, ConnectLinksTheAlbumTablesAndRemembersTheFolder) {
    const QString albums = makeAlbums(true);
    connect(albums);
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(editor.albumConnected);
    EXPECT_TRUE(editor.getTracksEnabled);
    EXPECT_TRUE(state.albumHasRating);
    EXPECT_EQ(state.albumDatabasePath, albums);
    EXPECT_EQ(store::albumFolderSetting(), dir.path() + "/");
    ASSERT_EQ(dialogs.fileRequests().size(), 1u);
    EXPECT_EQ(dialogs.fileRequests()[0].title, "Connect to Album Database");
    EXPECT_EQ(dialogs.fileRequests()[0].filter, "MS Access Files (*.mdb)|*.mdb");
    EXPECT_EQ(database.linkConnect("Track"), ";DATABASE=" + albums);

    // The next connect starts the dialog in the folder of this one.
    dialogs.answerFile(std::nullopt);
    store::connectAlbumDatabase(database, dialogs, state, editor);
    EXPECT_EQ(dialogs.fileRequests()[1].initialFolder, dir.path() + "/");
}

TEST_F(AlbumSource, UnsavedEditorKeepsGetTracksDisabled) {
    editor.isSaved = false;
    connect(makeAlbums(true));
    EXPECT_TRUE(editor.albumConnected);
    EXPECT_FALSE(editor.getTracksEnabled);
}

TEST_F(AlbumSource, CancelShowsNothingAndStoresNoFolder) {
    editor.getTracksEnabled = true;
    store::connectAlbumDatabase(database, dialogs, state, editor);
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_FALSE(editor.getTracksEnabled);
    EXPECT_FALSE(editor.albumConnected);
    EXPECT_FALSE(state.albumHasRating);
    EXPECT_TRUE(store::albumFolderSetting().isEmpty());
}

TEST_F(AlbumSource, ACompilationDatabaseIsNoAlbumDatabase) {
    const QString other = dir.file("other.mdb");
    testsupport::createCompilationDatabase(other);
    connect(other);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, store::kNotAnAlbumDatabase);
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_EQ(dialogs.messages()[0].title, "Mixorama");
    EXPECT_FALSE(editor.getTracksEnabled);
    EXPECT_FALSE(editor.albumConnected);
}

TEST_F(AlbumSource, TempSourceHasARowPerTrackPerformerAndAlbumPerformer) {
    connect(makeAlbums(true));
    store::buildTempSource(database, state);
    // Mrs. Robinson: two performers on a two-performer album (4 rows), Kodachrome
    // one on the same album (2), Help! and Schrei nach Liebe one each; Orphan has no performer
    // link.
    EXPECT_EQ(state.passedCount, 8);
    EXPECT_EQ(
        sourceRows("SELECT TitleTrack, PerformerTrack, PerformerAlbum FROM TempSource "
                   "WHERE TitleTrack = 'Mrs. Robinson' ORDER BY PerformerTrack, PerformerAlbum"),
        QStringList({"Mrs. Robinson|Garfunkel|Garfunkel", "Mrs. Robinson|Garfunkel|Simon",
                     "Mrs. Robinson|Simon|Garfunkel", "Mrs. Robinson|Simon|Simon"}));
    EXPECT_TRUE(
        sourceRows("SELECT TitleTrack FROM TempSource WHERE TitleTrack = 'Orphan'").isEmpty());
}

TEST_F(AlbumSource, TempSourceFixesYearsVersionsAndSortsByPerformer) {
    connect(makeAlbums(true));
    store::buildTempSource(database, state);
    EXPECT_EQ(sourceRows("SELECT DISTINCT TitleTrack, MyRecorded, Version, RatingTrack, Location "
                         "FROM TempSource ORDER BY TitleTrack"),
              QStringList({"Help!|1965|<null>|***|<null>", "Kodachrome|<null>|Remix|<null>|Shelf A",
                           "Mrs. Robinson|1987|<null>|*****|Shelf A",
                           "Schrei nach Liebe|1993|Live|*****|Shelf A"}));
    // Performer sort names order case-blind, accents beside their letters.
    QStringList sorts = sourceRows("SELECT DISTINCT ArtistSort FROM TempSource");
    EXPECT_EQ(sorts, QStringList({"Ärzte, Die", "beatles, the", "Simon", "Simon & Garfunkel"}));
}

TEST_F(AlbumSource, AnAlbumDatabaseWithoutRatingsConnectsSilently) {
    connect(makeAlbums(false));
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(editor.albumConnected);
    EXPECT_FALSE(state.albumHasRating);
    store::buildTempSource(database, state);
    EXPECT_EQ(state.passedCount, 8);
    engine::Recordset rows = database.openRecordset("TempSource");
    const int last = rows.fieldCount() - 1;
    EXPECT_EQ(rows.field(last).name, "RatingTrack");
    EXPECT_EQ(rows.field(last - 1).name, "MyRecorded");
    EXPECT_TRUE(rows.value("RatingTrack").isNull());
}

TEST_F(AlbumSource, DropRemovesLinksAndTempSourceAndTheRebuildStartsAfresh) {
    connect(makeAlbums(true));
    store::buildTempSource(database, state);
    store::buildTempSource(database, state);  // a second build replaces the first
    EXPECT_EQ(state.passedCount, 8);
    store::dropAlbumLinks(database);
    EXPECT_EQ(database.tableNames(), QStringList({"Compilation", "CompilationTrack",
                                                  "LstManufacturer", "LstFormat", "LstLength"}));
    store::buildTempSource(database, state);  // without links nothing is built
    EXPECT_EQ(state.passedCount, 0);
    EXPECT_FALSE(database.hasTable("TempSource"));
}

// Earlier versions kept TempSource in the file, where a killed run left it with the rows of
// another album database. Dropped at open where the file may be written, kept where it may not,
// it is read by no statement of the connection: neither before its own TempSource is built nor
// by the build, whose rows are all the chosen album's.
enum class FileAccess { Free, LockedByAnotherWriter, ReadOnly };

class LeftoverTempSource : public AlbumSource, public ::testing::WithParamInterface<FileAccess> {};

TEST_P(LeftoverTempSource, IsNeverRead) {
    database.close();
    testsupport::execRaw(compilationPath,
                         "CREATE TABLE TempSource (TitleTrack TEXT, RatingTrack TEXT);"
                         "INSERT INTO TempSource VALUES ('Stale', '*****')");
    std::optional<testsupport::WriteLock> otherWriter;
    if (GetParam() == FileAccess::LockedByAnotherWriter) {
        otherWriter.emplace(compilationPath);
    }
    database = engine::Workspace::defaultWorkspace().openDatabase(
        compilationPath, GetParam() == FileAccess::ReadOnly);
    EXPECT_FALSE(database.hasTable("TempSource"));
    for (const char* source :
         {"TempSource", "SELECT TitleTrack FROM TempSource", "SELECT rowid FROM TempSource"}) {
        EXPECT_EQ(testsupport::errorNumber([&] { database.openRecordset(source); }),
                  engine::jet::kCannotFindInputTable)
            << source;
    }
    EXPECT_EQ(testsupport::errorNumber([&] {
                  database.execute("INSERT INTO TempSource (TitleTrack) VALUES ('Sneaked in')");
              }),
              engine::jet::kCannotFindInputTable);

    connect(makeAlbums(false));
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(editor.albumConnected);
    store::buildTempSource(database, state);
    EXPECT_EQ(state.passedCount, 8);
    EXPECT_TRUE(sourceRows("SELECT TitleTrack FROM TempSource WHERE TitleTrack = 'Stale' OR "
                           "RatingTrack IS NOT NULL")
                    .isEmpty());

    otherWriter.reset();
    EXPECT_EQ(testsupport::queryRaw(compilationPath,
                                    "SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'"),
              GetParam() == FileAccess::Free ? "0" : "1")
        << "dropped where the file may be written";
}

INSTANTIATE_TEST_SUITE_P(Opened, LeftoverTempSource,
                         ::testing::Values(FileAccess::Free, FileAccess::LockedByAnotherWriter,
                                           FileAccess::ReadOnly),
                         [](const auto& info) {
                             switch (info.param) {
                                 case FileAccess::Free:
                                     return std::string("Free");
                                 case FileAccess::LockedByAnotherWriter:
                                     return std::string("LockedByAnotherWriter");
                                 default:
                                     return std::string("ReadOnly");
                             }
                         });

TEST(RecordingYear, TakesTheFirstFourCharactersOfTheTrimmedText) {
    EXPECT_EQ(store::recordingYear(" 1987-05-01").toString(), "1987");
    EXPECT_EQ(store::recordingYear("87 ").toString(), "87");
    EXPECT_EQ(store::recordingYear("").toString(), "");
}

}  // namespace

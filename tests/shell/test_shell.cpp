// The database commands New and Open, the session's announcements of its database, the move
// buttons, the print tool's checks and the tools' dispatch.
#include <QFile>

#include "shell/app_state.h"
#include "shell/database_conversion.h"
#include "shell/database_files.h"
#include "shell/navigation.h"
#include "shell/picker_source.h"
#include "shell/playlist_export.h"
#include "shell/print_command.h"
#include "shell/session.h"
#include "shell/toolbar_tools.h"
#include "shell_fixture.h"
#include "store/album_source.h"
#include "support/album_schema.h"
#include "support/list_samples.h"
#include "support/samples.h"

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

// The windows' lists follow the session's database: it announces its opening and closing.
class SessionTest : public ShellTest {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        QObject::connect(&session, &shell::Session::databaseOpened,
                         [this] { events << "opened " + session.state().databasePath; });
        // At the announcement the database must still be usable.
        QObject::connect(&session, &shell::Session::databaseClosing, [this] {
            events << QStringLiteral("closing %1").arg(session.database().hasTable("Compilation"));
        });
    }

    const QString path = dir.file("coll.mdb");
    shell::Session session;
    QStringList events;
};

// Open checks the structure and drops a TempSource of earlier versions.
TEST_F(SessionTest, OpensCompilationDatabasesAndAnnouncesOpeningAndClosing) {
    session.close();  // nothing open: nothing to announce
    // The five tables in any case make a compilation database, whatever else it holds.
    const QString other = dir.file("other.mdb");
    testsupport::execRaw(other,
                         "CREATE TABLE COMPILATION (x); CREATE TABLE compilationtrack (x);"
                         "CREATE TABLE LstFormat (x); CREATE TABLE LstLength (x);");
    EXPECT_EQ(session.open(other, dialogs), shell::OpenOutcome::WrongStructure);
    EXPECT_EQ(dialogs.lastMessageText(), shell::kNotACompilationDatabase);
    EXPECT_TRUE(events.isEmpty());
    testsupport::execRaw(other, "CREATE TABLE LSTMANUFACTURER (x); CREATE TABLE Extra (x);");
    ASSERT_EQ(session.open(other, dialogs), shell::OpenOutcome::Opened);

    // A second database replaces the first one, which is closed with its announcement.
    testsupport::execRaw(path, "CREATE TABLE TempSource (ArtistSort TEXT(50))");
    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    EXPECT_FALSE(session.database().hasTable("TempSource"));
    session.abandon();
    EXPECT_TRUE(session.state().databasePath.isEmpty());
    EXPECT_EQ(events, QStringList({"opened " + other, "closing 1", "opened " + path, "closing 1"}));

    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    dialogs.answerFile(path);
    EXPECT_TRUE(session.compact(dialogs, feedback));  // closes the database first
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(events.last(), "closing 1");
}

// The print tool's choices and the checks made before a list, cover or PDF is produced.
using shell::CurrentCompilation;

class PrintChecks : public ShellTest {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::addSample(path,
                               {.name = "Still Empty", .format = "DVD", .minutes = 120, .id = 7});
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

namespace {

// Export writes the compilation's tracks in their running order, names those without a file,
// asks before replacing a file and refuses a name of no playlist format.
TEST(PlaylistExport, WritesTheTracksWithFilesInOrderAndTellsTheRest) {
    testsupport::TempDir dir;
    const QString path = dir.file("c.mdb");
    testsupport::createCompilationDatabase(path);
    const qint64 id =
        testsupport::addSample(path, {.name = "Trip",
                                      .tracks = {{.performer = "A", .title = "One", .seconds = 61},
                                                 {.performer = "B", .title = "Two"},
                                                 {.performer = "A", .title = "Three", .seconds = 5},
                                                 {.performer = "C", .title = "Four"}}});
    testsupport::execRaw(path,
                         "ALTER TABLE CompilationTrack ADD COLUMN TrackFile LONGTEXT; "
                         "UPDATE CompilationTrack SET TrackFile = " +
                             testsupport::sqlText(dir.file("m") + '/') +
                             " || Track_Title || '.flac' WHERE Track_Title <> 'Two'; "
                             "UPDATE CompilationTrack SET TrackNo = 5 - TrackNo");
    QDir().mkpath(dir.file("m"));
    for (const char* name : {"m/One.flac", "m/Three.flac"}) {  // Four's file is gone
        QFile(dir.file(name)).open(QIODevice::WriteOnly);
    }
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    platform::ScriptedDialogs dialogs;
    const QString list = dir.file("trip.m3u8");
    for (const QString& answer : {list, list, dir.file("trip.txt")}) {
        dialogs.answerFile(answer);
        shell::exportCompilationPlaylist(database, id, dialogs);
    }
    EXPECT_EQ(testsupport::fileBytes(list),
              "#EXTM3U\n#EXTINF:5,A - Three\nm/Three.flac\n#EXTINF:61,A - One\nm/One.flac\n");
    dialogs.answerFile(list);
    dialogs.answerMessage(platform::MessageAnswer::Yes);  // replace it, with full paths
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    shell::exportCompilationPlaylist(database, id, dialogs);
    database.close();
    EXPECT_TRUE(testsupport::fileBytes(list).contains(dir.file("m/One.flac").toUtf8()));
    ASSERT_EQ(dialogs.messages().size(), 7u);  // full paths (No), told, replace (No), refused
    EXPECT_EQ(dialogs.messages()[0].text, shell::kFullPathsQuestion);
    EXPECT_TRUE(dialogs.messages()[1].text.startsWith("2 tracks written to " + list + ".\n2 of 4"));
    EXPECT_EQ(dialogs.messages()[2].icon, platform::MessageIcon::Question);
    EXPECT_TRUE(dialogs.messages()[3].text.contains(".m3u8, .xspf or .cue"));
}

}  // namespace

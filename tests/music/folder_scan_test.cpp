#include <gtest/gtest.h>

#include <thread>

#include "assembly/track_picker.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "music/folder_scan.h"
#include "music_files.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/databases.h"
#include "support/faulty_files.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

namespace {

using musictest::addFile;

// A tree of every case: tags, no tags, odd names, two discs with two performers, a damaged file,
// a hidden folder, a linked folder that loops and a file that is no audio.
class FolderScanTest : public ::testing::Test {
  protected:
    void SetUp() override {
        addFile(root, "Beatles/Abbey Road/01.flac",
                "TITLE=Come Together|ARTIST=The Beatles|ALBUM=Abbey Road|TRACKNUMBER=1|DATE=1969|"
                "ARTISTSORT=Beatles, The|RATING=4");
        addFile(root, "Beatles/Abbey Road/02.mp3",
                "TITLE=Something|ARTIST=The Beatles|ALBUM=Abbey Road");
        addFile(root, "Guests/Live in Paris/03 - Guest - Song.OGG");
        addFile(root, kDiscs + "/d1.opus", "TITLE=A|ARTIST=Önë \"Q\"; Me|ALBUM=Discs|DISCNUMBER=1");
        addFile(root, kDiscs + "/d2.m4a", "TITLE=B|ARTIST=O'Brien|ALBUM=Discs|DISCNUMBER=2");
        QFile broken(root + '/' + kDiscs + "/broken.wma");
        broken.open(QIODevice::WriteOnly) && broken.write(QByteArray(3000, 'x'));
        addFile(root, ".hidden/x.flac");
        QFile::copy(root + "/Beatles/Abbey Road/01.flac", root + "/Beatles/cover.jpg");
        QFile::link(root, root + "/Beatles/loop");
    }
    music::ScanSummary scan(const music::ScanProgress& progress = {}) {
        const QByteArray before = musictest::treeChecksum(root);
        music::ScanSummary summary = music::scanFolder(root, cache, progress);
        EXPECT_EQ(musictest::treeChecksum(root), before);  // the tree is never written
        return summary;
    }
    // Each track as the picker flattens it, with its path relative to the root.
    QStringList tracks() {
        return testsupport::SqliteFile(cache).lines(R"sql(
            SELECT t.Title, a.Name, t.ArtistSort, t.Item, t."Index", t.Live,
                   t.RecordedStart, r.TrackRating, al.Title, aa.Name, al.ArtistSort,
                   l.Location, substr(t.FilePath, length(s.Value) + 2)
            FROM Track t JOIN ArtistTrackLink tl ON tl.TrackID = t.TrackID
            JOIN Artist a ON a.ArtistID = tl.ArtistID JOIN Album al ON al.AlbumID = t.AlbumID
            JOIN ArtistAlbumLink aal ON aal.AlbumID = al.AlbumID
            JOIN Artist aa ON aa.ArtistID = aal.ArtistID
            JOIN Location l ON l.LocationID = al.LocationID JOIN ScanState s ON s.Key = 'root'
            LEFT JOIN TrackRating r ON r.TrackRatingID = t.TrackRatingID ORDER BY t.FilePath)sql");
    }

    testsupport::TempDir dir;
    const QString root = dir.file("Music");
    const QString cache = dir.file("cache.sqlite");
    const QString kDiscs = "Mixed/Discs; Vol. 'Ü'";
};

const QStringList kTracks{
    "Come Together|The Beatles|Beatles, The|1|1|0|1969|Very Good|Abbey Road|The Beatles|The "
    "Beatles|Beatles/Abbey Road|Beatles/Abbey Road/01.flac",
    "Something|The Beatles|The Beatles|1|<null>|0|<null>|<null>|Abbey Road|The Beatles|The "
    "Beatles|Beatles/Abbey Road|Beatles/Abbey Road/02.mp3",
    "Song|Guest|Guest|1|3|-1|<null>|<null>|Live in Paris|Guest|Guest|Guests/Live in "
    "Paris|Guests/Live in Paris/03 - Guest - Song.OGG",
    "A|Önë \"Q\"; Me|Önë \"Q\"; Me|1|<null>|0|<null>|<null>|Discs|Various Artists|Various "
    "Artists|Mixed/Discs; Vol. 'Ü'|Mixed/Discs; Vol. 'Ü'/d1.opus",
    "B|O'Brien|O'Brien|2|<null>|0|<null>|<null>|Discs|Various Artists|Various "
    "Artists|Mixed/Discs; Vol. 'Ü'|Mixed/Discs; Vol. 'Ü'/d2.m4a"};

TEST_F(FolderScanTest, WritesTheAlbumTablesOfTheTree) {
    const music::ScanSummary summary = scan();
    EXPECT_EQ(music::summaryLine(summary), "5 tracks in 3 albums; 1 file could not be read");
    EXPECT_EQ(summary.unreadableFiles, QStringList{kDiscs + "/broken.wma"});
    EXPECT_EQ(tracks(), kTracks);
}

TEST_F(FolderScanTest, RescansReadOnlyChangedFilesAndKeepTheIds) {
    const QString idsQuery =
        "SELECT t.FilePath, t.TrackID, t.AlbumID, l.ArtistID FROM Track t "
        "JOIN ArtistTrackLink l ON l.TrackID = t.TrackID ORDER BY 1";
    scan();
    const QStringList ids = testsupport::SqliteFile(cache).lines(idsQuery);
    EXPECT_EQ(scan().filesRead, 0);
    addFile(root, "Beatles/Abbey Road/02.mp3", "TITLE=Else|ARTIST=The Beatles");
    EXPECT_EQ(scan().filesRead, 1);  // a changed file alone makes the album tables stale
    EXPECT_TRUE(tracks()[1].startsWith("Else|"));
    QFile::remove(root + '/' + kDiscs + "/d2.m4a");
    EXPECT_EQ(scan().filesRead, 0);
    QStringList expected = kTracks.mid(0, 4);
    expected[1].replace("Something", "Else");
    expected[3].replace("Various Artists", "Önë \"Q\"; Me");
    EXPECT_EQ(tracks(), expected);
    EXPECT_EQ(testsupport::SqliteFile(cache).lines(idsQuery), ids.mid(0, 4));
    EXPECT_EQ(testsupport::queryRaw(cache, "SELECT count(*) FROM Artist WHERE Name = \"O'Brien\""),
              "0");
}

// Two scans of one folder at once (two windows, two programs) wait for each other; both finish.
// Each waits at its first file, inside its first batch, for the other to reach its own (a second
// at most), so that one scan wants the cache while the other holds it.
TEST_F(FolderScanTest, TwoScansAtOnceBothFinish) {
    std::atomic<int> waiting = 0, finished = 0;
    const auto scanOnce = [&] {
        bool first = true;
        music::ScanProgress meet{.report = [&](qint64, qint64) {
            if (!std::exchange(first, false))
                return;
            ++waiting;
            for (int i = 0; waiting < 2 && i < 100; ++i)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }};
        try {
            finished += music::scanFolder(root, cache, meet).tracks == 5 ? 1 : 0;
        } catch (const engine::JetError& error) {
            ADD_FAILURE() << error.description().toStdString();
        }
    };
    std::thread one(scanOnce), other(scanOnce);
    one.join();
    other.join();
    EXPECT_EQ(finished, 2);
}

TEST_F(FolderScanTest, ACancelledScanKeepsWhatItReadAndTheNextOneCompletes) {
    std::atomic<bool> cancel = false;
    const music::ScanSummary cancelled =
        scan({.report = [&](qint64, qint64 read) { cancel = read == 2; }, .cancel = &cancel});
    EXPECT_EQ(music::summaryLine(cancelled), "Scan cancelled after 2 files read");
    EXPECT_EQ(testsupport::queryRaw(cache, "SELECT count(*) FROM ScanFile"), "2");
    const music::ScanSummary completed = scan();
    EXPECT_EQ(completed.filesRead, 4);
    EXPECT_EQ(tracks().size(), kTracks.size());
}

TEST_F(FolderScanTest, FailuresNameTheirCauseAndLeaveNothingHalf) {
    testsupport::createCompilationDatabase(dir.file("foreign.sqlite"));  // no cache: refused
    const QByteArray foreign = testsupport::fileBytes(dir.file("foreign.sqlite"));
    // folder, cache, error, a name the message holds
    const std::vector<std::tuple<QString, QString, int, QString>> cases{
        {dir.file("none"), cache, engine::jet::kFileNotFound, "none"},
        {root, dir.file("none/cache.sqlite"), engine::jet::kFileNotFound, "none/cache.sqlite"},
        {root, dir.file("foreign.sqlite"), engine::jet::kNotADatabase, "foreign.sqlite"},
        {root, dir.file("cache.full"), engine::jet::kDiskError, "cache.full"}};
    for (const auto& [folder, cacheFile, number, named] : cases) {
        testsupport::FaultyFiles full(".full", testsupport::FaultyFiles::Fault::DiskFull);
        QString message;
        EXPECT_EQ(testsupport::errorNumber([&] { music::scanFolder(folder, cacheFile); }, &message),
                  number);
        EXPECT_TRUE(message.contains(named)) << message.toStdString();
    }
    EXPECT_EQ(testsupport::fileBytes(dir.file("foreign.sqlite")), foreign);
    EXPECT_EQ(music::scanFolder(root, dir.file("cache.full")).tracks, 5);
}

// Connect takes the folder: a cancelled scan connects nothing; a finished one tells its outcome,
// links its cache as an album database, gives the picker a row per track with its file, and an
// added track keeps its file.
TEST_F(FolderScanTest, ConnectingTheFolderGivesThePickerItsTracksWithTheirFiles) {
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
    qputenv("MIXORAMA_MUSIC_CACHE", dir.file("caches").toUtf8());
    testsupport::createCompilationDatabase(dir.file("compilations.mdb"));
    engine::Database database =
        engine::Workspace::defaultWorkspace().openDatabase(dir.file("compilations.mdb"));
    platform::ScriptedDialogs dialogs;
    store::AlbumSourceState state;
    store::EditorConnection editor{false, true, false};
    for (const int cancelAfter : {1, -1}) {
        dialogs.cancelProgressAfter(cancelAfter);
        dialogs.answerFile(root);
        store::connectAlbumDatabase(database, dialogs, state, editor);
        EXPECT_EQ(editor.getTracksEnabled, cancelAfter < 0);
    }
    EXPECT_TRUE(state.albumIsFolder);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.lastMessageText(), "5 tracks in 3 albums; 1 file could not be read");
    EXPECT_EQ(dialogs.messages().back().details, kDiscs + "/broken.wma");
    store::buildTempSource(database, state);
    EXPECT_EQ(state.passedCount, 5);
    database.execute("INSERT INTO Compilation (Name, Format, C_Length) VALUES ('Mix', 'MD', 74)");
    engine::Recordset source =
        database.openRecordset("SELECT * FROM TempSource WHERE TitleTrack = 'B'");
    assembly::addTrack(database, 1, assembly::sourceTrackAt(source), {});
    source.close();
    EXPECT_EQ(testsupport::SqliteFile(dir.file("compilations.mdb"))
                  .lines("SELECT TrackFile FROM CompilationTrack"),
              QStringList{root + '/' + kDiscs + "/d2.m4a"});
    engine::Workspace::defaultWorkspace().close();
}

}  // namespace

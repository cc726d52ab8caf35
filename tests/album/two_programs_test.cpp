#include <QProcess>

#include "album/album_fixture.h"
#include "assembly/performer_tree.h"
#include "assembly/track_picker.h"
#include "engine/recordset.h"
#include "support/databases.h"
#include "support/paths.h"

namespace albumtest {
namespace {

// Two programs on one compilation file, each with an album database of its own. While this one
// shows the tracks of album file X (the picker's record set keeps TempSource's row ids),
// add-tracks connects album file Y and adds its tracks. The track this one adds next is X's, and
// the file never holds a TempSource.
TEST_F(AlbumFileTest, AnotherProgramsSourceNeverReplacesThisOne) {
    const QString x = dir.file("x.mdb");
    const QString y = dir.file("y.mdb");
    albumgen::writeAlbumDatabase(x, {5, 3});
    albumgen::writeAlbumDatabase(y, {5, 4});
    const QString tempSourceInFile = "SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'";
    connectAndBuild(x);
    const QList<SourceRow> rowsOfX = sourceRows();
    ASSERT_GT(rowsOfX.size(), 3);
    // The picker's grid stands on the third row, not yet read, when the other program starts.
    engine::Recordset source = database.openRecordset(assembly::kPlainSource);
    source.move(2);
    EXPECT_EQ(testsupport::queryRaw(compilationPath, tempSourceInFile), "0");

    QProcess other;
    other.start(testsupport::programPath("mixorama-cli"),
                {"add-tracks", compilationPath, "Road Trip", y, "--first", "3"});
    ASSERT_TRUE(other.waitForFinished(60000));
    EXPECT_EQ(other.exitCode(), 0) << other.readAllStandardError().toStdString();
    EXPECT_TRUE(other.readAllStandardOutput().contains("3 track(s) added"));

    const qint64 compilation =
        testsupport::queryRaw(compilationPath, "SELECT CompilationID_P FROM Compilation")
            .toLongLong();
    ASSERT_EQ(
        assembly::addTrack(database, compilation, assembly::sourceTrackAt(source), {}).trackNo, 4);
    const auto chosen = [&](const char* column) {
        return rowsOfX[2][kSourceColumns.indexOf(column)];
    };
    EXPECT_EQ(
        testsupport::queryRaw(compilationPath,
                              "SELECT Track_Artist_Name || ' / ' || Track_Title || ' / ' || "
                              "Album_Title FROM CompilationTrack WHERE TrackNo = 4"),
        chosen("PerformerTrack") + " / " + chosen("TitleTrack") + " / " + chosen("TitleAlbum"));
    EXPECT_EQ(database.openRecordset("SELECT Count(*) AS N FROM TempSource").value(0).toLongLong(),
              rowsOfX.size());
    EXPECT_EQ(testsupport::queryRaw(compilationPath, tempSourceInFile), "0");
}

}  // namespace
}  // namespace albumtest

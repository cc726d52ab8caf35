#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>

#include "album/album_fixture.h"
#include "album/expected_source.h"
#include "assembly/performer_tree.h"
#include "assembly/track_picker.h"
#include "engine/recordset.h"
#include "support/databases.h"
#include "support/paths.h"
#include "support/temp_dir.h"

namespace albumtest {
namespace {

struct CliRun {
    int exitCode = -1;
    QString out;
    QString err;
};

CliRun runCli(const QStringList& arguments) {
    QProcess process;
    process.start(testsupport::programPath("mixorama-cli"), arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

class CliTempSource : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::exists(testsupport::programPath("mixorama-cli")))
            << "build mixorama-cli first";
        qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
        testsupport::createCompilationDatabase(compilations);
    }

    testsupport::TempDir dir;
    QString compilations = dir.file("compilations.mdb");
};

TEST_F(CliTempSource, PrintsTheRowCountOfASmallCollection) {
    albumgen::Options options;
    options.albums = 5;
    options.seed = 3;
    const QString albums = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(albums, options);
    const size_t rows = expectedSourceRows(albumgen::tableRows(albumgen::generate(options))).size();

    const CliRun run = runCli({"tempsource", compilations, albums});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.trimmed(), QString::number(rows));
}

TEST_F(CliTempSource, FailsWithTheMessageOnADamagedFile) {
    const QString damaged = dir.file("damaged.mdb");
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not an album database at all");
    file.close();

    const CliRun run = runCli({"tempsource", compilations, damaged});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains("Unrecognized database format")) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(damaged)) << run.err.toStdString();
}

// Two programs on one compilation file, each with an album database of its own. While this one
// shows the tracks of album file X (the picker's record set keeps TempSource's row ids),
// add-tracks connects album file Y and adds its tracks. The track this one adds next is X's, and
// the file never holds a TempSource.
class SharedCompilationFile : public AlbumFileTest {};

TEST_F(SharedCompilationFile, AnotherProgramsSourceNeverReplacesThisOne) {
    const QString x = dir.file("x.mdb");
    const QString y = dir.file("y.mdb");
    albumgen::writeAlbumDatabase(x, albumgen::Options{5, 3, true});
    albumgen::writeAlbumDatabase(y, albumgen::Options{5, 4, true});
    const QString tempSourceInFile =
        QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'TempSource'");
    connectAndBuild(x);
    const std::vector<SourceRow> rowsOfX = sourceRows();
    ASSERT_GT(rowsOfX.size(), 3u);
    // The picker's grid stands on the third row, not yet read, when the other program starts.
    engine::Recordset source = database.openRecordset(assembly::kPlainSource);
    source.move(2);
    EXPECT_EQ(testsupport::queryRaw(compilationPath, tempSourceInFile), "0");

    const CliRun other = runCli({"add-tracks", compilationPath, "Road Trip", y, "--first", "3"});
    ASSERT_EQ(other.exitCode, 0) << other.err.toStdString();
    EXPECT_TRUE(other.out.contains("3 track(s) added")) << other.out.toStdString();

    const qint64 compilation =
        testsupport::queryRaw(compilationPath, "SELECT CompilationID_P FROM Compilation")
            .toLongLong();
    const assembly::AddResult added =
        assembly::addTrack(database, compilation, assembly::sourceTrackAt(source), {});
    ASSERT_EQ(added.trackNo, 4);
    const SourceRow& chosen = rowsOfX[2];
    EXPECT_EQ(testsupport::queryRaw(compilationPath,
                                    "SELECT Track_Artist_Name || ' / ' || Track_Title || ' / ' || "
                                    "Album_Title FROM CompilationTrack WHERE TrackNo = 4"),
              chosen[columnIndex("PerformerTrack")] + " / " + chosen[columnIndex("TitleTrack")] +
                  " / " + chosen[columnIndex("TitleAlbum")]);
    EXPECT_EQ(database.openRecordset("SELECT Count(*) AS N FROM TempSource").value(0).toLongLong(),
              qint64(rowsOfX.size()));
    EXPECT_EQ(testsupport::queryRaw(compilationPath, tempSourceInFile), "0");
}

}  // namespace
}  // namespace albumtest

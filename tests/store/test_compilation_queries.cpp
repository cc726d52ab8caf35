#include <gtest/gtest.h>

#include "engine/workspace.h"
#include "store/compilation_queries.h"
#include "store/data_control.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

class CompilationQueries : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length)
            VALUES (1, 'Mixed', 3, 600, 'MD', 74), (2, 'Empty', 0, 0, 'CD-R', 80);
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, Track_Artist_Name,
                                          ArtistSort, Album_Title, AlbumArtistSort, AlbumLocation, Length)
            VALUES (1, 2, 'Yesterday', 'The Beatles', 'Beatles, The', 'Help!', 'Beatles, The', 'Shelf A', 125),
                   (1, 1, 'Help!', 'The Beatles', 'Beatles, The', 'Help!', 'Beatles, The', 'Shelf A', 140),
                   (1, 3, 'SOS', 'ABBA', 'ABBA', 'ABBA', 'ABBA', NULL, 335);
        )sql");
        database = engine::Workspace::defaultWorkspace().openDatabase(path);
        compilations.setDatabase(database);
        store::setRecordSource("Compilation", nullptr, compilations, path);
        compilations.refresh();
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    // The rows of a standard kind for the compilation under compilations' cursor.
    engine::Recordset rowsOf(const QString& kind) {
        store::DataControl target;
        target.setDatabase(database);
        store::setRecordSource(kind, &compilations, target, path);
        target.refresh();
        return std::move(target.recordset());
    }
    void goTo(const QString& name) {
        compilations.recordset().findFirst("C_Name = '" + name + "'");
    }

    testsupport::TempDir dir;
    QString path;
    engine::Database database;
    store::DataControl compilations;
};

TEST_F(CompilationQueries, TheCompilationListReadsThroughItsAliases) {
    engine::Recordset& rows = compilations.recordset();
    EXPECT_EQ(compilations.databaseName(), path);
    EXPECT_EQ(rows.recordCount(), 2);
    EXPECT_EQ(rows.value("c_name").toString(), "Empty");
    for (const char* alias : {"C_SumTrack", "C_SumTime", "Manufacturer", "C_Length", "C_Format",
                              "C_Box", "CompilationID_P", "covermemo", "RecDate", "C_Notes"}) {
        EXPECT_GE(rows.fieldIndex(alias), 0) << alias;
    }
}

TEST_F(CompilationQueries, TracksComeInMediumOrderAndAnEmptyCompilationHasNone) {
    goTo("Mixed");
    engine::Recordset tracks = rowsOf("CompilationTrack");
    ASSERT_EQ(tracks.recordCount(), 3);
    QStringList titles;
    for (int i = 0; i < 3; ++i)
        titles << tracks.rowAt(i)[tracks.fieldIndex("Track_Title")].toString();
    EXPECT_EQ(titles, QStringList({"Help!", "Yesterday", "SOS"}));
    goTo("Empty");
    EXPECT_EQ(rowsOf("compilationtrack").recordCount(), 0);
}

TEST_F(CompilationQueries, AlbumsNeededGivesOneRowPerAlbum) {
    goTo("Mixed");
    engine::Recordset albums = rowsOf("ALBUMNEEDED");
    ASSERT_EQ(albums.recordCount(), 2);
    EXPECT_EQ(albums.rowAt(0)[albums.fieldIndex("Album_Title")].toString(), "ABBA");
    EXPECT_TRUE(albums.rowAt(0)[albums.fieldIndex("AlbumLocation")].isNull());
    EXPECT_EQ(albums.rowAt(1)[albums.fieldIndex("AlbumLocation")].toString(), "Shelf A");
}

TEST_F(CompilationQueries, SongsOnCompilationsRunByPerformer) {
    engine::Recordset songs = rowsOf("SongOnCompilation");
    ASSERT_EQ(songs.recordCount(), 3);
    EXPECT_EQ(songs.rowAt(0)[songs.fieldIndex("ArtistSort")].toString(), "ABBA");
    EXPECT_EQ(songs.rowAt(2)[songs.fieldIndex("Track_Title")].toString(), "Yesterday");
    EXPECT_EQ(songs.rowAt(2)[songs.fieldIndex("Name")].toString(), "Mixed");
}

TEST_F(CompilationQueries, AnUnknownKindChangesOnlyTheDatabaseName) {
    store::DataControl target;
    target.setRecordSource("SELECT 1");
    store::setRecordSource("Nothing", &compilations, target, "other.mdb");
    EXPECT_EQ(target.databaseName(), "other.mdb");
    EXPECT_EQ(target.recordSource(), "SELECT 1");
    EXPECT_TRUE(store::standardStatement("compilationtrack", 7)
                    .endsWith("CompilationTrack.CompilationID_F1 = 7 ORDER BY Compilation.Name, "
                              "CompilationTrack.TrackNo "));
    EXPECT_TRUE(store::standardStatement("AlbumNeeded", 7)
                    .endsWith("HAVING Compilation.CompilationID_P = 7"));
}

TEST_F(CompilationQueries, RecordCountLeavesTheCursorOnTheFirstRow) {
    compilations.recordset().moveLast();
    const store::RecordCountText text = store::showRecordCount(compilations.recordset(), path);
    EXPECT_EQ(text.database, "Database " + path);
    EXPECT_EQ(text.count, "C 2");
    EXPECT_EQ(compilations.recordset().absolutePosition(), 0);

    database.execute("DELETE FROM Compilation");
    compilations.refresh();
    EXPECT_EQ(store::showRecordCount(compilations.recordset(), path).count, "C 0");
    EXPECT_TRUE(compilations.recordset().eof());
}

}  // namespace

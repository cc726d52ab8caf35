#include <gtest/gtest.h>

#include "engine/workspace.h"
#include "store/compilation_queries.h"
#include "store/data_control.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

TEST(CompilationQueries, EachKindReadsItsRowsForTheCurrentCompilation) {
    testsupport::TempDir dir;
    const QString path = dir.file("coll.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path, R"sql(
    INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length)
    VALUES (1, 'Mixed', 'MD', 74), (2, 'Empty', 'MD', 74);
    INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, ArtistSort,
                                  Album_Title, AlbumLocation)
    VALUES (1, 2, 'Yesterday', 'Beatles', 'Help!', 'Shelf A'),
           (1, 3, 'SOS', 'ABBA', 'ABBA', NULL), (1, 1, 'Help!', 'Beatles', 'Help!', 'Shelf A');
)sql");
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    store::DataControl compilations;
    compilations.setDatabase(database);
    store::setRecordSource("Compilation", nullptr, compilations, path);
    compilations.refresh();
    // One column of a standard kind's rows for the compilation named.
    const auto column = [&](const QString& kind, const QString& name, const QString& field) {
        compilations.recordset().findFirst("C_Name = '" + name + "'");
        store::DataControl target;
        target.setDatabase(database);
        store::setRecordSource(kind, &compilations, target, path);
        target.refresh();
        QStringList values;
        for (engine::Recordset& rows = target.recordset(); !rows.eof(); rows.moveNext())
            values << rows.value(field).toString();
        return values.join('|');
    };
    EXPECT_EQ(column("compilationtrack", "Mixed", "Track_Title"), "Help!|Yesterday|SOS");
    EXPECT_EQ(column("CompilationTrack", "Empty", "Track_Title"), "");
    EXPECT_EQ(column("ALBUMNEEDED", "Mixed", "AlbumLocation"), "|Shelf A");
    EXPECT_EQ(column("SongOnCompilation", "Mixed", "Track_Title"), "SOS|Help!|Yesterday");

    compilations.recordset().moveLast();
    const store::RecordCountText text = store::showRecordCount(compilations.recordset(), path);
    EXPECT_EQ(text.database, "Database " + path);
    EXPECT_EQ(text.count, "C 2");
    EXPECT_EQ(compilations.recordset().absolutePosition(), 0);  // back on the first row
    engine::Workspace::defaultWorkspace().close();
}

}  // namespace

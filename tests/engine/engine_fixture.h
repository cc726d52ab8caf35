#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

using testsupport::errorNumber;

// A compilation database with a few compilations and tracks, opened through the engine.
class EngineFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length, Box, RecDate, Notes)
            VALUES (1, 'Beatles Best', 2, 400, 'MD', 74, 'Box 1', '1997-01-21', 'first'),
                   (2, 'abba hits', 1, 170, 'CD-R', 80, NULL, '1999-12-31', NULL),
                   (3, 'Ärzte Live', 0, 0, 'MD', 74, 'Box [2]', '2000-01-01', 'Rock''n''Roll'),
                   (4, 'Zappa', 0, 0, 'Cassette', 90, 'Box 1', NULL, NULL);
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, Length, Live, Album_Title, AlbumArtistSort, AlbumLocation)
            VALUES (1, 1, 'Help!', 140, 0, 'Help!', 'Beatles, The', 'Shelf A'),
                   (1, 2, 'Yesterday', 260, -1, 'Help!', 'Beatles, The', 'Shelf A'),
                   (2, 1, 'SOS', 170, 0, 'ABBA', 'ABBA', NULL);
        )sql");
        db = engine::Workspace::defaultWorkspace().openDatabase(path);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    QStringList column(engine::Recordset& rows, const QString& field) {
        QStringList values;
        for (int i = 0; i < rows.recordCount(); ++i) {
            values << rows.rowAt(i)[rows.fieldIndex(field)].toString();
        }
        return values;
    }

    testsupport::TempDir dir;
    QString path;
    engine::Database db;
};

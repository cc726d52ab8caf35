#pragma once

#include <gtest/gtest.h>

#include "engine/database.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "support/databases.h"
#include "support/temp_dir.h"

// A compilation database with four compilations and a TempSource of seven tracks, as the
// track picker builds it. Rows in TempSource order:
//   1 Zappa, Frank    Peaches           Length 0    Item 1 Index 1  not live
//   2 Beatles, The    Help!             Length 260  Item 1 Index 1  not live
//   3 beat happening  Indian Summer     Length 300  Item 1 Index 2  live, no rating
//   4 O'Neil, Sinead  Nothing Compares  Length 205  Item 2 Index 1  not live
//   5 Beatles, The    Yesterday         Length 125  Item 2 Index 3  live, no rating
//   6 B*at [Test]     Title?            no Length   Item 1 Index 1  not live
//   7 beatles, the    Michelle          Length 160  Item 3 Index 1  not live
class GotoFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("goto.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length,
                                     Box, RecDate, Notes, Manufacturer)
            VALUES (1, 'Beatles Best', 2, 400, 'MD', 74, 'Box 1', '1997-01-21', 'first', NULL),
                   (2, 'abba hits', 1, 170, 'CD-R', 80, NULL, '1999-12-31', NULL, NULL),
                   (3, 'O''Neil Mix', 0, 0, 'MD', 74, 'Box 1', '2000-01-01', 'Rock''n''Roll',
                    NULL),
                   (4, 'Zappa', 1, 400, 'Cassette', 90, NULL, NULL, NULL, NULL);
        )sql");
        db = engine::Workspace::defaultWorkspace().openDatabase(path);
        testsupport::execOnConnection(db, R"sql(
            CREATE TEMP TABLE TempSource (
                ArtistSort TEXT(255) COLLATE MIXORAMA_TEXT, PerformerTrack TEXT(255) COLLATE MIXORAMA_TEXT,
                TitleTrack TEXT(255) COLLATE MIXORAMA_TEXT, Item SMALLINT, "Index" SMALLINT,
                Length INTEGER, Version TEXT(255) COLLATE MIXORAMA_TEXT, Live YESNO,
                RecordedStart TEXT(50) COLLATE MIXORAMA_TEXT, TitleAlbum TEXT(255) COLLATE MIXORAMA_TEXT,
                PerformerAlbum TEXT(255) COLLATE MIXORAMA_TEXT, AlbumArtistSort TEXT(255) COLLATE MIXORAMA_TEXT,
                TrackTrackID INTEGER, TrackAlbumID INTEGER, RatingTrack TEXT(50) COLLATE MIXORAMA_TEXT,
                Location TEXT(255) COLLATE MIXORAMA_TEXT, ArtistID INTEGER, TrackID INTEGER,
                MyRecorded SMALLINT);
            INSERT INTO TempSource (ArtistSort, PerformerTrack, TitleTrack, Item, "Index", Length,
                                    Live, TitleAlbum, AlbumArtistSort, RatingTrack, MyRecorded,
                                    TrackID)
            VALUES ('Zappa, Frank', 'Frank Zappa', 'Peaches', 1, 1, 0, 0, 'Hot Rats',
                    'Zappa, Frank', '***', 1969, 1),
                   ('Beatles, The', 'The Beatles', 'Help!', 1, 1, 260, 0, 'Help!',
                    'Beatles, The', '*****', 1965, 2),
                   ('beat happening', 'Beat Happening', 'Indian Summer', 1, 2, 300, -1,
                    'Jamboree', 'Beat Happening', NULL, NULL, 3),
                   ('O''Neil, Sinead', 'Sinead O''Neil', 'Nothing Compares', 2, 1, 205, 0,
                    'I Do Not Want', NULL, '****', 1990, 4),
                   ('Beatles, The', 'The Beatles', 'Yesterday', 2, 3, 125, -1, 'Anthology',
                    'Beatles, The', NULL, 1965, 5),
                   ('B*at [Test]', 'Odd', 'Title?', 1, 1, NULL, 0, 'Odd Album', 'Odd', '*',
                    2001, 6),
                   ('beatles, the', 'the beatles', 'Michelle', 3, 1, 160, 0, 'Rubber Soul',
                    'Beatles, The', '****', 1965, 7);
        )sql");
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    // The source grid's record set, as the track picker binds it without sort.
    engine::Recordset openSource() {
        return db.openRecordset(QStringLiteral("SELECT * FROM tempsource"),
                                engine::RecordsetType::Dynaset);
    }
    // The main window's compilation list, with the aliases of its standard statement.
    engine::Recordset openCompilations() {
        return db.openRecordset(
            QStringLiteral("SELECT Compilation.Name AS C_Name, Compilation.SumTrack AS "
                           "C_SumTrack, Compilation.SumTime AS C_SumTime, Compilation.C_Length, "
                           "Compilation.RecDate AS RecDate, Compilation.Notes AS C_Notes "
                           "FROM Compilation ORDER BY Compilation.Name"),
            engine::RecordsetType::Dynaset);
    }

    static inline const QString kInputHint = QStringLiteral("Time as: HHMMSS    Date as: DD.MM.YY");

    testsupport::TempDir dir;
    QString path;
    engine::Database db;
    platform::ScriptedDialogs dialogs;
};

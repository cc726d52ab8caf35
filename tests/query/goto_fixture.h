#pragma once

#include <gtest/gtest.h>

#include "engine/database.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "support/databases.h"
#include "support/document_summary.h"  // texts in failure messages
#include "support/temp_dir.h"

// A compilation database with four compilations and a TempSource of seven tracks, as the track
// picker builds it (the columns the tests read), in TempSource order.
class GotoFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("goto.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
        INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length,
                                 Box, RecDate, Notes)
        VALUES (1, 'Beatles Best', 2, 400, 'MD', 74, 'Box 1', '1997-01-21', 'first'),
               (2, 'abba hits', 1, 170, 'CD-R', 80, NULL, '1999-12-31', NULL),
               (3, 'O''Neil Mix', 0, 0, 'MD', 74, 'Box 1', '2000-01-01', 'Rock''n''Roll'),
               (4, 'Zappa', 1, 400, 'Cassette', 90, NULL, NULL, NULL);)sql");
        db = engine::Workspace::defaultWorkspace().openDatabase(path);
        testsupport::execOnConnection(db, R"sql(
        CREATE TEMP TABLE TempSource (
            ArtistSort TEXT(255) COLLATE MIXORAMA_TEXT, TitleTrack TEXT(255) COLLATE MIXORAMA_TEXT,
            Item SMALLINT, "Index" SMALLINT, Length INTEGER, Live YESNO, Version TEXT(255),
            TitleAlbum TEXT(255) COLLATE MIXORAMA_TEXT, RatingTrack TEXT(50),
            AlbumArtistSort TEXT(255) COLLATE MIXORAMA_TEXT, MyRecorded SMALLINT, TrackID INTEGER);
        INSERT INTO TempSource (ArtistSort, TitleTrack, Item, "Index", Length, Live, TitleAlbum,
                                AlbumArtistSort, RatingTrack, MyRecorded, TrackID)
        VALUES ('Zappa, Frank', 'Peaches', 1, 1, 0, 0, 'Hot Rats', 'Zappa, Frank', '***', 1969, 1),
               ('Beatles, The', 'Help!', 1, 1, 260, 0, 'Help!', 'Beatles, The', '*****', 1965, 2),
               ('beat happening', 'Indian Summer', 1, 2, 300, -1, 'Jamboree', 'Beat Happening',
                NULL, NULL, 3),
               ('O''Neil, Sinead', 'Nothing Compares', 2, 1, 205, 0, 'I Do Not Want', NULL,
                '****', 1990, 4),
               ('Beatles, The', 'Yesterday', 2, 3, 125, -1, 'Anthology', 'Beatles, The', NULL,
                1965, 5),
               ('B*at [Test]', 'Title?', 1, 1, NULL, 0, 'Odd Album', 'Odd', '*', 2001, 6),
               ('beatles, the', 'Michelle', 3, 1, 160, 0, 'Rubber Soul', 'Beatles, The', '****',
                1965, 7);)sql");
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    // One field of a record source's rows, joined by "|".
    QString values(const QString& source, const QString& field) {
        QStringList values;
        for (engine::Recordset rows = db.openRecordset(source); !rows.eof(); rows.moveNext())
            values << rows.value(field).toString();
        return values.join('|');
    }

    static inline const QString kInputHint = QStringLiteral("Time as: HHMMSS    Date as: DD.MM.YY");

    testsupport::TempDir dir;
    QString path;
    engine::Database db;
    platform::ScriptedDialogs dialogs;
};

#pragma once

#include <QString>

#include "engine/database.h"
#include "engine/recordset.h"

namespace bench {

// Adds a compilation of 20 tracks, the track picker's target, and gives its id.
inline qint64 addTargetCompilation(engine::Database& database) {
    database.execute(QStringLiteral(
        "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('Bench', 'MiniDisc', 74)"));
    const qint64 id =
        database.openRecordset(QStringLiteral("SELECT Max(CompilationID_P) FROM Compilation"))
            .value(0)
            .toLongLong();
    for (int track = 1; track <= 20; ++track) {
        database.execute(QStringLiteral("INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, "
                                        "Track_Artist_Name, Track_Title, Length) "
                                        "VALUES (%1, %2, 'Performer', 'Title %2', 200)")
                             .arg(id)
                             .arg(track));
    }
    return id;
}

}  // namespace bench

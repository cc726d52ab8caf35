#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include "engine/database.h"
#include "engine/recordset.h"
#include "platform/program_folder.h"

namespace bench {

// A fresh copy of the template in the work folder, one per run.
inline QString templateCopy(const QTemporaryDir& work, int run) {
    const QString path = work.filePath(QStringLiteral("compilations-%1.mdb").arg(run));
    QFile::copy(platform::programFolder() + QStringLiteral("/template.mdb"), path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return path;
}

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

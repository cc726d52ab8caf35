#include "store/compilation_queries.h"

#include "engine/connection.h"
#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "store/data_control.h"

namespace store {

namespace {

const QString kCompilationColumns = QStringLiteral(
    "SELECT   Compilation.Name AS C_Name, Compilation.SumTrack AS C_SumTrack, "
    "         Compilation.SumTime AS C_SumTime, "
    "         Compilation.Manufacturer AS Manufacturer, "
    "         Compilation.C_Length, Compilation.Format AS C_Format, "
    "         Compilation.Box AS C_Box, Compilation.CompilationID_P, "
    "         Compilation.CoverMemo as CoverMemo, "
    "         Compilation.RecDate AS RecDate, Compilation.Notes AS C_Notes "
    "FROM     Compilation ");
const QString kCompilation = kCompilationColumns + QStringLiteral("ORDER BY Compilation.Name");

QString compilationTrack(const QString& id) {
    return QStringLiteral(
               "SELECT Compilation.*, CompilationTrack.* "
               "FROM   Compilation LEFT JOIN CompilationTrack ON "
               "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
               "WHERE  CompilationTrack.CompilationID_F1 = ") +
           id + QStringLiteral(" ORDER BY Compilation.Name, CompilationTrack.TrackNo ");
}

QString albumNeeded(const QString& id) {
    return QStringLiteral(
               "SELECT Compilation.CompilationID_P, Compilation.Name, Compilation.SumTime, "
               "       Compilation.Manufacturer, Compilation.Format, Compilation.Box, "
               "       Compilation.RecDate, CompilationTrack.AlbumArtistSort, "
               "       CompilationTrack.Album_Title, CompilationTrack.AlbumLocation "
               "FROM   Compilation INNER JOIN CompilationTrack ON "
               "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
               "GROUP BY Compilation.CompilationID_P, Compilation.Name, "
               "       Compilation.SumTime, Compilation.Manufacturer, Compilation.Format, "
               "       Compilation.Box, Compilation.RecDate, "
               "       CompilationTrack.AlbumArtistSort, CompilationTrack.Album_Title, "
               "       CompilationTrack.AlbumLocation "
               "HAVING Compilation.CompilationID_P = ") +
           id;
}

const QString kSongOnCompilation = QStringLiteral(
    "SELECT CompilationTrack.Track_Artist_Name, CompilationTrack.Album_Title, "
    "       CompilationTrack.Track_Title, CompilationTrack.RecordedStart, "
    "       CompilationTrack.Album_Artist_Name, "
    "       CompilationTrack.Version, CompilationTrack.Live, CompilationTrack.ArtistSort, "
    "       CompilationTrack.Length, CompilationTrack.TrackNo, Compilation.Name "
    "FROM   Compilation RIGHT JOIN CompilationTrack ON "
    "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 "
    "ORDER BY CompilationTrack.ArtistSort, CompilationTrack.Album_Title, "
    "       CompilationTrack.Track_Title ");

bool takesId(const QString& kind) {
    return kind == QLatin1String("compilationtrack") || kind == QLatin1String("albumneeded");
}

// A file may pass the structure check with tables of other columns: it opens without the index.
bool hasLookupColumns(engine::Database& database) {
    engine::Recordset columns =
        database.openRecordset(QStringLiteral("SELECT * FROM CompilationTrack WHERE False"),
                               engine::RecordsetType::Snapshot);
    return columns.fieldIndex(QStringLiteral("Track_Artist_Name")) >= 0 &&
           columns.fieldIndex(QStringLiteral("Track_Title")) >= 0;
}

}  // namespace

QString standardStatement(const QString& kind, std::optional<qint64> compilationId) {
    const QString lower = kind.toLower();
    const QString id = compilationId ? QString::number(*compilationId) : QString();
    if (lower == QLatin1String("compilation"))
        return kCompilation;
    if (lower == QLatin1String("compilationtrack"))
        return compilationTrack(id);
    if (lower == QLatin1String("albumneeded"))
        return albumNeeded(id);
    if (lower == QLatin1String("songoncompilation"))
        return kSongOnCompilation;
    return QString();
}

QString compilationRowStatement(qint64 compilationId) {
    return kCompilationColumns + QStringLiteral("WHERE    Compilation.CompilationID_P = ") +
           QString::number(compilationId);
}

std::optional<CoverKind> coverKindOf(const QString& format) {
    const QString lower = format.toLower();
    if (lower == QLatin1String("md")) {
        return CoverKind::Md;
    }
    if (lower == QLatin1String("cd-rom")) {
        return CoverKind::CdRom;
    }
    return std::nullopt;
}

void setRecordSource(const QString& kind, DataControl* compilationControl, DataControl& target,
                     const QString& databasePath) {
    target.setDatabaseName(databasePath);
    const QString lower = kind.toLower();
    if (standardStatement(lower).isEmpty()) {
        return;
    }
    std::optional<qint64> id;
    if (takesId(lower) && compilationControl != nullptr) {
        try {
            id = compilationControl->recordset()
                     .value(QStringLiteral("CompilationID_P"))
                     .toLongLong();
        } catch (const engine::JetError&) {
            // No current compilation: the statement ends without an id, as the step is skipped.
        }
    }
    target.setRecordSource(standardStatement(lower, id));
}

RecordCountText showRecordCount(engine::Recordset& recordset, const QString& databasePath) {
    if (!recordset.eof()) {
        recordset.moveLast();
    }
    RecordCountText text{QStringLiteral("Database ") + databasePath,
                         QStringLiteral("C ") + QString::number(recordset.recordCount())};
    if (!recordset.bof()) {
        recordset.moveFirst();
    }
    return text;
}

void ensureTrackLookupIndex(engine::Database& database) {
    if (database.readOnly() || engine::isWriteProtected(database.name()) ||
        !hasLookupColumns(database)) {
        return;
    }
    // Text columns carry the engine's collation, so the index serves the case-blind comparison.
    database.execute(
        QStringLiteral("CREATE INDEX IF NOT EXISTS CompilationTrack_Lookup "
                       "ON CompilationTrack (Track_Artist_Name, Track_Title)"));
}

}  // namespace store

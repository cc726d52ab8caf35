#include "assembly/track_picker.h"

#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/transaction.h"
#include "query/field_values.h"
#include "store/compilation_invariants.h"
#include "store/track_files.h"

namespace assembly {

namespace {

QString compilationTracksWhere(qint64 compilationId) {
    return QStringLiteral(" WHERE CompilationID_F1=") + QString::number(compilationId);
}

void requireCompilation(engine::Database& database, qint64 compilationId) {
    engine::Recordset compilation = database.openRecordset(
        QStringLiteral("SELECT CompilationID_P FROM Compilation WHERE CompilationID_P=") +
            QString::number(compilationId),
        engine::RecordsetType::Snapshot);
    if (compilation.recordCount() == 0) {
        throw engine::noCurrentRecordError();
    }
}

void storeSums(engine::Database& database, qint64 compilationId, const TrackSums& sums) {
    database.execute(
        QStringLiteral("UPDATE Compilation SET SumTrack=%1, SumTime=%2 WHERE CompilationID_P=%3")
            .arg(sums.trackCount)
            .arg(sums.totalTime)
            .arg(compilationId));
}

// Writes the new row's fields in the order the picker has always written them.
void copyTrack(engine::Recordset& tracks, qint64 compilationId, int trackNo,
               const SourceTrack& track) {
    tracks.setValue(QStringLiteral("CompilationID_F1"), compilationId);
    tracks.setValue(QStringLiteral("Track_Artist_Name"), track.performerTrack);
    tracks.setValue(QStringLiteral("Track_Title"), track.titleTrack);
    tracks.setValue(QStringLiteral("Length"), track.length);
    tracks.setValue(QStringLiteral("RecordedStart"), track.myRecorded);
    tracks.setValue(QStringLiteral("Album_Title"), track.titleAlbum);
    tracks.setValue(QStringLiteral("TrackNo"), trackNo);
    tracks.setValue(QStringLiteral("Live"), track.live);
    tracks.setValue(QStringLiteral("Version"), track.version);
    tracks.setValue(QStringLiteral("Album_Artist_Name"), track.performerAlbum);
    tracks.setValue(QStringLiteral("Item"), track.item);
    tracks.setValue(QStringLiteral("Index"), track.index);
    tracks.setValue(QStringLiteral("Track_Rating"), track.ratingTrack);
    tracks.setValue(QStringLiteral("ArtistSort"), track.artistSort);
    tracks.setValue(QStringLiteral("AlbumArtistSort"), track.albumArtistSort);
    tracks.setValue(QStringLiteral("AlbumLocation"), track.location);
    tracks.setValue(QStringLiteral("AlbumoryTrackID"), track.trackTrackId);
    tracks.setValue(QStringLiteral("AlbumoryAlbumID"), track.trackAlbumId);
    if (!track.file.isNull()) {
        tracks.setValue(store::kTrackFileColumn, track.file);
    }
}

// Deletes the first row numbered trackNo; false when there is none.
bool deleteTrackRow(engine::Database& database, qint64 compilationId, int trackNo) {
    engine::Recordset tracks =
        database.openRecordset(QStringLiteral("SELECT TrackNo FROM CompilationTrack") +
                               compilationTracksWhere(compilationId) +
                               QStringLiteral(" AND TrackNo=") + QString::number(trackNo));
    if (tracks.recordCount() == 0) {
        return false;
    }
    tracks.moveFirst();
    tracks.remove();
    return true;
}

}  // namespace

QString trackLookupStatement(const QString& performer, const QString& title) {
    return QStringLiteral("SELECT Compilation.*, CompilationTrack.* ") +
           QStringLiteral("FROM   Compilation LEFT JOIN CompilationTrack ON ") +
           QStringLiteral(
               "       Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 ") +
           QStringLiteral(" WHERE Track_Artist_Name='") +
           query::escapeSql(query::EscapeFor::Literal, performer) +
           QStringLiteral("' AND Track_Title='") +
           query::escapeSql(query::EscapeFor::Literal, title) + QStringLiteral("' ") +
           QStringLiteral(" ORDER BY Compilation.Name, CompilationTrack.TrackNo ");
}

engine::Recordset findTrackOnCompilations(engine::Database& database, const QString& performer,
                                          const QString& title) {
    return database.openRecordset(trackLookupStatement(performer, title));
}

SourceTrack sourceTrackAt(const engine::Recordset& tempSource) {
    const auto field = [&](const char* name) { return tempSource.value(QLatin1String(name)); };
    SourceTrack track;
    track.performerTrack = field("PerformerTrack");
    track.titleTrack = field("TitleTrack");
    track.length = field("Length");
    track.myRecorded = field("MyRecorded");
    track.titleAlbum = field("TitleAlbum");
    track.live = field("Live");
    track.version = field("Version");
    track.performerAlbum = field("PerformerAlbum");
    track.item = field("Item");
    track.index = field("Index");
    track.ratingTrack = field("RatingTrack");
    track.artistSort = field("ArtistSort");
    track.albumArtistSort = field("AlbumArtistSort");
    track.location = field("Location");
    track.trackTrackId = field("TrackTrackID");
    track.trackAlbumId = field("TrackAlbumID");
    if (tempSource.fieldIndex(store::kTrackFileColumn) >= 0) {
        track.file = tempSource.value(store::kTrackFileColumn);
    }
    return track;
}

TrackSums countTracks(engine::Database& database, qint64 compilationId) {
    engine::Recordset totals = database.openRecordset(
        QStringLiteral("SELECT Count(*) AS Tracks, Sum(Length) AS Seconds FROM CompilationTrack") +
            compilationTracksWhere(compilationId),
        engine::RecordsetType::Snapshot);
    // Sum ignores Null lengths and is Null without any length: both count as 0 seconds.
    return TrackSums{totals.value(0).toInt(), totals.value(1).toLongLong()};
}

AddResult addTrack(engine::Database& database, qint64 compilationId, const SourceTrack& track,
                   const ConfirmRecorded& confirmRecorded) {
    requireCompilation(database, compilationId);
    {
        engine::Recordset recorded = findTrackOnCompilations(
            database, track.performerTrack.toString(), track.titleTrack.toString());
        if (recorded.recordCount() > 0 && confirmRecorded && !confirmRecorded(recorded)) {
            return AddResult{false, 0, countTracks(database, compilationId)};
        }
    }
    engine::ScopedTransaction transaction(database);
    const TrackSums before = countTracks(database, compilationId);
    AddResult result;
    result.added = true;
    result.trackNo = before.trackCount + 1;
    if (!track.file.isNull()) {
        store::ensureTrackFileColumn(database);
    }
    {
        engine::Recordset tracks =
            database.openRecordset(QStringLiteral("SELECT * FROM CompilationTrack") +
                                   compilationTracksWhere(compilationId));
        tracks.addNew();
        copyTrack(tracks, compilationId, result.trackNo, track);
        tracks.update();
    }
    // A Null length counts 0 seconds, as in countTracks.
    result.sums = TrackSums{result.trackNo, before.totalTime + track.length.toLongLong()};
    storeSums(database, compilationId, result.sums);
    transaction.commit();
    return result;
}

TrackSums removeTrack(engine::Database& database, qint64 compilationId, int trackNo) {
    engine::ScopedTransaction transaction(database);
    if (!deleteTrackRow(database, compilationId, trackNo)) {
        throw engine::noCurrentRecordError();
    }
    store::renumberTracks(database, compilationId);
    const TrackSums sums = countTracks(database, compilationId);
    storeSums(database, compilationId, sums);
    transaction.commit();
    return sums;
}

qint64 timeCapacity(int lengthMinutes, int trackCount) {
    return qint64(lengthMinutes) * 60 - 3 * (qint64(trackCount) - 1);
}

bool exceedsMedium(qint64 totalTime, int lengthMinutes, int trackCount) {
    return totalTime > timeCapacity(lengthMinutes, trackCount);
}

quint32 timeColour(qint64 totalTime, int lengthMinutes, int trackCount) {
    return exceedsMedium(totalTime, lengthMinutes, trackCount) ? kTimeExceedsColour
                                                               : kTimeFitsColour;
}

bool rearrangeEnabled(int trackCount) {
    return trackCount >= 2;
}

QString sourcePositionText(int absolutePosition, qint64 passedCount) {
    return QString::number(absolutePosition + 1) + QLatin1Char(' ') + QString::number(passedCount);
}

}  // namespace assembly

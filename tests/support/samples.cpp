#include "support/samples.h"

#include <QStringList>

#include "support/databases.h"

namespace testsupport {

namespace {

QString trackValues(qint64 compilationId, const SampleTrack& t) {
    const QString albumPerformer = t.albumPerformer.isEmpty() ? t.performer : t.albumPerformer;
    return QStringList{QString::number(compilationId),
                       // TrackNo: one more than the compilation's last, whatever came before.
                       QStringLiteral("(SELECT coalesce(max(TrackNo), 0) + 1 FROM "
                                      "CompilationTrack WHERE CompilationID_F1 = %1)")
                           .arg(compilationId),
                       sqlText(t.performer), sqlText(t.title), sqlText(t.album),
                       sqlText(albumPerformer), QString::number(t.seconds),
                       t.year == 0 ? "NULL" : QString::number(t.year), t.live ? "-1" : "0",
                       QString::number(t.item), QString::number(t.index), sqlText(t.performerSort),
                       sqlText(t.albumPerformerSort), sqlText(t.location), sqlText(t.version),
                       sqlText(t.rating)}
        .join(", ");
}

QString insertTracks(qint64 compilationId, const QList<SampleTrack>& tracks) {
    QString sql;
    for (const SampleTrack& track : tracks) {
        sql +=
            "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, "
            "Track_Title, Album_Title, Album_Artist_Name, Length, RecordedStart, Live, Item, "
            "\"Index\", ArtistSort, AlbumArtistSort, AlbumLocation, Version, Track_Rating) "
            "VALUES (" +
            trackValues(compilationId, track) + ");\n";
    }
    sql += QStringLiteral(
               "UPDATE Compilation SET SumTrack = (SELECT count(*) FROM "
               "CompilationTrack WHERE CompilationID_F1 = %1), SumTime = (SELECT "
               "coalesce(sum(Length), 0) FROM CompilationTrack WHERE "
               "CompilationID_F1 = %1) WHERE CompilationID_P = %1;\n")
               .arg(compilationId);
    return sql;
}

}  // namespace

QString sqlText(const QString& text) {
    if (text.isEmpty()) {
        return QStringLiteral("NULL");
    }
    QString quoted = text;
    return "'" + quoted.replace('\'', "''") + "'";
}

qint64 addSample(const QString& path, const SampleCompilation& c) {
    const QString id = c.id == 0 ? QStringLiteral("NULL") : QString::number(c.id);
    const QString recDate = sqlText(c.recDate);
    execRaw(path,
            "BEGIN; INSERT INTO Compilation (CompilationID_P, Name, Manufacturer, Format, "
            "C_Length, Box, RecDate, Notes, CoverMemo) VALUES (" +
                QStringList{id, sqlText(c.name), sqlText(c.manufacturer), sqlText(c.format),
                            QString::number(c.minutes), sqlText(c.box), recDate, sqlText(c.notes),
                            sqlText(c.coverMemo)}
                    .join(", ") +
                "); COMMIT;");
    const qint64 stored = c.id != 0 ? c.id
                                    : queryRaw(path,
                                               "SELECT CompilationID_P FROM Compilation "
                                               "WHERE Name = " +
                                                   sqlText(c.name))
                                          .toLongLong();
    execRaw(path, "BEGIN;\n" + insertTracks(stored, c.tracks) + "COMMIT;");
    return stored;
}

QString trackList(const QString& path, qint64 compilationId) {
    return queryRaw(path, QStringLiteral("SELECT group_concat(TrackNo || ':' || Track_Title, ' ') "
                                         "FROM (SELECT * FROM CompilationTrack WHERE "
                                         "CompilationID_F1 = %1 ORDER BY TrackNo)")
                              .arg(compilationId));
}

QString storedSums(const QString& path, qint64 compilationId) {
    return queryRaw(path, QStringLiteral("SELECT SumTrack || '/' || SumTime FROM Compilation "
                                         "WHERE CompilationID_P = %1")
                              .arg(compilationId));
}

int brokenCompilations(const QString& path) {
    return queryRaw(
               path,
               "SELECT count(*) FROM Compilation c WHERE "
               "SumTrack IS NOT (SELECT count(*) FROM CompilationTrack WHERE "
               "CompilationID_F1 = c.CompilationID_P) OR "
               "SumTime IS NOT (SELECT coalesce(sum(Length), 0) FROM CompilationTrack WHERE "
               "CompilationID_F1 = c.CompilationID_P) OR "
               "(SELECT count(DISTINCT TrackNo) FROM CompilationTrack WHERE CompilationID_F1 = "
               "c.CompilationID_P AND TrackNo BETWEEN 1 AND c.SumTrack) IS NOT c.SumTrack")
        .toInt();
}

}  // namespace testsupport

#include "pipeline.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <stdexcept>

#include "timing.h"

namespace bench {

namespace {

const QStringList kTables{"Album",           "Artist",   "Track",      "ArtistAlbumLink",
                          "ArtistTrackLink", "Location", "TrackRating"};

// The source table's join in SQLite's words, ordered case-blind by the three sort texts only:
// the script a user would write, without indexes and without the item and index keys.
QString joinScript(bool withRating) {
    QString sql = QStringLiteral(
        "CREATE TABLE TempSource AS SELECT Track.ArtistSort, Artist.Name AS PerformerTrack, "
        "Track.Title AS TitleTrack, Track.Item, Track.\"Index\", Track.Length, Track.Version, "
        "Track.Live, Track.RecordedStart, Album.Title AS TitleAlbum, "
        "Artist_1.Name AS PerformerAlbum, Album.ArtistSort AS AlbumArtistSort, "
        "Track.TrackID AS TrackTrackID, Track.AlbumID AS TrackAlbumID, ");
    sql += withRating ? QStringLiteral("TrackRating.TrackRating AS RatingTrack, ") : QString();
    sql += QStringLiteral(
        "Location.Location, ArtistTrackLink.ArtistID, ArtistTrackLink.TrackID "
        "FROM Artist JOIN ArtistTrackLink ON Artist.ArtistID = ArtistTrackLink.ArtistID "
        "JOIN Track ON Track.TrackID = ArtistTrackLink.TrackID "
        "JOIN Album ON Track.AlbumID = Album.AlbumID "
        "JOIN ArtistAlbumLink ON Album.AlbumID = ArtistAlbumLink.AlbumID "
        "JOIN Artist AS Artist_1 ON ArtistAlbumLink.ArtistID = Artist_1.ArtistID ");
    if (withRating)
        sql += QStringLiteral(
            "LEFT JOIN TrackRating ON Track.TrackRatingID = TrackRating.TrackRatingID ");
    sql += QStringLiteral(
        "LEFT JOIN Location ON Album.LocationID = Location.LocationID "
        "ORDER BY Track.ArtistSort COLLATE NOCASE, Album.ArtistSort COLLATE NOCASE, "
        "Album.Title COLLATE NOCASE;\n"
        "ALTER TABLE TempSource ADD COLUMN MyRecorded INTEGER;\n"
        "UPDATE TempSource SET "
        "MyRecorded = CASE WHEN substr(trim(RecordedStart), 1, 4) GLOB '[0-9]*' AND "
        "substr(trim(RecordedStart), 1, 4) NOT GLOB '*[^0-9]*' "
        "THEN CAST(substr(trim(RecordedStart), 1, 4) AS INTEGER) END, "
        "Version = nullif(Version, '');\n"
        "SELECT count(*) FROM TempSource;\n");
    return sql;
}

QByteArray run(const QString& program, const QStringList& arguments, const QString& stdoutFile,
               const QByteArray& input = {}) {
    QProcess process;
    if (!stdoutFile.isEmpty())
        process.setStandardOutputFile(stdoutFile);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        throw std::runtime_error((program + " failed: ").toStdString() +
                                 process.readAllStandardError().toStdString());
    return process.readAllStandardOutput();
}

}  // namespace

PipelineRun runPipeline(const QString& albumFile, bool withRating) {
    QTemporaryDir dir;
    PipelineRun result;
    QByteArray output;
    result.seconds = secondsOf([&] {
        QString script = QStringLiteral(".mode csv\n");
        for (const QString& table : kTables) {
            if (table == QLatin1String("TrackRating") && !withRating)
                continue;
            const QString csv = dir.filePath(table + ".csv");
            result.exportSeconds += secondsOf([&] {
                run(QStringLiteral("mdb-export"), {albumFile, table}, csv);
            });
            script += QStringLiteral(".import '%1' %2\n").arg(csv, table);
        }
        script += joinScript(withRating);
        output = run(QStringLiteral("sqlite3"), {dir.filePath(QStringLiteral("x.db"))}, {},
                     script.toUtf8());
    });
    result.rows = output.trimmed().toLongLong();
    return result;
}

}  // namespace bench

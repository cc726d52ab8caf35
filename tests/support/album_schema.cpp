#include "support/album_schema.h"

#include "support/databases.h"
#include "support/samples.h"

namespace testsupport {

void createAlbumTables(const QString& path, bool withRating) {
    execRaw(path, R"sql(
        CREATE TABLE Artist (ArtistID INTEGER, Name TEXT(255) COLLATE MIXORAMA_TEXT);
        CREATE TABLE Album (AlbumID INTEGER, Title TEXT(255) COLLATE MIXORAMA_TEXT,
                            ArtistSort TEXT(255) COLLATE MIXORAMA_TEXT, LocationID INTEGER);
        CREATE TABLE Track (TrackID INTEGER, AlbumID INTEGER, ArtistSort TEXT(255) COLLATE MIXORAMA_TEXT,
                            Title TEXT(255) COLLATE MIXORAMA_TEXT, Item SMALLINT, "Index" SMALLINT,
                            Length INTEGER, Version TEXT(50) COLLATE MIXORAMA_TEXT, Live YESNO,
                            RecordedStart TEXT(50) COLLATE MIXORAMA_TEXT, TrackRatingID INTEGER);
        CREATE TABLE ArtistTrackLink (ArtistID INTEGER, TrackID INTEGER);
        CREATE TABLE ArtistAlbumLink (ArtistID INTEGER, AlbumID INTEGER);
        CREATE TABLE Location (LocationID INTEGER, Location TEXT(255) COLLATE MIXORAMA_TEXT);
    )sql");
    if (withRating) {
        execRaw(path,
                "CREATE TABLE TrackRating (TrackRatingID INTEGER, "
                "TrackRating TEXT(50) COLLATE MIXORAMA_TEXT);");
    }
}

void writeAlbumFile(const QString& path, const std::vector<AlbumTrack>& tracks,
                    bool performerKeys) {
    createAlbumTables(path, true);
    QString sql =
        "INSERT INTO Artist VALUES (1000, 'Various'); "
        "INSERT INTO Album VALUES (1, 'Collection', 'Various', NULL); "
        "INSERT INTO ArtistAlbumLink VALUES (1000, 1);";
    for (size_t i = 0; i < tracks.size(); ++i) {
        const QString performer = sqlText(tracks[i].performer);
        sql += QStringLiteral(
                   "INSERT INTO Artist VALUES (%1, %2); "
                   "INSERT INTO Track VALUES (%1, 1, %3, %4, 1, %1, %5, NULL, 0, '1999', NULL); "
                   "INSERT INTO ArtistTrackLink VALUES (%1, %1);")
                   .arg(i + 1)
                   .arg(performer, performerKeys ? performer : QStringLiteral("'A'"),
                        sqlText(tracks[i].title))
                   .arg(tracks[i].length);
    }
    execRaw(path, sql);
}

}  // namespace testsupport

#include "support/album_schema.h"

#include "support/databases.h"

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

}  // namespace testsupport

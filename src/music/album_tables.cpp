#include "music/album_tables.h"

#include "engine/field_type.h"
#include "music/sqlite_script.h"

namespace music {

namespace {

// Each album's artist: the album artist its tracks share, else kVariousArtists.
const char* const kCredits = R"sql(
    INSERT OR IGNORE INTO ScanAlbum (Folder, Title)
        SELECT DISTINCT Folder, Album FROM ScanFile WHERE Readable;
    DROP TABLE IF EXISTS temp.AlbumCredit;
    CREATE TEMP TABLE AlbumCredit AS
        SELECT a.AlbumID AS AlbumID,
               iif(count(DISTINCT f.AlbumArtist) = 1, min(f.AlbumArtist), '%1') AS Name,
               iif(count(DISTINCT f.AlbumArtist) = 1, min(f.AlbumArtistSort), '%1') AS Sort
        FROM ScanFile f JOIN ScanAlbum a ON a.Folder = f.Folder AND a.Title = f.Album
        WHERE f.Readable GROUP BY a.AlbumID;
    DELETE FROM ScanAlbum WHERE AlbumID NOT IN (SELECT AlbumID FROM temp.AlbumCredit);
    INSERT OR IGNORE INTO ScanArtist (Name)
        SELECT Artist FROM ScanFile WHERE Readable UNION SELECT Name FROM temp.AlbumCredit;
    DELETE FROM ScanArtist WHERE Name NOT IN
        (SELECT Artist FROM ScanFile WHERE Readable UNION SELECT Name FROM temp.AlbumCredit);
)sql";

// The shapes of an album database's tables; %1 is the text collation.
const char* const kShapes = R"sql(
    DROP TABLE IF EXISTS Album; DROP TABLE IF EXISTS Artist; DROP TABLE IF EXISTS Track;
    DROP TABLE IF EXISTS ArtistAlbumLink; DROP TABLE IF EXISTS ArtistTrackLink;
    DROP TABLE IF EXISTS Location; DROP TABLE IF EXISTS TrackRating;
    CREATE TABLE Artist (ArtistID INTEGER, Name TEXT(255)%1);
    CREATE TABLE Album (AlbumID INTEGER, Title TEXT(255)%1, ArtistSort TEXT(255)%1,
                        LocationID INTEGER);
    CREATE TABLE Track (TrackID INTEGER, AlbumID INTEGER, ArtistSort TEXT(255)%1,
                        Title TEXT(255)%1, Item SMALLINT, "Index" SMALLINT, Length INTEGER,
                        Version TEXT(50)%1, Live YESNO, RecordedStart TEXT(50)%1,
                        TrackRatingID INTEGER, FilePath TEXT%1);
    CREATE TABLE ArtistTrackLink (ArtistID INTEGER, TrackID INTEGER);
    CREATE TABLE ArtistAlbumLink (ArtistID INTEGER, AlbumID INTEGER);
    CREATE TABLE Location (LocationID INTEGER, Location TEXT(255)%1);
    CREATE TABLE TrackRating (TrackRatingID INTEGER, TrackRating TEXT(50)%1);
)sql";

// An album's location is its folder; it shares the album's id.
const char* const kRows = R"sql(
    INSERT INTO Artist SELECT ArtistID, Name FROM ScanArtist ORDER BY ArtistID;
    INSERT INTO Album SELECT c.AlbumID, a.Title, c.Sort, c.AlbumID
        FROM temp.AlbumCredit c JOIN ScanAlbum a USING (AlbumID) ORDER BY c.AlbumID;
    INSERT INTO Location SELECT AlbumID, Folder FROM ScanAlbum ORDER BY AlbumID;
    INSERT INTO TrackRating
        SELECT DISTINCT RatingID, Rating FROM ScanFile WHERE Readable AND RatingID IS NOT NULL
        ORDER BY RatingID;
    INSERT INTO Track
        SELECT f.FileID, a.AlbumID, f.ArtistSort, f.Title, max(f.Disc, 1), nullif(f.TrackNo, 0),
               f.Seconds, nullif(f.Version, ''), iif(f.Live, -1, 0),
               iif(f.Year > 0, CAST(f.Year AS TEXT), NULL), f.RatingID,
               (SELECT Value FROM ScanState WHERE Key = 'root') || '/' || f.Path
        FROM ScanFile f JOIN ScanAlbum a ON a.Folder = f.Folder AND a.Title = f.Album
        WHERE f.Readable ORDER BY f.FileID;
    INSERT INTO ArtistTrackLink SELECT r.ArtistID, f.FileID
        FROM ScanFile f JOIN ScanArtist r ON r.Name = f.Artist WHERE f.Readable ORDER BY f.FileID;
    INSERT INTO ArtistAlbumLink SELECT r.ArtistID, c.AlbumID
        FROM temp.AlbumCredit c JOIN ScanArtist r ON r.Name = c.Name ORDER BY c.AlbumID;
    DROP TABLE temp.AlbumCredit;
)sql";

}  // namespace

void writeAlbumTables(sqlite3* db) {
    execScript(db, QString::fromLatin1(kCredits).arg(QLatin1String(kVariousArtists)));
    execScript(db, QString::fromLatin1(kShapes).arg(engine::textCollationClause()));
    execScript(db, QString::fromLatin1(kRows));
}

}  // namespace music

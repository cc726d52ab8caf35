-- The compilation database template: the five tables and their value lists.
-- Text columns compare without regard to case, by the engine's own Unicode-aware collation,
-- which other SQLite programs lack: they can read the file but not write its text columns.
PRAGMA foreign_keys = ON;

CREATE TABLE Compilation (
    CompilationID_P INTEGER PRIMARY KEY AUTOINCREMENT,
    Name            TEXT(100) COLLATE MIXORAMA_TEXT NOT NULL UNIQUE,
    SumTrack        SMALLINT DEFAULT 0,
    SumTime         INTEGER DEFAULT 0,
    Manufacturer    TEXT(50) COLLATE MIXORAMA_TEXT,
    Format          TEXT(50) COLLATE MIXORAMA_TEXT NOT NULL,
    C_Length        SMALLINT NOT NULL,
    Box             TEXT(50) COLLATE MIXORAMA_TEXT,
    CoverMemo       LONGTEXT COLLATE MIXORAMA_TEXT,
    RecDate         DATETIME,
    Notes           LONGTEXT COLLATE MIXORAMA_TEXT
);

CREATE TABLE CompilationTrack (
    CompilationID_F1  INTEGER NOT NULL
                      REFERENCES Compilation (CompilationID_P) ON DELETE CASCADE,
    TrackNo           SMALLINT,
    Track_Artist_Name TEXT(255) COLLATE MIXORAMA_TEXT,
    Track_Title       TEXT(255) COLLATE MIXORAMA_TEXT,
    Album_Title       TEXT(255) COLLATE MIXORAMA_TEXT,
    Album_Artist_Name TEXT(255) COLLATE MIXORAMA_TEXT,
    Length            INTEGER,
    RecordedStart     SMALLINT,
    Live              YESNO DEFAULT 0,
    Version           TEXT(255) COLLATE MIXORAMA_TEXT,
    Item              SMALLINT,
    "Index"           SMALLINT,
    Track_Rating      TEXT(50) COLLATE MIXORAMA_TEXT,
    ArtistSort        TEXT(255) COLLATE MIXORAMA_TEXT,
    AlbumArtistSort   TEXT(255) COLLATE MIXORAMA_TEXT,
    AlbumLocation     TEXT(255) COLLATE MIXORAMA_TEXT,
    AlbumoryTrackID   INTEGER,
    AlbumoryAlbumID   INTEGER
);
CREATE INDEX CompilationTrack_Order ON CompilationTrack (CompilationID_F1, TrackNo);
-- The lookup of a track already recorded searches every compilation by performer and title.
CREATE INDEX CompilationTrack_Lookup ON CompilationTrack (Track_Artist_Name, Track_Title);

CREATE TABLE LstManufacturer (Manufacturer_P TEXT(50) COLLATE MIXORAMA_TEXT NOT NULL PRIMARY KEY);
CREATE TABLE LstFormat (Format2_P TEXT(50) COLLATE MIXORAMA_TEXT NOT NULL PRIMARY KEY);
CREATE TABLE LstLength (Length_P SMALLINT NOT NULL PRIMARY KEY);

INSERT INTO LstFormat VALUES ('MD'), ('CD-ROM'), ('CD-R'), ('CD-RW'), ('Cassette'), ('DAT'),
                             ('DCC'), ('DVD-R'), ('MP3-CD');
INSERT INTO LstLength VALUES (46), (54), (60), (64), (74), (80), (90), (100), (120);
INSERT INTO LstManufacturer VALUES ('BASF'), ('Fuji'), ('Maxell'), ('Memorex'), ('Philips'),
                                   ('Sony'), ('TDK'), ('Verbatim');

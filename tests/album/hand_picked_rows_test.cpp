#include <QDir>

#include "album/album_builder.h"
#include "album/album_fixture.h"
#include "support/databases.h"

namespace albumtest {
namespace {

// A few albums chosen for the cases the source table must get right: performers on both
// sides, missing links and locations, odd dates, empty versions, accents and apostrophes.
albumgen::Collection handPicked(bool withRating) {
    CollectionBuilder b(withRating);
    const qint32 simon = b.artist("Paul Simon", "Simon, Paul");
    const qint32 garfunkel = b.artist("Art Garfunkel", "Garfunkel, Art");
    const qint32 aerzte = b.artist("Die Ärzte", "Ärzte, Die");
    const qint32 beatles = b.artist("The Beatles", "beatles, the");
    const qint32 sinead = b.artist("Sinéad O'Connor", "O'Connor, Sinéad");
    const qint32 abba = b.artist("ABBA", "abba");
    const qint32 shelf = b.location("Shelf A");
    const qint32 kitchen = b.location("Dad's box – Küche");
    const qint32 oneStar = b.rating("*");
    const qint32 threeStars = b.rating("***");
    const qint32 fiveStars = b.rating("*****");

    const qint32 bookends = b.album("Bookends", "Simon & Garfunkel", {simon, garfunkel}, shelf);
    const qint32 bestie = b.album("Die Bestie in Menschengestalt", "Ärzte, Die", {aerzte}, kitchen);
    const qint32 help = b.album("Help!", "beatles, the", {beatles}, std::nullopt);
    const qint32 grave = b.album("I Do Not Want What I Haven't Got", "O'Connor, Sinéad", {sinead},
                                 99);  // a location the file does not hold
    const qint32 arrival = b.album("Arrival", "abba", {}, shelf);  // no album performer

    b.track({bookends,
             "Mrs. Robinson",
             "Simon & Garfunkel",
             {simon, garfunkel},
             1,
             2,
             "",
             false,
             " 1987-05-01",
             fiveStars});
    b.track({bookends,
             "Old Friends",
             "Simon & Garfunkel",
             {simon},
             1,
             1,
             "Remix",
             false,
             "",
             std::nullopt});
    b.track({bookends, "Orphan", "Simon & Garfunkel", {}, 1, 3, "", false, "1968", fiveStars});
    b.track({bestie,
             "Schrei nach Liebe",
             "Ärzte, Die",
             {aerzte},
             1,
             1,
             "Live",
             true,
             "1993",
             threeStars});
    b.track({help, "Help!", "beatles, the", {beatles}, 1, 1, "", false, " 1965 ", 0});
    b.track({grave,
             "The Emperor's New Clothes",
             "O'Connor, Sinéad",
             {sinead},
             1,
             4,
             "",
             false,
             "1990-01-01",
             oneStar});
    b.track({arrival, "Dancing Queen", "abba", {abba}, 1, 1, "", false, "1976", oneStar});
    return b.collection();
}

class HandPickedAlbums : public AlbumFileTest {
  protected:
    QString writeAlbums(bool withRating) {
        const albumgen::Collection collection = handPicked(withRating);
        const QString path = dir.file(withRating ? "albums.mdb" : "unrated.mdb");
        writeAccessFile(path, collection);
        expected = expectedSourceRows(albumgen::tableRows(collection));
        return path;
    }

    // The rows of one track, each reduced to the named columns.
    QStringList cellsOf(const QString& title, const QStringList& columns) {
        QStringList out;
        for (const SourceRow& row : sourceRows()) {
            if (row[columnIndex("TitleTrack")] != title)
                continue;
            QStringList cells;
            for (const QString& column : columns)
                cells << row[columnIndex(column)];
            out << cells.join('|');
        }
        out.sort();
        return out;
    }

    std::vector<SourceRow> expected;
};

TEST_F(HandPickedAlbums, SourceHoldsExactlyTheJoinedRows) {
    connectAndBuild(writeAlbums(true));
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(editor.getTracksEnabled);
    ASSERT_EQ(expected.size(), 9u);  // the hand count: 4 + 2 + 1 + 1 + 1
    EXPECT_EQ(state.passedCount, 9);
    EXPECT_EQ(multisetDifference(expected, sourceRows()), "");
}

TEST_F(HandPickedAlbums, RowsPairEveryTrackPerformerWithEveryAlbumPerformer) {
    connectAndBuild(writeAlbums(true));
    EXPECT_EQ(cellsOf("Mrs. Robinson", {"PerformerTrack", "PerformerAlbum", "ArtistID"}),
              QStringList({"Art Garfunkel|Art Garfunkel|2", "Art Garfunkel|Paul Simon|2",
                           "Paul Simon|Art Garfunkel|1", "Paul Simon|Paul Simon|1"}));
    EXPECT_EQ(cellsOf("Old Friends", {"PerformerTrack", "PerformerAlbum"}),
              QStringList({"Paul Simon|Art Garfunkel", "Paul Simon|Paul Simon"}));
    // Inner joins: no performer link on the track, no performer link on the album.
    EXPECT_TRUE(cellsOf("Orphan", {"TitleTrack"}).isEmpty());
    EXPECT_TRUE(cellsOf("Dancing Queen", {"TitleTrack"}).isEmpty());
}

TEST_F(HandPickedAlbums, YearsVersionsRatingsAndLocationsAreFilledIn) {
    connectAndBuild(writeAlbums(true));
    const QStringList columns{"MyRecorded", "Version", "RatingTrack", "Location", "Live"};
    EXPECT_EQ(cellsOf("Mrs. Robinson", columns).value(0), "1987|<null>|*****|Shelf A|no");
    EXPECT_EQ(cellsOf("Old Friends", columns).value(0), "<null>|Remix|<null>|Shelf A|no");
    EXPECT_EQ(cellsOf("Schrei nach Liebe", columns),
              QStringList({"1993|Live|***|Dad's box – Küche|yes"}));
    // Rating id 0 names no rating; the album has no location.
    EXPECT_EQ(cellsOf("Help!", columns), QStringList({"1965|<null>|<null>|<null>|no"}));
    // The album names a location the file does not hold.
    EXPECT_EQ(cellsOf("The Emperor's New Clothes", columns),
              QStringList({"1990|<null>|*|<null>|no"}));
}

TEST_F(HandPickedAlbums, FixedUpColumnsKeepTheirTypes) {
    connectAndBuild(writeAlbums(false));
    // Every column is declared, the fixed-up Version as the album's text column, so it still
    // compares case-blind, and the year is stored as a number.
    EXPECT_EQ(testsupport::queryOnConnection(database,
                                             "SELECT count(*) FROM pragma_table_info('TempSource') "
                                             "WHERE type = ''"),
              "0");
    EXPECT_EQ(testsupport::queryOnConnection(
                  database,
                  "SELECT group_concat(name || ':' || type, ' ') FROM pragma_table_info("
                  "'TempSource') WHERE name IN ('MyRecorded', 'RatingTrack')"),
              "MyRecorded:SMALLINT RatingTrack:TEXT(50)");
    EXPECT_EQ(
        testsupport::queryOnConnection(database,
                                       "SELECT group_concat(DISTINCT TitleTrack) FROM TempSource "
                                       "WHERE Version = 'REMIX'"),
        "Old Friends");
    EXPECT_EQ(
        testsupport::queryOnConnection(database,
                                       "SELECT group_concat(DISTINCT typeof(MyRecorded)) FROM "
                                       "TempSource WHERE MyRecorded IS NOT NULL"),
        "integer");
}

TEST_F(HandPickedAlbums, AccentsAndApostrophesComeThroughIntact) {
    connectAndBuild(writeAlbums(true));
    EXPECT_EQ(cellsOf("The Emperor's New Clothes",
                      {"ArtistSort", "PerformerTrack", "TitleAlbum", "AlbumArtistSort"}),
              QStringList({"O'Connor, Sinéad|Sinéad O'Connor|I Do Not Want What I Haven't "
                           "Got|O'Connor, Sinéad"}));
    EXPECT_EQ(cellsOf("Schrei nach Liebe", {"PerformerTrack", "PerformerAlbum"}),
              QStringList({"Die Ärzte|Die Ärzte"}));
}

TEST_F(HandPickedAlbums, RowsRunByPerformerSortCaseBlindThenAlbumThenPosition) {
    connectAndBuild(writeAlbums(true));
    QStringList titles;
    for (const SourceRow& row : sourceRows())
        titles << row[columnIndex("TitleTrack")];
    titles.removeDuplicates();  // the rows of one track stand together
    // A byte-wise order would put "O'Connor" and "Simon" before "beatles" and "Ärzte" last.
    EXPECT_EQ(titles, QStringList({"Schrei nach Liebe", "Help!", "The Emperor's New Clothes",
                                   "Old Friends", "Mrs. Robinson"}));
}

TEST_F(HandPickedAlbums, WithRatingsRatingTrackStandsInSelectOrder) {
    connectAndBuild(writeAlbums(true));
    EXPECT_EQ(sourceFieldNames(),
              QStringList({"ArtistSort", "PerformerTrack", "TitleTrack", "Item", "Index", "Length",
                           "Version", "Live", "RecordedStart", "TitleAlbum", "PerformerAlbum",
                           "AlbumArtistSort", "TrackTrackID", "TrackAlbumID", "RatingTrack",
                           "Location", "ArtistID", "TrackID", "MyRecorded"}));
}

TEST_F(HandPickedAlbums, WithoutRatingTableRatingTrackIsLastAndEmpty) {
    connectAndBuild(writeAlbums(false));
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(editor.getTracksEnabled);
    EXPECT_FALSE(state.albumHasRating);
    EXPECT_EQ(sourceFieldNames(),
              QStringList({"ArtistSort", "PerformerTrack", "TitleTrack", "Item", "Index", "Length",
                           "Version", "Live", "RecordedStart", "TitleAlbum", "PerformerAlbum",
                           "AlbumArtistSort", "TrackTrackID", "TrackAlbumID", "Location",
                           "ArtistID", "TrackID", "MyRecorded", "RatingTrack"}));
    EXPECT_EQ(state.passedCount, 9);
    EXPECT_EQ(multisetDifference(expected, sourceRows()), "");
    for (const SourceRow& row : sourceRows())
        EXPECT_EQ(row[columnIndex("RatingTrack")], kNull);
}

TEST_F(HandPickedAlbums, TheAlbumFileStaysByteForByteTheSame) {
    const QString albums = writeAlbums(true);
    const QByteArray before = fileBytes(albums);
    connectAndBuild(albums);
    store::buildTempSource(database, state);
    store::dropAlbumLinks(database);
    EXPECT_EQ(state.passedCount, 9);
    EXPECT_TRUE(fileBytes(albums) == before);
    // Nothing beside it either: no lock or journal file is left in the album's folder.
    EXPECT_EQ(QDir(dir.path()).entryList({"unrated*", "albums*"}, QDir::Files),
              QStringList({"albums.mdb"}));
}

}  // namespace
}  // namespace albumtest

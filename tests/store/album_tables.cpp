#include "album_tables.h"

#include "support/album_schema.h"
#include "support/databases.h"

namespace testsupport {

void createSqliteAlbumDatabase(const QString& path, bool withRating) {
    createAlbumTables(path, withRating);
    execRaw(path, R"sql(
        INSERT INTO Artist VALUES (1, 'Simon'), (2, 'Garfunkel'), (3, 'The Beatles'), (4, 'Die Ärzte');
        INSERT INTO Location VALUES (1, 'Shelf A');
        INSERT INTO Album VALUES (10, 'Duets', 'Simon & Garfunkel', 1),
                                 (20, 'Help!', 'Beatles, The', NULL),
                                 (30, 'Die Bestie', 'Ärzte, Die', 1);
        INSERT INTO ArtistAlbumLink VALUES (1, 10), (2, 10), (3, 20), (4, 30);
        INSERT INTO Track VALUES
            (100, 10, 'Simon & Garfunkel', 'Mrs. Robinson', 1, 1, 244, '', 0, ' 1987-05-01', 1),
            (101, 10, 'Simon', 'Kodachrome', 1, 2, 212, 'Remix', -1, '', NULL),
            (200, 20, 'beatles, the', 'Help!', 1, 1, 140, NULL, 0, '1965', 2),
            (201, 20, 'Beatles, The', 'Orphan', 1, 2, 100, NULL, 0, NULL, NULL),
            (300, 30, 'Ärzte, Die', 'Schrei nach Liebe', 1, 1, 250, 'Live', -1, '1993-01-01', 1);
        INSERT INTO ArtistTrackLink VALUES (1, 100), (2, 100), (1, 101), (3, 200), (4, 300);
    )sql");
    if (withRating) {
        execRaw(path, R"sql(
            INSERT INTO TrackRating VALUES (1, '*****'), (2, '***');
        )sql");
    }
}

}  // namespace testsupport

#include "album/album_builder.h"

#include "jet4/jet4.h"

namespace albumtest {

CollectionBuilder::CollectionBuilder(bool withRating) {
    c_.withRating = withRating;
}

qint32 CollectionBuilder::artist(const QString& name, const QString& sortName) {
    const qint32 id = qint32(c_.artists.size() + 1);
    c_.artists.push_back({id, name, sortName});
    return id;
}

qint32 CollectionBuilder::location(const QString& name) {
    const qint32 id = qint32(c_.locations.size() + 1);
    c_.locations.push_back({id, name});
    return id;
}

qint32 CollectionBuilder::rating(const QString& text) {
    const qint32 id = qint32(c_.ratings.size() + 1);
    c_.ratings.push_back({id, text});
    return id;
}

qint32 CollectionBuilder::album(const QString& title, const QString& artistSort,
                                const std::vector<qint32>& performers,
                                std::optional<qint32> locationId) {
    albumgen::Album a{};
    a.id = qint32(c_.albums.size() + 1);
    a.title = title;
    a.artistSort = artistSort;
    a.locationId = locationId;
    a.year = 2000;
    a.discs = 1;
    a.purchased = QDate(2001, 2, 3);
    for (qint32 performer : performers)
        c_.artistAlbumLinks.push_back({performer, a.id});
    c_.albums.push_back(a);
    return a.id;
}

qint32 CollectionBuilder::track(const TrackSpec& wanted) {
    albumgen::Track t{};
    t.id = qint32(c_.tracks.size() + 1);
    t.albumId = wanted.albumId;
    t.artistSort = wanted.artistSort;
    t.title = wanted.title;
    t.item = wanted.item;
    t.index = wanted.index;
    t.length = 180 + t.id;
    t.version = wanted.version;
    t.live = wanted.live;
    t.recordedStart = wanted.recordedStart;
    t.ratingId = wanted.ratingId;
    t.added = QDateTime(QDate(2001, 2, 3), QTime(12, 0));
    for (qint32 performer : wanted.performers)
        c_.artistTrackLinks.push_back({performer, t.id});
    c_.tracks.push_back(t);
    return t.id;
}

void writeAccessFile(const QString& path, const albumgen::Collection& collection) {
    std::vector<jet4::Table> tables;
    for (const albumgen::TableRows& rows : albumgen::tableRows(collection)) {
        jet4::Table table(rows.name, rows.columns);
        for (const QVariantList& row : rows.rows)
            table.addRow(row);
        tables.push_back(std::move(table));
    }
    jet4::writeDatabase(path, tables);
}

}  // namespace albumtest

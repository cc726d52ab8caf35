#pragma once

#include <QString>
#include <vector>

namespace testsupport {

// Writes the album database's tables, empty, into an SQLite file (the engine links those like
// any album database); TrackRating only when asked for.
void createAlbumTables(const QString& path, bool withRating);

struct AlbumTrack {
    QString performer;
    QString title;
    int length;
};
// Writes the album tables with the tracks, all on one album in this order; they sort under one
// performer key unless performerKeys gives each its performer.
void writeAlbumFile(const QString& path, const std::vector<AlbumTrack>& tracks,
                    bool performerKeys = false);

}  // namespace testsupport
